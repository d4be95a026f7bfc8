#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "CATListValCATBaseUnknown_var.h"

class CATCSO;

inline constexpr IID IID_CATICSOFilter{"CATICSOFilter"};

// Which edit commands ("Cut", "Copy", "Paste", "PasteSpecial", "Link", "Delete") an object allows on a selection that
// begins with it.
class PLATFORM_API CATICSOFilter : public CATBaseUnknown
{
    CATDeclareInterface(CATICSOFilter, CATBaseUnknown)

public:
    // S_OK when the command may run on the selection, S_FALSE when it may not.
    virtual HRESULT CommandIsAvailable(const char* commandName, CATCSO* pCSO) = 0;

    // Appends the objects of the selection on which the command works to *ppElements.
    virtual HRESULT AvailableElements(const char* commandName, CATCSO* pCSO,
                                      CATListValCATBaseUnknown_var** ppElements) = 0;
};

using CATICSOFilter_var = CATInterface_var<CATICSOFilter>;
