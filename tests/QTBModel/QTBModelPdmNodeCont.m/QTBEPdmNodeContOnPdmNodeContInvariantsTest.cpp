#include <map>
#include <random>
#include <set>

#include <gmock/gmock.h>

#include "QTBINodeRelations.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBInfoUtil.h"
#include "QTBInvariants.h"
#include "QTBMatchers.h"
#include "QTBPdmNodeContAccess.h"

namespace {

using Keys = std::vector<std::string>;

// What the graph ought to hold, kept the plain way.
class ExpectedGraph
{
public:
    struct ReadObject
    {
        std::string key;
        std::string superseded;
    };
    struct ReadRelation
    {
        std::string key;
        std::string left;
        std::string right;
    };
    struct Answer
    {
        std::vector<ReadObject> objects;
        std::vector<ReadRelation> relations;
        Keys objectsToDelete;
        Keys relationsToDelete;
    };

    void Update(const Answer& answer)
    {
        m_Successors.clear();
        for (const ReadObject& object : answer.objects) {
            m_Objects.insert(object.key);
        }
        for (std::size_t i = 0; i < answer.objects.size(); ++i) {
            if (IsLast(answer.objects, i)) {
                Supersede(answer.objects[i]);
            }
        }
        for (std::size_t i = 0; i < answer.relations.size(); ++i) {
            if (IsLast(answer.relations, i)) {
                Link(answer.relations[i]);
            }
        }
        for (const std::string& key : answer.objectsToDelete) {
            m_Objects.erase(key);
            std::erase_if(m_Relations, [&](const auto& relation) {
                return relation.second.first == key || relation.second.second == key;
            });
        }
        for (const std::string& key : answer.relationsToDelete) {
            m_Relations.erase(key);
        }
    }

    Keys AllKeys() const
    {
        std::set<std::string> keys(m_Objects);
        for (const auto& relation : m_Relations) {
            keys.insert(relation.first);
        }
        return {keys.begin(), keys.end()};
    }

    const std::map<std::string, std::pair<std::string, std::string>>& Relations() const { return m_Relations; }

private:
    // Of several elements of one key the last one counts.
    template <class Item>
    static bool IsLast(const std::vector<Item>& items, std::size_t position)
    {
        return std::none_of(items.begin() + static_cast<std::ptrdiff_t>(position) + 1, items.end(),
                            [&](const Item& item) { return item.key == items[position].key; });
    }

    void Supersede(const ReadObject& object)
    {
        // One that was superseded in turn hands on to the one in its place.
        std::string key = object.key;
        while (m_Objects.count(key) == 0 && m_Successors.count(key) > 0) {
            key = m_Successors[key];
        }
        if (object.superseded.empty() || object.superseded == key || m_Objects.count(key) == 0 ||
            m_Objects.erase(object.superseded) == 0) {
            return;
        }
        m_Successors[object.superseded] = key;
        for (auto& relation : m_Relations) {
            for (std::string* pEnd : {&relation.second.first, &relation.second.second}) {
                if (*pEnd == object.superseded) {
                    *pEnd = key;
                }
            }
        }
    }

    void Link(const ReadRelation& relation)
    {
        m_Relations.erase(relation.key);
        if (m_Objects.count(relation.left) != 0 && m_Objects.count(relation.right) != 0) {
            m_Relations[relation.key] = {relation.left, relation.right};
        }
    }

    std::set<std::string> m_Objects;
    // Of the last answer: superseded objects, and what took their places.
    std::map<std::string, std::string> m_Successors;
    std::map<std::string, std::pair<std::string, std::string>> m_Relations;
};

class PdmGraphInvariants : public QTBPdmNodeContAccess, public ::testing::WithParamInterface<unsigned int>
{
protected:
    std::string RandomKey(const char* prefix, int count) { return prefix + std::to_string(Random(count)); }

    int Random(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_Engine); }

    ExpectedGraph::Answer RandomAnswer()
    {
        ExpectedGraph::Answer answer;
        for (int i = Random(6); i > 0; --i) {
            answer.objects.push_back({RandomKey("o", OBJECTS), Random(6) == 0 ? RandomKey("o", OBJECTS) : ""});
        }
        for (int i = Random(8); i > 0; --i) {
            answer.relations.push_back({RandomKey("r", RELATIONS), RandomKey("o", OBJECTS), RandomKey("o", OBJECTS)});
        }
        if (Random(3) == 0) {
            answer.objectsToDelete.push_back(RandomKey("o", OBJECTS));
        }
        if (Random(3) == 0) {
            answer.relationsToDelete.push_back(RandomKey("r", RELATIONS));
        }
        return answer;
    }

    static std::string ToXml(const ExpectedGraph::Answer& answer)
    {
        std::string xml;
        for (const ExpectedGraph::ReadObject& object : answer.objects) {
            xml += Part(object.key, object.superseded.empty()
                                        ? ""
                                        : Info({{"QtbKey", object.key}, {"QtbSupersedes", object.superseded}}));
        }
        for (const ExpectedGraph::ReadRelation& relation : answer.relations) {
            xml += PartPart(relation.key, relation.left, relation.right);
        }
        for (const std::string& key : answer.objectsToDelete) {
            xml += "<objectToDelete>" + key + "</objectToDelete>";
        }
        for (const std::string& key : answer.relationsToDelete) {
            xml += "<relationToDelete>" + key + "</relationToDelete>";
        }
        return xml;
    }

    static void CheckRelations(const ExpectedGraph& expected)
    {
        for (const auto& [key, ends] : expected.Relations()) {
            CATUnicodeString usLeftKey;
            CATUnicodeString usRightKey;
            EXPECT_THAT(RelNode(key.c_str())->GetObjectKeys(&usLeftKey, &usRightKey), Succeeds()) << key;
            EXPECT_EQ(std::string(usLeftKey.View()), ends.first) << key;
            EXPECT_EQ(std::string(usRightKey.View()), ends.second) << key;
        }
    }

    // Every link leads to a node of the graph, which has the link back; no link stands twice.
    static void CheckLinks()
    {
        CATListValCATBaseUnknown_var Nodes;
        EXPECT_THAT(GetPdmNodeCont()->GetAllPdmNodes(&Nodes), Succeeds());
        for (const CATBaseUnknown_var& spNode : Nodes) {
            EXPECT_TRUE(FindNode(KeyOf(spNode).c_str()) == spNode) << KeyOf(spNode);
            for (const bool onRight : {true, false}) {
                std::set<const CATBaseUnknown*> seen;
                for (const CATBaseUnknown_var& spNeighbour : Neighbours(spNode, onRight)) {
                    EXPECT_TRUE(FindNode(KeyOf(spNeighbour).c_str()) == spNeighbour) << KeyOf(spNeighbour);
                    EXPECT_TRUE(seen.insert(spNeighbour.Get()).second) << KeyOf(spNode);
                    EXPECT_GT(Neighbours(spNeighbour, !onRight).Locate(spNode), 0)
                        << KeyOf(spNode) << " - " << KeyOf(spNeighbour);
                }
            }
        }
    }

    static CATListValCATBaseUnknown_var Neighbours(const CATBaseUnknown_var& spNode, bool onRight)
    {
        const QTBINodeRelations_var spINodeRelations(spNode);
        CATListValCATBaseUnknown_var nodes;
        EXPECT_THAT(onRight ? spINodeRelations->GetRightNodeList("PartPart", &nodes, ALL_NODES)
                            : spINodeRelations->GetLeftNodeList("PartPart", &nodes, ALL_NODES),
                    Succeeds());
        return nodes;
    }

    static void CheckStamps(const ExpectedGraph::Answer& answer)
    {
        for (const ExpectedGraph::ReadObject& object : answer.objects) {
            if (const QTBIPdmNode_var spIPdmNode = PdmNode(object.key.c_str()); spIPdmNode != NULL_var) {
                int iActionIndex = -1;
                EXPECT_THAT(QTBInfoUtil::GetActionIndex(spIPdmNode, &iActionIndex), Succeeds());
                EXPECT_EQ(iActionIndex, CurrentActionIndex()) << object.key;
            }
        }
    }

private:
    static constexpr int OBJECTS = 12;
    static constexpr int RELATIONS = 20;

    std::mt19937 m_Engine{GetParam()};
};

TEST_P(PdmGraphInvariants, HoldAfterEveryAnswerOfARandomSequence)
{
    ExpectedGraph expected;
    for (int i = 0; i < 60 && !HasFailure(); ++i) {
        const ExpectedGraph::Answer answer = RandomAnswer();
        const std::string xml = ToXml(answer);
        SCOPED_TRACE("answer " + std::to_string(i) + ": " + xml);
        Update(xml);
        expected.Update(answer);
        EXPECT_EQ(AllKeys(), expected.AllKeys());
        CheckRelations(expected);
        CheckLinks();
        CheckStamps(answer);
        EXPECT_THAT(QTBFindBrokenInvariants(), ::testing::IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, PdmGraphInvariants, ::testing::Range(1U, 26U));

} // namespace
