#include "QTBRepTreeUtil.h"

#include <memory>
#include <vector>

#include "CATDocument.h"
#include "CATDocumentServices.h"
#include "CATFrmLayout.h"
#include "CATInit.h"
#include "CATNavigBox.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBInfoUtil.h"
#include "QTBPdmGraphUtil.h"

namespace {

// The PDM node behind a rep node; empty when it has gone.
QTBIPdmNode_var GetPdmNode(const QTBIRepNode_var& spIRepNode)
{
    QTBIPdmNode_var spIPdmNode;
    return SUCCEEDED(spIRepNode->GetPdmNode(&spIPdmNode, FALSE, nullptr)) ? spIPdmNode : QTBIPdmNode_var();
}

// The sub-structure one level below: what hangs under an object, or under the object of a relation.
HRESULT CollectSubStructure(const QTBIRepNode_var& spIRepNode, std::vector<CATBaseUnknown_var>& relRepNodes,
                            std::vector<CATBaseUnknown_var>& partRepNodes)
{
    if (spIRepNode == NULL_var) {
        return E_FAIL;
    }
    QTBIRepNode_var spIRepNodeOnObject = spIRepNode;
    CATListValCATBaseUnknown_var children;
    const QTBIPdmRelNode_var spIPdmRelNode(GetPdmNode(spIRepNode));
    if (spIPdmRelNode != NULL_var) {
        if (const HRESULT hr = spIRepNode->GetDirectChildren(&children); FAILED(hr)) {
            return hr;
        }
        if (children.Size() != 1) {
            return S_OK;
        }
        spIRepNodeOnObject = children[1];
    }
    if (spIRepNodeOnObject == NULL_var) {
        return E_FAIL;
    }
    if (const HRESULT hr = spIRepNodeOnObject->GetDirectChildren(&children); FAILED(hr)) {
        return hr;
    }
    for (const CATBaseUnknown_var& spRelRepNode : children) {
        const QTBIRepNode_var spIRepNodeOnRelation(spRelRepNode);
        unsigned char bIsPartToPart = FALSE;
        HRESULT hr = QTBRepTreeUtil::RepresentsPdmPartPartRelationNode(spIRepNodeOnRelation, &bIsPartToPart);
        CATListValCATBaseUnknown_var objects;
        if (SUCCEEDED(hr) && bIsPartToPart != FALSE) {
            hr = spIRepNodeOnRelation->GetDirectChildren(&objects);
        }
        if (FAILED(hr)) {
            return hr;
        }
        // A relation that is displayed without its object has no part to give.
        if (objects.Size() == 1) {
            relRepNodes.push_back(spRelRepNode);
            partRepNodes.push_back(objects[1]);
        }
    }
    return S_OK;
}

void Append(const std::vector<CATBaseUnknown_var>& nodes, CATListValCATBaseUnknown_var* pNodes)
{
    if (pNodes != nullptr) {
        for (const CATBaseUnknown_var& spNode : nodes) {
            pNodes->Append(spNode);
        }
    }
}

// Both forms of the sub-structure: one level, or all of them.
HRESULT GetSubStructure(const QTBIRepNode_var& spIRepNode, bool bAllLevels,
                        CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                        CATListValCATBaseUnknown_var* pListOfPartRepNodes)
{
    if (spIRepNode == NULL_var) {
        return E_FAIL;
    }
    for (CATListValCATBaseUnknown_var* pList : {pListOfRelRepNodes, pListOfPartRepNodes}) {
        if (pList != nullptr) {
            pList->RemoveAll();
        }
    }
    // Structures are as deep as the data, so they are walked with a stack of their own.
    std::vector<CATBaseUnknown_var> open{CATBaseUnknown_var(spIRepNode)};
    while (!open.empty()) {
        const QTBIRepNode_var spIRepNodeOnCurrent(open.back());
        open.pop_back();
        std::vector<CATBaseUnknown_var> relRepNodes;
        std::vector<CATBaseUnknown_var> partRepNodes;
        if (const HRESULT hr = CollectSubStructure(spIRepNodeOnCurrent, relRepNodes, partRepNodes); FAILED(hr)) {
            return hr;
        }
        Append(relRepNodes, pListOfRelRepNodes);
        Append(partRepNodes, pListOfPartRepNodes);
        if (bAllLevels) {
            open.insert(open.end(), partRepNodes.rbegin(), partRepNodes.rend());
        }
    }
    return S_OK;
}

// Whether the tree shows nothing but placeholders of an empty graph; each document that was opened made one.
HRESULT ShowsPlaceholdersOnly(const CATListValCATBaseUnknown_var& roots, unsigned char* pbPlaceholdersOnly)
{
    *pbPlaceholdersOnly = TRUE;
    for (int i = 1; i <= roots.Size() && *pbPlaceholdersOnly != FALSE; ++i) {
        const QTBIRepNode_var spIRepNode(roots[i]);
        *pbPlaceholdersOnly = FALSE;
        if (spIRepNode != NULL_var) {
            if (const HRESULT hr = spIRepNode->IsRepDefaultNode(pbPlaceholdersOnly); FAILED(hr)) {
                return hr;
            }
        }
    }
    return S_OK;
}

} // namespace

HRESULT QTBRepTreeUtil::RepresentsPdmPartNode(const QTBIRepNode_var& spIRepNode, unsigned char* pbRepresentsPdmPartNode,
                                              CATUnicodeString* pusPartNumber)
{
    if (spIRepNode == NULL_var || pbRepresentsPdmPartNode == nullptr) {
        return E_FAIL;
    }
    *pbRepresentsPdmPartNode = FALSE;
    if (pusPartNumber != nullptr) {
        *pusPartNumber = CATUnicodeString();
    }
    const QTBIPdmObjNode_var spIPdmObjNode(GetPdmNode(spIRepNode));
    if (spIPdmObjNode == NULL_var) {
        return S_OK;
    }
    const HRESULT hr = QTBPdmGraphUtil::IsPartNode(spIPdmObjNode, pbRepresentsPdmPartNode, nullptr, nullptr);
    if (SUCCEEDED(hr) && *pbRepresentsPdmPartNode != FALSE && pusPartNumber != nullptr) {
        // A part without number is a part all the same.
        QTBInfoUtil::GetCatiaPartNumberFromPdm(spIPdmObjNode, pusPartNumber, FALSE, TRUE);
    }
    return hr;
}

HRESULT QTBRepTreeUtil::RepresentsPdmPartPartRelationNode(const QTBIRepNode_var& spIRepNode,
                                                          unsigned char* pbRepresentsPdmPartPartRelationNode)
{
    if (spIRepNode == NULL_var || pbRepresentsPdmPartPartRelationNode == nullptr) {
        return E_FAIL;
    }
    *pbRepresentsPdmPartPartRelationNode = FALSE;
    const QTBIPdmRelNode_var spIPdmRelNode(GetPdmNode(spIRepNode));
    return spIPdmRelNode != NULL_var
               ? QTBPdmGraphUtil::IsPartToPartRelationNode(spIPdmRelNode, pbRepresentsPdmPartPartRelationNode)
               : S_OK;
}

HRESULT QTBRepTreeUtil::RepresentsCatiaFileNode(const QTBIRepNode_var& spIRepNode,
                                                unsigned char* pbRepresentsCatiaFileNode, CATUnicodeString* pusFileName,
                                                CATUnicodeString* pusFileType)
{
    if (spIRepNode == NULL_var || pbRepresentsCatiaFileNode == nullptr) {
        return E_FAIL;
    }
    *pbRepresentsCatiaFileNode = FALSE;
    for (CATUnicodeString* pusText : {pusFileName, pusFileType}) {
        if (pusText != nullptr) {
            *pusText = CATUnicodeString();
        }
    }
    const QTBIPdmObjNode_var spIPdmObjNode(GetPdmNode(spIRepNode));
    return spIPdmObjNode != NULL_var ? QTBPdmGraphUtil::GetCatiaFileNodeInformation(
                                           spIPdmObjNode, pusFileName, pusFileType, nullptr, pbRepresentsCatiaFileNode)
                                     : S_OK;
}

HRESULT QTBRepTreeUtil::GetAllDirectSubStructureNodes(const QTBIRepNode_var& spIRepNode,
                                                      CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                                      CATListValCATBaseUnknown_var* pListOfPartRepNodes)
{
    return GetSubStructure(spIRepNode, false, pListOfRelRepNodes, pListOfPartRepNodes);
}

HRESULT QTBRepTreeUtil::GetAllSubStructureNodes(const QTBIRepNode_var& spIRepNode,
                                                CATListValCATBaseUnknown_var* pListOfRelRepNodes,
                                                CATListValCATBaseUnknown_var* pListOfPartRepNodes)
{
    return GetSubStructure(spIRepNode, true, pListOfRelRepNodes, pListOfPartRepNodes);
}

HRESULT QTBRepTreeUtil::ParentCatDocObjIsInSession(const QTBIRepNode_var& spIRepNode, unsigned char* pbIsInSession)
{
    if (spIRepNode == NULL_var || pbIsInSession == nullptr) {
        return E_FAIL;
    }
    *pbIsInSession = FALSE;
    QTBIRepNode_var spIRepNodeOnParent;
    for (QTBIRepNode_var spIRepNodeOnCurrent = spIRepNode;
         SUCCEEDED(spIRepNodeOnCurrent->GetParent(&spIRepNodeOnParent)) && spIRepNodeOnParent != NULL_var;
         spIRepNodeOnCurrent = spIRepNodeOnParent) {
        unsigned char bIsCatiaFile = FALSE;
        CATUnicodeString usFileName;
        const HRESULT hr = RepresentsCatiaFileNode(spIRepNodeOnParent, &bIsCatiaFile, &usFileName, nullptr);
        if (FAILED(hr)) {
            return hr;
        }
        if (bIsCatiaFile != FALSE) {
            *pbIsInSession = CATDocumentServices::FileIsInSession(usFileName) ? TRUE : FALSE;
            return S_OK;
        }
    }
    return S_OK;
}

HRESULT QTBRepTreeUtil::UpdateQtbWindow(CATFrmWindow* pFrmWindow, const unsigned char& bTakeRootsAnew,
                                        const unsigned char& bActivateWindow)
{
    if (pFrmWindow == nullptr) {
        return E_FAIL;
    }
    CATNavigBox* pNavigBox = pFrmWindow->GetNavigBox();
    QTBIRepNodeCont_var spIRepNodeCont;
    if (pNavigBox != nullptr && SUCCEEDED(GetRepNodeContOfWindow(pFrmWindow, &spIRepNodeCont))) {
        const std::unique_ptr<CATListValCATBaseUnknown_var> pShown(pNavigBox->GetAllRoots());
        unsigned char bTakeRoots = bTakeRootsAnew;
        HRESULT hr = bTakeRoots != FALSE ? S_OK : ShowsPlaceholdersOnly(*pShown, &bTakeRoots);
        if (SUCCEEDED(hr) && bTakeRoots != FALSE) {
            unsigned char bOnlyAffectedByCurrentAction = FALSE;
            unsigned char bIgnoreWindow = TRUE;
            CATListValCATBaseUnknown_var roots;
            hr = spIRepNodeCont->GetRepRootNodes(&roots, &bOnlyAffectedByCurrentAction, &bIgnoreWindow);
            if (SUCCEEDED(hr)) {
                pNavigBox->SetRoots(roots);
            }
        }
        if (FAILED(hr)) {
            return hr;
        }
    }
    if (pNavigBox != nullptr) {
        pNavigBox->RedrawAll();
    }
    CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    if (bActivateWindow != FALSE && pLayout != nullptr && pLayout->GetWindowList().Locate(pFrmWindow) > 0) {
        pLayout->SetCurrentWindow(pFrmWindow);
    }
    return S_OK;
}

HRESULT QTBRepTreeUtil::GetRepNodeContOfDocument(const CATBaseUnknown_var& spDocument,
                                                 QTBIRepNodeCont_var* pspIRepNodeCont)
{
    if (pspIRepNodeCont == nullptr) {
        return E_FAIL;
    }
    *pspIRepNodeCont = NULL_var;
    const CATInit_var spInit(spDocument);
    if (spInit != NULL_var) {
        *pspIRepNodeCont = QTBIRepNodeCont_var::Adopt(
            static_cast<QTBIRepNodeCont*>(spInit->GetRootContainer(QTBIRepNodeCont::GetInterfaceName())));
    }
    return *pspIRepNodeCont != NULL_var ? S_OK : E_FAIL;
}

HRESULT QTBRepTreeUtil::GetRepNodeContOfWindow(CATFrmWindow* pFrmWindow, QTBIRepNodeCont_var* pspIRepNodeCont)
{
    const CATFrmEditor* pFrmEditor = pFrmWindow != nullptr ? pFrmWindow->GetEditor() : nullptr;
    CATDocument* pDocument = pFrmEditor != nullptr ? pFrmEditor->GetDocument() : nullptr;
    return GetRepNodeContOfDocument(CATBaseUnknown_var(pDocument), pspIRepNodeCont);
}
