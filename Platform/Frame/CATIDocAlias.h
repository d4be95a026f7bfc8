#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATUnicodeString.h"

inline constexpr IID IID_CATIDocAlias{"CATIDocAlias"};

// The name under which documents of a type are filed and recognised.
class PLATFORM_API CATIDocAlias : public CATBaseUnknown
{
    CATDeclareInterface(CATIDocAlias, CATBaseUnknown)

public:
    virtual CATUnicodeString GetAlias() = 0;
};

using CATIDocAlias_var = CATInterface_var<CATIDocAlias>;
