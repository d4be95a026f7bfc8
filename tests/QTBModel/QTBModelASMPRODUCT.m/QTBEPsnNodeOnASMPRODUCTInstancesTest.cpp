#include <chrono>

#include <gmock/gmock.h>

#include "QTBDiagnosis.h"
#include "QTBEPsnNodeOnASMPRODUCT.h"
#include "QTBFakeProduct.h"
#include "QTBFaultyProducts.h"
#include "QTBLoadManager.h"
#include "QTBPartInstanceInfo.h"
#include "QTBProductLadder.h"
#include "QTBTestEnvironment.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using namespace QTBDiagnosis;

namespace {

// An instance that was created from a PDM relation.
std::string FromPdm(const std::string& reference, const std::string& name, const std::string& relationKey)
{
    return "<instance of=\"" + reference + "\" name=\"" + name + "\"><property name=\"QtbRelationKey\">" + relationKey +
           "</property></instance>";
}

class ChildInstances : public QTBFaultyProductSession
{
protected:
    // P with the parts A and B below it, in the session and in the PDM graph.
    static void Load()
    {
        Update(NumberedPart("1", "P") + NumberedPart("2", "PA") + NumberedPart("3", "PB") +
               Usage("12", "1", "2", "A.1") + Usage("13", "1", "3", "B.1"));
        Open("<product id=\"p\" file=\"p.CATProduct\" partNumber=\"P\">" + FromPdm("a", "A.1", "12") +
             FromPdm("b", "B.1", "13") +
             R"(</product><product id="a" file="a.CATPart" partNumber="PA"/>
                <product id="b" file="b.CATPart" partNumber="PB"/>
                <product id="c" file="c.CATPart" partNumber="PC"/>)");
    }

    static void Save(const CATBaseUnknown_var& spProduct)
    {
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->SaveCurrentChildInstanceInfoStrings(), Succeeds());
    }

    // The keys saved for a part number, "none" when none were.
    static std::vector<std::string> SavedFor(const char* partNumber)
    {
        CATListValCATUnicodeString keys;
        if (FAILED(g_QTBLoadManager.GetChildInstanceInfosAtLoad(partNumber, &keys))) {
            return {"none"};
        }
        return TextsOf(keys);
    }

    struct Difference
    {
        std::vector<std::string> additional;
        std::vector<std::string> missing;
    };
    static Difference Check(const CATBaseUnknown_var& spProduct, unsigned char bOnlyBomParts = FALSE)
    {
        CATListValCATUnicodeString additional;
        CATListValCATUnicodeString missing;
        additional.Append("former");
        missing.Append("former");
        EXPECT_THAT(
            QTBIPsnNode_var(spProduct)->CheckCurrentChildInstanceInfoLists(&additional, &missing, bOnlyBomParts),
            Succeeds());
        return {TextsOf(additional), TextsOf(missing)};
    }

    static void RemoveFromGraph(const char* key)
    {
        EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph(key, FALSE, FALSE, FALSE, nullptr), Succeeds());
    }

    // The steps of a path: "P/A.1".
    static std::vector<std::string> PathOf(const CATBaseUnknown_var& spProduct,
                                           CATIProduct_var* pspIProductOnMainNode = NULL)
    {
        CATListValQTBPartInstanceInfo path;
        path.Append(QTBPartInstanceInfo());
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetPathToRootPartInstanceInfo(&path, pspIProductOnMainNode),
                    Succeeds());
        std::vector<std::string> steps;
        for (const QTBPartInstanceInfo& step : path) {
            CATUnicodeString usPartNumber;
            CATUnicodeString usInstanceName;
            step.GetInstanceInfo(&usPartNumber, &usInstanceName);
            steps.push_back(ToText(usPartNumber) + "/" + ToText(usInstanceName));
        }
        return steps;
    }
};

// Instance keys.

TEST_F(ChildInstances, KeysComeInTheOrderOfTheChildrenWithTheChildrenBesideThem)
{
    Load();
    EXPECT_THAT(Root("P")->AddChild(Root("PC"), "C.1", NULL), Succeeds());
    CATListValCATUnicodeString keys;
    CATListValCATBaseUnknown_var nodes;
    keys.Append("former");
    nodes.Append(Root("P"));
    EXPECT_THAT(Extension(Root("P"))->GetCurrentDirectChildInstanceInfoStrings(&keys, &nodes, FALSE), Succeeds());
    EXPECT_THAT(TextsOf(keys), ElementsAre("12/A.1", "13/B.1", "/C.1"));
    EXPECT_THAT(NamesOf(nodes), ElementsAre("A.1", "B.1", "C.1"));
    EXPECT_THAT(Extension(Root("P"))->GetCurrentDirectChildInstanceInfoStrings(&keys, NULL, FALSE), Succeeds());
    EXPECT_EQ(keys.Size(), 3);
}

TEST_F(ChildInstances, OnlyBomPartsAreTakenWhenThatIsAskedFor)
{
    Load();
    EXPECT_THAT(Root("P")->AddChild(Root("PC"), "C.1", NULL), Succeeds());
    g_QTBLoadManager.SetPsnReferenceIsAuxFile(Root("PC"), TRUE);
    CATListValCATUnicodeString keys;
    EXPECT_THAT(Extension(Root("P"))->GetCurrentDirectChildInstanceInfoStrings(&keys, NULL, TRUE), Succeeds());
    EXPECT_THAT(TextsOf(keys), ElementsAre("12/A.1", "13/B.1"));
}

TEST_F(ChildInstances, SpecialChildrenCountLikeAllOthers)
{
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="f" name="F.1"/></product>
            <product id="f" file="f.CATProduct" partNumber="FOLDER_1"/>)");
    CATListValCATUnicodeString keys;
    EXPECT_THAT(Extension(Root("P"))->GetCurrentDirectChildInstanceInfoStrings(&keys, NULL, FALSE), Succeeds());
    EXPECT_THAT(TextsOf(keys), ElementsAre("/F.1"));
}

TEST_F(ChildInstances, AChildWithoutInstanceAttributesIsReportedAndLeftOut)
{
    const QTBFakeProducts fakes;
    QTBFakeProducts::Data data;
    data.Children.Append(fakes.Create({.usInstanceName = "One"}));
    data.Children.Append(fakes.Create({.isReference = true}));
    data.Children.Append(fakes.Create({.usInstanceName = "Three"}));
    const CATBaseUnknown_var spParent = fakes.Create(data);
    CATListValCATUnicodeString keys;
    CATListValCATBaseUnknown_var nodes;
    const DebugCapture capture;
    EXPECT_THAT(Extension(spParent)->GetCurrentDirectChildInstanceInfoStrings(&keys, &nodes, FALSE), Succeeds());
    EXPECT_THAT(TextsOf(keys), ElementsAre("/One", "/Three"));
    EXPECT_EQ(nodes.Size(), 2);
    EXPECT_THAT(DiagnosesIn(capture), ElementsAre(Call("QTBPsnTreeUtil::GetInstanceAttributes")));
}

TEST_F(ChildInstances, AChildThatRaisesAnErrorIsTracedAndLeftOut)
{
    const QTBFakeProducts fakes;
    QTBTestLateType type("QTBNoProduct");
    type.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>();
    QTBFakeProducts::Data data;
    data.Children.Append(fakes.Create({.raisesInInstanceName = true}));
    data.Children.Append(type.Create());
    data.Children.Append(fakes.Create({.usInstanceName = "Three"}));
    const CATBaseUnknown_var spParent = fakes.Create(data);
    CATListValCATUnicodeString keys;
    const DebugCapture capture;
    EXPECT_THAT(Extension(spParent)->GetCurrentDirectChildInstanceInfoStrings(&keys, NULL, FALSE), Succeeds());
    EXPECT_THAT(TextsOf(keys), ElementsAre("/Three"));
    const std::string guardText =
        "QTBEPsnNodeOnASMPRODUCT::GetCurrentDirectChildInstanceInfoStrings -> could not process child node";
    EXPECT_THAT(capture.Lines(), ElementsAre(guardText, HasSubstr("FakeERR_1"), HasSubstr("spIProductOnChildNode =="),
                                             guardText, HasSubstr("spIProductOnChildNode")));
}

TEST_F(ChildInstances, KeysNeedAPointerAndChildren)
{
    Load();
    const CATIProduct_var spProduct = Root("P");
    CATListValCATUnicodeString keys;
    EXPECT_THAT(Extension(spProduct)->GetCurrentDirectChildInstanceInfoStrings(NULL, NULL, FALSE),
                FailsAssertion("pDirectChildInstanceInfoStrings != NULL"));
    const QTBFault fault("GetDirectChildren", spProduct);
    EXPECT_THAT(Extension(spProduct)->GetCurrentDirectChildInstanceInfoStrings(&keys, NULL, FALSE),
                FailsCall("GetDirectChildren"));
}

// Saving.

TEST_F(ChildInstances, AProductSavesItsChildrenAndTheirsPerPartNumber)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P">
              <instance of="a" name="A.1"/><instance of="b" name="B.1"/>
            </product>
            <product id="a" file="a.CATProduct" partNumber="PA"><instance of="b" name="B.1"/></product>
            <product id="b" file="b.CATPart" partNumber="PB"/>)");
    Save(Root("P"));
    EXPECT_THAT(SavedFor("P"), ElementsAre("/A.1", "/B.1"));
    EXPECT_THAT(SavedFor("PA"), ElementsAre("/B.1"));
    EXPECT_THAT(SavedFor("PB"), ElementsAre("none"));
}

TEST_F(ChildInstances, TheFirstListSavedForAPartNumberIsKept)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P">
              <instance of="a" name="A.1"/><instance of="b" name="B.1"/>
            </product>
            <product id="a" file="a.CATProduct" partNumber="SAME"><instance of="x" name="First"/></product>
            <product id="b" file="b.CATProduct" partNumber="SAME"><instance of="x" name="Second"/></product>
            <product id="x" file="x.CATPart" partNumber="X"/>)");
    Save(Root("P"));
    EXPECT_THAT(SavedFor("SAME"), ElementsAre("/First"));
    EXPECT_THAT(Root("P")->AddChild(Root("X"), "X.1", NULL), Succeeds());
    Save(Root("P"));
    EXPECT_THAT(SavedFor("P"), ElementsAre("/A.1", "/B.1"));
}

TEST_F(ChildInstances, AnythingButACatProductSavesAndComparesNothing)
{
    Open(R"(<product id="a" file="a.CATPart" partNumber="PA"><instance of="b" name="B.1"/></product>
            <product id="b" file="b.CATPart" partNumber="PB"/>)");
    Save(Root("PA"));
    EXPECT_THAT(SavedFor("PA"), ElementsAre("none"));
    EXPECT_THAT(Check(Root("PA")).additional, IsEmpty());
    EXPECT_THAT(Check(Root("PA")).missing, IsEmpty());
}

TEST_F(ChildInstances, AnArchiveRootSavesNothing)
{
    Load();
    g_QTBLoadManager.SetCatiaFileIsCmiArchiveRoot(Root("P"), TRUE, "box.cmi");
    Save(Root("P"));
    EXPECT_THAT(SavedFor("P"), ElementsAre("none"));
}

TEST_F(ChildInstances, AProductWithoutPartNumberSavesNothingAndEndsThere)
{
    const QTBFakeProducts fakes;
    QTBFakeProducts::Data data;
    data.Children.Append(fakes.Create({.usPartNumber = "BELOW"}));
    const CATBaseUnknown_var spProduct = fakes.Create(data);
    Save(spProduct);
    EXPECT_THAT(SavedFor("BELOW"), ElementsAre("none"));
    EXPECT_THAT(Check(spProduct).additional, IsEmpty());
    QTBFakeProducts::DataOf(spProduct).usPartNumber = "P";
    Save(spProduct);
    EXPECT_THAT(SavedFor("BELOW"), IsEmpty());
}

TEST_F(ChildInstances, AChildThatCannotSaveIsTracedAndTheOthersSave)
{
    const QTBFakeProducts fakes;
    QTBTestLateType plain("QTBProductOnly");
    plain.Register<TIECATIProduct, CATIProduct, QTBFakeProducts::Product>()
        .Register<TIECATIPrdLink, CATIPrdLink, QTBFakeProducts::Link>()
        .Register<TIECATIPrdProperties, CATIPrdProperties, QTBFakeProducts::Properties>();
    QTBFakeProducts::Data data{.usPartNumber = "P"};
    data.Children.Append(QTBFakeProducts::Enter(plain, {.usInstanceName = "One"}));
    data.Children.Append(fakes.Create({.usInstanceName = "Two", .usLinkedFileName = "/data/fake.odd"}));
    data.Children.Append(fakes.Create({.usPartNumber = "P3", .usInstanceName = "Three"}));
    const CATBaseUnknown_var spProduct = fakes.Create(data);
    const DebugCapture capture;
    Save(spProduct);
    EXPECT_THAT(SavedFor("P"), ElementsAre("/One", "/Two", "/Three"));
    EXPECT_THAT(SavedFor("P3"), IsEmpty());
    EXPECT_THAT(DiagnosesIn(capture),
                ElementsAre(Handle("spIPsnNodeOnDirectChildNode"), Call("QTBFileUtil::GetReferenceFileName"),
                            Call("GetPsnNodeType"),
                            Call("spIPsnNodeOnDirectChildNode->SaveCurrentChildInstanceInfoStrings")));
    EXPECT_THAT(capture.Lines(),
                Contains("QTBEPsnNodeOnASMPRODUCT::SaveCurrentChildInstanceInfoStrings -> could not process child node")
                    .Times(2));
}

TEST_F(ChildInstances, AProductThatCannotTellItsTypeCannotSave)
{
    const QTBFakeProducts fakes;
    EXPECT_THAT(DiagnosisOf([&] {
                    return QTBIPsnNode_var(fakes.Create({.usLinkedFileName = "/data/fake.odd"}))
                        ->SaveCurrentChildInstanceInfoStrings();
                }),
                ElementsAre(Call("QTBFileUtil::GetReferenceFileName"), Call("GetPsnNodeType")));
}

TEST_F(ChildInstances, ADeepStructureIsSavedWithoutRecursion)
{
    constexpr int LEVELS = 20000;
    std::string xml;
    for (int i = 1; i <= LEVELS; ++i) {
        const std::string number = std::to_string(i);
        xml += "<product id=\"" + number + "\" file=\"" + number + ".CATProduct\" partNumber=\"P" + number + "\">" +
               (i < LEVELS ? "<instance of=\"" + std::to_string(i + 1) + "\" name=\"I\"/>" : "") + "</product>";
    }
    Open(xml);
    Save(Root("P1"));
    EXPECT_THAT(SavedFor("P19999"), ElementsAre("/I"));
    EXPECT_THAT(SavedFor("P20000"), IsEmpty());
}

TEST_F(ChildInstances, TheSavingOfALadderOfSharedProductsEndsAtTheLimit)
{
    Open(QTBProductLadder());
    const auto save = [](const char* partNumber) {
        return QTBIPsnNode_var(Root(partNumber))->SaveCurrentChildInstanceInfoStrings();
    };
    const QTBTestEnvironment limit("QTB_MAX_PRODUCTS", "31");
    EXPECT_THAT(save("L36"), Succeeds()) << "four levels of two are 31 products with the top";
    EXPECT_THAT(SavedFor("L39"), ElementsAre("/x", "/y"));
    ASSERT_THAT(save("L35"), FailsWith("MaxProductsReachedERR_2010", "31"));
    EXPECT_THAT(SavedFor("L35"), ElementsAre("/x", "/y")) << "the top saves before what is below it";
    EXPECT_THAT(save("L0"), FailsWith("MaxProductsReachedERR_2010", "31"));
}

// Comparing.

TEST_F(ChildInstances, UnchangedChildrenAreNeitherAdditionalNorMissing)
{
    Load();
    Save(Root("P"));
    EXPECT_THAT(Check(Root("P")).additional, IsEmpty());
    EXPECT_THAT(Check(Root("P")).missing, IsEmpty());
}

TEST_F(ChildInstances, AChildAddedAfterLoadIsAdditional)
{
    Load();
    Save(Root("P"));
    EXPECT_THAT(Root("P")->AddChild(Root("PC"), "C.1", NULL), Succeeds());
    EXPECT_THAT(Root("P")->AddChild(Root("PC"), "C.1", NULL), Succeeds());
    EXPECT_THAT(Check(Root("P")).additional, ElementsAre("/C.1"));
    EXPECT_THAT(Check(Root("P")).missing, IsEmpty());
}

TEST_F(ChildInstances, AChildRemovedAfterLoadIsMissingWhileItsRelationExists)
{
    Load();
    Save(Root("P"));
    EXPECT_THAT(Root("P")->RemoveChild(At("P", {"B.1"})), Succeeds());
    EXPECT_THAT(Check(Root("P")).additional, IsEmpty());
    EXPECT_THAT(Check(Root("P")).missing, ElementsAre("13/B.1"));
    RemoveFromGraph("13");
    const DebugCapture capture;
    EXPECT_THAT(Check(Root("P")).missing, IsEmpty());
    EXPECT_THAT(capture.Lines(),
                Contains("QTBEPsnNodeOnASMPRODUCT::CompareChildInstanceInfoStrings -> <13/B.1> does not have a PDM "
                         "node, not adding it to pMissingPsnNodes."));
}

TEST_F(ChildInstances, AChildThatNowIsAnotherPartIsBothAdditionalAndMissing)
{
    Load();
    Save(Root("P"));
    EXPECT_THAT(Root("PB")->SetPartNumber("OTHER"), Succeeds());
    RemoveFromGraph("3");
    const DebugCapture capture;
    const Difference difference = Check(Root("P"));
    EXPECT_THAT(difference.additional, ElementsAre("13/B.1"));
    EXPECT_THAT(difference.missing, ElementsAre("13/B.1"));
    EXPECT_THAT(capture.Lines(),
                Contains("QTBEPsnNodeOnASMPRODUCT::CompareChildInstanceInfoStrings -> Instance name found, but no PDM "
                         "object node -> probably different part number -> adding to both additional and missing "
                         "nodes"));
}

TEST_F(ChildInstances, AChildWithAPartButNoRelationIsBothAdditionalAndMissing)
{
    Load();
    Save(Root("P"));
    RemoveFromGraph("13");
    const DebugCapture capture;
    const Difference difference = Check(Root("P"));
    EXPECT_THAT(difference.additional, ElementsAre("13/B.1"));
    EXPECT_THAT(difference.missing, ElementsAre("13/B.1"));
    EXPECT_THAT(capture.Text(), Not(HasSubstr("Instance name found")));
}

// Finds the nodes that a test names, whatever product is asked.
class GivenLink : public QTBELinkToQtbOnASMPRODUCT
{
public:
    HRESULT CorrespondingPdmNodesExist(unsigned char* pbExist, QTBIPdmRelNode_var* pspRel, QTBIPdmObjNode_var* pspPart,
                                       QTBIPdmObjNode_var*)
    {
        *pbExist = TRUE;
        *pspRel = s_spRel;
        *pspPart = s_spPart;
        return S_OK;
    }
    inline static QTBIPdmRelNode_var s_spRel;
    inline static QTBIPdmObjNode_var s_spPart;
};

class GivenNodes : public ChildInstances
{
protected:
    void TearDown() override
    {
        GivenLink::s_spRel = NULL_var;
        GivenLink::s_spPart = NULL_var;
        ChildInstances::TearDown();
    }

    // What becomes of a child whose key was saved and that has that relation and part.
    static Difference Compare(const QTBIPdmRelNode_var& spRel, const QTBIPdmObjNode_var& spPart)
    {
        GivenLink::s_spRel = spRel;
        GivenLink::s_spPart = spPart;
        const QTBFakeProducts fakes;
        QTBTestLateType given("QTBGivenProduct", "QTBFakeProduct");
        given.Register<TIEQTBILinkToQtb, QTBILinkToQtb, GivenLink>();
        CATListValCATUnicodeString saved;
        saved.Append("1/One");
        CATListValCATBaseUnknown_var nodes;
        nodes.Append(QTBFakeProducts::Enter(given, {}));
        CATListValCATUnicodeString additional;
        CATListValCATUnicodeString missing;
        EXPECT_THAT(
            Extension(fakes.Create())->CompareChildInstanceInfoStrings(saved, nodes, saved, &additional, &missing),
            Succeeds());
        return {TextsOf(additional), TextsOf(missing)};
    }
};

TEST_F(GivenNodes, AChildOfARelationWithoutInstanceNameIsAdditional)
{
    Update(NumberedPart("1", "P") + NumberedPart("2", "PA") + PartPart("12", "1", "2"));
    const Difference difference = Compare(RelNode("12"), ObjNode("2"));
    EXPECT_THAT(difference.additional, ElementsAre("1/One"));
    EXPECT_THAT(difference.missing, IsEmpty());
}

TEST_F(GivenNodes, AChildOfAnotherPartThanTheRelationsIsAdditional)
{
    Update(NumberedPart("1", "P") + NumberedPart("2", "PA") + NumberedPart("3", "PB") + Usage("12", "1", "2", "One"));
    EXPECT_THAT(Compare(RelNode("12"), ObjNode("3")).additional, ElementsAre("1/One"));
    EXPECT_THAT(Compare(RelNode("12"), ObjNode("2")).additional, IsEmpty());
}

TEST_F(GivenNodes, PartNumbersThatCannotBeReadAreNotCompared)
{
    Update(NumberedPart("1", "P") + NumberedPart("2", "PA") + Part("3") + Usage("12", "1", "2", "One") +
           Usage("13", "1", "3", "One"));
    EXPECT_THAT(Compare(RelNode("12"), ObjNode("3")).additional, IsEmpty());
    EXPECT_THAT(Compare(RelNode("13"), ObjNode("2")).additional, IsEmpty());
}

TEST_F(ChildInstances, ATwinIsLookedAtForEachChildThatHasTheKey)
{
    Load();
    CATListValCATUnicodeString keys;
    keys.Append("x/One");
    keys.Append("x/One");
    CATListValCATBaseUnknown_var nodes;
    const CATIProduct_var spUnknown = Root("PC");
    nodes.Append(spUnknown);
    nodes.Append(spUnknown);
    CATListValCATUnicodeString additional;
    CATListValCATUnicodeString missing;
    EXPECT_THAT(Extension(Root("P"))->CompareChildInstanceInfoStrings(keys, nodes, keys, &additional, &missing),
                Succeeds());
    EXPECT_THAT(TextsOf(additional), ElementsAre("x/One", "x/One"));
    EXPECT_THAT(TextsOf(missing), ElementsAre("x/One", "x/One"));
}

TEST_F(ChildInstances, AProductThatWasNotSavedHasAllItsChildrenAdditional)
{
    Load();
    const DebugCapture capture;
    EXPECT_THAT(Check(Root("P")).additional, ElementsAre("12/A.1", "13/B.1"));
    EXPECT_THAT(Check(Root("P")).missing, IsEmpty());
    EXPECT_THAT(capture.Lines(), Contains("QTBEPsnNodeOnASMPRODUCT::CheckCurrentChildInstanceInfoLists -> part number "
                                          "[P] was not saved."));
}

TEST_F(ChildInstances, AuxiliaryFilesAreNotComparedWhenOnlyBomPartsAre)
{
    Load();
    Save(Root("P"));
    EXPECT_THAT(Root("P")->AddChild(Root("PC"), "C.1", NULL), Succeeds());
    g_QTBLoadManager.SetPsnReferenceIsAuxFile(Root("PC"), TRUE);
    EXPECT_THAT(Check(Root("P"), TRUE).additional, IsEmpty());
    EXPECT_THAT(Check(Root("P"), FALSE).additional, ElementsAre("/C.1"));
}

TEST_F(ChildInstances, ComparingDoesNotChangeWhatWasSaved)
{
    Load();
    Save(Root("P"));
    EXPECT_THAT(Root("P")->RemoveChild(At("P", {"B.1"})), Succeeds());
    Check(Root("P"));
    EXPECT_THAT(SavedFor("P"), ElementsAre("12/A.1", "13/B.1"));
}

TEST_F(ChildInstances, ComparingNeedsPointersTypesAndTheLinkToThePdmGraph)
{
    Load();
    Save(Root("P"));
    const CATIProduct_var spProduct = Root("P");
    const QTBIPsnNode_var spIPsnNode(spProduct);
    CATListValCATUnicodeString keys;
    CATListValCATBaseUnknown_var nodes;
    EXPECT_THAT(spIPsnNode->CheckCurrentChildInstanceInfoLists(NULL, &keys, FALSE),
                FailsAssertion("pAdditionalPsnNodes != NULL"));
    EXPECT_THAT(spIPsnNode->CheckCurrentChildInstanceInfoLists(&keys, NULL, FALSE),
                FailsAssertion("pMissingPsnNodes != NULL"));
    EXPECT_THAT(Extension(spProduct)->CompareChildInstanceInfoStrings(keys, nodes, keys, NULL, &keys),
                FailsAssertion("pAdditionalPsnNodes != NULL"));
    EXPECT_THAT(Extension(spProduct)->CompareChildInstanceInfoStrings(keys, nodes, keys, &keys, NULL),
                FailsAssertion("pMissingPsnNodes != NULL"));
    {
        const QTBFault fault("CorrespondingPdmNodesExist");
        EXPECT_THAT(DiagnosisOf([&] { return spIPsnNode->CheckCurrentChildInstanceInfoLists(&keys, &keys, FALSE); }),
                    ElementsAre(Call("spILinkToQtbOnCurrentChildNode->CorrespondingPdmNodesExist"),
                                Call("CompareChildInstanceInfoStrings")));
    }
    {
        const QTBFault fault("GetDirectChildren", spProduct);
        EXPECT_THAT(DiagnosisOf([&] { return spIPsnNode->CheckCurrentChildInstanceInfoLists(&keys, &keys, FALSE); }),
                    ElementsAre(Call("GetDirectChildren"), Call("GetCurrentDirectChildInstanceInfoStrings")));
    }
    const QTBFakeProducts fakes;
    CATListValCATUnicodeString saved;
    saved.Append("1/One");
    nodes.Append(fakes.CreatePlain());
    EXPECT_THAT(Extension(spProduct)->CompareChildInstanceInfoStrings(saved, nodes, saved, &keys, &keys),
                LacksInterface("spILinkToQtbOnCurrentChildNode"));
    EXPECT_THAT(DiagnosisOf([&] {
                    return QTBIPsnNode_var(fakes.Create({.usLinkedFileName = "/data/fake.odd"}))
                        ->CheckCurrentChildInstanceInfoLists(&keys, &saved, FALSE);
                }),
                ElementsAre(Call("QTBFileUtil::GetReferenceFileName"), Call("GetPsnNodeType")));
}

TEST_F(ChildInstances, ManyChildrenAreComparedInReasonableTime)
{
    constexpr int CHILDREN = 20000;
    CATListValCATUnicodeString saved;
    CATListValCATUnicodeString current;
    CATListValCATBaseUnknown_var nodes;
    Load();
    for (int i = 0; i < CHILDREN; ++i) {
        saved.Append(CATUnicodeString(("s" + std::to_string(i)).c_str()));
        current.Append(CATUnicodeString(("c" + std::to_string(i)).c_str()));
        nodes.Append(Root("P"));
    }
    CATListValCATUnicodeString additional;
    CATListValCATUnicodeString missing;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(Extension(Root("P"))->CompareChildInstanceInfoStrings(current, nodes, saved, &additional, &missing),
                Succeeds());
    EXPECT_EQ(additional.Size(), CHILDREN);
    EXPECT_EQ(missing.Size(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

// The path to the root part.

constexpr const char* DEEP = R"(
    <product id="p" file="p.CATProduct" partNumber="P"><instance of="a" name="A.1"/></product>
    <product id="a" file="a.CATProduct" partNumber="PA"><instance of="b" name="B.1"/></product>
    <product id="b" file="b.CATPart" partNumber="PB"/>)";

TEST_F(ChildInstances, AProductDirectlyUnderTheRootPartHasAPathOfOneStep)
{
    Open(DEEP);
    Update(NumberedPart("1", "P") + NumberedPart("2", "PA") + Usage("12", "1", "2", "A.1"));
    CATIProduct_var spMainNode;
    EXPECT_THAT(PathOf(At("P", {"A.1"}), &spMainNode), ElementsAre("P/A.1"));
    EXPECT_TRUE(spMainNode == At("P", {"A.1"}));
}

TEST_F(ChildInstances, ThePathBeginsAtTheRoot)
{
    Open(DEEP);
    Update(NumberedPart("3", "PB"));
    EXPECT_THAT(PathOf(At("P", {"A.1", "B.1"})), ElementsAre("P/A.1", "PA/B.1"));
}

TEST_F(ChildInstances, ARootPartHasAnEmptyPath)
{
    Open(DEEP);
    Update(NumberedPart("1", "P"));
    CATIProduct_var spMainNode;
    EXPECT_THAT(PathOf(Root("P"), &spMainNode), IsEmpty());
    EXPECT_TRUE(spMainNode == Root("P"));
}

TEST_F(ChildInstances, AProductThatIsNoPdmPartHasThePathOfTheNearestOneAbove)
{
    Open(DEEP);
    Update(NumberedPart("2", "PA"));
    CATIProduct_var spMainNode;
    EXPECT_THAT(PathOf(At("P", {"A.1", "B.1"}), &spMainNode), ElementsAre("P/A.1"));
    EXPECT_TRUE(spMainNode == At("P", {"A.1"}));
}

TEST_F(ChildInstances, WithoutPdmPartAboveThereIsNoPath)
{
    Open(DEEP);
    CATListValQTBPartInstanceInfo path;
    EXPECT_THAT(QTBIPsnNode_var(At("P", {"A.1"}))->GetPathToRootPartInstanceInfo(&path, NULL), FailsQuietly());
    EXPECT_THAT(QTBIPsnNode_var(At("P", {"A.1"}))->GetPathToRootPartInstanceInfo(NULL, NULL),
                FailsAssertion("pPathToRootPartInstanceInfoList != NULL"));
}

TEST_F(ChildInstances, SkippedFathersAreNoSteps)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="f" name="F.1"/></product>
            <product id="f" file="f.CATProduct" partNumber="FOLDER_1"><instance of="b" name="B.1"/></product>
            <product id="b" file="b.CATPart" partNumber="PB"/>)");
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    Update(NumberedPart("3", "PB"));
    EXPECT_THAT(PathOf(At("P", {"F.1", "B.1"})), ElementsAre("P/B.1"));
}

TEST_F(ChildInstances, APathNeedsInstanceNamesAndTheLinkToThePdmGraph)
{
    Open(DEEP);
    CATListValQTBPartInstanceInfo path;
    Update(NumberedPart("3", "FAKE"));
    const QTBFakeProducts fakes;
    const CATBaseUnknown_var spFather = fakes.Create({.usPartNumber = "FATHER"});
    // An instance needs its name for its PDM structure node too; only a reference can get as far as its own name.
    const CATBaseUnknown_var spProduct =
        fakes.Create({.spFather = spFather, .isReference = true, .usPartNumber = "FAKE", .instanceNameResult = E_FAIL});
    EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetPathToRootPartInstanceInfo(&path, NULL),
                FailsCall("spIProductOnCurrentNode->GetPrdInstanceName"));
    const QTBFault fault("ProdStrucPdmNodeExists");
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetPathToRootPartInstanceInfo(&path, NULL),
                FailsCall("spILinkToQtb->ProdStrucPdmNodeExists"));
}

} // namespace
