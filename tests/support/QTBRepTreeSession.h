#pragma once

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "CATInstantiateComponent.h"
#include "QTBConstants.h"
#include "QTBDiagnosis.h"
#include "QTBFaultyExtensions.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeRelations.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBInfoUtil.h"
#include "QTBNodeRelationInfo.h"
#include "QTBSchemaUtil.h"
#include "QTBTestLateType.h"
#include "QTBTestSession.h"

// Session with a rep node container that has no window, and what tests of rep trees ask for again and again. Rep nodes
// are named by the keys of their PDM nodes.
class QTBRepTreeSession : public QTBTestSession
{
protected:
    // Relations from left to right, as most trees show them.
    inline static const QTBNodeRelationInfo PARTS{"PartPart", usLEFT_TO_RIGHT};
    inline static const QTBNodeRelationInfo USED_IN{"PartPart", usRIGHT_TO_LEFT};
    inline static const QTBNodeRelationInfo FILES{"PartFile", usLEFT_TO_RIGHT};

    void SetUp() override
    {
        QTBTestSession::SetUp();
        m_spCont = CreateCont();
    }

    void TearDown() override
    {
        // Links that a test made by hand to components that are no rep nodes would keep them alive.
        for (const CATBaseUnknown_var& spNode : m_Loose) {
            const QTBINodeRelations_var spINodeRelations(spNode);
            for (int i = 0; spINodeRelations != NULL_var && i < 10; ++i) {
                spINodeRelations->RemoveAllRels(nullptr);
            }
        }
        m_Loose.clear();
        m_spCont = NULL_var;
        QTBTestSession::TearDown();
    }

    // A container of its own; the session cleans it up.
    static QTBIRepNodeCont_var CreateCont()
    {
        void* pCont = nullptr;
        EXPECT_THAT(::CATInstantiateComponent("QTBRepNodeCont", IID_QTBIRepNodeCont, &pCont), Succeeds());
        return QTBIRepNodeCont_var::Adopt(static_cast<QTBIRepNodeCont*>(pCont));
    }

    // The extension behind an interface, real or faulty.
    static QTBERepNodeOnRepNode* Extension(const QTBIRepNode_var& spIRepNode)
    {
        return FindExtension<TIEQTBIRepNode, QTBERepNodeOnRepNode, QTBFaultyRepNode>(spIRepNode);
    }
    static QTBERepNodeContOnRepNodeCont* Extension(const QTBIRepNodeCont_var& spIRepNodeCont)
    {
        return FindExtension<TIEQTBIRepNodeCont, QTBERepNodeContOnRepNodeCont, QTBFaultyRepNodeCont>(spIRepNodeCont);
    }
    QTBERepNodeContOnRepNodeCont* Cont() const { return Extension(m_spCont); }

    static CATListValQTBNodeRelationInfo Relations(std::initializer_list<QTBNodeRelationInfo> infos)
    {
        CATListValQTBNodeRelationInfo list;
        for (const QTBNodeRelationInfo& info : infos) {
            list.Append(info);
        }
        return list;
    }

    // A rep node for the PDM node of that key, below a parent or, for an empty one, as root.
    QTBIRepNode_var Create(const QTBIRepNode_var& spParent, const char* key, const QTBNodeRelationInfo& info = PARTS)
    {
        QTBIRepNode_var spIRepNode;
        EXPECT_THAT(Cont()->CreateRepNode(spParent, PdmNode(key), &spIRepNode, info, nullptr, nullptr), Succeeds())
            << key;
        return spIRepNode;
    }
    QTBIRepNode_var CreateRoot(const char* key) { return Create(QTBIRepNode_var(), key, QTBNodeRelationInfo()); }

    // A component of that late type that no container holds; its links are taken back at the end of the test.
    CATBaseUnknown_var CreateLoose(const char* lateType)
    {
        void* pNode = nullptr;
        EXPECT_THAT(::CATInstantiateComponent(lateType, CLSID_CATBaseUnknown, &pNode), Succeeds());
        return KeepLoose(CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pNode)));
    }
    CATBaseUnknown_var KeepLoose(const CATBaseUnknown_var& spNode)
    {
        m_Loose.push_back(spNode);
        return spNode;
    }
    // A rep node that no container holds, linked to a PDM node if one is given.
    QTBIRepNode_var CreateLooseRepNode(const char* pdmKey = nullptr)
    {
        const QTBIRepNode_var spIRepNode(CreateLoose("QTBRepNode"));
        if (pdmKey != nullptr) {
            EXPECT_THAT(QTBINodeRelations_var(FindNode(pdmKey))->AddRightNode("PdmToRep", spIRepNode, 1, TRUE),
                        Succeeds());
        }
        return spIRepNode;
    }

    // Gives a rep node a PDM node that has no relations of its own.
    void LinkToBarePdmNode(const QTBIRepNode_var& spIRepNode, const CATBaseUnknown_var& spPdmNode)
    {
        EXPECT_EQ(QTBINodeRelations_var(spIRepNode)->AddLeftNode("PdmToRep", spPdmNode, 1, TRUE), E_NOINTERFACE);
    }

    static void LinkBelow(const CATBaseUnknown_var& spParent, const CATBaseUnknown_var& spChild)
    {
        QTBINodeRelations_var(spParent)->AddRightNode("RepToRep", spChild, 1, TRUE);
    }
    // Takes the link between a rep node and its PDM node away.
    static void Unlink(const QTBIRepNode_var& spIRepNode)
    {
        const CATListValCATBaseUnknown_var pdmNodes =
            Neighbours(spIRepNode, &QTBINodeRelations::GetLeftNodeList, "PdmToRep");
        ASSERT_EQ(pdmNodes.Size(), 1);
        EXPECT_THAT(QTBINodeRelations_var(spIRepNode)->RemoveLeftNode("PdmToRep", pdmNodes[1]), Succeeds());
    }

    // Linked nodes, without the pruning that the operations of rep nodes do.
    static CATListValCATBaseUnknown_var ChildrenOf(const CATBaseUnknown_var& spNode)
    {
        return Neighbours(spNode, &QTBINodeRelations::GetRightNodeList, "RepToRep");
    }
    static CATListValCATBaseUnknown_var ParentsOf(const CATBaseUnknown_var& spNode)
    {
        return Neighbours(spNode, &QTBINodeRelations::GetLeftNodeList, "RepToRep");
    }
    static CATListValCATBaseUnknown_var PdmNodesOf(const CATBaseUnknown_var& spNode)
    {
        return Neighbours(spNode, &QTBINodeRelations::GetLeftNodeList, "PdmToRep");
    }
    static CATListValCATBaseUnknown_var RepNodesOf(const char* key)
    {
        return Neighbours(FindNode(key), &QTBINodeRelations::GetRightNodeList, "PdmToRep");
    }

    // The tree below a rep node with the keys of the PDM nodes: "A(AB(B) AC(C))". For small trees.
    static std::string TreeOf(const CATBaseUnknown_var& spRepNode)
    {
        const CATListValCATBaseUnknown_var pdmNodes = PdmNodesOf(spRepNode);
        std::string text = pdmNodes.Size() == 1 ? KeyOf(pdmNodes[1]) : "?";
        const CATListValCATBaseUnknown_var children = ChildrenOf(spRepNode);
        for (int i = 1; i <= children.Size(); ++i) {
            text += (i == 1 ? "(" : " ") + TreeOf(children[i]);
        }
        return children.Size() > 0 ? text + ")" : text;
    }
    // PDM keys of the nodes of a list of rep nodes, in its order.
    static std::vector<std::string> PdmKeysOf(const CATListValCATBaseUnknown_var& repNodes)
    {
        std::vector<std::string> keys;
        for (const CATBaseUnknown_var& spRepNode : repNodes) {
            const CATListValCATBaseUnknown_var pdmNodes = PdmNodesOf(spRepNode);
            keys.push_back(pdmNodes.Size() == 1 ? KeyOf(pdmNodes[1]) : "?");
        }
        return keys;
    }
    // Trees of all roots of a container, sorted.
    static std::vector<std::string> TreesOf(const QTBIRepNodeCont_var& spIRepNodeCont)
    {
        std::vector<std::string> trees;
        for (const CATBaseUnknown_var& spRepNode : AllRepNodesOf(spIRepNodeCont)) {
            if (ParentsOf(spRepNode).Size() == 0) {
                trees.push_back(TreeOf(spRepNode));
            }
        }
        std::sort(trees.begin(), trees.end());
        return trees;
    }
    static CATListValCATBaseUnknown_var AllRepNodesOf(const QTBIRepNodeCont_var& spIRepNodeCont)
    {
        CATListValCATBaseUnknown_var repNodes;
        EXPECT_THAT(spIRepNodeCont->GetAllRepNodes(&repNodes), Succeeds());
        return repNodes;
    }
    // The first rep node of a PDM node in the container.
    QTBIRepNode_var Find(const char* key) const
    {
        CATListValCATBaseUnknown_var repNodes;
        EXPECT_THAT(PdmNode(key)->GetRepNodes(&repNodes, m_spCont), Succeeds());
        return repNodes.Size() > 0 ? QTBIRepNode_var(repNodes[1]) : QTBIRepNode_var();
    }
    // The number at the end of a rep node's key.
    static int NumberOf(const QTBIRepNode_var& spIRepNode)
    {
        const std::string key = KeyOf(spIRepNode);
        return std::stoi(key.substr(key.rfind('-') + 1));
    }

    static void SetActionIndex(const char* key, int index)
    {
        QTBIPdmNode_var spIPdmNode = PdmNode(key);
        EXPECT_THAT(QTBInfoUtil::SetActionIndex(index, &spIPdmNode), Succeeds());
    }
    static int CurrentActionIndex()
    {
        int index = -1;
        EXPECT_THAT(QTBGlobVarsUtil::GetCurrentActionIndex(&index), Succeeds());
        return index;
    }
    static void AdvanceActionIndexTo(int index)
    {
        while (CurrentActionIndex() < index) {
            QTBGlobVarsUtil::IncActionIndex();
        }
    }

    void Consider(NodesToRetrieve mode) const { EXPECT_THAT(m_spCont->SetPdmNodesToConsider(&mode), Succeeds()); }

    // UpdateRepTrees of the PDM node of that key.
    HRESULT ShowTrees(const char* key, const CATListValQTBNodeRelationInfo& relations, unsigned char bOneLevel = FALSE,
                      CATListValCATBaseUnknown_var* pRels = nullptr, CATListValCATBaseUnknown_var* pObjs = nullptr,
                      unsigned char bAdd = TRUE) const
    {
        return m_spCont->UpdateRepTrees(PdmNode(key), relations, &bOneLevel, pRels, pObjs, &bAdd);
    }
    // UpdateRepTree below a rep node.
    HRESULT Expand(const QTBIRepNode_var& spIRepNode, const CATListValQTBNodeRelationInfo& relations,
                   unsigned char bOneLevel = FALSE, CATListValCATBaseUnknown_var* pRels = nullptr,
                   CATListValCATBaseUnknown_var* pObjs = nullptr, unsigned char bCollect = FALSE,
                   unsigned char bAdd = TRUE, unsigned char bUpdateWindow = FALSE) const
    {
        return m_spCont->UpdateRepTree(spIRepNode, relations, &bOneLevel, pRels, pObjs, &bAdd, &bUpdateWindow,
                                       &bCollect);
    }
    HRESULT Remove(const QTBIRepNode_var& spIRepNode, unsigned char bInformUser = FALSE) const
    {
        return m_spCont->RecursiveRemoveRepTree(spIRepNode, &bInformUser);
    }
    static void RemovePdmNode(const char* key)
    {
        EXPECT_THAT(GetPdmNodeCont()->RemoveNodeFromPdmGraph(key, FALSE, FALSE, FALSE, nullptr), Succeeds()) << key;
    }

    // Puts the project's schema in force with pieces of its text replaced. The next test has the schema as it is.
    static void LoadEditedSchema(const std::vector<std::pair<std::string, std::string>>& edits)
    {
        std::ifstream file(QTB_SOURCE_DIR "/resources/schema/QTBSchema.xml");
        std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        for (const auto& [from, to] : edits) {
            const std::size_t position = text.find(from);
            ASSERT_NE(position, std::string::npos) << from;
            text.replace(position, from.size(), to);
        }
        const std::string path = ::testing::TempDir() + "QTBRepTreeSession-" + std::to_string(getpid()) + ".xml";
        std::ofstream(path) << text;
        EXPECT_THAT(QTBSchemaUtil::LoadSchema(path.c_str()), Succeeds());
        std::remove(path.c_str());
    }

    // Texts of the information list.
    static std::vector<std::string> InfoList()
    {
        CATListValQTBInfoListEntry entries;
        EXPECT_THAT(QTBGlobVarsUtil::GetInfoListEntries(&entries), Succeeds());
        std::vector<std::string> texts;
        for (const QTBInfoListEntry& entry : entries) {
            texts.emplace_back(entry.text.View());
        }
        return texts;
    }

    static std::string TextOf(const CATUnicodeString& text) { return std::string(text.View()); }

    QTBIRepNodeCont_var m_spCont;

private:
    template <template <class...> class Tie, class Real, class Faulty, class Interface>
    static Real* FindExtension(const CATInterface_var<Interface>& spInterface)
    {
        if (auto* pTie = dynamic_cast<Tie<CATDataTie<Interface, Real>>*>(spInterface.Get())) {
            return pTie->Target();
        }
        auto* pTie = dynamic_cast<Tie<CATDataTie<Interface, Faulty>>*>(spInterface.Get());
        return pTie != nullptr ? pTie->Target() : nullptr;
    }

    static CATListValCATBaseUnknown_var Neighbours(const CATBaseUnknown_var& spNode,
                                                   HRESULT (QTBINodeRelations::*getNodes)(const CATUnicodeString&,
                                                                                          CATListValCATBaseUnknown_var*,
                                                                                          const NodesToRetrieve&),
                                                   const char* relationName)
    {
        CATListValCATBaseUnknown_var nodes;
        const QTBINodeRelations_var spINodeRelations(spNode);
        if (spINodeRelations != NULL_var) {
            EXPECT_THAT(((*spINodeRelations).*getNodes)(relationName, &nodes, ALL_NODES), Succeeds());
        }
        return nodes;
    }

    std::vector<CATBaseUnknown_var> m_Loose;
};

// The same with faulty extensions (see QTBFault).
class QTBFaultyRepTreeSession : public QTBRepTreeSession
{
protected:
    void SetUp() override
    {
        m_pFaulty = std::make_unique<QTBFaultyExtensions>();
        QTBRepTreeSession::SetUp();
    }

    void TearDown() override
    {
        QTBRepTreeSession::TearDown();
        m_pFaulty.reset();
    }

    // Files a component in the container that is no rep node, and takes it out again.
    void File(const CATBaseUnknown_var& spComponent) const
    {
        static_cast<QTBFaultyRepNodeCont*>(Cont())->File(spComponent);
    }
    void TakeOut(CATBaseUnknown_var spComponent) const
    {
        EXPECT_THAT(Cont()->RemoveNodeFromContainer(&spComponent, nullptr), Succeeds());
    }

private:
    std::unique_ptr<QTBFaultyExtensions> m_pFaulty;
};

// Rep nodes and PDM nodes that are no nodes: they have neither attributes nor relations.
class QTBBareRepNodeType : public QTBTestLateType
{
public:
    QTBBareRepNodeType() : QTBTestLateType("QTBBareRepNode")
    {
        Register<TIEQTBIRepNode, QTBIRepNode, QTBERepNodeOnRepNode>();
    }
};

class QTBBarePdmObjNodeType : public QTBTestLateType
{
public:
    QTBBarePdmObjNodeType() : QTBTestLateType("QTBBarePdmObjNode")
    {
        Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
        Register<TIEQTBIPdmObjNode, QTBIPdmObjNode, QTBEPdmObjNodeOnPdmObjNode>();
    }
};

class QTBBarePdmRelNodeType : public QTBTestLateType
{
public:
    QTBBarePdmRelNodeType() : QTBTestLateType("QTBBarePdmRelNode")
    {
        Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
        Register<TIEQTBIPdmRelNode, QTBIPdmRelNode, QTBEPdmRelNodeOnPdmRelNode>();
    }
};
