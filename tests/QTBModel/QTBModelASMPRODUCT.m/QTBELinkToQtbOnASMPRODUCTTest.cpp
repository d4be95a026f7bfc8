#include "QTBELinkToQtbOnASMPRODUCT.h"

#include <gmock/gmock.h>

#include "QTBEditedSchema.h"
#include "QTBFakeProduct.h"
#include "QTBILinkToQtb.h"
#include "QTBLoadManager.h"
#include "QTBMatchers.h"
#include "QTBProductSession.h"
#include "QTBPsnTreeUtil.h"

namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* GET = "QTBELinkToQtbOnASMPRODUCT::GetCatiaPartNumberForLink -> ";

// P with the part B (N2), the visualized V and the part in a document that was never saved.
class LinkToQtb : public QTBProductSession
{
protected:
    void SetUp() override
    {
        QTBProductSession::SetUp();
        Open(R"(
            <product id="p" file="p.CATProduct" partNumber="N1">
              <instance of="b" name="B.1"/><instance of="v" name="V.1"/><instance of="n" name="N.1"/>
            </product>
            <product id="b" file="b.CATPart" partNumber="N2"/>
            <product id="v" file="v.CATPart" shape="v.cgr" partNumber="N3" link="visualization"/>
            <product id="n" type="CATPart"/>)");
    }

    static std::string PartNumberOf(const CATIProduct_var& spProduct, unsigned char bLoad = FALSE)
    {
        CATUnicodeString usPartNumber;
        EXPECT_THAT(QTBILinkToQtb_var(spProduct)->GetCatiaPartNumberForLink(&usPartNumber, bLoad), Succeeds());
        return ToText(usPartNumber);
    }
    static void Link(const CATIProduct_var& spProduct, const char* partNumber)
    {
        EXPECT_THAT(QTBILinkToQtb_var(spProduct)->SetCatiaPartNumberForLink(partNumber), Succeeds());
    }
    static std::string WithPrefix(const std::string& text) { return GET + text; }

    // The structure node with the part behind it: "AB>B", "B>B".
    static std::string StructureOf(const CATIProduct_var& spProduct)
    {
        unsigned char bExists = 7;
        QTBIPdmNode_var spIPdmNode;
        QTBIPdmObjNode_var spIPdmObjNodeOnPart;
        EXPECT_THAT(QTBILinkToQtb_var(spProduct)->ProdStrucPdmNodeExists(&bExists, &spIPdmNode, &spIPdmObjNodeOnPart),
                    Succeeds());
        EXPECT_LE(bExists, TRUE);
        EXPECT_EQ(bExists != FALSE, spIPdmNode != NULL_var);
        EXPECT_EQ(bExists != FALSE, spIPdmObjNodeOnPart != NULL_var);
        return bExists != FALSE ? KeyOf(spIPdmNode) + ">" + KeyOf(spIPdmObjNodeOnPart) : "none";
    }
    static std::string FileNodeOf(const CATIProduct_var& spProduct)
    {
        unsigned char bExists = 7;
        QTBIPdmNode_var spIPdmNode;
        EXPECT_THAT(QTBILinkToQtb_var(spProduct)->CatiaFilePdmNodeExists(&bExists, &spIPdmNode), Succeeds());
        EXPECT_LE(bExists, TRUE);
        EXPECT_EQ(bExists != FALSE, spIPdmNode != NULL_var);
        return bExists != FALSE ? KeyOf(spIPdmNode) : "none";
    }
    // The file-to-file relation, with "differs" behind it when name or version do.
    static std::string FileStructureOf(const CATIProduct_var& spProduct)
    {
        unsigned char bExists = 7;
        unsigned char bDiffers = 7;
        QTBIPdmNode_var spIPdmNode;
        EXPECT_THAT(QTBILinkToQtb_var(spProduct)->FileStrucPdmNodeExists(&bExists, &spIPdmNode, &bDiffers), Succeeds());
        EXPECT_LE(bExists, TRUE);
        EXPECT_LE(bDiffers, TRUE);
        EXPECT_EQ(bExists != FALSE, spIPdmNode != NULL_var);
        return (bExists != FALSE ? KeyOf(spIPdmNode) : "none") + (bDiffers != FALSE ? " differs" : "");
    }
    // Relation, part and file that correspond, "-" for each that does not; "none" in front when nothing does.
    static std::string AllNodesOf(const CATIProduct_var& spProduct)
    {
        unsigned char bExist = 7;
        QTBIPdmRelNode_var spRelation = RelNode("AB");
        QTBIPdmObjNode_var spPart = ObjNode("A");
        QTBIPdmObjNode_var spFile = spPart;
        EXPECT_THAT(QTBILinkToQtb_var(spProduct)->CorrespondingPdmNodesExist(&bExist, &spRelation, &spPart, &spFile),
                    Succeeds());
        EXPECT_LE(bExist, TRUE);
        const auto keyOf = [](const CATBaseUnknown_var& spNode) { return spNode != NULL_var ? KeyOf(spNode) : "-"; };
        return (bExist != FALSE ? "" : "none ") + keyOf(spRelation) + " " + keyOf(spPart) + " " + keyOf(spFile);
    }

    static void UseFileStructure()
    {
        QTBLoadEditedSchema({{R"(bomPartStructure="true")", R"(bomPartStructure="false")"}});
    }
    static std::string FileUsage(std::string_view key, std::string_view leftKey, std::string_view rightKey,
                                 std::string_view instanceName)
    {
        return Relation("FileFile", key, leftKey, rightKey,
                        Attribute("Class1", "CATProductFile") + Attribute("Class2", "CATPartFile") +
                            Attribute("InstanceName", instanceName));
    }
};

TEST_F(LinkToQtb, SettingANumberWritesItToTheProductAndTellsOfAChange)
{
    const CATIProduct_var spProduct = Root("N1");
    const DebugCapture capture;
    Link(spProduct, "N1");
    EXPECT_THAT(capture.Lines(), IsEmpty());
    Link(spProduct, "N9");
    EXPECT_THAT(capture.Lines(), Contains("QTBELinkToQtbOnASMPRODUCT::SetCatiaPartNumberForLink -> current PSN part "
                                          "number:[N1], new part number:[N9]"));
    EXPECT_EQ(ToText(spProduct->GetPartNumber()), "N9");
}

TEST_F(LinkToQtb, TheNumberOfTheCadSystemWinsAndDifferencesAreTold)
{
    const CATIProduct_var spProduct = Root("N1");
    EXPECT_EQ(PartNumberOf(spProduct), "N1");
    Link(spProduct, "N8");
    spProduct->SetPartNumber("N9");
    const DebugCapture capture;
    EXPECT_EQ(PartNumberOf(spProduct), "N9");
    EXPECT_THAT(capture.Lines(), IsSupersetOf({WithPrefix("part number (PSN) has changed from [N1] to [N9]"),
                                               WithPrefix("part number (PDM):[N8], part number (PSN):[N9]")}));
}

TEST_F(LinkToQtb, AVisualizedProductHasItsNumberFromTheFileNameUntilItIsLoaded)
{
    const CATIProduct_var spProduct = At("N1", {"V.1"});
    {
        const DebugCapture capture;
        EXPECT_EQ(PartNumberOf(spProduct), "v");
        EXPECT_THAT(capture.Lines(),
                    IsSupersetOf({WithPrefix("CATPart in visualization mode"),
                                  WithPrefix("getting the part number from the file name [v.CATPart]")}));
    }
    const DebugCapture capture;
    EXPECT_EQ(PartNumberOf(spProduct, TRUE), "N3");
    EXPECT_THAT(capture.Lines(), Contains(WithPrefix("loading the CATIA document")));
}

TEST_F(LinkToQtb, AVisualizedProductHasTheNumberThatItWasLinkedTo)
{
    const CATIProduct_var spProduct = At("N1", {"V.1"});
    QTBILinkToQtb_var(spProduct)->SetCatiaPartNumberForLink("N7");
    EXPECT_EQ(PartNumberOf(spProduct), "N7");
}

TEST_F(LinkToQtb, AProductWithoutNumberAndFileHasNone)
{
    const CATIProduct_var spProduct = At("N1", {"N.1"});
    const DebugCapture capture;
    CATUnicodeString usPartNumber;
    EXPECT_THAT(QTBILinkToQtb_var(spProduct)->GetCatiaPartNumberForLink(&usPartNumber, FALSE), FailsQuietly());
    EXPECT_THAT(capture.Lines(), IsSupersetOf({WithPrefix("getting the part number from the file name []"),
                                               WithPrefix("usFileName == \"\" !")}));
}

TEST_F(LinkToQtb, AProductThatLostItsNumberHasTheOneItHadBeforeTheOneItWasLinkedTo)
{
    const QTBFakeProducts fakes;
    const CATBaseUnknown_var spProduct = fakes.Create({.usPartNumber = "R"});
    EXPECT_EQ(PartNumberOf(spProduct), "R");
    Link(spProduct, "L");
    QTBFakeProducts::DataOf(spProduct).usPartNumber = "";
    const DebugCapture capture;
    EXPECT_EQ(PartNumberOf(spProduct, TRUE), "R");
    EXPECT_THAT(capture.Lines(), IsSupersetOf({WithPrefix("CATPart in visualization mode"),
                                               WithPrefix("part number (PDM):[L], part number (PSN):[R]")}));
    EXPECT_THAT(capture.Lines(), Not(Contains(WithPrefix("loading the CATIA document"))));
}

TEST_F(LinkToQtb, AProductThatNeverHadANumberHasTheOneItWasLinkedToBeforeItsDocumentIsLoaded)
{
    const QTBFakeProducts fakes;
    const CATBaseUnknown_var spProduct = fakes.Create({});
    Link(spProduct, "L");
    const DebugCapture capture;
    EXPECT_EQ(PartNumberOf(spProduct, TRUE), "L");
    EXPECT_THAT(capture.Lines(), Not(Contains(WithPrefix("loading the CATIA document"))));
}

TEST_F(LinkToQtb, ARelationOfTheInstanceNameIsRejectedWhenItPlacesAnotherPart)
{
    Update(NumberedPart("A", "N1") + NumberedPart("B", "N2") + NumberedPart("C", "Other") +
           Usage("AC", "A", "C", "B.1"));
    const DebugCapture capture;
    EXPECT_EQ(StructureOf(At("N1", {"B.1"})), "B>B") << "the part itself stands in";
    EXPECT_THAT(capture.Lines(),
                IsSupersetOf({"QTBELinkToQtbOnASMPRODUCT::GetQtbStructureNodes -> ",
                              "Wrong part number (same instance name, different part numbers -> different nodes)",
                              "part numbers:'N2'(PSN) / 'Other'(PDM)"}));
}

TEST_F(LinkToQtb, ARelationOfTheInstanceNameIsGivenWithItsPartWhenItPlacesThatPart)
{
    Update(NumberedPart("A", "N1") + NumberedPart("B", "N2") + Usage("AB", "A", "B", "B.1"));
    const DebugCapture capture;
    EXPECT_EQ(StructureOf(At("N1", {"B.1"})), "AB>B");
    EXPECT_EQ(AllNodesOf(At("N1", {"B.1"})), "AB B -");
    EXPECT_THAT(capture.Text(), Not(HasSubstr("Wrong part number")));
}

TEST_F(LinkToQtb, AnInstanceWithoutReadableTypeAndFatherMakesTheQuestionForItsStructureFail)
{
    const QTBFakeProducts fakes;
    for (const bool isReference : {false, true}) {
        // Whatever the product is: of an unknown type it counts as an instance.
        const CATBaseUnknown_var spProduct =
            fakes.Create({.isReference = isReference, .usPartNumber = "N1", .linkResult = E_FAIL});
        unsigned char bExists = TRUE;
        const DebugCapture capture;
        EXPECT_THAT(QTBILinkToQtb_var(spProduct)->ProdStrucPdmNodeExists(&bExists, nullptr, nullptr),
                    FailsCall("spIPsnNodeOnThis->GetFatherProduct"));
        EXPECT_EQ(bExists, FALSE);
        EXPECT_THAT(
            capture.Lines(),
            Contains("QTBELinkToQtbOnASMPRODUCT::ProdStrucPdmNodeExists -> spIPsnNodeOnThis->GetPsnNodeType !"));
    }
}

// A product that is there beside one whose document is missing, with counterparts in the graph of both.
class LinkToQtbOfBrokenLink : public LinkToQtb
{
protected:
    static void OpenBoth()
    {
        Open(R"(
            <product id="w" file="w.CATProduct" partNumber="W">
              <instance of="x" name="X.1"/><instance of="y" name="Y.1"/>
            </product>
            <product id="x" file="x.CATPart" link="broken"/>
            <product id="y" file="y.CATPart" partNumber="y"/>)");
        Update(NumberedPart("A", "W") + File("CATProductFile", "FA", "w.CATProduct"));
        for (const std::string name : {"X", "Y"}) {
            const std::string number = name == "X" ? "x" : "y";
            Update(NumberedPart(name, number) + Usage("A" + name, "A", name, name + ".1") +
                   File("CATPartFile", "F" + name, number + ".CATPart", Attribute("PartNumber", number)) +
                   FileUsage("FA" + name, "FA", "F" + name, name + ".1"));
            EXPECT_THAT(QTBPsnTreeUtil::SetInstanceAttributes(At("W", {name + ".1"}), ("FA" + name).c_str(),
                                                              (name + ".1").c_str()),
                        Succeeds());
        }
    }
};

TEST_F(LinkToQtbOfBrokenLink, HasNeitherStructureNorFileWhateverTheGraphHolds)
{
    OpenBoth();
    EXPECT_EQ(StructureOf(At("W", {"Y.1"})), "AY>Y");
    EXPECT_EQ(FileNodeOf(At("W", {"Y.1"})), "FY");
    EXPECT_EQ(StructureOf(At("W", {"X.1"})), "none");
    EXPECT_EQ(FileNodeOf(At("W", {"X.1"})), "none");
    EXPECT_EQ(FileStructureOf(At("W", {"X.1"})), "none");
    EXPECT_EQ(AllNodesOf(At("W", {"X.1"})), "none - - -");
}

TEST_F(LinkToQtbOfBrokenLink, HasNoPlaceInTheFileStructureEither)
{
    UseFileStructure();
    OpenBoth();
    EXPECT_EQ(FileStructureOf(At("W", {"Y.1"})), "FAY");
    EXPECT_EQ(FileStructureOf(At("W", {"X.1"})), "none");
    EXPECT_EQ(AllNodesOf(At("W", {"X.1"})), "none - - -");
}

TEST_F(LinkToQtb, ADrawingIsFoundByItsFileNameAndOtherwiseByItsPartNumber)
{
    Open(R"(<product id="d" file="d.CATDrawing" partNumber="ND"/>)");
    EXPECT_EQ(FileNodeOf(Root("ND")), "none");
    Update(File("CATPartFile", "ByNumber", "other.CATPart", Attribute("PartNumber", "ND")));
    EXPECT_EQ(FileNodeOf(Root("ND")), "ByNumber");
    Update(File("CATDrawingFile", "ByName", "d.CATDrawing"));
    EXPECT_EQ(FileNodeOf(Root("ND")), "ByName");
    Update(File("CATPartFile", "ByNumber", "other.CATPart", Attribute("PartNumber", "ND")));
    EXPECT_EQ(FileNodeOf(Root("ND")), "ByName") << "the name comes first, whatever was read last";
}

TEST_F(LinkToQtb, AFileInAnotherVersionThanThatOfItsNumberIsToldAndCountsAsNoPart)
{
    UseFileStructure();
    const auto file = [](std::string_view key, std::string_view version) {
        return File("CATPartFile", key, "b.CATPart", Attribute("PartNumber", "N2") + Info({{"QtbVersion", version}}));
    };
    Update(File("CATProductFile", "FA", "p.CATProduct") + file("FB1", "1") + FileUsage("FAB", "FA", "FB1", "B.1"));
    const CATIProduct_var spProduct = At("N1", {"B.1"});
    EXPECT_THAT(QTBPsnTreeUtil::SetInstanceAttributes(spProduct, "FAB", "B.1"), Succeeds());
    EXPECT_EQ(FileStructureOf(spProduct), "FAB");
    EXPECT_EQ(AllNodesOf(spProduct), "FAB FB1 FB1");

    Update(file("FB2", "2"));
    {
        const DebugCapture capture;
        EXPECT_EQ(FileStructureOf(spProduct), "FAB differs");
        EXPECT_THAT(capture.Lines(), Contains("QTBELinkToQtbOnASMPRODUCT::CheckNameAndVersion -> '1' / '2'"));
    }
    EXPECT_EQ(AllNodesOf(spProduct), "- - FB2");
    unsigned char bExist = TRUE;
    QTBIPdmRelNode_var spRelation = RelNode("FAB");
    QTBIPdmObjNode_var spPart = ObjNode("FB1");
    EXPECT_THAT(QTBILinkToQtb_var(spProduct)->CorrespondingPdmNodesExist(&bExist, &spRelation, &spPart, nullptr),
                Succeeds());
    EXPECT_EQ(bExist, FALSE);
    EXPECT_TRUE(spRelation == NULL_var);
    EXPECT_TRUE(spPart == NULL_var);
}

// The product B.1 of a file structure, placed by FAB below FA.
class LinkToQtbOfFileStructure : public LinkToQtb
{
protected:
    void SetUp() override
    {
        LinkToQtb::SetUp();
        UseFileStructure();
        Update(File("CATProductFile", "FA", "p.CATProduct"));
        m_spProduct = At("N1", {"B.1"});
    }
    void TearDown() override
    {
        m_spProduct = NULL_var;
        LinkToQtb::TearDown();
    }

    static std::string PlaceOf(const CATIProduct_var& spProduct)
    {
        EXPECT_THAT(QTBPsnTreeUtil::SetInstanceAttributes(spProduct, "FAB", "B.1"), Succeeds());
        return FileStructureOf(spProduct);
    }
    static std::string PlacedFile(const std::string& further)
    {
        return File("CATPartFile", "FB", "b.CATPart", further) + FileUsage("FAB", "FA", "FB", "B.1");
    }
    static std::string Number(std::string_view number) { return Attribute("PartNumber", number); }
    static std::string Version(std::string_view version) { return Info({{"QtbVersion", version}}); }

    // What CheckNameAndVersion writes of a version that it cannot read.
    static auto TellsOfAnUnreadableVersion() { return Contains(AllOf(HasSubstr(" File:["), HasSubstr("], Line:["))); }

    CATIProduct_var m_spProduct;
};

TEST_F(LinkToQtbOfFileStructure, ARejectedRelationCountsThoughNoPartIsGiven)
{
    // Without part number the file differs from nothing, and the structure cannot be confirmed either.
    Update(PlacedFile("") + NumberedPart("X", "NX") + NumberedPart("Y", "NY") + Usage("XY", "X", "Y", "Y.1"));
    EXPECT_EQ(PlaceOf(m_spProduct), "FAB");
    unsigned char bExist = FALSE;
    QTBIPdmRelNode_var spRelation = RelNode("XY");
    QTBIPdmObjNode_var spPart = ObjNode("X");
    const DebugCapture capture;
    EXPECT_THAT(QTBILinkToQtb_var(m_spProduct)->CorrespondingPdmNodesExist(&bExist, &spRelation, &spPart, nullptr),
                Succeeds());
    EXPECT_THAT(capture.Lines(), Contains(StartsWith("QTBInfoUtil::GetCatiaPartNumberFromPdm : HRESULT FAILED")));
    EXPECT_EQ(bExist, TRUE);
    EXPECT_TRUE(spRelation == FindNode("XY")) << "untouched";
    EXPECT_TRUE(spPart == FindNode("X")) << "untouched";
}

TEST_F(LinkToQtbOfFileStructure, AProductWithoutPartNumberDiffersFromNothing)
{
    Update(PlacedFile(Number("Other") + Version("1")));
    const CATIProduct_var spProduct = At("N1", {"N.1"});
    EXPECT_EQ(ToText(spProduct->GetPartNumber()), "");
    EXPECT_EQ(PlaceOf(spProduct), "FAB");
    EXPECT_THAT(spProduct->SetPartNumber("N9"), Succeeds());
    EXPECT_EQ(PlaceOf(spProduct), "FAB differs");
}

TEST_F(LinkToQtbOfFileStructure, AFileWithoutPartNumberDiffersFromNothing)
{
    for (const std::string& number : {std::string(), Number("")}) {
        Update(PlacedFile(number + Version("1")) +
               File("CATPartFile", "FB2", "b2.CATPart", Number("N2") + Version("2")));
        EXPECT_EQ(PlaceOf(m_spProduct), "FAB") << number;
    }
    Update(PlacedFile(Number("Other") + Version("1")));
    EXPECT_EQ(PlaceOf(m_spProduct), "FAB differs");
}

TEST_F(LinkToQtbOfFileStructure, AVersionThatCannotBeReadDiffersFromNothing)
{
    const auto fileOfNumber = [](const std::string& further) {
        return File("CATPartFile", "FB2", "b2.CATPart", Number("N2") + further);
    };
    Update(PlacedFile(Number("N2")) + fileOfNumber(Version("2")));
    {
        const DebugCapture capture;
        EXPECT_EQ(PlaceOf(m_spProduct), "FAB") << "that of the relation's file";
        EXPECT_THAT(capture.Lines(), TellsOfAnUnreadableVersion());
        EXPECT_THAT(capture.Text(), Not(HasSubstr("CheckNameAndVersion -> '")));
    }
    Update(PlacedFile(Number("N2") + Version("1")));
    Update(fileOfNumber(""));
    {
        const DebugCapture capture;
        EXPECT_EQ(PlaceOf(m_spProduct), "FAB") << "that of the number's file";
        EXPECT_THAT(capture.Lines(), TellsOfAnUnreadableVersion());
    }
    Update(fileOfNumber(Version("2")));
    EXPECT_EQ(PlaceOf(m_spProduct), "FAB differs");
}

TEST_F(LinkToQtbOfFileStructure, APartNumberWithoutFileHasNoVersionToDifferFrom)
{
    // A document is no file, though a relation of files may lead to it.
    Update(Object("Document", "D", Number("N2") + Version("1")) +
           Relation("FileFile", "FAB", "FA", "D", Attribute("InstanceName", "B.1")));
    QTBIPdmNode_var spFile;
    EXPECT_THAT(g_QTBLoadManager.GetPdmFileForPartNumber("N2", &spFile), FailsQuietly());
    const DebugCapture capture;
    EXPECT_EQ(PlaceOf(m_spProduct), "FAB");
    EXPECT_THAT(capture.Lines(), TellsOfAnUnreadableVersion());
}

TEST_F(LinkToQtb, WhoAsksForTheFileAloneLooksUpNoStructure)
{
    Update(NumberedPart("A", "N1") + NumberedPart("B", "N2") + Usage("AB", "A", "B", "B.1") +
           File("CATPartFile", "FB", "b.CATPart", Attribute("PartNumber", "N2")));
    const CATIProduct_var spProduct = At("N1", {"B.1"});
    unsigned char bExist = FALSE;
    QTBIPdmObjNode_var spFile;
    const DebugCapture capture(2);
    EXPECT_THAT(QTBILinkToQtb_var(spProduct)->CorrespondingPdmNodesExist(&bExist, nullptr, nullptr, &spFile),
                Succeeds());
    EXPECT_EQ(bExist, TRUE);
    EXPECT_EQ(KeyOf(spFile), "FB");
    EXPECT_THAT(capture.Lines(), Contains(" -> QTBELinkToQtbOnASMPRODUCT::CatiaFilePdmNodeExists"));
    for (const char* operation :
         {"ProdStrucPdmNodeExists", "FileStrucPdmNodeExists", "GetQtbStructureNodes", "GetFatherProduct"}) {
        EXPECT_THAT(capture.Text(), Not(HasSubstr(operation)));
    }
    UseFileStructure();
    EXPECT_THAT(QTBILinkToQtb_var(spProduct)->CorrespondingPdmNodesExist(&bExist, nullptr, nullptr, &spFile),
                Succeeds());
    EXPECT_THAT(capture.Text(), Not(HasSubstr("FileStrucPdmNodeExists")));
}

} // namespace
