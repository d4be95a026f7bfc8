#pragma once

#include "CATListVal.h"
#include "CATListValCATBaseUnknown_var.h"
#include "QTBINodeRelations.h"

class CATFrmWindow;
class QTBIPdmNode;
class QTBIRepNode;
class QTBNodeRelationInfo;
using CATListValQTBNodeRelationInfo = CATListVal<QTBNodeRelationInfo>;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// Which relations of an object rep node an update looks at: those that the node displays, or those given.
enum RepChildRelationsToUpdate : int
{
    ALL_RELATIONS_STORED_IN_REP_NODE = 0,
    ONLY_NEW_RELATIONS = 1
};

inline constexpr IID IID_QTBIRepNodeCont{"QTBIRepNodeCont"};

// The rep nodes of one PDM window.
class QTBINTERFACESLIB_API QTBIRepNodeCont : public CATBaseUnknown
{
    CATDeclareInterface(QTBIRepNodeCont, CATBaseUnknown)

public:
    // Refreshes the window's tree; nothing without a window. The flags are those of QTBRepTreeUtil::UpdateQtbWindow.
    virtual HRESULT UpdateQtbWindow(unsigned char* pbFlag1, unsigned char* pbFlag2) = 0;

    // What updates consider: current nodes and new relations, unless a command says otherwise.
    virtual HRESULT SetPdmNodesToConsider(NodesToRetrieve* pPdmNodesToConsider) = 0;
    virtual HRESULT SetRepChildRelationsToUpdate(RepChildRelationsToUpdate* pRepChildRelationsToUpdate) = 0;

    // Lets every tree follow the graph, new roots included. The lists (may be null) receive the rep nodes created.
    virtual HRESULT UpdateAllRepTrees(unsigned char* pbWindowFlag1, unsigned char* pbWindowFlag2,
                                      const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                      CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                      CATListValCATBaseUnknown_var* pListOfObjRepNodes,
                                      unsigned char* pbAddNewNodes) = 0;
    // The trees that start at one PDM node; makes a root for it when there is none and the filter allows.
    virtual HRESULT UpdateRepTrees(const QTBIPdmNode_var& spIPdmNode,
                                   const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                   unsigned char* pbOneLevelOnly, CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                   CATListValCATBaseUnknown_var* pListOfObjRepNodes, unsigned char* pbAddNewNodes) = 0;
    // The tree below one rep node, expanded along the relations. Fails with a message for the user, after the work is
    // done, when the schema's maximum expansion level was reached.
    virtual HRESULT UpdateRepTree(const QTBIRepNode_var& spIRepNode,
                                  const CATListValQTBNodeRelationInfo& NodeRelationInfos, unsigned char* pbOneLevelOnly,
                                  CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                  CATListValCATBaseUnknown_var* pListOfObjRepNodes, unsigned char* pbAddNewNodes,
                                  unsigned char* pbUpdateWindow, unsigned char* pbCollectExistingChildren) = 0;
    // Grows the tree below a root part along the filtered structure fetched for it. The two lists are not read.
    virtual HRESULT UpdateRepTreeAfterGetFilteredModels(QTBIRepNode_var* pspIRepNodeOnRootPartNode,
                                                        CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                                        CATListValCATBaseUnknown_var* pListOfObjRepNodes) = 0;

    // Makes new roots for the PDM objects that the given rep nodes represent; pbClear empties the container first. The
    // result lists (may be null) receive the new roots and their sources, unless pbUsePdmNodes, which merges rep nodes
    // of one PDM node.
    virtual HRESULT AddAsRepRootNodes(const CATListValCATBaseUnknown_var& Nodes, unsigned char* pbClear,
                                      unsigned char* pbUsePdmNodes, CATListValCATBaseUnknown_var* pNewRoots,
                                      CATListValCATBaseUnknown_var* pSourceNodes) = 0;
    // The roots that the window shows, or those of the store.
    virtual HRESULT GetRepRootNodes(CATListValCATBaseUnknown_var* pListOfNodes,
                                    unsigned char* pbOnlyAffectedByCurrentAction, unsigned char* pbIgnoreWindow) = 0;
    // All rep nodes, in bucket order; the list is replaced.
    virtual HRESULT GetAllRepNodes(CATListValCATBaseUnknown_var* pListOfNodes) = 0;
    // An absent key is no failure: the flag says so.
    virtual HRESULT GetRepNodeByKey(const CATUnicodeString& usKey, QTBIRepNode_var* pspIRepNode,
                                    unsigned char* pbNodeExists) = 0;

    // Removes a rep node with all below it. A node whose PDM node is gone stays, without its children.
    virtual HRESULT RecursiveRemoveRepTree(const QTBIRepNode_var& spIRepNode, unsigned char* pbInformUser) = 0;

    // Has the PDM system relate the objects of two rep nodes; the trees follow when the graph does.
    virtual HRESULT CreateRelation(const CATUnicodeString& usRelationClass,
                                   const QTBIRepNode_var& spIRepNodeOnLeftObject,
                                   const QTBIRepNode_var& spIRepNodeOnRightObject,
                                   const CATUnicodeString& usRelationXml) = 0;

    // Folds a branch: its rep nodes go, and with the last of a relation the relation is no longer displayed.
    virtual HRESULT DeExpand(QTBIRepNode_var* pspIRepNode) = 0;

    virtual HRESULT SetQtbFrmWindowPtr(CATFrmWindow* pFrmNavigGraphicWindow) = 0;
    virtual HRESULT GetQtbFrmWindowPtr(CATFrmWindow** ppFrmNavigGraphicWindow) = 0;
    virtual HRESULT SetQtbFrmWindowPtrToNull() = 0;
    virtual HRESULT QtbFrmWindowPtrIsSet(unsigned char* pbFrmWindowPtrIsSet) = 0;

    // Empties the container and takes it out of the registry; called when the window closes.
    virtual HRESULT Cleanup() = 0;
    // The number of the container, given in the order of creation.
    virtual HRESULT GetId(int* pId) = 0;
    // Makes the root that stands for the graph's default root; called when a document is initialised.
    virtual HRESULT CreateDefaultRootNode() = 0;
};

using QTBIRepNodeCont_var = CATInterface_var<QTBIRepNodeCont>;
