#include "QTBTreeCommands.h"

#include "QTBDocUtil.h"
#include "QTBILinkToPsn.h"
#include "QTBIQtbFrmWindow.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBRepTreeUtil.h"

HRESULT QTBTreeCommands::OpenInNewWindow(const QTBIRepNode_var& spIRepNode)
{
    unsigned char bRepresentsPdmObjNode = FALSE;
    HRESULT hr = spIRepNode != NULL_var ? spIRepNode->RepresentsPdmObjNode(&bRepresentsPdmObjNode) : E_FAIL;
    if (FAILED(hr) || bRepresentsPdmObjNode == FALSE) {
        return FAILED(hr) ? hr : E_FAIL;
    }
    QTBIQtbFrmWindow_var spIQtbFrmWindow;
    hr = QTBDocUtil::CreateNewQtbDocument(&spIQtbFrmWindow, nullptr);
    CATFrmWindow* pFrmWindow = nullptr;
    QTBIRepNodeCont_var spIRepNodeCont;
    if (SUCCEEDED(hr)) {
        hr = spIQtbFrmWindow->GetFrmWindowPtr(&pFrmWindow);
    }
    if (SUCCEEDED(hr)) {
        hr = QTBRepTreeUtil::GetRepNodeContOfWindow(pFrmWindow, &spIRepNodeCont);
    }
    if (SUCCEEDED(hr)) {
        CATListValCATBaseUnknown_var repNodes;
        repNodes.Append(spIRepNode);
        unsigned char bClear = TRUE;
        unsigned char bUsePdmNodes = FALSE;
        hr = spIRepNodeCont->AddAsRepRootNodes(repNodes, &bClear, &bUsePdmNodes, nullptr, nullptr);
    }
    return SUCCEEDED(hr) ? QTBRepTreeUtil::UpdateQtbWindow(pFrmWindow, TRUE, TRUE) : hr;
}

HRESULT QTBTreeCommands::Highlight(const QTBIRepNode_var& spIRepNode)
{
    const QTBILinkToPsn_var spILinkToPsn(spIRepNode);
    return spILinkToPsn != NULL_var ? spILinkToPsn->HighlightPsnNodes(TRUE, TRUE, nullptr) : E_FAIL;
}
