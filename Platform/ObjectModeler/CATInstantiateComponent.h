#pragma once

#include "CATBaseUnknown.h"

// Creates a component of the late type by its CATICreateInstance factory and gives its interface iid
// (CLSID_CATBaseUnknown for the component itself) in *ppv, with one reference. E_FAIL with null for a late type that is
// unknown or has no factory of its own or inherited; else the result of the factory or of the query.
PLATFORM_API HRESULT CATInstantiateComponent(const char* lateTypeName, const IID& iid, void** ppv);
