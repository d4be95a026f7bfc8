#include "CATFrmNavigGraphicWindow.h"

#include "CATFrmLayout.h"

CATFrmNavigGraphicWindow::CATFrmNavigGraphicWindow(const CATUnicodeString& title, CATFrmEditor* pEditor)
    : CATFrmWindow(title, pEditor),
      m_Scene(pEditor != nullptr ? pEditor->GetPathElements().shared_from_this() : nullptr)
{
}

CATFrmNavigGraphicWindow::~CATFrmNavigGraphicWindow() = default;

CATFrmNavigGraphicWindow* CATFrmNavigGraphicWindow::Create(const CATUnicodeString& title, CATFrmEditor* pEditor)
{
    CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    if (pLayout == nullptr) {
        return nullptr;
    }
    auto* pWindow = new CATFrmNavigGraphicWindow(title, pEditor);
    pLayout->AddWindow(pWindow);
    return pWindow;
}
