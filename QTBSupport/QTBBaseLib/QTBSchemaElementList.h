#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "CATDataType.h"

// Access by position, counted from 1, to the elements that a schema object owns: E_POINTER for a null argument, E_FAIL
// outside the list.
template <class Element>
HRESULT QTBGetSchemaElement(const std::vector<std::unique_ptr<Element>>& Elements, int index, Element** ppElement)
{
    if (ppElement == nullptr) {
        return E_POINTER;
    }
    if (index < 1 || static_cast<std::size_t>(index) > Elements.size()) {
        return E_FAIL;
    }
    *ppElement = Elements[static_cast<std::size_t>(index - 1)].get();
    return S_OK;
}
