#include "CATExtIUIActivate.h"

#include <gtest/gtest.h>

#include <memory>

#include "CATApplicationFrame.h"
#include "CATCallback.h"
#include "CATCommandHeaderRegister.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATIUIActivate.h"
#include "CATNavigBox.h"
#include "QTBTestLateType.h"
#include "TIECATIUIActivate.h"

namespace {

class TestUIActivate : public CATExtIUIActivate
{
public:
    CATString GetWorkshopName() override { return "TestWks"; }
    CATString GetCommandName() override { return "TestActivateHdr"; }
};

class UIActivate : public ::testing::Test
{
protected:
    void SetUp() override
    {
        CATApplicationFrame::GetFrame()->OpenLayout();
        m_Type.Register<TIECATIUIActivate, CATIUIActivate, TestUIActivate>();
        m_BaseType.Register<TIECATIUIActivate, CATIUIActivate, CATExtIUIActivate>();
        m_spObject = m_Type.Create();
        m_spIUIActivate = m_spObject;
        Headers().Add(
            std::make_unique<CATCommandHeader>("TestActivateHdr", "Test", [this](const CATBaseUnknown_var& spObject) {
                m_spCommandObject = spObject;
                return m_CommandResult;
            }));
    }
    void TearDown() override
    {
        Headers().Remove("TestActivateHdr");
        CATFrmLayout::GetCurrentLayout()->CloseAll();
    }

    static CATCommandHeaderRegister& Headers() { return CATApplicationFrame::GetFrame()->GetCommandHeaders(); }

    static CATFrmEditor* OpenWindow()
    {
        CATFrmEditor* pEditor = CATFrmEditor::Create();
        CATFrmWindow::Create("window", pEditor);
        return pEditor;
    }

    QTBTestLateType m_Type{"TestActivatedObject"};
    QTBTestLateType m_BaseType{"TestPlainActivatedObject"};
    CATBaseUnknown_var m_spObject;
    CATIUIActivate_var m_spIUIActivate;
    CATBaseUnknown_var m_spCommandObject;
    HRESULT m_CommandResult = S_OK;
};

TEST_F(UIActivate, ActivatesTheWorkshopAndStartsTheCommandOnTheObject)
{
    CATFrmEditor* pEditor = OpenWindow();
    EXPECT_EQ(m_spIUIActivate->IsActive(), FALSE);
    EXPECT_EQ(m_spIUIActivate->Activate(), S_OK);
    EXPECT_EQ(pEditor->GetWorkshop(), "TestWks");
    EXPECT_EQ(m_spCommandObject, m_spObject);
    EXPECT_EQ(m_spIUIActivate->IsActive(), TRUE);
}

TEST_F(UIActivate, BringsTheFormerWorkshopBack)
{
    CATFrmEditor* pEditor = OpenWindow();
    pEditor->ActivateWorkshop("FormerWks");
    EXPECT_EQ(m_spIUIActivate->Deactivate(), S_FALSE);
    m_spIUIActivate->Activate();
    m_spIUIActivate->Activate();
    EXPECT_EQ(m_spIUIActivate->Deactivate(), S_OK);
    EXPECT_EQ(pEditor->GetWorkshop(), "FormerWks");
    EXPECT_EQ(m_spIUIActivate->IsActive(), FALSE);
    EXPECT_EQ(m_spIUIActivate->Deactivate(), S_FALSE);
}

TEST_F(UIActivate, LeavesAWorkshopThatSomebodyElseActivated)
{
    CATFrmEditor* pEditor = OpenWindow();
    m_spIUIActivate->Activate();
    pEditor->ActivateWorkshop("OtherWks");
    EXPECT_EQ(m_spIUIActivate->IsActive(), FALSE);
    EXPECT_EQ(m_spIUIActivate->Deactivate(), S_FALSE);
    EXPECT_EQ(pEditor->GetWorkshop(), "OtherWks");
}

TEST_F(UIActivate, FailsWithoutEditorAndWithItsCommand)
{
    EXPECT_EQ(m_spIUIActivate->Activate(), E_FAIL);
    EXPECT_EQ(m_spIUIActivate->IsActive(), FALSE);
    CATFrmEditor* pEditor = OpenWindow();
    m_CommandResult = E_OUTOFMEMORY;
    EXPECT_EQ(m_spIUIActivate->Activate(), E_OUTOFMEMORY);
    EXPECT_EQ(pEditor->GetWorkshop(), "TestWks") << "the workshop stays";
}

TEST_F(UIActivate, ActivatesNothingOfItself)
{
    CATFrmEditor* pEditor = OpenWindow();
    pEditor->ActivateWorkshop("FormerWks");
    const CATIUIActivate_var spIUIActivate(m_BaseType.Create());
    EXPECT_EQ(spIUIActivate->GetWorkshopName(), "");
    EXPECT_EQ(spIUIActivate->GetCommandName(), "");
    EXPECT_EQ(spIUIActivate->Activate(), S_OK);
    EXPECT_EQ(spIUIActivate->IsActive(), TRUE);
    EXPECT_EQ(pEditor->GetWorkshop(), "FormerWks");
    EXPECT_EQ(spIUIActivate->Deactivate(), S_OK);
}

TEST_F(UIActivate, IsWhatADoubleClickDoes)
{
    CATFrmEditor* pEditor = OpenWindow();
    const CATNavigBox box;
    EXPECT_EQ(box.DoubleClick(m_spObject), S_OK);
    EXPECT_EQ(pEditor->GetWorkshop(), "TestWks");
    QTBTestLateType plain("TestPlainObject");
    EXPECT_EQ(box.DoubleClick(plain.Create()), S_FALSE);
    EXPECT_EQ(box.DoubleClick(NULL_var), S_FALSE);
}

TEST_F(UIActivate, LetsTheEditorAnnounceAnotherWorkshop)
{
    CATFrmEditor* pEditor = OpenWindow();
    int count = 0;
    pEditor->GetCallbackManager()->AddCallback(this, CATFrmEditor::WORKSHOP_ACTIVATED(),
                                               [&](CATEventSource* pSender) { count += pSender == pEditor ? 1 : 0; });
    pEditor->ActivateWorkshop("TestWks");
    pEditor->ActivateWorkshop("TestWks");
    EXPECT_EQ(count, 1);
}

} // namespace
