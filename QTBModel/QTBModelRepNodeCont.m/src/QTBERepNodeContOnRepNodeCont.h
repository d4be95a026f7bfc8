#pragma once

#include <vector>

#include "CATHashTabQTBHashTableAttribute.h"
#include "CATListPtr.h"
#include "QTBINodeRelations.h"
#include "QTBIRepNodeCont.h"
#include "QTBNodeContainer.h"
#include "QTBNodeRelationInfo.h"

class CATFrmWindow;
class CATXHException;
class QTBIPdmNode;
class QTBIPdmNodeCont;
class QTBIRepNode;
class QTBPdmTreeRel;
using CATListPtrQTBPdmTreeRel = CATListPtr<QTBPdmTreeRel>;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIPdmNodeCont_var = CATInterface_var<QTBIPdmNodeCont>;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// QTBIRepNodeCont on the late type QTBRepNodeCont: the rep nodes of one PDM window. Creates and removes them, and grows
// their trees along the PDM graph. The operations of the interface are described there.
class QTBERepNodeContOnRepNodeCont : public QTBNodeContainer
{
public:
    QTBERepNodeContOnRepNodeCont();
    ~QTBERepNodeContOnRepNodeCont() override;

    HRESULT UpdateQtbWindow(unsigned char* pbFlag1, unsigned char* pbFlag2);
    HRESULT SetPdmNodesToConsider(NodesToRetrieve* pPdmNodesToConsider);
    HRESULT SetRepChildRelationsToUpdate(RepChildRelationsToUpdate* pRepChildRelationsToUpdate);
    HRESULT UpdateAllRepTrees(unsigned char* pbWindowFlag1, unsigned char* pbWindowFlag2,
                              const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                              CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                              CATListValCATBaseUnknown_var* pListOfObjRepNodes, unsigned char* pbAddNewNodes);
    HRESULT UpdateRepTrees(const QTBIPdmNode_var& spIPdmNode, const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                           unsigned char* pbOneLevelOnly, CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                           CATListValCATBaseUnknown_var* pListOfObjRepNodes, unsigned char* pbAddNewNodes);
    HRESULT UpdateRepTree(const QTBIRepNode_var& spIRepNode, const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                          unsigned char* pbOneLevelOnly, CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                          CATListValCATBaseUnknown_var* pListOfObjRepNodes, unsigned char* pbAddNewNodes,
                          unsigned char* pbUpdateWindow, unsigned char* pbCollectExistingChildren);
    HRESULT UpdateRepTreeAfterGetFilteredModels(QTBIRepNode_var* pspIRepNodeOnRootPartNode,
                                                CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                                CATListValCATBaseUnknown_var* pListOfObjRepNodes);
    HRESULT AddAsRepRootNodes(const CATListValCATBaseUnknown_var& Nodes, unsigned char* pbClear,
                              unsigned char* pbUsePdmNodes, CATListValCATBaseUnknown_var* pNewRoots,
                              CATListValCATBaseUnknown_var* pSourceNodes);
    HRESULT GetRepRootNodes(CATListValCATBaseUnknown_var* pListOfNodes, unsigned char* pbOnlyAffectedByCurrentAction,
                            unsigned char* pbIgnoreWindow);
    HRESULT GetAllRepNodes(CATListValCATBaseUnknown_var* pListOfNodes);
    HRESULT GetRepNodeByKey(const CATUnicodeString& usKey, QTBIRepNode_var* pspIRepNode, unsigned char* pbNodeExists);
    HRESULT RecursiveRemoveRepTree(const QTBIRepNode_var& spIRepNode, unsigned char* pbInformUser);
    HRESULT CreateRelation(const CATUnicodeString& usRelationClass, const QTBIRepNode_var& spIRepNodeOnLeftObject,
                           const QTBIRepNode_var& spIRepNodeOnRightObject, const CATUnicodeString& usRelationXml);
    HRESULT DeExpand(QTBIRepNode_var* pspIRepNode);
    HRESULT SetQtbFrmWindowPtr(CATFrmWindow* pFrmNavigGraphicWindow);
    HRESULT GetQtbFrmWindowPtr(CATFrmWindow** ppFrmNavigGraphicWindow);
    HRESULT SetQtbFrmWindowPtrToNull();
    HRESULT QtbFrmWindowPtrIsSet(unsigned char* pbFrmWindowPtrIsSet);
    HRESULT Cleanup();
    HRESULT GetId(int* pId);
    HRESULT CreateDefaultRootNode();

    // Steps of the operations above, for this class and its tests.

    HRESULT SetLinkToGlobalPdmNodeContainer();
    HRESULT RemoveLinkToGlobalPdmNodeContainer();
    HRESULT SetFrmWindowPtrToAllContainedRepNodes();

    // A rep node with key, container, window and XML element, not yet in the store.
    HRESULT CreateRepNodeBase(const CATUnicodeString& usKey, CATBaseUnknown_var* pspBaseUnknownOnRepNode);
    // A rep node for a PDM node, filed, linked to the PDM node and, when one is given, below its parent as a child
    // shown for that relation. The lists (may be null) receive it.
    HRESULT CreateRepNode(const QTBIRepNode_var& spIRepNodeOnLeft, const QTBIPdmNode_var& spIPdmNode,
                          QTBIRepNode_var* pspIRepNodeOnNewChild, const QTBNodeRelationInfo& NodeRelationInfo,
                          CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                          CATListValCATBaseUnknown_var* pListOfObjRepNodes);
    // Takes one rep node out of the container; its children are the caller's business. With *pbInformUser the
    // information list tells which products lose their counterpart.
    HRESULT RemoveRepNodeFromContainer(QTBIRepNode_var* pspIRepNode, unsigned char* pbInformUser);
    // Removes all trees, and builds them again when asked to.
    HRESULT Clear(unsigned char* pbUpdateAfterwards);

    // The child of the parent that shows the PDM node; empty, without failing, when there is none.
    HRESULT FindCorrespondingRepNode(const QTBIRepNode_var& spIRepNodeOnParent,
                                     const QTBIPdmNode_var& spIPdmNodeOnChild, QTBIRepNode_var* pspIRepNode);
    static HRESULT GetPdmNodesFromRepNodeList(const CATListValCATBaseUnknown_var& Nodes,
                                              CATListValCATBaseUnknown_var* pPdmObjNodes,
                                              CATListValCATBaseUnknown_var* pPdmRelNodes);
    // Whether the window shows trees, that is more than the default root: roots that are rep nodes with a PDM node.
    static HRESULT QtbWindowContainsValidNodes(CATFrmWindow* pFrmWindow, unsigned char* pbContainsValidNodes);

    HRESULT UpdateRepTreeIntern(const QTBIRepNode_var& spIRepNode,
                                const CATListValQTBNodeRelationInfo& NodeRelationInfos, unsigned char* pbOneLevelOnly,
                                unsigned char* pbWindowNeedsUpdate, CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                CATListValCATBaseUnknown_var* pListOfObjRepNodes, unsigned char* pbAddNewNodes,
                                unsigned char* pbCollectExistingChildren);
    // The neighbours in the PDM graph that are to hang below a rep node and, parallel to them, the relations that they
    // are shown for. Quiet failure for a relation of an unknown direction.
    HRESULT GetPdmNodesToBeShownAsChildren(const QTBIRepNode_var& spIRepNode,
                                           const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                           CATListValCATBaseUnknown_var* pPdmNodesToBeShown,
                                           CATListValQTBNodeRelationInfo* pPdmRelationsToBeShown);
    // Adds those of the relations to an object rep node that its PDM object has.
    static HRESULT SetRelationsToDisplay(const CATListValQTBNodeRelationInfo& NodeRelationInfos,
                                         const QTBIRepNode_var* pspIRepNode);
    // Sets the flag, never clears it, for a new relation rep node that continues the structure of its parent.
    static HRESULT WindowNeedsToBeUpdated(const QTBIRepNode_var& spIRepNodeOnLeftRepNode,
                                          const QTBIRepNode_var& spIRepNodeOnNewRepNode,
                                          const QTBNodeRelationInfo& NodeRelationInfo,
                                          unsigned char* pbWindowNeedsUpdate);
    // Expands rep nodes along the relations of a level of a filtered structure, and their new objects along the next.
    HRESULT UpdateRepNodeList(const CATListValCATBaseUnknown_var* pRepNodes, const CATListPtrQTBPdmTreeRel& PdmTreeRels,
                              const CATListValQTBNodeRelationInfo& NodeRelInfos);

    HRESULT DeExpandRootRepNode(QTBIRepNode_var* pspIRepNode);
    HRESULT DeExpandRelationNode(QTBIRepNode_var* pspIRepNode);

    // Rep nodes on the path that is being expanded; 0 between updates.
    int GetExpansionPathLength() const { return m_ExpansionTable.Size(); }

private:
    // What stays the same while a tree is expanded, and one rep node that is being expanded.
    struct Expansion;
    struct ExpansionLevel;
    class PathScope;
    // One level of a filtered structure.
    struct FilteredLevel;
    // The direction in which a relation is followed: names the operations of the PDM nodes and the texts of the checks.
    struct LeftToRight;
    struct RightToLeft;

    HRESULT InformAboutProductsOf(const QTBIRepNode_var& spIRepNode, unsigned char* pbInformUser);
    bool IsContainedHere(const QTBIRepNode_var& spIRepNode);

    // The expansion: creates the missing rep nodes below a rep node. Walks with a stack of its own.
    HRESULT RecursiveUpdateRepTreeAdd(const Expansion& expansion, const QTBIRepNode_var& spIRepNodeOnParent);
    HRESULT EnterChildLevel(const Expansion& expansion, std::vector<ExpansionLevel>* pLevels);
    HRESULT EnterLevel(const Expansion& expansion, ExpansionLevel* pLevel);
    HRESULT ExpandLevel(const Expansion& expansion, ExpansionLevel* pLevel);
    HRESULT TreatNextChild(const Expansion& expansion, ExpansionLevel* pLevel, QTBIRepNode_var* pspIRepNodeOnChild,
                           bool* pChildIsRelation);
    static HRESULT FailExpansion(const CATXHException& exception);
    HRESULT FindChild(ExpansionLevel* pLevel, const QTBIPdmNode_var& spIPdmNodeOnChild,
                      QTBIRepNode_var* pspIRepNodeOnChild);
    bool IndexChildren(ExpansionLevel* pLevel);
    HRESULT ClosesCircle(const QTBIPdmNode_var& spIPdmNodeOnChild, const QTBNodeRelationInfo& NodeRelationInfo,
                         bool isStart, bool* pClosesCircle);
    HRESULT ExpandFilteredLevel(const FilteredLevel& level, const QTBIRepNode_var& spIRepNode, FilteredLevel* pNext);
    HRESULT LeavePath(const CATUnicodeString& usKey);

    template <class Direction>
    HRESULT GetNeighbours(const CATBaseUnknown_var& spPdmNode, const CATUnicodeString& usRelationName,
                          CATListValCATBaseUnknown_var* pNeighbours);
    HRESULT IsToBeShown(const QTBIRepNode_var& spIRepNode, const QTBIPdmNode_var& spIPdmNodeOnCurrentNode,
                        bool* pIsToBeShown);
    static void BeginUpdate();
    // Shows the window's tree again when it changed, ends the action, and reports a reached expansion level.
    HRESULT FinishUpdate(bool windowNeedsUpdate);

    CATFrmWindow* m_pQtbFrmNavigGraphicWindow = NULL;
    QTBIPdmNodeCont_var m_spIPdmNodeCont;
    unsigned char m_bIncActionIndexAfterUpdate = TRUE;
    NodesToRetrieve m_PdmNodesToConsider = ONLY_CURRENT_NODES;
    RepChildRelationsToUpdate m_RepChildRelationsToUpdate = ONLY_NEW_RELATIONS;
    int m_Id;
    // The PDM nodes on the path that is being expanded.
    CATHashTabQTBHashTableAttribute m_ExpansionTable;
};
