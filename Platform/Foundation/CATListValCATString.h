#pragma once

#include "CATListVal.h"
#include "CATString.h"

using CATListValCATString = CATListVal<CATString>;
