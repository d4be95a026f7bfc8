#pragma once

#include "CATListVal.h"
#include "CATUnicodeString.h"

using CATListValCATUnicodeString = CATListVal<CATUnicodeString>;
