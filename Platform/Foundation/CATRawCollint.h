#pragma once

#include "CATListVal.h"

// List of whole numbers.
using CATRawCollint = CATListVal<int>;
