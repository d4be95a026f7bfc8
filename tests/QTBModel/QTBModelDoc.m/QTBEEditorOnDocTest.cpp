#include <gmock/gmock.h>

#include "CATApplicationFrame.h"
#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATError.h"
#include "CATFrmLayout.h"
#include "CATFrmObjectEditor.h"
#include "CATIEditor.h"
#include "CATLateType.h"
#include "QTBDiagnosis.h"
#include "QTBTestLateType.h"
#include "QTBTestSession.h"

using ::testing::ElementsAre;

namespace {

class EditorOnDoc : public QTBTestSession
{
protected:
    void SetUp() override
    {
        QTBTestSession::SetUp();
        m_spDocument = CATBaseUnknown_var::Adopt(new CATDocument(*CATLateType::Find("QTBDoc")));
    }
    void TearDown() override
    {
        CATApplicationFrame::GetFrame()->OpenLayout();
        Layout()->CloseAll();
        m_spDocument = NULL_var;
        QTBTestSession::TearDown();
    }

    static CATFrmLayout* Layout() { return CATFrmLayout::GetCurrentLayout(); }
    static int Subscriptions() { return Layout()->GetCallbackManager()->GetCallbackCount(); }
    static int Editors() { return Layout()->GetEditorList().Size(); }
    CATFrmEditor* Editor() const { return CATIEditor_var(m_spDocument)->GetEditor(); }

    // The text of the failed check that asking for the editor raises.
    static std::string RaisedBy(const CATBaseUnknown_var& spDocument)
    {
        try {
            CATIEditor_var(spDocument)->GetEditor();
        } catch (const CATXHException& exception) {
            EXPECT_EQ(exception.GetError()->GetMsgId(), "AssertionFailedERR_1003");
            return std::string(exception.GetError()->GetNLSParameters().at(0).View());
        }
        return "nothing";
    }

    CATBaseUnknown_var m_spDocument;
};

TEST_F(EditorOnDoc, IsMadeForTheDocumentWhenItIsFirstAskedFor)
{
    EXPECT_EQ(Editors(), 0);
    CATFrmEditor* pEditor = Editor();
    ASSERT_NE(pEditor, nullptr);
    EXPECT_NE(dynamic_cast<CATFrmObjectEditor*>(pEditor), nullptr);
    EXPECT_EQ(pEditor->GetDocument(), CATDocument::FromComponent(m_spDocument.Get()));
    EXPECT_EQ(Editor(), pEditor);
    EXPECT_EQ(Editors(), 1);
}

TEST_F(EditorOnDoc, IsMadeAnewAfterItWasClosed)
{
    const int subscriptions = Subscriptions();
    CATFrmEditor* pEditor = Editor();
    EXPECT_EQ(Subscriptions(), subscriptions + 1);
    Layout()->CloseEditor(pEditor);
    EXPECT_EQ(Subscriptions(), subscriptions) << "a closed editor is waited for no more";
    EXPECT_EQ(Editors(), 0);
    EXPECT_NE(Editor(), nullptr);
    EXPECT_EQ(Editors(), 1);
    EXPECT_EQ(Subscriptions(), subscriptions + 1);
}

TEST_F(EditorOnDoc, IsKeptWhenAnotherEditorIsClosed)
{
    CATFrmEditor* pEditor = Editor();
    const int subscriptions = Subscriptions();
    CATFrmEditor* pOther = CATFrmEditor::Create();
    Layout()->CloseEditor(pOther);
    EXPECT_EQ(Subscriptions(), subscriptions);
    EXPECT_EQ(Editor(), pEditor);
    EXPECT_EQ(Editors(), 1);
}

TEST_F(EditorOnDoc, CannotBeMadeWithoutLayoutOrDocument)
{
    const QTBTestLateType otherType("QTBNoDocument", "QTBDoc");
    EXPECT_EQ(RaisedBy(otherType.Create()), "m_pEditor != NULL");
    CATApplicationFrame::GetFrame()->CloseLayout();
    EXPECT_EQ(RaisedBy(m_spDocument), "m_pEditor != NULL");
    CATApplicationFrame::GetFrame()->OpenLayout();
    EXPECT_NE(Editor(), nullptr) << "as soon as there is a layout";
}

TEST_F(EditorOnDoc, IsForgottenWithTheDocument)
{
    const int subscriptions = Subscriptions();
    Layout()->CloseEditor(Editor());
    // The extension asks for another editor, which the layout closes only after the document is gone.
    CATFrmEditor* pEditor = Editor();
    EXPECT_EQ(Subscriptions(), subscriptions + 1);
    const DebugCapture capture;
    m_spDocument = NULL_var;
    Layout()->CloseEditor(pEditor);
    EXPECT_EQ(Subscriptions(), subscriptions);
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(EditorOnDoc, TellsThatTheLayoutIsGoneWhenItEnds)
{
    Editor();
    CATApplicationFrame::GetFrame()->CloseLayout();
    const DebugCapture capture;
    m_spDocument = NULL_var;
    EXPECT_THAT(capture.Lines(), ElementsAre("QTBEEditorOnDoc::~QTBEEditorOnDoc -> pFrmLayout == NULL"));
}

} // namespace
