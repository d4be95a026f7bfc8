#pragma once

#include <string>
#include <vector>

#include "QTBINodeAttributes.h"
#include "QTBINodeRelations.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBTestLateType.h"
#include "TIEQTBIRepNode.h"
#include "TIEQTBIRepNodeCont.h"

// Rep nodes and rep node containers that only write down what the PDM graph asks of them, for tests of the graph alone.
// What they are told to fail at is named in QTBFakeRepTree::s_FailingOperation; the operations that the graph does not
// use do nothing.
#define QTB_FAKE_OPERATION(name)                                                                                       \
    template <class... Arguments>                                                                                      \
    HRESULT name(Arguments&&...)                                                                                       \
    {                                                                                                                  \
        return S_OK;                                                                                                   \
    }

class QTBFakeRepNodeCont;
class QTBFakeRepNode;

class QTBFakeRepTree
{
public:
    QTBFakeRepTree();
    ~QTBFakeRepTree()
    {
        s_Calls.clear();
        s_FailingOperation.clear();
    }

    // A container, with or without a window. Calls on it are written down under its name.
    CATBaseUnknown_var CreateContainer(const std::string& name, bool hasWindow) const;
    // A rep node of the container that shows the PDM node.
    CATBaseUnknown_var CreateRepNode(const std::string& key, const CATBaseUnknown_var& spPdmNode,
                                     const CATBaseUnknown_var& spContainer) const;

    // What was called, in order: "container.Operation(arguments)".
    static std::vector<std::string>& Calls() { return s_Calls; }
    // The operation, by its plain name, that fails from now on.
    static void FailAt(const char* operation) { s_FailingOperation = operation; }

    static HRESULT Note(const std::string& call, const char* operation)
    {
        s_Calls.push_back(call);
        return s_FailingOperation == operation ? E_FAIL : S_OK;
    }

    static std::string KeyOf(const CATBaseUnknown_var& spNode)
    {
        const QTBINodeAttributes_var spINodeAttributes(spNode);
        CATUnicodeString usKey;
        if (spINodeAttributes != NULL_var) {
            spINodeAttributes->GetKey(&usKey);
        }
        return std::string(usKey.View());
    }

private:
    inline static std::vector<std::string> s_Calls;
    inline static std::string s_FailingOperation;

    QTBTestLateType m_RepNodeType{"QTBFakeRepNode", "QTBNode"};
    QTBTestLateType m_RepNodeContType{"QTBFakeRepNodeCont"};
};

class QTBFakeRepNodeCont : public CATBaseUnknown
{
public:
    // Takes the rep node out of the graph, as a removed tree would be.
    HRESULT RecursiveRemoveRepTree(const QTBIRepNode_var& spIRepNode, const unsigned char* pbInformUser)
    {
        const HRESULT hr =
            QTBFakeRepTree::Note(m_Name + ".RecursiveRemoveRepTree(" + QTBFakeRepTree::KeyOf(spIRepNode) +
                                     (*pbInformUser != FALSE ? ", inform)" : ")"),
                                 "RecursiveRemoveRepTree");
        return FAILED(hr) ? hr : QTBINodeRelations_var(spIRepNode)->RemoveAllRels(nullptr);
    }

    HRESULT UpdateAllRepTrees(const unsigned char* pbFlag1, const unsigned char* pbFlag2,
                              const CATListValQTBNodeRelationInfo&, CATListValCATBaseUnknown_var* pRels,
                              CATListValCATBaseUnknown_var* pObjs, const unsigned char* pbAddNewNodes)
    {
        std::string arguments = *pbFlag1 != FALSE ? "TRUE" : "FALSE";
        arguments += *pbFlag2 != FALSE ? ", TRUE" : ", FALSE";
        arguments += pRels == nullptr && pObjs == nullptr ? ", no lists" : ", lists";
        arguments += pbAddNewNodes == nullptr ? ", null" : *pbAddNewNodes != FALSE ? ", add" : ", do not add";
        return QTBFakeRepTree::Note(m_Name + ".UpdateAllRepTrees(" + arguments + ")", "UpdateAllRepTrees");
    }

    HRESULT QtbFrmWindowPtrIsSet(unsigned char* pbIsSet)
    {
        *pbIsSet = m_bHasWindow ? TRUE : FALSE;
        return QTBFakeRepTree::Note(m_Name + ".QtbFrmWindowPtrIsSet()", "QtbFrmWindowPtrIsSet");
    }

    HRESULT Cleanup() { return QTBFakeRepTree::Note(m_Name + ".Cleanup()", "Cleanup"); }

    QTB_FAKE_OPERATION(UpdateQtbWindow)
    QTB_FAKE_OPERATION(SetPdmNodesToConsider)
    QTB_FAKE_OPERATION(SetRepChildRelationsToUpdate)
    QTB_FAKE_OPERATION(UpdateRepTrees)
    QTB_FAKE_OPERATION(UpdateRepTree)
    QTB_FAKE_OPERATION(UpdateRepTreeAfterGetFilteredModels)
    QTB_FAKE_OPERATION(AddAsRepRootNodes)
    QTB_FAKE_OPERATION(GetRepRootNodes)
    QTB_FAKE_OPERATION(GetAllRepNodes)
    QTB_FAKE_OPERATION(GetRepNodeByKey)
    QTB_FAKE_OPERATION(CreateRelation)
    QTB_FAKE_OPERATION(DeExpand)
    QTB_FAKE_OPERATION(SetQtbFrmWindowPtr)
    QTB_FAKE_OPERATION(GetQtbFrmWindowPtr)
    QTB_FAKE_OPERATION(SetQtbFrmWindowPtrToNull)
    QTB_FAKE_OPERATION(GetId)
    QTB_FAKE_OPERATION(CreateDefaultRootNode)

    void Set(const std::string& name, bool hasWindow)
    {
        m_Name = name;
        m_bHasWindow = hasWindow;
    }

private:
    std::string m_Name;
    bool m_bHasWindow = true;
};

class QTBFakeRepNode : public CATBaseUnknown
{
public:
    HRESULT GetRepNodeContainer(QTBIRepNodeCont_var* pspIRepNodeCont)
    {
        *pspIRepNodeCont = m_spContainer;
        const std::string key = QTBFakeRepTree::KeyOf(CATBaseUnknown_var(this));
        return QTBFakeRepTree::Note(key + ".GetRepNodeContainer()", "GetRepNodeContainer");
    }

    HRESULT AddDebugInfoString(const CATUnicodeString& usText, const unsigned char* pbForAll)
    {
        const std::string key = QTBFakeRepTree::KeyOf(CATBaseUnknown_var(this));
        return QTBFakeRepTree::Note(key + ".AddDebugInfoString(" + std::string(usText.View()) +
                                        (*pbForAll != FALSE ? ", all)" : ")"),
                                    "AddDebugInfoString");
    }

    QTB_FAKE_OPERATION(GetNodeDescriptionString)
    QTB_FAKE_OPERATION(GetPdmClass)
    QTB_FAKE_OPERATION(IsRepRootNode)
    QTB_FAKE_OPERATION(GetDirectChildren)
    QTB_FAKE_OPERATION(GetFilteredDirectChildren)
    QTB_FAKE_OPERATION(GetAllChildren)
    QTB_FAKE_OPERATION(GetParent)
    QTB_FAKE_OPERATION(GetParentObject)
    QTB_FAKE_OPERATION(IsRepDefaultNode)
    QTB_FAKE_OPERATION(Redraw)
    QTB_FAKE_OPERATION(Highlight)
    QTB_FAKE_OPERATION(Preselect)
    QTB_FAKE_OPERATION(GetDisplayString)
    QTB_FAKE_OPERATION(GetPdmNode)
    QTB_FAKE_OPERATION(GetPdmNodeKey)
    QTB_FAKE_OPERATION(GetPdmNodeAttributeValue)
    QTB_FAKE_OPERATION(GetPdmNodeClassName)
    QTB_FAKE_OPERATION(RepresentsPdmObjNode)
    QTB_FAKE_OPERATION(RepresentsPdmRelNode)
    QTB_FAKE_OPERATION(AddPdmRelationToBeDisplayed)
    QTB_FAKE_OPERATION(RemovePdmRelationToBeDisplayed)
    QTB_FAKE_OPERATION(SetPdmRelationsToBeDisplayed)
    QTB_FAKE_OPERATION(GetPdmRelationsToBeDisplayed)
    QTB_FAKE_OPERATION(MarkChildrenForRemoval)
    QTB_FAKE_OPERATION(SetMarkForRemoval)
    QTB_FAKE_OPERATION(GetMarkForRemoval)
    QTB_FAKE_OPERATION(CleanUpChildren)
    QTB_FAKE_OPERATION(SetSinglePdmRelationToBeDisplayed)
    QTB_FAKE_OPERATION(GetSinglePdmRelationToBeDisplayed)
    QTB_FAKE_OPERATION(CheckPdmRelationToBeDisplayed)
    QTB_FAKE_OPERATION(SetPdmRelationToLeftNode)
    QTB_FAKE_OPERATION(GetPdmRelationToLeftNode)
    QTB_FAKE_OPERATION(SetFrmWindowPtr)
    QTB_FAKE_OPERATION(GetFrmWindowPtr)
    QTB_FAKE_OPERATION(FrmWindowPtrExists)
    QTB_FAKE_OPERATION(GetFrmEditorPtr)
    QTB_FAKE_OPERATION(InitContextMenuInfo)
    QTB_FAKE_OPERATION(GetContextMenuInfo)
    QTB_FAKE_OPERATION(SetRepNodeContainer)
    QTB_FAKE_OPERATION(GetContainerId)
    QTB_FAKE_OPERATION(AddDebugAttribute)
    QTB_FAKE_OPERATION(AddPdmNodeKeyForDebug)
    QTB_FAKE_OPERATION(PrintDebugInfo)
    QTB_FAKE_OPERATION(GetPdmNodeActionIndex)
    QTB_FAKE_OPERATION(PdmNodeIsIsAffectedByCurrentAction)

    void Set(const CATBaseUnknown_var& spContainer) { m_spContainer = spContainer; }

private:
    CATBaseUnknown_var m_spContainer;
};

#undef QTB_FAKE_OPERATION

inline QTBFakeRepTree::QTBFakeRepTree()
{
    s_Calls.clear();
    s_FailingOperation.clear();
    m_RepNodeType.Register<TIEQTBIRepNode, QTBIRepNode, QTBFakeRepNode>();
    m_RepNodeContType.Register<TIEQTBIRepNodeCont, QTBIRepNodeCont, QTBFakeRepNodeCont>();
}

inline CATBaseUnknown_var QTBFakeRepTree::CreateContainer(const std::string& name, bool hasWindow) const
{
    using Tie = TIEQTBIRepNodeCont<CATDataTie<QTBIRepNodeCont, QTBFakeRepNodeCont>>;
    const CATBaseUnknown_var spContainer = m_RepNodeContType.Create();
    const QTBIRepNodeCont_var spIRepNodeCont(spContainer);
    static_cast<Tie*>(spIRepNodeCont.Get())->Target()->Set(name, hasWindow);
    return spContainer;
}

inline CATBaseUnknown_var QTBFakeRepTree::CreateRepNode(const std::string& key, const CATBaseUnknown_var& spPdmNode,
                                                        const CATBaseUnknown_var& spContainer) const
{
    using Tie = TIEQTBIRepNode<CATDataTie<QTBIRepNode, QTBFakeRepNode>>;
    const CATBaseUnknown_var spRepNode = m_RepNodeType.Create();
    const QTBIRepNode_var spIRepNode(spRepNode);
    static_cast<Tie*>(spIRepNode.Get())->Target()->Set(spContainer);
    QTBINodeAttributes_var(spRepNode)->SetKey(key.c_str());
    QTBINodeRelations_var(spPdmNode)->AddRightNode("PdmToRep", spRepNode, 1, TRUE);
    return spRepNode;
}
