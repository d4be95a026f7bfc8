#include "QTBEEditorOnDoc.h"

#include "CATCallback.h"
#include "CATDocument.h"
#include "CATFrmLayout.h"
#include "CATFrmObjectEditor.h"
#include "QTBCheck.h"

QTBEEditorOnDoc::~QTBEEditorOnDoc()
{
    m_pEditor = NULL;
    CATFrmLayout* pFrmLayout = CATFrmLayout::GetCurrentLayout();
    if (pFrmLayout != NULL) {
        RemoveSubscriberCallbacks(this, pFrmLayout);
    } else {
        QTB_TRACE("QTBEEditorOnDoc::~QTBEEditorOnDoc -> pFrmLayout == NULL");
    }
}

CATFrmEditor* QTBEEditorOnDoc::GetEditor()
{
    QTB_SCOPE("QTBEEditorOnDoc::GetEditor");
    CATBaseUnknown* pBaseUnknownOnDoc = NULL;
    QTB_RAISE_CALL(QueryInterface, IID_CATBaseUnknown, reinterpret_cast<void**>(&pBaseUnknownOnDoc));
    QTB_RAISE_ASSERT(pBaseUnknownOnDoc != NULL);
    const CATBaseUnknown_var spBaseUnknownOnDoc = CATBaseUnknown_var::Adopt(pBaseUnknownOnDoc);

    if (m_pEditor == NULL) {
        m_pEditor = CATFrmObjectEditor::Create(CATDocument::FromComponent(pBaseUnknownOnDoc));
        QTB_RAISE_ASSERT(m_pEditor != NULL);
        try {
            ::AddCallback(this, CATFrmLayout::GetCurrentLayout(), CATFrmEditor::EDITOR_CLOSE_ENDED(),
                          &QTBEEditorOnDoc::SetEditorToNullWhenDeleted);
        } catch (...) {
            // Nobody would tell of its end.
            m_pEditor = NULL;
            throw;
        }
    }
    return m_pEditor;
}

void QTBEEditorOnDoc::SetEditorToNullWhenDeleted(CATFrmEditor* pClosedEditor)
{
    QTB_SCOPE("QTBEEditorOnDoc::SetEditorToNullWhenDeleted");
    if (pClosedEditor == m_pEditor) {
        RemoveSubscriberCallbacks(this, CATFrmLayout::GetCurrentLayout());
        m_pEditor = NULL;
    }
}
