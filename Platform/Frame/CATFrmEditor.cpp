#include "CATFrmEditor.h"

#include "CATFrmLayout.h"

CATFrmEditor::CATFrmEditor() : m_pPathElements(CATPathElementPool::Create()) {}

CATFrmEditor::~CATFrmEditor() = default;

CATFrmEditor* CATFrmEditor::Create()
{
    CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    if (pLayout == nullptr) {
        return nullptr;
    }
    auto* pEditor = new CATFrmEditor();
    pLayout->AddEditor(pEditor);
    return pEditor;
}

CATFrmEditor* CATFrmEditor::GetCurrentEditor()
{
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    const CATFrmWindow* pWindow = pLayout != nullptr ? pLayout->GetCurrentWindow() : nullptr;
    return pWindow != nullptr ? pWindow->GetEditor() : nullptr;
}

void CATFrmEditor::ActivateWorkshop(const CATString& workshop)
{
    if (m_Workshop == workshop) {
        return;
    }
    m_Workshop = workshop;
    GetCallbackManager()->DispatchCallbacks(WORKSHOP_ACTIVATED(), this);
}
