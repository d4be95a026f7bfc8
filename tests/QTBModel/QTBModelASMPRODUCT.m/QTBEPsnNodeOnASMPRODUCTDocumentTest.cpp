#include <gmock/gmock.h>

#include "CATFrmEditor.h"
#include "QTBDiagnosis.h"
#include "QTBDocUtil.h"
#include "QTBEPsnNodeOnASMPRODUCT.h"
#include "QTBFakeProduct.h"
#include "QTBFaultyProducts.h"
#include "QTBLoadManager.h"
#include "QTBTestFolder.h"
#include "QTBTestWindow.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace QTBDiagnosis;

namespace {

constexpr const char* PRODUCTS = R"(
    <product id="p" file="p.CATProduct" partNumber="P" nomenclature="pump" description="a pump" definition="cast"
             revision="A">
      <instance of="c" name="C.1" description="left"/><instance of="v" name="V.1"/><instance of="l" name="L.1"/>
      <instance of="e" name="E.1"/><instance of="s" name="S.1"/>
    </product>
    <product id="c" file="c.CATPart" partNumber="PC" nomenclature="case" revision="B"/>
    <product id="v" file="v.CATPart" shape="v.cgr" partNumber="PV" nomenclature="valve" link="visualization"/>
    <product id="l" file="l.CATPart" link="broken"/>
    <component id="e" partNumber="PE" nomenclature="group"/>
    <component id="s" partNumber="PS" shape="s.cgr"/>)";

class ProductDocuments : public QTBFaultyProductSession
{
protected:
    static HRESULT Set(const CATBaseUnknown_var& spProduct, int type, const char* value, unsigned char* pbChanged,
                       unsigned char bLoad = FALSE)
    {
        return QTBIPsnNode_var(spProduct)->SetStdCatiaAttribute(static_cast<QTBPsnAttrType>(type), value, pbChanged,
                                                                bLoad);
    }

    static std::string IsDirty(const CATBaseUnknown_var& spProduct, unsigned char* pbHasDesignTables = NULL)
    {
        unsigned char bIsDirty = 7;
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->DocumentIsDirty(&bIsDirty, pbHasDesignTables), Succeeds());
        return bIsDirty == 7 ? "not said" : (bIsDirty != FALSE ? "dirty" : "clean");
    }

    // The path of the document that is found for a product.
    static std::string DocumentPathOf(const CATBaseUnknown_var& spProduct)
    {
        CATDocument* pDocument = NULL;
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetReferenceDocumentPtr(&pDocument, FALSE), Succeeds());
        return pDocument != NULL ? ToText(pDocument->GetStorageName()) : "no document";
    }

    // A PDM file object with a part number.
    static std::string NumberedFile(const char* className, const char* key, const char* fileName,
                                    const char* partNumber, const std::string& further = "")
    {
        return File(className, key, fileName, Attribute("PartNumber", partNumber) + further);
    }
};

// Attributes.

TEST_F(ProductDocuments, SettingANomenclatureToItsValueWritesNothing)
{
    Open(PRODUCTS);
    unsigned char bChanged = TRUE;
    const DebugCapture capture;
    EXPECT_THAT(Set(At("P", {"C.1"}), 2, "case", &bChanged), Succeeds());
    EXPECT_EQ(bChanged, FALSE);
    EXPECT_FALSE(DocumentOf(Root("PC"))->IsDirty());
    EXPECT_THAT(capture.Lines(), ElementsAre("QTBEPsnNodeOnASMPRODUCT::SetStdCatiaAttribute -> setting <2> to <case>: ",
                                             "<case> / <case> (same)."));
}

TEST_F(ProductDocuments, SettingARevisionAnewWritesItOnTheReferenceWhoseDocumentBecomesDirty)
{
    Open(PRODUCTS);
    unsigned char bChanged = FALSE;
    const DebugCapture capture;
    EXPECT_THAT(Set(At("P", {"C.1"}), 5, "C", &bChanged), Succeeds());
    EXPECT_EQ(bChanged, TRUE);
    CATUnicodeString usRevision;
    EXPECT_THAT(Root("PC")->GetRevision(&usRevision), Succeeds());
    EXPECT_EQ(usRevision, "C");
    EXPECT_TRUE(DocumentOf(Root("PC"))->IsDirty());
    EXPECT_FALSE(DocumentOf(Root("P"))->IsDirty());
    EXPECT_THAT(capture.Lines(),
                ElementsAre("QTBEPsnNodeOnASMPRODUCT::SetStdCatiaAttribute -> setting <5> to <C>: ", "<B> -> <C>"));
}

TEST_F(ProductDocuments, EachAttributeOfTheReferenceIsWrittenToItsOwnProperty)
{
    Open(PRODUCTS);
    const CATIProduct_var spProduct = Root("P");
    CATUnicodeString usText;
    EXPECT_THAT(Set(spProduct, 2, "n", NULL), Succeeds());
    EXPECT_THAT(Set(spProduct, 3, "", NULL), Succeeds());
    EXPECT_THAT(Set(spProduct, 4, "d", NULL), Succeeds());
    EXPECT_THAT(Set(spProduct, 5, "r", NULL), Succeeds());
    EXPECT_THAT(spProduct->GetNomenclature(&usText), Succeeds());
    EXPECT_EQ(usText, "n");
    EXPECT_THAT(spProduct->GetDescriptionRef(&usText), Succeeds());
    EXPECT_EQ(usText, "");
    EXPECT_THAT(spProduct->GetDefinition(&usText), Succeeds());
    EXPECT_EQ(usText, "d");
    EXPECT_THAT(spProduct->GetRevision(&usText), Succeeds());
    EXPECT_EQ(usText, "r");
}

TEST_F(ProductDocuments, ThePartNumberIsNeverWritten)
{
    Open(PRODUCTS);
    unsigned char bChanged = TRUE;
    {
        const DebugCapture capture;
        EXPECT_THAT(Set(At("P", {"C.1"}), 1, "OTHER", &bChanged), Succeeds());
        EXPECT_THAT(
            capture.Lines(),
            ElementsAre("QTBEPsnNodeOnASMPRODUCT::SetStdCatiaAttribute -> setting <1> to <OTHER>: ", "<PC> -> <OTHER>",
                        "QTBEPsnNodeOnASMPRODUCT::SetStdCatiaAttribute -> not setting the CATIA part number to 'OTHER' "
                        "because it is an identifying attribute."));
    }
    EXPECT_EQ(bChanged, FALSE);
    EXPECT_EQ(At("P", {"C.1"})->GetPartNumber(), "PC");
    EXPECT_FALSE(DocumentOf(Root("PC"))->IsDirty());
    bChanged = TRUE;
    const DebugCapture capture;
    EXPECT_THAT(Set(Root("PC"), 1, "PC", &bChanged), Succeeds());
    EXPECT_EQ(bChanged, FALSE);
    EXPECT_THAT(capture.Lines(), Contains("<PC> / <PC> (same)."));
}

TEST_F(ProductDocuments, InstanceNameAndDescriptionAreNeverWritten)
{
    Open(PRODUCTS);
    const CATIProduct_var spInstance = At("P", {"C.1"});
    unsigned char bChanged = TRUE;
    const DebugCapture capture;
    EXPECT_THAT(Set(spInstance, 6, "C.9", &bChanged), FailsQuietly());
    EXPECT_THAT(Set(Root("PC"), 6, "C.9", &bChanged), FailsQuietly());
    EXPECT_THAT(Set(spInstance, 7, "right", &bChanged), FailsQuietly());
    EXPECT_THAT(Set(Root("PC"), 7, "right", &bChanged), FailsQuietly());
    EXPECT_EQ(NameOf(spInstance), "C.1");
    CATUnicodeString usDescription;
    EXPECT_THAT(CATIPrdProperties_var(spInstance)->GetDescriptionInst(&usDescription), Succeeds());
    EXPECT_EQ(usDescription, "left");
    EXPECT_FALSE(DocumentOf(Root("P"))->IsDirty());
    EXPECT_THAT(capture.Lines(), Contains("-> the instance name is only valid for instance PSN nodes !").Times(2));
    EXPECT_THAT(capture.Lines(),
                Contains("-> the instance description is only valid for instance PSN nodes !").Times(2));
}

TEST_F(ProductDocuments, OnlyTheStandardAttributesCanBeSet)
{
    Open(PRODUCTS);
    constexpr const char* TEXT = "(PsnAttrType >= QTB_PSNATTR_FIRST) && (PsnAttrType <= QTB_PSNATTR_LAST)";
    EXPECT_THAT(Set(Root("P"), 0, "x", NULL), FailsAssertion(TEXT));
    EXPECT_THAT(Set(Root("P"), 8, "x", NULL), FailsAssertion(TEXT));
}

TEST_F(ProductDocuments, AProductThatIsNotLoadedIsLoadedOnRequestOnly)
{
    Open(PRODUCTS);
    const CATIProduct_var spProduct = At("P", {"V.1"});
    unsigned char bChanged = TRUE;
    EXPECT_THAT(Set(spProduct, 2, "tap", &bChanged, FALSE), FailsCall("spIProductOnThis->GetNomenclature"));
    EXPECT_EQ(bChanged, FALSE);
    EXPECT_THAT(Set(spProduct, 2, "tap", &bChanged, TRUE), Succeeds());
    EXPECT_EQ(bChanged, TRUE);
    EXPECT_EQ(DocumentPathOf(spProduct), "/data/v.CATPart");
    EXPECT_TRUE(DocumentOf(spProduct)->IsDirty());
}

TEST_F(ProductDocuments, AnEmbeddedComponentMakesTheDocumentAboveDirty)
{
    Open(PRODUCTS);
    EXPECT_THAT(Set(At("P", {"E.1"}), 2, "assembly", NULL), Succeeds());
    EXPECT_TRUE(DocumentOf(Root("P"))->IsDirty());
}

TEST_F(ProductDocuments, ABrokenLinkHasNoReferenceToWriteTo)
{
    Open(PRODUCTS);
    EXPECT_THAT(Set(At("P", {"L.1"}), 1, "x", NULL), FailsCall("QTBPsnTreeUtil::GetReferencePsnNode"));
    EXPECT_THAT(Set(At("P", {"L.1"}), 2, "x", NULL), FailsCall("QTBPsnTreeUtil::GetReferencePsnNode"));
}

TEST_F(ProductDocuments, AWriteOfWhichTheDocumentIsNotFoundSucceeds)
{
    const QTBFakeProducts fakes;
    unsigned char bChanged = FALSE;
    const DebugCapture capture;
    EXPECT_THAT(Set(fakes.Create({.usNomenclature = "old"}), 2, "new", &bChanged), Succeeds());
    EXPECT_EQ(bChanged, TRUE);
    EXPECT_THAT(capture.Lines(), Contains("QTBEPsnNodeOnASMPRODUCT::SetStdCatiaAttribute -> could not retrieve "
                                          "document, not setting it dirty !"));
}

TEST_F(ProductDocuments, EachReadAndWriteThatFailsIsNamed)
{
    const QTBFakeProducts fakes;
    const CATBaseUnknown_var spUnreadable = fakes.Create({.getResult = E_FAIL});
    EXPECT_THAT(Set(spUnreadable, 2, "x", NULL), FailsCall("spIProductOnThis->GetNomenclature"));
    EXPECT_THAT(Set(spUnreadable, 3, "x", NULL), FailsCall("spIProductOnThis->GetDescriptionRef"));
    EXPECT_THAT(Set(spUnreadable, 4, "x", NULL), FailsCall("spIProductOnThis->GetDefinition"));
    EXPECT_THAT(Set(spUnreadable, 5, "x", NULL), FailsCall("spIProductOnThis->GetRevision"));
    const CATBaseUnknown_var spReadOnly = fakes.Create({.setResult = E_FAIL});
    unsigned char bChanged = TRUE;
    EXPECT_THAT(Set(spReadOnly, 2, "x", &bChanged), FailsCall("spIPrdPropertiesOnThis->SetNomenclature"));
    EXPECT_EQ(bChanged, FALSE);
    EXPECT_THAT(Set(spReadOnly, 3, "x", NULL), FailsCall("spIPrdPropertiesOnThis->SetDescriptionRef"));
    EXPECT_THAT(Set(spReadOnly, 4, "x", NULL), FailsCall("spIPrdPropertiesOnThis->SetDefinition"));
    EXPECT_THAT(Set(spReadOnly, 5, "x", NULL), FailsCall("spIPrdPropertiesOnThis->SetRevision"));
}

TEST_F(ProductDocuments, AttributesNeedTheInterfacesOfAProduct)
{
    const QTBFakeProducts fakes;
    QTBTestLateType product("QTBProductWithoutProperties");
    product.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>()
        .Register<TIECATIProduct, CATIProduct, QTBFakeProducts::Product>();
    EXPECT_THAT(Set(QTBFakeProducts::Enter(product, {}), 2, "x", NULL), LacksInterface("spIPrdPropertiesOnThis"));
    QTBTestLateType noProduct("QTBNoProduct");
    noProduct.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>();
    EXPECT_THAT(Set(noProduct.Create(), 2, "x", NULL), LacksInterface("spIProductOnThis"));
}

// Whether a document has to be saved.

TEST_F(ProductDocuments, AProductWithoutPdmFileIsDirty)
{
    Open(PRODUCTS);
    EXPECT_EQ(IsDirty(Root("P")), "dirty");
    Update(NumberedFile("CATProductFile", "1", "p.CATProduct", "P", Info({{"QtbHasFile", "false"}})));
    EXPECT_EQ(IsDirty(Root("P")), "dirty");
}

TEST_F(ProductDocuments, AProductThatIsAsThePdmSystemHoldsItIsClean)
{
    Open(PRODUCTS);
    Update(NumberedFile("CATProductFile", "1", "p.CATProduct", "P"));
    EXPECT_EQ(IsDirty(Root("P")), "clean");
}

TEST_F(ProductDocuments, AProductWithChangesIsDirty)
{
    Open(PRODUCTS);
    Update(NumberedFile("CATProductFile", "1", "p.CATProduct", "P"));
    DocumentOf(Root("P"))->SetDirty(TRUE);
    EXPECT_EQ(IsDirty(Root("P")), "dirty");
}

TEST_F(ProductDocuments, AShapeIsNeverDirty)
{
    Open(R"(<product id="g" file="g.cgr" partNumber="G" dirty="true"/>)");
    Update(NumberedFile("CGRFile", "1", "g.cgr", "G"));
    EXPECT_EQ(IsDirty(Root("G")), "clean");
}

TEST_F(ProductDocuments, AFileWhoseNameChangedAfterLoadIsDirty)
{
    Open(PRODUCTS);
    Update(NumberedFile("CATProductFile", "1", "former.CATProduct", "P"));
    EXPECT_EQ(IsDirty(Root("P")), "dirty");
    Update(NumberedFile("CATProductFile", "1", "p.CATProduct", "P"));
    EXPECT_EQ(IsDirty(Root("P")), "clean");
    DocumentOf(Root("P"))->SetStorageName("/data/renamed.CATProduct");
    EXPECT_EQ(IsDirty(Root("P")), "dirty");
}

TEST_F(ProductDocuments, AFileThatWasWrittenAfterItWasExchangedIsDirty)
{
    const QTBTestFolder folder;
    Open(R"(<product id="c" file="c.CATPart" partNumber="C"/>)", folder.GetPath());
    Update(NumberedFile("CATPartFile", "1", "c.CATPart", "C"));
    const std::string path = folder.Write("c.CATPart", "one");
    EXPECT_EQ(IsDirty(Root("C")), "dirty");
    EXPECT_THAT(QTBDocUtil::FileWasExchanged(path.c_str()), Succeeds());
    EXPECT_EQ(IsDirty(Root("C")), "clean");
    folder.Write("c.CATPart", "two");
    EXPECT_EQ(IsDirty(Root("C")), "dirty");
}

TEST_F(ProductDocuments, ACatPartShownFromItsShapeIsAsItsOwnFileInTheExchangeFolder)
{
    const QTBTestFolder folder;
    QTBGlobVarsUtil::SetExMapFolder(folder.GetPath().c_str());
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="v" name="V.1"/></product>
            <product id="v" file="v.CATPart" shape="v.cgr" link="visualization"/>)");
    Update(File("CATPartFile", "1", "v.CATPart", Attribute("PartNumber", "v")));
    DocumentOf(At("P", {"V.1"}))->SetDirty(TRUE);
    EXPECT_EQ(IsDirty(At("P", {"V.1"})), "clean");
    folder.Write("v.CATPart", "text");
    EXPECT_EQ(IsDirty(At("P", {"V.1"})), "dirty");
}

TEST_F(ProductDocuments, TheExtensionsOfPartAndShapeAreComparedInUpperCase)
{
    const QTBTestFolder folder;
    QTBGlobVarsUtil::SetExMapFolder(folder.GetPath().c_str());
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="v" name="V.1"/></product>
            <product id="v" file="v.catPART" shape="v.Cgr" link="visualization"/>)");
    Update(File("CATPartFile", "1", "v.catPART", Attribute("PartNumber", "v")));
    DocumentOf(At("P", {"V.1"}))->SetDirty(TRUE);
    EXPECT_EQ(IsDirty(At("P", {"V.1"})), "clean");
}

TEST_F(ProductDocuments, AnArchiveIsDirtyWhenOneOfItsDocumentsIs)
{
    Open(PRODUCTS);
    g_QTBLoadManager.SetCatiaFileIsCmiArchiveRoot(Root("P"), TRUE, "box.cmi");
    Update(NumberedFile("CMIArchiveFile", "1", "box.cmi", "P"));
    EXPECT_EQ(IsDirty(Root("P")), "clean");
    DocumentOf(Root("PC"))->SetDirty(TRUE);
    EXPECT_EQ(IsDirty(Root("P")), "dirty");
}

TEST_F(ProductDocuments, AnArchiveThatCannotBeLookedThroughIsAsItsRootFile)
{
    const QTBTestFolder folder;
    QTBGlobVarsUtil::SetExMapFolder(folder.GetPath().c_str());
    Open(PRODUCTS);
    const CATIProduct_var spProduct = At("P", {"L.1"});
    g_QTBLoadManager.SetCatiaFileIsCmiArchiveRoot(spProduct, TRUE, "box.cmi");
    Update(NumberedFile("CMIArchiveFile", "1", "l.CATPart", "l"));
    EXPECT_EQ(IsDirty(spProduct), "clean");
    folder.Write("l.CATPart", "text");
    EXPECT_EQ(IsDirty(spProduct), "dirty");
}

TEST_F(ProductDocuments, DesignTablesAreToldOfADocumentThatIsClean)
{
    Open(R"(<product id="c" file="c.CATPart" partNumber="C"><designTable name="sizes"/></product>
            <product id="n" file="n.CATPart" partNumber="N"/>)");
    Update(NumberedFile("CATPartFile", "1", "c.CATPart", "C") + NumberedFile("CATPartFile", "2", "n.CATPart", "N"));
    unsigned char bHasTables = FALSE;
    EXPECT_EQ(IsDirty(Root("C"), &bHasTables), "clean");
    EXPECT_EQ(bHasTables, TRUE);
    // The flag is never taken back.
    EXPECT_EQ(IsDirty(Root("N"), &bHasTables), "clean");
    EXPECT_EQ(bHasTables, TRUE);
    bHasTables = FALSE;
    EXPECT_EQ(IsDirty(Root("N"), &bHasTables), "clean");
    EXPECT_EQ(bHasTables, FALSE);
    DocumentOf(Root("C"))->SetDirty(TRUE);
    EXPECT_EQ(IsDirty(Root("C"), &bHasTables), "dirty");
    EXPECT_EQ(bHasTables, FALSE);
}

TEST_F(ProductDocuments, AProductWithoutFileIsClean)
{
    Open(R"(<product id="n" type="CATPart" partNumber="N" dirty="true"/>)");
    unsigned char bIsDirty = TRUE;
    EXPECT_THAT(Extension(Root("N"))->PsnDocumentIsDirty(Root("N"), &bIsDirty), Succeeds());
    EXPECT_EQ(bIsDirty, FALSE);
    const QTBFakeProducts fakes;
    bIsDirty = TRUE;
    EXPECT_THAT(Extension(Root("N"))->PsnDocumentIsDirty(fakes.Create({.linkResult = E_FAIL}), &bIsDirty), Succeeds());
    EXPECT_EQ(bIsDirty, FALSE);
}

TEST_F(ProductDocuments, AFileThatThePdmSystemDoesNotKnowIsComparedWithTheOneExchanged)
{
    const QTBTestFolder folder;
    Open(R"(<product id="c" file="c.CATPart" partNumber="C"/>)", folder.GetPath());
    unsigned char bIsDirty = TRUE;
    EXPECT_THAT(Extension(Root("C"))->PsnDocumentIsDirty(Root("C"), &bIsDirty), Succeeds());
    EXPECT_EQ(bIsDirty, FALSE);
    folder.Write("c.CATPart", "text");
    EXPECT_THAT(Extension(Root("C"))->PsnDocumentIsDirty(Root("C"), &bIsDirty), Succeeds());
    EXPECT_EQ(bIsDirty, TRUE);
}

TEST_F(ProductDocuments, BeingDirtyNeedsPointersAndTheLinkToThePdmGraph)
{
    Open(PRODUCTS);
    const CATIProduct_var spProduct = Root("P");
    unsigned char bIsDirty = FALSE;
    EXPECT_THAT(QTBIPsnNode_var(spProduct)->DocumentIsDirty(NULL, NULL), FailsAssertion("pbIsDirty != NULL"));
    EXPECT_THAT(Extension(spProduct)->PsnDocumentIsDirty(spProduct, NULL), FailsAssertion("pbIsDirty != NULL"));
    EXPECT_THAT(Extension(spProduct)->PsnDocumentIsDirty(CATIProduct_var(), &bIsDirty), LacksInterface("spIProduct"));
    {
        const QTBFault fault("CatiaFilePdmNodeExists");
        EXPECT_THAT(QTBIPsnNode_var(spProduct)->DocumentIsDirty(&bIsDirty, NULL),
                    FailsCall("spILinkToQtbOnThis->CatiaFilePdmNodeExists"));
        EXPECT_THAT(Extension(spProduct)->PsnDocumentIsDirty(spProduct, &bIsDirty),
                    FailsCall("spILinkToQtb->CatiaFilePdmNodeExists"));
    }
    Update(NumberedFile("CATProductFile", "1", "p.CATProduct", "P"));
    {
        const QTBFault fault("CatiaFilePdmNodeExists", spProduct, 1);
        EXPECT_THAT(DiagnosisOf([&] { return QTBIPsnNode_var(spProduct)->DocumentIsDirty(&bIsDirty, NULL); }),
                    ElementsAre(Call("spILinkToQtb->CatiaFilePdmNodeExists"), Call("PsnDocumentIsDirty")));
    }
    {
        const QTBFault fault("CorrespondingPdmNodesExist");
        EXPECT_THAT(DiagnosisOf([&] { return QTBIPsnNode_var(spProduct)->DocumentIsDirty(&bIsDirty, NULL); }),
                    ElementsAre(Call("spILinkToQtbOnThis->CorrespondingPdmNodesExist"), Call("GetPdmNodeType")));
    }
    QTBTestLateType type("QTBPsnNodeOnly");
    type.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>()
        .Register<TIECATIProduct, CATIProduct, QTBFakeProducts::Product>()
        .Register<TIECATIPrdLink, CATIPrdLink, QTBFakeProducts::Link>();
    const QTBFakeProducts fakes;
    const CATBaseUnknown_var spUnlinked = QTBFakeProducts::Enter(type, {});
    EXPECT_THAT(QTBIPsnNode_var(spUnlinked)->DocumentIsDirty(&bIsDirty, NULL), LacksInterface("spILinkToQtbOnThis"));
    EXPECT_THAT(Extension(spProduct)->PsnDocumentIsDirty(spUnlinked, &bIsDirty), LacksInterface("spILinkToQtb"));
}

TEST_F(ProductDocuments, AFileThatCannotBeReadIsAnError)
{
    const QTBTestFolder folder;
    Open(R"(<product id="c" file="c.CATPart" partNumber="C"/>)", folder.GetPath());
    Update(NumberedFile("CATPartFile", "1", "c.CATPart", "C"));
    std::filesystem::create_directory(folder.GetPath("c.CATPart"));
    unsigned char bIsDirty = FALSE;
    EXPECT_THAT(QTBIPsnNode_var(Root("C"))->DocumentIsDirty(&bIsDirty, NULL),
                FailsWithMessage("FileNotReadableERR_1003"));
}

// Documents.

TEST_F(ProductDocuments, TheDocumentIsThatOfTheReference)
{
    Open(PRODUCTS);
    EXPECT_EQ(DocumentPathOf(Root("P")), "/data/p.CATProduct");
    EXPECT_EQ(DocumentPathOf(At("P", {"C.1"})), "/data/c.CATPart");
}

TEST_F(ProductDocuments, TheDocumentIsLoadedWhenOnlyItsShapeIsInSession)
{
    Open(PRODUCTS);
    EXPECT_EQ(ToText(DocumentOf(At("P", {"V.1"}))->GetStorageName()), "/data/v.cgr");
    EXPECT_EQ(DocumentPathOf(At("P", {"V.1"})), "/data/v.CATPart");
}

TEST_F(ProductDocuments, AnEmbeddedComponentHasTheDocumentOfItsShapeOrNone)
{
    Open(PRODUCTS);
    EXPECT_EQ(DocumentPathOf(At("P", {"S.1"})), "/data/s.cgr");
    CATDocument* pDocument = NULL;
    const HRESULT hr = QTBIPsnNode_var(At("P", {"E.1"}))->GetReferenceDocumentPtr(&pDocument, FALSE);
    EXPECT_THAT(hr, FailsWithMessage("PsnEmbeddedComponentNotSupportedERR_2005"));
    EXPECT_THAT(ToText(CATError::CATGetLastError(hr, NULL)->GetNLSMessage()), HasSubstr("E.1 (PE)"));
}

TEST_F(ProductDocuments, ABrokenLinkHasNoDocument)
{
    Open(PRODUCTS);
    CATDocument* pDocument = NULL;
    EXPECT_THAT(QTBIPsnNode_var(At("P", {"L.1"}))->GetReferenceDocumentPtr(&pDocument, TRUE), FailsQuietly());
    EXPECT_TRUE(pDocument == NULL);
}

TEST_F(ProductDocuments, ACatProductWithoutDocumentIsAnErrorForTheUser)
{
    const QTBFakeProducts fakes;
    CATDocument* pDocument = NULL;
    const HRESULT hr =
        QTBIPsnNode_var(fakes.Create({.usInstanceName = "Pump.1"}))->GetReferenceDocumentPtr(&pDocument, FALSE);
    EXPECT_THAT(hr, FailsWithMessage("PsnNodeRefDocNotFoundERR_2006"));
    EXPECT_THAT(ToText(CATError::CATGetLastError(hr, NULL)->GetNLSMessage()), HasSubstr("\"Pump.1\""));
    const CATBaseUnknown_var spNameless = fakes.Create({.instanceNameResult = E_FAIL});
    const DebugCapture capture;
    EXPECT_THAT(QTBIPsnNode_var(spNameless)->GetReferenceDocumentPtr(&pDocument, FALSE),
                FailsWithMessage("PsnNodeRefDocNotFoundERR_2006"));
    EXPECT_THAT(capture.Lines(), Contains("QTBEPsnNodeOnASMPRODUCT::GetReferenceDocumentPtr -> "
                                          "spIProductOnThis->GetPrdInstanceName FAILED"));
}

TEST_F(ProductDocuments, AProductWithoutDocumentAndTypeFailsQuietly)
{
    const QTBFakeProducts fakes;
    const CATBaseUnknown_var spProduct = fakes.Create({.usLinkedFileName = "/data/fake.odd"});
    CATDocument* pDocument = NULL;
    const DebugCapture capture;
    EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetReferenceDocumentPtr(&pDocument, FALSE), FailsQuietly());
    EXPECT_THAT(capture.Lines(), Contains("QTBEPsnNodeOnASMPRODUCT::GetReferenceDocumentPtr -> GetPsnNodeType FAILED"));
}

TEST_F(ProductDocuments, TheDocumentIsTracedOnRequest)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P" displayName="Pump"/>)");
    CATDocument* pDocument = NULL;
    const DebugCapture capture;
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetReferenceDocumentPtr(&pDocument, FALSE), Succeeds());
    EXPECT_THAT(capture.Lines(), IsEmpty());
    pDocument = NULL;
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetReferenceDocumentPtr(&pDocument, TRUE), Succeeds());
    EXPECT_THAT(capture.Lines(),
                ElementsAre("QTBEPsnNodeOnASMPRODUCT::GetReferenceDocumentPtr -> usDocType:CATProduct, "
                            "StorageName:/data/p.CATProduct, DisplayName:Pump"));
}

TEST_F(ProductDocuments, ADocumentOfAnotherTypeCannotBeTraced)
{
    const QTBTestWindow window;
    const QTBFakeProducts fakes;
    CATDocument* pDocument = NULL;
    const CATBaseUnknown_var spProduct = fakes.Create({.pDocument = window.GetFrmWindow()->GetEditor()->GetDocument()});
    EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetReferenceDocumentPtr(&pDocument, FALSE), Succeeds());
    pDocument = NULL;
    EXPECT_THAT(QTBIPsnNode_var(spProduct)->GetReferenceDocumentPtr(&pDocument, TRUE),
                FailsCall("QTBFileUtil::GetFileType"));
}

TEST_F(ProductDocuments, TheDocumentNeedsAPointerThatIsNull)
{
    Open(PRODUCTS);
    CATDocument* pDocument = DocumentOf(Root("P"));
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetReferenceDocumentPtr(NULL, FALSE), FailsAssertion("ppDocument != NULL"));
    EXPECT_THAT(QTBIPsnNode_var(Root("P"))->GetReferenceDocumentPtr(&pDocument, FALSE),
                FailsAssertion("*ppDocument == NULL"));
    const QTBFakeProducts fakes;
    pDocument = NULL;
    EXPECT_THAT(QTBIPsnNode_var(fakes.Create({.givesNullDocument = true}))->GetReferenceDocumentPtr(&pDocument, FALSE),
                FailsAssertion("*ppDocument != NULL"));
    EXPECT_THAT(QTBIPsnNode_var(fakes.Create({.linkResult = E_FAIL}))->GetReferenceDocumentPtr(&pDocument, FALSE),
                FailsCall("QTBPsnTreeUtil::IsEmbeddedComponentNode"));
    QTBTestLateType type("QTBNoProduct");
    type.Register<TIEQTBIPsnNode, QTBIPsnNode, QTBEPsnNodeOnASMPRODUCT>();
    EXPECT_THAT(QTBIPsnNode_var(type.Create())->GetReferenceDocumentPtr(&pDocument, FALSE),
                LacksInterface("spIProductOnThis"));
}

} // namespace
