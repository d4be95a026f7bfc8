#pragma once

#include "CATFrmWindow.h"
#include "CATNavigBox.h"

// Window with a navigation tree beside its graphics.
class PLATFORM_API CATFrmNavigGraphicWindow : public CATFrmWindow
{
public:
    // As CATFrmWindow::Create.
    static CATFrmNavigGraphicWindow* Create(const CATUnicodeString& title, CATFrmEditor* pEditor);

    CATNavigBox* GetNavigBox() override { return &m_NavigBox; }

private:
    using CATFrmWindow::CATFrmWindow;
    ~CATFrmNavigGraphicWindow() override;

    CATNavigBox m_NavigBox;
};
