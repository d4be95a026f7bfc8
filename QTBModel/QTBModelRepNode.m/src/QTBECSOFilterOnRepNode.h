#pragma once

#include "CATBaseUnknown.h"
#include "CATListValCATBaseUnknown_var.h"

class CATCSO;

// CATICSOFilter on the late type QTBRepNode: which edit commands may run on selected rep nodes.
class QTBECSOFilterOnRepNode : public CATBaseUnknown
{
public:
    // S_FALSE, not available, without a selection and for "Cut", "PasteSpecial" and "Link"; S_OK for any other command.
    // Fails for a path to an object that is gone.
    HRESULT CommandIsAvailable(const char* commandName, CATCSO* pCSO);

    // Appends the last object of each path, whatever the command; a path to an object that is gone has none. S_OK
    // always; without a list nothing is done.
    HRESULT AvailableElements(const char* commandName, CATCSO* pCSO, CATListValCATBaseUnknown_var** ppElements);
};
