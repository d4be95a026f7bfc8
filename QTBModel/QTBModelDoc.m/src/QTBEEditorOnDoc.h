#pragma once

#include "CATBaseUnknown.h"

class CATCallbackManager;
class CATFrmEditor;
class CATFrmObjectEditor;

// CATIEditor on the late type QTBDoc: the document's editor, created when it is first asked for and forgotten when the
// frame closes it.
class QTBEEditorOnDoc : public CATBaseUnknown
{
public:
    QTBEEditorOnDoc() = default;
    ~QTBEEditorOnDoc() override;

    // The document's editor; the same one until it is closed. The frame owns it. Raises the error of a failed check.
    CATFrmEditor* GetEditor();

private:
    // Called by the frame when an editor has been closed.
    void SetEditorToNullWhenDeleted(CATFrmEditor* pClosedEditor);

    CATFrmObjectEditor* m_pEditor = NULL;
};
