#include "CATFrmWindow.h"

#include "CATFrmLayout.h"

CATFrmWindow::CATFrmWindow(const CATUnicodeString& title, CATFrmEditor* pEditor) : m_Title(title), m_pEditor(pEditor) {}

CATFrmWindow::~CATFrmWindow() = default;

CATFrmWindow* CATFrmWindow::Create(const CATUnicodeString& title, CATFrmEditor* pEditor)
{
    CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    if (pLayout == nullptr) {
        return nullptr;
    }
    auto* pWindow = new CATFrmWindow(title, pEditor);
    pLayout->AddWindow(pWindow);
    return pWindow;
}
