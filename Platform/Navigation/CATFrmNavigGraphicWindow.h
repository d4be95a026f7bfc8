#pragma once

#include "CATFrmWindow.h"
#include "CATNavigBox.h"
#include "CATVisuScene.h"

// Window with a navigation tree beside its graphics.
class PLATFORM_API CATFrmNavigGraphicWindow : public CATFrmWindow
{
public:
    // As CATFrmWindow::Create.
    static CATFrmNavigGraphicWindow* Create(const CATUnicodeString& title, CATFrmEditor* pEditor);

    CATNavigBox* GetNavigBox() override { return &m_NavigBox; }
    CATVisuScene* GetScene() override { return &m_Scene; }

private:
    CATFrmNavigGraphicWindow(const CATUnicodeString& title, CATFrmEditor* pEditor);
    ~CATFrmNavigGraphicWindow() override;

    CATNavigBox m_NavigBox;
    CATVisuScene m_Scene;
};
