#include "QTBInvariants.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "CATFrmLayout.h"
#include "CATFrmWindow.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIRepNode.h"
#include "QTBInfoUtil.h"
#include "QTBLoadManager.h"
#include "QTBPdmGraphUtil.h"
#include "QTBRepTreeUtil.h"
#include "QTBStringHash.h"

namespace {

using Nodes = CATListValCATBaseUnknown_var;
using Identity = const CATBaseUnknown*;

constexpr std::string_view PDM_TO_REP = "PdmToRep";
constexpr std::string_view REP_TO_REP = "RepToRep";
constexpr const char* DEFAULT_ROOT_NODE = "DEFAULT_ROOT_NODE";

// What is broken is told up to here; a session in pieces has more to tell than anybody reads.
constexpr std::size_t MOST_TOLD = 100;
// So much is remembered of earlier calls.
constexpr std::size_t MOST_REMEMBERED = 100000;

std::string ToText(const CATUnicodeString& text)
{
    return std::string(text.View());
}

std::string KeyOf(const CATBaseUnknown_var& spNode)
{
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    CATUnicodeString usKey;
    if (spINodeAttributes == NULL_var || FAILED(spINodeAttributes->GetKey(&usKey))) {
        return "a component without key";
    }
    return ToText(usKey);
}

// What earlier calls saw of the session.
struct Memory
{
    // Not looked at, only compared; a new session has a new container.
    Identity pPdmNodeCont = nullptr;
    std::set<std::string> pdmKeys;
    std::set<std::string> partNumbers;
    // Father's part number and instance name.
    std::set<std::pair<std::string, std::string>> instances;
    // Relations that took the place of another one.
    std::set<std::string> supersedingKeys;

    template <class Set, class Value>
    static void Remember(Set& set, const Value& value)
    {
        if (set.size() < MOST_REMEMBERED) {
            set.insert(value);
        }
    }
};

class Inspection
{
public:
    Inspection(Memory& memory, QTBAnswers answers) : m_Memory(memory), m_Answers(answers) {}

    void InspectGraph()
    {
        if (FAILED(QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&m_spGraph)) || m_spGraph == NULL_var) {
            Tell("the session has no PDM node container");
            return;
        }
        if (m_Memory.pPdmNodeCont != m_spGraph.GetImpl()) {
            m_Memory = Memory();
            m_Memory.pPdmNodeCont = m_spGraph.GetImpl();
        }
        if (FAILED(m_spGraph->GetAllPdmNodes(&m_PdmNodes))) {
            Tell("the graph does not list its nodes");
        }
        for (const CATBaseUnknown_var& spNode : m_PdmNodes) {
            if (!m_Graph.insert(spNode.Get()).second) {
                Tell("PDM node " + KeyOf(spNode) + " is filed twice");
            }
        }
        InspectKeysOfGraph();
        for (const CATBaseUnknown_var& spNode : m_PdmNodes) {
            InspectPdmNode(spNode);
        }
    }

    void InspectTrees(const std::vector<QTBIRepNodeCont_var>& furtherRepNodeConts)
    {
        for (const QTBIRepNodeCont_var& spCont : furtherRepNodeConts) {
            AddCont(spCont);
        }
        if (const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout()) {
            const CATListPtrCATFrmWindow& windows = pLayout->GetWindowList();
            for (int i = 1; i <= windows.Size(); ++i) {
                m_OpenWindows.insert(windows[i]);
                QTBIRepNodeCont_var spCont;
                if (SUCCEEDED(QTBRepTreeUtil::GetRepNodeContOfWindow(windows[i], &spCont))) {
                    AddCont(spCont);
                }
            }
        }
        for (const CATBaseUnknown_var& spPdmNode : m_PdmNodes) {
            for (const CATBaseUnknown_var& spRepNode : Neighbours(spPdmNode, PDM_TO_REP, RIGHT)) {
                const QTBIRepNode_var spIRepNode(spRepNode);
                QTBIRepNodeCont_var spCont;
                if (spIRepNode == NULL_var || FAILED(spIRepNode->GetRepNodeContainer(&spCont)) || spCont == NULL_var) {
                    Tell("PDM node " + KeyOf(spPdmNode) + " has the rep node " + KeyOf(spRepNode) +
                         ", which belongs to no container");
                } else {
                    AddCont(spCont);
                }
            }
        }
        // Reading the nodes of one container finds no further ones.
        for (const QTBIRepNodeCont_var& spCont : m_Conts) {
            ListRepNodes(spCont);
        }
        for (const QTBIRepNodeCont_var& spCont : m_Conts) {
            InspectCont(spCont);
        }
        InspectRootedness();
    }

    void InspectLinks()
    {
        for (const CATBaseUnknown_var& spNode : m_PdmNodes) {
            CollectLinks(spNode);
        }
        for (const CATBaseUnknown_var& spNode : m_RepNodes) {
            CollectLinks(spNode);
        }
        for (const auto& [link, ends] : m_Links) {
            const std::string text = "link " + link.left + " -" + link.name + "-> " + link.right;
            if (ends.fromLeft != ends.fromRight) {
                Tell(text + " is known " + std::to_string(ends.fromLeft) + " times to its left node and " +
                     std::to_string(ends.fromRight) + " times to its right node");
            } else if (ends.fromLeft > 1) {
                Tell(text + " stands " + std::to_string(ends.fromLeft) + " times");
            }
        }
    }

    void InspectLoadManager()
    {
        for (const CATBaseUnknown_var& spNode : m_PdmNodes) {
            CATUnicodeString usPartNumber;
            unsigned char bIsPart = FALSE;
            unsigned char bCanHaveSubParts = FALSE;
            CATUnicodeString usClass;
            const QTBIPdmObjNode_var spIPdmObjNode(spNode);
            if (spIPdmObjNode == NULL_var || ActionIndexOf(spNode) == 0 ||
                FAILED(QTBPdmGraphUtil::IsPartNode(spIPdmObjNode, &bIsPart, &usClass, &bCanHaveSubParts)) ||
                bIsPart == FALSE || !GetPartNumber(spNode, &usPartNumber)) {
                continue;
            }
            m_PartNumbers.insert(ToText(usPartNumber));
            Memory::Remember(m_Memory.partNumbers, ToText(usPartNumber));
        }
        for (const std::string& partNumber : m_Memory.partNumbers) {
            InspectPartNumber(partNumber);
        }
        for (const CATBaseUnknown_var& spNode : m_PdmNodes) {
            RememberInstances(spNode);
        }
        for (const auto& [partNumber, instanceName] : m_Memory.instances) {
            InspectInstance(partNumber, instanceName);
        }
    }

    std::vector<std::string> Result()
    {
        if (m_Untold > 0) {
            m_Broken.push_back("and " + std::to_string(m_Untold) + " more");
        }
        return std::move(m_Broken);
    }

private:
    enum Side
    {
        LEFT,
        RIGHT
    };

    struct Link
    {
        Identity pLeft;
        Identity pRight;
        std::string name;
        // Keys, for the text only.
        std::string left;
        std::string right;

        bool operator==(const Link& other) const
        {
            return pLeft == other.pLeft && pRight == other.pRight && name == other.name;
        }
    };
    struct LinkHash
    {
        std::size_t operator()(const Link& link) const
        {
            const std::hash<Identity> ofIdentity;
            return (ofIdentity(link.pLeft) * 31 + ofIdentity(link.pRight)) * 31 + std::hash<std::string>()(link.name);
        }
    };
    struct Ends
    {
        int fromLeft = 0;
        int fromRight = 0;
    };

    void Tell(const std::string& sentence)
    {
        if (m_Broken.size() < MOST_TOLD) {
            m_Broken.push_back(sentence);
        } else {
            ++m_Untold;
        }
    }

    bool IsInGraph(Identity pNode) const { return m_Graph.count(pNode) > 0; }
    bool IsInTrees(Identity pNode) const { return m_Owners.count(pNode) > 0; }

    Nodes Neighbours(const CATBaseUnknown_var& spNode, std::string_view relationName, Side side)
    {
        Nodes nodes;
        const QTBINodeRelations_var spINodeRelations(spNode);
        const CATUnicodeString usRelationName(relationName);
        if (spINodeRelations == NULL_var ||
            FAILED(side == LEFT ? spINodeRelations->GetLeftNodeList(usRelationName, &nodes, ALL_NODES)
                                : spINodeRelations->GetRightNodeList(usRelationName, &nodes, ALL_NODES))) {
            Tell("the relations of node " + KeyOf(spNode) + " cannot be read");
        }
        return nodes;
    }

    CATListValCATUnicodeString RelationNames(const CATBaseUnknown_var& spNode, Side side)
    {
        CATListValCATUnicodeString names;
        const QTBINodeRelations_var spINodeRelations(spNode);
        if (spINodeRelations == NULL_var ||
            FAILED(side == LEFT ? spINodeRelations->GetLeftRelationNames(&names, FALSE)
                                : spINodeRelations->GetRightRelationNames(&names, FALSE))) {
            Tell("the relations of node " + KeyOf(spNode) + " cannot be read");
        }
        return names;
    }

    // Key and hash of a filed node; false when it has none.
    bool InspectKey(const CATBaseUnknown_var& spNode, CATUnicodeString* pusKey)
    {
        const QTBINodeAttributes_var spINodeAttributes(spNode);
        if (spINodeAttributes == NULL_var || FAILED(spINodeAttributes->GetKey(pusKey))) {
            Tell("a container lists a component without key");
            return false;
        }
        unsigned int hash = 0;
        hash %= *pusKey;
        if (*spINodeAttributes->GetHashKey() != hash) {
            Tell("node " + ToText(*pusKey) + " has another hash than its key");
        }
        return true;
    }

    void InspectKeysOfGraph()
    {
        std::set<std::string> keys;
        for (const CATBaseUnknown_var& spNode : m_PdmNodes) {
            CATUnicodeString usKey;
            if (!InspectKey(spNode, &usKey)) {
                continue;
            }
            const bool isFirst = keys.insert(ToText(usKey)).second;
            // Every document that starts before the first answer makes a default root of its own.
            if (!isFirst && usKey == DEFAULT_ROOT_NODE) {
                continue;
            }
            if (!isFirst) {
                Tell("two PDM nodes have the key " + ToText(usKey));
            }
            QTBIPdmNode_var spFound;
            unsigned char bFound = FALSE;
            if (FAILED(m_spGraph->GetPdmNodeByKey(usKey, &spFound, &bFound)) || bFound == FALSE ||
                !(spFound == spNode)) {
                Tell("PDM node " + ToText(usKey) + " is listed and not found");
            }
            Memory::Remember(m_Memory.pdmKeys, ToText(usKey));
        }
        for (const std::string& key : m_Memory.pdmKeys) {
            QTBIPdmNode_var spFound;
            unsigned char bFound = FALSE;
            if (keys.count(key) == 0 &&
                (FAILED(m_spGraph->GetPdmNodeByKey(CATUnicodeString(key), &spFound, &bFound)) || bFound != FALSE)) {
                Tell("PDM node " + key + " is found and not listed");
            }
        }
    }

    int ActionIndexOf(const CATBaseUnknown_var& spPdmNode)
    {
        int index = 0;
        return SUCCEEDED(QTBInfoUtil::GetActionIndex(spPdmNode, &index)) ? index : 0;
    }

    void InspectPdmNode(const CATBaseUnknown_var& spNode)
    {
        const QTBIPdmNode_var spIPdmNode(spNode);
        if (spIPdmNode == NULL_var) {
            Tell("the graph lists " + KeyOf(spNode) + ", which is no PDM node");
            return;
        }
        QTBIPdmNodeCont_var spCont;
        if (FAILED(spIPdmNode->GetPdmNodeContainer(&spCont)) || !(spCont == m_spGraph)) {
            Tell("PDM node " + KeyOf(spNode) + " does not know its container");
        }
        int currentIndex = 0;
        QTBGlobVarsUtil::GetCurrentActionIndex(&currentIndex);
        if (ActionIndexOf(spNode) > currentIndex) {
            Tell("PDM node " + KeyOf(spNode) + " is stamped with an action to come");
        }
        const bool isRelation = QTBIPdmRelNode_var(spNode) != NULL_var;
        if (isRelation == (QTBIPdmObjNode_var(spNode) != NULL_var)) {
            Tell("PDM node " + KeyOf(spNode) + " is not either an object or a relation");
        }
        int counts[2] = {0, 0};
        for (const Side side : {LEFT, RIGHT}) {
            for (const CATUnicodeString& usName : RelationNames(spNode, side)) {
                if (usName.View() == PDM_TO_REP) {
                    continue;
                }
                const Nodes neighbours = Neighbours(spNode, usName.View(), side);
                counts[side] += neighbours.Size();
                for (const CATBaseUnknown_var& spNeighbour : neighbours) {
                    InspectNeighbour(spNode, isRelation, usName, spNeighbour);
                }
            }
        }
        if (m_Answers != QTBAnswers::Contradict && isRelation && (counts[LEFT] != counts[RIGHT] || counts[LEFT] > 1)) {
            Tell("relation " + KeyOf(spNode) + " has " + std::to_string(counts[LEFT]) + " objects on its left and " +
                 std::to_string(counts[RIGHT]) + " on its right");
        }
        CATUnicodeString usSupersededKey;
        if (isRelation &&
            SUCCEEDED(spIPdmNode->GetQtbInfoAttr("QtbSupersedes", &usSupersededKey, FALSE, nullptr, FALSE))) {
            Memory::Remember(m_Memory.supersedingKeys, KeyOf(spNode));
        }
    }

    void InspectNeighbour(const CATBaseUnknown_var& spNode, bool isRelation, const CATUnicodeString& usName,
                          const CATBaseUnknown_var& spNeighbour)
    {
        const std::string text = "node " + KeyOf(spNode) + " has under " + ToText(usName) + " the node " +
                                 KeyOf(spNeighbour) + ", which is ";
        if (!IsInGraph(spNeighbour.Get())) {
            Tell("PDM " + text + "not in the graph");
        } else if (m_Answers != QTBAnswers::Contradict && isRelation == (QTBIPdmRelNode_var(spNeighbour) != NULL_var)) {
            Tell("PDM " + text + "of the same kind");
        }
    }

    void AddCont(const QTBIRepNodeCont_var& spCont)
    {
        if (spCont != NULL_var && m_KnownConts.insert(spCont.GetImpl()).second) {
            m_Conts.push_back(spCont);
        }
    }

    void ListRepNodes(const QTBIRepNodeCont_var& spCont)
    {
        Nodes repNodes;
        if (FAILED(spCont->GetAllRepNodes(&repNodes))) {
            Tell("a rep node container does not list its nodes");
        }
        for (const CATBaseUnknown_var& spRepNode : repNodes) {
            if (m_Owners.emplace(spRepNode.Get(), spCont.GetImpl()).second) {
                m_RepNodes.push_back(spRepNode);
            } else {
                Tell("rep node " + KeyOf(spRepNode) + " is filed twice");
            }
        }
    }

    void InspectCont(const QTBIRepNodeCont_var& spCont)
    {
        unsigned char bHasWindow = FALSE;
        CATFrmWindow* pWindow = nullptr;
        if (FAILED(spCont->QtbFrmWindowPtrIsSet(&bHasWindow)) ||
            (bHasWindow != FALSE && (FAILED(spCont->GetQtbFrmWindowPtr(&pWindow)) || pWindow == nullptr))) {
            Tell("a rep node container does not give its window");
        } else if (pWindow != nullptr && m_OpenWindows.count(pWindow) == 0) {
            Tell("a rep node container has a window that is not open");
        }
        std::set<std::string> keys;
        Nodes repNodes;
        spCont->GetAllRepNodes(&repNodes);
        for (const CATBaseUnknown_var& spRepNode : repNodes) {
            CATUnicodeString usKey;
            const QTBIRepNode_var spIRepNode(spRepNode);
            if (!InspectKey(spRepNode, &usKey) || spIRepNode == NULL_var) {
                Tell("a rep node container lists " + KeyOf(spRepNode) + ", which is no rep node");
                continue;
            }
            if (!keys.insert(ToText(usKey)).second) {
                Tell("two rep nodes have the key " + ToText(usKey));
            }
            QTBIRepNode_var spFound;
            unsigned char bExists = FALSE;
            if (FAILED(spCont->GetRepNodeByKey(usKey, &spFound, &bExists)) || bExists == FALSE ||
                !(spFound == spRepNode)) {
                Tell("rep node " + ToText(usKey) + " is listed and not found");
            }
            InspectRepNode(spCont, spIRepNode, pWindow);
        }
    }

    void InspectRepNode(const QTBIRepNodeCont_var& spCont, const QTBIRepNode_var& spIRepNode,
                        const CATFrmWindow* pContWindow)
    {
        const std::string text = "rep node " + KeyOf(spIRepNode);
        QTBIRepNodeCont_var spOwner;
        if (FAILED(spIRepNode->GetRepNodeContainer(&spOwner)) || !(spOwner == spCont)) {
            Tell(text + " does not know its container");
        }
        CATFrmWindow* pWindow = nullptr;
        spIRepNode->GetFrmWindowPtr(&pWindow);
        if (pWindow != pContWindow) {
            Tell(text + " has another window than its container");
        }

        const Nodes pdmNodes = Neighbours(spIRepNode, PDM_TO_REP, LEFT);
        if (pdmNodes.Size() > 1) {
            Tell(text + " stands for " + std::to_string(pdmNodes.Size()) + " PDM nodes");
        }
        for (const CATBaseUnknown_var& spPdmNode : pdmNodes) {
            if (!IsInGraph(spPdmNode.Get())) {
                Tell(text + " stands for " + KeyOf(spPdmNode) + ", which is not in the graph");
            }
        }
        const Nodes parents = Neighbours(spIRepNode, REP_TO_REP, LEFT);
        if (parents.Size() > 1) {
            Tell(text + " has " + std::to_string(parents.Size()) + " parents");
        }
        for (const Side side : {LEFT, RIGHT}) {
            for (const CATUnicodeString& usName : RelationNames(spIRepNode, side)) {
                if (usName.View() != REP_TO_REP && (usName.View() != PDM_TO_REP || side == RIGHT) &&
                    Neighbours(spIRepNode, usName.View(), side).Size() > 0) {
                    Tell(text + " has nodes under " + ToText(usName));
                }
            }
        }
        InspectChildren(CATBaseUnknown_var(spIRepNode), pdmNodes, text);
    }

    void InspectChildren(const CATBaseUnknown_var& spRepNode, const Nodes& pdmNodes, const std::string& text)
    {
        const Nodes children = Neighbours(spRepNode, REP_TO_REP, RIGHT);
        const bool isRelation = pdmNodes.Size() == 1 && QTBIPdmRelNode_var(pdmNodes[1]) != NULL_var;
        // A relation that leads elsewhere than before has the object that it led to below it until it is asked for its
        // children.
        // The PDM nodes that the one above is linked to may be many more than the children: asked from below.
        std::unordered_set<Identity> shown;
        for (const CATBaseUnknown_var& spChild : children) {
            const auto owner = m_Owners.find(spChild.Get());
            if (owner == m_Owners.end() || owner->second != m_Owners[spRepNode.Get()]) {
                Tell(text + " has the child " + KeyOf(spChild) + ", which is not in its container");
                continue;
            }
            const Nodes childPdmNodes = Neighbours(spChild, PDM_TO_REP, LEFT);
            if (childPdmNodes.Size() != 1 || pdmNodes.Size() != 1) {
                continue;
            }
            const CATBaseUnknown_var spPdmNode = pdmNodes[1];
            const CATBaseUnknown_var spChildPdmNode = childPdmNodes[1];
            if (!shown.insert(spChildPdmNode.Get()).second &&
                m_Memory.supersedingKeys.count(KeyOf(spChildPdmNode)) == 0) {
                Tell(text + " shows " + KeyOf(spChildPdmNode) + " twice");
            }
            if (m_Answers == QTBAnswers::Contradict) {
                continue;
            }
            if (isRelation == (QTBIPdmRelNode_var(spChildPdmNode) != NULL_var)) {
                Tell(text + " has the child " + KeyOf(spChild) + " of the same kind");
            } else if (m_Answers == QTBAnswers::Agree && !isRelation && !AreLinked(spChildPdmNode, spPdmNode)) {
                Tell(text + " has the child " + KeyOf(spChild) + ", and their PDM nodes are not linked");
            }
        }
    }

    bool AreLinked(const CATBaseUnknown_var& spRelation, const CATBaseUnknown_var& spObject)
    {
        for (const Side side : {LEFT, RIGHT}) {
            for (const CATUnicodeString& usName : RelationNames(spRelation, side)) {
                if (usName.View() != PDM_TO_REP && Neighbours(spRelation, usName.View(), side).Locate(spObject) > 0) {
                    return true;
                }
            }
        }
        return false;
    }

    // Walks down from the roots. What is not reached hangs in a circle.
    void InspectRootedness()
    {
        std::vector<CATBaseUnknown_var> stack;
        for (const CATBaseUnknown_var& spRepNode : m_RepNodes) {
            if (Neighbours(spRepNode, REP_TO_REP, LEFT).Size() == 0) {
                stack.push_back(spRepNode);
            }
        }
        std::unordered_set<Identity> reached;
        while (!stack.empty()) {
            const CATBaseUnknown_var spRepNode = stack.back();
            stack.pop_back();
            if (reached.insert(spRepNode.Get()).second) {
                for (const CATBaseUnknown_var& spChild : Neighbours(spRepNode, REP_TO_REP, RIGHT)) {
                    stack.push_back(spChild);
                }
            }
        }
        for (const CATBaseUnknown_var& spRepNode : m_RepNodes) {
            if (reached.count(spRepNode.Get()) == 0) {
                Tell("rep node " + KeyOf(spRepNode) + " hangs below no root");
            }
        }
    }

    void CollectLinks(const CATBaseUnknown_var& spNode)
    {
        const std::string key = KeyOf(spNode);
        for (const Side side : {LEFT, RIGHT}) {
            for (const CATUnicodeString& usName : RelationNames(spNode, side)) {
                for (const CATBaseUnknown_var& spOther : Neighbours(spNode, usName.View(), side)) {
                    if (!IsInGraph(spOther.Get()) && !IsInTrees(spOther.Get())) {
                        Tell("node " + key + " has under " + ToText(usName) + " the node " + KeyOf(spOther) +
                             ", which no container holds");
                        continue;
                    }
                    if (side == RIGHT) {
                        ++m_Links[{spNode.Get(), spOther.Get(), ToText(usName), key, KeyOf(spOther)}].fromLeft;
                    } else {
                        ++m_Links[{spOther.Get(), spNode.Get(), ToText(usName), KeyOf(spOther), key}].fromRight;
                    }
                }
            }
        }
    }

    static bool GetPartNumber(const CATBaseUnknown_var& spPdmNode, CATUnicodeString* pusPartNumber)
    {
        return SUCCEEDED(QTBInfoUtil::GetCatiaPartNumberFromPdm(spPdmNode, pusPartNumber, FALSE, TRUE)) &&
               !pusPartNumber->IsEmpty();
    }

    void InspectPartNumber(const std::string& partNumber)
    {
        QTBIPdmNode_var spFound;
        CATUnicodeString usPartNumber;
        if (FAILED(g_QTBLoadManager.GetPdmPartForPartNumber(CATUnicodeString(partNumber), &spFound))) {
            if (m_PartNumbers.count(partNumber) > 0) {
                Tell("the load manager does not find the part number " + partNumber);
            }
        } else if (!IsInGraph(spFound.GetImpl())) {
            Tell("the load manager finds by the part number " + partNumber + " a node that is not in the graph");
        } else if (!GetPartNumber(spFound, &usPartNumber) || ToText(usPartNumber) != partNumber) {
            Tell("the load manager finds by the part number " + partNumber + " the node " + KeyOf(spFound));
        }
        QTBIPdmNode_var spFile;
        if (SUCCEEDED(g_QTBLoadManager.GetPdmFileForPartNumber(CATUnicodeString(partNumber), &spFile)) &&
            !IsInGraph(spFile.GetImpl())) {
            Tell("the load manager finds by the part number " + partNumber + " a file that is not in the graph");
        }
    }

    void RememberInstances(const CATBaseUnknown_var& spNode)
    {
        const QTBIPdmRelNode_var spIPdmRelNode(spNode);
        QTBIPdmObjNode_var spFather;
        CATUnicodeString usPartNumber;
        CATListValCATUnicodeString instanceNames;
        if (spIPdmRelNode == NULL_var || ActionIndexOf(spNode) == 0 ||
            FAILED(spIPdmRelNode->GetLeftObject(&spFather)) || !GetPartNumber(spFather, &usPartNumber) ||
            FAILED(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(spIPdmRelNode, &instanceNames))) {
            return;
        }
        for (const CATUnicodeString& usName : instanceNames) {
            QTBIPdmRelNode_var spFound;
            if (usName.IsEmpty()) {
                continue;
            }
            Memory::Remember(m_Memory.instances, std::pair(ToText(usPartNumber), ToText(usName)));
            const CATUnicodeString usInstanceKey =
                QTBLoadManager::MakeInstanceKey(CATUnicodeString(KeyOf(spNode)), usName);
            if (FAILED(g_QTBLoadManager.GetPdmRelationForInstance(usInstanceKey, &spFound)) || !(spFound == spNode)) {
                Tell("the load manager does not find the instance " + ToText(usInstanceKey));
            }
        }
    }

    void InspectInstance(const std::string& partNumber, const std::string& instanceName)
    {
        QTBIPdmRelNode_var spFound;
        if (FAILED(g_QTBLoadManager.GetPdmRelationForInstance(CATUnicodeString(partNumber),
                                                              CATUnicodeString(instanceName), &spFound))) {
            return;
        }
        const std::string text = "the load manager finds by the instance " + partNumber + "/" + instanceName;
        unsigned char bIsUsed = FALSE;
        if (!IsInGraph(spFound.GetImpl())) {
            Tell(text + " a relation that is not in the graph");
        } else if (FAILED(QTBInfoUtil::CatiaInstanceNameIsUsedInRelation(spFound, CATUnicodeString(instanceName),
                                                                         &bIsUsed)) ||
                   bIsUsed == FALSE) {
            Tell(text + " the relation " + KeyOf(spFound));
        }
    }

    Memory& m_Memory;
    QTBAnswers m_Answers;
    QTBIPdmNodeCont_var m_spGraph;
    Nodes m_PdmNodes;
    std::unordered_set<Identity> m_Graph;
    std::vector<QTBIRepNodeCont_var> m_Conts;
    std::unordered_set<Identity> m_KnownConts;
    std::unordered_set<const CATFrmWindow*> m_OpenWindows;
    std::vector<CATBaseUnknown_var> m_RepNodes;
    // The container of each rep node.
    std::unordered_map<Identity, Identity> m_Owners;
    std::unordered_map<Link, Ends, LinkHash> m_Links;
    std::unordered_set<std::string> m_PartNumbers;
    std::vector<std::string> m_Broken;
    std::size_t m_Untold = 0;
};

} // namespace

std::vector<std::string> QTBFindBrokenInvariants(const std::vector<QTBIRepNodeCont_var>& furtherRepNodeConts,
                                                 QTBAnswers answers)
{
    static Memory s_Memory;
    Inspection inspection(s_Memory, answers);
    inspection.InspectGraph();
    inspection.InspectTrees(furtherRepNodeConts);
    inspection.InspectLinks();
    inspection.InspectLoadManager();
    return inspection.Result();
}
