#pragma once

#include "CATBaseUnknown.h"

// CATInit on the late type of product documents: a new document gets a product of its own, which is its root container.
// One extension serves all documents.
class CATEInitOnPrdDocument : public CATBaseUnknown
{
public:
    void Init(unsigned char bDestroyExistingData);
    CATBaseUnknown* GetRootContainer(const char* interfaceName);
};
