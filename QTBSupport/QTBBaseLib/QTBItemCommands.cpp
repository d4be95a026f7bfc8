#include "QTBItemCommands.h"

#include <memory>

#include "CATApplicationFrame.h"
#include "CATDlgDocument.h"
#include "CATDlgNotify.h"
#include "CATError.h"
#include "CATMsgCatalog.h"
#include "QTBGlobVarsUtil.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIRepNode.h"
#include "QTBIRepNodeCont.h"
#include "QTBItemDialog.h"
#include "QTBMessageUtil.h"
#include "QTBPdmGraphUtil.h"
#include "QTBRequestCommands.h"
#include "QTBSchemaNode.h"
#include "QTBSchemaUtil.h"
#include "QTBTraceUtil.h"

namespace {

constexpr unsigned int NOTICE_STYLE = 0;

HRESULT GetPdmNode(const QTBIRepNode_var& spIRepNode, QTBIPdmNode_var* pspIPdmNode)
{
    return spIRepNode != NULL_var ? spIRepNode->GetPdmNode(pspIPdmNode, TRUE, nullptr) : E_FAIL;
}

} // namespace

HRESULT QTBItemCommands::CopyAttributes(const QTBIRepNode_var& spIRepNode)
{
    QTBIPdmNode_var spIPdmNode;
    if (const HRESULT hr = GetPdmNode(spIRepNode, &spIPdmNode); FAILED(hr)) {
        return hr;
    }
    const QTBINodeAttributes_var spINodeAttributes(spIPdmNode);
    CATListValCATUnicodeString names;
    if (const HRESULT hr = spINodeAttributes != NULL_var ? spINodeAttributes->GetStringAttributeNames(&names) : E_FAIL;
        FAILED(hr)) {
        return hr;
    }
    CATUnicodeString usText;
    for (const CATUnicodeString& usName : names) {
        CATUnicodeString usValue;
        spINodeAttributes->GetStringAttributeValue(usName, &usValue, FALSE, TRUE);
        usText += QTBItemDialog::GetDisplayName(usName) + "\t" + usValue + "\n";
    }
    CATApplicationFrame::GetFrame()->SetClipboardText(usText);
    return S_OK;
}

HRESULT QTBItemCommands::ShowProperties(const QTBIRepNode_var& spIRepNode)
{
    QTBIPdmNode_var spIPdmNode;
    if (const HRESULT hr = GetPdmNode(spIRepNode, &spIPdmNode); FAILED(hr)) {
        return hr;
    }
    QTBSchemaNode* pSchemaNode = nullptr;
    if (const HRESULT hr = spIPdmNode->GetSchemaNodePtr(&pSchemaNode); FAILED(hr)) {
        return hr;
    }
    QTBSchemaForm* pForm = nullptr;
    if (pSchemaNode == nullptr || FAILED(pSchemaNode->GetFormPtr("Properties", &pForm))) {
        return CATError::GetReturn(2, QTBMessageUtil::FunctionalityNotImplemented(), nullptr, __FILE__, __LINE__);
    }
    CATUnicodeString usText;
    for (int i = 1; i <= pForm->GetFormAttrCount(); ++i) {
        QTBSchemaAttributeRep* pFormAttr = nullptr;
        pForm->GetFormAttrPtr(i, &pFormAttr);
        // Empty when the item lacks it.
        CATUnicodeString usValue;
        QTBSchemaUtil::GetAttributeValue(spIPdmNode, *pFormAttr, &usValue);
        usText += QTBItemDialog::GetDisplayName(pFormAttr->GetName()) + ": " + usValue + "\n";
    }
    auto pNotify = std::make_unique<CATDlgNotify>(CATApplicationFrame::GetFrame()->GetApplicationDocument(),
                                                  "QTBProperties", NOTICE_STYLE);
    pNotify->DisplayBlocked(usText, QTBTraceUtil::GetNodeString(spIPdmNode, FALSE));
    pNotify->RequestDelayedDestruction();
    static_cast<void>(pNotify.release());
    return S_OK;
}

HRESULT QTBItemCommands::Delete(const QTBIRepNode_var& spIRepNode)
{
    QTBIPdmNode_var spIPdmNode;
    HRESULT hr = GetPdmNode(spIRepNode, &spIPdmNode);
    if (SUCCEEDED(hr)) {
        // A connection that answers requests also says what takes the item's place.
        CATListValCATUnicodeString Keys;
        Keys.Append(spIPdmNode->GetPdmKey());
        hr = QTBRequestCommands::Delete(Keys, nullptr);
        if (hr != S_FALSE) {
            return hr;
        }
    }
    CATListValCATBaseUnknown_var repNodes;
    if (SUCCEEDED(hr)) {
        hr = spIPdmNode->GetRepNodes(&repNodes, NULL_var);
    }
    QTBIPdmNodeCont_var spIPdmNodeCont;
    if (SUCCEEDED(hr)) {
        hr = QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spIPdmNodeCont);
    }
    if (FAILED(hr)) {
        return hr;
    }
    // The windows have to be known before their rep nodes are gone.
    CATListValCATBaseUnknown_var containers;
    for (const CATBaseUnknown_var& spRepNode : repNodes) {
        QTBIRepNodeCont_var spIRepNodeCont;
        if (SUCCEEDED(QTBIRepNode_var(spRepNode)->GetRepNodeContainer(&spIRepNodeCont))) {
            QTBPdmGraphUtil::SetAdd(spIRepNodeCont, &containers);
        }
    }
    hr = spIPdmNodeCont->RemoveNodeFromPdmGraph(&spIPdmNode, TRUE, FALSE, TRUE, nullptr);
    for (const CATBaseUnknown_var& spContainer : containers) {
        unsigned char bTakeRootsAnew = TRUE;
        unsigned char bActivateWindow = FALSE;
        const HRESULT hrOfWindow = QTBIRepNodeCont_var(spContainer)->UpdateQtbWindow(&bTakeRootsAnew, &bActivateWindow);
        hr = FAILED(hr) ? hr : hrOfWindow;
    }
    return hr;
}

HRESULT QTBItemCommands::FailWithoutService(const CATUnicodeString& usServiceName)
{
    return CATError::GetReturn(2, QTBMessageUtil::PdmServiceNotAvailableError(usServiceName), nullptr, __FILE__,
                               __LINE__);
}
