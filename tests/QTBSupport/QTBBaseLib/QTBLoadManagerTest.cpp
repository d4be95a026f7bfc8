#include "QTBLoadManager.h"

#include <memory>

#include <gmock/gmock.h>

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATError.h"
#include "CATIProduct.h"
#include "CATInstantiateComponent.h"
#include "CATPrdStructure.h"
#include "CATProductServices.h"
#include "QTBHashTableNvSetAttribute.h"
#include "QTBMatchers.h"
#include "QTBTestSession.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

class LoadManager : public QTBTestSession
{
protected:
    static std::string NumberedPart(const char* key, const char* partNumber, const std::string& further = "")
    {
        return Part(key, Attribute("PartNumber", partNumber) + further);
    }

    static std::string File(const char* className, const char* key, const char* fileName,
                            const std::string& further = "")
    {
        return Object(className, key, Attribute("FileName", fileName) + further);
    }

    static std::string Usage(const char* key, const char* left, const char* right, const char* instanceName)
    {
        return PartPart(key, left, right, Attribute("InstanceName", instanceName));
    }

    // Each gives the key of what was found, "none" when nothing was.
    static std::string PartOf(const char* partNumber)
    {
        QTBIPdmNode_var spIPdmNode;
        const HRESULT hr = g_QTBLoadManager.GetPdmPartForPartNumber(partNumber, &spIPdmNode);
        return Found(hr, spIPdmNode);
    }

    static std::string FileOf(const char* partNumber)
    {
        QTBIPdmNode_var spIPdmNode;
        const HRESULT hr = g_QTBLoadManager.GetPdmFileForPartNumber(partNumber, &spIPdmNode);
        return Found(hr, spIPdmNode);
    }

    static std::string FileNamed(const char* objInfo)
    {
        QTBIPdmNode_var spIPdmNode;
        const HRESULT hr = g_QTBLoadManager.GetPdmFileForPdmObjName(objInfo, &spIPdmNode, FALSE);
        return Found(hr, spIPdmNode);
    }

    static std::string RelationOf(const char* fatherPartNumber, const char* instanceName)
    {
        QTBIPdmRelNode_var spIPdmRelNode;
        const HRESULT hr = g_QTBLoadManager.GetPdmRelationForInstance(fatherPartNumber, instanceName, &spIPdmRelNode);
        return Found(hr, spIPdmRelNode);
    }

    static std::string RelationOf(const char* instanceKey)
    {
        QTBIPdmRelNode_var spIPdmRelNode;
        const HRESULT hr = g_QTBLoadManager.GetPdmRelationForInstance(instanceKey, &spIPdmRelNode);
        return Found(hr, spIPdmRelNode);
    }

    // Opens a product document with that many parts, each used twice, and gives the instances, all of the first uses
    // before those of the second.
    static CATListValCATBaseUnknown_var OpenInstances(int partCount)
    {
        CATPrdStructure structure;
        const auto addReference = [&](const std::string& name, const char* type) {
            CATPrdReferenceData data;
            data.storageName = CATUnicodeString(name + "." + type);
            data.documentType = type;
            data.definition.partNumber = CATUnicodeString(name);
            structure.references.push_back(data);
        };
        addReference("assembly", "CATProduct");
        for (int i = 1; i <= partCount; ++i) {
            addReference("part" + std::to_string(i), "CATPart");
        }
        for (const char* suffix : {".1", ".2"}) {
            for (int i = 1; i <= partCount; ++i) {
                structure.usages.push_back(
                    {0, static_cast<std::size_t>(i), CATUnicodeString("part" + std::to_string(i) + suffix), {}, {}});
            }
        }
        CATIProduct_var spRoot;
        EXPECT_THAT(CATProductServices::Open(structure, nullptr), Succeeds());
        EXPECT_THAT(CATProductServices::FindRootProduct("assembly", &spRoot), Succeeds());
        const std::unique_ptr<CATListValCATBaseUnknown_var> pChildren(spRoot->GetChildren("CATIProduct"));
        return *pChildren;
    }

    static void CloseDocuments()
    {
        const CATListValCATBaseUnknown_var documents = CATDocumentServices::GetDocuments();
        for (const CATBaseUnknown_var& spDocument : documents) {
            CATDocumentServices::Remove(*CATDocument::FromComponent(spDocument.Get()));
        }
    }

    static CATBaseUnknown_var CreateProduct()
    {
        void* pProduct = nullptr;
        EXPECT_THAT(::CATInstantiateComponent("QTBNode", CLSID_CATBaseUnknown, &pProduct), Succeeds());
        return CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pProduct));
    }

private:
    static std::string Found(HRESULT hr, const CATBaseUnknown_var& spNode)
    {
        if (FAILED(hr)) {
            EXPECT_THAT(hr, FailsQuietly());
            EXPECT_TRUE(spNode == NULL_var);
            return "none";
        }
        return KeyOf(spNode);
    }
};

TEST_F(LoadManager, APartIsFoundByItsNumber)
{
    Update(NumberedPart("A", "100") + NumberedPart("B", "200") +
           Object("Document", "D", Attribute("PartNumber", "300")));
    EXPECT_EQ(PartOf("200"), "B");
    EXPECT_EQ(PartOf("300"), "none");
    EXPECT_EQ(PartOf("400"), "none");
    EXPECT_EQ(PartOf(""), "none");
}

TEST_F(LoadManager, NodesThatAreReadLaterAreFoundToo)
{
    Update(NumberedPart("A", "100"));
    EXPECT_EQ(PartOf("200"), "none");
    Update(NumberedPart("B", "200"));
    EXPECT_EQ(PartOf("200"), "B");
}

TEST_F(LoadManager, ARereadPartIsFoundByItsNewNumberOnly)
{
    Update(NumberedPart("A", "100"));
    EXPECT_EQ(PartOf("100"), "A");
    Update(NumberedPart("A", "101"));
    EXPECT_EQ(PartOf("100"), "none");
    EXPECT_EQ(PartOf("101"), "A");
}

TEST_F(LoadManager, ARemovedPartIsNotFoundAndComesBackWhenItIsReadAgain)
{
    Update(NumberedPart("A", "100"));
    EXPECT_EQ(PartOf("100"), "A");
    EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph("A", FALSE, FALSE, FALSE, nullptr), Succeeds());
    EXPECT_EQ(PartOf("100"), "none");
    Update(NumberedPart("A", "100"));
    EXPECT_EQ(PartOf("100"), "A");
    Update("<objectToDelete>A</objectToDelete>");
    EXPECT_EQ(PartOf("100"), "none");
}

TEST_F(LoadManager, ANewVersionTakesTheOldOnesPlace)
{
    Update(NumberedPart("A1", "100"));
    EXPECT_EQ(PartOf("100"), "A1");
    Update(NumberedPart("A2", "100", Info({{"QtbKey", "A2"}, {"QtbSupersedes", "A1"}})));
    EXPECT_EQ(PartOf("100"), "A2");
}

TEST_F(LoadManager, OfSeveralPartsTheOneOfTheNewestActionWinsThenTheNewestVersion)
{
    Update(NumberedPart("A", "100", Info({{"QtbVersion", "9"}})));
    Update(NumberedPart("B", "100", Info({{"QtbVersion", "2"}})) +
           NumberedPart("C", "100", Info({{"QtbVersion", "10"}})) +
           NumberedPart("D", "100", Info({{"QtbVersion", "3"}})));
    EXPECT_EQ(PartOf("100"), "C");
    Update(NumberedPart("A", "100", Info({{"QtbVersion", "1"}})));
    EXPECT_EQ(PartOf("100"), "A");
}

TEST_F(LoadManager, AFileIsFoundByThePartThatItHangsOn)
{
    Update(NumberedPart("A", "100") + NumberedPart("B", "200") + File("CATDrawingFile", "F1", "100.CATDrawing") +
           File("CATPartFile", "F2", "100.CATPart") + Object("Document", "D") + Relation("PartFile", "1", "A", "F1") +
           Relation("PartFile", "2", "A", "F2") + Relation("PartDocument", "3", "B", "D"));
    // Geometry before a drawing.
    EXPECT_EQ(FileOf("100"), "F2");
    EXPECT_EQ(FileOf("200"), "none");
    Update("<objectToDelete>F2</objectToDelete>");
    EXPECT_EQ(FileOf("100"), "F1");
    Update("<relationToDelete>1</relationToDelete>");
    EXPECT_EQ(FileOf("100"), "none");
}

TEST_F(LoadManager, AFileThatCarriesThePartNumberItselfComesFirst)
{
    Update(NumberedPart("A", "100") + File("CATPartFile", "F1", "other.CATPart") +
           File("CGRFile", "F2", "100.cgr", Attribute("PartNumber", "100")) + Relation("PartFile", "1", "A", "F1"));
    EXPECT_EQ(FileOf("100"), "F2");
}

TEST_F(LoadManager, AFileIsFoundByNameWithoutExtensionAndClass)
{
    Update(File("CATDrawingFile", "F1", "bracket.CATDrawing") + File("CGRFile", "F2", "bracket.cgr") +
           File("DesignTableFile", "F3", "sizes") + File("CGRFile", "F4", "a.b.cgr"));
    EXPECT_EQ(FileNamed("bracket/CATDrawingFile"), "F1");
    EXPECT_EQ(FileNamed("bracket/CGRFile"), "F2");
    EXPECT_EQ(FileNamed("sizes/DesignTableFile"), "F3");
    EXPECT_EQ(FileNamed("a.b/CGRFile"), "F4");
    EXPECT_EQ(FileNamed("bracket.cgr/CGRFile"), "none");
    EXPECT_EQ(FileNamed("bracket/CATPartFile"), "none");
    Update(File("CGRFile", "F2", "clamp.cgr"));
    EXPECT_EQ(FileNamed("bracket/CGRFile"), "none");
    EXPECT_EQ(FileNamed("clamp/CGRFile"), "F2");
}

TEST_F(LoadManager, AMissingFileIsAnErrorOnRequest)
{
    QTBIPdmNode_var spIPdmNode;
    const HRESULT hr = g_QTBLoadManager.GetPdmFileForPdmObjName("bracket/CGRFile", &spIPdmNode, TRUE);
    EXPECT_THAT(hr, FailsWith("PdmFileNotFoundERR_1002", "bracket/CGRFile"));
    EXPECT_TRUE(CATError::CATGetLastError(hr, nullptr)->GetNLSMessage() ==
                "The PDM graph has no file object \"bracket/CGRFile\".");
}

TEST_F(LoadManager, AnInstanceIsFoundByItsFathersNumberAndItsName)
{
    Update(NumberedPart("A", "100") + NumberedPart("B", "200") + NumberedPart("C", "300") +
           Usage("AB", "A", "B", "Bolt.1") + Usage("AC", "A", "C", "Bolt.2") + Usage("BC", "B", "C", "Bolt.1"));
    EXPECT_EQ(RelationOf("100", "Bolt.1"), "AB");
    EXPECT_EQ(RelationOf("100", "Bolt.2"), "AC");
    EXPECT_EQ(RelationOf("200", "Bolt.1"), "BC");
    EXPECT_EQ(RelationOf("200", "Bolt.2"), "none");
    EXPECT_EQ(RelationOf("300", "Bolt.1"), "none");
    EXPECT_EQ(RelationOf("100", ""), "none");
    EXPECT_EQ(RelationOf("", "Bolt.1"), "none");
}

TEST_F(LoadManager, ARelationOfSeveralInstancesIsFoundByEachName)
{
    Update(NumberedPart("A", "100") + NumberedPart("B", "200") +
           PartPart("AB", "A", "B", "<a name='InstanceName' type='list'><v>Bolt.1</v><v>Bolt.2</v><v/></a>"));
    EXPECT_EQ(RelationOf("100", "Bolt.1"), "AB");
    EXPECT_EQ(RelationOf("100", "Bolt.2"), "AB");
    EXPECT_EQ(RelationOf("AB/Bolt.2"), "AB");
    EXPECT_EQ(RelationOf("AB/"), "none");
}

TEST_F(LoadManager, ARelationOfManyInstancesIsFoundByEachName)
{
    constexpr int COUNT = 40;
    std::string names;
    for (int i = 1; i <= COUNT; ++i) {
        names += "<v>Bolt." + std::to_string(i) + "</v>";
    }
    Update(NumberedPart("A", "100") + NumberedPart("B", "200") +
           PartPart("AB", "A", "B", "<a name=\"InstanceName\" type=\"list\">" + names + "</a>"));
    for (int i = 1; i <= COUNT; ++i) {
        EXPECT_EQ(RelationOf("100", ("Bolt." + std::to_string(i)).c_str()), "AB");
    }
    EXPECT_EQ(RelationOf("100", "Bolt.0"), "none");
    EXPECT_EQ(RelationOf("AB/Bolt.40"), "AB");
    EXPECT_EQ(RelationOf("AB/Bolt.41"), "none");
}

TEST_F(LoadManager, OnlyPartsAreFoundByFatherAndInstanceButAnyRelationByItsInstanceKey)
{
    Update(NumberedPart("A", "100") + File("CATPartFile", "F", "f.CATPart", Attribute("PartNumber", "100")) +
           File("CATPartFile", "G", "g.CATPart") +
           Relation("FileFile", "F/G", "F", "G", Attribute("InstanceName", "G.1")));
    EXPECT_EQ(RelationOf("100", "G.1"), "none");
    EXPECT_EQ(RelationOf("F/G/G.1"), "F/G");
    EXPECT_EQ(RelationOf("F/G/G.2"), "none");
}

TEST_F(LoadManager, AnInstanceFollowsItsFathersNewVersion)
{
    Update(NumberedPart("A1", "100") + NumberedPart("B", "200") + Usage("AB", "A1", "B", "Bolt.1"));
    EXPECT_EQ(RelationOf("100", "Bolt.1"), "AB");
    Update(NumberedPart("A2", "100", Info({{"QtbKey", "A2"}, {"QtbSupersedes", "A1"}})));
    EXPECT_EQ(RelationOf("100", "Bolt.1"), "AB");
}

TEST_F(LoadManager, ARenamedInstanceIsFoundByItsNewNameOnly)
{
    Update(NumberedPart("A", "100") + NumberedPart("B", "200") + Usage("AB", "A", "B", "Bolt.1"));
    EXPECT_EQ(RelationOf("AB/Bolt.1"), "AB");
    Update(Usage("AB", "A", "B", "Bolt.7"));
    EXPECT_EQ(RelationOf("100", "Bolt.1"), "none");
    EXPECT_EQ(RelationOf("AB/Bolt.1"), "none");
    EXPECT_EQ(RelationOf("100", "Bolt.7"), "AB");
    EXPECT_EQ(RelationOf("AB/Bolt.7"), "AB");
}

TEST_F(LoadManager, InstanceKeysOfSupersededRelationsLeadToTheOnesInTheirPlaces)
{
    const auto version = [](const char* key, const char* superseded) {
        return PartPart(key, "A", "B",
                        Attribute("InstanceName", "Bolt.1") + Info({{"QtbKey", key}, {"QtbSupersedes", superseded}}));
    };
    Update(NumberedPart("A", "100") + NumberedPart("B", "200") + Usage("R/1", "A", "B", "Bolt.1"));
    Update(version("R/2", "R/1"));
    EXPECT_EQ(RelationOf("R/1/Bolt.1"), "R/2");
    Update(version("R/3", "R/2"));
    EXPECT_EQ(RelationOf("R/1/Bolt.1"), "R/3");
    EXPECT_EQ(RelationOf("R/2/Bolt.1"), "R/3");
    EXPECT_EQ(RelationOf("R/1/Bolt.2"), "none");
    EXPECT_EQ(RelationOf("R/9/Bolt.1"), "none");
    // The first comes back and takes the place of the last.
    Update(version("R/1", "R/3"));
    EXPECT_EQ(RelationOf("R/1/Bolt.1"), "R/1");
    EXPECT_EQ(RelationOf("R/2/Bolt.1"), "R/1");
    g_QTBLoadManager.Reset();
    EXPECT_EQ(RelationOf("R/2/Bolt.1"), "none");
}

TEST_F(LoadManager, TheInstanceKeyIsTheRelationsKeyAndTheInstanceName)
{
    EXPECT_TRUE(QTBLoadManager::MakeInstanceKey("AB", "Bolt.1") == "AB/Bolt.1");
}

TEST_F(LoadManager, ManyReadingsBetweenTwoLookUpsLoseNothing)
{
    Update(NumberedPart("A", "100") + NumberedPart("B", "200") + Usage("AB", "A", "B", "Bolt.1"));
    for (int i = 0; i < 20000; ++i) {
        ASSERT_THAT(g_QTBLoadManager.PdmNodeWasRead("A"), Succeeds());
    }
    EXPECT_EQ(PartOf("100"), "A");
    EXPECT_EQ(RelationOf("100", "Bolt.1"), "AB");
}

TEST_F(LoadManager, ThePdmNodeTypeIsKeptPerProduct)
{
    const CATBaseUnknown_var spProduct = CreateProduct();
    const CATBaseUnknown_var spOther = CreateProduct();
    CATUnicodeString usType("before");
    EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(spProduct, &usType, FALSE), FailsQuietly());
    EXPECT_TRUE(usType == "before");
    EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(spProduct, &usType, TRUE), Succeeds());
    EXPECT_TRUE(usType == "");
    EXPECT_THAT(g_QTBLoadManager.SetPdmNodeType(spProduct, "Part", TRUE), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(spProduct, &usType, FALSE), Succeeds());
    EXPECT_TRUE(usType == "Part");
    EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(spOther, &usType, FALSE), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.SetPdmNodeType(spProduct, "Document", FALSE), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(spProduct, &usType, FALSE), Succeeds());
    EXPECT_TRUE(usType == "Part");
    EXPECT_THAT(g_QTBLoadManager.SetPdmNodeType(NULL_var, "Part", TRUE), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.SetPdmNodeType(spProduct, "", TRUE), FailsQuietly());
}

TEST_F(LoadManager, AProductOfWhichNothingIsKnownIsNoArchiveRoot)
{
    const CATBaseUnknown_var spProduct = CreateProduct();
    unsigned char bIsRoot = TRUE;
    CATUnicodeString usFileName("before");
    EXPECT_THAT(g_QTBLoadManager.GetCatiaFileIsCmiArchiveRoot(spProduct, &bIsRoot, &usFileName), Succeeds());
    EXPECT_EQ(bIsRoot, FALSE);
    EXPECT_TRUE(usFileName.IsEmpty());
    EXPECT_THAT(g_QTBLoadManager.SetCatiaFileIsCmiArchiveRoot(spProduct, TRUE, "a.zip"), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.GetCatiaFileIsCmiArchiveRoot(spProduct, &bIsRoot, &usFileName), Succeeds());
    EXPECT_EQ(bIsRoot, TRUE);
    EXPECT_TRUE(usFileName == "a.zip");
    EXPECT_THAT(g_QTBLoadManager.GetCatiaFileIsCmiArchiveRoot(NULL_var, &bIsRoot, nullptr), FailsQuietly());
}

TEST_F(LoadManager, WhetherAReferenceIsAnAuxiliaryFileIsUnknownUntilItIsSet)
{
    const CATBaseUnknown_var spProduct = CreateProduct();
    unsigned char bIsAuxFile = TRUE;
    EXPECT_THAT(g_QTBLoadManager.SetPdmNodeType(spProduct, "Part", TRUE), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.GetPsnReferenceIsAuxFile(spProduct, &bIsAuxFile), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.SetPsnReferenceIsAuxFile(spProduct, FALSE), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.GetPsnReferenceIsAuxFile(spProduct, &bIsAuxFile), Succeeds());
    EXPECT_EQ(bIsAuxFile, FALSE);
}

TEST_F(LoadManager, ProductsThatAreGoneDoNotPileUp)
{
    const CATBaseUnknown_var spKept = CreateProduct();
    EXPECT_THAT(g_QTBLoadManager.SetPdmNodeType(spKept, "Part", TRUE), Succeeds());
    const int iBefore = CATBaseUnknown::GetLiveComponentCount();
    for (int i = 0; i < 10000; ++i) {
        g_QTBLoadManager.SetPdmNodeType(CreateProduct(), "Part", TRUE);
    }
    EXPECT_LT(CATBaseUnknown::GetLiveComponentCount(), iBefore + 200);
    CATUnicodeString usType;
    EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(spKept, &usType, FALSE), Succeeds());
}

TEST_F(LoadManager, InstancesShareWhatIsRecordedAboutTheirReference)
{
    {
        const CATListValCATBaseUnknown_var instances = OpenInstances(2);
        EXPECT_THAT(g_QTBLoadManager.SetPdmNodeType(instances[1], "Part", TRUE), Succeeds());
        CATUnicodeString usType;
        EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(instances[3], &usType, FALSE), Succeeds());
        EXPECT_TRUE(usType == "Part");
        EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(instances[2], &usType, FALSE), FailsQuietly());
        const CATIProduct_var spIProduct(instances[1]);
        EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(spIProduct->GetReferenceProduct(), &usType, FALSE), Succeeds());
    }
    CloseDocuments();
}

TEST_F(LoadManager, ProductsInSessionKeepTheirRecordsHoweverManyThereAre)
{
    {
        const CATListValCATBaseUnknown_var instances = OpenInstances(500);
        for (int i = 1; i <= 500; ++i) {
            EXPECT_THAT(g_QTBLoadManager.SetPsnReferenceIsAuxFile(instances[i], i % 2 == 0), Succeeds());
        }
        for (int i = 1; i <= 500; ++i) {
            unsigned char bIsAuxFile = 2;
            EXPECT_THAT(g_QTBLoadManager.GetPsnReferenceIsAuxFile(instances[i + 500], &bIsAuxFile), Succeeds());
            EXPECT_EQ(bIsAuxFile, i % 2 == 0 ? TRUE : FALSE) << i;
        }
    }
    CloseDocuments();
    const int iClosed = CATBaseUnknown::GetLiveComponentCount();
    for (int i = 0; i < 2000; ++i) {
        g_QTBLoadManager.SetPdmNodeType(CreateProduct(), "Part", TRUE);
    }
    // The closed ones are gone, and new ones do not pile up in their place.
    EXPECT_LT(CATBaseUnknown::GetLiveComponentCount(), iClosed);
}

TEST_F(LoadManager, ChildInstancesAreKeptPerPartNumber)
{
    unsigned char bAreProcessed = TRUE;
    CATListValCATUnicodeString Infos;
    EXPECT_THAT(g_QTBLoadManager.ChildInstanceNamesAreProcessed("100", &bAreProcessed), Succeeds());
    EXPECT_EQ(bAreProcessed, FALSE);
    EXPECT_THAT(g_QTBLoadManager.GetChildInstanceInfosAtLoad("100", &Infos), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.SetChildInstanceInfosAtLoad("100", Infos), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.ChildInstanceNamesAreProcessed("100", &bAreProcessed), Succeeds());
    EXPECT_EQ(bAreProcessed, TRUE);
    CATListValCATUnicodeString Saved;
    Saved.Append("AB/Bolt.1");
    EXPECT_THAT(g_QTBLoadManager.SetChildInstanceInfosAtLoad("200", Saved), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.GetChildInstanceInfosAtLoad("200", &Infos), Succeeds());
    EXPECT_THAT(TextsOf(Infos), ElementsAre("AB/Bolt.1"));
    EXPECT_THAT(g_QTBLoadManager.GetChildInstanceInfosAtLoad("100", &Infos), Succeeds());
    EXPECT_THAT(TextsOf(Infos), IsEmpty());
    EXPECT_THAT(g_QTBLoadManager.SetChildInstanceInfosAtLoad("", Saved), FailsQuietly());
}

TEST_F(LoadManager, CatiaAttributesAreKeptPerKey)
{
    CATUnicodeString usValue("before");
    QTBHashTableNvSetAttribute* pNvSet = nullptr;
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttributesNvSetPtr("A", &pNvSet), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A", "Color", &usValue), FailsQuietly());
    EXPECT_TRUE(usValue == "before");
    EXPECT_THAT(g_QTBLoadManager.SetCatiaAttr("A", "Color", "red"), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.SetCatiaAttr("A", "Mass", "1.5"), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.SetCatiaAttr("A", "Color", "blue"), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A", "Color", &usValue), Succeeds());
    EXPECT_TRUE(usValue == "blue");
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("B", "Color", &usValue), FailsQuietly());
    ASSERT_THAT(g_QTBLoadManager.GetCatiaAttributesNvSetPtr("A", &pNvSet), Succeeds());
    CATListValCATUnicodeString Names;
    CATListValCATUnicodeString Values;
    EXPECT_THAT(pNvSet->GetNvSet(&Names, &Values), Succeeds());
    EXPECT_THAT(TextsOf(Names), ElementsAre("Color", "Mass"));
    EXPECT_THAT(TextsOf(Values), ElementsAre("blue", "1.5"));
    EXPECT_THAT(g_QTBLoadManager.SetCatiaAttr("", "Color", "red"), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.SetCatiaAttr("A", "", "red"), FailsQuietly());
}

TEST_F(LoadManager, CatiaAttributesOutliveARereadButNotARemoval)
{
    Update(Part("A"));
    EXPECT_THAT(g_QTBLoadManager.SetCatiaAttr("A", "Color", "red"), Succeeds());
    Update(Part("A"));
    CATUnicodeString usValue;
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A", "Color", &usValue), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.RemovePdmNodeData(PdmNode("A")), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A", "Color", &usValue), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.RemovePdmNodeData(PdmNode("A")), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.RemovePdmNodeData(NULL_var), FailsQuietly());
}

TEST_F(LoadManager, AReplacedItemHandsOnWhatTheNewOneLacks)
{
    Update(NumberedPart("A1", "100") + NumberedPart("A2", "101"));
    g_QTBLoadManager.SetCatiaAttr("A1", "Color", "red");
    g_QTBLoadManager.SetCatiaAttr("A1", "Mass", "1");
    g_QTBLoadManager.SetCatiaAttr("A2", "Color", "blue");
    CATListValCATUnicodeString Infos;
    Infos.Append("AB/Bolt.1");
    g_QTBLoadManager.SetChildInstanceInfosAtLoad("100", Infos);
    EXPECT_THAT(g_QTBLoadManager.ReplacePdmItem(PdmNode("A2"), "A1", NULL_var), Succeeds());
    CATUnicodeString usValue;
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A2", "Color", &usValue), Succeeds());
    EXPECT_TRUE(usValue == "blue");
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A2", "Mass", &usValue), Succeeds());
    EXPECT_TRUE(usValue == "1");
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A1", "Mass", &usValue), FailsQuietly());
    CATListValCATUnicodeString Moved;
    EXPECT_THAT(g_QTBLoadManager.GetChildInstanceInfosAtLoad("101", &Moved), Succeeds());
    EXPECT_THAT(TextsOf(Moved), ElementsAre("AB/Bolt.1"));
    EXPECT_THAT(g_QTBLoadManager.ReplacePdmItem(NULL_var, "A1", NULL_var), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.ReplacePdmItem(PdmNode("A2"), "", NULL_var), FailsQuietly());
}

TEST_F(LoadManager, AProductGetsTheClassOfTheNodeThatReplacesItsItem)
{
    Update(Part("A1") + Object("StandardPart", "A2"));
    const CATBaseUnknown_var spProduct = CreateProduct();
    EXPECT_THAT(g_QTBLoadManager.SetPdmNodeType(spProduct, "Part", TRUE), Succeeds());
    EXPECT_THAT(g_QTBLoadManager.ReplacePdmItem(PdmNode("A2"), "A1", spProduct), Succeeds());
    CATUnicodeString usType;
    EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(spProduct, &usType, FALSE), Succeeds());
    EXPECT_TRUE(usType == "StandardPart");
}

TEST_F(LoadManager, ResettingForgetsEverything)
{
    Update(NumberedPart("A", "100"));
    const CATBaseUnknown_var spProduct = CreateProduct();
    g_QTBLoadManager.SetPdmNodeType(spProduct, "Part", TRUE);
    g_QTBLoadManager.SetCatiaAttr("A", "Color", "red");
    g_QTBLoadManager.SetChildInstanceInfosAtLoad("100", CATListValCATUnicodeString());
    EXPECT_EQ(PartOf("100"), "A");
    g_QTBLoadManager.Reset();
    CATUnicodeString usValue;
    unsigned char bAreProcessed = TRUE;
    EXPECT_THAT(g_QTBLoadManager.GetPdmNodeType(spProduct, &usValue, FALSE), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A", "Color", &usValue), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.ChildInstanceNamesAreProcessed("100", &bAreProcessed), Succeeds());
    EXPECT_EQ(bAreProcessed, FALSE);
    // The graph is still there, and so is what it answers.
    EXPECT_EQ(PartOf("100"), "A");
}

TEST_F(LoadManager, NullPointersAreRefused)
{
    Update(NumberedPart("A", "100"));
    EXPECT_THAT(g_QTBLoadManager.GetPdmPartForPartNumber("100", nullptr), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.GetPdmFileForPartNumber("100", nullptr), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.GetPdmFileForPdmObjName("a/b", nullptr, FALSE), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.GetPdmRelationForInstance("100", "a", nullptr), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.GetPdmRelationForInstance("100", nullptr), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.GetChildInstanceInfosAtLoad("100", nullptr), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.ChildInstanceNamesAreProcessed("100", nullptr), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("A", "Color", nullptr), FailsQuietly());
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttributesNvSetPtr("A", nullptr), FailsQuietly());
}

} // namespace
