#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATListValCATString.h"

inline constexpr IID IID_CATIRootProperties{"CATIRootProperties"};

// Which property editors the dialog of an object's properties offers.
class PLATFORM_API CATIRootProperties : public CATBaseUnknown
{
    CATDeclareInterface(CATIRootProperties, CATBaseUnknown)

public:
    // Names of the editors in the order of their pages; empty for an object without properties.
    virtual CATListValCATString GetListOfEditors() = 0;
};

using CATIRootProperties_var = CATInterface_var<CATIRootProperties>;
