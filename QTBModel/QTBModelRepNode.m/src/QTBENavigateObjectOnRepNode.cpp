#include "QTBENavigateObjectOnRepNode.h"

#include <memory>

#include "QTBCheck.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIRepNode.h"

namespace {

CATUnicodeString GetDisplayStringOrQuestionMark(const QTBIRepNode_var& spIRepNode)
{
    CATUnicodeString usDisplayString;
    return SUCCEEDED(spIRepNode->GetDisplayString(&usDisplayString)) ? usDisplayString : CATUnicodeString("?");
}

// Of several objects below one relation the one that the newest action read, the first of them when there are more.
const CATBaseUnknown_var& GetNewest(const CATListValCATBaseUnknown_var& TmpRepNodeList)
{
    int highestActionIndex = 0;
    int newestPosition = 1;
    for (int i = 1; i <= TmpRepNodeList.Size(); ++i) {
        const QTBIRepNode_var spIRepNodeOnTmp(TmpRepNodeList[i]);
        QTB_RAISE_INTERFACE(spIRepNodeOnTmp);
        int actionIndex = 0;
        QTB_RAISE_CALL(spIRepNodeOnTmp->GetPdmNodeActionIndex, &actionIndex);
        if (actionIndex > highestActionIndex) {
            highestActionIndex = actionIndex;
            newestPosition = i;
        }
    }
    return TmpRepNodeList[newestPosition];
}

} // namespace

CATListValCATUnicodeString* QTBENavigateObjectOnRepNode::GetIdentificators()
{
    QTB_SCOPE("QTBENavigateObjectOnRepNode::GetIdentificators");
    auto pIdentificators = std::make_unique<CATListValCATUnicodeString>();
    try {
        pIdentificators->Append(GetLabel());
    } catch (const CATXHException& exception) {
        QTB_TRACE("QTBENavigateObjectOnRepNode::GetIdentificators -> caught exception:"
                  << exception.GetError()->GetNLSMessage());
        return NULL;
    }
    return pIdentificators.release();
}

CATUnicodeString QTBENavigateObjectOnRepNode::GetLabel()
{
    const QTBIRepNode_var spIRepNodeOnThis(this);
    QTB_RAISE_INTERFACE(spIRepNodeOnThis);
    unsigned char bShowRelations = TRUE;
    QTB_RAISE_CALL(QTBGlobVarsUtil::GetShowRelations, &bShowRelations);
    CATUnicodeString usLabel = GetDisplayStringOrQuestionMark(spIRepNodeOnThis);
    QTBIRepNode_var spIRepNodeOnParent;
    if (bShowRelations == FALSE && SUCCEEDED(spIRepNodeOnThis->GetParent(&spIRepNodeOnParent))) {
        usLabel = GetDisplayStringOrQuestionMark(spIRepNodeOnParent) + " / " + usLabel;
    }
    return usLabel;
}

CATListValCATBaseUnknown_var* QTBENavigateObjectOnRepNode::GetChildren()
{
    QTB_SCOPE("QTBENavigateObjectOnRepNode::GetChildren");
    auto pChildren = std::make_unique<CATListValCATBaseUnknown_var>();
    try {
        CollectChildren(pChildren.get());
    } catch (const CATXHException& exception) {
        QTB_TRACE(
            "QTBENavigateObjectOnRepNode::GetChildren -> caught exception:" << exception.GetError()->GetNLSMessage());
        return NULL;
    }
    return pChildren->Size() > 0 ? pChildren.release() : NULL;
}

void QTBENavigateObjectOnRepNode::CollectChildren(CATListValCATBaseUnknown_var* pChildren)
{
    const QTBIRepNode_var spIRepNodeOnThis(this);
    QTB_RAISE_INTERFACE(spIRepNodeOnThis);
    unsigned char bShowRelations = TRUE;
    QTB_RAISE_CALL(QTBGlobVarsUtil::GetShowRelations, &bShowRelations);
    if (bShowRelations != FALSE) {
        QTB_RAISE_CALL(spIRepNodeOnThis->GetDirectChildren, pChildren);
    } else {
        CollectObjectsBelowRelations(spIRepNodeOnThis, pChildren);
    }
}

void QTBENavigateObjectOnRepNode::CollectObjectsBelowRelations(const QTBIRepNode_var& spIRepNodeOnThis,
                                                               CATListValCATBaseUnknown_var* pChildren)
{
    unsigned char bRepresentsPdmObjNode = FALSE;
    QTB_RAISE_CALL(spIRepNodeOnThis->RepresentsPdmObjNode, &bRepresentsPdmObjNode);
    QTB_RAISE_ASSERT(bRepresentsPdmObjNode);
    CATListValCATBaseUnknown_var DirectChildren;
    QTB_RAISE_CALL(spIRepNodeOnThis->GetDirectChildren, &DirectChildren);
    for (const CATBaseUnknown_var& spDirectChild : DirectChildren) {
        const QTBIRepNode_var spIRepNodeOnDirectChild(spDirectChild);
        QTB_RAISE_INTERFACE(spIRepNodeOnDirectChild);
        unsigned char bRepresentsPdmRelNode = FALSE;
        QTB_RAISE_CALL(spIRepNodeOnDirectChild->RepresentsPdmRelNode, &bRepresentsPdmRelNode, NULL);
        QTB_RAISE_ASSERT(bRepresentsPdmRelNode);
        CATListValCATBaseUnknown_var TmpRepNodeList;
        QTB_RAISE_CALL(spIRepNodeOnDirectChild->GetDirectChildren, &TmpRepNodeList);
        if (TmpRepNodeList.Size() > 1) {
            pChildren->Append(GetNewest(TmpRepNodeList));
        } else {
            QTB_RAISE_ASSERT(TmpRepNodeList.Size() == 1);
            pChildren->Append(TmpRepNodeList[1]);
        }
    }
}
