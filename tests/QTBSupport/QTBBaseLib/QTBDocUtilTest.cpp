#include "QTBDocUtil.h"

#include <gmock/gmock.h>

#include "CATApplicationFrame.h"
#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATFrmLayout.h"
#include "CATIEditor.h"
#include "CATNavigBox.h"
#include "QTBIQtbFrmWindow.h"
#include "QTBIRepNodeCont.h"
#include "QTBTestSession.h"
#include "QTBTestWindow.h"

namespace {

using ::testing::ElementsAre;

class DocUtil : public QTBTestSession
{
protected:
    static CATFrmLayout& Layout() { return *CATFrmLayout::GetCurrentLayout(); }
};

TEST_F(DocUtil, OpensAPdmDocumentWithItsWindow)
{
    QTBIQtbFrmWindow_var spIQtbFrmWindow;
    CATIEditor_var spIEditor;
    ASSERT_EQ(QTBDocUtil::CreateNewQtbDocument(&spIQtbFrmWindow, &spIEditor), S_OK);
    CATFrmWindow* pFrmWindow = nullptr;
    EXPECT_EQ(spIQtbFrmWindow->GetFrmWindowPtr(&pFrmWindow), S_OK);
    EXPECT_EQ(Layout().GetCurrentWindow(), pFrmWindow);
    EXPECT_EQ(pFrmWindow->GetEditor(), spIEditor->GetEditor());
    EXPECT_STREQ(spIEditor->IsA(), "QTBDoc");
    EXPECT_EQ(pFrmWindow->GetEditor()->GetDocument(), CATDocument::FromComponent(spIEditor.Get()));
}

TEST_F(DocUtil, ShowsTheDefaultRootNodeInANewWindow)
{
    const QTBTestWindow window;
    EXPECT_THAT(window.GetRootTexts(), ElementsAre("Default Rep Node"));
    unsigned char bIsSet = FALSE;
    EXPECT_EQ(window.GetCont()->QtbFrmWindowPtrIsSet(&bIsSet), S_OK);
    EXPECT_EQ(bIsSet, TRUE);
}

TEST_F(DocUtil, GivesEachWindowATitleOfItsOwn)
{
    const QTBTestWindow first;
    const QTBTestWindow second;
    EXPECT_NE(first.GetFrmWindow()->GetTitle(), second.GetFrmWindow()->GetTitle());
}

TEST_F(DocUtil, CleansUpTheRepNodeContainerWhenTheWindowCloses)
{
    Update(Part("P1"));
    QTBTestWindow window;
    window.Show(FindNode("P1"), {});
    const QTBIRepNodeCont_var spIRepNodeCont = window.GetCont();
    window.Close();
    CATListValCATBaseUnknown_var repNodes;
    EXPECT_EQ(spIRepNodeCont->GetAllRepNodes(&repNodes), S_OK);
    EXPECT_EQ(repNodes.Size(), 0);
    unsigned char bIsSet = TRUE;
    EXPECT_EQ(spIRepNodeCont->QtbFrmWindowPtrIsSet(&bIsSet), S_OK);
    EXPECT_EQ(bIsSet, FALSE);
    EXPECT_EQ(PdmNode("P1")->GetRepNodes(&repNodes, NULL_var), S_OK);
    EXPECT_EQ(repNodes.Size(), 0);
    EXPECT_EQ(CATDocumentServices::GetDocuments().Size(), 0);
}

TEST_F(DocUtil, KnowsThatAWindowIsGone)
{
    QTBIQtbFrmWindow_var spIQtbFrmWindow;
    ASSERT_EQ(QTBDocUtil::CreateNewQtbDocument(&spIQtbFrmWindow, nullptr), S_OK);
    CATFrmWindow* pFrmWindow = nullptr;
    spIQtbFrmWindow->GetFrmWindowPtr(&pFrmWindow);
    Layout().CloseWindow(pFrmWindow);
    EXPECT_EQ(spIQtbFrmWindow->GetFrmWindowPtr(&pFrmWindow), E_FAIL);
    EXPECT_EQ(pFrmWindow, nullptr);
    EXPECT_EQ(spIQtbFrmWindow->GetFrmWindowPtr(nullptr), E_FAIL);
}

TEST_F(DocUtil, LeavesOtherWindowsAlone)
{
    QTBTestWindow closed;
    const QTBTestWindow stays;
    closed.Close();
    EXPECT_EQ(Layout().GetCurrentWindow(), stays.GetFrmWindow());
    unsigned char bIsSet = FALSE;
    EXPECT_EQ(stays.GetCont()->QtbFrmWindowPtrIsSet(&bIsSet), S_OK);
    EXPECT_EQ(bIsSet, TRUE);
    // One for each document that was opened.
    EXPECT_THAT(stays.GetRootTexts(), ElementsAre("Default Rep Node", "Default Rep Node"));
}

TEST_F(DocUtil, OpensNothingWithoutALayout)
{
    CATApplicationFrame::GetFrame()->CloseLayout();
    EXPECT_TRUE(FAILED(QTBDocUtil::CreateNewQtbDocument(nullptr, nullptr)));
    EXPECT_EQ(CATDocumentServices::GetDocuments().Size(), 0);
    CATApplicationFrame::GetFrame()->OpenLayout();
}

TEST_F(DocUtil, ClosesAllPdmDocuments)
{
    const QTBTestWindow first;
    const QTBTestWindow second;
    QTBDocUtil::CloseAllQtbDocuments();
    EXPECT_EQ(Layout().GetWindowList().Size(), 0);
    EXPECT_EQ(Layout().GetEditorList().Size(), 0);
    EXPECT_EQ(CATDocumentServices::GetDocuments().Size(), 0);
}

} // namespace
