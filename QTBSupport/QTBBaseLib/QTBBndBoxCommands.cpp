#include "QTBBndBoxCommands.h"

#include "CATIModelEvents.h"
#include "QTBIBndBox.h"

HRESULT QTBBndBoxCommands::SetMarked(const CATBaseUnknown_var& spBndBox, unsigned char bMarked)
{
    const QTBIBndBox_var spIBndBox(spBndBox);
    if (spIBndBox == NULL_var) {
        return E_FAIL;
    }
    const HRESULT hr = spIBndBox->SetMarked(bMarked);
    if (const CATIModelEvents_var spIModelEvents(spBndBox); SUCCEEDED(hr) && spIModelEvents != NULL_var) {
        spIModelEvents->Dispatch(CATModelEvent::Modified);
    }
    return hr;
}
