#include "QTBEContextualMenuOnRepNode.h"

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "CATAfrGetCommandHeader.h"
#include "CATApplicationFrame.h"
#include "CATCallback.h"
#include "CATCmdSeparator.h"
#include "CATCmdStarter.h"
#include "CATCommandHeader.h"
#include "CATCommandHeaderRegister.h"
#include "CATFrmEditor.h"
#include "CATFrmLayout.h"
#include "CATIContextualMenu.h"
#include "CATStandardCommands.h"
#include "QTBCommands.h"
#include "QTBNotificationAny.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"
#include "TIECATIContextualMenu.h"

using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

constexpr const char* CHECK_IN = "QTBPdmWksCtxCheckInCmdHdr";
constexpr const char* CHECK_OUT = "QTBPdmWksCtxCheckOutCmdHdr";
constexpr const char* UPDATE_SUB = "QTBPdmWksCtxUpdateSubCmpRelsCmdHdr";
constexpr const char* UPDATE_PARENT = "QTBPdmWksCtxUpdateParentCmpRelCmdHdr";
constexpr const char* PROMOTE = "QTBPdmWksCtxPromoteCmdHdr";
constexpr const char* DELETE_NEWEST = "QTBPdmWksCtxDelNewestFileOfBusObjCmdHdr";
constexpr const char* REVISE = "QTBPdmWksCtxReviseCmdHdr";
constexpr const char* UPDATE_ITEM = "QTBGenWksCtxUpdateItemCmdHdr";
constexpr const char* HIGHLIGHT = "QTBPdmWksCtxHighlightCmdHdr";
// In the order in which an opening handles them.
constexpr const char* HANDLED[] = {CHECK_IN,      CHECK_OUT, UPDATE_SUB,  UPDATE_PARENT, PROMOTE,
                                   DELETE_NEWEST, REVISE,    UPDATE_ITEM, HIGHLIGHT};

class RepNodeContextMenu : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        m_pWindow = std::make_unique<QTBTestWindow>();
        m_spCont = m_pWindow->GetCont();
    }

    void TearDown() override
    {
        m_pWindow.reset();
        CATStandardCommands::AddHeaders(Headers());
        QTBFaultyRepTreeSession::TearDown();
    }

    static CATCommandHeaderRegister& Headers() { return CATApplicationFrame::GetFrame()->GetCommandHeaders(); }

    static CATCommandHeader* Header(const char* id)
    {
        CATCommandHeader* pHeader = nullptr;
        return SUCCEEDED(CATAfrGetCommandHeader(id, &pHeader)) ? pHeader : nullptr;
    }
    static void SetAll(bool available)
    {
        for (const char* id : HANDLED) {
            if (CATCommandHeader* pHeader = Header(id); pHeader != nullptr) {
                available ? pHeader->BecomeAvailable() : pHeader->BecomeUnavailable();
            }
        }
    }
    // A character for each handled header, in order: "+" available, "-" not, " " not there.
    static std::string State()
    {
        std::string state;
        for (const char* id : HANDLED) {
            const CATCommandHeader* pHeader = Header(id);
            state += pHeader == nullptr ? ' ' : pHeader->IsAvailable() ? '+' : '-';
        }
        return state;
    }

    static HRESULT Open(const CATBaseUnknown_var& spNode)
    {
        const CATIContextualMenu_var spMenu(spNode);
        CATCmdAccess* pMenu = nullptr;
        const HRESULT hr = spMenu->GetContextualMenu(pMenu);
        EXPECT_NE(pMenu, nullptr) << "given in any case";
        return hr;
    }
    // What an opening makes of headers that were all available, and all unavailable, before.
    static std::string StateAfterOpening(const CATBaseUnknown_var& spNode, bool before = false)
    {
        SetAll(before);
        EXPECT_THAT(Open(spNode), Succeeds());
        return State();
    }

    static CATCmdAccess* MenuOf(const CATBaseUnknown_var& spNode)
    {
        const CATIContextualMenu_var spMenu(spNode);
        CATCmdAccess* pMenu = nullptr;
        EXPECT_THAT(spMenu->GetContextualMenu(pMenu), Succeeds());
        return pMenu;
    }
    static std::vector<std::string> NamesOf(const CATCmdAccess* pMenu)
    {
        std::vector<std::string> names;
        for (const CATCmdAccess* pItem = pMenu->GetChild(); pItem != nullptr; pItem = pItem->GetNext()) {
            names.emplace_back(pItem->GetName().View());
        }
        return names;
    }

    // A rep node of a part with those rights.
    QTBIRepNode_var CreatePart(std::initializer_list<InfoEntry> info)
    {
        Update(Part("A", Info(info)));
        return CreateRoot("A");
    }

    std::unique_ptr<QTBTestWindow> m_pWindow;
};

TEST_F(RepNodeContextMenu, HasTheNodesItemsBehindTheStandardOnes)
{
    Update(Object("Person", "P"));
    const QTBIRepNode_var spPerson = CreateRoot("P");
    EXPECT_THAT(NamesOf(MenuOf(spPerson)), ElementsAre("CATAfrSelectHdr", "CATAfrAddToSelectionHdr",
                                                       "CATAfrClearSelectionHdr", "NULL", "QTBPropertiesSubMenuStr"));
}

TEST_F(RepNodeContextMenu, IsBuiltOncePerNode)
{
    Update(Part("A") + Part("B"));
    const QTBIRepNode_var a = CreateRoot("A");
    const QTBIRepNode_var b = CreateRoot("B");
    EXPECT_EQ(MenuOf(a), MenuOf(a));
    EXPECT_NE(MenuOf(a), MenuOf(b));
}

TEST_F(RepNodeContextMenu, HasNoneOfTheNodesItemsWithoutStandardOnes)
{
    for (const char* id : CATStandardCommands::CONTEXT_MENU) {
        Headers().Remove(id);
    }
    Update(Part("A"));
    EXPECT_THAT(NamesOf(MenuOf(CreateRoot("A"))), IsEmpty());
}

TEST_F(RepNodeContextMenu, HasTheStandardItemsWhenTheNodesOwnCannotBeBuilt)
{
    Update(Part("A"));
    const QTBIRepNode_var a = CreateRoot("A");
    const DebugCapture capture;
    {
        const QTBFault fault("InitContextMenuInfo");
        EXPECT_TRUE(CATIContextualMenu_var(a) != NULL_var);
    }
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("spIRepNode->InitContextMenuInfo : HRESULT FAILED")));
    EXPECT_THAT(capture.Lines().back(), HasSubstr("spIRepNode->InitContextMenuInfo")) << "the error's message";
    EXPECT_THAT(NamesOf(MenuOf(a)),
                ElementsAre("CATAfrSelectHdr", "CATAfrAddToSelectionHdr", "CATAfrClearSelectionHdr"));
}

TEST_F(RepNodeContextMenu, OfSomethingElseThanARepNodeIsTheStandardOneAndFails)
{
    QTBTestLateType type("QTBNoRepNode");
    type.Register<TIECATIContextualMenu, CATIContextualMenu, QTBEContextualMenuOnRepNode>();
    const CATBaseUnknown_var spNode = type.Create();
    const DebugCapture capture;
    EXPECT_THAT(Open(spNode), LacksInterface("spIRepNodeOnThis"));
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("spIRepNode == NULL_var")));
}

TEST_F(RepNodeContextMenu, TellsTheCurrentEditorsListenersThatItIsOpened)
{
    Update(Part("A"));
    const QTBIRepNode_var a = CreateRoot("A");
    int calls = 0;
    CATFrmEditor* pEditor = CATFrmEditor::GetCurrentEditor();
    const CATCallbackId id = pEditor->GetCallbackManager()->AddCallback(this, QTBNotificationAny::CtxMenuSelected(),
                                                                        [&calls](CATEventSource*) { ++calls; });
    EXPECT_THAT(Open(a), Succeeds());
    EXPECT_EQ(calls, 1);
    EXPECT_THAT(Open(a), Succeeds());
    EXPECT_EQ(calls, 2);
    RemoveCallback(pEditor, id);
}

TEST_F(RepNodeContextMenu, FailsWithoutCurrentEditorButIsGiven)
{
    Update(Part("A"));
    const QTBIRepNode_var a = CreateRoot("A");
    const CATIContextualMenu_var spMenu(a);
    m_spCont = NULL_var;
    CATFrmLayout::GetCurrentLayout()->CloseAll();
    EXPECT_THAT(Open(a), FailsAssertion("pCBManagerCurrentEditor != NULL"));
}

TEST_F(RepNodeContextMenu, LeavesAllCommandsAsTheyWereForANodeWithoutPdmNode)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    const QTBIRepNode_var spDefault = CreateRoot("DEFAULT_ROOT_NODE");
    // The first answer takes the place of the default root.
    Unlink(spDefault);
    EXPECT_EQ(StateAfterOpening(spDefault, false), "---------");
    EXPECT_EQ(StateAfterOpening(spDefault, true), "+++++++++");
}

TEST_F(RepNodeContextMenu, MakesTheCommandsAvailableThatTheRightsAllow)
{
    const struct
    {
        const char* entry;
        const char* state;
    } rights[] = {{"QtbOther", "---------"},
                  {"QtbIsCheckInAllowed", "+--------"},
                  {"QtbIsCheckOutAllowed", "-+-------"},
                  {"QtbIsUpdateSubCmpRelsAllowed", "--+------"},
                  {"QtbIsPromoteAllowed", "----+----"},
                  {"QtbIsEditAllowed", "-------+-"}};
    for (const auto& [entry, state] : rights) {
        Update(Object("Document", entry, Info({{entry, "true"}})));
        const QTBIRepNode_var spDocument = CreateRoot(entry);
        EXPECT_EQ(StateAfterOpening(spDocument, false), state) << entry;
        std::string stateFromAvailable = state;
        stateFromAvailable[5] = stateFromAvailable[6] = '+';
        EXPECT_EQ(StateAfterOpening(spDocument, true), stateFromAvailable) << entry;
    }
}

TEST_F(RepNodeContextMenu, LeavesDeletingAndRevisingToTheirCommands)
{
    const QTBIRepNode_var a = CreatePart({{"QtbVersion", "1"}});
    const std::vector<std::string> lines = {
        "QTBEContextualMenuOnRepNode::GetContextualMenu -> pDelNewestFileOfBusObjCmdHdr != NULL",
        "QTBEContextualMenuOnRepNode::GetContextualMenu -> pReviseCmdHdr != NULL"};
    {
        const DebugCapture capture;
        EXPECT_THAT(Open(a), Succeeds());
        EXPECT_THAT(capture.Lines(), ::testing::IsSupersetOf(lines));
    }
    Headers().Remove(DELETE_NEWEST);
    Headers().Remove(REVISE);
    const DebugCapture capture;
    EXPECT_THAT(Open(a), Succeeds());
    for (const std::string& line : lines) {
        EXPECT_THAT(capture.Lines(), Not(Contains(line)));
    }
}

TEST_F(RepNodeContextMenu, TellsThatPromotingIsNotDecided)
{
    const QTBIRepNode_var a = CreatePart({{"QtbVersion", "1"}});
    const DebugCapture capture;
    Header(PROMOTE)->BecomeAvailable();
    EXPECT_THAT(Open(a), Succeeds());
    EXPECT_THAT(capture.Lines(),
                Contains("QTBEContextualMenuOnRepNode::GetContextualMenu -> 'QtbIsPromoteAllowed' not found"));
    EXPECT_FALSE(Header(PROMOTE)->IsAvailable());
}

TEST_F(RepNodeContextMenu, HandlesTheOtherCommandsWhenTheFrameLacksOne)
{
    const QTBIRepNode_var a = CreatePart({{"QtbIsCheckInAllowed", "true"},
                                          {"QtbIsCheckOutAllowed", "true"},
                                          {"QtbIsUpdateSubCmpRelsAllowed", "true"},
                                          {"QtbIsPromoteAllowed", "true"},
                                          {"QtbIsEditAllowed", "true"}});
    const std::string all = StateAfterOpening(a);
    EXPECT_EQ(all, "+++-+--++");
    for (std::size_t i = 0; i < std::size(HANDLED); ++i) {
        Headers().Remove(HANDLED[i]);
        std::string expected = all;
        expected[i] = ' ';
        EXPECT_EQ(StateAfterOpening(a), expected);
        Headers().Reserve(HANDLED[i]);
        EXPECT_EQ(StateAfterOpening(a), expected) << "known, but without header";
        QTBCommands::AddHeaders();
    }
}

// A rep node of a PDM object that has no attributes, so that its rights cannot be read.
class RepNodeContextMenuWithoutRights : public RepNodeContextMenu
{
protected:
    void SetUp() override
    {
        RepNodeContextMenu::SetUp();
        m_spRepNode = CreateLooseRepNode();
        EXPECT_THAT(m_spRepNode->SetFrmWindowPtr(m_pWindow->GetFrmWindow()), Succeeds());
        LinkToBarePdmNode(m_spRepNode, KeepLoose(m_Type.Create()));
    }
    void TearDown() override
    {
        m_spRepNode = NULL_var;
        RepNodeContextMenu::TearDown();
    }

    QTBBarePdmObjNodeType m_Type;
    QTBIRepNode_var m_spRepNode;
};

TEST_F(RepNodeContextMenuWithoutRights, FailsAtTheFirstQueryAndLeavesTheOthers)
{
    SetAll(true);
    EXPECT_THAT(Open(m_spRepNode), FailsCall("QTBInfoUtil::PdmObjectIsCheckInAllowed"));
    EXPECT_EQ(State(), "+++++++++");
    SetAll(false);
    EXPECT_THAT(Open(m_spRepNode), FailsCall("QTBInfoUtil::PdmObjectIsCheckInAllowed"));
    EXPECT_EQ(State(), "---------");
}

TEST_F(RepNodeContextMenuWithoutRights, FailsAtEachQueryUnderItsName)
{
    Headers().Remove(CHECK_IN);
    EXPECT_THAT(Open(m_spRepNode), FailsCall("QTBInfoUtil::PdmObjectIsCheckOutAllowed"));
    Headers().Remove(CHECK_OUT);
    EXPECT_THAT(Open(m_spRepNode), FailsCall("QTBInfoUtil::PdmObjectIsUpdateSubCmpRelsAllowed"));
    Headers().Remove(UPDATE_SUB);
    EXPECT_THAT(Open(m_spRepNode), FailsCall("QTBInfoUtil::PdmObjectIsEditAllowed"));
    Headers().Remove(UPDATE_ITEM);
    EXPECT_THAT(Open(m_spRepNode), FailsCall("QTBPdmGraphUtil::IsPartNode"));
    Headers().Remove(HIGHLIGHT);
    EXPECT_THAT(Open(m_spRepNode), Succeeds());
}

TEST_F(RepNodeContextMenu, FailsWhenItCannotTellWhetherAnObjectIsAPartOrAFile)
{
    Update(Object("Document", "D"));
    const QTBIRepNode_var spDocument = CreateRoot("D");
    EXPECT_THAT(Open(spDocument), Succeeds());
    {
        const QTBFault fault("GetClassAttr", FindNode("D"));
        EXPECT_THAT(Open(spDocument), FailsCall("QTBPdmGraphUtil::IsPartNode"));
    }
    const QTBFault fault("GetClassAttr", FindNode("D"), 1);
    EXPECT_THAT(Open(spDocument), FailsCall("QTBPdmGraphUtil::IsCatiaFileNode"));
}

TEST_F(RepNodeContextMenu, HighlightsPartsFilesAndRelationsBetweenParts)
{
    Update(Part("A") + Part("B") + Object("CATPartFile", "F") + Object("Document", "D") + PartPart("AB", "A", "B") +
           Relation("PartFile", "AF", "A", "F"));
    const auto highlightIsAvailable = [](const QTBIRepNode_var& spIRepNode, bool before) {
        return StateAfterOpening(spIRepNode, before).back() == '+';
    };
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_TRUE(highlightIsAvailable(a, false));
    EXPECT_TRUE(highlightIsAvailable(CreateRoot("F"), false));
    EXPECT_FALSE(highlightIsAvailable(CreateRoot("D"), true)) << "neither a part nor a file";
    EXPECT_TRUE(highlightIsAvailable(Create(a, "AB"), false));
    EXPECT_FALSE(highlightIsAvailable(Create(a, "AF", FILES), true)) << "a file is no part";
}

// Neither an object nor a relation.
class PlainPdmNodeType : public QTBTestLateType
{
public:
    PlainPdmNodeType() : QTBTestLateType("QTBPlainPdmNode", "QTBNode")
    {
        Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
    }
};

TEST_F(RepNodeContextMenu, LeavesHighlightingAsItWasForAnyOtherPdmNode)
{
    const PlainPdmNodeType type;
    const QTBIRepNode_var spIRepNode = CreateLooseRepNode();
    EXPECT_THAT(spIRepNode->SetFrmWindowPtr(m_pWindow->GetFrmWindow()), Succeeds());
    EXPECT_THAT(QTBINodeRelations_var(spIRepNode)->AddLeftNode("PdmToRep", KeepLoose(type.Create()), 1, TRUE),
                Succeeds());
    EXPECT_EQ(StateAfterOpening(spIRepNode, true).back(), '+');
    EXPECT_EQ(StateAfterOpening(spIRepNode, false).back(), '-');
}

// A with B below and above it: A(AB(B)) and B(BA-backwards(A)).
class RepNodeContextMenuOfChild : public RepNodeContextMenu
{
protected:
    bool IsAvailable(const QTBIRepNode_var& spIRepNode, bool before)
    {
        return StateAfterOpening(spIRepNode, before)[3] == '+';
    }
    void UpdateRelation(const char* right)
    {
        Update(Part("A") + Part("B") + PartPart("AB", "A", "B", Info({{"QtbIsEditAllowed", right}})));
    }
};

TEST_F(RepNodeContextMenuOfChild, UpdatesTheRelationToTheParentWhereItMayBeEdited)
{
    UpdateRelation("true");
    const QTBIRepNode_var spRelation = Create(CreateRoot("A"), "AB", PARTS);
    EXPECT_TRUE(IsAvailable(Create(spRelation, "B", PARTS), false));
    UpdateRelation("false");
    const QTBIRepNode_var spOther = Create(CreateRoot("A"), "AB", PARTS);
    EXPECT_FALSE(IsAvailable(Create(spOther, "B", PARTS), true));
}

TEST_F(RepNodeContextMenuOfChild, DoesNotUpdateTheRelationToTheParentFromRightToLeft)
{
    UpdateRelation("true");
    const QTBIRepNode_var spRelation = Create(CreateRoot("B"), "AB", USED_IN);
    EXPECT_FALSE(IsAvailable(Create(spRelation, "A", USED_IN), true));
}

TEST_F(RepNodeContextMenuOfChild, DoesNotUpdateTheRelationToTheParentOfARoot)
{
    UpdateRelation("true");
    EXPECT_FALSE(IsAvailable(CreateRoot("B"), true));
}

TEST_F(RepNodeContextMenuOfChild, TakesAParentThatIsNoRelationAsWell)
{
    UpdateRelation("true");
    Update(Part("C", Info({{"QtbIsEditAllowed", "true"}})));
    const QTBIRepNode_var c = CreateRoot("C");
    const QTBIRepNode_var b = Create(c, "B", PARTS);
    EXPECT_FALSE(IsAvailable(b, true)) << "it displays no single relation";
    EXPECT_THAT(c->SetSinglePdmRelationToBeDisplayed(PARTS), Succeeds());
    EXPECT_TRUE(IsAvailable(b, false));
}

// A rep node that fails to tell whether it stands for a relation, with an answer all the same.
class AnsweringInVain : public QTBERepNodeOnRepNode
{
public:
    inline static unsigned char s_bAnswer = FALSE;

    HRESULT RepresentsPdmRelNode(unsigned char* pbRepresentsPdmRelNode, unsigned char*)
    {
        *pbRepresentsPdmRelNode = s_bAnswer;
        return E_FAIL;
    }
};

TEST_F(RepNodeContextMenuOfChild, UpdatesTheRelationToAParentThatFailsToSayButSaysItIsOne)
{
    UpdateRelation("true");
    QTBTestLateType type("QTBAnsweringInVain", "QTBRepNode");
    type.Register<TIEQTBIRepNode, QTBIRepNode, AnsweringInVain>();
    const QTBIRepNode_var spRelation(KeepLoose(type.Create()));
    EXPECT_THAT(QTBINodeRelations_var(FindNode("AB"))->AddRightNode("PdmToRep", spRelation, 1, TRUE), Succeeds());
    EXPECT_THAT(spRelation->SetSinglePdmRelationToBeDisplayed(PARTS), Succeeds());
    const QTBIRepNode_var b = CreateRoot("B");
    LinkBelow(spRelation, b);
    AnsweringInVain::s_bAnswer = TRUE;
    EXPECT_TRUE(IsAvailable(b, false));
    AnsweringInVain::s_bAnswer = FALSE;
    EXPECT_FALSE(IsAvailable(b, true));
}

TEST_F(RepNodeContextMenuOfChild, DoesNotUpdateTheRelationToTheParentWhenSomethingFails)
{
    UpdateRelation("true");
    const QTBIRepNode_var spRelation = Create(CreateRoot("A"), "AB", PARTS);
    const QTBIRepNode_var b = Create(spRelation, "B", PARTS);
    ASSERT_TRUE(IsAvailable(b, false));
    const struct
    {
        const char* operation;
        CATBaseUnknown_var spNode;
        int callsBefore;
    } faults[] = {{"GetParent", b, 0},
                  {"RepresentsPdmRelNode", spRelation, 0},
                  {"GetSinglePdmRelationToBeDisplayed", spRelation, 0},
                  {"GetParent", b, 1},
                  {"GetPdmNode", spRelation, 0}};
    for (const auto& [operation, spNode, callsBefore] : faults) {
        const QTBFault fault(operation, spNode, callsBefore);
        EXPECT_FALSE(IsAvailable(b, true)) << operation << callsBefore;
    }
}

} // namespace
