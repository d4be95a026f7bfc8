#include "QTBRequestCommands.h"

#include <algorithm>
#include <vector>

#include "CATError.h"
#include "CATFrmLayout.h"
#include "CATIDOMDocument.h"
#include "QTBCommUtil.h"
#include "QTBExpandCommands.h"
#include "QTBGlobVarsUtil.h"
#include "QTBICommunicationServices.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRequests.h"
#include "QTBIRepNode.h"
#include "QTBItemCommands.h"
#include "QTBItemDialog.h"
#include "QTBMessageUtil.h"
#include "QTBRepTreeUtil.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"
#include "QTBTreeFollower.h"

namespace {

// Empty when the session has no connection or one that answers no requests.
QTBIPdmRequests_var GetRequests()
{
    QTBICommunicationServices_var spICommunicationServices;
    if (FAILED(QTBCommUtil::GetCommComponent(&spICommunicationServices))) {
        return NULL_var;
    }
    return QTBIPdmRequests_var(spICommunicationServices);
}

using KeyRequest = HRESULT (QTBIPdmRequests::*)(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer);

CATListValCATUnicodeString MakeList(const CATUnicodeString& usText)
{
    CATListValCATUnicodeString list;
    list.Append(usText);
    return list;
}

// Fails, quietly, for a rep node that lost its PDM node.
HRESULT GetKeys(const QTBIRepNode_var& spIRepNode, CATListValCATUnicodeString* pKeys)
{
    CATUnicodeString usKey;
    const HRESULT hr = spIRepNode != NULL_var ? spIRepNode->GetPdmNodeKey(&usKey) : E_FAIL;
    if (SUCCEEDED(hr)) {
        *pKeys = MakeList(usKey);
    }
    return hr;
}

HRESULT RunOnNode(const CATUnicodeString& usServiceName, const QTBIRepNode_var& spIRepNode, KeyRequest request)
{
    CATListValCATUnicodeString Keys;
    const HRESULT hr = GetKeys(spIRepNode, &Keys);
    return FAILED(hr)
               ? hr
               : QTBRequestCommands::Run(usServiceName, [&](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
                     return (requests.*request)(Keys, pspAnswer);
                 });
}

std::vector<QTBItemDialog::Field> GetFilled(const QTBItemDialog::Page& page)
{
    std::vector<QTBItemDialog::Field> filled;
    std::copy_if(page.fields.begin(), page.fields.end(), std::back_inserter(filled),
                 [](const QTBItemDialog::Field& field) { return !field.usValue.IsEmpty(); });
    return filled;
}

// The object to which a new one is related.
HRESULT GetOwner(const QTBCommandText::Creation& creation, const QTBIRepNode_var& spIRepNode,
                 QTBIPdmObjNode_var* pspOwner)
{
    QTBIPdmNode_var spIPdmNode;
    HRESULT hr = S_OK;
    if (spIRepNode != NULL_var) {
        // The node may show a newer version than the one that the text was made for.
        hr = spIRepNode->GetPdmNode(&spIPdmNode, FALSE, nullptr);
    } else {
        QTBIPdmNodeCont_var spIPdmNodeCont;
        unsigned char bFound = FALSE;
        hr = QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spIPdmNodeCont);
        if (SUCCEEDED(hr)) {
            hr = spIPdmNodeCont->GetPdmNodeByKey(creation.usOwnerKey, &spIPdmNode, &bFound);
        }
    }
    *pspOwner = spIPdmNode;
    return FAILED(hr) || *pspOwner != NULL_var ? hr : E_FAIL;
}

HRESULT CreateRelation(const QTBCommandText::Creation& creation, const QTBIPdmObjNode_var& spOwner,
                       const QTBIPdmObjNode_var& spObject, const CATUnicodeString& usRelationXml)
{
    QTBICommunicationServices_var spICommunicationServices;
    CATIDOMDocument_var spAnswer;
    HRESULT hr = QTBCommUtil::GetCommComponent(&spICommunicationServices);
    if (SUCCEEDED(hr)) {
        const bool isLeftToRight = creation.bLeftToRight != FALSE;
        hr = spICommunicationServices->CreateRelation(creation.usRelationName, isLeftToRight ? spOwner : spObject,
                                                      isLeftToRight ? spObject : spOwner, usRelationXml, &spAnswer);
    }
    return SUCCEEDED(hr) ? QTBRequestCommands::TakeAnswer(spAnswer, nullptr, nullptr) : hr;
}

} // namespace

HRESULT QTBRequestCommands::Run(const CATUnicodeString& usServiceName, const Request& request)
{
    const QTBIPdmRequests_var spIPdmRequests = GetRequests();
    if (spIPdmRequests == NULL_var) {
        return QTBItemCommands::FailWithoutService(usServiceName);
    }
    CATIDOMDocument_var spAnswer;
    const HRESULT hr = request(*spIPdmRequests, &spAnswer);
    return SUCCEEDED(hr) ? TakeAnswer(spAnswer, nullptr, nullptr) : hr;
}

HRESULT QTBRequestCommands::TakeAnswer(const CATIDOMDocument_var& spAnswer, CATListValCATBaseUnknown_var* pObjects,
                                       CATListValCATBaseUnknown_var* pRelations)
{
    QTBIPdmNodeCont_var spIPdmNodeCont;
    if (const HRESULT hr = QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spIPdmNodeCont); FAILED(hr)) {
        return hr;
    }
    CATListValCATBaseUnknown_var relations;
    HRESULT hr = spIPdmNodeCont->UpdatePdmGraph(spAnswer, pObjects, &relations);
    // What was read before a failure is in the graph.
    const HRESULT hrOfTrees = QTBTreeFollower().Follow(relations);
    hr = FAILED(hr) ? hr : hrOfTrees;
    const CATFrmLayout* pLayout = CATFrmLayout::GetCurrentLayout();
    for (CATFrmWindow* pWindow : pLayout != nullptr ? pLayout->GetWindowList() : CATListPtrCATFrmWindow()) {
        const HRESULT hrOfWindow = QTBRepTreeUtil::UpdateQtbWindow(pWindow, TRUE, FALSE);
        hr = FAILED(hr) ? hr : hrOfWindow;
    }
    if (pRelations != nullptr) {
        *pRelations = relations;
    }
    return hr;
}

HRESULT QTBRequestCommands::Fetch(const CATListValCATUnicodeString& Keys,
                                  const CATListValQTBNodeRelationInfo& Relations, int levels)
{
    const QTBIPdmRequests_var spIPdmRequests = GetRequests();
    if (spIPdmRequests == NULL_var) {
        return S_FALSE;
    }
    CATIDOMDocument_var spAnswer;
    const HRESULT hr = spIPdmRequests->Expand(Keys, Relations, levels, &spAnswer);
    return SUCCEEDED(hr) ? TakeAnswer(spAnswer, nullptr, nullptr) : hr;
}

HRESULT QTBRequestCommands::CheckOut(const QTBIRepNode_var& spIRepNode)
{
    return RunOnNode("CheckOut", spIRepNode, &QTBIPdmRequests::CheckOut);
}

HRESULT QTBRequestCommands::CheckIn(const QTBIRepNode_var& spIRepNode)
{
    CATListValCATUnicodeString Keys;
    const HRESULT hr = GetKeys(spIRepNode, &Keys);
    return FAILED(hr) ? hr : Run("CheckIn", [&Keys](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.CheckIn(Keys, CATListValCATUnicodeString(), pspAnswer);
    });
}

HRESULT QTBRequestCommands::Promote(const QTBIRepNode_var& spIRepNode)
{
    return RunOnNode("Promote", spIRepNode, &QTBIPdmRequests::Promote);
}

HRESULT QTBRequestCommands::Revise(const QTBIRepNode_var& spIRepNode)
{
    return RunOnNode("Revise", spIRepNode, &QTBIPdmRequests::Revise);
}

HRESULT QTBRequestCommands::DeleteNewestVersion(const QTBIRepNode_var& spIRepNode)
{
    CATListValCATUnicodeString Keys;
    HRESULT hr = GetKeys(spIRepNode, &Keys);
    if (SUCCEEDED(hr)) {
        hr = Delete(Keys, nullptr);
    }
    return hr == S_FALSE ? QTBItemCommands::FailWithoutService("DeleteNewestVersion") : hr;
}

HRESULT QTBRequestCommands::UpdateItem(const QTBIRepNode_var& spIRepNode)
{
    QTBIPdmNode_var spIPdmNode;
    QTBSchemaNode* pSchemaNode = nullptr;
    HRESULT hr = spIRepNode != NULL_var ? spIRepNode->GetPdmNode(&spIPdmNode, FALSE, nullptr) : E_FAIL;
    if (SUCCEEDED(hr)) {
        hr = spIPdmNode->GetSchemaNodePtr(&pSchemaNode);
    }
    if (FAILED(hr)) {
        return hr;
    }
    if (GetRequests() == NULL_var) {
        return QTBItemCommands::FailWithoutService("UpdateItem");
    }
    std::vector<QTBItemDialog::Page> pages;
    if (pSchemaNode != nullptr) {
        pages.push_back(QTBItemDialog::MakePage(*pSchemaNode, "UpdateItem"));
    }
    if (pages.empty() || pages.front().fields.empty()) {
        return CATError::GetReturn(2, QTBMessageUtil::FunctionalityNotImplemented(), nullptr, __FILE__, __LINE__);
    }
    const QTBINodeAttributes_var spINodeAttributes(spIPdmNode);
    std::vector<QTBItemDialog::Field>& fields = pages.front().fields;
    for (QTBItemDialog::Field& field : fields) {
        // Empty when the item lacks it.
        unsigned char bIsDefined = FALSE;
        if (SUCCEEDED(spINodeAttributes->AttributeIsDefined(field.usAttrName, &bIsDefined)) && bIsDefined != FALSE) {
            spINodeAttributes->GetStringAttributeValue(field.usAttrName, &field.usValue, FALSE, FALSE);
        }
    }
    const std::vector<QTBItemDialog::Field> old = fields;
    if (!QTBItemDialog::Ask(&pages)) {
        return S_OK;
    }
    std::vector<QTBItemDialog::Field> changed;
    for (std::size_t i = 0; i < std::min(old.size(), fields.size()); ++i) {
        if (!(fields[i].usValue == old[i].usValue)) {
            changed.push_back({old[i].usAttrName, old[i].usDisplayName, fields[i].usValue});
        }
    }
    if (changed.empty()) {
        return S_OK;
    }
    return Run("UpdateItem", [&](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.UpdateAttributes(spIPdmNode->GetPdmKey(), QTBItemDialog::MakeXml(changed), pspAnswer);
    });
}

HRESULT QTBRequestCommands::Create(const QTBCommandText::Creation& creation, const QTBIRepNode_var& spIRepNode)
{
    const QTBIPdmRequests_var spIPdmRequests = GetRequests();
    if (spIPdmRequests == NULL_var) {
        return QTBItemCommands::FailWithoutService("CreateObject");
    }
    QTBIPdmObjNode_var spOwner;
    QTBSchema* pSchema = nullptr;
    QTBSchemaRelation* pSchemaRelation = nullptr;
    HRESULT hr = GetOwner(creation, spIRepNode, &spOwner);
    if (SUCCEEDED(hr)) {
        hr = QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema);
    }
    if (SUCCEEDED(hr)) {
        hr = pSchema->GetRelationPtr(creation.usRelationName, &pSchemaRelation);
    }
    const QTBSchemaObject* pSchemaObject = SUCCEEDED(hr) ? pSchema->FindObject(creation.usClassName) : nullptr;
    if (pSchemaObject == nullptr) {
        return FAILED(hr) ? hr : E_FAIL;
    }
    std::vector<QTBItemDialog::Page> pages = {QTBItemDialog::MakePage(*pSchemaObject, "Properties"),
                                              QTBItemDialog::MakePage(*pSchemaRelation, "Properties")};
    if (!QTBItemDialog::Ask(&pages) || pages.size() != 2) {
        return S_OK;
    }
    CATIDOMDocument_var spAnswer;
    hr = spIPdmRequests->CreateObject(creation.usClassName, "", QTBItemDialog::MakeXml(GetFilled(pages.front())),
                                      &spAnswer);
    CATListValCATBaseUnknown_var objects;
    if (SUCCEEDED(hr)) {
        hr = TakeAnswer(spAnswer, &objects, nullptr);
    }
    if (FAILED(hr) || objects.Size() == 0) {
        return FAILED(hr) ? hr : E_FAIL;
    }
    const QTBIPdmObjNode_var spObject(objects[1]);
    hr = CreateRelation(creation, spOwner, spObject, QTBItemDialog::MakeXml(GetFilled(pages.back())));
    if (FAILED(hr)) {
        // Nobody asked for an object that stands alone.
        Delete(MakeList(spObject->GetPdmKey()), nullptr);
        return hr;
    }
    if (spIRepNode == NULL_var) {
        return S_OK;
    }
    CATListValQTBExpDlgRelExpandInfo relations;
    relations.Append(QTBExpDlgRelExpandInfo(pSchemaRelation, creation.bLeftToRight, FALSE, TRUE));
    return QTBExpandCommands::Expand(spIRepNode, relations);
}

HRESULT QTBRequestCommands::Delete(const CATListValCATUnicodeString& Keys, const CATUnicodeString* pusDeleteOption)
{
    const QTBIPdmRequests_var spIPdmRequests = GetRequests();
    if (spIPdmRequests == NULL_var) {
        return S_FALSE;
    }
    CATIDOMDocument_var spAnswer;
    const HRESULT hr = spIPdmRequests->DeleteItems(Keys, pusDeleteOption, &spAnswer);
    return SUCCEEDED(hr) ? TakeAnswer(spAnswer, nullptr, nullptr) : hr;
}
