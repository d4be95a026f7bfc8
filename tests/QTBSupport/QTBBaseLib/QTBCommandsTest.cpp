#include "QTBCommands.h"

#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "CATAfrGetCommandHeader.h"
#include "CATApplicationFrame.h"
#include "CATCmdStarter.h"
#include "CATCommandHeaderRegister.h"
#include "CATFrmLayout.h"
#include "CATIModelEvents.h"
#include "CATInstantiateComponent.h"
#include "CATMsgCatalog.h"
#include "QTBContextMenuInfo.h"
#include "QTBEditedSchema.h"
#include "QTBExpandCommands.h"
#include "QTBFakeCommunication.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIBndBox.h"
#include "QTBItemCommands.h"
#include "QTBMatchers.h"
#include "QTBPdmTree.h"
#include "QTBTestSession.h"
#include "QTBTestWindow.h"
#include "QTBTreeCommands.h"

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

constexpr const char* HEADERS[] = {"QTBPdmWksCtxExpandCmdHdr",
                                   "QTBPdmWksCtxExpandMultiCmdHdr",
                                   "QTBPdmWksCtxDeExpandCmdHdr",
                                   "QTBPdmWksCtxOpenInNewWndCmdHdr",
                                   "QTBPdmWksCtxCheckInCmdHdr",
                                   "QTBPdmWksCtxCheckOutCmdHdr",
                                   "QTBPdmWksCtxPromoteCmdHdr",
                                   "QTBPdmWksCtxReviseCmdHdr",
                                   "QTBPdmWksCtxUpdateSubCmpRelsCmdHdr",
                                   "QTBPdmWksCtxUpdateParentCmpRelCmdHdr",
                                   "QTBPdmWksCtxLoadStructureCmdHdr",
                                   "QTBPdmWksCtxAddTempCmdHdr",
                                   "QTBPdmWksCtxOpenCmdHdr",
                                   "QTBPdmWksCtxTempOpenCmdHdr",
                                   "QTBPdmWksCtxHighlightCmdHdr",
                                   "QTBPdmWksCtxCopyAttributesCmdHdr",
                                   "QTBPdmWksCtxExecuteCmdHdr",
                                   "QTBPdmWksCtxExpandBndBoxCmdHdr",
                                   "QTBPdmWksCtxOpenSelectedBndBoxCmdHdr",
                                   "QTBGenWksCtxPropertiesCmdHdr",
                                   "QTBGenWksCtxUpdateItemCmdHdr",
                                   "QTBPdmWksCtxDeleteCmdHdr",
                                   "QTBPdmWksCtxDelNewestFileOfBusObjCmdHdr",
                                   "QTBPdmWksCtxMarkBndBoxCmdHdr",
                                   "QTBPdmWksCtxUnMarkBndBoxCmdHdr"};

// A with B and the standard part S below, C below B; files FA of A and FB of B. The window shows A alone.
class Commands : public QTBTestSession
{
protected:
    void SetUp() override
    {
        QTBTestSession::SetUp();
        QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
        m_pWindow = std::make_unique<QTBTestWindow>();
        Update(Part("A", Attribute("PartNumber", "A-1") + Attribute("State", "20")) + Part("B") + Part("C") +
               Object("StandardPart", "S") + Object("CATPartFile", "FA") + Object("CATPartFile", "FB") +
               PartPart("AB", "A", "B") + PartPart("BC", "B", "C") + PartPart("AS", "A", "S") +
               Relation("PartFile", "AFA", "A", "FA") + Relation("PartFile", "BFB", "B", "FB"));
        // What an earlier action read, so that only a command that considers all nodes shows it.
        QTBGlobVarsUtil::IncActionIndex();
        m_pWindow->Show(FindNode("A"), {});
    }

    void TearDown() override
    {
        m_pWindow.reset();
        QTBTestSession::TearDown();
    }

    QTBIRepNode_var RepNode(const char* key) const { return m_pWindow->Find(FindNode(key)); }

    // PDM keys of what a window shows.
    static std::vector<std::string> Shown(const QTBIRepNodeCont_var& spIRepNodeCont)
    {
        CATListValCATBaseUnknown_var repNodes;
        EXPECT_EQ(spIRepNodeCont->GetAllRepNodes(&repNodes), S_OK);
        std::vector<std::string> keys;
        for (const std::string& key : QTBTestWindow::PdmKeysOf(repNodes)) {
            if (key != "no PDM node" && key != "DEFAULT_ROOT_NODE") {
                keys.push_back(key);
            }
        }
        return keys;
    }
    std::vector<std::string> Shown() const { return Shown(m_pWindow->GetCont()); }

    static HRESULT Interpret(const char* text, const QTBIRepNode_var& spIRepNode)
    {
        return QTBCommands::Interpret(text, spIRepNode);
    }

    std::unique_ptr<QTBTestWindow> m_pWindow;
};

TEST_F(Commands, HaveHeadersWithTitlesAndIconsOnceAPdmWindowIsOpen)
{
    for (const char* language : {"", "German"}) {
        CATMsgCatalog::SetLanguage(language);
        for (const char* id : HEADERS) {
            CATCommandHeader* pHeader = nullptr;
            ASSERT_EQ(CATAfrGetCommandHeader(id, &pHeader), S_OK) << id;
            EXPECT_NE(pHeader->GetTitle(), id);
            EXPECT_FALSE(pHeader->GetIcon().IsEmpty()) << id;
            EXPECT_TRUE(pHeader->IsAvailable()) << id;
        }
    }
    CATMsgCatalog::SetLanguage("");
}

TEST_F(Commands, KeepTheirHeadersWhenAnotherWindowIsOpened)
{
    CATCommandHeader* pHeader = nullptr;
    ASSERT_EQ(CATAfrGetCommandHeader(HEADERS[0], &pHeader), S_OK);
    pHeader->BecomeUnavailable();
    const QTBTestWindow other;
    ASSERT_EQ(CATAfrGetCommandHeader(HEADERS[0], &pHeader), S_OK);
    EXPECT_FALSE(pHeader->IsAvailable());
}

TEST_F(Commands, LoseTheirHeadersWithTheSession)
{
    QTBGlobVarsUtil::EndSession();
    for (const char* id : HEADERS) {
        CATCommandHeader* pHeader = nullptr;
        EXPECT_EQ(CATAfrGetCommandHeader(id, &pHeader), E_FAIL) << id;
    }
    const CATCmdStarter item("item", "", "SingleExpand ENOVIA_MATRIX/Standard PartPart->consists of");
    EXPECT_THAT(item.Start(NULL_var), FailsWithMessage("CommandNotFoundERR_1003"));
}

TEST_F(Commands, ExpandOneLevelAlongTheRelationOfTheirText)
{
    EXPECT_THAT(Interpret("SingleExpand ENOVIA_MATRIX/Standard PartPart->consists of", RepNode("A")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "AS", "S"));
    EXPECT_THAT(Interpret("SingleExpand ENOVIA_MATRIX/Standard PartFile->is stored in", RepNode("B")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "AS", "S", "BFB", "FB"));
}

TEST_F(Commands, ExpandAllLevelsAlongTheRelationOfTheirText)
{
    EXPECT_THAT(Interpret("MultiExpand ENOVIA_MATRIX/Standard PartPart->consists of", RepNode("A")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "BC", "C", "AS", "S"));
}

TEST_F(Commands, ExpandAgainstTheDirectionOfTheRelation)
{
    m_pWindow->Show(FindNode("C"), {});
    EXPECT_THAT(Interpret("SingleExpand ENOVIA_MATRIX/Standard PartPart<-is used in", RepNode("C")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "C", "BC", "B"));
}

TEST_F(Commands, LeaveTheWindowLookingAtTheCurrentAction)
{
    EXPECT_THAT(Interpret("SingleExpand ENOVIA_MATRIX/Standard PartPart->consists of", RepNode("A")), Succeeds());
    CATListValQTBNodeRelationInfo relations;
    relations.Append(QTBNodeRelationInfo("PartPart", usLEFT_TO_RIGHT));
    unsigned char bOneLevelOnly = FALSE;
    unsigned char bTrue = TRUE;
    unsigned char bFalse = FALSE;
    EXPECT_THAT(m_pWindow->GetCont()->UpdateRepTree(RepNode("B"), relations, &bOneLevelOnly, nullptr, nullptr, &bTrue,
                                                    &bFalse, &bFalse),
                Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "AS", "S")) << "C is not of the current action";
}

TEST_F(Commands, ExpandAlongATreeOfTheSchema)
{
    EXPECT_THAT(Interpret("PdmTreeENOVIA_MATRIXStandardPartsAndFiles", RepNode("A")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AFA", "FA", "AB", "B", "BFB", "FB", "AS", "S"));
    EXPECT_THAT(Interpret("PdmTreeENOVIA_MATRIXStandardPartsAndFiles", RepNode("A")), Succeeds());
    EXPECT_THAT(Shown(), SizeIs(9)) << "what is shown is not shown twice";
    EXPECT_THAT(Interpret("PdmTreeENOVIA_MATRIXStandardNone", RepNode("A")),
                FailsWithMessage("CommandTextNotKnownERR_2009"));
}

TEST_F(Commands, ExpandOnlyTheClassesOfATreeFurther)
{
    QTBPdmTree tree;
    QTBPdmTreeRel* pParts = tree.AddRel(nullptr, QTBNodeRelationInfo("PartPart", usLEFT_TO_RIGHT));
    QTBPdmTreeObj* pStandardParts = tree.AddObj(pParts, "StandardPart");
    tree.AddRel(pStandardParts, QTBNodeRelationInfo("PartPart", usLEFT_TO_RIGHT));
    EXPECT_THAT(QTBExpandCommands::ExpandPdmTree(RepNode("A"), tree), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "AS", "S")) << "B is no standard part";
}

TEST_F(Commands, TellThatTheMaximumLevelEndedTheExpansion)
{
    QTBLoadEditedSchema({{R"(maxExpansionLevel="-1")", R"(maxExpansionLevel="1")"}});
    EXPECT_THAT(Interpret("MultiExpand ENOVIA_MATRIX/Standard PartPart->consists of", RepNode("A")),
                FailsWithMessage("MaxExpansionLevelReachedWRN_2103"));
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "AS", "S"));
}

TEST_F(Commands, RefuseToCreateWithoutTheServiceForIt)
{
    const HRESULT hr = Interpret("CreatePartPart;->;Part;Part;A;QTBSchema", RepNode("A"));
    EXPECT_THAT(hr, FailsWith("PdmServiceNotAvailableERR_2008", "CreateObject"));
}

TEST_F(Commands, LeaveTextsOfOthersAlone)
{
    EXPECT_EQ(Interpret("Something", RepNode("A")), S_FALSE);
    EXPECT_THAT(Interpret("SingleExpand ENOVIA_MATRIX/Standard PartPart->consists of", NULL_var), FailsQuietly());
    EXPECT_THAT(Interpret("PdmTreeENOVIA_MATRIXStandardWhereUsed", NULL_var), FailsQuietly());
}

TEST_F(Commands, RunForMenuItemsFromTheirHeader)
{
    EXPECT_THAT(CATCmdStarter("item", "QTBPdmWksCtxExpandCmdHdr").Start(RepNode("A")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "AS", "S", "AFA", "FA"));
    EXPECT_THAT(CATCmdStarter("item", "QTBPdmWksCtxExpandMultiCmdHdr").Start(RepNode("A")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "BC", "C", "AS", "S", "AFA", "FA"));
    EXPECT_THAT(CATCmdStarter("item", "QTBPdmWksCtxDeExpandCmdHdr").Start(RepNode("B")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AS", "S", "AFA", "FA"));
    EXPECT_THAT(CATCmdStarter("item", "QTBPdmWksCtxExpandCmdHdr").Start(NULL_var), FailsQuietly());
}

TEST_F(Commands, HaveNothingToExpandOnARelationOrAClassWithoutRelations)
{
    Interpret("SingleExpand ENOVIA_MATRIX/Standard PartPart->consists of", RepNode("A"));
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_Expand", RepNode("AB")), FailsQuietly());
    CATListValQTBExpDlgRelExpandInfo relations;
    EXPECT_THAT(QTBExpandCommands::GetRelations(RepNode("AB"), "", FALSE, &relations), Succeeds());
    EXPECT_EQ(relations.Size(), 0);
    EXPECT_EQ(QTBExpandCommands::GetRelations(RepNode("A"), "", FALSE, nullptr), E_POINTER);
    EXPECT_THAT(QTBExpandCommands::GetRelations(NULL_var, "", FALSE, &relations), FailsQuietly());
}

TEST_F(Commands, OpenTheObjectInAWindowOfItsOwn)
{
    EXPECT_THAT(CATCmdStarter("item", "QTBPdmWksCtxOpenInNewWndCmdHdr").Start(RepNode("A")), Succeeds());
    const CATListPtrCATFrmWindow& windows = CATFrmLayout::GetCurrentLayout()->GetWindowList();
    ASSERT_EQ(windows.Size(), 2);
    EXPECT_EQ(CATFrmLayout::GetCurrentLayout()->GetCurrentWindow(), windows[2]);
    CATListValCATBaseUnknown_var repNodes;
    EXPECT_THAT(PdmNode("A")->GetRepNodes(&repNodes, NULL_var), Succeeds());
    EXPECT_EQ(repNodes.Size(), 2);
    Interpret("SingleExpand ENOVIA_MATRIX/Standard PartPart->consists of", RepNode("A"));
    EXPECT_THAT(QTBTreeCommands::OpenInNewWindow(RepNode("AB")), FailsQuietly()) << "a relation";
    EXPECT_THAT(QTBTreeCommands::OpenInNewWindow(NULL_var), FailsQuietly());
    EXPECT_EQ(windows.Size(), 2);
    CATApplicationFrame::GetFrame()->CloseLayout();
    EXPECT_TRUE(FAILED(QTBTreeCommands::OpenInNewWindow(RepNode("A"))));
    CATApplicationFrame::GetFrame()->OpenLayout();
}

TEST_F(Commands, HighlightNothingWithoutCorrespondingProducts)
{
    EXPECT_TRUE(FAILED(CATCmdStarter("item", "QTBPdmWksCtxHighlightCmdHdr").Start(RepNode("A"))));
    EXPECT_THAT(QTBTreeCommands::Highlight(NULL_var), FailsQuietly());
}

TEST_F(Commands, CopyTheAttributesByTheirDisplayNamesAndValues)
{
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_Copy", RepNode("A")), Succeeds());
    EXPECT_EQ(CATApplicationFrame::GetFrame()->GetClipboardText(),
              "Class\tPart\nKey\tA\nPart number\tA-1\nState\tIn review\n");
    EXPECT_THAT(QTBItemCommands::CopyAttributes(NULL_var), FailsQuietly());
}

TEST_F(Commands, ShowTheAttributesOfTheFormForProperties)
{
    CATApplicationFrame::GetFrame()->ForgetNotices();
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_Properties", RepNode("A")), Succeeds());
    ASSERT_THAT(CATApplicationFrame::GetFrame()->GetNotices(), SizeIs(1));
    const CATDlgNotice& notice = CATApplicationFrame::GetFrame()->GetNotices().front();
    EXPECT_EQ(notice.message, "Part number: A-1\nName: \nRevision: \nState: In review\nDescription: \nMaterial: \n"
                              "Mass: \nProject: \nFull name: \n");
    EXPECT_THAT(std::string(notice.title.View()), HasSubstr("A-1"));
    EXPECT_THAT(QTBItemCommands::ShowProperties(NULL_var), FailsQuietly());
    Interpret("SingleExpand ENOVIA_MATRIX/Standard PartFile->is stored in", RepNode("A"));
    EXPECT_THAT(QTBItemCommands::ShowProperties(RepNode("AFA")),
                FailsWithMessage("FunctionalityNotImplementedERR_2002"))
        << "the relation's class has no such form";
}

TEST_F(Commands, DeleteTheItemInThePdmSystemAndEverywhere)
{
    Interpret("SingleExpand ENOVIA_MATRIX/Standard PartPart->consists of", RepNode("A"));
    {
        const QTBFakeCommunication communication;
        QTBFakeCommunication::Refuse();
        EXPECT_TRUE(FAILED(QTBCommands::Start("QTB_Ctx_Delete", RepNode("B"))));
        EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "AS", "S"));
    }
    const QTBFakeCommunication communication;
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_Delete", RepNode("B")), Succeeds());
    EXPECT_THAT(QTBFakeCommunication::Calls(), ElementsAre("Delete(B)"));
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AS", "S"));
    EXPECT_TRUE(FindNode("B") == NULL_var);
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_Delete", RepNode("A")), Succeeds());
    EXPECT_THAT(Shown(), IsEmpty());
    EXPECT_THAT(QTBItemCommands::Delete(NULL_var), FailsQuietly());
}

TEST_F(Commands, NameTheServiceThatTheyLack)
{
    const struct
    {
        const char* command;
        const char* service;
    } commands[] = {{"QTBPdmWksCtxCheckInCmdHdr", "CheckIn"},
                    {"QTB_Ctx_CheckIn", "CheckIn"},
                    {"QTB_Ctx_CheckOut", "CheckOut"},
                    {"QTB_Ctx_Promote", "Promote"},
                    {"QTB_Ctx_Revise", "Revise"},
                    {"QTBPdmWksCtxUpdateSubCmpRelsCmdHdr", "UpdateRelations"},
                    {"QTBPdmWksCtxUpdateParentCmpRelCmdHdr", "UpdateRelations"},
                    {"QTB_Ctx_LoadStructure", "GetFiles"},
                    {"QTB_Ctx_AddTemp", "GetFiles"},
                    {"QTB_Ctx_Open", "GetFiles"},
                    {"QTBPdmWksCtxTempOpenCmdHdr", "GetFiles"},
                    {"QTB_Ctx_Execute", "Execute"},
                    {"QTBPdmWksCtxExpandBndBoxCmdHdr", "GetBoundingBoxes"},
                    {"QTBPdmWksCtxOpenSelectedBndBoxCmdHdr", "GetFiles"},
                    {"QTBGenWksCtxUpdateItemCmdHdr", "UpdateItem"},
                    {"QTB_Ctx_DelNewestFile", "DeleteNewestVersion"}};
    for (const auto& [command, service] : commands) {
        EXPECT_THAT(QTBCommands::Start(command, RepNode("A")), FailsWith("PdmServiceNotAvailableERR_2008", service))
            << command;
    }
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_CheckIn", NULL_var), FailsQuietly());
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_Unknown", RepNode("A")), FailsQuietly());
    EXPECT_THAT(QTBCommands::Start("", RepNode("A")), FailsQuietly());
}

TEST_F(Commands, MarkABoundingBoxAndHaveItDrawnAnew)
{
    struct Listener : CATModelEventListener
    {
        void OnModelEvent(const CATBaseUnknown_var&, CATModelEvent event) override { events.push_back(event); }
        std::vector<CATModelEvent> events;
    };
    void* pBox = nullptr;
    ASSERT_EQ(::CATInstantiateComponent("QTBBndBox", IID_QTBIBndBox, &pBox), S_OK);
    const QTBIBndBox_var spBox = QTBIBndBox_var::Adopt(static_cast<QTBIBndBox*>(pBox));
    Listener listener;
    CATIModelEvents_var(spBox)->Connect(&listener);
    EXPECT_THAT(CATCmdStarter("item", "QTBPdmWksCtxMarkBndBoxCmdHdr").Start(spBox), Succeeds());
    EXPECT_EQ(spBox->IsMarked(), TRUE);
    EXPECT_THAT(CATCmdStarter("item", "QTBPdmWksCtxUnMarkBndBoxCmdHdr").Start(spBox), Succeeds());
    EXPECT_EQ(spBox->IsMarked(), FALSE);
    EXPECT_THAT(listener.events, ElementsAre(CATModelEvent::Modified, CATModelEvent::Modified));
    CATIModelEvents_var(spBox)->Disconnect(&listener);
    EXPECT_THAT(CATCmdStarter("item", "QTBPdmWksCtxMarkBndBoxCmdHdr").Start(RepNode("A")), FailsQuietly());
    EXPECT_THAT(CATCmdStarter("item", "QTBPdmWksCtxMarkBndBoxCmdHdr").Start(NULL_var), FailsQuietly());
}

TEST_F(Commands, RunForTheEntriesOfTheQueryDialog)
{
    const QTBContextMenuInfo usedIn(QTB_CTX_MNU_INFO_RELATION, "is stored in", "Is stored in", "QTB_Ctx_Expand", TRUE);
    EXPECT_THAT(QTBCommands::Start(usedIn, RepNode("A")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AFA", "FA"));
    const QTBContextMenuInfo unknown(QTB_CTX_MNU_INFO_RELATION, "nothing", "", "QTB_Ctx_Expand", TRUE);
    EXPECT_THAT(QTBCommands::Start(unknown, RepNode("A")), FailsQuietly());
    const QTBContextMenuInfo separator(QTB_CTX_MNU_INFO_SEPARATOR, "Sep1", "Sep1", "QTB_Ctx_Expand", TRUE);
    EXPECT_THAT(QTBCommands::Start(separator, RepNode("A")), Succeeds());
    const QTBContextMenuInfo expand(QTB_CTX_MNU_INFO_COMMAND, "Expand", "Expand", "QTB_Ctx_Expand", TRUE);
    EXPECT_THAT(QTBCommands::Start(expand, RepNode("A")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AFA", "FA", "AB", "B", "AS", "S"));
    QTBContextMenuInfo disabled = expand;
    disabled.SetEnabled(FALSE);
    EXPECT_THAT(QTBCommands::Start(disabled, RepNode("A")), FailsQuietly());
}

} // namespace
