#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"

inline constexpr IID IID_CATInit{"CATInit"};

// Initialisation of a document.
class PLATFORM_API CATInit : public CATBaseUnknown
{
    CATDeclareInterface(CATInit, CATBaseUnknown)

public:
    // Prepares a new document; called once, when it is created.
    virtual void Init(unsigned char bDestroyExistingData) = 0;

    // The document's root container by the name of one of its interfaces, with a reference; null when it has none.
    virtual CATBaseUnknown* GetRootContainer(const char* interfaceName) = 0;
};

using CATInit_var = CATInterface_var<CATInit>;
