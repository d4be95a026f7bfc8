#pragma once

#include "CATTie.h"
#include "QTBIRepNodeCont.h"

// Interface object of QTBIRepNodeCont; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBIRepNodeCont : public Tie
{
public:
    using Tie::Tie;

    HRESULT UpdateQtbWindow(unsigned char* pbFlag1, unsigned char* pbFlag2) override
    {
        return Target::Of(*this)->UpdateQtbWindow(pbFlag1, pbFlag2);
    }

    HRESULT SetPdmNodesToConsider(NodesToRetrieve* pPdmNodesToConsider) override
    {
        return Target::Of(*this)->SetPdmNodesToConsider(pPdmNodesToConsider);
    }

    HRESULT SetRepChildRelationsToUpdate(RepChildRelationsToUpdate* pRepChildRelationsToUpdate) override
    {
        return Target::Of(*this)->SetRepChildRelationsToUpdate(pRepChildRelationsToUpdate);
    }

    HRESULT UpdateAllRepTrees(unsigned char* pbWindowFlag1, unsigned char* pbWindowFlag2, const CATListValQTBNodeRelationInfo& NodeRelationInfos, CATListValCATBaseUnknown_var* pListOfRelRepNodes, CATListValCATBaseUnknown_var* pListOfObjRepNodes, unsigned char* pbAddNewNodes) override
    {
        return Target::Of(*this)->UpdateAllRepTrees(pbWindowFlag1, pbWindowFlag2, NodeRelationInfos, pListOfRelRepNodes, pListOfObjRepNodes, pbAddNewNodes);
    }

    HRESULT UpdateRepTrees(const QTBIPdmNode_var& spIPdmNode, const CATListValQTBNodeRelationInfo& NodeRelationInfos, unsigned char* pbOneLevelOnly, CATListValCATBaseUnknown_var* pListOfRelRepNodes, CATListValCATBaseUnknown_var* pListOfObjRepNodes, unsigned char* pbAddNewNodes) override
    {
        return Target::Of(*this)->UpdateRepTrees(spIPdmNode, NodeRelationInfos, pbOneLevelOnly, pListOfRelRepNodes, pListOfObjRepNodes, pbAddNewNodes);
    }

    HRESULT UpdateRepTree(const QTBIRepNode_var& spIRepNode, const CATListValQTBNodeRelationInfo& NodeRelationInfos, unsigned char* pbOneLevelOnly, CATListValCATBaseUnknown_var* pListOfRelRepNodes, CATListValCATBaseUnknown_var* pListOfObjRepNodes, unsigned char* pbAddNewNodes, unsigned char* pbUpdateWindow, unsigned char* pbCollectExistingChildren) override
    {
        return Target::Of(*this)->UpdateRepTree(spIRepNode, NodeRelationInfos, pbOneLevelOnly, pListOfRelRepNodes, pListOfObjRepNodes, pbAddNewNodes, pbUpdateWindow, pbCollectExistingChildren);
    }

    HRESULT UpdateRepTreeAfterGetFilteredModels(QTBIRepNode_var* pspIRepNodeOnRootPartNode, CATListValCATBaseUnknown_var* pListOfRelRepNodes, CATListValCATBaseUnknown_var* pListOfObjRepNodes) override
    {
        return Target::Of(*this)->UpdateRepTreeAfterGetFilteredModels(pspIRepNodeOnRootPartNode, pListOfRelRepNodes, pListOfObjRepNodes);
    }

    HRESULT AddAsRepRootNodes(const CATListValCATBaseUnknown_var& Nodes, unsigned char* pbClear, unsigned char* pbUsePdmNodes, CATListValCATBaseUnknown_var* pNewRoots, CATListValCATBaseUnknown_var* pSourceNodes) override
    {
        return Target::Of(*this)->AddAsRepRootNodes(Nodes, pbClear, pbUsePdmNodes, pNewRoots, pSourceNodes);
    }

    HRESULT GetRepRootNodes(CATListValCATBaseUnknown_var* pListOfNodes, unsigned char* pbOnlyAffectedByCurrentAction, unsigned char* pbIgnoreWindow) override
    {
        return Target::Of(*this)->GetRepRootNodes(pListOfNodes, pbOnlyAffectedByCurrentAction, pbIgnoreWindow);
    }

    HRESULT GetAllRepNodes(CATListValCATBaseUnknown_var* pListOfNodes) override
    {
        return Target::Of(*this)->GetAllRepNodes(pListOfNodes);
    }

    HRESULT GetRepNodeByKey(const CATUnicodeString& usKey, QTBIRepNode_var* pspIRepNode, unsigned char* pbNodeExists) override
    {
        return Target::Of(*this)->GetRepNodeByKey(usKey, pspIRepNode, pbNodeExists);
    }

    HRESULT RecursiveRemoveRepTree(const QTBIRepNode_var& spIRepNode, unsigned char* pbInformUser) override
    {
        return Target::Of(*this)->RecursiveRemoveRepTree(spIRepNode, pbInformUser);
    }

    HRESULT CreateRelation(const CATUnicodeString& usRelationClass, const QTBIRepNode_var& spIRepNodeOnLeftObject, const QTBIRepNode_var& spIRepNodeOnRightObject, const CATUnicodeString& usRelationXml) override
    {
        return Target::Of(*this)->CreateRelation(usRelationClass, spIRepNodeOnLeftObject, spIRepNodeOnRightObject, usRelationXml);
    }

    HRESULT DeExpand(QTBIRepNode_var* pspIRepNode) override
    {
        return Target::Of(*this)->DeExpand(pspIRepNode);
    }

    HRESULT SetQtbFrmWindowPtr(CATFrmWindow* pFrmNavigGraphicWindow) override
    {
        return Target::Of(*this)->SetQtbFrmWindowPtr(pFrmNavigGraphicWindow);
    }

    HRESULT GetQtbFrmWindowPtr(CATFrmWindow** ppFrmNavigGraphicWindow) override
    {
        return Target::Of(*this)->GetQtbFrmWindowPtr(ppFrmNavigGraphicWindow);
    }

    HRESULT SetQtbFrmWindowPtrToNull() override
    {
        return Target::Of(*this)->SetQtbFrmWindowPtrToNull();
    }

    HRESULT QtbFrmWindowPtrIsSet(unsigned char* pbFrmWindowPtrIsSet) override
    {
        return Target::Of(*this)->QtbFrmWindowPtrIsSet(pbFrmWindowPtrIsSet);
    }

    HRESULT Cleanup() override
    {
        return Target::Of(*this)->Cleanup();
    }

    HRESULT GetId(int* pId) override
    {
        return Target::Of(*this)->GetId(pId);
    }

    HRESULT CreateDefaultRootNode() override
    {
        return Target::Of(*this)->CreateDefaultRootNode();
    }
};
