#pragma once

#include "CATInterface_var.h"

class CATFrmWindow;

// Implementation object of a PDM window object (late type QTBFrmWindow, interface QTBIQtbFrmWindow): ties a window to
// the PDM document that it shows. Lives as long as its window is open or somebody holds it.
class QTBFrmWindow : public CATBaseUnknown
{
public:
    // Connects the document's rep node container with the window and shows its roots. Fails when the document has no
    // rep node container.
    static HRESULT Create(CATFrmWindow* pFrmWindow, const CATBaseUnknown_var& spDocument,
                          CATBaseUnknown_var* pspFrmWindow);

    // Null when the window has been closed.
    CATFrmWindow* GetFrmWindow() const { return m_pFrmWindow; }

private:
    QTBFrmWindow(CATFrmWindow* pFrmWindow, const CATBaseUnknown_var& spDocument);
    ~QTBFrmWindow() override;

    // Called by the layout when a window is closed: cleans up the rep node container.
    void OnWindowClosed(CATFrmWindow* pClosedWindow);

    CATFrmWindow* m_pFrmWindow;
    CATBaseUnknown_var m_spDocument;
};
