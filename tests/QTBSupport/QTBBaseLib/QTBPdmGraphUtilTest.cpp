#include "QTBPdmGraphUtil.h"

#include <gmock/gmock.h>

#include "CATInstantiateComponent.h"
#include "QTBINodeRelations.h"
#include "QTBMatchers.h"
#include "QTBTestSession.h"

using ::testing::ElementsAre;
using ::testing::Not;

namespace {

class PdmGraphUtil : public QTBTestSession
{
protected:
    static CATListValCATBaseUnknown_var Nodes(std::initializer_list<const char*> keys)
    {
        CATListValCATBaseUnknown_var nodes;
        for (const char* key : keys) {
            nodes.Append(FindNode(key));
        }
        return nodes;
    }

    static std::string Version(const char* key, const char* partNumber, const char* version,
                               const char* subVersion = "", const char* isNewest = "")
    {
        return Part(key, Attribute("PartNumber", partNumber) + Info({{"QtbVersion", version},
                                                                     {"QtbSubVersion", subVersion},
                                                                     {"QtbIsNewestVersion", isNewest},
                                                                     {"QtbNewestVersion", "?"}}));
    }
};

TEST_F(PdmGraphUtil, TheObjectsOfARelationAreFoundByTheKeysOfItsRecord)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    QTBIPdmNode_var spLeft;
    QTBIPdmNode_var spRight;
    EXPECT_THAT(QTBPdmGraphUtil::GetCorrespondingObjNodesByPdmKey(RelNode("AB"), &spLeft, &spRight), Succeeds());
    EXPECT_EQ(KeyOf(spLeft), "A");
    EXPECT_EQ(KeyOf(spRight), "B");
}

TEST_F(PdmGraphUtil, ARelationWithAMissingObjectHasNone)
{
    Update(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    const QTBIPdmRelNode_var spRelation = RelNode("AB");
    GetPdmNodeCont()->RemoveNodeFromPdmGraph("B", FALSE, FALSE, FALSE, nullptr);
    QTBIPdmNode_var spLeft = PdmNode("A");
    QTBIPdmNode_var spRight = PdmNode("A");
    EXPECT_THAT(QTBPdmGraphUtil::GetCorrespondingObjNodesByPdmKey(spRelation, &spLeft, &spRight), FailsQuietly());
    EXPECT_TRUE(spLeft == NULL_var);
    EXPECT_TRUE(spRight == NULL_var);
    EXPECT_THAT(QTBPdmGraphUtil::GetCorrespondingObjNodesByPdmKey(NULL_var, &spLeft, &spRight), FailsQuietly());
    EXPECT_THAT(QTBPdmGraphUtil::GetCorrespondingObjNodesByPdmKey(spRelation, nullptr, &spRight), Not(Succeeds()));
}

TEST_F(PdmGraphUtil, TheNewestActionIsKept)
{
    Update(Part("A"));
    Update(Part("B") + Part("C"));
    CATListValCATBaseUnknown_var nodes = Nodes({"C", "A", "B"});
    EXPECT_THAT(QTBPdmGraphUtil::FilterForNewestActionIndex(&nodes), Succeeds());
    EXPECT_THAT(KeysOf(nodes), ElementsAre("C", "B"));
    EXPECT_THAT(QTBPdmGraphUtil::FilterForNewestActionIndex(nullptr), Not(Succeeds()));
}

TEST_F(PdmGraphUtil, WithoutAnyActionAllPdmNodesAreKept)
{
    CATBaseUnknown_var spNode;
    EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode("A", &spNode, TRUE), Succeeds());
    EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode("B", &spNode, TRUE), Succeeds());
    void* pPlain = nullptr;
    EXPECT_THAT(::CATInstantiateComponent("QTBNode", CLSID_CATBaseUnknown, &pPlain), Succeeds());
    CATListValCATBaseUnknown_var nodes = Nodes({"B", "A"});
    nodes.Append(CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pPlain)));
    EXPECT_THAT(QTBPdmGraphUtil::FilterForNewestActionIndex(&nodes), Succeeds());
    EXPECT_THAT(KeysOf(nodes), ElementsAre("B", "A"));
}

TEST_F(PdmGraphUtil, OfEachItemTheNewestVersionIsKeptWithItsRelation)
{
    Update(Version("A1", "100", "1") + Version("B1", "200", "A") + Version("A2", "100", "2") +
           Version("B2", "200", "B") + Version("A10", "100", "10") + PartPart("r1", "A1", "A1") +
           PartPart("r2", "B1", "B1") + PartPart("r3", "A2", "A2") + PartPart("r4", "B2", "B2") +
           PartPart("r5", "A10", "A10"));
    CATListValCATBaseUnknown_var objects = Nodes({"A1", "B1", "A2", "B2", "A10"});
    CATListValCATBaseUnknown_var relations = Nodes({"r1", "r2", "r3", "r4", "r5"});
    EXPECT_THAT(QTBPdmGraphUtil::FilterForNewestQtbVersion(&objects, &relations), Succeeds());
    EXPECT_THAT(KeysOf(objects), ElementsAre("B2", "A10"));
    EXPECT_THAT(KeysOf(relations), ElementsAre("r4", "r5"));
}

TEST_F(PdmGraphUtil, WhatThePdmSystemCallsTheNewestIsTheNewest)
{
    Update(Version("A1", "100", "2", "", "false") + Version("A2", "100", "1", "", "true"));
    CATListValCATBaseUnknown_var objects = Nodes({"A1", "A2"});
    EXPECT_THAT(QTBPdmGraphUtil::FilterForNewestQtbVersion(&objects, nullptr), Succeeds());
    EXPECT_THAT(KeysOf(objects), ElementsAre("A2"));
}

TEST_F(PdmGraphUtil, SubVersionsDecideBetweenEqualVersions)
{
    Update(Version("A1", "100", "B", "2") + Version("A2", "100", "B", "11") + Version("A3", "100", "A", "99"));
    CATListValCATBaseUnknown_var objects = Nodes({"A1", "A2", "A3"});
    EXPECT_THAT(QTBPdmGraphUtil::FilterForNewestQtbVersion(&objects, nullptr), Succeeds());
    EXPECT_THAT(KeysOf(objects), ElementsAre("A2"));
}

TEST_F(PdmGraphUtil, ObjectsThatAreNoVersionsOfEachOtherAreAllKept)
{
    Update(Version("A1", "100", "1") + Object("StandardPart", "S", Attribute("PartNumber", "100")) + Part("X") +
           Part("Y") + Object("CGRFile", "F1", Attribute("FileName", "a.cgr") + Info({{"QtbVersion", "1"}})) +
           Object("CGRFile", "F2", Attribute("FileName", "b.cgr") + Info({{"QtbVersion", "2"}})) +
           Object("CGRFile", "F3", Attribute("FileName", "b.cgr") + Info({{"QtbVersion", "3"}})));
    CATListValCATBaseUnknown_var objects = Nodes({"A1", "S", "X", "Y", "X", "F1", "F2", "F3"});
    EXPECT_THAT(QTBPdmGraphUtil::FilterForNewestQtbVersion(&objects, nullptr), Succeeds());
    EXPECT_THAT(KeysOf(objects), ElementsAre("A1", "S", "X", "Y", "X", "F1", "F3"));
}

TEST_F(PdmGraphUtil, FilteringForVersionsNeedsTwoListsOfOneSize)
{
    Update(Part("A") + Part("B"));
    CATListValCATBaseUnknown_var objects = Nodes({"A", "B"});
    CATListValCATBaseUnknown_var relations = Nodes({"A"});
    EXPECT_THAT(QTBPdmGraphUtil::FilterForNewestQtbVersion(&objects, &relations), FailsQuietly());
    EXPECT_THAT(QTBPdmGraphUtil::FilterForNewestQtbVersion(nullptr, &relations), Not(Succeeds()));
    EXPECT_EQ(objects.Size(), 2);
}

TEST_F(PdmGraphUtil, VersionsAreComparedAsPeopleCountThem)
{
    const auto isNewer = [](const char* a, const char* b) { return QTBPdmGraphUtil::IsNewerVersion(a, b); };
    for (const auto& [newer, older] :
         {std::pair("10", "9"), std::pair("B", "A"), std::pair("AA", "Z"), std::pair("A.2", "A.1"),
          std::pair("A.10", "A.9"), std::pair("A.1", "A"), std::pair("1", ""), std::pair("2", "01"),
          std::pair("100000000000000000000000000000002", "100000000000000000000000000000001"),
          std::pair("B1", "A99")}) {
        EXPECT_TRUE(isNewer(newer, older)) << newer << " > " << older;
        EXPECT_FALSE(isNewer(older, newer)) << newer << " > " << older;
    }
    EXPECT_FALSE(isNewer("A.1", "A.1"));
    EXPECT_FALSE(isNewer("01", "1"));
    EXPECT_FALSE(isNewer("1", "01"));
}

TEST_F(PdmGraphUtil, PartsAreToldByTheirClass)
{
    Update(Part("A") + Object("StandardPart", "S") + Object("Document", "D"));
    unsigned char bIsPart = FALSE;
    unsigned char bCanHaveSubParts = FALSE;
    CATUnicodeString usClassName;
    EXPECT_THAT(QTBPdmGraphUtil::IsPartNode(ObjNode("A"), &bIsPart, &usClassName, &bCanHaveSubParts), Succeeds());
    EXPECT_EQ(bIsPart, TRUE);
    EXPECT_EQ(bCanHaveSubParts, TRUE);
    EXPECT_TRUE(usClassName == "Part");
    EXPECT_THAT(QTBPdmGraphUtil::IsPartNode(ObjNode("S"), &bIsPart, &usClassName, &bCanHaveSubParts), Succeeds());
    EXPECT_EQ(bIsPart, TRUE);
    EXPECT_EQ(bCanHaveSubParts, FALSE);
    EXPECT_THAT(QTBPdmGraphUtil::IsPartNode(ObjNode("D"), &bIsPart, &usClassName, &bCanHaveSubParts), Succeeds());
    EXPECT_EQ(bIsPart, FALSE);
    EXPECT_TRUE(usClassName.IsEmpty());
    EXPECT_THAT(QTBPdmGraphUtil::IsPartNode(NULL_var, &bIsPart, nullptr, nullptr), FailsQuietly());
}

TEST_F(PdmGraphUtil, CadFilesAreToldByTheirClass)
{
    Update(Object("CMIArchiveFile", "F", Attribute("FileName", "a.zip")) + Object("Document", "D"));
    unsigned char bIsCatiaFile = FALSE;
    QTBCatiaFileClass fileClass = QTB_CATIA_FILE_CLASS_UNKNOWN;
    CATUnicodeString usClassName;
    EXPECT_THAT(QTBPdmGraphUtil::IsCatiaFileNode(ObjNode("F"), &bIsCatiaFile, &usClassName, &fileClass), Succeeds());
    EXPECT_EQ(bIsCatiaFile, TRUE);
    EXPECT_EQ(fileClass, QTB_CATIA_FILE_CLASS_CMIARCHIVE);
    EXPECT_TRUE(usClassName == "CMIArchiveFile");
    CATUnicodeString usFileName;
    CATUnicodeString usFileType;
    EXPECT_THAT(
        QTBPdmGraphUtil::GetCatiaFileNodeInformation(ObjNode("F"), &usFileName, &usFileType, &fileClass, &bIsCatiaFile),
        Succeeds());
    EXPECT_TRUE(usFileName == "a.zip");
    EXPECT_TRUE(usFileType == "CMIArchive");
    EXPECT_THAT(
        QTBPdmGraphUtil::GetCatiaFileNodeInformation(ObjNode("D"), &usFileName, &usFileType, &fileClass, &bIsCatiaFile),
        Succeeds());
    EXPECT_EQ(bIsCatiaFile, FALSE);
    EXPECT_EQ(fileClass, QTB_CATIA_FILE_CLASS_UNKNOWN);
    EXPECT_TRUE(usFileName.IsEmpty());
    EXPECT_TRUE(usFileType.IsEmpty());
}

TEST_F(PdmGraphUtil, ARelationBetweenTwoPartsIsAPartToPartRelation)
{
    Update(Part("A") + Object("StandardPart", "S") + Object("Document", "D") + PartPart("AS", "A", "S") +
           Relation("PartDocument", "AD", "A", "D"));
    unsigned char bIsPartToPart = FALSE;
    EXPECT_THAT(QTBPdmGraphUtil::IsPartToPartRelationNode(RelNode("AS"), &bIsPartToPart), Succeeds());
    EXPECT_EQ(bIsPartToPart, TRUE);
    EXPECT_THAT(QTBPdmGraphUtil::IsPartToPartRelationNode(RelNode("AD"), &bIsPartToPart), Succeeds());
    EXPECT_EQ(bIsPartToPart, FALSE);
    QTBINodeRelations_var(FindNode("AS"))->RemoveAllRels(nullptr);
    EXPECT_THAT(QTBPdmGraphUtil::IsPartToPartRelationNode(RelNode("AS"), &bIsPartToPart), Succeeds());
    EXPECT_EQ(bIsPartToPart, FALSE);
    EXPECT_THAT(QTBPdmGraphUtil::IsPartToPartRelationNode(NULL_var, &bIsPartToPart), FailsQuietly());
}

TEST_F(PdmGraphUtil, TheDefaultRootIsToldByItsKey)
{
    Update(Part("A"));
    EXPECT_THAT(GetPdmNodeCont()->CreateDefaultRootNode(), Succeeds());
    unsigned char bIsDefaultRoot = TRUE;
    EXPECT_THAT(QTBPdmGraphUtil::IsDefaultRootNode(PdmNode("A"), &bIsDefaultRoot), Succeeds());
    EXPECT_EQ(bIsDefaultRoot, FALSE);
    EXPECT_THAT(QTBPdmGraphUtil::IsDefaultRootNode(PdmNode("DEFAULT_ROOT_NODE"), &bIsDefaultRoot), Succeeds());
    EXPECT_EQ(bIsDefaultRoot, TRUE);
    EXPECT_THAT(QTBPdmGraphUtil::IsDefaultRootNode(NULL_var, &bIsDefaultRoot), FailsQuietly());
}

TEST_F(PdmGraphUtil, ANodeIsAddedToAListOnce)
{
    Update(Part("A") + Part("B"));
    CATListValCATBaseUnknown_var nodes;
    for (const char* key : {"B", "A", "B"}) {
        EXPECT_THAT(QTBPdmGraphUtil::SetAdd(FindNode(key), &nodes), Succeeds());
    }
    EXPECT_THAT(KeysOf(nodes), ElementsAre("B", "A"));
    EXPECT_THAT(QTBPdmGraphUtil::SetAdd(NULL_var, &nodes), FailsQuietly());
    EXPECT_THAT(QTBPdmGraphUtil::SetAdd(FindNode("A"), nullptr), FailsQuietly());
}

} // namespace
