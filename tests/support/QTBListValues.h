#pragma once

#include <vector>

#include "CATListVal.h"

// The values of a list in the form that matchers work on.
template <class T>
std::vector<T> ListValues(const CATListVal<T>& list)
{
    return std::vector<T>(list.begin(), list.end());
}
