#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "QTBCommandText.h"
#include "QTBContextMenuInfo.h"
#include "QTBENodeOnNode.h"
#include "QTBNodeRelationInfo.h"

class CATCmdAccess;
class CATCmdContainer;
class CATFrmEditor;
class CATFrmWindow;
class CATListValQTBChildRepNodeInfo;
class CATPathElement;
class QTBExpDlgRelExpandInfo;
class QTBIPdmNode;
class QTBIRepNode;
class QTBIRepNodeCont;
class QTBPdmTree;
class QTBSchema;
class QTBSchemaNode;
class QTBSchemaRelation;
class QTBSchemaRelationship;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;
using QTBIRepNodeCont_var = CATInterface_var<QTBIRepNodeCont>;

// QTBIRepNode on the late type QTBRepNode. A rep node holds little of its own: its PDM node, parent and children are
// ordinary node relations, "PdmToRep" and "RepToRep". The operations of the interface are described there.
class QTBERepNodeOnRepNode : public QTBENodeOnNode
{
public:
    HRESULT IsRepRootNode(unsigned char* pbIsRepRootNode);
    HRESULT GetDirectChildren(CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                              CATListValCATBaseUnknown_var* pListOfObjRepNodes);
    HRESULT GetDirectChildren(CATListValCATBaseUnknown_var* pListOfRepNodes);
    HRESULT GetFilteredDirectChildren(const CATUnicodeString& usClassName,
                                      CATListValCATBaseUnknown_var* pListOfRepNodes);
    HRESULT GetFilteredDirectChildren(const CATUnicodeString& usAttrName, const CATUnicodeString& usAttrValue,
                                      CATListValCATBaseUnknown_var* pListOfRepNodes);
    HRESULT GetAllChildren(CATListValCATBaseUnknown_var* pListOfRepNodes);
    HRESULT GetParent(QTBIRepNode_var* pspIRepNode);
    HRESULT GetParentObject(QTBIRepNode_var* pspIRepNodeOnParentObject);
    HRESULT IsRepDefaultNode(unsigned char* pbIsRepDefaultNode);

    HRESULT Redraw(unsigned char* pbRecursive);
    HRESULT Highlight(unsigned char* pbEmptyHSO, unsigned char* pbHighlightObjectOfRelation);
    HRESULT Preselect(unsigned char* pbEmptyPSO);

    HRESULT GetDisplayString(CATUnicodeString* pusDisplayString);
    HRESULT GetPdmNode(QTBIPdmNode_var* pspIPdmNode, unsigned char bPrintDebugInfo,
                       unsigned char* pbPdmNodeFoundByRelation);
    HRESULT GetPdmNodeKey(CATUnicodeString* pusKey);
    HRESULT GetPdmNodeAttributeValue(const CATUnicodeString& usAttrName, CATUnicodeString* pusValue);
    HRESULT GetPdmNodeClassName(CATUnicodeString* pusClassName);
    HRESULT RepresentsPdmObjNode(unsigned char* pbRepresentsPdmObjNode);
    HRESULT RepresentsPdmRelNode(unsigned char* pbRepresentsPdmRelNode, unsigned char* pbIsMultiQuantityRelation);

    HRESULT AddPdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo);
    HRESULT RemovePdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo);
    HRESULT SetPdmRelationsToBeDisplayed(const CATListValQTBNodeRelationInfo& NodeRelationInfos);
    HRESULT GetPdmRelationsToBeDisplayed(CATListValQTBNodeRelationInfo* pNodeRelationInfos);
    HRESULT MarkChildrenForRemoval(const CATListValQTBNodeRelationInfo& NodeRelationInfos, unsigned char* pbRecursive);
    HRESULT MarkChildrenForRemoval(const QTBNodeRelationInfo& NodeRelationInfo, unsigned char* pbRecursive);
    HRESULT SetMarkForRemoval(unsigned char* pbMarkForRemoval);
    HRESULT GetMarkForRemoval(unsigned char* pbMarkForRemoval);
    HRESULT CleanUpChildren(unsigned char* pbRecursive);
    HRESULT SetSinglePdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo);
    HRESULT GetSinglePdmRelationToBeDisplayed(QTBNodeRelationInfo* pNodeRelationInfo);
    HRESULT CheckPdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo, unsigned char* pbOk);
    HRESULT SetPdmRelationToLeftNode(const QTBNodeRelationInfo& NodeRelationInfo);
    HRESULT GetPdmRelationToLeftNode(QTBNodeRelationInfo* pNodeRelationInfo);

    HRESULT SetFrmWindowPtr(CATFrmWindow* pFrmWindow);
    HRESULT GetFrmWindowPtr(CATFrmWindow** ppFrmWindow);
    HRESULT FrmWindowPtrExists(unsigned char* pbFrmWindowPtrExists);
    HRESULT GetFrmEditorPtr(CATFrmEditor** ppFrmEditor);

    HRESULT InitContextMenuInfo(CATCmdContainer* pContainer, CATCmdAccess** ppFirstItem);
    HRESULT GetContextMenuInfo(CATListValQTBContextMenuInfo* pListOfContextMenuInfos, QTBContextMenuInfo* pCurrentInfo,
                               CATListValQTBContextMenuInfo* pSecondList);

    HRESULT SetRepNodeContainer(const QTBIRepNodeCont_var& spIRepNodeCont);
    HRESULT GetRepNodeContainer(QTBIRepNodeCont_var* pspIRepNodeCont);
    HRESULT GetContainerId(int* pId);

    HRESULT AddDebugAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue);
    HRESULT AddDebugInfoString(const CATUnicodeString& usText, unsigned char* pbForAllRepNodesOfPdmNode);
    HRESULT AddPdmNodeKeyForDebug(const CATUnicodeString& usPdmNodeKey);
    HRESULT PrintDebugInfo();

    HRESULT GetPdmNodeActionIndex(int* pActionIndex);
    HRESULT PdmNodeIsIsAffectedByCurrentAction(unsigned char* pbIsAffected);

    // Steps of the operations above, for this class and its tests.

    // The PDM node through the key kept for the case that its link is gone. Quiet failure without such a key.
    HRESULT GetPdmNodeByKey(QTBIPdmNode_var* pspIPdmNode, unsigned char* pbNodeExists);
    // The rep node of this node's own key in the owning container.
    HRESULT GetRepNodeByKey(QTBIRepNode_var* pspIRepNode, unsigned char* pbNodeExists);

    // The display name of the relationship, that is the direction of its relation, that a relation rep node shows.
    HRESULT GetRelationshipName(const QTBIRepNode_var& spIRepNode, CATUnicodeString* pusRelationshipName);
    static CATUnicodeString GetSchemaRelationshipDisplayName(const QTBSchemaRelationship* pRelationship);

    // Groups children by the relation that they show, in the order of the given relations; a relation without children
    // has no group.
    HRESULT GetChildRepNodeInfo(const CATListValCATBaseUnknown_var& ListOfDirectChildren,
                                const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                CATListValQTBChildRepNodeInfo* pChildRepNodeInfoList);

    // The expand menus of an object: its relations in the menus for one level and for all levels and, as entries for
    // the query dialog, in the second list; and the trees that the schema defines for its class.
    HRESULT CreateExpandSubMenuItems(const QTBIPdmNode_var& spIPdmNode, CATCmdContainer* pExpandContainer,
                                     CATCmdContainer* pMultiExpandContainer);
    HRESULT CreateCustomExpandSubMenuItem(CATCmdContainer* pContainer);
    // The menu of the objects that can be created at the other end of a relation.
    HRESULT CreateCtxCreateSubMenuItem(const QTBIPdmNode_var& spIPdmNode, CATCmdContainer* pContainer);

    HRESULT EmptyPSO();
    // Marks the node in its window's editor; a node without editor is none to mark.
    HRESULT Highlight(QTBIRepNode_var* pspIRepNode, unsigned char* pbEmptyHSO);

private:
    // One object rep node of a clean-up that is under way: its groups of children and how far they have been treated.
    struct CleanUpLevel;

    // Leaves a relation rep node with the one child that the newest action read; see GetDirectChildren.
    HRESULT RemoveSurplusChildren(CATListValCATBaseUnknown_var* pListOfRepNodes);

    // The relation rep nodes below an object rep node that show one of the relations, group by group.
    HRESULT GetRelationChildren(const QTBIRepNode_var& spIRepNode,
                                const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                CATListValCATBaseUnknown_var* pRelationChildren);
    HRESULT OpenCleanUpLevel(const QTBIRepNode_var& spIRepNode, CleanUpLevel* pLevel);

    class MenuItems;

    // Opens the document whose window is there for what the user chooses from the menu of a node in a query result. The
    // node itself stays without window. That no document can be opened is no failure.
    static HRESULT OpenDocumentOfQueryResult();
    // Whether the menu has the bounding box items.
    HRESULT BndBoxesAreOffered(unsigned char* pbAreOffered);
    // Adds the expand menus that have something in them; null items for the query dialog's entries alone.
    HRESULT AddExpandMenus(const QTBIPdmNode_var& spIPdmNode, const QTBSchemaNode& SchemaNode, MenuItems* pItems);
    // The items for the relations that are followed from one end.
    template <class End>
    HRESULT AddExpandGroup(const QTBSchema& Schema, const CATUnicodeString& usClassName, MenuItems* pExpandItems,
                           MenuItems* pMultiExpandItems);
    static void CreateExpandMenuItem(const QTBSchema& Schema, const QTBExpDlgRelExpandInfo& ExpandInfo,
                                     const CATUnicodeString& usTitle, bool separatorBefore, MenuItems* pItems);
    static HRESULT CreateCustomExpandMenuItem(const CATUnicodeString& usSystem, const CATUnicodeString& usCustomization,
                                              const QTBPdmTree* pPdmTree, MenuItems* pItems);
    static HRESULT CreateCtxCreateMenuItem(const QTBSchema& Schema, const QTBSchemaRelation& Relation,
                                           const QTBCommandText::Creation& Creation, MenuItems* pItems);

    CATFrmWindow* m_pFrmWindow = NULL;
    CATListValQTBNodeRelationInfo m_PdmRelationsToBeDisplayed;
    QTBNodeRelationInfo m_PdmRelationToLeftNode;
    QTBIRepNodeCont_var m_spIRepNodeCont;
    CATListValCATUnicodeString m_DebugInfoStrings;
    CATListValCATUnicodeString m_DebugAttrNames;
    CATListValCATUnicodeString m_DebugAttrValues;
    CATUnicodeString m_usPdmNodeKey;
    unsigned char m_bMarkForRemoval = FALSE;
    CATListValQTBContextMenuInfo m_ContextMenuInfos;
    QTBContextMenuInfo m_CurrentContextMenuInfo;
    CATListValQTBContextMenuInfo m_SecondContextMenuInfos;
};
