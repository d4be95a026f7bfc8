#include "QTBENavigModifyOnRepNode_node.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>

#include <gmock/gmock.h>

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATEGraphNodeOnNavigNode.h"
#include "CATFrmLayout.h"
#include "CATIGraphNode.h"
#include "CATINavigModify.h"
#include "CATIRedrawEvent.h"
#include "CATNavigBox.h"
#include "CATNavigInstance.h"
#include "QTBDocUtil.h"
#include "QTBFakeProduct.h"
#include "QTBLoadManager.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"
#include "TIECATIGraphNode.h"
#include "TIECATINavigModify.h"

namespace fs = std::filesystem;

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosesIn;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

// Writes down what is called, and does it.
class RecordingGraphNode : public CATEGraphNodeOnNavigNode
{
public:
    inline static std::vector<std::string> s_Calls;

    HRESULT SetIconName(const CATUnicodeString& usIconName)
    {
        s_Calls.push_back("icon " + std::string(usIconName.View()));
        return CATEGraphNodeOnNavigNode::SetIconName(usIconName);
    }
    HRESULT SetIconMarking(unsigned char bOn)
    {
        s_Calls.push_back(bOn != FALSE ? "mark icon" : "do not mark icon");
        return CATEGraphNodeOnNavigNode::SetIconMarking(bOn);
    }
    HRESULT SetLabelMarking(unsigned char bOn)
    {
        s_Calls.push_back(bOn != FALSE ? "mark label" : "do not mark label");
        return CATEGraphNodeOnNavigNode::SetLabelMarking(bOn);
    }
    HRESULT SetStateCode(int code)
    {
        s_Calls.push_back("code " + std::to_string(code));
        return CATEGraphNodeOnNavigNode::SetStateCode(code);
    }
};

// A link to a product that the test chooses.
class ChosenLinkToPsn : public QTBFaultyLinkToPsn
{
public:
    inline static CATIProduct_var s_spIProduct;

    HRESULT CorrespondingPsnNodeExists(unsigned char* pbExists, CATIProduct_var* pspIProduct)
    {
        if (QTBFault::Strikes(*this, "CorrespondingPsnNodeExists")) {
            return QTBFault::Result();
        }
        *pbExists = s_spIProduct != NULL_var ? TRUE : FALSE;
        *pspIProduct = s_spIProduct;
        return S_OK;
    }
};

// A PDM node that has a schema node and no attributes.
class PdmNodeOfASchemaNode : public QTBEPdmNodeOnPdmNode
{
public:
    inline static QTBSchemaNode* s_pSchemaNode = nullptr;

    HRESULT GetSchemaNodePtr(QTBSchemaNode** ppSchemaNode)
    {
        *ppSchemaNode = s_pSchemaNode;
        return S_OK;
    }
};

class NavigModify : public QTBFaultyRepTreeSession
{
protected:
    void SetUp() override
    {
        m_pRecorder =
            std::make_unique<QTBReplacedExtension>("CATBaseUnknown_node", CATIGraphNode::MetaObject(),
                                                   QTBFactoryOf<TIECATIGraphNode, CATIGraphNode, RecordingGraphNode>());
        QTBFaultyRepTreeSession::SetUp();
        m_pChosenLink =
            std::make_unique<QTBReplacedExtension>("QTBRepNode", QTBILinkToPsn::MetaObject(),
                                                   QTBFactoryOf<TIEQTBILinkToPsn, QTBILinkToPsn, ChosenLinkToPsn>());
        m_Folder = fs::path(::testing::TempDir()) / ("QTBENavigModify-" + std::to_string(getpid()));
        fs::create_directories(m_Folder);
        QTBGlobVarsUtil::SetExMapFolder(m_Folder.c_str());
        m_pBox = std::make_unique<CATNavigBox>();
    }

    void TearDown() override
    {
        m_pBox.reset();
        ChosenLinkToPsn::s_spIProduct = NULL_var;
        m_pChosenLink.reset();
        QTBFaultyRepTreeSession::TearDown();
        m_pRecorder.reset();
        RecordingGraphNode::s_Calls.clear();
        fs::remove_all(m_Folder);
    }

    // The only line of a tree that shows the rep node.
    CATNavigLine Show(const QTBIRepNode_var& spIRepNode) const
    {
        CATListValCATBaseUnknown_var roots;
        roots.Append(spIRepNode);
        m_pBox->SetRoots(roots);
        m_pBox->RedrawAll();
        RecordingGraphNode::s_Calls.clear();
        const std::vector<CATNavigLine> lines = m_pBox->Display();
        EXPECT_EQ(lines.size(), 1U);
        return lines.front();
    }
    int StateOf(const QTBIRepNode_var& spIRepNode) const { return Show(spIRepNode).stateCode; }
    std::string ShortHelpOf(const QTBIRepNode_var& spIRepNode) const
    {
        Show(spIRepNode);
        return TextOf(m_pBox->GetShortHelp(spIRepNode));
    }

    // What an update of a node that is on display writes to the debug output when it fails.
    std::vector<std::string> UpdateDiagnosis(const QTBIRepNode_var& spIRepNode) const
    {
        const CATINavigModify_var spINavigModify(m_pBox->GetNode(spIRepNode));
        RecordingGraphNode::s_Calls.clear();
        const DebugCapture capture;
        spINavigModify->UpdateElem(spINavigModify->GetAssociatedInstance());
        EXPECT_THAT(capture.Lines(),
                    Contains(StartsWith("QTBENavigModifyOnRepNode_node::UpdateElem -> caught exception:")));
        return DiagnosesIn(capture);
    }

    static std::string Rights(std::initializer_list<std::string_view> granted)
    {
        std::string xml = R"(<a name="QtbInfo" type="nvlist">)";
        for (const std::string_view right : granted) {
            xml.append("<nv name=\"").append(right).append("\">true</nv>");
        }
        return xml + "</a>";
    }

    // A root rep node for a new object of that class; the first one of a test has the key "X".
    QTBIRepNode_var CreateObject(const char* className, const std::string& further = "")
    {
        const std::string key = "X" + std::string(static_cast<std::size_t>(m_ObjectCount++), 'x');
        Update(Object(className, key, further));
        return CreateRoot(key.c_str());
    }
    QTBIRepNode_var CreateFile(const std::string& further = "", const char* className = "CATPartFile")
    {
        return CreateObject(className, Attribute("FileName", FILE_NAME) + further);
    }

    void WriteFile(const char* content = "content") const { std::ofstream(m_Folder / FILE_NAME) << content; }
    CATUnicodeString GetFilePath() const { return (m_Folder / FILE_NAME).c_str(); }

    static std::optional<bool> IsDirty(const QTBIRepNode_var& spIRepNode)
    {
        unsigned char bIsDirty = 2;
        EXPECT_THAT(QTBENavigModifyOnRepNode_node::PdmNodeIsDirtyCatiaFileNode(spIRepNode, &bIsDirty), Succeeds());
        return bIsDirty <= TRUE ? std::optional(bIsDirty != FALSE) : std::nullopt;
    }

    static constexpr const char* FILE_NAME = "bolt.CATPart";

    fs::path m_Folder;
    std::unique_ptr<CATNavigBox> m_pBox;

private:
    int m_ObjectCount = 0;
    std::unique_ptr<QTBReplacedExtension> m_pRecorder;
    std::unique_ptr<QTBReplacedExtension> m_pChosenLink;
};

TEST_F(NavigModify, GivesTheIconOfTheClassFirstThenTheMarkingAndTheCode)
{
    const CATNavigLine line = Show(CreateObject("Part", Rights({"QtbIsEditAllowed"})));
    EXPECT_EQ(line.icon, "QTBPart");
    EXPECT_EQ(line.stateCode, 246);
    EXPECT_THAT(RecordingGraphNode::s_Calls, ElementsAre("icon QTBPart", "mark icon", "mark label", "code 246"));
}

TEST_F(NavigModify, GivesNoCodeWhenItSwitchesTheMarkingOff)
{
    const CATNavigLine line = Show(CreateObject("Document"));
    EXPECT_EQ(line.stateCode, 0);
    EXPECT_THAT(RecordingGraphNode::s_Calls, ElementsAre("icon QTBDocument", "do not mark icon", "do not mark label"));
}

TEST_F(NavigModify, AnObjectWhoseClassHasNoIconShowsTheDefaultIcon)
{
    LoadEditedSchema({{R"(<object name="Person" nlsKey="Class.Person" icon="QTBPerson">)",
                       R"(<object name="Person" nlsKey="Class.Person">)"}});
    EXPECT_EQ(Show(CreateObject("Person")).icon, "QTBCatiaV5");
}

TEST_F(NavigModify, NeverMarksTheDefaultRootAndLeavesItItsIcon)
{
    const QTBTestWindow window;
    const std::vector<CATNavigLine> lines = window.GetFrmWindow()->GetNavigBox()->Display();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].label, "Default Rep Node");
    EXPECT_EQ(lines[0].icon, "");
    EXPECT_EQ(lines[0].stateCode, 0);
    EXPECT_THAT(RecordingGraphNode::s_Calls, IsEmpty());
}

TEST_F(NavigModify, MarksAFileWithoutFileInThePdmSystemWhateverTheRights)
{
    EXPECT_EQ(StateOf(CreateFile(Info({{"QtbHasFile", "false"}, {"QtbIsEditAllowed", "true"}}))), 248);
}

TEST_F(NavigModify, MarksFilesAndPartsThatMayNeitherBeEditedNorCheckedOut)
{
    EXPECT_EQ(StateOf(CreateFile()), 249);
    EXPECT_EQ(StateOf(CreateObject("StandardPart")), 249);
}

TEST_F(NavigModify, SwitchesTheMarkOffForReadOnlyNodesThatMayBeCheckedOut)
{
    EXPECT_EQ(StateOf(CreateFile(Rights({"QtbIsCheckOutAllowed"}))), 0);
    EXPECT_EQ(StateOf(CreateObject("Part", Rights({"QtbIsCheckOutAllowed"}))), 0);
}

TEST_F(NavigModify, MarksWhatMayBeEdited)
{
    EXPECT_EQ(StateOf(CreateFile(Rights({"QtbIsEditAllowed"}))), 246);
    EXPECT_EQ(StateOf(CreateObject("Document", Rights({"QtbIsEditAllowed"}))), 246);
}

TEST_F(NavigModify, TreatsPartsAsAnyObjectWithoutTheBomPartStructure)
{
    LoadEditedSchema({{R"(bomPartStructure="true")", R"(bomPartStructure="false")"}});
    EXPECT_EQ(StateOf(CreateObject("Part")), 0);
    EXPECT_EQ(StateOf(CreateFile()), 249);
}

TEST_F(NavigModify, MarksModifiedFilesThatMayBeEdited)
{
    WriteFile();
    EXPECT_EQ(StateOf(CreateFile(Rights({"QtbIsEditAllowed"}))), 244);
    EXPECT_THAT(RecordingGraphNode::s_Calls, ElementsAre("icon QTBCATPart", "mark icon", "mark label", "code 246",
                                                         "mark icon", "mark label", "code 244"));
}

TEST_F(NavigModify, AModifiedReadOnlyFileShowsItsCodeEvenThoughTheMarkingWasSwitchedOff)
{
    WriteFile();
    EXPECT_EQ(StateOf(CreateFile(Rights({"QtbIsCheckOutAllowed"}))), 247);
    EXPECT_THAT(RecordingGraphNode::s_Calls, ElementsAre("icon QTBCATPart", "do not mark icon", "do not mark label",
                                                         "mark icon", "mark label", "code 247"));
}

TEST_F(NavigModify, FollowsTheRightsWithTheNextRedraw)
{
    const QTBIRepNode_var spIRepNode = CreateObject("Document", Rights({"QtbIsEditAllowed"}));
    EXPECT_EQ(StateOf(spIRepNode), 246);
    EXPECT_THAT(PdmNode("X")->SetQtbInfoAttr("QtbIsEditAllowed", "false"), Succeeds());
    EXPECT_EQ(m_pBox->Display().front().stateCode, 246);
    CATIRedrawEvent_var(spIRepNode)->Redraw();
    EXPECT_EQ(m_pBox->Display().front().stateCode, 0);
}

TEST_F(NavigModify, SaysThatARepNodeWithoutPdmNodeCannotBeShownAndStops)
{
    const QTBIRepNode_var spIRepNode = CreateObject("Part");
    Unlink(spIRepNode);
    const DebugCapture capture;
    const CATNavigLine line = Show(spIRepNode);
    EXPECT_EQ(line.icon, "");
    EXPECT_THAT(RecordingGraphNode::s_Calls, IsEmpty());
    EXPECT_THAT(capture.Lines(), Contains("QTBENavigModifyOnRepNode_node::UpdateElem -> "
                                          "This function is not available."));
    EXPECT_THAT(capture.Text(), Not(HasSubstr("caught exception")));
}

TEST_F(NavigModify, KeepsNoErrorOfAnUpdateThatStops)
{
    const QTBIRepNode_var spIRepNode = CreateObject("Part");
    Unlink(spIRepNode);
    Show(spIRepNode);
    const int before = CATError::GetLiveCount();
    Show(spIRepNode);
    EXPECT_EQ(CATError::GetLiveCount(), before);
}

TEST_F(NavigModify, ChecksWhatAnUpdateIsGiven)
{
    const QTBIRepNode_var spIRepNode = CreateObject("Part");
    Show(spIRepNode);
    const CATINavigModify_var spINavigModify(m_pBox->GetNode(spIRepNode));
    {
        const DebugCapture capture;
        spINavigModify->UpdateElem(nullptr);
        EXPECT_THAT(DiagnosesIn(capture), ElementsAre(Assertion("pInstance != NULL")));
    }
    CATNavigInstance strangeInstance(m_pBox.get(), FindNode("X"));
    const DebugCapture capture;
    spINavigModify->UpdateElem(&strangeInstance);
    EXPECT_THAT(DiagnosesIn(capture), ElementsAre(Handle("spIRepNode")));
}

TEST_F(NavigModify, NeedsTheGraphNodeOfItsNavigationNode)
{
    QTBTestLateType type("TestNodeWithoutGraphNode");
    type.Register<TIECATINavigModify, CATINavigModify, QTBENavigModifyOnRepNode_node>();
    const CATINavigModify_var spINavigModify(type.Create());
    CATNavigInstance instance(m_pBox.get(), CreateObject("Part"));
    const DebugCapture capture;
    spINavigModify->UpdateElem(&instance);
    EXPECT_THAT(DiagnosesIn(capture), ElementsAre(Handle("spIGraphNodeOnThis")));
}

TEST_F(NavigModify, StopsAtTheFirstStepThatFailsAndKeepsWhatWasSet)
{
    const QTBIRepNode_var spIRepNode = CreateObject("Part", Rights({"QtbIsEditAllowed"}));
    Show(spIRepNode);
    const auto iconOnly = ElementsAre("icon QTBPart");
    const auto iconAndState = ElementsAre("icon QTBPart", "mark icon", "mark label", "code 246");
    {
        const QTBFault fault("GetSchemaNodePtr", FindNode("X"));
        EXPECT_THAT(UpdateDiagnosis(spIRepNode),
                    ElementsAre(Call("spIPdmNode->GetSchemaNodePtr"), Call("GetIconForNode")));
        EXPECT_THAT(RecordingGraphNode::s_Calls, IsEmpty());
    }
    {
        const QTBFault fault("GetClassAttr", FindNode("X"));
        EXPECT_THAT(UpdateDiagnosis(spIRepNode), ElementsAre(Call("QTBRepTreeUtil::RepresentsCatiaFileNode")));
        EXPECT_THAT(RecordingGraphNode::s_Calls, iconOnly);
    }
    {
        const QTBFault fault("GetClassAttr", FindNode("X"), 1);
        EXPECT_THAT(UpdateDiagnosis(spIRepNode), ElementsAre(Call("QTBRepTreeUtil::RepresentsPdmPartNode")));
        EXPECT_THAT(RecordingGraphNode::s_Calls, iconOnly);
    }
    // The PDM node is asked for the icon, twice for the kind, for the rights, for the file, for changes and for the
    // tooltip.
    {
        const QTBFault fault("GetPdmNode", spIRepNode, 3);
        EXPECT_THAT(UpdateDiagnosis(spIRepNode),
                    ElementsAre(Call("spIRepNode->GetPdmNode"), Call("PdmNodeIsReadOnly")));
        EXPECT_THAT(RecordingGraphNode::s_Calls, iconOnly);
    }
    {
        const QTBFault fault("GetPdmNode", spIRepNode, 4);
        EXPECT_THAT(UpdateDiagnosis(spIRepNode), ElementsAre(Call("spIRepNode->GetPdmNode")));
        EXPECT_THAT(RecordingGraphNode::s_Calls, iconOnly);
    }
    {
        const QTBFault fault("GetPdmNode", spIRepNode, 4, QTBFault::DoesNothing);
        EXPECT_THAT(UpdateDiagnosis(spIRepNode), ElementsAre(Call("QTBInfoUtil::PdmDocumentHasFile")));
        EXPECT_THAT(RecordingGraphNode::s_Calls, iconOnly);
    }
    {
        const QTBFault fault("GetClassAttr", FindNode("X"), 3);
        EXPECT_THAT(UpdateDiagnosis(spIRepNode),
                    ElementsAre(Call("QTBRepTreeUtil::RepresentsCatiaFileNode"), Call("PdmNodeIsDirtyCatiaFileNode")));
        EXPECT_THAT(RecordingGraphNode::s_Calls, iconAndState);
    }
    {
        const QTBFault fault("GetPdmNode", spIRepNode, 6);
        EXPECT_THAT(UpdateDiagnosis(spIRepNode),
                    ElementsAre(Call("spIRepNode->GetPdmNode"), Call("UpdateTooltipString")));
        EXPECT_THAT(RecordingGraphNode::s_Calls, iconAndState);
    }
}

TEST_F(NavigModify, ShowsTheTooltipOfTheLastUpdate)
{
    const QTBIRepNode_var spIRepNode = CreateObject("Part", Attribute("Description", "Hexagon bolt"));
    EXPECT_EQ(ShortHelpOf(spIRepNode), "Hexagon bolt");
    EXPECT_THAT(QTBINodeAttributes_var(FindNode("X"))->SetStringAttributeValue("Description", "Bolt"), Succeeds());
    EXPECT_EQ(m_pBox->GetShortHelp(spIRepNode), "Hexagon bolt");
    EXPECT_EQ(ShortHelpOf(spIRepNode), "Bolt");
    const DebugCapture capture;
    CATUnicodeString usShortHelp("X");
    EXPECT_EQ(CATINavigModify_var(m_pBox->GetNode(spIRepNode))->ModifyShortHelp(usShortHelp), S_OK);
    EXPECT_EQ(usShortHelp, "Bolt");
    EXPECT_THAT(capture.Lines(), ElementsAre("QTBENavigModifyOnRepNode_node::ModifyShortHelp -> "
                                             "changing tooltip string from [X] to [Bolt]"));
}

TEST_F(NavigModify, ModifyShortHelpBeforeAnyUpdateLeavesTheTextUnchanged)
{
    QTBENavigModifyOnRepNode_node extension;
    CATUnicodeString usShortHelp("Label");
    const DebugCapture capture;
    EXPECT_EQ(extension.ModifyShortHelp(usShortHelp), S_OK);
    EXPECT_EQ(usShortHelp, "Label");
    EXPECT_THAT(capture.Lines(), IsEmpty());
}

TEST_F(NavigModify, KeepsTheFormerTooltipWithoutAnAttributeForIt)
{
    Update(Part("P", Attribute("Description", "Bolt")) + Part("Q") + Object("Person", "R"));
    QTBENavigModifyOnRepNode_node extension;
    const auto tooltipAfter = [&](const char* key) {
        EXPECT_THAT(extension.UpdateTooltipString(CreateRoot(key)), Succeeds());
        CATUnicodeString usShortHelp("Label");
        extension.ModifyShortHelp(usShortHelp);
        return TextOf(usShortHelp);
    };
    EXPECT_EQ(tooltipAfter("Q"), "Label") << "the attribute is not defined";
    EXPECT_EQ(tooltipAfter("R"), "Label") << "the class names no attribute";
    EXPECT_EQ(tooltipAfter("P"), "Bolt");
    EXPECT_EQ(tooltipAfter("Q"), "Bolt");
    EXPECT_EQ(tooltipAfter("R"), "Bolt");
}

TEST_F(NavigModify, HasNoTooltipForTheDefaultRoot)
{
    const QTBTestWindow window;
    CATListValCATBaseUnknown_var repNodes = AllRepNodesOf(window.GetCont());
    ASSERT_EQ(repNodes.Size(), 1);
    QTBENavigModifyOnRepNode_node extension;
    EXPECT_THAT(extension.UpdateTooltipString(repNodes[1]), Succeeds());
}

TEST_F(NavigModify, ChecksWhatItNeedsForTheTooltip)
{
    const QTBIRepNode_var spIRepNode = CreateObject("Part", Attribute("Description", "Bolt"));
    QTBENavigModifyOnRepNode_node extension;
    const auto diagnosis = [&] { return DiagnosisOf([&] { return extension.UpdateTooltipString(spIRepNode); }); };
    EXPECT_THAT(extension.UpdateTooltipString(NULL_var), LacksInterface("spIRepNode"));
    {
        const QTBFault fault("AttributeIsDefined", FindNode("X"));
        EXPECT_THAT(diagnosis(), ElementsAre(Call("spINodeAttribtes->AttributeIsDefined")));
    }
    {
        const QTBFault fault("GetAttribute", FindNode("X"));
        EXPECT_THAT(diagnosis(), ElementsAre(Call("spINodeAttribtes->GetAttributePtr")));
    }
    {
        const QTBFault fault("GetSchemaNodePtr", FindNode("X"));
        EXPECT_THAT(diagnosis(), ElementsAre(Call("spIPdmNode->GetSchemaNodePtr")));
    }
    {
        const QTBFault fault("GetPdmNode", spIRepNode);
        EXPECT_THAT(diagnosis(), ElementsAre(Call("spIRepNode->GetPdmNode")));
    }
    QTBTestLateType type("TestPdmNodeWithoutAttributes");
    type.Register<TIEQTBIPdmNode, QTBIPdmNode, PdmNodeOfASchemaNode>();
    EXPECT_THAT(PdmNode("X")->GetSchemaNodePtr(&PdmNodeOfASchemaNode::s_pSchemaNode), Succeeds());
    const QTBIRepNode_var spLoose = CreateLooseRepNode();
    LinkToBarePdmNode(spLoose, KeepLoose(type.Create()));
    EXPECT_THAT(extension.UpdateTooltipString(spLoose), LacksInterface("spINodeAttribtes"));
    QTBINodeRelations_var(spLoose)->RemoveAllRels(nullptr);
}

TEST_F(NavigModify, GivesTheDefaultIconToARepNodeWithoutPdmNode)
{
    const QTBIRepNode_var spIRepNode = CreateObject("Part");
    CATUnicodeString usIconName("before");
    EXPECT_THAT(QTBENavigModifyOnRepNode_node::GetIconForNode(spIRepNode, &usIconName), Succeeds());
    EXPECT_EQ(usIconName, "QTBPart");
    {
        const QTBFault fault("GetPdmNode", spIRepNode, 0, QTBFault::DoesNothing);
        EXPECT_THAT(QTBENavigModifyOnRepNode_node::GetIconForNode(spIRepNode, &usIconName),
                    FailsAssertion("spIPdmNode != NULL_var"));
        EXPECT_EQ(usIconName, "") << "emptied first";
    }
    Unlink(spIRepNode);
    EXPECT_THAT(QTBENavigModifyOnRepNode_node::GetIconForNode(spIRepNode, &usIconName), Succeeds());
    EXPECT_EQ(usIconName, "QTBCatiaV5");
    EXPECT_THAT(QTBENavigModifyOnRepNode_node::GetIconForNode(spIRepNode, nullptr),
                FailsAssertion("pusIconName != NULL"));
}

TEST_F(NavigModify, KnowsTheRightsOnTheObject)
{
    struct Case
    {
        std::string rights;
        unsigned char bReadOnly;
        unsigned char bEditOrCheckOut;
    };
    for (const Case& aCase : {Case{"", TRUE, FALSE}, Case{Rights({"QtbIsCheckOutAllowed"}), TRUE, TRUE},
                              Case{Rights({"QtbIsEditAllowed"}), FALSE, TRUE},
                              Case{Rights({"QtbIsEditAllowed", "QtbIsCheckOutAllowed"}), FALSE, TRUE}}) {
        const QTBIRepNode_var spIRepNode = CreateObject("Part", aCase.rights);
        unsigned char bReadOnly = 2;
        unsigned char bEditOrCheckOut = 2;
        EXPECT_THAT(QTBENavigModifyOnRepNode_node::PdmNodeIsReadOnly(spIRepNode, &bReadOnly, &bEditOrCheckOut),
                    Succeeds());
        EXPECT_EQ(bReadOnly, aCase.bReadOnly) << aCase.rights;
        EXPECT_EQ(bEditOrCheckOut, aCase.bEditOrCheckOut) << aCase.rights;
        EXPECT_THAT(QTBENavigModifyOnRepNode_node::PdmNodeIsReadOnly(spIRepNode, &bReadOnly, nullptr), Succeeds());
    }
}

TEST_F(NavigModify, ChecksWhatItNeedsForTheRights)
{
    const QTBIRepNode_var spIRepNode = CreateObject("Part");
    unsigned char bReadOnly = TRUE;
    EXPECT_THAT(QTBENavigModifyOnRepNode_node::PdmNodeIsReadOnly(spIRepNode, nullptr, nullptr),
                FailsAssertion("pbIsReadOnly != NULL"));
    Unlink(spIRepNode);
    EXPECT_THAT(QTBENavigModifyOnRepNode_node::PdmNodeIsReadOnly(spIRepNode, &bReadOnly, nullptr),
                FailsCall("spIRepNode->GetPdmNode"));
    EXPECT_EQ(bReadOnly, FALSE) << "FALSE until it is known";
    const QTBBarePdmObjNodeType bareType;
    LinkToBarePdmNode(spIRepNode, KeepLoose(bareType.Create()));
    EXPECT_THAT(QTBENavigModifyOnRepNode_node::PdmNodeIsReadOnly(spIRepNode, &bReadOnly, nullptr),
                FailsCall("QTBInfoUtil::PdmObjectIsEditAllowed"));
    QTBINodeRelations_var(spIRepNode)->RemoveAllRels(nullptr);
}

TEST_F(NavigModify, OnlyFilesOfTheCadSystemAreModified)
{
    WriteFile();
    EXPECT_EQ(IsDirty(CreateObject("Part", Attribute("FileName", FILE_NAME))), false);
    EXPECT_EQ(IsDirty(CreateObject("File", Attribute("FileName", FILE_NAME))), false);
    EXPECT_EQ(IsDirty(CreateFile()), true);
}

TEST_F(NavigModify, AFileIsModifiedWhenItIsNotTheOneExchangedWithThePdmSystem)
{
    const QTBIRepNode_var spIRepNode = CreateFile();
    EXPECT_EQ(IsDirty(spIRepNode), false) << "there is no file to be stored";
    WriteFile();
    EXPECT_EQ(IsDirty(spIRepNode), true);
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(GetFilePath()), Succeeds());
    EXPECT_EQ(IsDirty(spIRepNode), false);
    WriteFile("other content");
    EXPECT_EQ(IsDirty(spIRepNode), true);
}

TEST_F(NavigModify, AFileWithoutNameOrOneThatCannotBeReadCountsAsModified)
{
    EXPECT_EQ(IsDirty(CreateObject("CATPartFile")), true);
    const QTBIRepNode_var spIRepNode = CreateFile();
    fs::create_directory(m_Folder / FILE_NAME);
    const DebugCapture capture;
    EXPECT_EQ(IsDirty(spIRepNode), true);
    EXPECT_THAT(capture.Lines(), Contains("QTBENavigModifyOnRepNode_node::PdmNodeIsDirtyCatiaFileNode -> "
                                          "QTBDocUtil::DocumentNeedsToBeSavedInPdm !"));
}

TEST_F(NavigModify, ADesignTableWrittenAnewIsNotModifiedWhileItsParentIsInSession)
{
    Update(Object("CATPartFile", "F", Attribute("FileName", "parent.CATPart")) +
           Object("DesignTableFile", "T", Attribute("FileName", FILE_NAME)) + Relation("FileFile", "FT", "F", "T"));
    const QTBNodeRelationInfo info("FileFile", usLEFT_TO_RIGHT);
    const QTBIRepNode_var f = CreateRoot("F");
    const QTBIRepNode_var t = Create(Create(f, "FT", info), "T", info);
    WriteFile();
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(GetFilePath()), Succeeds());
    fs::last_write_time(m_Folder / FILE_NAME, fs::file_time_type::clock::now() + std::chrono::hours(1));
    EXPECT_EQ(IsDirty(t), true);
    {
        // The question for the parent's file fails, which is only written to the debug output.
        const QTBFault fault("GetClassAttr", FindNode("F"));
        const DebugCapture capture;
        EXPECT_EQ(IsDirty(t), true);
        EXPECT_THAT(DiagnosesIn(capture), ElementsAre(Call("QTBRepTreeUtil::ParentCatDocObjIsInSession")));
        EXPECT_THAT(capture.Text(), HasSubstr(" File:[QTBModel/QTBModelRepNode.m/src/QTBENavigModifyOnRepNode_node"));
        EXPECT_THAT(capture.Text(), HasSubstr("], Line:["));
    }
    CATBaseUnknown_var spDocument;
    EXPECT_THAT(CATDocumentServices::New("CATPart", &spDocument), Succeeds());
    CATDocument::FromComponent(spDocument.Get())->SetStorageName("/somewhere/parent.CATPart");
    EXPECT_EQ(IsDirty(t), false);
    CATDocumentServices::Remove(*CATDocument::FromComponent(spDocument.Get()));
}

TEST_F(NavigModify, AnArchiveIsModifiedWhenItsProductsAre)
{
    const QTBFakeProducts products;
    const QTBIRepNode_var spIRepNode = CreateFile("", "CMIArchiveFile");
    WriteFile();
    EXPECT_EQ(IsDirty(spIRepNode), false) << "there is no product that corresponds to it";
    CATBaseUnknown_var spDocument;
    EXPECT_THAT(CATDocumentServices::New("CATPart", &spDocument), Succeeds());
    CATDocument* pDocument = CATDocument::FromComponent(spDocument.Get());
    QTBFakeProductData data;
    data.isReference = true;
    data.pDocument = pDocument;
    const CATBaseUnknown_var spProduct = products.Create(data);
    ChosenLinkToPsn::s_spIProduct = spProduct;
    {
        const DebugCapture capture;
        EXPECT_EQ(IsDirty(spIRepNode), false) << "the product is no archive";
        EXPECT_THAT(capture.Lines(), Contains("QTBENavigModifyOnRepNode_node::PdmNodeIsDirtyCatiaFileNode -> "
                                              "QTBArchiveUtil::IsArchiveDirty !"));
    }
    EXPECT_THAT(g_QTBLoadManager.SetCatiaFileIsCmiArchiveRoot(spProduct, TRUE, "bolt.zip"), Succeeds());
    pDocument->SetDirty(FALSE);
    EXPECT_EQ(IsDirty(spIRepNode), false);
    pDocument->SetDirty(TRUE);
    EXPECT_EQ(IsDirty(spIRepNode), true);
    pDocument->SetDirty(FALSE);
    CATDocumentServices::Remove(*pDocument);
}

TEST_F(NavigModify, ChecksWhatItNeedsToKnowWhetherAFileIsModified)
{
    unsigned char bIsDirty = 2;
    const auto diagnosis = [&](const QTBIRepNode_var& spIRepNode) {
        return DiagnosisOf(
            [&] { return QTBENavigModifyOnRepNode_node::PdmNodeIsDirtyCatiaFileNode(spIRepNode, &bIsDirty); });
    };
    const QTBIRepNode_var spIRepNode = CreateFile("", "CMIArchiveFile");
    EXPECT_THAT(QTBENavigModifyOnRepNode_node::PdmNodeIsDirtyCatiaFileNode(spIRepNode, nullptr),
                FailsAssertion("pbDirtyCatiaFile != NULL"));
    EXPECT_THAT(diagnosis(NULL_var), ElementsAre(Call("QTBRepTreeUtil::RepresentsCatiaFileNode")));
    {
        const QTBFault fault("CorrespondingPsnNodeExists", spIRepNode);
        EXPECT_THAT(diagnosis(spIRepNode), ElementsAre(Call("spILinkToPsn->CorrespondingPsnNodeExists")));
    }
    QTBTestLateType type("TestRepNodeWithoutLink", "QTBNode");
    type.Register<TIEQTBIRepNode, QTBIRepNode, QTBERepNodeOnRepNode>();
    const CATBaseUnknown_var spLoose = KeepLoose(type.Create());
    QTBINodeRelations_var(FindNode("X"))->AddRightNode("PdmToRep", spLoose, 1, TRUE);
    EXPECT_THAT(diagnosis(QTBIRepNode_var(spLoose)), ElementsAre(Handle("spILinkToPsn")));
}

TEST_F(NavigModify, EveryIconHasAFile)
{
    std::ifstream schema(QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml");
    const std::string text((std::istreambuf_iterator<char>(schema)), std::istreambuf_iterator<char>());
    std::vector<std::string> names{"QTBCatiaV5"};
    constexpr std::string_view ATTRIBUTE = " icon=\"";
    for (std::size_t at = text.find(ATTRIBUTE); at != std::string::npos; at = text.find(ATTRIBUTE, at)) {
        at += ATTRIBUTE.size();
        names.push_back(text.substr(at, text.find('"', at) - at));
    }
    EXPECT_GT(names.size(), 10U);
    for (const std::string& name : names) {
        EXPECT_TRUE(fs::is_regular_file(fs::path(QTB_SOURCE_DIR) / "resources/icons" / (name + ".svg"))) << name;
    }
}

} // namespace
