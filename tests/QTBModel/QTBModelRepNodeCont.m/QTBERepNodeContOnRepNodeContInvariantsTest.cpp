#include <map>
#include <random>
#include <set>

#include <gmock/gmock.h>

#include "CATFrmWindow.h"
#include "QTBERepNodeContOnRepNodeCont.h"
#include "QTBInvariants.h"
#include "QTBRepTreeSession.h"
#include "QTBTestWindow.h"

namespace {

using Nodes = CATListValCATBaseUnknown_var;

// Two containers, one with and one without window, that go through random answers, expansions, folds and removals. The
// same number gives the same sequence.
class RepTreeInvariants : public QTBRepTreeSession, public ::testing::WithParamInterface<unsigned int>
{
protected:
    static constexpr int STEPS = 150;
    static constexpr int PARTS_COUNT = 8;
    static constexpr int RELATIONS_COUNT = 11;

    void SetUp() override
    {
        QTBRepTreeSession::SetUp();
        m_Random.seed(GetParam());
        m_pWindow = std::make_unique<QTBTestWindow>();
        m_Conts = {m_spCont, m_pWindow->GetCont()};
        // Relations keep their ends for good. Some go back to a part above, so that there are circles.
        for (int i = 0; i < RELATIONS_COUNT; ++i) {
            m_Ends.push_back({Random(PARTS_COUNT), Random(PARTS_COUNT)});
        }
    }
    void TearDown() override
    {
        m_Conts.clear();
        m_pWindow.reset();
        QTBRepTreeSession::TearDown();
    }

    int Random(int count) { return static_cast<int>(m_Random() % static_cast<unsigned int>(count)); }
    bool Chance(int percent) { return Random(100) < percent; }
    static std::string PartKey(int number) { return "P" + std::to_string(number); }
    static std::string RelationKey(int number) { return "R" + std::to_string(number); }

    // An answer with some of the parts and relations. A relation whose parts are not in the graph is dropped there.
    void ReadAnswer()
    {
        std::string items;
        for (int i = 0; i < PARTS_COUNT; ++i) {
            items += Chance(60) ? Part(PartKey(i)) : "";
        }
        for (int i = 0; i < RELATIONS_COUNT; ++i) {
            const auto [left, right] = m_Ends[static_cast<std::size_t>(i)];
            items += Chance(60) ? PartPart(RelationKey(i), PartKey(left), PartKey(right)) : "";
        }
        Update(items);
    }

    QTBIRepNode_var AnyRepNode()
    {
        const Nodes repNodes = AllRepNodesOf(m_spCont);
        return repNodes.Size() > 0 ? QTBIRepNode_var(repNodes[1 + Random(repNodes.Size())]) : QTBIRepNode_var();
    }
    CATListValQTBNodeRelationInfo AnyRelations()
    {
        CATListValQTBNodeRelationInfo relations;
        if (Chance(70)) {
            relations.Append(PARTS);
        }
        if (Chance(40)) {
            relations.Append(USED_IN);
        }
        return relations;
    }
    static bool IsRelation(const QTBIRepNode_var& spIRepNode)
    {
        return QTBIPdmRelNode_var(PdmNodesOf(spIRepNode)[1]) != NULL_var;
    }

    void Step()
    {
        m_spCont = m_Conts[static_cast<std::size_t>(Random(2))];
        const QTBIRepNode_var spIRepNode = AnyRepNode();
        auto bOneLevel = static_cast<unsigned char>(Chance(80) ? TRUE : FALSE);
        auto bRecursive = static_cast<unsigned char>(Random(2));
        unsigned char bTrue = TRUE;
        enum Action
        {
            READ,
            SET_MODES,
            SHOW,
            EXPAND,
            FOLD,
            REMOVE,
            PRUNE,
            REMOVE_PDM_NODE
        };
        // How often each happens, in percent.
        std::discrete_distribution<int> actions({17, 7, 15, 38, 6, 4, 7, 6});
        switch (actions(m_Random)) {
        case READ:
            ReadAnswer();
            break;
        case SET_MODES: {
            Consider(Chance(50) ? ALL_NODES : static_cast<NodesToRetrieve>(Random(3)));
            auto mode = static_cast<RepChildRelationsToUpdate>(Random(2));
            EXPECT_THAT(m_spCont->SetRepChildRelationsToUpdate(&mode), Succeeds());
            break;
        }
        case SHOW:
            if (const CATBaseUnknown_var spPart = FindNode(PartKey(Random(PARTS_COUNT)).c_str()); spPart != NULL_var) {
                EXPECT_THAT(m_spCont->UpdateRepTrees(spPart, AnyRelations(), &bOneLevel, nullptr, nullptr, &bTrue),
                            Succeeds());
            }
            break;
        case EXPAND:
            if (spIRepNode != NULL_var) {
                EXPECT_THAT(Expand(spIRepNode, AnyRelations(), bOneLevel), Succeeds());
            }
            break;
        case FOLD:
            if (QTBIRepNode_var spFolded = spIRepNode; spFolded != NULL_var) {
                EXPECT_THAT(m_spCont->DeExpand(&spFolded), Succeeds());
            }
            break;
        case REMOVE:
            // An object alone would leave its relation without one.
            if (spIRepNode != NULL_var && (IsRelation(spIRepNode) || ParentsOf(spIRepNode).Size() == 0)) {
                EXPECT_THAT(Remove(spIRepNode), Succeeds());
            }
            break;
        case PRUNE:
            if (spIRepNode != NULL_var && !IsRelation(spIRepNode)) {
                EXPECT_THAT(spIRepNode->MarkChildrenForRemoval(Relations({PARTS, USED_IN}), &bRecursive), Succeeds());
                if (Chance(50)) {
                    ReadAnswer();
                }
                EXPECT_THAT(spIRepNode->CleanUpChildren(&bRecursive), Succeeds());
            }
            break;
        case REMOVE_PDM_NODE: {
            const std::string key = Chance(30) ? PartKey(Random(PARTS_COUNT)) : RelationKey(Random(RELATIONS_COUNT));
            if (FindNode(key.c_str()) != NULL_var) {
                RemovePdmNode(key.c_str());
            }
            break;
        }
        default:
            ADD_FAILURE() << "no such action";
        }
    }

    static void CheckRepNode(const QTBIRepNodeCont_var& spCont, const QTBIRepNode_var& spIRepNode,
                             const std::set<const CATBaseUnknown*>& filed, CATFrmWindow* pWindow)
    {
        QTBIRepNode_var spFound;
        unsigned char bExists = FALSE;
        EXPECT_THAT(spCont->GetRepNodeByKey(KeyOf(spIRepNode).c_str(), &spFound, &bExists), Succeeds());
        EXPECT_TRUE(spFound == spIRepNode);
        QTBIRepNodeCont_var spOwner;
        EXPECT_THAT(spIRepNode->GetRepNodeContainer(&spOwner), Succeeds());
        EXPECT_TRUE(spOwner == spCont);
        CATFrmWindow* pOwnWindow = nullptr;
        EXPECT_EQ(SUCCEEDED(spIRepNode->GetFrmWindowPtr(&pOwnWindow)), pWindow != nullptr);
        EXPECT_EQ(pOwnWindow, pWindow);

        // One PDM node, which is in the graph and knows the rep node.
        const Nodes pdmNodes = PdmNodesOf(spIRepNode);
        ASSERT_EQ(pdmNodes.Size(), 1);
        const std::string pdmKey = KeyOf(pdmNodes[1]);
        EXPECT_TRUE(FindNode(pdmKey.c_str()) == pdmNodes[1]);
        EXPECT_GT(RepNodesOf(pdmKey.c_str()).Locate(CATBaseUnknown_var(spIRepNode)), 0);
        EXPECT_EQ(KeyOf(spIRepNode).rfind(pdmKey + "-Rep-", 0), 0U);

        // Objects and relations alternate; the object below a relation is at its other end.
        const bool isRelation = IsRelation(spIRepNode);
        const Nodes parents = ParentsOf(spIRepNode);
        EXPECT_LE(parents.Size(), 1);
        if (parents.Size() == 0) {
            EXPECT_FALSE(isRelation);
        }
        const Nodes children = ChildrenOf(spIRepNode);
        std::set<std::string> childKeys;
        for (const CATBaseUnknown_var& spChild : children) {
            EXPECT_TRUE(filed.count(spChild.Get()) > 0);
            EXPECT_TRUE(ParentsOf(spChild) == [&] {
                Nodes self;
                self.Append(CATBaseUnknown_var(spIRepNode));
                return self;
            }());
            EXPECT_NE(IsRelation(QTBIRepNode_var(spChild)), isRelation);
            EXPECT_TRUE(childKeys.insert(KeyOf(PdmNodesOf(spChild)[1])).second) << "shown twice below one node";
        }
        if (isRelation) {
            ASSERT_EQ(children.Size(), 1);
            QTBNodeRelationInfo info;
            EXPECT_THAT(spIRepNode->GetSinglePdmRelationToBeDisplayed(&info), Succeeds());
            QTBIPdmObjNode_var spOtherEnd;
            const QTBIPdmRelNode_var spRelation(pdmNodes[1]);
            EXPECT_THAT(info == PARTS ? spRelation->GetRightObject(&spOtherEnd)
                                      : spRelation->GetLeftObject(&spOtherEnd),
                        Succeeds());
            EXPECT_TRUE(PdmNodesOf(children[1])[1] == spOtherEnd);
        }
    }

    void CheckAll()
    {
        std::size_t linked = 0;
        for (const QTBIRepNodeCont_var& spCont : m_Conts) {
            EXPECT_EQ(Extension(spCont)->GetExpansionPathLength(), 0);
            const Nodes repNodes = AllRepNodesOf(spCont);
            std::set<const CATBaseUnknown*> filed;
            for (const CATBaseUnknown_var& spRepNode : repNodes) {
                EXPECT_TRUE(filed.insert(spRepNode.Get()).second) << "filed twice";
            }
            for (const CATBaseUnknown_var& spRepNode : repNodes) {
                CheckRepNode(spCont, QTBIRepNode_var(spRepNode), filed,
                             spCont == m_Conts[1] ? m_pWindow->GetFrmWindow() : nullptr);
            }
            linked += filed.size();
        }
        // No PDM node knows a rep node that no container holds.
        Nodes pdmNodes;
        EXPECT_THAT(GetPdmNodeCont()->GetAllPdmNodes(&pdmNodes), Succeeds());
        for (const CATBaseUnknown_var& spPdmNode : pdmNodes) {
            Nodes repNodes;
            EXPECT_THAT(QTBIPdmNode_var(spPdmNode)->GetRepNodes(&repNodes, NULL_var), Succeeds());
            linked -= static_cast<std::size_t>(repNodes.Size());
        }
        EXPECT_EQ(linked, 0U);
    }

    std::mt19937 m_Random;
    std::unique_ptr<QTBTestWindow> m_pWindow;
    std::vector<QTBIRepNodeCont_var> m_Conts;
    std::vector<std::pair<int, int>> m_Ends;
};

TEST_P(RepTreeInvariants, HoldAfterEveryStep)
{
    ReadAnswer();
    for (int step = 0; step < STEPS && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        Step();
        CheckAll();
        EXPECT_THAT(QTBFindBrokenInvariants(m_Conts), ::testing::IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Sequences, RepTreeInvariants, ::testing::Range(1U, 17U));

} // namespace
