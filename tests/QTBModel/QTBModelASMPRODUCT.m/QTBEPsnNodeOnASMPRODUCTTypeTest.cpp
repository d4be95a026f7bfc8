#include <gmock/gmock.h>

#include "QTBDiagnosis.h"
#include "QTBEPsnNodeOnASMPRODUCT.h"
#include "QTBEditedSchema.h"
#include "QTBFakeProduct.h"
#include "QTBFaultyProducts.h"
#include "QTBIPdmRelNode.h"
#include "QTBLoadManager.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using namespace QTBDiagnosis;

namespace {

constexpr const char* PRODUCTS = R"(
    <product id="p" file="p.CATProduct" partNumber="P">
      <instance of="a" name="A"/><instance of="c" name="C"/>
    </product>
    <product id="a" file="a.CATProduct" partNumber="PA"><instance of="c" name="AC"/></product>
    <product id="c" file="c.CATPart" partNumber="PC"/>
    <product id="g" file="g.cgr" partNumber="PG"/>
    <product id="m" file="m.model" partNumber="PM"/>
    <product id="d" file="d.CATDrawing" partNumber="PD"/>)";

const std::pair<std::string, std::string> WITHOUT_BOM{R"(bomPartStructure="true")", R"(bomPartStructure="false")"};
const std::pair<std::string, std::string> WITHOUT_ARCHIVES{R"(<catiaFile type="CMIArchive"/>)", ""};
const std::pair<std::string, std::string> WITHOUT_CGR{R"(<catiaFile type="CGR"/>)", ""};
const std::pair<std::string, std::string> FIRST_SYSTEM{R"(system="ENOVIA_MATRIX")", R"(system="ARAS_INNOVATOR")"};

class PsnNodeType : public QTBFaultyProductSession
{
protected:
    static void MakeArchiveRoot(const CATBaseUnknown_var& spProduct, const char* archiveFileName = "box.cmi")
    {
        EXPECT_THAT(g_QTBLoadManager.SetCatiaFileIsCmiArchiveRoot(spProduct, TRUE, archiveFileName), Succeeds());
    }

    static HRESULT Set(const CATBaseUnknown_var& spProduct, const char* type)
    {
        return QTBIPsnNode_var(spProduct)->SetPdmNodeType(type);
    }

    // The type with "derived" behind it when it is.
    static std::string TypeOf(const CATBaseUnknown_var& spProduct)
    {
        CATUnicodeString usType;
        unsigned char bIsDerived = FALSE;
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetPdmNodeType(&usType, NULL, &bIsDerived), Succeeds());
        return ToText(usType) + (bIsDerived != FALSE ? " derived" : "");
    }

    // What the load manager has recorded: "Part part", "CGRFile aux", with the archive of an archive root behind.
    static std::string RecordOf(const CATBaseUnknown_var& spProduct)
    {
        CATUnicodeString usType;
        CATUnicodeString usArchive;
        unsigned char bIsAuxFile = FALSE;
        unsigned char bIsRoot = FALSE;
        EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(spProduct, &usType, TRUE), Succeeds());
        EXPECT_THAT(g_QTBLoadManager.GetCatiaFileIsCmiArchiveRoot(spProduct, &bIsRoot, &usArchive), Succeeds());
        std::string record = ToText(usType);
        if (SUCCEEDED(g_QTBLoadManager.GetPsnReferenceIsAuxFile(spProduct, &bIsAuxFile))) {
            record += bIsAuxFile != FALSE ? " aux" : " part";
        }
        return bIsRoot != FALSE ? record + " root of [" + ToText(usArchive) + "]" : record;
    }

    static std::vector<std::string> CommandsOf(const CATBaseUnknown_var& spProduct)
    {
        CATListValCATUnicodeString ids;
        ids.Append("former");
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetPdmNodeTypeCommandHeaderIds(&ids), Succeeds());
        return TextsOf(ids);
    }

    static std::string BehaviorOf(const CATBaseUnknown_var& spProduct)
    {
        unsigned char bNeeds = 7;
        CATUnicodeString usBehavior("former");
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->NeedsSpecialBehavior(&bNeeds, &usBehavior), Succeeds());
        EXPECT_EQ(bNeeds, usBehavior.IsEmpty() ? FALSE : TRUE);
        return ToText(usBehavior);
    }
};

// Setting the type.

TEST_F(PsnNodeType, APartClassMarksTheReferenceAsNoAuxiliaryFile)
{
    Open(PRODUCTS);
    const DebugCapture capture;
    EXPECT_THAT(Set(Root("PC"), "StandardPart"), Succeeds());
    EXPECT_EQ(RecordOf(Root("PC")), "StandardPart part");
    EXPECT_THAT(capture.Lines(),
                ElementsAre("QTBEPsnNodeOnASMPRODUCT::SetPdmNodeType -> usPdmNodeType:[StandardPart]"));
}

TEST_F(PsnNodeType, AnyOtherClassMarksTheReferenceAsAuxiliaryFile)
{
    Open(PRODUCTS);
    EXPECT_THAT(Set(Root("PC"), "CATPartFile"), Succeeds());
    EXPECT_EQ(RecordOf(Root("PC")), "CATPartFile aux");
    EXPECT_THAT(Set(Root("PC"), "unknown"), Succeeds());
    EXPECT_EQ(RecordOf(Root("PC")), "unknown aux");
}

TEST_F(PsnNodeType, ATypeOfDocumentStandsForThePdmClassOfItsFiles)
{
    Open(PRODUCTS);
    const DebugCapture capture;
    EXPECT_THAT(Set(Root("PG"), "CGR"), Succeeds());
    EXPECT_EQ(RecordOf(Root("PG")), "CGRFile aux");
    EXPECT_THAT(capture.Lines(),
                ElementsAre("QTBEPsnNodeOnASMPRODUCT::SetPdmNodeType -> usPdmNodeType:[CGR]",
                            "QTBEPsnNodeOnASMPRODUCT::SetPdmNodeType -> changing string 'usPdmNodeType' from 'CGR' to "
                            "'CGRFile'."));
}

TEST_F(PsnNodeType, SettingTheRecordedTypeAgainChangesNothing)
{
    Open(PRODUCTS);
    EXPECT_THAT(Set(Root("PC"), "Part"), Succeeds());
    g_QTBLoadManager.SetPsnReferenceIsAuxFile(Root("PC"), TRUE);
    MakeArchiveRoot(Root("PC"));
    EXPECT_THAT(Set(Root("PC"), "Part"), Succeeds());
    EXPECT_EQ(RecordOf(Root("PC")), "Part aux root of [box.cmi]");
}

TEST_F(PsnNodeType, TheArchiveClassMakesAProductAnArchiveRoot)
{
    Open(PRODUCTS);
    EXPECT_THAT(Set(Root("P"), "CMIArchiveFile"), Succeeds());
    EXPECT_EQ(RecordOf(Root("P")), "CMIArchiveFile aux root of []");
    EXPECT_THAT(Set(Root("P"), "Part"), Succeeds());
    EXPECT_EQ(RecordOf(Root("P")), "Part part");
    EXPECT_THAT(Set(Root("P"), "CMIArchive"), Succeeds());
    EXPECT_EQ(RecordOf(Root("P")), "CMIArchiveFile aux root of []");
}

TEST_F(PsnNodeType, AnArchiveRootThatIsRecordedKeepsItsArchive)
{
    Open(PRODUCTS);
    MakeArchiveRoot(Root("P"));
    EXPECT_THAT(Set(Root("P"), "CMIArchiveFile"), Succeeds());
    EXPECT_EQ(RecordOf(Root("P")), "CMIArchiveFile aux root of [box.cmi]");
    EXPECT_THAT(Set(Root("P"), "CATProductFile"), Succeeds());
    EXPECT_EQ(RecordOf(Root("P")), "CATProductFile aux");
}

TEST_F(PsnNodeType, TheTypeMustNotBeEmpty)
{
    Open(PRODUCTS);
    EXPECT_THAT(Set(Root("P"), ""), FailsAssertion("usPdmNodeType != \"\""));
}

TEST_F(PsnNodeType, TheTypeIsRecordedBeforeAFileThatCannotBeToldIsAnError)
{
    const QTBFakeProducts fakes;
    const CATBaseUnknown_var spProduct = fakes.Create({.linkResult = E_FAIL});
    EXPECT_THAT(Set(spProduct, "Part"), FailsCall("QTBFileUtil::GetReferenceFileName"));
    EXPECT_EQ(RecordOf(spProduct), "Part part");
}

TEST_F(PsnNodeType, OnlyAProductHasAType)
{
    QTBTestLateType type("QTBNoProduct");
    type.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>();
    const QTBIPsnNode_var spIPsnNode(type.Create());
    CATUnicodeString usText;
    EXPECT_THAT(spIPsnNode->SetPdmNodeType("Part"), LacksInterface("spIProductOnThis"));
    EXPECT_THAT(spIPsnNode->GetPdmNodeType(&usText, NULL, NULL), LacksInterface("spIProductOnThis"));
}

// Getting the type.

TEST_F(PsnNodeType, BelowAnArchiveRootTheTypeIsThatOfArchivesAndNoTypeIsOffered)
{
    Open(PRODUCTS);
    MakeArchiveRoot(Root("P"));
    EXPECT_THAT(Set(Root("PC"), "Part"), Succeeds());
    EXPECT_EQ(TypeOf(At("P", {"A", "AC"})), "CMIArchiveFile derived");
    EXPECT_THAT(CommandsOf(At("P", {"A", "AC"})), IsEmpty());
    EXPECT_EQ(TypeOf(Root("PC")), "Part");
    Update(NumberedPart("1", "PC", "StandardPart"));
    EXPECT_EQ(TypeOf(At("P", {"A", "AC"})), "CMIArchiveFile derived") << "whatever the graph holds";
    EXPECT_THAT(CommandsOf(At("P", {"A", "AC"})), IsEmpty());
}

TEST_F(PsnNodeType, ARecordedTypeIsDerivedWhenItIsTheClassOfFiles)
{
    Open(PRODUCTS);
    EXPECT_THAT(Set(Root("PC"), "StandardPart"), Succeeds());
    EXPECT_EQ(TypeOf(Root("PC")), "StandardPart");
    EXPECT_THAT(Set(Root("PC"), "CATPartFile"), Succeeds());
    EXPECT_EQ(TypeOf(Root("PC")), "CATPartFile derived");
}

TEST_F(PsnNodeType, AnExistingPdmPartGivesItsClassAndNoTypeIsOffered)
{
    Open(PRODUCTS);
    Update(NumberedPart("1", "PC", "StandardPart"));
    EXPECT_EQ(TypeOf(Root("PC")), "StandardPart");
    EXPECT_EQ(RecordOf(Root("PC")), "StandardPart part");
    EXPECT_THAT(CommandsOf(Root("PC")), IsEmpty());
}

TEST_F(PsnNodeType, AnExistingPdmFileAloneGivesItsClassAsDerived)
{
    Open(PRODUCTS);
    Update(File("CATDrawingFile", "1", "d.CATDrawing"));
    EXPECT_EQ(TypeOf(Root("PD")), "CATDrawingFile derived");
    EXPECT_EQ(RecordOf(Root("PD")), "CATDrawingFile aux");
    EXPECT_THAT(CommandsOf(Root("PD")), IsEmpty());
}

TEST_F(PsnNodeType, ACatProductIsTheFirstPartClassWithSubParts)
{
    Open(PRODUCTS);
    EXPECT_EQ(TypeOf(Root("P")), "Part");
    EXPECT_EQ(RecordOf(Root("P")), "Part part");
}

TEST_F(PsnNodeType, ACatProductUnderAPartWithoutSubPartsIsAnArchive)
{
    Open(PRODUCTS);
    Update(NumberedPart("1", "P", "StandardPart"));
    EXPECT_EQ(TypeOf(At("P", {"A"})), "CMIArchiveFile derived");
    EXPECT_EQ(RecordOf(At("P", {"A"})), "CMIArchiveFile aux root of []");
}

TEST_F(PsnNodeType, ACatProductUnderAPartWithSubPartsIsAPart)
{
    Open(PRODUCTS);
    Update(NumberedPart("1", "P", "Part"));
    EXPECT_EQ(TypeOf(At("P", {"A"})), "Part");
}

TEST_F(PsnNodeType, ACatPartIsTheFirstClassOfSingleParts)
{
    QTBLoadEditedSchema({{R"(<part subParts="true" catPart="true"/>)", R"(<part subParts="true"/>)"}});
    Open(PRODUCTS);
    EXPECT_EQ(TypeOf(Root("PC")), "StandardPart");
}

TEST_F(PsnNodeType, ACatPartWithoutAClassOfItsOwnIsTheFirstPartClassWithSubParts)
{
    QTBLoadEditedSchema({{R"(<part subParts="true" catPart="true"/>)", R"(<part subParts="true"/>)"},
                         {R"(<part catPart="true"/>)", "<part/>"}});
    Open(PRODUCTS);
    EXPECT_EQ(TypeOf(Root("PC")), "Part");
}

TEST_F(PsnNodeType, ACatPartThatIsNoBomPartIsAFile)
{
    QTBLoadEditedSchema({{R"(<catiaFile type="CATPart" bomPart="true"/>)", R"(<catiaFile type="CATPart"/>)"}});
    Open(PRODUCTS);
    EXPECT_EQ(TypeOf(Root("PC")), "CATPartFile derived");
    EXPECT_EQ(RecordOf(Root("PC")), "CATPartFile aux");
}

TEST_F(PsnNodeType, ShapesAreFiles)
{
    Open(PRODUCTS);
    EXPECT_EQ(TypeOf(Root("PG")), "CGRFile derived");
    EXPECT_EQ(TypeOf(Root("PM")), "V4ModelFile derived");
}

TEST_F(PsnNodeType, AnArchiveRootIsAnArchive)
{
    Open(PRODUCTS);
    MakeArchiveRoot(Root("P"));
    EXPECT_EQ(TypeOf(Root("P")), "CMIArchiveFile derived");
    EXPECT_EQ(TypeOf(Root("P")), "CMIArchiveFile derived");
    EXPECT_EQ(RecordOf(Root("P")), "CMIArchiveFile aux root of [box.cmi]");
}

TEST_F(PsnNodeType, AnyOtherProductHasNoPdmNodeType)
{
    Open(PRODUCTS);
    CATUnicodeString usType("untouched");
    const DebugCapture capture;
    EXPECT_THAT(QTBIPsnNode_var(Root("PD"))->GetPdmNodeType(&usType, NULL, NULL), FailsQuietly());
    EXPECT_EQ(usType, "untouched");
    EXPECT_THAT(capture.Lines(),
                Contains("QTBEPsnNodeOnASMPRODUCT::GetPdmNodeType -> PSN node type [CATDrawing] not supported yet"));
    EXPECT_EQ(RecordOf(Root("PD")), "");
}

TEST_F(PsnNodeType, AShapeThatTheSchemaDoesNotNameHasNoPdmNodeType)
{
    QTBLoadEditedSchema({WITHOUT_CGR});
    Open(PRODUCTS);
    CATUnicodeString usType;
    const DebugCapture capture;
    EXPECT_THAT(QTBIPsnNode_var(Root("PG"))->GetPdmNodeType(&usType, NULL, NULL), FailsQuietly());
    EXPECT_THAT(capture.Lines(), Contains("QTBEPsnNodeOnASMPRODUCT::GetPdmNodeType -> PSN node type [CGR] not "
                                          "supported yet (no entry in QTBSchema.xml file !"));
}

TEST_F(PsnNodeType, WithoutBomPartStructureProductsAreFiles)
{
    QTBLoadEditedSchema({WITHOUT_BOM});
    Open(PRODUCTS);
    EXPECT_EQ(TypeOf(Root("P")), "CATProductFile derived");
    // The class of CATProducts is what is taken without a record.
    EXPECT_EQ(RecordOf(Root("P")), "");
    EXPECT_EQ(TypeOf(Root("PC")), "CATPartFile derived");
    EXPECT_EQ(RecordOf(Root("PC")), "CATPartFile aux");
    EXPECT_EQ(TypeOf(Root("PG")), "CGRFile derived");
    EXPECT_EQ(TypeOf(Root("PM")), "V4ModelFile derived");
    MakeArchiveRoot(Root("P"));
    EXPECT_EQ(TypeOf(Root("P")), "CMIArchiveFile derived");
    CATUnicodeString usType;
    EXPECT_THAT(QTBIPsnNode_var(Root("PD"))->GetPdmNodeType(&usType, NULL, NULL), FailsQuietly());
}

TEST_F(PsnNodeType, WithoutBomPartStructureACatPartIsTheClassThatIsPartAndFile)
{
    QTBLoadEditedSchema({WITHOUT_BOM, {R"(<part catPart="true"/>)", R"(<part catPart="true"/><catiaFile
                                          type="CATPart"/>)"}});
    Open(PRODUCTS);
    EXPECT_EQ(TypeOf(Root("PC")), "StandardPart derived");
}

TEST_F(PsnNodeType, WithoutBomPartStructureAShapeThatTheSchemaDoesNotNameHasNoPdmNodeType)
{
    QTBLoadEditedSchema({WITHOUT_BOM, WITHOUT_CGR});
    Open(PRODUCTS);
    CATUnicodeString usType;
    const DebugCapture capture;
    EXPECT_THAT(QTBIPsnNode_var(Root("PG"))->GetPdmNodeType(&usType, NULL, NULL), FailsQuietly());
    EXPECT_THAT(capture.Lines(),
                Contains("QTBEPsnNodeOnASMPRODUCT::GetPdmNodeType -> PSN node type [CGR] not supported yet"));
}

TEST_F(PsnNodeType, TheTypeHasADisplayText)
{
    Open(PRODUCTS);
    CATUnicodeString usType;
    CATUnicodeString usText;
    EXPECT_THAT(QTBIPsnNode_var(Root("PG"))->GetPdmNodeType(&usType, &usText, NULL), Succeeds());
    EXPECT_EQ(usText, QTBSchemaUtil::GetCurrentSchemaNlsString("Class.CGRFile"));
    EXPECT_FALSE(usText.IsEmpty());
}

TEST_F(PsnNodeType, GettingTheTypeNeedsAPointerAndTheLinkToThePdmGraph)
{
    Open(PRODUCTS);
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetPdmNodeType(NULL, NULL, NULL), FailsAssertion("pusPdmNodeType != NULL"));
    CATUnicodeString usType;
    {
        const QTBFault fault("CorrespondingPdmNodesExist");
        EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetPdmNodeType(&usType, NULL, NULL),
                    FailsCall("spILinkToQtbOnThis->CorrespondingPdmNodesExist"));
    }
    {
        const CATIProduct_var spProduct = At("P", {"A"});
        const QTBFault fault("IsCmiArchiveRoot", Root("P"));
        EXPECT_THAT(DiagnosisOf([&] { return QTBIPsnNode_var(spProduct)->GetPdmNodeType(&usType, NULL, NULL); }),
                    ElementsAre(Call("spIPsnNodeOnFatherNode->IsCmiArchiveRoot"), Call("IsUnderCmiArchiveRoot")));
    }
    QTBTestLateType type("QTBPsnNodeOnly");
    type.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>()
        .Register<TIECATIProduct, CATIProduct, QTBFakeProducts::Product>()
        .Register<TIECATIPrdLink, CATIPrdLink, QTBFakeProducts::Link>();
    const QTBFakeProducts fakes;
    const QTBIPsnNode_var spIPsnNode(QTBFakeProducts::Enter(type, {}));
    CATListValCATUnicodeString ids;
    EXPECT_THAT(spIPsnNode->GetPdmNodeType(&usType, NULL, NULL), LacksInterface("spILinkToQtbOnThis"));
    EXPECT_THAT(spIPsnNode->GetPdmNodeTypeCommandHeaderIds(&ids), LacksInterface("spILinkToQtbOnThis"));
}

// The PDM part above.

TEST_F(PsnNodeType, TheParentPartIsThePdmPartOfTheProductAbove)
{
    Open(PRODUCTS);
    unsigned char bExists = TRUE;
    unsigned char bCanHaveSubParts = TRUE;
    const auto ask = [&](const CATBaseUnknown_var& spProduct) {
        EXPECT_THAT(Extension(spProduct)->GetParentPdmPartInfo(&bExists, &bCanHaveSubParts), Succeeds());
        return std::to_string(bExists) + std::to_string(bCanHaveSubParts);
    };
    EXPECT_EQ(ask(Root("P")), "00");
    EXPECT_EQ(ask(At("P", {"A"})), "00");
    Update(NumberedPart("1", "P") + NumberedPart("2", "PA", "StandardPart"));
    EXPECT_EQ(ask(At("P", {"A"})), "11");
    EXPECT_EQ(ask(At("P", {"A", "AC"})), "10");
}

// Takes any object that a test names for the part of its product.
class WrongLink : public QTBELinkToQtbOnASMPRODUCT
{
public:
    HRESULT ProdStrucPdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var*, QTBIPdmObjNode_var* pspPartObj)
    {
        *pbExists = TRUE;
        *pspPartObj = s_spPartObj;
        return S_OK;
    }
    inline static QTBIPdmObjNode_var s_spPartObj;
};

TEST_F(PsnNodeType, TheParentPartMustBeAPart)
{
    const QTBFakeProducts fakes;
    QTBTestLateType wrong("QTBWrongProduct", "QTBFakeProduct");
    wrong.Register<TIEQTBILinkToQtb, QTBILinkToQtb, WrongLink>();
    Update(File("CATPartFile", "1", "f.CATPart"));
    WrongLink::s_spPartObj = ObjNode("1");
    const CATBaseUnknown_var spProduct = fakes.Create({.spFather = QTBFakeProducts::Enter(wrong, {})});
    unsigned char bExists = FALSE;
    unsigned char bCanHaveSubParts = FALSE;
    EXPECT_THAT(Extension(spProduct)->GetParentPdmPartInfo(&bExists, &bCanHaveSubParts), FailsAssertion("bIsPartNode"));
    WrongLink::s_spPartObj = NULL_var;
    EXPECT_THAT(Extension(spProduct)->GetParentPdmPartInfo(&bExists, &bCanHaveSubParts), Succeeds());
    EXPECT_EQ(bExists, FALSE);
}

TEST_F(PsnNodeType, TheParentPartNeedsPointersAndTheLinkToThePdmGraph)
{
    Open(PRODUCTS);
    const CATIProduct_var spProduct = At("P", {"A"});
    unsigned char bFlag = FALSE;
    EXPECT_THAT(Extension(spProduct)->GetParentPdmPartInfo(NULL, &bFlag),
                FailsAssertion("pbParentPdmPartExists != NULL"));
    EXPECT_THAT(Extension(spProduct)->GetParentPdmPartInfo(&bFlag, NULL), FailsAssertion("pbCanHaveSubParts != NULL"));
    {
        const QTBFault fault("ProdStrucPdmNodeExists", Root("P"));
        EXPECT_THAT(Extension(spProduct)->GetParentPdmPartInfo(&bFlag, &bFlag),
                    FailsCall("spILinkToQtbOnFatherNode->ProdStrucPdmNodeExists"));
    }
    const QTBFakeProducts fakes;
    QTBTestLateType type("QTBPsnNodeOnly");
    type.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>()
        .Register<TIECATIProduct, CATIProduct, QTBFakeProducts::Product>()
        .Register<TIECATIPrdLink, CATIPrdLink, QTBFakeProducts::Link>();
    const CATBaseUnknown_var spChild = fakes.Create({.spFather = QTBFakeProducts::Enter(type, {})});
    EXPECT_THAT(Extension(spChild)->GetParentPdmPartInfo(&bFlag, &bFlag), LacksInterface("spILinkToQtbOnFatherNode"));
}

// The commands that set a type.

TEST_F(PsnNodeType, ACatProductMayBecomeAPartWithSubPartsOrAnArchive)
{
    Open(PRODUCTS);
    EXPECT_THAT(CommandsOf(Root("P")),
                ElementsAre("QTBCurrentPdmNodeTypePartCmdHdr", "QTBSetPdmNodeTypeCMIArchiveCmdHdr"));
}

TEST_F(PsnNodeType, ACatPartMayBecomeAnyPartOrAFile)
{
    Open(PRODUCTS);
    EXPECT_THAT(CommandsOf(Root("PC")),
                ElementsAre("QTBCurrentPdmNodeTypePartCmdHdr", "QTBSetPdmNodeTypeStandardPartCmdHdr",
                            "QTBSetPdmNodeTypeCATPartCmdHdr"));
    EXPECT_THAT(Set(Root("PC"), "CATPart"), Succeeds());
    EXPECT_THAT(CommandsOf(Root("PC")),
                ElementsAre("QTBSetPdmNodeTypePartCmdHdr", "QTBSetPdmNodeTypeStandardPartCmdHdr",
                            "QTBCurrentPdmNodeTypeCATPartCmdHdr"));
}

TEST_F(PsnNodeType, AShapeMayBecomeAnyPartAFileOrAnArchive)
{
    Open(PRODUCTS);
    EXPECT_THAT(CommandsOf(Root("PG")),
                ElementsAre("QTBSetPdmNodeTypePartCmdHdr", "QTBSetPdmNodeTypeStandardPartCmdHdr",
                            "QTBCurrentPdmNodeTypeCGRCmdHdr", "QTBSetPdmNodeTypeCMIArchiveCmdHdr"));
    EXPECT_THAT(CommandsOf(Root("PM")),
                ElementsAre("QTBSetPdmNodeTypePartCmdHdr", "QTBSetPdmNodeTypeStandardPartCmdHdr",
                            "QTBCurrentPdmNodeTypeV4ModelCmdHdr", "QTBSetPdmNodeTypeCMIArchiveCmdHdr"));
}

TEST_F(PsnNodeType, AProductThatNothingIsOfferedForNeedsNoType)
{
    Open(PRODUCTS);
    EXPECT_THAT(CommandsOf(Root("PD")), IsEmpty());
}

TEST_F(PsnNodeType, UnderAPartWithoutSubPartsNoPartIsOffered)
{
    Open(PRODUCTS);
    Update(NumberedPart("1", "P", "StandardPart"));
    EXPECT_THAT(CommandsOf(At("P", {"A"})), ElementsAre("QTBCurrentPdmNodeTypeCMIArchiveCmdHdr"));
    EXPECT_THAT(CommandsOf(At("P", {"C"})), ElementsAre("QTBSetPdmNodeTypeCATPartCmdHdr"));
}

TEST_F(PsnNodeType, WithoutBomPartStructureFilesAreOffered)
{
    QTBLoadEditedSchema({WITHOUT_BOM});
    Open(PRODUCTS);
    EXPECT_THAT(CommandsOf(Root("P")),
                ElementsAre("QTBCurrentPdmNodeTypeCATProductCmdHdr", "QTBSetPdmNodeTypeCMIArchiveCmdHdr"));
    EXPECT_THAT(CommandsOf(Root("PC")), ElementsAre("QTBCurrentPdmNodeTypeCATPartCmdHdr"));
    EXPECT_THAT(CommandsOf(Root("PG")),
                ElementsAre("QTBCurrentPdmNodeTypeCGRCmdHdr", "QTBSetPdmNodeTypeCMIArchiveCmdHdr"));
}

TEST_F(PsnNodeType, WithoutAnArchiveClassNoArchiveIsOffered)
{
    QTBLoadEditedSchema({WITHOUT_ARCHIVES});
    Open(PRODUCTS);
    const DebugCapture capture;
    EXPECT_THAT(CommandsOf(Root("P")), ElementsAre("QTBCurrentPdmNodeTypePartCmdHdr"));
    EXPECT_THAT(CommandsOf(Root("PG")),
                ElementsAre("QTBSetPdmNodeTypePartCmdHdr", "QTBSetPdmNodeTypeStandardPartCmdHdr",
                            "QTBCurrentPdmNodeTypeCGRCmdHdr"));
    EXPECT_THAT(capture.Lines(), Contains("QTBEPsnNodeOnASMPRODUCT::GetPdmNodeTypeCommandHeaderIds -> "
                                          "QTBPdmSessionUtil::GetCatiaFileClassInfo(CMIARCHIVE) !"));
}

TEST_F(PsnNodeType, TheOtherPdmSystemOffersPartsOnly)
{
    QTBLoadEditedSchema({FIRST_SYSTEM});
    Open(PRODUCTS);
    EXPECT_THAT(CommandsOf(Root("P")), ElementsAre("QTBCurrentPdmNodeTypePartCmdHdr"));
    EXPECT_THAT(CommandsOf(Root("PC")),
                ElementsAre("QTBCurrentPdmNodeTypePartCmdHdr", "QTBSetPdmNodeTypeStandardPartCmdHdr"));
    EXPECT_THAT(CommandsOf(Root("PG")), IsEmpty());
}

TEST_F(PsnNodeType, TheOtherPdmSystemOffersNothingWithoutBomPartStructure)
{
    QTBLoadEditedSchema({FIRST_SYSTEM, WITHOUT_BOM});
    Open(PRODUCTS);
    EXPECT_THAT(CommandsOf(Root("P")), IsEmpty());
    EXPECT_THAT(CommandsOf(Root("PC")), IsEmpty());
}

TEST_F(PsnNodeType, ProductsBelowThatCannotBeAskedAreOnlyTraced)
{
    Open(PRODUCTS);
    const CATIProduct_var spProduct = Root("P");
    const QTBFault fault("CorrespondingPdmNodesExist", At("P", {"C"}));
    const DebugCapture capture;
    EXPECT_THAT(CommandsOf(spProduct),
                ElementsAre("QTBCurrentPdmNodeTypePartCmdHdr", "QTBSetPdmNodeTypeCMIArchiveCmdHdr"));
    EXPECT_THAT(capture.Lines(), Contains("QTBEPsnNodeOnASMPRODUCT::GetPdmNodeTypeCommandHeaderIds -> "
                                          "SubNodesHaveCorrespondingPdmNodes !"));
}

class KnownLink : public QTBELinkToQtbOnASMPRODUCT
{
public:
    HRESULT CorrespondingPdmNodesExist(unsigned char* pbExist, QTBIPdmRelNode_var*, QTBIPdmObjNode_var*,
                                       QTBIPdmObjNode_var*)
    {
        *pbExist = TRUE;
        return S_OK;
    }
};

TEST_F(PsnNodeType, AProductWithPdmNodesBelowItCannotBecomeAnArchive)
{
    const QTBFakeProducts fakes;
    QTBTestLateType known("QTBKnownProduct", "QTBFakeProduct");
    known.Register<TIEQTBILinkToQtb, QTBILinkToQtb, KnownLink>();
    Open(PRODUCTS);
    QTBFakeProducts::Data data{.isReference = true, .linkState = CATPrdLinkState::Loaded};
    data.pDocument = DocumentOf(Root("P"));
    data.Children.Append(QTBFakeProducts::Enter(known, {}));
    EXPECT_THAT(CommandsOf(fakes.Create(data)), ElementsAre("QTBCurrentPdmNodeTypePartCmdHdr"));
}

TEST_F(PsnNodeType, OfferingTypesNeedsAPointerAndTheLinkToThePdmGraph)
{
    Open(PRODUCTS);
    const CATIProduct_var spProduct = Root("P");
    EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetPdmNodeTypeCommandHeaderIds(NULL),
                FailsAssertion("pCommandHeaderIdList != NULL"));
    CATListValCATUnicodeString ids;
    {
        const QTBFault fault("CorrespondingPdmNodesExist", spProduct);
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetPdmNodeTypeCommandHeaderIds(&ids),
                    FailsCall("spILinkToQtbOnThis->CorrespondingPdmNodesExist"));
    }
    const QTBFault fault("CorrespondingPdmNodesExist", spProduct, 1);
    EXPECT_THAT(DiagnosisOf([&] { return QTBIPsnNode_var(spProduct)->GetPdmNodeTypeCommandHeaderIds(&ids); }),
                ElementsAre(Call("spILinkToQtbOnThis->CorrespondingPdmNodesExist"), Call("GetPdmNodeType")));
}

// Special behaviour.

constexpr const char* SPECIAL = R"(
    <product id="p" file="p.CATProduct" partNumber="P"><instance of="e" name="E"/></product>
    <product id="f" file="f.CATProduct" partNumber="FOLDER_1"/>
    <product id="s" file="s.CATProduct" partNumber="SKELETON_1"/>
    <product id="m" file="m.CATProduct" partNumber="MY_FOLDER_1"/>
    <product id="c" file="c.CATPart" partNumber="FOLDER_2"/>
    <product id="n" file="n.CATProduct"/>
    <component id="e" partNumber="any"/>)";

TEST_F(PsnNodeType, WhatTheSchemaListsNeedsSpecialBehavior)
{
    Open(SPECIAL);
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    const DebugCapture capture;
    EXPECT_EQ(BehaviorOf(Root("FOLDER_1")), "SKIP");
    EXPECT_EQ(BehaviorOf(Root("SKELETON_1")), "IGNORE");
    EXPECT_EQ(BehaviorOf(At("P", {"E"})), "SKIP");
    EXPECT_EQ(BehaviorOf(Root("P")), "");
    EXPECT_EQ(BehaviorOf(Root("MY_FOLDER_1")), "");
    EXPECT_EQ(BehaviorOf(Root("FOLDER_2")), "");
    EXPECT_THAT(capture.Lines(), ElementsAre("node type:[CATProduct], part number[FOLDER_1] -> index:[2], "
                                             "prefix[FOLDER_] -> behavior:[SKIP]",
                                             "node type:[CATProduct], part number[SKELETON_1] -> index:[1], "
                                             "prefix[SKELETON_] -> behavior:[IGNORE]",
                                             "node type:[EmbeddedComponent], part number[any] -> index:[3], prefix[] "
                                             "-> behavior:[SKIP]"));
}

TEST_F(PsnNodeType, NothingNeedsSpecialBehaviorWhileThatIsSwitchedOff)
{
    Open(SPECIAL);
    EXPECT_EQ(BehaviorOf(Root("FOLDER_1")), "");
}

TEST_F(PsnNodeType, TheFirstDefinitionThatFitsCounts)
{
    QTBLoadEditedSchema({{R"(partNumberPrefix="FOLDER_" behavior="SKIP"/>)", R"(behavior="SKIP"/>)"}});
    Open(SPECIAL);
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    EXPECT_EQ(BehaviorOf(Root("SKELETON_1")), "IGNORE");
    EXPECT_EQ(BehaviorOf(Root("P")), "SKIP");
    EXPECT_EQ(BehaviorOf(Root("MY_FOLDER_1")), "SKIP");
}

TEST_F(PsnNodeType, ADefinitionWithAnUnknownBehaviorIsPassedOver)
{
    QTBLoadEditedSchema({{R"(partNumberPrefix="SKELETON_" behavior="IGNORE"/>)", R"(behavior="HIDE"/>)"}});
    Open(SPECIAL);
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    const DebugCapture capture;
    EXPECT_EQ(BehaviorOf(Root("FOLDER_1")), "SKIP");
    EXPECT_EQ(BehaviorOf(Root("P")), "");
    EXPECT_THAT(capture.Lines(),
                Contains("QTBEPsnNodeOnASMPRODUCT::NeedsSpecialBehavior -> illegal behavior string:[HIDE]"));
}

TEST_F(PsnNodeType, ASchemaWithoutDefinitionsGivesNoProductSpecialBehavior)
{
    QTBLoadEditedSchema({{"<nodeBehaviors>", "<!--"}, {"</nodeBehaviors>", "-->"}});
    Open(SPECIAL);
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    EXPECT_EQ(BehaviorOf(Root("FOLDER_1")), "");
}

TEST_F(PsnNodeType, ANewPartNumberIsLookedUpAgain)
{
    Open(SPECIAL);
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    const CATIProduct_var spProduct = Root("FOLDER_1");
    EXPECT_EQ(BehaviorOf(spProduct), "SKIP");
    EXPECT_THAT(spProduct->SetPartNumber("SKELETON_9"), Succeeds());
    EXPECT_EQ(BehaviorOf(spProduct), "IGNORE");
    EXPECT_THAT(spProduct->SetPartNumber("plain"), Succeeds());
    EXPECT_EQ(BehaviorOf(spProduct), "");
}

TEST_F(PsnNodeType, TheDefinitionsAreNotReadAgainForTheSamePartNumber)
{
    Open(SPECIAL);
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    const CATIProduct_var spProduct = Root("FOLDER_1");
    const CATIProduct_var spOtherProduct = Root("P");
    EXPECT_EQ(BehaviorOf(spProduct), "SKIP");
    EXPECT_EQ(BehaviorOf(spOtherProduct), "");
    QTBLoadEditedSchema({{R"(partNumberPrefix="FOLDER_" behavior="SKIP"/>)", R"(behavior="IGNORE"/>)"}});
    EXPECT_EQ(BehaviorOf(spProduct), "SKIP");
    EXPECT_EQ(BehaviorOf(spOtherProduct), "");
    EXPECT_EQ(BehaviorOf(Root("MY_FOLDER_1")), "IGNORE");
}

TEST_F(PsnNodeType, AProductWithoutPartNumberIsNeverLookedUp)
{
    QTBLoadEditedSchema({{R"(partNumberPrefix="FOLDER_" behavior="SKIP"/>)", R"(behavior="SKIP"/>)"}});
    const QTBFakeProducts fakes;
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    const CATBaseUnknown_var spProduct = fakes.Create();
    EXPECT_EQ(BehaviorOf(spProduct), "");
    QTBFakeProducts::DataOf(spProduct).usPartNumber = "any";
    EXPECT_EQ(BehaviorOf(spProduct), "SKIP");
}

TEST_F(PsnNodeType, AProductWithoutReferenceIsKnownByItsOwnPartNumber)
{
    const QTBFakeProducts fakes;
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    EXPECT_EQ(BehaviorOf(fakes.Create({.hasReference = false, .usPartNumber = "FOLDER_7"})), "SKIP");
}

TEST_F(PsnNodeType, AChangeOfThePartNumberIsSeenAgainstTheOneLookedUpLast)
{
    Open(SPECIAL);
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    const CATIProduct_var spProduct = Root("P");
    unsigned char bChanged = FALSE;
    CATUnicodeString usPartNumber;
    EXPECT_THAT(Extension(spProduct)->PartNumberHasChanged(&bChanged, &usPartNumber), Succeeds());
    EXPECT_EQ(bChanged, TRUE);
    EXPECT_EQ(usPartNumber, "P");
    BehaviorOf(spProduct);
    EXPECT_THAT(Extension(spProduct)->PartNumberHasChanged(&bChanged, &usPartNumber), Succeeds());
    EXPECT_EQ(bChanged, FALSE);
    EXPECT_EQ(usPartNumber, "P");
    EXPECT_THAT(Extension(spProduct)->PartNumberHasChanged(NULL, &usPartNumber),
                FailsAssertion("pbPartNumberHasChanged != NULL"));
    EXPECT_THAT(Extension(spProduct)->PartNumberHasChanged(&bChanged, NULL),
                FailsAssertion("pusNewPartNumber != NULL"));
}

TEST_F(PsnNodeType, SpecialBehaviorNeedsPointersAndAType)
{
    Open(SPECIAL);
    unsigned char bNeeds = FALSE;
    CATUnicodeString usBehavior;
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->NeedsSpecialBehavior(NULL, &usBehavior),
                FailsAssertion("pbNeedsSpecialBehavior != NULL"));
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->NeedsSpecialBehavior(&bNeeds, NULL), FailsAssertion("pusBehavior != NULL"));
    QTBGlobVarsUtil::SetConfigurableCatiaNodeBehaviorState(TRUE);
    const QTBFakeProducts fakes;
    EXPECT_THAT(DiagnosisOf([&] {
                    return QTBIPsnNode_var(fakes.Create({.usLinkedFileName = "/data/fake.odd"}))
                        ->NeedsSpecialBehavior(&bNeeds, &usBehavior);
                }),
                ElementsAre(Call("QTBFileUtil::GetReferenceFileName"), Call("GetPsnNodeType")));
}

// What is noted of a product.

TEST_F(PsnNodeType, TheNoteThatAttributesWereCheckedIsKeptPerProduct)
{
    Open(PRODUCTS);
    unsigned char bChecked = TRUE;
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetReferenceCatiaAttrsChecked(&bChecked), Succeeds());
    EXPECT_EQ(bChecked, FALSE);
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->SetReferenceCatiaAttrsChecked(TRUE), Succeeds());
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetReferenceCatiaAttrsChecked(&bChecked), Succeeds());
    EXPECT_EQ(bChecked, TRUE);
    EXPECT_THAT(QTBIPsnNode_var(Root("PC"))->GetReferenceCatiaAttrsChecked(&bChecked), Succeeds());
    EXPECT_EQ(bChecked, FALSE);
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetReferenceCatiaAttrsChecked(NULL), FailsAssertion("pbChecked != NULL"));
}

TEST_F(PsnNodeType, MessagesFromThePdmSystemAreAddedReadAndDeleted)
{
    Open(PRODUCTS);
    const QTBIPsnNode_var spIPsnNode(Root("P"));
    const QTBPdmMessage first(QTB_PDM_MESSAGE_WARNING, "locked", "1");
    const QTBPdmMessage second(QTB_PDM_MESSAGE_ERROR, "refused", "2");
    CATListValQTBPdmMessage messages;
    messages.Append(first);
    EXPECT_THAT(spIPsnNode->AddMessagesFromPdm(messages), Succeeds());
    messages.RemoveAll();
    messages.Append(second);
    EXPECT_THAT(spIPsnNode->AddMessagesFromPdm(messages), Succeeds());
    EXPECT_THAT(spIPsnNode->GetMessagesFromPdm(&messages), Succeeds());
    EXPECT_EQ(messages.Size(), 2);
    EXPECT_TRUE(messages[1] == first && messages[2] == second);
    EXPECT_THAT(spIPsnNode->DeleteMessagesFromPdm(), Succeeds());
    EXPECT_THAT(spIPsnNode->GetMessagesFromPdm(&messages), Succeeds());
    EXPECT_EQ(messages.Size(), 0);
    EXPECT_THAT(spIPsnNode->GetMessagesFromPdm(NULL), FailsAssertion("pMessagesFromPdm != NULL"));
}

} // namespace
