#include <gmock/gmock.h>

#include "CATFrmLayout.h"
#include "CATIProduct.h"
#include "CATNavigBox.h"
#include "QTBERepNodeContOnRepNodeCont.h"
#include "QTBMessageUtil.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"
#include "QTBTraceUtil.h"
#include "TIECATIProduct.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Nodes = CATListValCATBaseUnknown_var;

// A(AB(B(BC(C))) AD(D)) in a container without window.
class RepTreeRemoval : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
        Update(Part("A") + Part("B") + Part("C") + Part("D") + PartPart("AB", "A", "B") + PartPart("BC", "B", "C") +
               PartPart("AD", "A", "D"));
        a = CreateRoot("A");
        ab = Create(a, "AB");
        b = Create(ab, "B");
        bc = Create(b, "BC");
        c = Create(bc, "C");
        ad = Create(a, "AD");
        d = Create(ad, "D");
    }

    void TearDown() override
    {
        a = ab = b = bc = c = ad = d = NULL_var;
        QTBFaultyRepTreeSession::TearDown();
    }

    HRESULT RemoveOne(QTBIRepNode_var spIRepNode, unsigned char bInformUser = FALSE) const
    {
        return Cont()->RemoveRepNodeFromContainer(&spIRepNode, &bInformUser);
    }
    HRESULT Clear(unsigned char bUpdateAfterwards) const { return Cont()->Clear(&bUpdateAfterwards); }

    QTBIRepNode_var a, ab, b, bc, c, ad, d;
};

TEST_F(RepTreeRemoval, TakesOneNodeOutOfStoreAndLinks)
{
    EXPECT_THAT(RemoveOne(c), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BC)) AD(D))");
    EXPECT_EQ(TreeOf(c), "?");
    EXPECT_EQ(RepNodesOf("C").Size(), 0);
    QTBIRepNode_var spFound;
    unsigned char bExists = TRUE;
    EXPECT_THAT(m_spCont->GetRepNodeByKey(KeyOf(c).c_str(), &spFound, &bExists), Succeeds());
    EXPECT_EQ(bExists, FALSE);
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 6);
}

TEST_F(RepTreeRemoval, ChecksTheNodeToTakeOut)
{
    unsigned char bFalse = FALSE;
    EXPECT_THAT(Cont()->RemoveRepNodeFromContainer(nullptr, &bFalse), FailsAssertion("pspIRepNode != NULL"));
    EXPECT_THAT(RemoveOne(NULL_var), LacksInterface("*pspIRepNode"));
    {
        const QTBFault fault("IsRepDefaultNode", c);
        EXPECT_THAT(RemoveOne(c), FailsCall("(*pspIRepNode)->IsRepDefaultNode"));
        EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 7);
    }
    const QTBFault fault("RemoveAllRels", c);
    EXPECT_THAT(DiagnosisOf([&] { return RemoveOne(c); }),
                ElementsAre(Call("QTBINodeRelations::RemoveAllRels"), Call("RemoveNodeFromContainer")));
}

TEST_F(RepTreeRemoval, TakesATreeWithAllBelow)
{
    EXPECT_THAT(Remove(ab), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AD(D))");
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 3);
    EXPECT_THAT(Remove(a), Succeeds());
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 0);
}

TEST_F(RepTreeRemoval, OfANodeThatLostItsPdmNodeRemovesItsSubtreesAndKeepsIt)
{
    Unlink(b);
    EXPECT_THAT(Remove(b), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(?) AD(D))");
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 5);
    EXPECT_THAT(Remove(ab), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AD(D))");
    EXPECT_TRUE(AllRepNodesOf(m_spCont).Locate(CATBaseUnknown_var(b)) > 0) << "kept below as well";
}

TEST_F(RepTreeRemoval, OfANodeThatItsKeyFindsThePdmNodeOfRemovesIt)
{
    Unlink(b);
    EXPECT_THAT(b->AddPdmNodeKeyForDebug("B"), Succeeds());
    EXPECT_THAT(Remove(b), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB AD(D))");
}

TEST_F(RepTreeRemoval, ReportsAFailureBelowThroughEveryLevel)
{
    const auto diagnosis = [&] { return DiagnosisOf([&] { return Remove(a); }); };
    EXPECT_THAT(Remove(NULL_var), FailsAssertion("NULL_var != *pspIRepNode"));
    {
        const QTBFault fault("GetDirectChildren", a);
        EXPECT_THAT(diagnosis(), ElementsAre(Call("GetDirectChildren")));
    }
    {
        const QTBFault fault("GetDirectChildren", b);
        EXPECT_THAT(diagnosis(), ElementsAre(Call("GetDirectChildren"), Call("RecursiveRemoveRepTree"),
                                             Call("RecursiveRemoveRepTree")));
    }
    {
        const QTBFault fault("IsRepDefaultNode", ab);
        EXPECT_THAT(diagnosis(), ElementsAre(Call("(*pspIRepNode)->IsRepDefaultNode"),
                                             Call("RemoveRepNodeFromContainer"), Call("RecursiveRemoveRepTree")));
    }
    EXPECT_EQ(TreeOf(a), "A(AB AD(D))") << "what was removed so far is gone";
    LinkBelow(d, CreateLoose("QTBNode"));
    EXPECT_THAT(diagnosis(), ElementsAre(Handle("spIRepNodeOnRightNode"), Call("RecursiveRemoveRepTree"),
                                         Call("RecursiveRemoveRepTree")));
}

TEST_F(RepTreeRemoval, ClearsAllTreesAndTheDefaultRoot)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    EXPECT_THAT(m_spCont->CreateDefaultRootNode(), Succeeds());
    CreateRoot("B");
    EXPECT_THAT(Clear(FALSE), Succeeds());
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 0);
}

TEST_F(RepTreeRemoval, ClearsAndBuildsAgainOnRequest)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    EXPECT_THAT(m_spCont->CreateDefaultRootNode(), Succeeds());
    const std::string formerKey = KeyOf(Find("DEFAULT_ROOT_NODE"));
    EXPECT_THAT(Clear(TRUE), Succeeds());
    // The parts belong to the action that ended with the default root's creation.
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("DEFAULT_ROOT_NODE"));
    EXPECT_NE(KeyOf(Find("DEFAULT_ROOT_NODE")), formerKey);
}

TEST_F(RepTreeRemoval, ChecksWhatItClears)
{
    {
        const QTBFault fault("GetDirectChildren", a);
        EXPECT_THAT(DiagnosisOf([&] { return Clear(FALSE); }),
                    ElementsAre(Call("GetDirectChildren"), Call("RecursiveRemoveRepTree")));
        EXPECT_THAT(DiagnosisOf([&] { return m_spCont->Cleanup(); }),
                    ElementsAre(Call("GetDirectChildren"), Call("RecursiveRemoveRepTree"), Call("Clear")));
    }
    {
        const QTBFault fault("IsRepRootNode", a);
        EXPECT_THAT(DiagnosisOf([&] { return Clear(FALSE); }),
                    ElementsAre(Call("spIRepNodeOnNode->IsRepRootNode"), Call("GetRepRootNodes")));
    }
    const QTBFault fault("GetPdmRootNodes");
    EXPECT_THAT(DiagnosisOf([&] { return Clear(TRUE); }),
                ElementsAre(Call("m_spIPdmNodeCont->GetPdmRootNodes"), Call("UpdateAllRepTrees")));
}

// The same trees in a window.
class RepTreeRemovalInWindow : public RepTreeRemoval
{
protected:
    void SetUp() override
    {
        RepTreeRemoval::SetUp();
        m_pWindow = std::make_unique<QTBTestWindow>();
        m_spCont = m_pWindow->GetCont();
        a = CreateRoot("A");
        ab = Create(a, "AB");
        b = Create(ab, "B");
    }
    void TearDown() override
    {
        m_pWindow.reset();
        RepTreeRemoval::TearDown();
    }

    std::unique_ptr<QTBTestWindow> m_pWindow;
};

TEST_F(RepTreeRemovalInWindow, CleanupLeavesTheContainerEmptyUnregisteredAndWithoutWindow)
{
    // A root that the window shows, one that it does not show, and one that lost its PDM node.
    Nodes shown;
    shown.Append(CATBaseUnknown_var(a));
    m_pWindow->GetFrmWindow()->GetNavigBox()->SetRoots(shown);
    const QTBIRepNode_var spNotShown = CreateRoot("D");
    const QTBIRepNode_var spWithoutPdmNode = CreateRoot("C");
    Unlink(spWithoutPdmNode);
    EXPECT_THAT(m_spCont->Cleanup(), Succeeds());
    EXPECT_EQ(AllRepNodesOf(m_spCont).Size(), 0);
    EXPECT_EQ(RepNodesOf("D").Size(), 1) << "that of the other container";
    unsigned char bIsSet = TRUE;
    EXPECT_THAT(m_spCont->QtbFrmWindowPtrIsSet(&bIsSet), Succeeds());
    EXPECT_EQ(bIsSet, FALSE);
    for (const QTBIRepNode_var& spIRepNode : {spNotShown, spWithoutPdmNode}) {
        EXPECT_THAT(spIRepNode->FrmWindowPtrExists(&bIsSet), Succeeds());
        EXPECT_EQ(bIsSet, FALSE);
    }
    EXPECT_THAT(m_spCont->Cleanup(), Succeeds()) << "a second time";
}

TEST_F(RepTreeRemovalInWindow, CleanupChecksItsSteps)
{
    EXPECT_THAT(Remove(a), Succeeds());
    {
        const QTBFault fault("RemoveRepNodeContainer");
        EXPECT_THAT(
            DiagnosisOf([&] { return m_spCont->Cleanup(); }),
            ElementsAre(Call("m_spIPdmNodeCont->RemoveRepNodeContainer"), Call("RemoveLinkToGlobalPdmNodeContainer")));
    }
    const QTBIRepNode_var spWithoutPdmNode = CreateRoot("C");
    Unlink(spWithoutPdmNode);
    {
        const QTBFault fault("SetFrmWindowPtr", spWithoutPdmNode);
        EXPECT_THAT(DiagnosisOf([&] { return m_spCont->Cleanup(); }),
                    ElementsAre(Call("spIRepNode->SetFrmWindowPtr"), Call("SetFrmWindowPtrToAllContainedRepNodes"),
                                Call("SetQtbFrmWindowPtrToNull")));
    }
    const QTBFault fault("RemoveAllRels", spWithoutPdmNode);
    EXPECT_THAT(DiagnosisOf([&] { return m_spCont->Cleanup(); }),
                ElementsAre(Call("QTBINodeRelations::RemoveAllRels"), Call("RemoveNodeFromContainer")));
}

// A product of which only the component counts here.
class FakeProduct : public CATBaseUnknown
{
public:
    CATIProduct_var GetFatherProduct() { return NULL_var; }
    CATIProduct_var GetReferenceProduct() { return NULL_var; }
    Nodes* GetChildren(const char*) { return new Nodes(); }
    CATUnicodeString GetPartNumber() { return ""; }
    HRESULT IsReference() { return S_OK; }
    HRESULT GetPrdInstanceName(CATUnicodeString*) { return E_FAIL; }
    HRESULT SetPrdInstanceName(const CATUnicodeString&) { return E_FAIL; }
    HRESULT SetPartNumber(const CATUnicodeString&) { return E_FAIL; }
    HRESULT GetNomenclature(CATUnicodeString*) { return E_FAIL; }
    HRESULT GetDescriptionRef(CATUnicodeString*) { return E_FAIL; }
    HRESULT GetDefinition(CATUnicodeString*) { return E_FAIL; }
    HRESULT GetRevision(CATUnicodeString*) { return E_FAIL; }
    HRESULT AddChild(const CATIProduct_var&, const CATUnicodeString&, CATIProduct_var*) { return E_FAIL; }
    HRESULT RemoveChild(const CATIProduct_var&) { return E_FAIL; }
};

// Rep nodes to which the products of the test correspond.
class FakeLinkToPsn : public QTBELinkToPsnOnRepNode
{
public:
    HRESULT CorrespondingPsnNodesExist(unsigned char* pbExist, Nodes* pCorrespondingPsnNodes, CATFrmWindow** ppWindow)
    {
        EXPECT_EQ(ppWindow, nullptr);
        if (s_bFails) {
            return E_FAIL;
        }
        *pbExist = s_Products.Size() > 0 ? TRUE : FALSE;
        *pCorrespondingPsnNodes = s_Products;
        return S_OK;
    }

    inline static Nodes s_Products;
    inline static bool s_bFails = false;
};

class RemovalOfRepNodesWithProducts : public RepTreeRemovalInWindow
{
protected:
    RemovalOfRepNodesWithProducts() { m_ProductType.Register<TIECATIProduct, CATIProduct, FakeProduct>(); }

    void SetUp() override
    {
        RepTreeRemovalInWindow::SetUp();
        m_pLink = std::make_unique<QTBReplacedExtension>(
            "QTBRepNode", QTBILinkToPsn::MetaObject(), QTBFactoryOf<TIEQTBILinkToPsn, QTBILinkToPsn, FakeLinkToPsn>());
        FakeLinkToPsn::s_Products.Append(m_ProductType.Create());
        FakeLinkToPsn::s_Products.Append(m_ProductType.Create());
    }
    void TearDown() override
    {
        FakeLinkToPsn::s_Products.RemoveAll();
        FakeLinkToPsn::s_bFails = false;
        m_pLink.reset();
        RepTreeRemovalInWindow::TearDown();
    }

    static std::string MessageAbout(const QTBIRepNode_var& spIRepNode)
    {
        const HRESULT hr = CATError::GetReturn(
            2,
            QTBMessageUtil::RepNodeDeleted(QTBTraceUtil::GetNodeString(spIRepNode, FALSE),
                                           QTBTraceUtil::GetNodeString(FakeLinkToPsn::s_Products[1], FALSE)),
            nullptr, __FILE__, __LINE__);
        return TextOf(CATError::CATGetLastError(hr, nullptr)->GetNLSMessage());
    }

    QTBTestLateType m_ProductType{"FakeProduct"};
    std::unique_ptr<QTBReplacedExtension> m_pLink;
};

TEST_F(RemovalOfRepNodesWithProducts, TellsTheUserOfEachProductOnRequest)
{
    const std::string message = MessageAbout(b);
    EXPECT_THAT(Remove(b, TRUE), Succeeds());
    EXPECT_THAT(InfoList(), ElementsAre(message, message));
}

TEST_F(RemovalOfRepNodesWithProducts, TellsTheUserOfTheWholeTree)
{
    EXPECT_THAT(Remove(a, TRUE), Succeeds());
    EXPECT_EQ(InfoList().size(), 6U);
}

TEST_F(RemovalOfRepNodesWithProducts, TellsTheUserNothingUnasked)
{
    EXPECT_THAT(Remove(b, FALSE), Succeeds());
    EXPECT_THAT(InfoList(), IsEmpty());
}

TEST_F(RemovalOfRepNodesWithProducts, TellsTheUserInEverySynchronizeContext)
{
    std::size_t messages = 0;
    for (const CATUnicodeString& context : {usLOAD_STRUCTURE, usOPEN_SELECTED_BNDBOX, CATUnicodeString("other")}) {
        QTBGlobVarsUtil::SetSynchronizeContext(context);
        EXPECT_THAT(Remove(CreateRoot("D"), TRUE), Succeeds());
        messages += 2;
        EXPECT_EQ(InfoList().size(), messages) << TextOf(context);
    }
}

TEST_F(RemovalOfRepNodesWithProducts, AsksForNoProductsWithoutWindow)
{
    FakeLinkToPsn::s_bFails = true;
    EXPECT_THAT(m_spCont->SetQtbFrmWindowPtrToNull(), Succeeds());
    EXPECT_THAT(Remove(b, TRUE), Succeeds());
    EXPECT_THAT(InfoList(), IsEmpty());
    // Nor for a node without container.
    EXPECT_THAT(RemoveOne(CreateLooseRepNode("D"), TRUE), Succeeds());
}

TEST_F(RemovalOfRepNodesWithProducts, ChecksLinkAndProducts)
{
    {
        const QTBReplacedExtension withoutLink("QTBRepNode", QTBILinkToPsn::MetaObject(), nullptr);
        EXPECT_THAT(RemoveOne(CreateRoot("D")), LacksInterface("spILinkToPsnOnRepNode"));
    }
    FakeLinkToPsn::s_Products.Append(CreateLoose("QTBNode"));
    EXPECT_THAT(RemoveOne(b, TRUE), LacksInterface("spIProductOnCorrespondingPsnNode"));
    EXPECT_EQ(InfoList().size(), 2U) << "those before it are told";
    FakeLinkToPsn::s_bFails = true;
    EXPECT_THAT(RemoveOne(b), FailsCall("spILinkToPsnOnRepNode->CorrespondingPsnNodesExist"));
    EXPECT_EQ(TreeOf(a), "A(AB(B))");
    FakeLinkToPsn::s_bFails = false;
    FakeLinkToPsn::s_Products.RemoveAll();
}

} // namespace
