#pragma once

#include <cstddef>

#include "CATPrdDocument.h"

// CATICreateInstance on one of the types of product documents.
template <std::size_t TYPE>
class CATECreateInstanceOnPrdDocument : public CATBaseUnknown
{
public:
    HRESULT CreateInstance(void** ppv)
    {
        *ppv = static_cast<CATBaseUnknown*>(new CATPrdDocument(CATPrdDocument::TYPES[TYPE]));
        return S_OK;
    }
};
