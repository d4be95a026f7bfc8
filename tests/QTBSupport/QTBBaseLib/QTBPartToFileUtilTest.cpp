#include "QTBPartToFileUtil.h"

#include <gmock/gmock.h>

#include "CATInstantiateComponent.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIRepNode.h"
#include "QTBPartToFileInfo.h"
#include "QTBPdmTree.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"
#include "QTBTestSession.h"

using ::testing::ElementsAre;

namespace {

class PartToFileUtil : public QTBTestSession
{
protected:
    // A rep node with that key that represents the PDM node.
    static CATBaseUnknown_var RepNode(const char* key, const char* pdmKey)
    {
        void* pCreated = nullptr;
        EXPECT_EQ(::CATInstantiateComponent("QTBRepNode", IID_QTBINodeAttributes, &pCreated), S_OK);
        const auto spRepNode = QTBINodeAttributes_var::Adopt(static_cast<QTBINodeAttributes*>(pCreated));
        EXPECT_EQ(spRepNode->SetKey(key), S_OK);
        if (*pdmKey != '\0') {
            const QTBINodeRelations_var spRelations(FindNode(pdmKey));
            EXPECT_EQ(spRelations->AddRightNode("PdmToRep", spRepNode, 1, TRUE), S_OK);
        }
        return spRepNode;
    }

    static QTBPdmTree* TreeOf(const char* className)
    {
        QTBSchema* pSchema = nullptr;
        EXPECT_EQ(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema), S_OK);
        return pSchema->FindObject(className)->GetPartToFilePdmTreePtr();
    }

    static CATListValQTBPartToFilePdmTreeInfo InfoOf(const CATListValCATBaseUnknown_var& repNodes)
    {
        QTBPartToFileInfo info;
        EXPECT_EQ(QTBPartToFileUtil::GetPartToFileInfo(repNodes, &info), S_OK);
        CATListValQTBPartToFilePdmTreeInfo treeInfos;
        EXPECT_EQ(info.GetPartToFilePdmTreeInfoList(&treeInfos), S_OK);
        return treeInfos;
    }

    static std::vector<std::string> RepKeysOf(const QTBPartToFilePdmTreeInfo& info)
    {
        CATListValCATBaseUnknown_var repNodes;
        EXPECT_EQ(info.GetRepNodes(&repNodes), S_OK);
        return KeysOf(repNodes);
    }

    // The links of the rep nodes of a test go with them.
    static void Unlink(const char* pdmKey)
    {
        QTBINodeRelations_var spRelations(FindNode(pdmKey));
        EXPECT_EQ(spRelations->RemoveAllRels(nullptr), S_OK);
    }
};

} // namespace

TEST_F(PartToFileUtil, GathersTheRepNodesOfPartsUnderTheTreeOfTheirClass)
{
    Update(Part("P1") + Object("StandardPart", "P2") + Object("Document", "D1"));
    CATListValCATBaseUnknown_var repNodes;
    repNodes.Append(RepNode("R1", "P1"));
    repNodes.Append(RepNode("R2", "D1"));
    repNodes.Append(RepNode("R3", "P2"));
    const CATListValQTBPartToFilePdmTreeInfo infos = InfoOf(repNodes);
    ASSERT_EQ(infos.Size(), 1);
    QTBPdmTree* pPdmTree = nullptr;
    ASSERT_EQ(infos[1].GetPdmTreePtr(&pPdmTree), S_OK);
    EXPECT_EQ(pPdmTree, TreeOf("Part"));
    EXPECT_THAT(RepKeysOf(infos[1]), ElementsAre("R1", "R3"));
    Unlink("P1");
    Unlink("P2");
    Unlink("D1");
}

TEST_F(PartToFileUtil, TheTreeLeadsThroughDocumentsToTheirFiles)
{
    CATListPtrQTBPdmTreeRel rels;
    ASSERT_EQ(TreeOf("Part")->GetAllPdmTreeRelPtrs(&rels, FALSE), S_OK);
    ASSERT_EQ(rels.Size(), 2);
    EXPECT_EQ(rels[1]->GetNodeRelationInfo(), QTBNodeRelationInfo("PartFile", usLEFT_TO_RIGHT));
    CATListPtrQTBPdmTreeObj objs;
    ASSERT_EQ(rels[2]->GetAllPdmTreeObjPtrs(&objs), S_OK);
    ASSERT_EQ(objs.Size(), 1);
    EXPECT_EQ(objs[1]->GetClassName(), "Document");
    CATListValQTBNodeRelationInfo infos;
    ASSERT_EQ(objs[1]->GetAllPdmTreeRels(&infos), S_OK);
    ASSERT_EQ(infos.Size(), 1);
    EXPECT_EQ(infos[1], QTBNodeRelationInfo("DocumentFile", usLEFT_TO_RIGHT));
}

TEST_F(PartToFileUtil, LeavesOutRepNodesThatLostTheirPdmNode)
{
    CATListValCATBaseUnknown_var repNodes;
    repNodes.Append(RepNode("R1", ""));
    EXPECT_EQ(InfoOf(repNodes).Size(), 0);
}

TEST_F(PartToFileUtil, RefusesWhatIsNoRepNodeAndNullPointers)
{
    Update(Part("P1"));
    CATListValCATBaseUnknown_var nodes;
    nodes.Append(FindNode("P1"));
    QTBPartToFileInfo info;
    EXPECT_EQ(QTBPartToFileUtil::GetPartToFileInfo(nodes, &info), E_NOINTERFACE);
    EXPECT_EQ(QTBPartToFileUtil::GetPartToFileInfo(nodes, nullptr), E_POINTER);
    EXPECT_EQ(info.GetPartToFilePdmTreeInfoList(nullptr), E_POINTER);
    EXPECT_EQ(QTBPartToFilePdmTreeInfo().GetRepNodes(nullptr), E_POINTER);
    EXPECT_EQ(QTBPartToFilePdmTreeInfo().GetPdmTreePtr(nullptr), E_POINTER);
}
