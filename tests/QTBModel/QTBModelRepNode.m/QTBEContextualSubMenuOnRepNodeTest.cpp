#include "QTBEContextualSubMenuOnRepNode.h"

#include <memory>

#include <gmock/gmock.h>

#include "CATFrmEditor.h"
#include "CATIContextualSubMenu.h"
#include "QTBRepTreeSession.h"
#include "QTBReplacedExtension.h"
#include "QTBTestWindow.h"
#include "TIECATIContextualSubMenu.h"

using ::testing::Contains;
using ::testing::HasSubstr;

namespace {

// Two windows that show A.
class RepNodeContextSubMenu : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        Update(Part("A"));
        m_pFirst = std::make_unique<QTBTestWindow>();
        m_pSecond = std::make_unique<QTBTestWindow>();
        m_pFirst->Show(FindNode("A"), {});
        m_pSecond->Show(FindNode("A"), {});
    }
    void TearDown() override
    {
        m_pFirst.reset();
        m_pSecond.reset();
        QTBFaultyRepTreeSession::TearDown();
    }

    static CATCmdAccess* Open(const CATBaseUnknown_var& spNode)
    {
        const CATIContextualSubMenu_var spSubMenu(spNode);
        EXPECT_TRUE(spSubMenu != NULL_var);
        return spSubMenu->GetContextualSubMenu();
    }
    static bool IsPreselected(const QTBTestWindow& window)
    {
        const QTBIRepNode_var spIRepNode = window.Find(FindNode("A"));
        return window.GetFrmWindow()->GetEditor()->GetPSO()->ContainsObject(spIRepNode);
    }

    std::unique_ptr<QTBTestWindow> m_pFirst;
    std::unique_ptr<QTBTestWindow> m_pSecond;
};

TEST_F(RepNodeContextSubMenu, PreselectsTheObjectInAllWindowsAndShowsNoMenu)
{
    EXPECT_FALSE(IsPreselected(*m_pFirst));
    EXPECT_EQ(Open(m_pFirst->Find(FindNode("A"))), nullptr);
    EXPECT_TRUE(IsPreselected(*m_pFirst));
    EXPECT_TRUE(IsPreselected(*m_pSecond));
}

TEST_F(RepNodeContextSubMenu, DoesNothingWithoutPdmNode)
{
    const QTBIRepNode_var spIRepNode = m_pFirst->Find(FindNode("A"));
    Unlink(spIRepNode);
    const DebugCapture capture;
    EXPECT_EQ(Open(spIRepNode), nullptr);
    EXPECT_FALSE(IsPreselected(*m_pSecond));
    EXPECT_THAT(capture.Lines(), ::testing::Not(Contains(HasSubstr("ERROR"))));
    KeepLoose(spIRepNode);
}

TEST_F(RepNodeContextSubMenu, NeedsTheWayToTheProducts)
{
    const QTBReplacedExtension replaced("QTBRepNode", QTBILinkToPsn::MetaObject(), nullptr);
    const DebugCapture capture;
    EXPECT_EQ(Open(m_pFirst->Find(FindNode("A"))), nullptr);
    EXPECT_FALSE(IsPreselected(*m_pFirst));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("spILinkToPsnOnThis == NULL_var")));
    EXPECT_THAT(capture.Lines().back(), HasSubstr("spILinkToPsnOnThis")) << "the error's message";
}

TEST_F(RepNodeContextSubMenu, IsForRepNodes)
{
    QTBTestLateType type("QTBNoRepNode");
    type.Register<TIECATIContextualSubMenu, CATIContextualSubMenu, QTBEContextualSubMenuOnRepNode>();
    const DebugCapture capture;
    EXPECT_EQ(Open(type.Create()), nullptr);
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("spIRepNodeOnThis == NULL_var")));
}

TEST_F(RepNodeContextSubMenu, TellsThatPreselectingFailed)
{
    const QTBFault fault("PreselectRepNodes");
    const DebugCapture capture;
    EXPECT_EQ(Open(m_pFirst->Find(FindNode("A"))), nullptr);
    EXPECT_THAT(capture.Lines(), Contains("QTBEContextualSubMenuOnRepNode::GetContextualSubMenu -> "
                                          "spIPdmNodeForPreselect->PreselectRepNodes !"));
}

} // namespace
