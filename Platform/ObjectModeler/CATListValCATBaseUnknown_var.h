#pragma once

#include "CATInterface_var.h"
#include "CATListVal.h"

using CATListValCATBaseUnknown_var = CATListVal<CATBaseUnknown_var>;
