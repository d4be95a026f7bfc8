#include "QTBPdmTree.h"

#include <gtest/gtest.h>

#include "QTBConstants.h"

namespace {

const QTBNodeRelationInfo PART_PART("PartPart", usLEFT_TO_RIGHT);
const QTBNodeRelationInfo PART_FILE("PartFile", usLEFT_TO_RIGHT);
const QTBNodeRelationInfo FILE_PART("PartFile", usRIGHT_TO_LEFT);

// Part -> PartPart -> Part -> PartFile, and Part -> PartFile.
class PdmTree : public ::testing::Test
{
protected:
    PdmTree()
    {
        QTBPdmTreeObj* pPart = m_Tree.AddObj(m_pPartPart, "Part");
        m_Tree.AddRel(pPart, PART_FILE);
        m_Tree.AddRel(nullptr, FILE_PART);
    }

    QTBPdmTree m_Tree{"Tree", "Key"};
    QTBPdmTreeRel* m_pPartPart = m_Tree.AddRel(nullptr, PART_PART);
};

} // namespace

TEST_F(PdmTree, HasANameAndATextKey)
{
    EXPECT_EQ(m_Tree.GetName(), "Tree");
    EXPECT_EQ(m_Tree.GetNlsKey(), "Key");
}

TEST_F(PdmTree, GivesTheRelationsOfTheStartAsParallelLists)
{
    CATListPtrQTBPdmTreeRel rels;
    CATListValQTBNodeRelationInfo infos;
    infos.Append(PART_FILE);
    ASSERT_EQ(m_Tree.GetAllPdmTreeRelPtrs(&rels, FALSE), S_OK);
    ASSERT_EQ(m_Tree.GetAllPdmTreeRels(&infos, FALSE), S_OK);
    ASSERT_EQ(rels.Size(), 2);
    ASSERT_EQ(infos.Size(), 2);
    EXPECT_EQ(rels[1], m_pPartPart);
    EXPECT_EQ(infos[1], PART_PART);
    EXPECT_EQ(infos[2], FILE_PART);
    EXPECT_EQ(rels[2]->GetNodeRelationInfo(), FILE_PART);
}

TEST_F(PdmTree, GivesTheRelationsOfAllLevelsOnRequest)
{
    CATListPtrQTBPdmTreeRel rels;
    CATListValQTBNodeRelationInfo infos;
    ASSERT_EQ(m_Tree.GetAllPdmTreeRelPtrs(&rels, TRUE), S_OK);
    ASSERT_EQ(m_Tree.GetAllPdmTreeRels(&infos, TRUE), S_OK);
    ASSERT_EQ(rels.Size(), 3);
    ASSERT_EQ(infos.Size(), 3);
    EXPECT_EQ(infos[2], PART_FILE);
    EXPECT_EQ(rels[2]->GetNodeRelationInfo(), PART_FILE);
}

TEST_F(PdmTree, LeadsFromRelationsToObjectsAndOn)
{
    CATListPtrQTBPdmTreeObj objs;
    ASSERT_EQ(m_pPartPart->GetAllPdmTreeObjPtrs(&objs), S_OK);
    ASSERT_EQ(objs.Size(), 1);
    EXPECT_EQ(objs[1]->GetClassName(), "Part");
    CATListPtrQTBPdmTreeRel rels;
    CATListValQTBNodeRelationInfo infos;
    ASSERT_EQ(objs[1]->GetAllPdmTreeRelPtrs(&rels), S_OK);
    ASSERT_EQ(objs[1]->GetAllPdmTreeRels(&infos), S_OK);
    ASSERT_EQ(rels.Size(), 1);
    ASSERT_EQ(infos.Size(), 1);
    EXPECT_EQ(infos[1], PART_FILE);
    ASSERT_EQ(rels[1]->GetAllPdmTreeObjPtrs(&objs), S_OK);
    EXPECT_EQ(objs.Size(), 0);
}

TEST_F(PdmTree, RefusesNullPointers)
{
    CATListPtrQTBPdmTreeObj objs;
    m_pPartPart->GetAllPdmTreeObjPtrs(&objs);
    EXPECT_EQ(m_Tree.GetAllPdmTreeRelPtrs(nullptr, FALSE), E_POINTER);
    EXPECT_EQ(m_Tree.GetAllPdmTreeRelPtrs(nullptr, TRUE), E_POINTER);
    EXPECT_EQ(m_Tree.GetAllPdmTreeRels(nullptr, FALSE), E_POINTER);
    EXPECT_EQ(m_Tree.GetAllPdmTreeRels(nullptr, TRUE), E_POINTER);
    EXPECT_EQ(m_pPartPart->GetAllPdmTreeObjPtrs(nullptr), E_POINTER);
    EXPECT_EQ(objs[1]->GetAllPdmTreeRelPtrs(nullptr), E_POINTER);
    EXPECT_EQ(objs[1]->GetAllPdmTreeRels(nullptr), E_POINTER);
}
