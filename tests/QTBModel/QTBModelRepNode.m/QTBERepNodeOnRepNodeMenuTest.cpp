#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "CATAfrGetCommandHeader.h"
#include "CATApplicationFrame.h"
#include "CATCmdContainer.h"
#include "CATCmdSeparator.h"
#include "CATCmdStarter.h"
#include "CATCommandHeader.h"
#include "CATFrmLayout.h"
#include "CATMsgCatalog.h"
#include "QTBERepNodeOnRepNode.h"
#include "QTBRepTreeSession.h"
#include "QTBReplacedExtension.h"
#include "QTBSchema.h"
#include "QTBTestWindow.h"
#include "TIEQTBIQtbFrmWindow.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

// The class Person, offering every action in both places instead of its properties.
const std::vector<std::string> ALL_ACTIONS = {
    "Expand",     "MultipleExpand", "CustomExpand",  "DeExpand",         "OpenInNewPdmWindow", "CheckIn",
    "CheckOut",   "Promote",        "Revise",        "UpdateSubCmpRels", "UpdateParentCmpRel", "LoadStructure",
    "AddTemp",    "Open",           "TempOpen",      "Highlight",        "CopyAttributes",     "Execute",
    "Properties", "UpdateItem",     "ContextCreate", "DeleteItem",       "DeleteNewestVersion"};
constexpr const char* ACTIONS_OF_PERSON = R"(      <form name="Properties">
        <attr name="FullName"/>
      </form>
      <contextAction name="Properties" in="PdmWindow"/>)";

std::string Offering(const std::vector<std::string>& actions, const std::string& places)
{
    std::string xml;
    for (const std::string& action : actions) {
        xml += R"(<contextAction name=")" + action + R"(" in=")" + places + R"("/>)";
    }
    return xml;
}

// A line for each item: "--name", "name|header", "header|command text" for one with a text, "[title: items]".
std::vector<std::string> Describe(const CATCmdAccess* pItem)
{
    std::vector<std::string> lines;
    for (; pItem != nullptr; pItem = pItem->GetNext()) {
        const std::string name(pItem->GetName().View());
        if (dynamic_cast<const CATCmdSeparator*>(pItem) != nullptr) {
            lines.push_back("--" + name);
        } else if (const auto* pStarter = dynamic_cast<const CATCmdStarter*>(pItem)) {
            const std::string header(pStarter->GetHeaderId().View());
            const std::string text(pStarter->GetCommandText().View());
            lines.push_back(text.empty() ? name + "|" + header : header + "|" + text);
        } else {
            std::string items;
            for (const std::string& line : Describe(pItem->GetChild())) {
                items += (items.empty() ? "" : "; ") + line;
            }
            lines.push_back("[" + std::string(pItem->GetTitle().View()) + ": " + items + "]");
        }
    }
    return lines;
}

std::string Describe(const QTBContextMenuInfo& info)
{
    const auto text = [](const CATUnicodeString& us) { return std::string(us.View()); };
    return std::to_string(info.GetType()) + "|" + text(info.GetActionName()) + "|" + text(info.GetTitle()) + "|" +
           text(info.GetCommandName()) + (info.IsEnabled() != FALSE ? "" : "|off");
}

std::vector<std::string> Describe(const CATListValQTBContextMenuInfo& infos)
{
    std::vector<std::string> lines;
    for (const QTBContextMenuInfo& info : infos) {
        lines.push_back(Describe(info));
    }
    return lines;
}

const std::string EXPAND_OF_PART =
    "[Expand: \"dummy\"|SingleExpand ENOVIA_MATRIX/Standard PartPart->consists of; "
    "\"dummy\"|SingleExpand ENOVIA_MATRIX/Standard StandardPartUsage->uses standard part; "
    "\"dummy\"|SingleExpand ENOVIA_MATRIX/Standard PartFile->is stored in; "
    "\"dummy\"|SingleExpand ENOVIA_MATRIX/Standard PartDocument->is documented in; --NULL; "
    "\"dummy\"|SingleExpand ENOVIA_MATRIX/Standard PartPart<-is used in]";
const std::string MULTI_EXPAND_OF_PART =
    "[Expand All Levels: \"dummy\"|MultiExpand ENOVIA_MATRIX/Standard PartPart->consists of; --NULL; "
    "\"dummy\"|MultiExpand ENOVIA_MATRIX/Standard PartPart<-is used in]";
const std::string CUSTOM_EXPAND_OF_PART = "[Expand Structure: \"dummy\"|PdmTreeENOVIA_MATRIXStandardPartsAndFiles; "
                                          "\"dummy\"|PdmTreeENOVIA_MATRIXStandardWhereUsed]";

class RepNodeMenu : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        CATMsgCatalog::SetLanguage("");
        unsetenv("QTB_BNDBOX_SUPPORT");
        QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
        m_pWindow = std::make_unique<QTBTestWindow>();
        m_spCont = m_pWindow->GetCont();
    }

    void TearDown() override
    {
        m_pWindow.reset();
        unsetenv("QTB_BNDBOX_SUPPORT");
        QTBFaultyRepTreeSession::TearDown();
    }

    // A rep node of the part A without version information, and one of a part of that version.
    QTBIRepNode_var CreatePart()
    {
        Update(Part("A"));
        return CreateRoot("A");
    }
    // A rep node of a person, whose class offers those actions there, in its newest version or without one.
    QTBIRepNode_var CreatePerson(const std::vector<std::string>& actions, const std::string& places,
                                 const std::string& info = Info({{"QtbVersion", "1"}}))
    {
        LoadEditedSchema({{ACTIONS_OF_PERSON, Offering(actions, places)}});
        Update(Object("Person", "P", info));
        return CreateRoot("P");
    }

    // The same node as a query result: no window shows it.
    static QTBIRepNode_var WithoutWindow(const QTBIRepNode_var& spIRepNode)
    {
        EXPECT_THAT(spIRepNode->SetFrmWindowPtr(nullptr), Succeeds());
        return spIRepNode;
    }

    static std::vector<std::string> MenuOf(const QTBIRepNode_var& spIRepNode)
    {
        CATCmdContainer menu("menu");
        CATCmdAccess* pFirstItem = nullptr;
        EXPECT_THAT(spIRepNode->InitContextMenuInfo(&menu, &pFirstItem), Succeeds());
        EXPECT_EQ(pFirstItem, menu.GetChild());
        return Describe(menu.GetChild());
    }
    static HRESULT TryMenu(const QTBIRepNode_var& spIRepNode)
    {
        CATCmdContainer menu("menu");
        return spIRepNode->InitContextMenuInfo(&menu, nullptr);
    }

    struct DialogEntries
    {
        std::vector<std::string> list;
        std::string current;
        std::vector<std::string> second;
    };
    static DialogEntries EntriesOf(const QTBIRepNode_var& spIRepNode)
    {
        CATListValQTBContextMenuInfo list;
        QTBContextMenuInfo current;
        CATListValQTBContextMenuInfo second;
        EXPECT_THAT(spIRepNode->GetContextMenuInfo(&list, &current, &second), Succeeds());
        return {Describe(list), Describe(current), Describe(second)};
    }

    static int WindowCount() { return CATFrmLayout::GetCurrentLayout()->GetWindowList().Size(); }

    std::unique_ptr<QTBTestWindow> m_pWindow;
};

TEST_F(RepNodeMenu, OfAPartHasTheItemsThatItsClassOffersInThePdmWindow)
{
    EXPECT_THAT(MenuOf(CreatePart()), ElementsAre("--NULL", EXPAND_OF_PART, MULTI_EXPAND_OF_PART, CUSTOM_EXPAND_OF_PART,
                                                  "QTBDeExpandSubMenuStr|QTBPdmWksCtxDeExpandCmdHdr",
                                                  "QTBOpenInNewWndSubMenuStr|QTBPdmWksCtxOpenInNewWndCmdHdr",
                                                  "QTBUpdateSubCmpRelsSubMenuStr|QTBPdmWksCtxUpdateSubCmpRelsCmdHdr",
                                                  "QTBLoadStructureSubMenuStr|QTBPdmWksCtxLoadStructureCmdHdr",
                                                  "QTBAddTempSubMenuStr|QTBPdmWksCtxAddTempCmdHdr",
                                                  "QTBHighlightSubMenuStr|QTBPdmWksCtxHighlightCmdHdr",
                                                  "QTBCopyAttributesSubMenuStr|QTBPdmWksCtxCopyAttributesCmdHdr",
                                                  "QTBPropertiesSubMenuStr|QTBGenWksCtxPropertiesCmdHdr",
                                                  "QTBUpdateItemSubMenuStr|QTBGenWksCtxUpdateItemCmdHdr",
                                                  "[Create: \"dummy\"|CreatePartPart;->;Part;Part;A;QTBSchema; "
                                                  "\"dummy\"|CreatePartPart;<-;Part;Part;A;QTBSchema; "
                                                  "\"dummy\"|CreatePartDocument;->;Document;Part;A;QTBSchema]"));
}

TEST_F(RepNodeMenu, HasEveryActionInItsPlaceInThePdmWindow)
{
    setenv("QTB_BNDBOX_SUPPORT", "ON", 1);
    EXPECT_THAT(
        MenuOf(CreatePerson(ALL_ACTIONS, "PdmWindow QueryDialog")),
        ElementsAre(
            "--NULL", "QTBDeExpandSubMenuStr|QTBPdmWksCtxDeExpandCmdHdr",
            "QTBOpenInNewWndSubMenuStr|QTBPdmWksCtxOpenInNewWndCmdHdr",
            "QTBCheckInSubMenuStr|QTBPdmWksCtxCheckInCmdHdr", "QTBCheckOutSubMenuStr|QTBPdmWksCtxCheckOutCmdHdr",
            "QTBPromoteSubMenuStr|QTBPdmWksCtxPromoteCmdHdr", "QTBReviseSubMenuStr|QTBPdmWksCtxReviseCmdHdr",
            "QTBUpdateSubCmpRelsSubMenuStr|QTBPdmWksCtxUpdateSubCmpRelsCmdHdr",
            "QTBUpdateParentCmpRelSubMenuStr|QTBPdmWksCtxUpdateParentCmpRelCmdHdr",
            "QTBLoadStructureSubMenuStr|QTBPdmWksCtxLoadStructureCmdHdr",
            "QTBAddTempSubMenuStr|QTBPdmWksCtxAddTempCmdHdr", "QTBOpenSubMenuStr|QTBPdmWksCtxOpenCmdHdr",
            "QTBTempOpenSubMenuStr|QTBPdmWksCtxTempOpenCmdHdr", "QTBHighlightSubMenuStr|QTBPdmWksCtxHighlightCmdHdr",
            "QTBCopyAttributesSubMenuStr|QTBPdmWksCtxCopyAttributesCmdHdr",
            "QTBExecuteSubMenuStr|QTBPdmWksCtxExecuteCmdHdr",
            "QTBExpandBndBoxSubMenuStr|QTBPdmWksCtxExpandBndBoxCmdHdr",
            "QTBOpenSelectedBndBoxSubMenuStr|QTBPdmWksCtxOpenSelectedBndBoxCmdHdr",
            "QTBPropertiesSubMenuStr|QTBGenWksCtxPropertiesCmdHdr",
            "QTBUpdateItemSubMenuStr|QTBGenWksCtxUpdateItemCmdHdr",
            "QTBDelNewestFileOfBusObjSubMenuStr|QTBPdmWksCtxDelNewestFileOfBusObjCmdHdr"));
}

TEST_F(RepNodeMenu, KnowsEveryActionOfTheExampleSchema)
{
    std::ifstream file(QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml");
    const std::string schema((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const std::regex action(R"re(<contextAction name="([^"]*)")re");
    std::set<std::string> actions;
    for (std::sregex_iterator match(schema.begin(), schema.end(), action), end; match != end; ++match) {
        actions.insert((*match)[1]);
    }
    EXPECT_THAT(actions, Not(IsEmpty()));
    EXPECT_THAT(actions, ::testing::IsSubsetOf(ALL_ACTIONS));
}

TEST_F(RepNodeMenu, HasACommandWithATitleBehindEveryItem)
{
    setenv("QTB_BNDBOX_SUPPORT", "ON", 1);
    const QTBIRepNode_var spPerson = CreatePerson(ALL_ACTIONS, "PdmWindow");
    CATCmdContainer menu("menu");
    ASSERT_THAT(spPerson->InitContextMenuInfo(&menu, nullptr), Succeeds());
    int starters = 0;
    for (const CATCmdAccess* pItem = menu.GetChild(); pItem != nullptr; pItem = pItem->GetNext()) {
        const auto* pStarter = dynamic_cast<const CATCmdStarter*>(pItem);
        if (pStarter == nullptr) {
            continue;
        }
        ++starters;
        CATCommandHeader* pHeader = nullptr;
        ASSERT_EQ(CATAfrGetCommandHeader(pStarter->GetHeaderId(), &pHeader), S_OK) << pStarter->GetHeaderId();
        EXPECT_NE(pHeader->GetTitle(), pStarter->GetHeaderId()) << "no title";
        EXPECT_FALSE(pHeader->GetIcon().IsEmpty()) << pStarter->GetHeaderId();
        EXPECT_NE(pItem->GetTitle(), pItem->GetName()) << "no text";
    }
    EXPECT_EQ(starters, 20);
}

TEST_F(RepNodeMenu, HasEveryActionInItsPlaceInTheQueryDialog)
{
    const QTBIRepNode_var spPerson = CreatePerson(ALL_ACTIONS, "QueryDialog PdmWindow",
                                                  Info({{"QtbVersion", "1"},
                                                        {"QtbIsEditAllowed", "true"},
                                                        {"QtbIsCheckOutAllowed", "true"},
                                                        {"QtbIsCheckInAllowed", "true"},
                                                        {"QtbIsPromoteAllowed", "true"}}));
    const DialogEntries entries = EntriesOf(spPerson);
    EXPECT_THAT(
        entries.list,
        ElementsAre(
            "0|OpenInNewPdmWindow|Open in New PDM Window|QTB_Ctx_OpenInNewWnd", "0|CheckIn|Check In|QTB_Ctx_CheckIn",
            "0|CheckOut|Check Out|QTB_Ctx_CheckOut", "0|Promote|Promote|QTB_Ctx_Promote",
            "0|Revise|Revise|QTB_Ctx_Revise", "0|LoadStructure|Load Structure|QTB_Ctx_LoadStructure",
            "0|AddTemp|Add Temporarily|QTB_Ctx_AddTemp", "0|Open|Open|QTB_Ctx_Open",
            "0|TempOpen|Open Temporarily|QTB_Ctx_AddTemp", "0|CopyAttributes|Copy Attributes|QTB_Ctx_Copy",
            "0|Execute|Execute|QTB_Ctx_Execute", "0|UpdateItem|Edit Item|QTB_Ctx_Properties", "0|ContextCreate|Create|",
            "0|DeleteItem|Delete|QTB_Ctx_Delete", "0|DeleteNewestVersion|Delete Newest Version|QTB_Ctx_DelNewestFile"));
    EXPECT_EQ(entries.current, "0|Expand|Expand|QTB_Ctx_Expand");
    EXPECT_THAT(entries.second, ElementsAre("2|Sep1|Sep1|QTB_Ctx_Expand")) << "no relation starts at a person";
}

TEST_F(RepNodeMenu, OffersWhatIsOfferedInTheQueryDialogOnlyThere)
{
    const QTBIRepNode_var spPerson = CreatePerson(ALL_ACTIONS, "QueryDialog");
    EXPECT_THAT(MenuOf(spPerson), ElementsAre("--NULL"));
    EXPECT_EQ(EntriesOf(spPerson).list.size(), 15U);
}

TEST_F(RepNodeMenu, OffersWhatIsOfferedInThePdmWindowOnlyThere)
{
    const QTBIRepNode_var spPerson = CreatePerson(ALL_ACTIONS, "PdmWindow");
    EXPECT_EQ(MenuOf(spPerson).size(), 19U);
    EXPECT_THAT(EntriesOf(spPerson).list, IsEmpty());
}

TEST_F(RepNodeMenu, OffersNothingThatTheClassDoesNotOffer)
{
    const QTBIRepNode_var spPerson = CreatePerson(ALL_ACTIONS, "");
    EXPECT_THAT(MenuOf(spPerson), ElementsAre("--NULL"));
    const DialogEntries entries = EntriesOf(spPerson);
    EXPECT_THAT(entries.list, IsEmpty());
    EXPECT_EQ(entries.current, "0||||off");
    EXPECT_THAT(entries.second, IsEmpty());
}

TEST_F(RepNodeMenu, HasTheTitlesOfTheSessionsLanguage)
{
    CATMsgCatalog::SetLanguage("German");
    const QTBIRepNode_var spPart = CreatePart();
    CATCmdContainer menu("menu");
    EXPECT_THAT(spPart->InitContextMenuInfo(&menu, nullptr), Succeeds());
    std::vector<std::string> titles;
    for (const CATCmdAccess* pItem = menu.GetChild()->GetNext(); pItem != nullptr; pItem = pItem->GetNext()) {
        titles.emplace_back(pItem->GetTitle().View());
    }
    EXPECT_THAT(titles, Contains("Zuklappen"));
    EXPECT_THAT(EntriesOf(spPart).list, Contains("0|CopyAttributes|Attribute kopieren|QTB_Ctx_Copy"));
    CATMsgCatalog::SetLanguage("");
}

TEST_F(RepNodeMenu, CallsTheItemsOfAMenuByTheirDisplayNames)
{
    const QTBIRepNode_var spPart = CreatePart();
    CATCmdContainer menu("menu");
    EXPECT_THAT(spPart->InitContextMenuInfo(&menu, nullptr), Succeeds());
    std::vector<std::string> titles;
    for (const CATCmdAccess* pMenu = menu.GetChild(); pMenu != nullptr; pMenu = pMenu->GetNext()) {
        for (const CATCmdAccess* pItem = pMenu->GetChild(); pItem != nullptr; pItem = pItem->GetNext()) {
            titles.emplace_back(pItem->GetTitle().View());
        }
    }
    EXPECT_THAT(titles, ElementsAre("Consists of", "Uses standard part", "Is stored in", "Is documented in", "NULL",
                                    "Is used in", "Consists of", "NULL", "Is used in", "Parts and Files", "Where Used",
                                    "Consists of: Part", "Is used in: Part", "Is documented in: Document"));
}

TEST_F(RepNodeMenu, OfARelationHasNeitherExpandNorCreateItems)
{
    LoadEditedSchema({{R"(<contextAction name="UpdateParentCmpRel" in="PdmWindow"/>)",
                       Offering({"Expand", "MultipleExpand", "CustomExpand", "ContextCreate", "UpdateParentCmpRel"},
                                "PdmWindow QueryDialog")}});
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    const QTBIRepNode_var spRelation = Create(CreateRoot("A"), "AB");
    EXPECT_THAT(MenuOf(spRelation),
                ElementsAre("--NULL", "QTBUpdateParentCmpRelSubMenuStr|QTBPdmWksCtxUpdateParentCmpRelCmdHdr",
                            "QTBPropertiesSubMenuStr|QTBGenWksCtxPropertiesCmdHdr",
                            "QTBUpdateItemSubMenuStr|QTBGenWksCtxUpdateItemCmdHdr"));
    const DialogEntries entries = EntriesOf(spRelation);
    EXPECT_THAT(entries.list, IsEmpty());
    EXPECT_THAT(entries.second, IsEmpty());
}

TEST_F(RepNodeMenu, HasNoItemForDeletingInThePdmWindow)
{
    EXPECT_THAT(MenuOf(CreatePerson({"DeleteItem"}, "PdmWindow")), ElementsAre("--NULL"));
}

TEST_F(RepNodeMenu, OffersWhatNeedsTheNewestVersionOnlyOnThat)
{
    const std::vector<std::string> actions = {"Promote", "Revise", "DeleteNewestVersion"};
    const QTBIRepNode_var spNewest =
        CreatePerson(actions, "PdmWindow QueryDialog", Info({{"QtbVersion", "2"}, {"QtbNewestVersion", "2"}}));
    EXPECT_EQ(MenuOf(spNewest).size(), 4U);
    EXPECT_EQ(EntriesOf(spNewest).list.size(), 3U);
    Update(Object("Person", "Old", Info({{"QtbVersion", "1"}, {"QtbNewestVersion", "2"}})) + Object("Person", "None"));
    for (const char* key : {"Old", "None"}) {
        const QTBIRepNode_var spOther = CreateRoot(key);
        EXPECT_THAT(MenuOf(spOther), ElementsAre("--NULL")) << key;
        EXPECT_THAT(EntriesOf(spOther).list, IsEmpty()) << key;
    }
}

TEST_F(RepNodeMenu, TellsThatThereIsNoVersionInformation)
{
    const QTBIRepNode_var spPart = CreatePart();
    const DebugCapture capture;
    EXPECT_THAT(TryMenu(spPart), Succeeds());
    EXPECT_THAT(capture.Lines(), Contains("QTBEContextualMenuOnRepNode::QTBEContextualMenuOnRepNode -> "
                                          "QTBInfoUtil::GetPdmVersionInfo -> no version info"));
}

TEST_F(RepNodeMenu, HasNoBoundingBoxItemsWhileTheyAreNotSupported)
{
    const QTBIRepNode_var spPart = CreatePart();
    EXPECT_THAT(MenuOf(spPart), Not(Contains(HasSubstr("BndBox"))));
    for (const char* value : {"", "OFF", "on", "ON "}) {
        setenv("QTB_BNDBOX_SUPPORT", value, 1);
        EXPECT_THAT(MenuOf(spPart), Not(Contains(HasSubstr("BndBox")))) << value;
    }
}

TEST_F(RepNodeMenu, HasBoundingBoxItemsOnRootsOnly)
{
    setenv("QTB_BNDBOX_SUPPORT", "ON", 1);
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    const QTBIRepNode_var spRoot = CreateRoot("A");
    EXPECT_THAT(MenuOf(spRoot), Contains(HasSubstr("BndBox")).Times(2));
    const QTBIRepNode_var spRelation = Create(spRoot, "AB");
    EXPECT_THAT(MenuOf(spRelation), Not(Contains(HasSubstr("BndBox"))));
    EXPECT_THAT(MenuOf(Create(spRelation, "B")), Not(Contains(HasSubstr("BndBox"))));
}

TEST_F(RepNodeMenu, HasTheExpandMenusThatAreOffered)
{
    LoadEditedSchema({{R"(<contextAction name="Expand" in="PdmWindow QueryDialog"/>)", ""},
                      {R"(<contextAction name="CustomExpand" in="PdmWindow"/>)",
                       R"(<contextAction name="CustomExpand" in="QueryDialog"/>)"}});
    const std::vector<std::string> menu = MenuOf(CreatePart());
    EXPECT_EQ(menu[1], MULTI_EXPAND_OF_PART);
    EXPECT_EQ(menu[2], "QTBDeExpandSubMenuStr|QTBPdmWksCtxDeExpandCmdHdr");
}

TEST_F(RepNodeMenu, KeepsTheEntriesForExpandingBesideItsMenus)
{
    const DialogEntries entries = EntriesOf(CreatePart());
    EXPECT_EQ(entries.current, "0|Expand|Expand|QTB_Ctx_Expand");
    EXPECT_THAT(entries.second, ElementsAre("1|consists of|Consists of|QTB_Ctx_Expand",
                                            "1|uses standard part|Uses standard part|QTB_Ctx_Expand",
                                            "1|is stored in|Is stored in|QTB_Ctx_Expand",
                                            "1|is documented in|Is documented in|QTB_Ctx_Expand",
                                            "2|Sep1|Sep1|QTB_Ctx_Expand", "1|is used in|Is used in|QTB_Ctx_Expand"));
}

TEST_F(RepNodeMenu, OffersOnlyRelationsThatMayBeExpanded)
{
    LoadEditedSchema(
        {{R"(tooltipAttr="InstanceName" singleExpand="true")", R"(tooltipAttr="InstanceName")"},
         {R"(nlsKey="Relation.PartPart.RightToLeft" multiExpand="true")", R"(nlsKey="Relation.PartPart.RightToLeft")"},
         {R"(<rightToLeft name="documents" nlsKey="Relation.PartDocument.RightToLeft"/>)", ""}});
    Update(Part("A") + Object("Document", "D"));
    const QTBIRepNode_var spPart = CreateRoot("A");
    const std::vector<std::string> menu = MenuOf(spPart);
    EXPECT_EQ(menu[1], "[Expand: \"dummy\"|SingleExpand ENOVIA_MATRIX/Standard PartFile->is stored in; "
                       "\"dummy\"|SingleExpand ENOVIA_MATRIX/Standard PartDocument->is documented in]");
    EXPECT_EQ(menu[2], "[Expand All Levels: \"dummy\"|MultiExpand ENOVIA_MATRIX/Standard PartPart->consists of]");
    EXPECT_THAT(EntriesOf(spPart).second,
                ElementsAre("1|is stored in|Is stored in|QTB_Ctx_Expand",
                            "1|is documented in|Is documented in|QTB_Ctx_Expand", "2|Sep1|Sep1|QTB_Ctx_Expand"));
    EXPECT_EQ(MenuOf(CreateRoot("D"))[1],
              "[Expand: \"dummy\"|SingleExpand ENOVIA_MATRIX/Standard DocumentFile->has file]")
        << "a relation without relationship in a direction is not followed there";
}

TEST_F(RepNodeMenu, StartsAnewEachTime)
{
    const QTBIRepNode_var spPart = CreatePart();
    const DialogEntries first = EntriesOf(spPart);
    const DialogEntries second = EntriesOf(spPart);
    EXPECT_EQ(first.list, second.list);
    EXPECT_EQ(first.second, second.second);
    EXPECT_EQ(MenuOf(spPart), MenuOf(spPart));
}

TEST_F(RepNodeMenu, IsAddedBehindWhatTheContainerHolds)
{
    const QTBIRepNode_var spPart = CreatePart();
    CATCmdContainer menu("menu");
    menu.AddChild(new CATCmdSeparator("before"));
    CATCmdAccess* pFirstItem = nullptr;
    EXPECT_THAT(spPart->InitContextMenuInfo(&menu, &pFirstItem), Succeeds());
    EXPECT_EQ(menu.GetChild()->GetNext(), pFirstItem);
    EXPECT_EQ(pFirstItem->GetName(), "NULL");
    EXPECT_THAT(spPart->InitContextMenuInfo(nullptr, &pFirstItem), Succeeds());
    EXPECT_EQ(pFirstItem, nullptr);
}

TEST_F(RepNodeMenu, OpensADocumentForANodeOfTheQueryResultList)
{
    const QTBIRepNode_var spPart = WithoutWindow(CreatePart());
    const int windowsBefore = WindowCount();
    const DebugCapture capture;
    EXPECT_THAT(TryMenu(spPart), Succeeds());
    EXPECT_THAT(capture.Lines(), Contains("QTBERepNodeOnRepNode::InitContextMenuInfo -> m_pFrmWindow == NULL -> "
                                          "called from query result list window"));
    EXPECT_EQ(WindowCount(), windowsBefore + 1);
    unsigned char bHasWindow = TRUE;
    EXPECT_THAT(spPart->FrmWindowPtrExists(&bHasWindow), Succeeds());
    EXPECT_EQ(bHasWindow, FALSE);
}

TEST_F(RepNodeMenu, OpensNoDocumentForANodeOfAWindow)
{
    const QTBIRepNode_var spPart = CreatePart();
    const int windowsBefore = WindowCount();
    const DebugCapture capture;
    EXPECT_THAT(TryMenu(spPart), Succeeds());
    EXPECT_THAT(capture.Lines(), Not(Contains(HasSubstr("query result list"))));
    EXPECT_EQ(WindowCount(), windowsBefore);
}

TEST_F(RepNodeMenu, LooksForExpandingInTheQueryDialogWithoutWindow)
{
    const QTBIRepNode_var spPart = WithoutWindow(CreatePart());
    const DialogEntries entries = EntriesOf(spPart);
    EXPECT_THAT(entries.second, Contains("1|consists of|Consists of|QTB_Ctx_Expand"));
    const std::vector<std::string> menu = MenuOf(spPart);
    EXPECT_EQ(menu[1], EXPAND_OF_PART) << "offered in the query dialog";
    EXPECT_EQ(menu[2], "QTBDeExpandSubMenuStr|QTBPdmWksCtxDeExpandCmdHdr") << "the others are not";
    const QTBIRepNode_var spFile = [this] {
        Update(Object("CATPartFile", "F"));
        return WithoutWindow(CreateRoot("F"));
    }();
    EXPECT_EQ(EntriesOf(spFile).current, "0||||off") << "offered in the PDM window only";
    EXPECT_THAT(EntriesOf(spFile).second, IsEmpty());
}

TEST_F(RepNodeMenu, GoesOnWhenNoDocumentCanBeOpened)
{
    const QTBIRepNode_var spPart = WithoutWindow(CreatePart());
    m_spCont = NULL_var;
    // The nodes of the window go with it, this one is held.
    const CATBaseUnknown_var spPdmNode = FindNode("A");
    CATApplicationFrame::GetFrame()->CloseLayout();
    EXPECT_THAT(QTBINodeRelations_var(spPdmNode)->AddRightNode("PdmToRep", spPart, 1, TRUE), Succeeds());
    KeepLoose(spPart);
    {
        const DebugCapture capture;
        EXPECT_THAT(TryMenu(spPart), Succeeds());
        EXPECT_THAT(capture.Lines(),
                    Contains("QTBERepNodeOnRepNode::InitContextMenuInfo -> QTBDocUtil::CreateNewQtbDocument !"));
    }
    CATApplicationFrame::GetFrame()->OpenLayout();
}

class WindowThatIsGone : public CATBaseUnknown
{
public:
    HRESULT GetFrmWindowPtr(CATFrmWindow**) { return E_FAIL; }
};

TEST_F(RepNodeMenu, FailsWithoutTheFrameWindowOfTheNewDocument)
{
    const QTBIRepNode_var spPart = WithoutWindow(CreatePart());
    const QTBReplacedExtension replaced("QTBFrmWindow", QTBIQtbFrmWindow::MetaObject(),
                                        QTBFactoryOf<TIEQTBIQtbFrmWindow, QTBIQtbFrmWindow, WindowThatIsGone>());
    EXPECT_THAT(TryMenu(spPart), FailsCall("spIQtbFrmWindow->GetFrmWindowPtr"));
}

TEST_F(RepNodeMenu, FailsWithoutPdmNode)
{
    const QTBIRepNode_var spPart = CreatePart();
    Unlink(spPart);
    EXPECT_THAT(TryMenu(spPart), FailsCall("GetPdmNode"));
    EXPECT_THAT(DiagnosisOf([&] { return spPart->GetContextMenuInfo(nullptr, nullptr, nullptr); }),
                ElementsAre(Call("GetPdmNode"), Call("InitContextMenuInfo")));
}

TEST_F(RepNodeMenu, FailsForAClassThatTheSchemaDoesNotKnow)
{
    CATBaseUnknown_var spPdmNode;
    EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode("X", &spPdmNode, TRUE), Succeeds());
    const QTBIRepNode_var spIRepNode = CreateRoot("X");
    EXPECT_THAT(DiagnosisOf([&] { return TryMenu(spIRepNode); }), Contains(Call("spIPdmNode->GetSchemaNodePtr")));
}

TEST_F(RepNodeMenu, FailsForTheDefaultRoot)
{
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    const QTBIRepNode_var spDefault = CreateRoot("DEFAULT_ROOT_NODE");
    EXPECT_THAT(TryMenu(spDefault), FailsAssertion("pSchemaNode != NULL"));
}

TEST_F(RepNodeMenu, ReportsWhatKeepsItFromBuildingTheExpandMenus)
{
    const QTBIRepNode_var spPart = CreatePart();
    {
        const QTBFault fault("GetClassName");
        EXPECT_THAT(DiagnosisOf([&] { return TryMenu(spPart); }),
                    ElementsAre(Call("spIPdmNode->GetClassName"), Call("CreateExpandSubMenuItems")));
    }
    {
        const QTBFault fault("GetPdmNode");
        EXPECT_THAT(DiagnosisOf([&] { return TryMenu(spPart); }),
                    ElementsAre(Call("spIRepNode->GetPdmNode"), Call("CreateCustomExpandSubMenuItem")));
    }
    {
        const QTBFault fault("GetSchemaObjectPtr");
        EXPECT_THAT(DiagnosisOf([&] { return TryMenu(spPart); }),
                    ElementsAre(Call("spIPdmObjNode->GetSchemaObjectPtr"), Call("CreateCustomExpandSubMenuItem")));
    }
    {
        const QTBFault fault("GetSchemaObjectPtr", NULL_var, 0, QTBFault::DoesNothing);
        EXPECT_THAT(DiagnosisOf([&] { return TryMenu(spPart); }),
                    ElementsAre(Assertion("pSchemaObject != NULL"), Call("CreateCustomExpandSubMenuItem")));
    }
    EXPECT_THAT(TryMenu(spPart), Succeeds());
}

TEST_F(RepNodeMenu, HasCustomExpandItemsForObjectsOnly)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    const QTBIRepNode_var spRelation = Create(CreateRoot("A"), "AB");
    CATCmdContainer menu("menu");
    EXPECT_THAT(Extension(spRelation)->CreateCustomExpandSubMenuItem(&menu), LacksInterface("spIPdmObjNode"));
    QTBERepNodeOnRepNode extensionOfNothing;
    EXPECT_THAT(extensionOfNothing.CreateCustomExpandSubMenuItem(&menu), LacksInterface("spIRepNode"));
    EXPECT_EQ(menu.GetChild(), nullptr);
}

TEST_F(RepNodeMenu, ReportsWhatKeepsItFromBuildingTheCreateMenu)
{
    LoadEditedSchema({{ACTIONS_OF_PERSON, Offering({"ContextCreate"}, "PdmWindow")}});
    Update(Object("Person", "P"));
    const QTBIRepNode_var spPerson = CreateRoot("P");
    {
        const QTBFault fault("GetStringAttributeValue", FindNode("P"));
        EXPECT_THAT(DiagnosisOf([&] { return TryMenu(spPerson); }),
                    ElementsAre(Call("spINodeAttrs->GetStringAttributeValue"), Call("CreateCtxCreateSubMenuItem")));
    }
    CATCmdContainer menu("menu");
    {
        const QTBFault fault("GetKey", FindNode("P"));
        EXPECT_THAT(Extension(spPerson)->CreateCtxCreateSubMenuItem(FindNode("P"), &menu),
                    FailsCall("spINodeAttrs->GetKey"));
    }
    const QTBBarePdmObjNodeType bare;
    EXPECT_THAT(Extension(spPerson)->CreateCtxCreateSubMenuItem(bare.Create(), &menu), LacksInterface("spINodeAttrs"));
    EXPECT_THAT(TryMenu(spPerson), Succeeds());
}

TEST_F(RepNodeMenu, CreatesOnlyWhereTheRelationSaysSo)
{
    LoadEditedSchema({{R"(<contextAction name="DeleteNewestVersion" in="PdmWindow"/>)",
                       R"(<contextAction name="ContextCreate" in="PdmWindow"/>)"}});
    Update(Object("Document", "D") + Object("StandardPart", "S"));
    EXPECT_THAT(MenuOf(CreateRoot("D")),
                Contains("[Create: \"dummy\"|CreatePartDocument;<-;Part;Document;D;QTBSchema]"));
    EXPECT_THAT(MenuOf(CreateRoot("S")), Contains("[Create: \"dummy\"|CreatePartPart;->;Part;StandardPart;S;QTBSchema; "
                                                  "\"dummy\"|CreatePartPart;<-;Part;StandardPart;S;QTBSchema; "
                                                  "\"dummy\"|CreatePartDocument;->;Document;StandardPart;S;QTBSchema]"))
        << "a standard part may stand where a part may";
}

TEST_F(RepNodeMenu, EnablesTheEntriesThatTheRightsAllow)
{
    const std::vector<std::string> actions = {"CheckIn", "CheckOut", "Promote", "Revise", "UpdateItem"};
    LoadEditedSchema({{ACTIONS_OF_PERSON, Offering(actions, "QueryDialog")}});
    const struct
    {
        const char* entry;
        std::vector<std::string> off;
    } rights[] = {{"QtbOther", {"CheckIn", "CheckOut", "Promote", "UpdateItem"}},
                  {"QtbIsCheckInAllowed", {"CheckOut", "Promote", "UpdateItem"}},
                  {"QtbIsCheckOutAllowed", {"CheckIn", "Promote", "UpdateItem"}},
                  {"QtbIsPromoteAllowed", {"CheckIn", "CheckOut", "UpdateItem"}},
                  {"QtbIsEditAllowed", {"CheckIn", "CheckOut", "Promote"}}};
    for (const auto& [entry, expected] : rights) {
        Update(Object("Person", entry, Info({{"QtbVersion", "1"}, {entry, "true"}})));
        CATListValQTBContextMenuInfo list;
        EXPECT_THAT(CreateRoot(entry)->GetContextMenuInfo(&list, nullptr, nullptr), Succeeds());
        EXPECT_EQ(list.Size(), 5);
        std::vector<std::string> off;
        for (const QTBContextMenuInfo& info : list) {
            if (info.IsEnabled() == FALSE) {
                off.emplace_back(info.GetActionName().View());
            }
        }
        EXPECT_EQ(off, expected) << entry;
    }
}

TEST_F(RepNodeMenu, TellsThatPromotingIsNotDecided)
{
    const QTBIRepNode_var spPart = CreatePart();
    const DebugCapture capture;
    EXPECT_THAT(spPart->GetContextMenuInfo(nullptr, nullptr, nullptr), Succeeds());
    EXPECT_THAT(capture.Lines(),
                Contains("QTBERepNodeOnRepNode::GetContextMenuInfo -> 'QtbIsPromoteAllowed' not found."));
}

TEST_F(RepNodeMenu, ReplacesTheListsOfItsCaller)
{
    const QTBIRepNode_var spPart = CreatePart();
    CATListValQTBContextMenuInfo list;
    list.Append(QTBContextMenuInfo());
    CATListValQTBContextMenuInfo second = list;
    EXPECT_THAT(spPart->GetContextMenuInfo(&list, nullptr, &second), Succeeds());
    EXPECT_THAT(Describe(list), ElementsAre("0|OpenInNewPdmWindow|Open in New PDM Window|QTB_Ctx_OpenInNewWnd",
                                            "0|LoadStructure|Load Structure|QTB_Ctx_LoadStructure",
                                            "0|CopyAttributes|Copy Attributes|QTB_Ctx_Copy",
                                            "0|UpdateItem|Edit Item|QTB_Ctx_Properties|off", "0|ContextCreate|Create|",
                                            "0|DeleteItem|Delete|QTB_Ctx_Delete"));
    EXPECT_EQ(second.Size(), 6);
}

// Says what its class is, but has no attributes that could hold rights.
class PdmNodeWithoutRights : public QTBEPdmNodeOnPdmNode
{
public:
    HRESULT GetSchemaNodePtr(QTBSchemaNode** ppSchemaNode)
    {
        QTBSchema* pSchema = nullptr;
        EXPECT_THAT(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), Succeeds());
        *ppSchemaNode = pSchema->FindClass("Person");
        return S_OK;
    }
};

TEST_F(RepNodeMenu, FailsWhenTheRightsCannotBeRead)
{
    QTBTestLateType type("QTBPdmNodeWithoutRights");
    type.Register<TIEQTBIPdmNode, QTBIPdmNode, PdmNodeWithoutRights>();
    const QTBIRepNode_var spIRepNode = CreateLooseRepNode();
    LinkToBarePdmNode(spIRepNode, KeepLoose(type.Create()));
    EXPECT_THAT(spIRepNode->SetFrmWindowPtr(m_pWindow->GetFrmWindow()), Succeeds());
    EXPECT_THAT(spIRepNode->GetContextMenuInfo(nullptr, nullptr, nullptr),
                FailsCall("QTBInfoUtil::PdmObjectIsCheckOutAllowed"));
}

// From the menu to the tree: every item is run by the application and grows or folds what the window shows.
class RepNodeMenuCircle : public RepNodeMenu
{
protected:
    void SetUp() override
    {
        RepNodeMenu::SetUp();
        Update(Part("A") + Part("B") + Part("C") + Object("CATPartFile", "F") + PartPart("AB", "A", "B") +
               PartPart("BC", "B", "C") + Relation("PartFile", "BF", "B", "F"));
    }

    // Starts the item of that title in the menu of that title, or in the node's menu itself.
    static HRESULT Choose(const QTBIRepNode_var& spIRepNode, const std::string& menuTitle, const std::string& title)
    {
        CATCmdContainer menu("menu");
        EXPECT_THAT(spIRepNode->InitContextMenuInfo(&menu, nullptr), Succeeds());
        const CATCmdAccess* pItem = menu.GetChild();
        if (!menuTitle.empty()) {
            const CATCmdAccess* pMenu = FindTitle(pItem, menuTitle);
            pItem = pMenu != nullptr ? pMenu->GetChild() : nullptr;
        }
        const auto* pStarter = dynamic_cast<const CATCmdStarter*>(FindTitle(pItem, title));
        return pStarter != nullptr ? pStarter->Start(spIRepNode) : E_NOINTERFACE;
    }

private:
    static const CATCmdAccess* FindTitle(const CATCmdAccess* pItem, const std::string& title)
    {
        while (pItem != nullptr && !(pItem->GetTitle() == title.c_str())) {
            pItem = pItem->GetNext();
        }
        return pItem;
    }
};

TEST_F(RepNodeMenuCircle, ExpandsAlongARelation)
{
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_THAT(Choose(a, "Expand", "Consists of"), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B))");
    EXPECT_THAT(Choose(Find("B"), "Expand", "Is stored in"), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BF(F))))");
    const QTBIRepNode_var c = CreateRoot("C");
    EXPECT_THAT(Choose(c, "Expand", "Is used in"), Succeeds());
    EXPECT_EQ(TreeOf(c), "C(BC(B))");
}

TEST_F(RepNodeMenuCircle, ExpandsAllLevels)
{
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_THAT(Choose(a, "Expand All Levels", "Consists of"), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BC(C))))");
}

TEST_F(RepNodeMenuCircle, ExpandsAlongATreeOfTheSchema)
{
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_THAT(Choose(a, "Expand Structure", "Parts and Files"), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B(BF(F))))");
}

TEST_F(RepNodeMenuCircle, FoldsWhatItExpanded)
{
    const QTBIRepNode_var a = CreateRoot("A");
    EXPECT_THAT(Choose(a, "Expand All Levels", "Consists of"), Succeeds());
    EXPECT_THAT(Choose(Find("C"), "", "Fold"), Succeeds());
    EXPECT_EQ(TreeOf(a), "A(AB(B))");
}

TEST_F(RepNodeMenuCircle, OffersToCreateBelowAnObjectThatTheSchemaKnowsByItsBaseClassOnly)
{
    Update(Object("OurPart", "M", Info({{"QtbRelevantBaseClass", "Part"}})));
    EXPECT_THAT(Choose(CreateRoot("M"), "Create", "Consists of: Part"),
                FailsWith("PdmServiceNotAvailableERR_2008", "CreateObject"));
}

TEST_F(RepNodeMenuCircle, NamesTheServiceThatCreatingNeeds)
{
    EXPECT_THAT(Choose(CreateRoot("A"), "Create", "Consists of: Part"),
                FailsWith("PdmServiceNotAvailableERR_2008", "CreateObject"));
}

} // namespace
