// The commands of rep nodes with a store behind them.

#include "QTBRequestCommands.h"

#include <optional>

#include "QTBCommUtil.h"
#include "QTBCommands.h"
#include "QTBConstants.h"
#include "QTBGlobVarsUtil.h"
#include "QTBICommunicationServices.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmRequests.h"
#include "QTBIRepNode.h"
#include "QTBItemDialog.h"
#include "QTBPdmStoreComponent.h"
#include "QTBStoreSession.h"
#include "QTBTestWindow.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

namespace {

constexpr const char* EXPAND_PARTS = "SingleExpand ENOVIA_MATRIX/Standard PartPart->consists of";
constexpr const char* CREATE_PART = "CreatePartPart;->;Part;Part;A;QTBSchema";

// A with B and C, D below B, in a store; two windows show A, which is all that the session has read.
class RequestCommands : public QTBStoreSession
{
protected:
    void SetUp() override
    {
        QTBStoreSession::SetUp();
        QTBGlobVarsUtil::SetAddNewNodeRelationsAt(QTB_PLACE_TO_ADD_END);
        Import(Part("A") + Part("B") + Part("C") + Part("D") + Object("CATPartFile", "F") + Object("Person", "P") +
               PartPart("AB", "A", "B") + PartPart("AC", "A", "C") + PartPart("BD", "B", "D") +
               Relation("PartFile", "CF", "C", "F"));
        Connect("kim");
        CATListValCATUnicodeString keys;
        keys.Append("A");
        ASSERT_THAT(QTBRequestCommands::Run("GetItems",
                                            [&keys](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
                                                return requests.GetItems(keys, pspAnswer);
                                            }),
                    Succeeds());
        for (auto& pWindow : m_Windows) {
            pWindow = std::make_unique<QTBTestWindow>();
            pWindow->Show(FindNode("A"), {});
        }
    }

    void TearDown() override
    {
        QTBItemDialog::SetHandler(nullptr);
        for (auto& pWindow : m_Windows) {
            pWindow.reset();
        }
        QTBCommUtil::SetCommComponent(NULL_var);
        QTBStoreSession::TearDown();
    }

    void Connect(const char* user) const
    {
        CATBaseUnknown_var spStore;
        ASSERT_THAT(QTBPdmStoreComponent::Create(Path().c_str(), MakeOptions(user), &spStore), Succeeds());
        QTBCommUtil::SetCommComponent(spStore);
    }

    QTBIRepNode_var RepNode(const char* key, int window = 0) const
    {
        return m_Windows[static_cast<std::size_t>(window)]->Find(FindNode(key));
    }
    std::vector<std::string> Shown(int window = 0) const
    {
        CATListValCATBaseUnknown_var repNodes;
        EXPECT_THAT(m_Windows[static_cast<std::size_t>(window)]->GetCont()->GetAllRepNodes(&repNodes), Succeeds());
        return QTBTestWindow::PdmKeysOf(repNodes);
    }
    static std::string ValueOf(const CATBaseUnknown_var& spNode, const char* attribute)
    {
        CATUnicodeString usValue;
        const QTBINodeAttributes_var spINodeAttributes(spNode);
        unsigned char bIsDefined = FALSE;
        spINodeAttributes->AttributeIsDefined(attribute, &bIsDefined);
        if (bIsDefined == FALSE) {
            return "not defined";
        }
        spINodeAttributes->GetStringAttributeValue(attribute, &usValue, FALSE, FALSE);
        return std::string(usValue.View());
    }

    // Answers the dialog with values by attribute; what it asked for is in m_Asked.
    void AnswerDialog(const std::vector<std::pair<const char*, const char*>>& values)
    {
        QTBItemDialog::SetHandler([this, values](std::vector<QTBItemDialog::Page>* pPages) {
            m_Asked.clear();
            for (QTBItemDialog::Page& page : *pPages) {
                for (QTBItemDialog::Field& field : page.fields) {
                    m_Asked.push_back(std::string(field.usAttrName.View()) + "=" + std::string(field.usValue.View()));
                    for (const auto& [name, value] : values) {
                        if (field.usAttrName == name) {
                            field.usValue = value;
                        }
                    }
                }
            }
            return true;
        });
    }

    std::unique_ptr<QTBTestWindow> m_Windows[2];
    std::vector<std::string> m_Asked;
};

TEST_F(RequestCommands, ExpandingReadsWhatLiesBelowFirst)
{
    EXPECT_TRUE(FindNode("B") == NULL_var);
    EXPECT_THAT(QTBCommands::Interpret(EXPAND_PARTS, RepNode("A")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "AC", "C"));
    EXPECT_TRUE(FindNode("D") == NULL_var) << "one level";
    EXPECT_THAT(Shown(1), ElementsAre("A")) << "nothing is expanded there";
    EXPECT_THAT(QTBCommands::Interpret("MultiExpand ENOVIA_MATRIX/Standard PartPart->consists of", RepNode("A", 1)),
                Succeeds());
    EXPECT_THAT(Shown(1), UnorderedElementsAre("A", "AB", "B", "BD", "D", "AC", "C"));
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "AC", "C")) << "B displays no parts there";
}

TEST_F(RequestCommands, ATreeOfRelationsIsReadLevelByLevel)
{
    EXPECT_THAT(QTBCommands::Interpret("PdmTreeENOVIA_MATRIXStandardPartsAndFiles", RepNode("A")), Succeeds());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "AC", "C", "CF", "F"));
}

TEST_F(RequestCommands, CheckOutPromoteAndReviseFollowInAllWindows)
{
    for (const int window : {0, 1}) {
        EXPECT_THAT(QTBCommands::Interpret(EXPAND_PARTS, RepNode("A", window)), Succeeds());
    }
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_CheckOut", RepNode("B")), Succeeds());
    CATUnicodeString usUser;
    EXPECT_THAT(PdmNode("B")->GetQtbInfoAttr("QtbCheckedOutBy", &usUser, FALSE, nullptr, TRUE), Succeeds());
    EXPECT_EQ(usUser, "kim");
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_CheckIn", RepNode("B")), Succeeds());
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_Promote", RepNode("B")), Succeeds());
    EXPECT_EQ(ValueOf(FindNode("B"), "State"), "20");
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_Revise", RepNode("C")), Succeeds());
    for (const int window : {0, 1}) {
        EXPECT_THAT(Shown(window), UnorderedElementsAre("A", "AB", "B", "AC", "C/B"));
    }
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_DelNewestFile", RepNode("C/B", 1)), Succeeds());
    for (const int window : {0, 1}) {
        EXPECT_THAT(Shown(window), UnorderedElementsAre("A", "AB", "B", "AC", "C"));
    }
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_Delete", RepNode("C")), Succeeds());
    for (const int window : {0, 1}) {
        EXPECT_THAT(Shown(window), UnorderedElementsAre("A", "AB", "B"));
    }
}

TEST_F(RequestCommands, ARefusalIsTheStoresMessageAndChangesNothing)
{
    EXPECT_THAT(QTBCommands::Interpret(EXPAND_PARTS, RepNode("A")), Succeeds());
    ASSERT_THAT(m_pStore->CheckOut({"B"}, {}), Succeeds());
    Connect("lee");
    const std::string before = Dump();
    const std::vector<std::string> shown = Shown();
    for (const char* command : {"QTB_Ctx_CheckOut", "QTB_Ctx_Promote", "QTB_Ctx_Revise", "QTB_Ctx_Delete"}) {
        EXPECT_THAT(QTBCommands::Start(command, RepNode("B")), FailsWithMessage("CheckedOutByOtherERR_1103"))
            << command;
    }
    AnswerDialog({{"Name", "other"}});
    EXPECT_THAT(QTBCommands::Start("QTBGenWksCtxUpdateItemCmdHdr", RepNode("B")),
                FailsWithMessage("CheckedOutByOtherERR_1103"));
    EXPECT_EQ(Dump(), before);
    EXPECT_EQ(Shown(), shown);
    EXPECT_EQ(ValueOf(FindNode("B"), "Name"), "not defined");
}

TEST_F(RequestCommands, EditingSendsOnlyWhatTheUserChanged)
{
    AnswerDialog({{"Name", "Alpha"}, {"Material", "steel & brass"}});
    EXPECT_THAT(QTBCommands::Start("QTBGenWksCtxUpdateItemCmdHdr", RepNode("A")), Succeeds());
    EXPECT_THAT(m_Asked, ElementsAre("Name=", "Description=", "Material="));
    EXPECT_EQ(ValueOf(FindNode("A"), "Material"), "steel & brass");
    EXPECT_EQ(ValueOf(FindNode("A"), "Description"), "not defined");
    const std::string before = Dump();
    EXPECT_THAT(QTBCommands::Start("QTBGenWksCtxUpdateItemCmdHdr", RepNode("A")), Succeeds());
    EXPECT_THAT(m_Asked, ElementsAre("Name=Alpha", "Description=", "Material=steel & brass"));
    QTBItemDialog::SetHandler([](std::vector<QTBItemDialog::Page>*) { return false; });
    EXPECT_THAT(QTBCommands::Start("QTBGenWksCtxUpdateItemCmdHdr", RepNode("A")), Succeeds()) << "given up";
    QTBItemDialog::SetHandler(nullptr);
    EXPECT_THAT(QTBCommands::Start("QTBGenWksCtxUpdateItemCmdHdr", RepNode("A")), Succeeds()) << "nobody to ask";
    QTBItemDialog::SetHandler([](std::vector<QTBItemDialog::Page>* pPages) {
        pPages->front().fields.clear();
        return true;
    });
    EXPECT_THAT(QTBCommands::Start("QTBGenWksCtxUpdateItemCmdHdr", RepNode("A")), Succeeds()) << "fields lost";
    EXPECT_EQ(Dump(), before);
    EXPECT_THAT(QTBCommands::Start("QTBGenWksCtxUpdateItemCmdHdr", NULL_var), FailsQuietly());
    EXPECT_THAT(QTBCommands::Interpret("PdmTreeENOVIA_MATRIXStandardPartsAndFiles", RepNode("A")), Succeeds());
    EXPECT_THAT(QTBCommands::Start("QTBGenWksCtxUpdateItemCmdHdr", RepNode("F")),
                FailsWithMessage("FunctionalityNotImplementedERR_2002"))
        << "the class has no such form";
}

TEST_F(RequestCommands, ANewObjectIsShownBelowItsOwner)
{
    AnswerDialog({{"PartNumber", "N-1"}, {"InstanceName", "n.1"}});
    EXPECT_THAT(QTBCommands::Interpret(CREATE_PART, RepNode("A")), Succeeds());
    EXPECT_THAT(m_Asked, ::testing::Contains("PartNumber="));
    EXPECT_THAT(m_Asked, ::testing::Contains("Quantity="));
    QTBIPdmNode_var spNew;
    ASSERT_THAT(GetPdmNodeCont()->GetPdmNode("Part", "PartNumber", "N-1", &spNew), Succeeds());
    QTBIPdmNode_var spUsage;
    ASSERT_THAT(GetPdmNodeCont()->GetPdmNode("PartPart", "InstanceName", "n.1", &spUsage), Succeeds());
    const std::string key(spNew->GetPdmKey().View());
    const std::string usageKey(spUsage->GetPdmKey().View());
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AB", "B", "AC", "C", usageKey, key))
        << "with those that were there";
    EXPECT_EQ(ValueOf(spNew, "Name"), "not defined") << "left empty";
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(RequestCommands, ANewObjectIsRelatedToTheVersionThatTheNodeShowsNow)
{
    AnswerDialog({{"PartNumber", "N-1"}});
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_Revise", RepNode("A")), Succeeds());
    EXPECT_THAT(QTBCommands::Interpret(CREATE_PART, RepNode("A/B")), Succeeds()) << "the text names A";
    EXPECT_THAT(Shown(), Not(::testing::Contains("A")));
    EXPECT_THAT(QTBCommands::Interpret(CREATE_PART, NULL_var), FailsQuietly()) << "the graph has no A any more";
}

TEST_F(RequestCommands, AnObjectWhoseRelationIsRefusedIsNotCreated)
{
    const std::string before = Dump();
    AnswerDialog({{"PartNumber", "N-1"}});
    Connect("lee");
    ASSERT_THAT(m_pStore->CheckOut({"A"}, {}), Succeeds());
    const std::string checkedOut = Dump();
    EXPECT_THAT(QTBCommands::Interpret(CREATE_PART, RepNode("A")), FailsWithMessage("CheckedOutByOtherERR_1103"));
    EXPECT_EQ(Dump(), checkedOut);
    EXPECT_THAT(Shown(), ElementsAre("A"));
    CATListValCATBaseUnknown_var nodes;
    EXPECT_THAT(GetPdmNodeCont()->GetAllPdmNodes(&nodes), Succeeds());
    EXPECT_EQ(nodes.Size(), 1) << "the graph has A alone";
    // What the dialog must not ask for: the state is the PDM system's to give.
    ASSERT_THAT(m_pStore->CheckIn({"A"}, {}, {}), Succeeds());
    AnswerDialog({{"State", "30"}});
    EXPECT_THAT(QTBCommands::Interpret(CREATE_PART, RepNode("A")), FailsWithMessage("AttributeReservedERR_1112"));
    EXPECT_EQ(Dump(), before);
}

TEST_F(RequestCommands, ARelationCreatedElsewhereAppearsWhereItsClassIsDisplayed)
{
    for (const int window : {0, 1}) {
        EXPECT_THAT(QTBCommands::Interpret(EXPAND_PARTS, RepNode("A", window)), Succeeds());
    }
    ASSERT_THAT(m_pStore->CreateObject("StandardPart", "S", "", {}), Succeeds());
    std::string key;
    ASSERT_THAT(m_pStore->CreateRelation("StandardPartUsage", "A", "S", "",
                                         [&key](std::string_view piece) { key.append(piece); }),
                Succeeds());
    CATListValCATUnicodeString keys;
    keys.Append("S");
    keys.Append(ItemsOf(key).back().substr(2, ItemsOf(key).back().rfind(' ') - 2).c_str());
    EXPECT_THAT(QTBRequestCommands::Run("GetItems",
                                        [&keys](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
                                            return requests.GetItems(keys, pspAnswer);
                                        }),
                Succeeds());
    for (const int window : {0, 1}) {
        EXPECT_THAT(Shown(window), ::testing::Contains("S")) << "below PartPart, whose subclass it is";
        EXPECT_EQ(Shown(window).size(), 7U);
    }
}

TEST_F(RequestCommands, ANodeThatLostItsItemIsAnsweredQuietly)
{
    EXPECT_THAT(QTBCommands::Interpret(EXPAND_PARTS, RepNode("A")), Succeeds());
    const QTBIRepNode_var spIRepNode = RepNode("B");
    EXPECT_THAT(QTBCommands::Start("QTB_Ctx_Delete", RepNode("B", 0)), Succeeds());
    for (const char* command : {"QTB_Ctx_CheckOut", "QTB_Ctx_CheckIn", "QTB_Ctx_Promote", "QTB_Ctx_Revise",
                                "QTB_Ctx_Delete", "QTB_Ctx_DelNewestFile", "QTBGenWksCtxUpdateItemCmdHdr"}) {
        EXPECT_TRUE(FAILED(QTBCommands::Start(command, spIRepNode))) << command;
    }
    EXPECT_THAT(QTBCommands::Interpret(EXPAND_PARTS, spIRepNode), FailsQuietly());
    EXPECT_TRUE(FAILED(QTBCommands::Interpret(CREATE_PART, spIRepNode)));
    EXPECT_THAT(Shown(), UnorderedElementsAre("A", "AC", "C"));
}

} // namespace
