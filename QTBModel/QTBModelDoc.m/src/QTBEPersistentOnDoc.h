#pragma once

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"

// CATIPersistent on the late type QTBDoc. PDM documents are not saved: every request to save shows a notice and does
// nothing, loading does nothing.
class QTBEPersistentOnDoc : public CATBaseUnknown
{
public:
    // FALSE always: a PDM document never asks to be saved.
    unsigned char Dirty();

    // Shows the notice.
    void Save();
    void SaveAs(const CATUnicodeString& storageName, unsigned char bBecameCurrent);
    void SaveAs_B(void* pStorage);

    // Written to the debug output; nothing is loaded.
    void Load(const CATUnicodeString& storageName, unsigned char bReadOnly);
    void Load_B(void* pStorage);

private:
    static void ShowNotice();
};
