#include "QTBERepNodeContOnRepNodeCont.h"

#include <gmock/gmock.h>

#include "CATError.h"
#include "CATFrmLayout.h"
#include "CATFrmNavigGraphicWindow.h"
#include "CATICreateInstance.h"
#include "CATIDOMElement.h"
#include "QTBFakeCommunication.h"
#include "QTBRepTreeSession.h"
#include "QTBStringHash.h"
#include "QTBTestWindow.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

namespace {

using Nodes = CATListValCATBaseUnknown_var;

// Parts A, B, D with the relations AB and AD.
class RepNodeCont : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        Update(Part("A") + Part("B") + Part("D") + PartPart("AB", "A", "B") + PartPart("AD", "A", "D"));
    }

    static int IdOf(const QTBIRepNodeCont_var& spIRepNodeCont)
    {
        int id = -1;
        EXPECT_THAT(spIRepNodeCont->GetId(&id), Succeeds());
        return id;
    }
    static unsigned char HasWindow(const QTBIRepNode_var& spIRepNode)
    {
        unsigned char bExists = 2;
        EXPECT_THAT(spIRepNode->FrmWindowPtrExists(&bExists), Succeeds());
        return bExists;
    }
    std::vector<std::string> Roots(unsigned char bOnlyAffected = FALSE, unsigned char bIgnoreWindow = FALSE) const
    {
        Nodes roots;
        roots.Append(NULL_var);
        EXPECT_THAT(m_spCont->GetRepRootNodes(&roots, &bOnlyAffected, &bIgnoreWindow), Succeeds());
        return PdmKeysOf(roots);
    }
    std::vector<std::string> DiagnosisOfRoots(unsigned char bOnlyAffected = FALSE) const
    {
        Nodes roots;
        unsigned char bIgnoreWindow = FALSE;
        return DiagnosisOf([&] { return m_spCont->GetRepRootNodes(&roots, &bOnlyAffected, &bIgnoreWindow); });
    }
    static unsigned char IsValid(CATFrmWindow* pFrmWindow)
    {
        unsigned char bValid = 2;
        EXPECT_THAT(QTBERepNodeContOnRepNodeCont::QtbWindowContainsValidNodes(pFrmWindow, &bValid), Succeeds());
        return bValid;
    }
};

// A test window whose container is the fixture's.
class RepNodeContWithWindow : public RepNodeCont
{
protected:
    void SetUp() override
    {
        RepNodeCont::SetUp();
        m_pWindow = std::make_unique<QTBTestWindow>();
        m_spCont = m_pWindow->GetCont();
    }
    void TearDown() override
    {
        m_pWindow.reset();
        RepNodeCont::TearDown();
    }

    CATNavigBox* Box() const { return m_pWindow->GetFrmWindow()->GetNavigBox(); }
    void SetShownRoots(const std::vector<CATBaseUnknown_var>& roots) const
    {
        Nodes list;
        for (const CATBaseUnknown_var& spRoot : roots) {
            list.Append(spRoot);
        }
        Box()->SetRoots(list);
    }
    std::vector<std::string> ShownRoots() const
    {
        const std::unique_ptr<Nodes> pRoots(Box()->GetAllRoots());
        return PdmKeysOf(*pRoots);
    }
    HRESULT UpdateWindow(unsigned char bFirst, unsigned char bSecond) const
    {
        return m_spCont->UpdateQtbWindow(&bFirst, &bSecond);
    }

    std::unique_ptr<QTBTestWindow> m_pWindow;
};

TEST_F(RepNodeCont, GetsTheNextIdOfTheProgram)
{
    const int id = IdOf(m_spCont);
    EXPECT_EQ(IdOf(CreateCont()), id + 1);
    EXPECT_EQ(IdOf(CreateCont()), id + 2);
    EXPECT_THAT(m_spCont->Cleanup(), Succeeds());
    EXPECT_EQ(IdOf(CreateCont()), id + 3) << "ids are never used again";
    EXPECT_THAT(m_spCont->GetId(nullptr), FailsAssertion("pId != NULL"));
}

// A program of its own sees the first container and the first rep node.
TEST_F(RepNodeCont, OfAProgramIsNumberedFromZeroAndItsRepNodesFromOne)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            const bool isRight = IdOf(m_spCont) == 0 && IdOf(CreateCont()) == 1 &&
                                 KeyOf(CreateRoot("A")) == "A-Rep-1" && KeyOf(CreateRoot("AB")) == "AB-Rep-2";
            std::_Exit(isRight ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(RepNodeCont, TellsItsBeginningAndItsEnd)
{
    const std::string id = std::to_string(IdOf(m_spCont) + 1);
    const DebugCapture capture;
    {
        const QTBIRepNodeCont_var spCont = CreateCont();
        EXPECT_THAT(capture.Lines(), ElementsAre("created rep node container [" + id + "]"));
        EXPECT_THAT(spCont->Cleanup(), Succeeds());
    }
    EXPECT_THAT(capture.Lines(),
                ElementsAre("created rep node container [" + id + "]", "deleted rep node container [" + id + "]"));
}

TEST_F(RepNodeCont, IsRegisteredFromItsConstructionToItsCleanup)
{
    unsigned char bAdd = TRUE;
    EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(&bAdd), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("A"));
    EXPECT_THAT(m_spCont->Cleanup(), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), IsEmpty());
    Update(Part("A"));
    EXPECT_THAT(GetPdmNodeCont()->UpdateAllRepNodeContainers(&bAdd), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), IsEmpty());
}

TEST_F(RepNodeCont, IsConstructedWithoutASessionToo)
{
    m_spCont = NULL_var;
    QTBGlobVarsUtil::EndSession();
    const QTBReplacedExtension withoutFactory("QTBPdmNodeCont", CATICreateInstance::MetaObject(), nullptr);
    const DebugCapture capture;
    const QTBIRepNodeCont_var spCont = CreateCont();
    EXPECT_THAT(capture.Lines(), Contains("QTBERepNodeContOnRepNodeCont::QTBERepNodeContOnRepNodeCont -> "
                                          "SetLinkToGlobalPdmNodeContainer FAILED"));
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture), ElementsAre(Call("QTBGlobVarsUtil::GetGlobalPdmNodeContainer")));
    unsigned char bTrue = TRUE;
    EXPECT_THAT(spCont->UpdateAllRepTrees(&bTrue, &bTrue, Relations({}), nullptr, nullptr, &bTrue),
                LacksInterface("m_spIPdmNodeCont"));
}

TEST_F(RepNodeCont, ReportsThatItCannotBeRegistered)
{
    const QTBFault fault("AddRepNodeContainer");
    const DebugCapture capture;
    const QTBIRepNodeCont_var spCont = CreateCont();
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture), ElementsAre(Call("m_spIPdmNodeCont->AddRepNodeContainer")));
    EXPECT_THAT(capture.Lines(), Contains("QTBERepNodeContOnRepNodeCont::QTBERepNodeContOnRepNodeCont -> "
                                          "SetLinkToGlobalPdmNodeContainer FAILED"));
}

TEST_F(RepNodeCont, HandsItsWindowToAllRepNodes)
{
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBIRepNode_var ab = Create(a, "AB");
    EXPECT_EQ(HasWindow(a), FALSE);
    CATFrmWindow* pWindow = CATFrmNavigGraphicWindow::Create("window", nullptr);
    EXPECT_THAT(m_spCont->SetQtbFrmWindowPtr(pWindow), Succeeds());
    EXPECT_EQ(HasWindow(a) + HasWindow(ab), 2);
    EXPECT_EQ(HasWindow(Create(ab, "B")), TRUE) << "and to those that come later";
    CATFrmWindow* pGiven = nullptr;
    unsigned char bIsSet = FALSE;
    EXPECT_THAT(m_spCont->GetQtbFrmWindowPtr(&pGiven), Succeeds());
    EXPECT_THAT(m_spCont->QtbFrmWindowPtrIsSet(&bIsSet), Succeeds());
    EXPECT_EQ(pGiven, pWindow);
    EXPECT_EQ(bIsSet, TRUE);
    EXPECT_THAT(m_spCont->SetQtbFrmWindowPtrToNull(), Succeeds());
    EXPECT_EQ(HasWindow(a) + HasWindow(ab), 0);
    EXPECT_THAT(m_spCont->QtbFrmWindowPtrIsSet(&bIsSet), Succeeds());
    EXPECT_EQ(bIsSet, FALSE);
    CATFrmLayout::GetCurrentLayout()->CloseWindow(pWindow);
}

TEST_F(RepNodeCont, ChecksItsWindow)
{
    CATFrmWindow* pWindow = reinterpret_cast<CATFrmWindow*>(0x8);
    EXPECT_THAT(m_spCont->SetQtbFrmWindowPtr(nullptr), FailsAssertion("pFrmNavigGraphicWindow != NULL"));
    EXPECT_THAT(m_spCont->GetQtbFrmWindowPtr(nullptr), FailsAssertion("ppFrmNavigGraphicWindow != NULL"));
    EXPECT_THAT(m_spCont->GetQtbFrmWindowPtr(&pWindow), FailsAssertion("*ppFrmNavigGraphicWindow != NULL"));
    EXPECT_EQ(pWindow, nullptr);
    EXPECT_THAT(m_spCont->QtbFrmWindowPtrIsSet(nullptr), FailsAssertion("pbFrmWindowPtrIsSet != NULL"));

    CreateRoot("A");
    {
        const QTBFault fault("SetFrmWindowPtr");
        EXPECT_THAT(DiagnosisOf([&] { return m_spCont->SetQtbFrmWindowPtrToNull(); }),
                    ElementsAre(Call("spIRepNode->SetFrmWindowPtr"), Call("SetFrmWindowPtrToAllContainedRepNodes")));
    }
    const CATBaseUnknown_var spNoRepNode = CreateLoose("QTBNode");
    File(spNoRepNode);
    EXPECT_THAT(DiagnosisOf([&] { return m_spCont->SetQtbFrmWindowPtrToNull(); }),
                ElementsAre(Handle("spIRepNode"), Call("SetFrmWindowPtrToAllContainedRepNodes")));
    TakeOut(spNoRepNode);
}

TEST_F(RepNodeCont, WithoutWindowHasNothingToUpdate)
{
    unsigned char bTrue = TRUE;
    EXPECT_THAT(m_spCont->UpdateQtbWindow(&bTrue, &bTrue), Succeeds());
}

TEST_F(RepNodeContWithWindow, RefreshesItWithTheFlagsGiven)
{
    const QTBIRepNode_var a = CreateRoot("A");
    SetShownRoots({a});
    CreateRoot("B");
    CATFrmWindow* pOther = CATFrmNavigGraphicWindow::Create("other", nullptr);
    EXPECT_THAT(UpdateWindow(FALSE, FALSE), Succeeds());
    EXPECT_THAT(ShownRoots(), ElementsAre("A"));
    EXPECT_EQ(CATFrmLayout::GetCurrentLayout()->GetCurrentWindow(), pOther);
    EXPECT_THAT(UpdateWindow(TRUE, TRUE), Succeeds());
    EXPECT_THAT(ShownRoots(), Contains("B"));
    EXPECT_EQ(CATFrmLayout::GetCurrentLayout()->GetCurrentWindow(), m_pWindow->GetFrmWindow());
    CATFrmLayout::GetCurrentLayout()->CloseWindow(pOther);
    const QTBFault fault("GetRepRootNodes", m_spCont);
    EXPECT_THAT(DiagnosisOf([&] { return UpdateWindow(TRUE, FALSE); }),
                ElementsAre(Call("QTBRepTreeUtil::UpdateQtbWindow")));
}

TEST_F(RepNodeCont, GivesAllRepNodesBucketByBucket)
{
    std::vector<QTBIRepNode_var> created;
    for (int i = 0; i < 200; ++i) {
        for (const char* key : {"A", "B", "AB"}) {
            created.push_back(CreateRoot(key));
        }
    }
    std::stable_sort(created.begin(), created.end(), [](const QTBIRepNode_var& left, const QTBIRepNode_var& right) {
        const auto bucketOf = [](const QTBIRepNode_var& spIRepNode) {
            unsigned int hash = 0;
            hash %= CATUnicodeString(KeyOf(spIRepNode));
            return hash & 0xFFU;
        };
        return bucketOf(left) < bucketOf(right);
    });
    Nodes all;
    all.Append(NULL_var);
    EXPECT_THAT(m_spCont->GetAllRepNodes(&all), Succeeds());
    ASSERT_EQ(all.Size(), 600);
    for (int i = 1; i <= all.Size(); ++i) {
        EXPECT_TRUE(all[i] == created[static_cast<std::size_t>(i - 1)]) << i;
    }
    EXPECT_THAT(m_spCont->GetAllRepNodes(nullptr), FailsAssertion("pListOfNodes != NULL"));
}

TEST_F(RepNodeCont, FindsRepNodesByKey)
{
    const QTBIRepNode_var a = CreateRoot("A");
    QTBIRepNode_var spFound;
    unsigned char bExists = FALSE;
    EXPECT_THAT(m_spCont->GetRepNodeByKey(KeyOf(a).c_str(), &spFound, &bExists), Succeeds());
    EXPECT_EQ(bExists, TRUE);
    EXPECT_TRUE(spFound == a);
    EXPECT_THAT(m_spCont->GetRepNodeByKey("A", &spFound, &bExists), Succeeds());
    EXPECT_EQ(bExists, FALSE);
    EXPECT_TRUE(spFound == NULL_var);
}

TEST_F(RepNodeCont, ChecksALookUpByKey)
{
    QTBIRepNode_var spFound;
    unsigned char bExists = FALSE;
    EXPECT_THAT(m_spCont->GetRepNodeByKey("A", nullptr, &bExists), FailsAssertion("pspIRepNode != NULL"));
    EXPECT_THAT(DiagnosisOf([&] { return m_spCont->GetRepNodeByKey("A", &spFound, nullptr); }),
                ElementsAre(Assertion("pbNodeFound != NULL"), Call("GetNodeByKey")));
    const CATBaseUnknown_var spNoRepNode = CreateLoose("QTBNode");
    QTBINodeAttributes_var(spNoRepNode)->SetKey("no rep node");
    File(spNoRepNode);
    EXPECT_THAT(m_spCont->GetRepNodeByKey("no rep node", &spFound, &bExists), LacksInterface("*pspIRepNode"));
    TakeOut(spNoRepNode);
}

TEST_F(RepNodeCont, GivesTheRootsOfItsStoreWithoutWindow)
{
    Create(CreateRoot("A"), "AB");
    CreateRoot("B");
    EXPECT_THAT(Roots(), UnorderedElementsAre("A", "B"));
    EXPECT_THAT(Roots(FALSE, TRUE), UnorderedElementsAre("A", "B"));
}

TEST_F(RepNodeCont, GivesOnlyRootsThatTheCurrentActionAffectsOnRequest)
{
    CreateRoot("A");
    CreateRoot("B");
    Update(Part("B"));
    EXPECT_THAT(Roots(TRUE), ElementsAre("B"));
}

TEST_F(RepNodeContWithWindow, GivesTheRootsThatItShows)
{
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBIRepNode_var b = CreateRoot("B");
    CreateRoot("D");
    SetShownRoots({b, a});
    EXPECT_THAT(Roots(), ElementsAre("B", "A"));
    EXPECT_THAT(Roots(FALSE, TRUE), UnorderedElementsAre("A", "B", "D", "DEFAULT_ROOT_NODE"));
    Update(Part("A"));
    EXPECT_THAT(Roots(TRUE), ElementsAre("A"));
}

TEST_F(RepNodeContWithWindow, ThatShowsOnlyTheDefaultRootFallsBackToTheStore)
{
    CreateRoot("A");
    EXPECT_THAT(ShownRoots(), ElementsAre("DEFAULT_ROOT_NODE"));
    EXPECT_EQ(IsValid(m_pWindow->GetFrmWindow()), FALSE);
    EXPECT_THAT(Roots(), UnorderedElementsAre("A", "DEFAULT_ROOT_NODE"));
}

TEST_F(RepNodeContWithWindow, IsValidWhenAllItsRootsAreRepNodesWithPdmNodes)
{
    CATFrmWindow* pWindow = m_pWindow->GetFrmWindow();
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBIRepNode_var b = CreateRoot("B");
    SetShownRoots({a});
    EXPECT_EQ(IsValid(pWindow), TRUE);
    SetShownRoots({a, Find("DEFAULT_ROOT_NODE")});
    EXPECT_EQ(IsValid(pWindow), TRUE) << "the default root among others";
    SetShownRoots({});
    EXPECT_EQ(IsValid(pWindow), FALSE);
    SetShownRoots({CreateLoose("QTBNode")});
    EXPECT_EQ(IsValid(pWindow), FALSE);
    SetShownRoots({a, CreateLoose("QTBNode")});
    EXPECT_EQ(IsValid(pWindow), FALSE);
    SetShownRoots({a, b});
    EXPECT_EQ(IsValid(pWindow), TRUE);
    Unlink(b);
    EXPECT_EQ(IsValid(pWindow), FALSE);
    SetShownRoots({b});
    EXPECT_EQ(IsValid(pWindow), FALSE);
    SetShownRoots({});
}

TEST_F(RepNodeCont, HasNoValidWindowWithoutTree)
{
    EXPECT_EQ(IsValid(nullptr), FALSE);
    CATFrmWindow* pWindow = CATFrmWindow::Create("without tree", nullptr);
    EXPECT_EQ(IsValid(pWindow), FALSE);
    CATFrmLayout::GetCurrentLayout()->CloseWindow(pWindow);
    EXPECT_THAT(QTBERepNodeContOnRepNodeCont::QtbWindowContainsValidNodes(nullptr, nullptr),
                FailsAssertion("pbContainsValidNodes != NULL"));
}

TEST_F(RepNodeContWithWindow, ChecksItsRoots)
{
    unsigned char bFalse = FALSE;
    EXPECT_THAT(m_spCont->GetRepRootNodes(nullptr, &bFalse, &bFalse), FailsAssertion("pListOfNodes != NULL"));
    const QTBIRepNode_var a = CreateRoot("A");
    {
        const QTBFault fault("IsRepRootNode", a);
        EXPECT_THAT(DiagnosisOfRoots(), ElementsAre(Call("spIRepNodeOnNode->IsRepRootNode")));
    }
    {
        const QTBFault fault("PdmNodeIsIsAffectedByCurrentAction", a);
        EXPECT_THAT(DiagnosisOfRoots(TRUE), ElementsAre(Call("spIRepNodeOnNode->PdmNodeIsIsAffectedByCurrentAction")));
    }
    const CATBaseUnknown_var spNoRepNode = CreateLoose("QTBNode");
    File(spNoRepNode);
    EXPECT_THAT(DiagnosisOfRoots(), ElementsAre(Assertion("spIRepNodeOnNode != NULL_var")));
    TakeOut(spNoRepNode);
    SetShownRoots({a});
    const QTBFault fault("IsRepDefaultNode", a);
    EXPECT_THAT(DiagnosisOfRoots(),
                ElementsAre(Call("spIRepNodeOnRootNode->IsRepDefaultNode"), Call("QtbWindowContainsValidNodes")));
}

TEST_F(RepNodeCont, CreatesARootForThePdmDefaultRootOnly)
{
    EXPECT_THAT(m_spCont->CreateDefaultRootNode(), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), IsEmpty()) << "the update removed the default root";
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    EXPECT_THAT(m_spCont->CreateDefaultRootNode(), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("DEFAULT_ROOT_NODE"));
    EXPECT_EQ(KeyOf(Find("DEFAULT_ROOT_NODE")).rfind("DEFAULT_ROOT_NODE-Rep-", 0), 0U);
    EXPECT_THAT(m_spCont->CreateDefaultRootNode(), Succeeds());
    EXPECT_THAT(TreesOf(m_spCont), ElementsAre("DEFAULT_ROOT_NODE")) << "the rep node that it has is enough";
}

TEST_F(RepNodeContWithWindow, ChecksWhatItNeedsForItsDefaultRoot)
{
    const auto diagnosis = [&] { return DiagnosisOf([&] { return m_spCont->CreateDefaultRootNode(); }); };
    {
        const QTBFault fault("GetPdmRootNodes");
        EXPECT_THAT(diagnosis(), ElementsAre(Call("m_spIPdmNodeCont->GetPdmRootNodes")));
    }
    {
        const QTBFault fault("GetKey", FindNode("A"));
        EXPECT_THAT(diagnosis(), ElementsAre(Call("spINodeAttributesOnPdmRootNode->GetKey")));
    }
    {
        const QTBFault fault("GetRepNodes", FindNode("DEFAULT_ROOT_NODE"));
        EXPECT_THAT(diagnosis(),
                    ElementsAre(Call("spIPdmNodeOnStartNodeOnPdmRoot->GetRepNodes"), Call("UpdateRepTrees")));
    }
    const QTBFault fault("GetRepRootNodes", m_spCont);
    EXPECT_THAT(diagnosis(), ElementsAre(Call("QTBRepTreeUtil::UpdateQtbWindow"), Call("UpdateQtbWindow")));
}

class RelationOfRepNodes : public RepNodeCont
{
protected:
    HRESULT Relate(const QTBIRepNode_var& spLeft, const QTBIRepNode_var& spRight) const
    {
        return m_spCont->CreateRelation("PartPart", spLeft, spRight, "<a name=\"Quantity\">2</a>");
    }
    std::vector<std::string> Diagnosis(const QTBIRepNode_var& spLeft, const QTBIRepNode_var& spRight) const
    {
        return DiagnosisOf([&] { return Relate(spLeft, spRight); });
    }
};

TEST_F(RelationOfRepNodes, IsCreatedInThePdmGraphAndLeavesTheTreesAlone)
{
    const QTBFakeCommunication communication;
    QTBFakeCommunication::AnswerWith(Answer(PartPart("BD", "B", "D")));
    const QTBIRepNode_var b = CreateRoot("B");
    EXPECT_THAT(Relate(b, CreateRoot("D")), Succeeds());
    EXPECT_THAT(QTBFakeCommunication::Calls(),
                ElementsAre("CreateRelation(PartPart, B, D, <a name=\"Quantity\">2</a>)"));
    EXPECT_THAT(RightKeys("B", "PartPart"), ElementsAre("BD"));
    EXPECT_EQ(TreeOf(b), "B");
}

TEST_F(RelationOfRepNodes, StandsBetweenObjectsOfTheGraph)
{
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBIRepNode_var b = CreateRoot("B");
    const QTBIRepNode_var ab = CreateRoot("AB");
    EXPECT_THAT(Diagnosis(ab, b), ElementsAre(Handle("spIPdmObjNodeOnLeftObject")));
    EXPECT_THAT(Diagnosis(a, ab), ElementsAre(Handle("spIPdmObjNodeOnRightObject")));
    {
        const QTBFault fault("GetPdmNodeKey", b);
        EXPECT_THAT(Diagnosis(a, b), ElementsAre(Call("spIRepNodeOnRightObject->GetPdmNodeKey")));
    }
    {
        const QTBFault fault("GetPdmNodeByKey");
        EXPECT_THAT(Diagnosis(a, b), ElementsAre(Call("m_spIPdmNodeCont->GetPdmNodeByKey")));
    }
    {
        const QTBFault fault("CreateRelationInPdmGraph");
        EXPECT_THAT(Diagnosis(a, b), ElementsAre(Call("m_spIPdmNodeCont->CreateRelationInPdmGraph")));
    }
    CATBaseUnknown_var spOutside;
    EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode("outside", &spOutside, FALSE), Succeeds());
    const QTBIRepNode_var spLoose = CreateLooseRepNode();
    EXPECT_THAT(QTBINodeRelations_var(spOutside)->AddRightNode("PdmToRep", spLoose, 1, TRUE), Succeeds());
    EXPECT_THAT(Diagnosis(a, spLoose), ElementsAre(Assertion("bPdmNodeExists")));
    Unlink(b);
    EXPECT_THAT(Diagnosis(a, b), ElementsAre(Call("spIRepNodeOnRightObject->GetPdmNode")));
    EXPECT_THAT(Diagnosis(b, a), ElementsAre(Call("spIRepNodeOnLeftObject->GetPdmNode")));
    EXPECT_THROW(Relate(NULL_var, a), CATXHException);
}

} // namespace
