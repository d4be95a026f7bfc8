#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATUnicodeString.h"

inline constexpr IID IID_CATIAlias{"CATIAlias"};

// The name that the application shows for an object.
class PLATFORM_API CATIAlias : public CATBaseUnknown
{
    CATDeclareInterface(CATIAlias, CATBaseUnknown)

public:
    // Empty for an object without a name of its own.
    virtual CATUnicodeString GetAlias() = 0;

    // E_FAIL for an object that has its name from what it stands for.
    virtual HRESULT SetAlias(const CATUnicodeString& usAlias) = 0;
};

using CATIAlias_var = CATInterface_var<CATIAlias>;
