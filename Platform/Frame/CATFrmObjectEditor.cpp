#include "CATFrmObjectEditor.h"

#include "CATDocument.h"
#include "CATFrmLayout.h"

CATFrmObjectEditor::CATFrmObjectEditor(CATDocument* pDocument) : m_pDocument(pDocument), m_spDocument(pDocument) {}

CATFrmObjectEditor::~CATFrmObjectEditor() = default;

CATFrmObjectEditor* CATFrmObjectEditor::Create(CATDocument* pDocument)
{
    CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    if (pLayout == nullptr || pDocument == nullptr) {
        return nullptr;
    }
    auto* pEditor = new CATFrmObjectEditor(pDocument);
    pLayout->AddEditor(pEditor);
    return pEditor;
}
