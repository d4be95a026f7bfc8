#pragma once

#include "CATTie.h"
#include "QTBIRepNode.h"
#include "TIEQTBINode.h"

// Interface object of QTBIRepNode; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBIRepNode : public TIEQTBINode<Tie, Target>
{
public:
    using TIEQTBINode<Tie, Target>::TIEQTBINode;

    HRESULT IsRepRootNode(unsigned char* pbIsRepRootNode) override
    {
        return Target::Of(*this)->IsRepRootNode(pbIsRepRootNode);
    }

    HRESULT GetDirectChildren(CATListValCATBaseUnknown_var* pListOfRelRepNodes, CATListValCATBaseUnknown_var* pListOfObjRepNodes) override
    {
        return Target::Of(*this)->GetDirectChildren(pListOfRelRepNodes, pListOfObjRepNodes);
    }

    HRESULT GetDirectChildren(CATListValCATBaseUnknown_var* pListOfRepNodes) override
    {
        return Target::Of(*this)->GetDirectChildren(pListOfRepNodes);
    }

    HRESULT GetFilteredDirectChildren(const CATUnicodeString& usClassName, CATListValCATBaseUnknown_var* pListOfRepNodes) override
    {
        return Target::Of(*this)->GetFilteredDirectChildren(usClassName, pListOfRepNodes);
    }

    HRESULT GetFilteredDirectChildren(const CATUnicodeString& usAttrName, const CATUnicodeString& usAttrValue, CATListValCATBaseUnknown_var* pListOfRepNodes) override
    {
        return Target::Of(*this)->GetFilteredDirectChildren(usAttrName, usAttrValue, pListOfRepNodes);
    }

    HRESULT GetAllChildren(CATListValCATBaseUnknown_var* pListOfRepNodes) override
    {
        return Target::Of(*this)->GetAllChildren(pListOfRepNodes);
    }

    HRESULT GetParent(QTBIRepNode_var* pspIRepNode) override
    {
        return Target::Of(*this)->GetParent(pspIRepNode);
    }

    HRESULT GetParentObject(QTBIRepNode_var* pspIRepNodeOnParentObject) override
    {
        return Target::Of(*this)->GetParentObject(pspIRepNodeOnParentObject);
    }

    HRESULT IsRepDefaultNode(unsigned char* pbIsRepDefaultNode) override
    {
        return Target::Of(*this)->IsRepDefaultNode(pbIsRepDefaultNode);
    }

    HRESULT Redraw(unsigned char* pbRecursive) override
    {
        return Target::Of(*this)->Redraw(pbRecursive);
    }

    HRESULT Highlight(unsigned char* pbEmptyHSO, unsigned char* pbHighlightObjectOfRelation) override
    {
        return Target::Of(*this)->Highlight(pbEmptyHSO, pbHighlightObjectOfRelation);
    }

    HRESULT Preselect(unsigned char* pbEmptyPSO) override
    {
        return Target::Of(*this)->Preselect(pbEmptyPSO);
    }

    HRESULT GetDisplayString(CATUnicodeString* pusDisplayString) override
    {
        return Target::Of(*this)->GetDisplayString(pusDisplayString);
    }

    HRESULT GetPdmNode(QTBIPdmNode_var* pspIPdmNode, unsigned char bPrintDebugInfo, unsigned char* pbPdmNodeFoundByRelation) override
    {
        return Target::Of(*this)->GetPdmNode(pspIPdmNode, bPrintDebugInfo, pbPdmNodeFoundByRelation);
    }

    HRESULT GetPdmNodeKey(CATUnicodeString* pusKey) override
    {
        return Target::Of(*this)->GetPdmNodeKey(pusKey);
    }

    HRESULT GetPdmNodeAttributeValue(const CATUnicodeString& usAttrName, CATUnicodeString* pusValue) override
    {
        return Target::Of(*this)->GetPdmNodeAttributeValue(usAttrName, pusValue);
    }

    HRESULT GetPdmNodeClassName(CATUnicodeString* pusClassName) override
    {
        return Target::Of(*this)->GetPdmNodeClassName(pusClassName);
    }

    HRESULT RepresentsPdmObjNode(unsigned char* pbRepresentsPdmObjNode) override
    {
        return Target::Of(*this)->RepresentsPdmObjNode(pbRepresentsPdmObjNode);
    }

    HRESULT RepresentsPdmRelNode(unsigned char* pbRepresentsPdmRelNode, unsigned char* pbIsMultiQuantityRelation) override
    {
        return Target::Of(*this)->RepresentsPdmRelNode(pbRepresentsPdmRelNode, pbIsMultiQuantityRelation);
    }

    HRESULT AddPdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo) override
    {
        return Target::Of(*this)->AddPdmRelationToBeDisplayed(NodeRelationInfo);
    }

    HRESULT RemovePdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo) override
    {
        return Target::Of(*this)->RemovePdmRelationToBeDisplayed(NodeRelationInfo);
    }

    HRESULT SetPdmRelationsToBeDisplayed(const CATListValQTBNodeRelationInfo& NodeRelationInfos) override
    {
        return Target::Of(*this)->SetPdmRelationsToBeDisplayed(NodeRelationInfos);
    }

    HRESULT GetPdmRelationsToBeDisplayed(CATListValQTBNodeRelationInfo* pNodeRelationInfos) override
    {
        return Target::Of(*this)->GetPdmRelationsToBeDisplayed(pNodeRelationInfos);
    }

    HRESULT MarkChildrenForRemoval(const CATListValQTBNodeRelationInfo& NodeRelationInfos, unsigned char* pbRecursive) override
    {
        return Target::Of(*this)->MarkChildrenForRemoval(NodeRelationInfos, pbRecursive);
    }

    HRESULT MarkChildrenForRemoval(const QTBNodeRelationInfo& NodeRelationInfo, unsigned char* pbRecursive) override
    {
        return Target::Of(*this)->MarkChildrenForRemoval(NodeRelationInfo, pbRecursive);
    }

    HRESULT SetMarkForRemoval(unsigned char* pbMarkForRemoval) override
    {
        return Target::Of(*this)->SetMarkForRemoval(pbMarkForRemoval);
    }

    HRESULT GetMarkForRemoval(unsigned char* pbMarkForRemoval) override
    {
        return Target::Of(*this)->GetMarkForRemoval(pbMarkForRemoval);
    }

    HRESULT CleanUpChildren(unsigned char* pbRecursive) override
    {
        return Target::Of(*this)->CleanUpChildren(pbRecursive);
    }

    HRESULT SetSinglePdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo) override
    {
        return Target::Of(*this)->SetSinglePdmRelationToBeDisplayed(NodeRelationInfo);
    }

    HRESULT GetSinglePdmRelationToBeDisplayed(QTBNodeRelationInfo* pNodeRelationInfo) override
    {
        return Target::Of(*this)->GetSinglePdmRelationToBeDisplayed(pNodeRelationInfo);
    }

    HRESULT CheckPdmRelationToBeDisplayed(const QTBNodeRelationInfo& NodeRelationInfo, unsigned char* pbOk) override
    {
        return Target::Of(*this)->CheckPdmRelationToBeDisplayed(NodeRelationInfo, pbOk);
    }

    HRESULT SetPdmRelationToLeftNode(const QTBNodeRelationInfo& NodeRelationInfo) override
    {
        return Target::Of(*this)->SetPdmRelationToLeftNode(NodeRelationInfo);
    }

    HRESULT GetPdmRelationToLeftNode(QTBNodeRelationInfo* pNodeRelationInfo) override
    {
        return Target::Of(*this)->GetPdmRelationToLeftNode(pNodeRelationInfo);
    }

    HRESULT SetFrmWindowPtr(CATFrmWindow* pFrmWindow) override
    {
        return Target::Of(*this)->SetFrmWindowPtr(pFrmWindow);
    }

    HRESULT GetFrmWindowPtr(CATFrmWindow** ppFrmWindow) override
    {
        return Target::Of(*this)->GetFrmWindowPtr(ppFrmWindow);
    }

    HRESULT FrmWindowPtrExists(unsigned char* pbFrmWindowPtrExists) override
    {
        return Target::Of(*this)->FrmWindowPtrExists(pbFrmWindowPtrExists);
    }

    HRESULT GetFrmEditorPtr(CATFrmEditor** ppFrmEditor) override
    {
        return Target::Of(*this)->GetFrmEditorPtr(ppFrmEditor);
    }

    HRESULT InitContextMenuInfo(CATCmdContainer* pContainer, CATCmdAccess** ppFirstItem) override
    {
        return Target::Of(*this)->InitContextMenuInfo(pContainer, ppFirstItem);
    }

    HRESULT GetContextMenuInfo(CATListValQTBContextMenuInfo* pListOfContextMenuInfos, QTBContextMenuInfo* pCurrentInfo, CATListValQTBContextMenuInfo* pSecondList) override
    {
        return Target::Of(*this)->GetContextMenuInfo(pListOfContextMenuInfos, pCurrentInfo, pSecondList);
    }

    HRESULT SetRepNodeContainer(const QTBIRepNodeCont_var& spIRepNodeCont) override
    {
        return Target::Of(*this)->SetRepNodeContainer(spIRepNodeCont);
    }

    HRESULT GetRepNodeContainer(QTBIRepNodeCont_var* pspIRepNodeCont) override
    {
        return Target::Of(*this)->GetRepNodeContainer(pspIRepNodeCont);
    }

    HRESULT GetContainerId(int* pId) override
    {
        return Target::Of(*this)->GetContainerId(pId);
    }

    HRESULT AddDebugAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue) override
    {
        return Target::Of(*this)->AddDebugAttribute(usName, usValue);
    }

    HRESULT AddDebugInfoString(const CATUnicodeString& usText, unsigned char* pbForAllRepNodesOfPdmNode) override
    {
        return Target::Of(*this)->AddDebugInfoString(usText, pbForAllRepNodesOfPdmNode);
    }

    HRESULT AddPdmNodeKeyForDebug(const CATUnicodeString& usPdmNodeKey) override
    {
        return Target::Of(*this)->AddPdmNodeKeyForDebug(usPdmNodeKey);
    }

    HRESULT PrintDebugInfo() override
    {
        return Target::Of(*this)->PrintDebugInfo();
    }

    HRESULT GetPdmNodeActionIndex(int* pActionIndex) override
    {
        return Target::Of(*this)->GetPdmNodeActionIndex(pActionIndex);
    }

    HRESULT PdmNodeIsIsAffectedByCurrentAction(unsigned char* pbIsAffected) override
    {
        return Target::Of(*this)->PdmNodeIsIsAffectedByCurrentAction(pbIsAffected);
    }
};
