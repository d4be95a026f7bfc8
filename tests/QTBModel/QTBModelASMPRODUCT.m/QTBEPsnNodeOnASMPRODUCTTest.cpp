#include "QTBEPsnNodeOnASMPRODUCT.h"

#include <gmock/gmock.h>

#include "QTBDiagnosis.h"
#include "QTBEditedSchema.h"
#include "QTBFakeProduct.h"
#include "QTBFaultyProducts.h"
#include "QTBLoadManager.h"
#include "QTBPdmSessionUtil.h"
#include "QTBProductLadder.h"
#include "QTBTestEnvironment.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using namespace QTBDiagnosis;

namespace {

// A (with A1 and A2) and B (with B1) below the root, as the order of all children is told by them.
constexpr const char* TREE = R"(
    <product id="p" file="p.CATProduct" partNumber="P">
      <instance of="a" name="A"/><instance of="b" name="B"/>
    </product>
    <product id="a" file="a.CATProduct" partNumber="PA">
      <instance of="c" name="A1"/><instance of="c" name="A2"/>
    </product>
    <product id="b" file="b.CATProduct" partNumber="PB"><instance of="c" name="B1"/></product>
    <product id="c" file="c.CATPart" partNumber="PC"/>)";

// Products that the schema has skipped (FOLDER_) and ignored (SKELETON_).
constexpr const char* SPECIAL_TREE = R"(
    <product id="p" file="p.CATProduct" partNumber="P">
      <instance of="x" name="X"/><instance of="f" name="F"/><instance of="s" name="S"/><instance of="y" name="Y"/>
    </product>
    <product id="f" file="f.CATProduct" partNumber="FOLDER_1">
      <instance of="x" name="C1"/><instance of="g" name="G"/><instance of="x" name="C2"/>
    </product>
    <product id="g" file="g.CATProduct" partNumber="FOLDER_2"><instance of="x" name="D1"/></product>
    <product id="s" file="s.CATProduct" partNumber="SKELETON_1"><instance of="x" name="E1"/></product>
    <product id="x" file="x.CATPart" partNumber="X"/><product id="y" file="y.CATPart" partNumber="Y"/>)";

class PsnNode : public QTBFaultyProductSession
{
protected:
    static void SwitchBehaviorOn() { QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE); }

    static CATListValCATBaseUnknown_var Direct(const CATBaseUnknown_var& spProduct, unsigned char bConsiderBehavior,
                                               unsigned char bStopAtArchive = FALSE,
                                               QTBBomType bomType = QTB_BOM_TYPE_ALL,
                                               unsigned char bIgnoreInvalid = FALSE)
    {
        CATListValCATBaseUnknown_var children;
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetDirectChildren(&children, bConsiderBehavior, bStopAtArchive, bomType,
                                                                  bIgnoreInvalid),
                    Succeeds());
        return children;
    }

    static HRESULT GetAll(const CATBaseUnknown_var& spProduct, CATListValCATBaseUnknown_var* pChildren,
                          unsigned char bCheckUnique = FALSE)
    {
        return QTBIPsnNode_var(spProduct)->GetAllChildren(pChildren, TRUE, TRUE, QTB_BOM_TYPE_ALL, FALSE, bCheckUnique);
    }

    static std::string FatherOf(const CATBaseUnknown_var& spProduct, unsigned char bConsiderBehavior = TRUE)
    {
        CATIProduct_var spFather;
        const HRESULT hr = QTBIPsnNode_var(spProduct)->GetFatherProduct(&spFather, bConsiderBehavior);
        EXPECT_EQ(SUCCEEDED(hr), spFather != NULL_var);
        return NameOf(spFather);
    }

    static QTBBomType BomTypeOf(const CATBaseUnknown_var& spProduct)
    {
        QTBBomType bomType = QTB_BOM_TYPE_INVALID;
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetPdmBomInfo(&bomType), Succeeds());
        return bomType;
    }

    static std::string TypeOf(const CATBaseUnknown_var& spProduct)
    {
        CATUnicodeString usType("no type");
        CATUnicodeString usFileName("no file");
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetPsnNodeType(&usType, &usFileName), Succeeds());
        return ToText(usType) + " " + ToText(usFileName);
    }

    static void MakeArchiveRoot(const CATBaseUnknown_var& spProduct, const char* archiveFileName = "archive.cmi")
    {
        EXPECT_THAT(g_QTBLoadManager.SetCatiaFileIsCmiArchiveRoot(spProduct, TRUE, archiveFileName), Succeeds());
    }

    static void MakeAuxFile(const CATBaseUnknown_var& spProduct, unsigned char bIsAuxFile = TRUE)
    {
        EXPECT_THAT(g_QTBLoadManager.SetPsnReferenceIsAuxFile(spProduct, bIsAuxFile), Succeeds());
    }

    // A product file of that many levels, each used once in the one above, with the numbers behind the prefix as part
    // numbers.
    static std::string Chain(int levels, const std::string& prefix)
    {
        std::string xml;
        for (int i = 1; i <= levels; ++i) {
            const std::string number = std::to_string(i);
            xml += "<product id=\"" + number + "\" file=\"" + number + ".CATProduct\" partNumber=\"" + prefix + number +
                   "\">";
            if (i < levels) {
                xml += "<instance of=\"" + std::to_string(i + 1) + "\" name=\"I" + std::to_string(i + 1) + "\"/>";
            }
            xml += "</product>";
        }
        return xml;
    }
};

TEST_F(PsnNode, EveryProductAnswersTheInterfaceInstanceAndReference)
{
    Open(TREE);
    EXPECT_TRUE(QTBIPsnNode_var(Root("P")) != NULL_var);
    EXPECT_TRUE(QTBIPsnNode_var(At("P", {"A", "A1"})) != NULL_var);
}

// The father.

TEST_F(PsnNode, ARootProductHasNoFather)
{
    Open(TREE);
    CATIProduct_var spFather = Root("PC");
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetFatherProduct(&spFather, TRUE), FailsQuietly());
    EXPECT_TRUE(spFather == NULL_var);
}

TEST_F(PsnNode, TheFatherIsTheProductAbove)
{
    Open(TREE);
    EXPECT_EQ(FatherOf(At("P", {"A", "A1"})), "A");
    EXPECT_EQ(FatherOf(At("P", {"A"})), "P");
}

TEST_F(PsnNode, ASkippedFatherIsPassedOverUpToTheRoot)
{
    Open(SPECIAL_TREE);
    SwitchBehaviorOn();
    EXPECT_EQ(FatherOf(At("P", {"F", "C1"})), "P");
    EXPECT_EQ(FatherOf(At("P", {"F", "G", "D1"})), "P");
    EXPECT_EQ(FatherOf(At("P", {"S", "E1"})), "P");
}

TEST_F(PsnNode, ASpecialFatherCountsWhenBehaviorIsNotConsideredOrSwitchedOff)
{
    Open(SPECIAL_TREE);
    EXPECT_EQ(FatherOf(At("P", {"F", "C1"}), TRUE), "F");
    SwitchBehaviorOn();
    EXPECT_EQ(FatherOf(At("P", {"F", "C1"}), FALSE), "F");
}

TEST_F(PsnNode, BelowASpecialRootThereIsNoFather)
{
    Open(SPECIAL_TREE);
    SwitchBehaviorOn();
    CATIProduct_var spFather = Root("P");
    EXPECT_THAT(QTBIPsnNode_var(At("FOLDER_2", {"D1"}))->GetFatherProduct(&spFather, TRUE), FailsQuietly());
    EXPECT_TRUE(spFather == NULL_var);
}

TEST_F(PsnNode, TheFatherIsGivenToAPointerThatIsNotNull)
{
    Open(TREE);
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetFatherProduct(NULL, TRUE),
                FailsAssertion("pspIProductOnFatherNode != NULL"));
}

TEST_F(PsnNode, AFatherThatCannotTellItsBehaviorIsAnError)
{
    Open(TREE);
    CATIProduct_var spFather;
    const QTBIPsnNode_var spIPsnNode(At("P", {"A"}));
    const QTBFault fault("NeedsSpecialBehavior", Root("P"));
    EXPECT_THAT(spIPsnNode->GetFatherProduct(&spFather, TRUE),
                FailsCall("spIPsnNodeOnFatherNode->NeedsSpecialBehavior"));
}

// Says of itself that it needs a behaviour that there is not.
class OddPsnNode : public QTBEPsnNodeOnASMPRODUCT
{
public:
    HRESULT NeedsSpecialBehavior(unsigned char* pbNeedsSpecialBehavior, CATUnicodeString* pusBehavior)
    {
        *pbNeedsSpecialBehavior = TRUE;
        *pusBehavior = "ODD";
        return S_OK;
    }
};

TEST_F(PsnNode, AFatherWithAnyOtherBehaviorIsAnError)
{
    const QTBFakeProducts fakes;
    QTBTestLateType odd("QTBOddProduct", "QTBFakeProduct");
    odd.Register<TIEQTBIPsnNode, QTBIPsnNode, OddPsnNode>();
    const CATBaseUnknown_var spFather = QTBFakeProducts::Enter(odd, {});
    const CATBaseUnknown_var spChild = fakes.Create({.spFather = spFather});
    CATIProduct_var spFound;
    EXPECT_THAT(QTBIPsnNode_var(spChild)->GetFatherProduct(&spFound, TRUE),
                FailsAssertion("(usFatherNodeBehavior == usIGNORE_NODE) || (usFatherNodeBehavior == usSKIP_NODE)"));
    EXPECT_THAT(QTBIPsnNode_var(spChild)->GetFatherProduct(&spFound, FALSE), Succeeds());
    EXPECT_TRUE(spFound == spFather);
}

TEST_F(PsnNode, AFatherThatIsNoPsnNodeIsAnError)
{
    const QTBFakeProducts fakes;
    const CATBaseUnknown_var spChild = fakes.Create({.spFather = fakes.CreatePlain()});
    CATIProduct_var spFound;
    EXPECT_THAT(QTBIPsnNode_var(spChild)->GetFatherProduct(&spFound, TRUE), LacksInterface("spIPsnNodeOnFatherNode"));
}

TEST_F(PsnNode, AComponentThatIsNoProductHasNoFatherNoChildrenAndNoType)
{
    QTBTestLateType type("QTBNoProduct");
    type.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>();
    const QTBIPsnNode_var spIPsnNode(type.Create());
    CATIProduct_var spFather;
    CATListValCATBaseUnknown_var children;
    unsigned char bFlag = FALSE;
    CATUnicodeString usText;
    EXPECT_THAT(spIPsnNode->GetFatherProduct(&spFather, TRUE), LacksInterface("spIProductOnThis"));
    EXPECT_THAT(spIPsnNode->GetDirectChildren(&children, FALSE, FALSE, QTB_BOM_TYPE_ALL, FALSE),
                LacksInterface("spIProductOnThis"));
    EXPECT_THAT(spIPsnNode->IsCmiArchiveRoot(&bFlag, NULL), LacksInterface("spIProductOnThis"));
    EXPECT_THAT(spIPsnNode->GetPsnNodeType(&usText, NULL), LacksInterface("spIProductOnThis"));
    EXPECT_THAT(spIPsnNode->PrintNodeInformation(), LacksInterface("spIProductOnThis"));
}

// Direct children.

TEST_F(PsnNode, DirectChildrenComeInTheOrderOfTheCadSystem)
{
    Open(TREE);
    EXPECT_THAT(NamesOf(Direct(Root("P"), FALSE)), ElementsAre("A", "B"));
    EXPECT_THAT(NamesOf(Direct(At("P", {"A"}), TRUE)), ElementsAre("A1", "A2"));
    EXPECT_THAT(NamesOf(Direct(At("P", {"A", "A1"}), TRUE)), IsEmpty());
}

TEST_F(PsnNode, ASkippedChildGivesPlaceToItsChildrenAndAnIgnoredOneIsLeftOut)
{
    Open(SPECIAL_TREE);
    SwitchBehaviorOn();
    EXPECT_THAT(NamesOf(Direct(Root("P"), TRUE)), ElementsAre("X", "C1", "D1", "C2", "Y"));
}

TEST_F(PsnNode, AllChildrenAreShownWhenBehaviorIsNotConsideredOrSwitchedOff)
{
    Open(SPECIAL_TREE);
    EXPECT_THAT(NamesOf(Direct(Root("P"), TRUE)), ElementsAre("X", "F", "S", "Y"));
    SwitchBehaviorOn();
    EXPECT_THAT(NamesOf(Direct(Root("P"), FALSE)), ElementsAre("X", "F", "S", "Y"));
}

TEST_F(PsnNode, TheListIsEmptiedFirst)
{
    Open(TREE);
    CATListValCATBaseUnknown_var children;
    children.Append(Root("P"));
    EXPECT_THAT(QTBIPsnNode_var(Root("PC"))->GetDirectChildren(&children, TRUE, TRUE, QTB_BOM_TYPE_ALL, TRUE),
                Succeeds());
    EXPECT_EQ(children.Size(), 0);
}

TEST_F(PsnNode, AnArchiveRootHasNoChildrenForThoseWhoStopThere)
{
    Open(TREE);
    MakeArchiveRoot(At("P", {"A"}));
    EXPECT_THAT(NamesOf(Direct(At("P", {"A"}), TRUE, TRUE)), IsEmpty());
    EXPECT_THAT(NamesOf(Direct(At("P", {"A"}), TRUE, FALSE)), ElementsAre("A1", "A2"));
}

TEST_F(PsnNode, ASkippedArchiveRootContributesNothing)
{
    Open(SPECIAL_TREE);
    SwitchBehaviorOn();
    MakeArchiveRoot(At("P", {"F"}));
    // The type of an archive root is that of an archive, which no behaviour is configured for.
    EXPECT_THAT(NamesOf(Direct(Root("P"), TRUE, FALSE)), ElementsAre("X", "F", "Y"));
    const CATIProduct_var spEmbedded = At("P", {"F", "G"});
    MakeArchiveRoot(spEmbedded);
    EXPECT_THAT(NamesOf(Direct(At("P", {"F"}), TRUE, FALSE)), ElementsAre("C1", "G", "C2"));
}

TEST_F(PsnNode, AnArchiveThatCannotBeToldHidesTheChildren)
{
    Open(TREE);
    const CATIProduct_var spProduct = Root("P");
    const QTBIPsnNode_var spIPsnNode(spProduct);
    const QTBFault fault("IsCmiArchiveRoot", spProduct);
    const DebugCapture capture;
    EXPECT_THAT(NamesOf(Direct(spProduct, FALSE, TRUE)), IsEmpty());
    EXPECT_THAT(capture.Lines(), Contains("QTBEPsnNodeOnASMPRODUCT::GetDirectChildren -> IsCmiArchiveRoot !"));
}

TEST_F(PsnNode, ASkippedChildOfWhichTheArchiveCannotBeToldContributesNothing)
{
    Open(SPECIAL_TREE);
    SwitchBehaviorOn();
    const CATIProduct_var spSkipped = At("P", {"F"});
    const QTBFault fault("IsCmiArchiveRoot", spSkipped);
    const DebugCapture capture;
    EXPECT_THAT(NamesOf(Direct(Root("P"), TRUE)), ElementsAre("X", "Y"));
    EXPECT_THAT(capture.Lines(), Contains("QTBEPsnNodeOnASMPRODUCT::GetDirectChildren -> IsCmiArchiveRoot !"));
}

TEST_F(PsnNode, WantedBomTypeKeepsPartsOrAuxiliaryFiles)
{
    Open(TREE);
    MakeAuxFile(At("P", {"A"}), FALSE);
    MakeAuxFile(At("P", {"B"}), TRUE);
    EXPECT_THAT(NamesOf(Direct(Root("P"), TRUE, TRUE, QTB_BOM_TYPE_PART)), ElementsAre("A"));
    EXPECT_THAT(NamesOf(Direct(Root("P"), TRUE, TRUE, QTB_BOM_TYPE_AUX_FILE)), ElementsAre("B"));
    EXPECT_THAT(NamesOf(Direct(Root("P"), TRUE, TRUE, QTB_BOM_TYPE_ALL)), ElementsAre("A", "B"));
}

TEST_F(PsnNode, WhoWantsAllAsksNoChildForItsBomType)
{
    Open(TREE);
    const QTBFault fault("GetPdmBomInfo");
    EXPECT_THAT(NamesOf(Direct(Root("P"), TRUE, TRUE, QTB_BOM_TYPE_ALL)), ElementsAre("A", "B"));
}

TEST_F(PsnNode, AChildThatCannotTellItsBomTypeIsAnErrorAndTheRestStays)
{
    Open(TREE);
    MakeAuxFile(At("P", {"A"}), TRUE);
    MakeAuxFile(At("P", {"B"}), TRUE);
    const QTBIPsnNode_var spIPsnNode(Root("P"));
    const QTBFault fault("GetPdmBomInfo", At("P", {"A"}));
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(
        DiagnosisOf([&] { return spIPsnNode->GetDirectChildren(&children, TRUE, TRUE, QTB_BOM_TYPE_PART, FALSE); }),
        ElementsAre(Call("spIPsnNodeOnDirectChild->GetPdmBomInfo")));
    // The list was gone through from its end.
    EXPECT_THAT(NamesOf(children), ElementsAre("A"));
}

TEST_F(PsnNode, NoBomTypeCannotBeWanted)
{
    Open(TREE);
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetDirectChildren(&children, TRUE, TRUE, QTB_BOM_TYPE_INVALID, FALSE),
                FailsAssertion("WantedBomType != QTB_BOM_TYPE_INVALID"));
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetDirectChildren(NULL, TRUE, TRUE, QTB_BOM_TYPE_INVALID, FALSE),
                FailsAssertion("pDirectChildNodes != NULL"));
}

constexpr const char* INVALID_TREE = R"(
    <product id="p" file="p.CATProduct" partNumber="P">
      <instance of="e" name="E"/><instance of="x" name="X"/><instance of="l" name="L"/><instance of="n" name="N"/>
    </product>
    <component id="e" partNumber="PE"/>
    <product id="x" file="x.CATPart" partNumber="X"/>
    <product id="l" file="l.CATPart" link="broken"/>
    <product id="n" file="n.odd" type="CATPart" link="visualization" shape="n.cgr"/>)";

TEST_F(PsnNode, InvalidChildrenAreLeftOutWithAWarningFromTheLastToTheFirst)
{
    Open(INVALID_TREE);
    EXPECT_THAT(NamesOf(Direct(Root("P"), TRUE, TRUE, QTB_BOM_TYPE_ALL, FALSE)), ElementsAre("E", "X", "L", "N"));
    EXPECT_THAT(InfoList(), IsEmpty());
    const DebugCapture capture;
    EXPECT_THAT(NamesOf(Direct(Root("P"), TRUE, TRUE, QTB_BOM_TYPE_ALL, TRUE)), ElementsAre("X"));
    EXPECT_THAT(InfoList(), ElementsAre("N is left out: its type cannot be told.",
                                        "L is left out because of its type: Broken link.",
                                        "E (PE) is left out because of its type: Embedded component."));
    EXPECT_THAT(
        capture.Lines(),
        Contains(
            "QTBEPsnNodeOnASMPRODUCT::GetDirectChildren -> node type is [BrokenLink] -> invalid -> ignoring it !"));
    EXPECT_THAT(capture.Lines(), Contains("QTBEPsnNodeOnASMPRODUCT::GetDirectChildren -> node type is "
                                          "[EmbeddedComponent] -> invalid -> ignoring it !"));
    EXPECT_THAT(capture.Lines(),
                Contains("QTBEPsnNodeOnASMPRODUCT::GetDirectChildren -> node type is [] -> invalid -> ignoring it !"));
}

TEST_F(PsnNode, AChildThatIsNoPsnNodeIsAnErrorWhereverItIsAsked)
{
    const QTBFakeProducts fakes;
    QTBFakeProducts::Data data;
    data.Children.Append(fakes.Create());
    data.Children.Append(fakes.CreatePlain());
    const QTBIPsnNode_var spIPsnNode(fakes.Create(data));
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(spIPsnNode->GetDirectChildren(&children, TRUE, FALSE, QTB_BOM_TYPE_ALL, FALSE), Succeeds());
    EXPECT_EQ(children.Size(), 2);
    EXPECT_THAT(spIPsnNode->GetDirectChildren(&children, TRUE, FALSE, QTB_BOM_TYPE_PART, FALSE),
                LacksInterface("spIPsnNodeOnDirectChild"));
    EXPECT_THAT(spIPsnNode->GetDirectChildren(&children, TRUE, FALSE, QTB_BOM_TYPE_ALL, TRUE),
                LacksInterface("spIPsnNodeOnDirectChild"));
    EXPECT_THAT(GetAll(spIPsnNode, &children), LacksInterface("spIPsnNodeOnChildNode"));
    SwitchBehaviorOn();
    EXPECT_THAT(spIPsnNode->GetDirectChildren(&children, TRUE, FALSE, QTB_BOM_TYPE_ALL, FALSE),
                LacksInterface("spIPsnNodeOnChildNode"));
    // What was gathered before stays.
    EXPECT_EQ(children.Size(), 1);
}

TEST_F(PsnNode, AProductThatGivesNoListHasNoChildren)
{
    const QTBFakeProducts fakes;
    EXPECT_EQ(Direct(fakes.Create({.givesNoList = true}), FALSE).Size(), 0);
}

TEST_F(PsnNode, WhatFailsBelowASkippedChildIsReportedByEachLevel)
{
    Open(SPECIAL_TREE);
    SwitchBehaviorOn();
    const QTBIPsnNode_var spIPsnNode(Root("P"));
    CATListValCATBaseUnknown_var children;
    {
        const QTBFault fault("NeedsSpecialBehavior", At("P", {"F", "G", "D1"}));
        EXPECT_THAT(
            DiagnosisOf([&] { return spIPsnNode->GetDirectChildren(&children, TRUE, FALSE, QTB_BOM_TYPE_ALL, FALSE); }),
            ElementsAre(Call("spIPsnNodeOnChildNode->NeedsSpecialBehavior"),
                        Call("spIPsnNodeOnChildNode->GetDirectChildren"),
                        Call("spIPsnNodeOnChildNode->GetDirectChildren")));
        EXPECT_THAT(NamesOf(children), ElementsAre("X"));
    }
    const QTBFault fault("NeedsSpecialBehavior", At("P", {"S"}));
    EXPECT_THAT(
        DiagnosisOf([&] { return spIPsnNode->GetDirectChildren(&children, TRUE, FALSE, QTB_BOM_TYPE_ALL, FALSE); }),
        ElementsAre(Call("spIPsnNodeOnChildNode->NeedsSpecialBehavior")));
    EXPECT_THAT(NamesOf(children), ElementsAre("X", "C1", "D1", "C2"));
}

TEST_F(PsnNode, ManySkippedLevelsAreWalkedWithoutRecursion)
{
    constexpr int LEVELS = 20000;
    Open("<product id=\"top\" file=\"top.CATProduct\" partNumber=\"TOP\"><instance of=\"1\" name=\"I1\"/></product>" +
         Chain(LEVELS, "FOLDER_"));
    SwitchBehaviorOn();
    EXPECT_THAT(NamesOf(Direct(Root("TOP"), TRUE)), IsEmpty());
}

// All children.

TEST_F(PsnNode, AllChildrenComeBelowEachNodeDescendantsFirst)
{
    Open(TREE);
    CATListValCATBaseUnknown_var children;
    children.Append(Root("P"));
    EXPECT_THAT(GetAll(Root("P"), &children), Succeeds());
    EXPECT_THAT(NamesOf(children), ElementsAre("A1", "A2", "B1", "A", "B"));
}

TEST_F(PsnNode, AllChildrenArePassedThroughTheFilters)
{
    Open(SPECIAL_TREE);
    SwitchBehaviorOn();
    MakeAuxFile(At("P", {"Y"}));
    MakeAuxFile(At("P", {"X"}), FALSE);
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetAllChildren(&children, FALSE, TRUE, QTB_BOM_TYPE_ALL, FALSE, FALSE),
                Succeeds());
    EXPECT_THAT(NamesOf(children), ElementsAre("D1", "C1", "G", "C2", "E1", "X", "F", "S", "Y"));
    MakeArchiveRoot(At("P", {"F"}));
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetAllChildren(&children, FALSE, TRUE, QTB_BOM_TYPE_ALL, FALSE, FALSE),
                Succeeds());
    EXPECT_THAT(NamesOf(children), ElementsAre("E1", "X", "F", "S", "Y"));
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetAllChildren(&children, TRUE, TRUE, QTB_BOM_TYPE_PART, FALSE, FALSE),
                Succeeds());
    EXPECT_THAT(NamesOf(children), Not(Contains("Y")));
}

constexpr const char* TWIN_TREE = R"(
    <product id="p" file="p.CATProduct" partNumber="P"><instance of="a" name="A"/></product>
    <product id="a" file="a.CATProduct" partNumber="PA">
      <instance of="x" name="T"/><instance of="x" name="U"/><instance of="x" name="T"/>
    </product>
    <product id="x" file="x.CATPart" partNumber="X"/>)";

TEST_F(PsnNode, BrothersOfOneNameAreAnErrorThatTheUserIsToldOf)
{
    Open(TWIN_TREE);
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(GetAll(Root("P"), &children, FALSE), Succeeds());
    EXPECT_THAT(NamesOf(children), ElementsAre("T", "U", "T", "A"));
    EXPECT_THAT(GetAll(Root("P"), &children, TRUE), FailsWithMessage("InstanceNameOccursMoreThanOnceERR_2003"));
    EXPECT_THAT(InfoList(), ElementsAre("The instance name \"T\" occurs more than once below A (PA)."));
}

TEST_F(PsnNode, BrothersOfOneNameAreReportedByEachLevel)
{
    Open(TWIN_TREE);
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(DiagnosisOf([&] { return GetAll(Root("P"), &children, TRUE); }),
                ElementsAre(Call("RecursiveGetAllChildren"), Call("RecursiveGetAllChildren")));
}

TEST_F(PsnNode, EqualNamesUnderDifferentFathersAreNoError)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="a" name="A"/><instance of="a" name="B"/>
            </product>
            <product id="a" file="a.CATProduct" partNumber="PA"><instance of="x" name="A"/></product>
            <product id="x" file="x.CATPart" partNumber="X"/>)");
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(GetAll(Root("P"), &children, TRUE), Succeeds());
    EXPECT_THAT(InfoList(), IsEmpty());
}

TEST_F(PsnNode, AChildWithoutNameIsPassedOverInTheComparisonOfNames)
{
    const QTBFakeProducts fakes;
    QTBFakeProducts::Data data;
    data.Children.Append(fakes.Create({.instanceNameResult = E_FAIL}));
    data.Children.Append(fakes.Create({.instanceNameResult = E_FAIL}));
    const CATBaseUnknown_var spParent = fakes.Create(data);
    CATListValCATBaseUnknown_var children;
    const DebugCapture capture;
    EXPECT_THAT(GetAll(spParent, &children, TRUE), Succeeds());
    EXPECT_EQ(children.Size(), 2);
    EXPECT_THAT(capture.Lines(), Contains("QTBEPsnNodeOnASMPRODUCT::RecursiveGetAllChildren -> "
                                          "spIProductOnChildNode->GetPrdInstanceName !"));
}

TEST_F(PsnNode, AChildThatIsNoProductCannotBeCompared)
{
    const QTBFakeProducts fakes;
    QTBTestLateType type("QTBNoProduct");
    type.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>();
    QTBFakeProducts::Data data;
    data.Children.Append(type.Create());
    const CATBaseUnknown_var spParent = fakes.Create(data);
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(GetAll(spParent, &children, TRUE), LacksInterface("spIProductOnChildNode"));
}

TEST_F(PsnNode, AllChildrenNeedAPointerAndAnAllowedBomType)
{
    Open(TREE);
    const QTBIPsnNode_var spIPsnNode(Root("P"));
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(spIPsnNode->GetAllChildren(NULL, TRUE, TRUE, QTB_BOM_TYPE_ALL, FALSE, FALSE),
                FailsAssertion("pAllChildNodes != NULL"));
    EXPECT_THAT(spIPsnNode->GetAllChildren(&children, TRUE, TRUE, QTB_BOM_TYPE_INVALID, FALSE, FALSE),
                FailsAssertion("WantedBomType != QTB_BOM_TYPE_INVALID"));
}

TEST_F(PsnNode, AllChildrenOfADeepStructureAreFoundWithoutRecursion)
{
    constexpr int LEVELS = 100000;
    Open(Chain(LEVELS, "P"));
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(GetAll(Root("P1"), &children), Succeeds());
    ASSERT_EQ(children.Size(), LEVELS - 1);
    EXPECT_EQ(NameOf(children[1]), "I" + std::to_string(LEVELS));
    EXPECT_EQ(NameOf(children[children.Size()]), "I2");
}

TEST_F(PsnNode, TheChildrenOfALadderOfSharedProductsEndAtTheLimit)
{
    Open(QTBProductLadder());
    CATListValCATBaseUnknown_var children;
    const QTBTestEnvironment limit("QTB_MAX_PRODUCTS", "31");
    EXPECT_THAT(GetAll(Root("L36"), &children), Succeeds()) << "four levels of two are 31 products with the top";
    EXPECT_EQ(children.Size(), 30);
    EXPECT_THAT(GetAll(Root("L35"), &children), FailsWith("MaxProductsReachedERR_2010", "31"));
    EXPECT_THAT(GetAll(Root("L0"), &children), FailsWith("MaxProductsReachedERR_2010", "31"));
    EXPECT_THAT(QTBIPsnNode_var(Root("L20"))->GetAllReferenceChildNodes(&children, QTB_BOM_TYPE_ALL, NULL), Succeeds())
        << "each reference once";
}

TEST_F(PsnNode, TheChildrenOfALadderOfSkippedProductsEndAtTheLimit)
{
    SwitchBehaviorOn();
    Open(QTBProductLadder("FOLDER_"));
    CATListValCATBaseUnknown_var children;
    const auto getDirect = [&children](const char* partNumber, unsigned char bConsiderBehavior) {
        return QTBIPsnNode_var(Root(partNumber))
            ->GetDirectChildren(&children, bConsiderBehavior, TRUE, QTB_BOM_TYPE_ALL, FALSE);
    };
    const QTBTestEnvironment limit("QTB_MAX_PRODUCTS", "31");
    EXPECT_THAT(getDirect("FOLDER_36", TRUE), Succeeds()) << "four levels of two are 31 products with the top";
    EXPECT_EQ(children.Size(), 16) << "those of the last level, which is not skipped";
    ASSERT_THAT(getDirect("FOLDER_35", TRUE), FailsWith("MaxProductsReachedERR_2010", "31"));
    EXPECT_THAT(getDirect("FOLDER_0", TRUE), FailsWith("MaxProductsReachedERR_2010", "31"));
    EXPECT_THAT(getDirect("FOLDER_0", FALSE), Succeeds()) << "nothing is skipped then";
    EXPECT_EQ(children.Size(), 2);
}

// Reference children.

constexpr const char* REFERENCE_TREE = R"(
    <product id="p" file="p.CATProduct" partNumber="P">
      <instance of="a" name="A"/><instance of="x" name="X1"/><instance of="b" name="B"/><instance of="x" name="X2"/>
    </product>
    <product id="a" file="a.CATProduct" partNumber="PA">
      <instance of="x" name="AX"/><instance of="y" name="AY1"/><instance of="y" name="AY2"/>
    </product>
    <product id="b" file="b.CATProduct" partNumber="PB"><instance of="y" name="BY"/></product>
    <product id="x" file="x.CATPart" partNumber="X"/><product id="y" file="y.CATPart" partNumber="Y"/>)";

TEST_F(PsnNode, OfSeveralInstancesOfAReferenceTheFirstIsKept)
{
    Open(REFERENCE_TREE);
    CATListValCATBaseUnknown_var children;
    CATListValCATUnicodeString names;
    names.Append("former");
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetDirectReferenceChildNodes(&children, QTB_BOM_TYPE_ALL, &names),
                Succeeds());
    EXPECT_THAT(NamesOf(children), ElementsAre("A", "X1", "B"));
    EXPECT_THAT(TextsOf(names), ElementsAre("a.CATProduct", "x.CATPart", "b.CATProduct"));
    EXPECT_THAT(QTBIPsnNode_var(At("P", {"A"}))->GetDirectReferenceChildNodes(&children, QTB_BOM_TYPE_ALL, NULL),
                Succeeds());
    EXPECT_THAT(NamesOf(children), ElementsAre("AX", "AY1"));
}

TEST_F(PsnNode, AllReferenceChildrenAreListedWhereverTheyStandDescendantsFirst)
{
    Open(REFERENCE_TREE);
    CATListValCATBaseUnknown_var children;
    children.Append(Root("P"));
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetAllReferenceChildNodes(&children, QTB_BOM_TYPE_ALL, NULL), Succeeds());
    EXPECT_THAT(NamesOf(children), ElementsAre("AX", "AY1", "BY", "A", "X1", "B"));
}

TEST_F(PsnNode, TheNamesOfAllReferenceChildrenAreThoseOfTheLastSubtreeAndOfTheTop)
{
    Open(REFERENCE_TREE);
    CATListValCATBaseUnknown_var children;
    CATListValCATUnicodeString names;
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetAllReferenceChildNodes(&children, QTB_BOM_TYPE_ALL, &names), Succeeds());
    // B is the last child of the top: its own child leaves nothing, then B's child and the top's are appended.
    EXPECT_THAT(TextsOf(names), ElementsAre("y.CATPart", "a.CATProduct", "x.CATPart", "b.CATProduct"));
}

TEST_F(PsnNode, ANodeWithoutChildrenHasNoReferenceChildrenAndNoNames)
{
    Open(REFERENCE_TREE);
    CATListValCATBaseUnknown_var children;
    CATListValCATUnicodeString names;
    names.Append("former");
    EXPECT_THAT(QTBIPsnNode_var(Root("X"))->GetAllReferenceChildNodes(&children, QTB_BOM_TYPE_ALL, &names), Succeeds());
    EXPECT_EQ(children.Size(), 0);
    EXPECT_EQ(names.Size(), 0);
}

TEST_F(PsnNode, ReferenceChildrenHeedBehaviorArchivesAndBomType)
{
    Open(SPECIAL_TREE);
    SwitchBehaviorOn();
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetDirectReferenceChildNodes(&children, QTB_BOM_TYPE_ALL, NULL),
                Succeeds());
    EXPECT_THAT(NamesOf(children), ElementsAre("X", "Y"));
    MakeAuxFile(Root("X"), FALSE);
    MakeAuxFile(Root("Y"), TRUE);
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetDirectReferenceChildNodes(&children, QTB_BOM_TYPE_PART, NULL),
                Succeeds());
    EXPECT_THAT(NamesOf(children), ElementsAre("X"));
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetAllReferenceChildNodes(&children, QTB_BOM_TYPE_AUX_FILE, NULL),
                Succeeds());
    EXPECT_THAT(NamesOf(children), ElementsAre("Y"));
    MakeArchiveRoot(Root("P"));
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetDirectReferenceChildNodes(&children, QTB_BOM_TYPE_ALL, NULL),
                Succeeds());
    EXPECT_EQ(children.Size(), 0);
}

TEST_F(PsnNode, ReferenceChildrenNeedAPointerAndAnAllowedBomType)
{
    Open(TREE);
    const QTBIPsnNode_var spIPsnNode(Root("P"));
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(spIPsnNode->GetDirectReferenceChildNodes(NULL, QTB_BOM_TYPE_ALL, NULL),
                FailsAssertion("pDirectReferenceChildNodes != NULL"));
    EXPECT_THAT(spIPsnNode->GetAllReferenceChildNodes(NULL, QTB_BOM_TYPE_ALL, NULL),
                FailsAssertion("pAllReferenceChildNodes != NULL"));
    EXPECT_THAT(
        DiagnosisOf([&] { return spIPsnNode->GetAllReferenceChildNodes(&children, QTB_BOM_TYPE_INVALID, NULL); }),
        ElementsAre(Assertion("WantedBomType != QTB_BOM_TYPE_INVALID"), Call("GetDirectChildren"),
                    Call("spIPsnNodeOnNode->GetDirectReferenceChildNodes"),
                    Call("RecursiveGetAllReferenceChildNodes")));
}

TEST_F(PsnNode, AReferenceChildWhoseFileCannotBeToldIsAnError)
{
    const QTBFakeProducts fakes;
    QTBFakeProducts::Data data;
    data.Children.Append(fakes.Create());
    data.Children.Append(fakes.Create({.linkResult = E_FAIL}));
    const QTBIPsnNode_var spIPsnNode(fakes.Create(data));
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(spIPsnNode->GetDirectReferenceChildNodes(&children, QTB_BOM_TYPE_ALL, NULL),
                FailsCall("QTBFileUtil::GetReferenceFileName"));
    EXPECT_EQ(children.Size(), 1);
}

TEST_F(PsnNode, AReferenceChildThatIsNoProductIsAnError)
{
    const QTBFakeProducts fakes;
    QTBTestLateType type("QTBNoProduct");
    type.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>();
    QTBFakeProducts::Data data;
    data.Children.Append(type.Create());
    const QTBIPsnNode_var spIPsnNode(fakes.Create(data));
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(spIPsnNode->GetDirectReferenceChildNodes(&children, QTB_BOM_TYPE_ALL, NULL),
                LacksInterface("spIProductOnCurrentChildNode"));
}

TEST_F(PsnNode, AReferenceChildThatFailsBelowIsReportedByEachLevel)
{
    Open(REFERENCE_TREE);
    const QTBIPsnNode_var spIPsnNode(Root("P"));
    const QTBFault fault("GetDirectReferenceChildNodes", At("P", {"A"}));
    CATListValCATBaseUnknown_var children;
    EXPECT_THAT(DiagnosisOf([&] { return spIPsnNode->GetAllReferenceChildNodes(&children, QTB_BOM_TYPE_ALL, NULL); }),
                ElementsAre(Call("spIPsnNodeOnNode->GetDirectReferenceChildNodes"),
                            Call("RecursiveGetAllReferenceChildNodes"), Call("RecursiveGetAllReferenceChildNodes")));
}

// BOM membership.

TEST_F(PsnNode, WithoutBomPartStructureEveryProductIsAnAuxiliaryFile)
{
    QTBLoadEditedSchema({{R"(bomPartStructure="true")", R"(bomPartStructure="false")"}});
    Open(TREE);
    Update(NumberedPart("1", "P"));
    EXPECT_EQ(BomTypeOf(Root("P")), QTB_BOM_TYPE_AUX_FILE);
}

TEST_F(PsnNode, AProductWithPdmStructureNodeIsAPartWhateverIsRecorded)
{
    Open(TREE);
    Update(NumberedPart("1", "PC"));
    MakeAuxFile(Root("PC"));
    EXPECT_EQ(BomTypeOf(Root("PC")), QTB_BOM_TYPE_PART);
}

TEST_F(PsnNode, AProductOfWhichItIsRecordedIsWhatIsRecorded)
{
    Open(TREE);
    MakeAuxFile(Root("P"), TRUE);
    MakeAuxFile(Root("PC"), FALSE);
    EXPECT_EQ(BomTypeOf(Root("P")), QTB_BOM_TYPE_AUX_FILE);
    EXPECT_EQ(BomTypeOf(Root("PC")), QTB_BOM_TYPE_PART);
}

TEST_F(PsnNode, AProductWithAPdmNodeTypeIsAPartWhenThatIsAPartClass)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"/><product id="g" file="g.cgr" partNumber="G"/>)");
    EXPECT_EQ(BomTypeOf(Root("P")), QTB_BOM_TYPE_PART);
    EXPECT_EQ(BomTypeOf(Root("G")), QTB_BOM_TYPE_AUX_FILE);
}

TEST_F(PsnNode, AProductWithoutPdmNodeTypeIsAPartWhenItIsACatProduct)
{
    Open(R"(<product id="d" file="d.CATDrawing" partNumber="D"/><product id="p" file="p.CATProduct" partNumber="P"/>)");
    EXPECT_EQ(BomTypeOf(Root("D")), QTB_BOM_TYPE_AUX_FILE);
    const CATIProduct_var spProduct = Root("P");
    const QTBFault fault("CorrespondingPdmNodesExist", spProduct);
    EXPECT_EQ(BomTypeOf(spProduct), QTB_BOM_TYPE_PART);
}

TEST_F(PsnNode, BomMembershipNeedsAPointerAndTheLinkToThePdmGraph)
{
    Open(TREE);
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetPdmBomInfo(NULL), FailsAssertion("pBomType != NULL"));
    QTBBomType bomType = QTB_BOM_TYPE_INVALID;
    {
        const QTBFault fault("ProdStrucPdmNodeExists");
        EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetPdmBomInfo(&bomType),
                    FailsCall("spILinkToQtbOnThis->ProdStrucPdmNodeExists"));
    }
    QTBTestLateType type("QTBNoProduct");
    type.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>();
    EXPECT_THAT(QTBIPsnNode_var(type.Create())->GetPdmBomInfo(&bomType), LacksInterface("spILinkToQtbOnThis"));
}

// Archives.

TEST_F(PsnNode, AProductWithoutReferenceFileNameLeavesTheArchiveFlagUntouched)
{
    Open(R"(<product id="n" type="CATProduct" partNumber="N"/>)");
    MakeArchiveRoot(Root("N"));
    unsigned char bIsRoot = 7;
    CATUnicodeString usArchive("untouched");
    EXPECT_THAT(QTBIPsnNode_var(Root("N"))->IsCmiArchiveRoot(&bIsRoot, &usArchive), Succeeds());
    EXPECT_EQ(bIsRoot, 7);
    EXPECT_EQ(usArchive, "untouched");
}

TEST_F(PsnNode, AnArchiveRootTellsItsArchiveAndGetsTheArchiveType)
{
    Open(TREE);
    const CATIProduct_var spRoot = Root("P");
    MakeArchiveRoot(spRoot, "box.cmi");
    unsigned char bIsRoot = FALSE;
    CATUnicodeString usArchive;
    EXPECT_THAT(QTBIPsnNode_var(spRoot)->IsCmiArchiveRoot(&bIsRoot, &usArchive), Succeeds());
    EXPECT_EQ(bIsRoot, TRUE);
    EXPECT_EQ(usArchive, "box.cmi");
    CATUnicodeString usType;
    EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(spRoot, &usType, FALSE), Succeeds());
    EXPECT_EQ(usType, "CMIArchiveFile");
    EXPECT_EQ(BomTypeOf(spRoot), QTB_BOM_TYPE_AUX_FILE);
    EXPECT_THAT(QTBIPsnNode_var(spRoot)->IsCmiArchiveRoot(&bIsRoot, NULL), Succeeds());
}

TEST_F(PsnNode, AnyOtherProductIsNoArchiveRoot)
{
    Open(TREE);
    unsigned char bIsRoot = TRUE;
    CATUnicodeString usArchive("untouched");
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->IsCmiArchiveRoot(&bIsRoot, &usArchive), Succeeds());
    EXPECT_EQ(bIsRoot, FALSE);
    EXPECT_EQ(usArchive, "untouched");
}

TEST_F(PsnNode, AnArchiveRootNeedsAPointerAndAFileThatCanBeTold)
{
    Open(TREE);
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->IsCmiArchiveRoot(NULL, NULL), FailsAssertion("pbIsCmiArchiveRoot != NULL"));
    const QTBFakeProducts fakes;
    unsigned char bIsRoot = FALSE;
    EXPECT_THAT(QTBIPsnNode_var(fakes.Create({.linkResult = E_FAIL}))->IsCmiArchiveRoot(&bIsRoot, NULL),
                FailsCall("QTBFileUtil::GetReferenceFileName"));
}

TEST_F(PsnNode, AnArchiveRootNeedsAnArchiveClassInTheSchema)
{
    QTBLoadEditedSchema({{R"(<catiaFile type="CMIArchive"/>)", ""}});
    Open(TREE);
    MakeArchiveRoot(Root("P"));
    unsigned char bIsRoot = FALSE;
    EXPECT_THAT(DiagnosisOf([&] { return QTBIPsnNode_var(Root("P"))->IsCmiArchiveRoot(&bIsRoot, NULL); }),
                ElementsAre(Assertion("usPdmNodeType != \"\""), Call("SetPdmNodeType")));
}

TEST_F(PsnNode, ARootProductIsBelowNoArchiveRoot)
{
    Open(TREE);
    MakeArchiveRoot(Root("P"));
    unsigned char bIsUnder = TRUE;
    EXPECT_THAT(Extension(Root("P"))->IsUnderCmiArchiveRoot(&bIsUnder), Succeeds());
    EXPECT_EQ(bIsUnder, FALSE);
}

TEST_F(PsnNode, AProductIsBelowAnArchiveRootAtAnyDistance)
{
    Open(TREE);
    unsigned char bIsUnder = FALSE;
    EXPECT_THAT(Extension(At("P", {"A", "A1"}))->IsUnderCmiArchiveRoot(&bIsUnder), Succeeds());
    EXPECT_EQ(bIsUnder, FALSE);
    MakeArchiveRoot(Root("P"));
    EXPECT_THAT(Extension(At("P", {"A", "A1"}))->IsUnderCmiArchiveRoot(&bIsUnder), Succeeds());
    EXPECT_EQ(bIsUnder, TRUE);
}

TEST_F(PsnNode, BeingBelowAnArchiveRootNeedsAPointerAndFathersThatCanTell)
{
    Open(TREE);
    const CATIProduct_var spProduct = At("P", {"A", "A1"});
    EXPECT_THAT(Extension(spProduct)->IsUnderCmiArchiveRoot(NULL), FailsAssertion("pbIsUnderCmiArchiveRoot != NULL"));
    unsigned char bIsUnder = FALSE;
    const QTBFault fault("IsCmiArchiveRoot", At("P", {"A"}));
    EXPECT_THAT(Extension(spProduct)->IsUnderCmiArchiveRoot(&bIsUnder),
                FailsCall("spIPsnNodeOnFatherNode->IsCmiArchiveRoot"));
}

// Types.

TEST_F(PsnNode, TheTypeIsThatOfTheDocumentOrOfTheLink)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P">
              <instance of="e" name="E"/><instance of="l" name="L"/><instance of="v" name="V"/>
            </product>
            <component id="e" partNumber="E"/>
            <product id="l" file="l.CATPart" link="broken"/>
            <product id="v" file="v.CATPart" shape="v.cgr" link="visualization"/>
            <product id="d" file="d.CATDrawing" partNumber="D"/><product id="g" file="g.cgr" partNumber="G"/>
            <product id="m" file="m.model" partNumber="M"/><product id="n" type="CATPart" partNumber="N"/>)");
    EXPECT_EQ(TypeOf(Root("P")), "CATProduct p.CATProduct");
    EXPECT_EQ(TypeOf(At("P", {"E"})), "EmbeddedComponent ");
    EXPECT_EQ(TypeOf(At("P", {"L"})), "BrokenLink l.CATPart");
    EXPECT_EQ(TypeOf(At("P", {"V"})), "CATPart v.CATPart");
    EXPECT_EQ(TypeOf(Root("D")), "CATDrawing d.CATDrawing");
    EXPECT_EQ(TypeOf(Root("G")), "CGR g.cgr");
    EXPECT_EQ(TypeOf(Root("M")), "V4Model m.model");
    EXPECT_EQ(TypeOf(Root("N")), "CATPart ");
}

TEST_F(PsnNode, AnArchiveRootHasTheTypeAndFileOfItsArchive)
{
    Open(TREE);
    MakeArchiveRoot(Root("P"), "box.cmi");
    EXPECT_EQ(TypeOf(Root("P")), "CMIArchive box.cmi");
    CATUnicodeString usType;
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetPsnNodeType(&usType, NULL), Succeeds());
    EXPECT_EQ(usType, "CMIArchive");
}

TEST_F(PsnNode, TheTypeNeedsAPointerAndAFileThatCanBeTold)
{
    Open(TREE);
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetPsnNodeType(NULL, NULL), FailsAssertion("pusPsnNodeType != NULL"));
    const QTBFakeProducts fakes;
    CATUnicodeString usType;
    EXPECT_THAT(DiagnosisOf([&] {
                    return QTBIPsnNode_var(fakes.Create({.linkResult = E_FAIL}))->GetPsnNodeType(&usType, NULL);
                }),
                ElementsAre(Call("QTBFileUtil::GetReferenceFileName"), Call("IsCmiArchiveRoot")));
    EXPECT_THAT(
        DiagnosisOf([&] {
            return QTBIPsnNode_var(fakes.Create({.usLinkedFileName = "/data/fake.odd"}))->GetPsnNodeType(&usType, NULL);
        }),
        ElementsAre(Call("QTBFileUtil::GetReferenceFileName")));
}

TEST_F(PsnNode, EachTypeHasItsFileClass)
{
    const auto classOf = [](const CATUnicodeString& usType) {
        return QTBFaultyPsnNode::CatiaFileClassStringToEnum(usType);
    };
    EXPECT_EQ(classOf(usCATPRODUCT), 1);
    EXPECT_EQ(classOf(usCATPART), 2);
    EXPECT_EQ(classOf(usCATDRAWING), 3);
    EXPECT_EQ(classOf(usCMIARCHIVE), 4);
    EXPECT_EQ(classOf(usCGR), 5);
    EXPECT_EQ(classOf(usDESIGNTABLE), 6);
    EXPECT_EQ(classOf(usV4MODEL), 7);
    EXPECT_EQ(classOf(usEMBCOMP), 0);
    EXPECT_EQ(classOf(""), 0);
}

TEST_F(PsnNode, TheFileObjectInfoIsTheFileNameWithoutExtensionASlashAndThePdmClass)
{
    Open(R"(<product id="b" file="bracket.CATPart" partNumber="B"/><product id="d" file="sheet.1.CATDrawing"
            partNumber="D"/>)");
    CATUnicodeString usInfo;
    const DebugCapture capture;
    EXPECT_THAT(QTBIPsnNode_var(Root("B"))->GetPdmFileObjInfo(&usInfo), Succeeds());
    EXPECT_EQ(usInfo, "bracket/CATPartFile");
    EXPECT_THAT(QTBIPsnNode_var(Root("D"))->GetPdmFileObjInfo(&usInfo), Succeeds());
    EXPECT_EQ(usInfo, "sheet.1/CATDrawingFile");
    EXPECT_THAT(capture.Lines(),
                Contains("QTBEPsnNodeOnASMPRODUCT::GetPdmFileObjInfo -> *pusPdmFileObjInfo:[bracket/CATPartFile]"));
    MakeArchiveRoot(Root("B"), "box.cmi");
    EXPECT_THAT(QTBIPsnNode_var(Root("B"))->GetPdmFileObjInfo(&usInfo), Succeeds());
    EXPECT_EQ(usInfo, "box/CMIArchiveFile");
}

TEST_F(PsnNode, TheFileObjectInfoNeedsAPointerAndAType)
{
    Open(TREE);
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetPdmFileObjInfo(NULL), FailsAssertion("pusPdmFileObjInfo != NULL"));
    const QTBFakeProducts fakes;
    CATUnicodeString usInfo;
    EXPECT_THAT(
        DiagnosisOf([&] { return QTBIPsnNode_var(fakes.Create({.linkResult = E_FAIL}))->GetPdmFileObjInfo(&usInfo); }),
        ElementsAre(Call("QTBFileUtil::GetReferenceFileName"), Call("IsCmiArchiveRoot"), Call("GetPsnNodeType")));
}

TEST_F(PsnNode, NodeInformationIsPrintedOnlyWhenTracing)
{
    Open(TREE);
    {
        const DebugCapture capture;
        EXPECT_THAT(QTBIPsnNode_var(At("P", {"A"}))->PrintNodeInformation(), Succeeds());
        EXPECT_THAT(capture.Lines(),
                    ElementsAre("PSN node information: A (PA) type:[CATProduct] file name:[a.CATProduct]"));
        QTBDebugUtil::s_bGlobalDebugStatus = FALSE;
        EXPECT_THAT(QTBIPsnNode_var(At("P", {"A"}))->PrintNodeInformation(), Succeeds());
        EXPECT_EQ(capture.Lines().size(), 1U);
    }
    const QTBFakeProducts fakes;
    EXPECT_THAT(QTBIPsnNode_var(fakes.Create({.usLinkedFileName = "/data/fake.odd"}))->PrintNodeInformation(),
                FailsCall("QTBFileUtil::GetReferenceFileName"));
}

// Main nodes of PDM parts.

TEST_F(PsnNode, AMainNodeIsAProductWithAPdmStructureNode)
{
    Open(TREE);
    Update(NumberedPart("1", "P") + NumberedPart("2", "PA") + Usage("12", "1", "2", "A"));
    unsigned char bIsMain = FALSE;
    QTBIPdmNode_var spIPdmNode;
    EXPECT_THAT(Extension(Root("P"))->IsPdmPartMainNode(At("P", {"A"}), &bIsMain, &spIPdmNode), Succeeds());
    EXPECT_EQ(bIsMain, TRUE);
    EXPECT_EQ(KeyOf(spIPdmNode), "12");
    EXPECT_THAT(Extension(Root("P"))->IsPdmPartMainNode(At("P", {"B"}), &bIsMain, NULL), Succeeds());
    EXPECT_EQ(bIsMain, FALSE);
}

TEST_F(PsnNode, TheMainNodeIsTheProductOrTheNearestOneAbove)
{
    Open(TREE);
    QTBIPsnNode_var spIPsnNode;
    QTBIPdmNode_var spIPdmNode;
    EXPECT_THAT(Extension(At("P", {"A", "A1"}))->GetPdmPartMainNode(&spIPsnNode, &spIPdmNode), FailsQuietly());
    Update(NumberedPart("1", "P"));
    EXPECT_THAT(Extension(At("P", {"A", "A1"}))->GetPdmPartMainNode(&spIPsnNode, &spIPdmNode), Succeeds());
    EXPECT_TRUE(spIPsnNode == Root("P"));
    EXPECT_EQ(KeyOf(spIPdmNode), "1");
    Update(NumberedPart("2", "PA"));
    EXPECT_THAT(Extension(At("P", {"A", "A1"}))->GetPdmPartMainNode(&spIPsnNode, NULL), Succeeds());
    EXPECT_TRUE(spIPsnNode == At("P", {"A"}));
    Update(NumberedPart("3", "PC"));
    EXPECT_THAT(Extension(At("P", {"A", "A1"}))->GetPdmPartMainNode(&spIPsnNode, NULL), Succeeds());
    EXPECT_TRUE(spIPsnNode == At("P", {"A", "A1"}));
}

TEST_F(PsnNode, MainNodesNeedPointersAndTheLinkToThePdmGraph)
{
    Open(TREE);
    const CATIProduct_var spProduct = Root("P");
    unsigned char bIsMain = FALSE;
    QTBIPsnNode_var spIPsnNode;
    EXPECT_THAT(Extension(spProduct)->IsPdmPartMainNode(spProduct, NULL, NULL),
                FailsAssertion("pbIsPdmPartMainNode != NULL"));
    EXPECT_THAT(Extension(spProduct)->IsPdmPartMainNode(CATIProduct_var(), &bIsMain, NULL),
                LacksInterface("spILinkToQtb"));
    EXPECT_THAT(Extension(spProduct)->GetPdmPartMainNode(NULL, NULL),
                FailsAssertion("pspIPsnNodeOnPdmPartMainNode != NULL"));
    const QTBFault fault("ProdStrucPdmNodeExists");
    EXPECT_THAT(DiagnosisOf([&] { return Extension(spProduct)->GetPdmPartMainNode(&spIPsnNode, NULL); }),
                ElementsAre(Call("spILinkToQtb->ProdStrucPdmNodeExists"), Call("IsPdmPartMainNode")));
}

// PDM nodes of the products below.

// Says that the PDM system knows its product, and counts how often it was asked.
class KnownLink : public QTBELinkToQtbOnASMPRODUCT
{
public:
    HRESULT CorrespondingPdmNodesExist(unsigned char* pbExist, QTBIPdmRelNode_var* pspIPdmRelNode,
                                       QTBIPdmObjNode_var* pspPartObj, QTBIPdmObjNode_var* pspFileObj)
    {
        EXPECT_TRUE(pspIPdmRelNode == NULL && pspPartObj == NULL && pspFileObj == NULL);
        ++s_Calls;
        *pbExist = TRUE;
        return S_OK;
    }
    inline static int s_Calls = 0;
};

TEST_F(PsnNode, TheFirstProductBelowThatHasPdmNodesSettlesIt)
{
    KnownLink::s_Calls = 0;
    const QTBFakeProducts fakes;
    QTBTestLateType known("QTBKnownProduct", "QTBFakeProduct");
    known.Register<TIEQTBILinkToQtb, QTBILinkToQtb, KnownLink>();
    QTBFakeProducts::Data data;
    data.Children.Append(fakes.Create());
    data.Children.Append(QTBFakeProducts::Enter(known, {}));
    data.Children.Append(QTBFakeProducts::Enter(known, {}));
    const CATBaseUnknown_var spProduct = fakes.Create(data);
    unsigned char bHave = FALSE;
    EXPECT_THAT(Extension(spProduct)->SubNodesHaveCorrespondingPdmNodes(&bHave), Succeeds());
    EXPECT_EQ(bHave, TRUE);
    EXPECT_EQ(KnownLink::s_Calls, 1);
}

TEST_F(PsnNode, ProductsBelowAreAskedForNoNodeInParticularAndSoKnowNone)
{
    Open(TREE);
    Update(NumberedPart("2", "PA"));
    unsigned char bHave = TRUE;
    EXPECT_THAT(Extension(Root("P"))->SubNodesHaveCorrespondingPdmNodes(&bHave), Succeeds());
    EXPECT_EQ(bHave, FALSE);
}

TEST_F(PsnNode, ProductsBelowNeedAPointerAndTheLinkToThePdmGraph)
{
    Open(TREE);
    EXPECT_THAT(Extension(Root("P"))->SubNodesHaveCorrespondingPdmNodes(NULL),
                FailsAssertion("pbHavePdmNodes != NULL"));
    unsigned char bHave = FALSE;
    {
        const CATIProduct_var spProduct = Root("P");
        const QTBFault fault("CorrespondingPdmNodesExist");
        EXPECT_THAT(Extension(spProduct)->SubNodesHaveCorrespondingPdmNodes(&bHave),
                    FailsCall("spILinkToQtbOnChildNode->CorrespondingPdmNodesExist"));
    }
    const QTBFakeProducts fakes;
    QTBTestLateType type("QTBPsnNodeOnly");
    type.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>()
        .Register<TIECATIProduct, CATIProduct, QTBFakeProducts::Product>()
        .Register<TIECATIPrdLink, CATIPrdLink, QTBFakeProducts::Link>();
    QTBFakeProducts::Data data;
    data.Children.Append(QTBFakeProducts::Enter(type, {}));
    EXPECT_THAT(Extension(fakes.Create(data))->SubNodesHaveCorrespondingPdmNodes(&bHave),
                LacksInterface("spILinkToQtbOnChildNode"));
}

} // namespace
