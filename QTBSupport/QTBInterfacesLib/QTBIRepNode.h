#pragma once

#include "CATListVal.h"
#include "CATListValCATBaseUnknown_var.h"
#include "QTBINode.h"

class CATCmdAccess;
class CATCmdContainer;
class CATFrmEditor;
class CATFrmWindow;
class QTBContextMenuInfo;
class QTBIPdmNode;
class QTBIRepNode;
class QTBIRepNodeCont;
class QTBNodeRelationInfo;
using CATListValQTBContextMenuInfo = CATListVal<QTBContextMenuInfo>;
using CATListValQTBNodeRelationInfo = CATListVal<QTBNodeRelationInfo>;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;
using QTBIRepNodeCont_var = CATInterface_var<QTBIRepNodeCont>;

inline constexpr IID IID_QTBIRepNode{"QTBIRepNode"};

// One node of the tree in a PDM window; it represents one node of the PDM graph. Trees alternate: below a rep node of
// an object hang those of its relations, below that of a relation hangs the one of the object at its other end.
class QTBINTERFACESLIB_API QTBIRepNode : public QTBINode
{
    CATDeclareInterface(QTBIRepNode, QTBINode)

public:
    // TRUE when the node has no single parent.
    virtual HRESULT IsRepRootNode(unsigned char* pbIsRepRootNode) = 0;

    // For an object: its relation children and, parallel to them, the objects below those.
    virtual HRESULT GetDirectChildren(CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                      CATListValCATBaseUnknown_var* pListOfObjRepNodes) = 0;
    // All children. A relation that has more than one keeps the newest and loses the others.
    virtual HRESULT GetDirectChildren(CATListValCATBaseUnknown_var* pListOfRepNodes) = 0;
    // Children whose PDM node is of the class: relations with subclasses, objects by exact name.
    virtual HRESULT GetFilteredDirectChildren(const CATUnicodeString& usClassName,
                                              CATListValCATBaseUnknown_var* pListOfRepNodes) = 0;
    // Children whose PDM node has that value in that string attribute.
    virtual HRESULT GetFilteredDirectChildren(const CATUnicodeString& usAttrName, const CATUnicodeString& usAttrValue,
                                              CATListValCATBaseUnknown_var* pListOfRepNodes) = 0;
    // Appends all descendants: the children, then the first child's descendants, then the second's.
    virtual HRESULT GetAllChildren(CATListValCATBaseUnknown_var* pListOfRepNodes) = 0;
    // Quiet failure for a root.
    virtual HRESULT GetParent(QTBIRepNode_var* pspIRepNode) = 0;
    // The nearest ancestor that represents an object, at most two levels up.
    virtual HRESULT GetParentObject(QTBIRepNode_var* pspIRepNodeOnParentObject) = 0;
    // Whether the node is the placeholder that a window shows until it has something to show; it stands for the graph's
    // default root.
    virtual HRESULT IsRepDefaultNode(unsigned char* pbIsRepDefaultNode) = 0;

    // Has the tree draw the node again, with pbRecursive all its descendants too.
    virtual HRESULT Redraw(unsigned char* pbRecursive) = 0;
    // Marks the node (or, below a relation, its object) in its window; never tells when that failed.
    virtual HRESULT Highlight(unsigned char* pbEmptyHSO, unsigned char* pbHighlightObjectOfRelation) = 0;
    virtual HRESULT Preselect(unsigned char* pbEmptyPSO) = 0;

    // The text shown in the tree.
    virtual HRESULT GetDisplayString(CATUnicodeString* pusDisplayString) = 0;

    // The represented PDM node, by its link or else by the key kept for that case; the flag (may be null) tells whether
    // by the link. E_FAIL without error when it is gone.
    virtual HRESULT GetPdmNode(QTBIPdmNode_var* pspIPdmNode, unsigned char bPrintDebugInfo,
                               unsigned char* pbPdmNodeFoundByRelation) = 0;
    virtual HRESULT GetPdmNodeKey(CATUnicodeString* pusKey) = 0;
    virtual HRESULT GetPdmNodeAttributeValue(const CATUnicodeString& usAttrName, CATUnicodeString* pusValue) = 0;
    virtual HRESULT GetPdmNodeClassName(CATUnicodeString* pusClassName) = 0;
    virtual HRESULT RepresentsPdmObjNode(unsigned char* pbRepresentsPdmObjNode) = 0;
    // The second flag may be null and is set only for a relation.
    virtual HRESULT RepresentsPdmRelNode(unsigned char* pbRepresentsPdmRelNode,
                                         unsigned char* pbIsMultiQuantityRelation) = 0;

    // The PDM relations (name and direction) shown below the node. A relation that the PDM node does not have, or a
    // second one on a relation rep node, is not added.
    virtual HRESULT AddPdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo) = 0;
    virtual HRESULT RemovePdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo) = 0;
    virtual HRESULT SetPdmRelationsToBeDisplayed(const CATListValQTBNodeRelationInfo& NodeRelationInfos) = 0;
    virtual HRESULT GetPdmRelationsToBeDisplayed(CATListValQTBNodeRelationInfo* pNodeRelationInfos) = 0;

    // Pruning in two passes: mark the children shown for the relations, update, then clean up what is still marked.
    virtual HRESULT MarkChildrenForRemoval(const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                           unsigned char* pbRecursive) = 0;
    virtual HRESULT MarkChildrenForRemoval(const QTBNodeRelationInfo& NodeRelationInfo, unsigned char* pbRecursive) = 0;
    virtual HRESULT SetMarkForRemoval(unsigned char* pbMarkForRemoval) = 0;
    virtual HRESULT GetMarkForRemoval(unsigned char* pbMarkForRemoval) = 0;
    virtual HRESULT CleanUpChildren(unsigned char* pbRecursive) = 0;

    virtual HRESULT SetSinglePdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo) = 0;
    virtual HRESULT GetSinglePdmRelationToBeDisplayed(QTBNodeRelationInfo* pNodeRelationInfo) = 0;
    // Whether the relation may be added: not there yet, and the PDM node has one of its class on that side.
    virtual HRESULT CheckPdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo, unsigned char* pbOk) = 0;

    // The relation through which the node hangs below its parent.
    virtual HRESULT SetPdmRelationToLeftNode(const QTBNodeRelationInfo& NodeRelationInfo) = 0;
    virtual HRESULT GetPdmRelationToLeftNode(QTBNodeRelationInfo* pNodeRelationInfo) = 0;

    // The window that shows the node; null for none. A pointer that receives one must be null on entry.
    virtual HRESULT SetFrmWindowPtr(CATFrmWindow* pFrmWindow) = 0;
    virtual HRESULT GetFrmWindowPtr(CATFrmWindow** ppFrmWindow) = 0;
    virtual HRESULT FrmWindowPtrExists(unsigned char* pbFrmWindowPtrExists) = 0;
    virtual HRESULT GetFrmEditorPtr(CATFrmEditor** ppFrmEditor) = 0;

    // Builds the node's menu: items for the PDM window into the container (may be null), of which ppFirstItem (may be
    // null) receives the first, and entries for the query dialog, which GetContextMenuInfo gives (each may be null).
    virtual HRESULT InitContextMenuInfo(CATCmdContainer* pContainer, CATCmdAccess** ppFirstItem) = 0;
    virtual HRESULT GetContextMenuInfo(CATListValQTBContextMenuInfo* pListOfContextMenuInfos,
                                       QTBContextMenuInfo* pCurrentInfo, CATListValQTBContextMenuInfo* pSecondList) = 0;

    virtual HRESULT SetRepNodeContainer(const QTBIRepNodeCont_var& spIRepNodeCont) = 0;
    virtual HRESULT GetRepNodeContainer(QTBIRepNodeCont_var* pspIRepNodeCont) = 0;
    // The number of the node's container, which no other container of the session has.
    virtual HRESULT GetContainerId(int* pId) = 0;

    // For diagnosis only: pairs and lines that PrintDebugInfo writes to the debug output, of this node or of all rep
    // nodes of its PDM node, and the key by which it looks that up, also when the PDM node has gone.
    virtual HRESULT AddDebugAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue) = 0;
    virtual HRESULT AddDebugInfoString(const CATUnicodeString& usText, unsigned char* pbForAllRepNodesOfPdmNode) = 0;
    virtual HRESULT AddPdmNodeKeyForDebug(const CATUnicodeString& usPdmNodeKey) = 0;
    virtual HRESULT PrintDebugInfo() = 0;

    virtual HRESULT GetPdmNodeActionIndex(int* pActionIndex) = 0;
    // The doubled "Is" is part of the interface as published.
    virtual HRESULT PdmNodeIsIsAffectedByCurrentAction(unsigned char* pbIsAffected) = 0;
};
