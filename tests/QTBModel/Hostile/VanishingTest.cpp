#include <functional>
#include <utility>

#include <gmock/gmock.h>

#include "CATCallbackManager.h"
#include "CATDocumentServices.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATIContextualMenu.h"
#include "QTBCommUtil.h"
#include "QTBICommunicationServices.h"
#include "QTBILinkToPsn.h"
#include "QTBILinkToQtb.h"
#include "QTBInvariants.h"
#include "QTBNodeRelationInfo.h"
#include "QTBNotificationAny.h"
#include "QTBProductSession.h"
#include "QTBTestLateType.h"
#include "QTBTestWindow.h"
#include "TIEQTBICommunicationServices.h"

using testing::IsEmpty;

namespace {

// A PDM system in whose requests anything may happen.
class EventfulCommunication
{
public:
    explicit EventfulCommunication(std::function<void()> event)
    {
        s_Event = std::move(event);
        m_Type.Register<TIEQTBICommunicationServices, QTBICommunicationServices, Extension>();
        QTBCommUtil::SetCommComponent(m_Type.Create());
    }
    EventfulCommunication(const EventfulCommunication&) = delete;
    EventfulCommunication& operator=(const EventfulCommunication&) = delete;
    ~EventfulCommunication() { QTBCommUtil::SetCommComponent(NULL_var); }

private:
    class Extension : public CATBaseUnknown
    {
    public:
        HRESULT CreateRelation(const CATUnicodeString&, const QTBIPdmObjNode_var&, const QTBIPdmObjNode_var&,
                               const CATUnicodeString&, CATIDOMDocument_var*)
        {
            s_Event();
            return E_FAIL;
        }
        HRESULT Delete(const QTBINodeAttributes_var&, const CATUnicodeString*)
        {
            s_Event();
            return S_OK;
        }
    };

    inline static std::function<void()> s_Event;
    QTBTestLateType m_Type{"QTBEventfulCommunication"};
};

// A session in which what an operation works on goes away while it runs.
class Vanishing : public QTBProductSession
{
protected:
    void SetUp() override
    {
        QTBProductSession::SetUp();
        Update(NumberedPart("A", "A") + NumberedPart("B", "B") + Usage("AB", "A", "B", "B.1"));
        Open(R"(<product id="a" file="a.CATProduct" partNumber="A"><instance of="b" name="B.1"/></product>
                <product id="b" file="b.CATPart" partNumber="B"/>)");
        m_pWindow = std::make_unique<QTBTestWindow>();
        m_pWindow->Show(FindNode("A"), {"PartPart"});
    }
    void TearDown() override
    {
        EXPECT_THAT(QTBFindBrokenInvariants(), IsEmpty());
        m_pWindow.reset();
        QTBProductSession::TearDown();
    }

    void CloseWindow() { m_pWindow->Close(); }

    // Does something when a menu opens.
    void WhenAMenuOpens(const std::function<void()>& event)
    {
        CATFrmEditor::GetCurrentEditor()->GetCallbackManager()->AddCallback(this, QTBNotificationAny::CtxMenuSelected(),
                                                                            [event](CATEventSource*) { event(); });
    }
    static HRESULT OpenMenu(const QTBIRepNode_var& spIRepNode)
    {
        CATCmdAccess* pMenu = nullptr;
        return CATIContextualMenu_var(spIRepNode)->GetContextualMenu(pMenu);
    }

    std::unique_ptr<QTBTestWindow> m_pWindow;
};

} // namespace

TEST_F(Vanishing, AWindowMayCloseWhileAMenuOpens)
{
    const QTBIRepNode_var spIRepNode = m_pWindow->Find(FindNode("B"));
    WhenAMenuOpens([this] { CloseWindow(); });
    OpenMenu(spIRepNode);
    EXPECT_EQ(CATFrmLayout::GetCurrentLayout()->GetWindowList().Size(), 0);
}

TEST_F(Vanishing, AWindowMayCloseBeforeFurtherListenersHearOfTheMenu)
{
    const QTBIRepNode_var spIRepNode = m_pWindow->Find(FindNode("B"));
    int heard = 0;
    WhenAMenuOpens([this] { CloseWindow(); });
    WhenAMenuOpens([&heard] { ++heard; });
    OpenMenu(spIRepNode);
    EXPECT_LE(heard, 1);
}

TEST_F(Vanishing, AnItemMayLeaveTheGraphWhileItsMenuOpens)
{
    const QTBIRepNode_var spIRepNode = m_pWindow->Find(FindNode("B"));
    WhenAMenuOpens([] { GetPdmNodeCont()->RemoveNodeFromPdmGraph("B", FALSE, FALSE, FALSE, nullptr); });
    OpenMenu(spIRepNode);
    EXPECT_TRUE(FindNode("B") == NULL_var);
}

TEST_F(Vanishing, TheSessionMayEndWhileAMenuOpens)
{
    QTBIRepNode_var spIRepNode = m_pWindow->Find(FindNode("B"));
    m_pWindow.reset();
    WhenAMenuOpens([] { QTBGlobVarsUtil::EndSession(); });
    OpenMenu(spIRepNode);
    spIRepNode = NULL_var;
}

TEST_F(Vanishing, AnItemMayLeaveTheGraphWhileThePdmSystemDeletesIt)
{
    const EventfulCommunication communication(
        [] { GetPdmNodeCont()->RemoveNodeFromPdmGraph("B", FALSE, FALSE, FALSE, nullptr); });
    QTBIPdmNode_var spIPdmNode = PdmNode("B");
    GetPdmNodeCont()->RemoveNodeFromPdmGraph(&spIPdmNode, TRUE, FALSE, FALSE, nullptr);
    EXPECT_TRUE(FindNode("B") == NULL_var);
    EXPECT_TRUE(FindNode("AB") == NULL_var);
    EXPECT_TRUE(FindNode("A") != NULL_var);
}

TEST_F(Vanishing, AnAnswerMayArriveWhileThePdmSystemDeletesAnItem)
{
    const EventfulCommunication communication(
        [] { Update(NumberedPart("B", "B") + NumberedPart("C", "C") + Usage("BC", "B", "C", "C.1")); });
    QTBIPdmNode_var spIPdmNode = PdmNode("B");
    GetPdmNodeCont()->RemoveNodeFromPdmGraph(&spIPdmNode, TRUE, FALSE, FALSE, nullptr);
    EXPECT_TRUE(FindNode("C") != NULL_var);
}

TEST_F(Vanishing, AWindowMayCloseWhileThePdmSystemMakesARelation)
{
    const EventfulCommunication communication([this] { CloseWindow(); });
    const QTBIRepNodeCont_var spIRepNodeCont = m_pWindow->GetCont();
    EXPECT_TRUE(FAILED(spIRepNodeCont->CreateRelation("PartPart", m_pWindow->Find(FindNode("A")),
                                                      m_pWindow->Find(FindNode("B")), "")));
    EXPECT_EQ(CATFrmLayout::GetCurrentLayout()->GetWindowList().Size(), 0);
}

TEST_F(Vanishing, RepNodesThatAreHeldOutliveTheirWindowWithoutHarm)
{
    const QTBIRepNode_var spIRepNode = m_pWindow->Find(FindNode("B"));
    const QTBIRepNodeCont_var spIRepNodeCont = m_pWindow->GetCont();
    CloseWindow();
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    EXPECT_TRUE(FAILED(spIRepNodeCont->UpdateRepTree(spIRepNode, CATListValQTBNodeRelationInfo(), &bFalse, nullptr,
                                                     nullptr, &bTrue, &bTrue, &bFalse)));
    CATUnicodeString usText;
    spIRepNode->GetDisplayString(&usText);
    spIRepNode->Highlight(&bTrue, &bTrue);
    spIRepNode->Redraw(&bTrue);
    OpenMenu(spIRepNode);
    unsigned char bExist = TRUE;
    CATListValCATBaseUnknown_var products;
    QTBILinkToPsn_var(spIRepNode)->CorrespondingPsnNodesExist(&bExist, &products, nullptr);
    EXPECT_EQ(products.Size(), 0);
}

TEST_F(Vanishing, ProductsThatAreHeldOutliveTheirDocumentsWithoutHarm)
{
    const CATIProduct_var spIProduct = At("A", {"B.1"});
    CATDocumentServices::Remove(*DocumentOf(Root("A")));
    CATFrmWindow* pWindow = nullptr;
    QTBILinkToQtb_var(spIProduct)->HighlightProdStrucNode(TRUE, TRUE, &pWindow);
    EXPECT_EQ(spIProduct->GetPartNumber(), "B");
    unsigned char bExist = FALSE;
    CATListValCATBaseUnknown_var products;
    QTBILinkToPsn_var(m_pWindow->Find(FindNode("B")))->CorrespondingPsnNodesExist(&bExist, &products, nullptr);
    EXPECT_EQ(products.Size(), 0);
}

TEST_F(Vanishing, AWindowMayCloseWhileAnAnswerIsRead)
{
    QTBTestWindow other;
    other.Show(FindNode("A"), {"PartPart"});
    Update(NumberedPart("A", "A2"));
    CloseWindow();
    unsigned char bAddNewNodes = TRUE;
    EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(&bAddNewNodes), Succeeds());
    EXPECT_TRUE(other.Find(FindNode("A")) != NULL_var);
}
