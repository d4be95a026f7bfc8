#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"

inline constexpr IID IID_CATINavigateObject{"CATINavigateObject"};

// What the navigation tree asks an object that it shows.
class PLATFORM_API CATINavigateObject : public CATBaseUnknown
{
    CATDeclareInterface(CATINavigateObject, CATBaseUnknown)

public:
    // The texts of the object's label: a new list that the caller owns, or null.
    virtual CATListValCATUnicodeString* GetIdentificators() = 0;

    // The objects shown below it: a new list that the caller owns, or null when there are none.
    virtual CATListValCATBaseUnknown_var* GetChildren() = 0;
};

using CATINavigateObject_var = CATInterface_var<CATINavigateObject>;
