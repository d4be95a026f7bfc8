#pragma once

#include "CATListVal.h"

// List of pointers that the list does not own. Everything else is as in CATListVal.
template <class T>
class CATListPtr : public CATListVal<T*>
{
public:
    using CATListVal<T*>::CATListVal;
};
