#include "QTBRelationCommands.h"

#include <algorithm>
#include <memory>
#include <set>
#include <vector>

#include "CATError.h"
#include "CATIDOMDocument.h"
#include "CATIPrdProperties.h"
#include "CATIProduct.h"
#include "CATListValCATUnicodeString.h"
#include "CATPrdStructure.h"
#include "QTBCommUtil.h"
#include "QTBConstants.h"
#include "QTBGlobVarsUtil.h"
#include "QTBICommunicationServices.h"
#include "QTBILinkToPsn.h"
#include "QTBILinkToQtb.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIPdmRequests.h"
#include "QTBIRepNode.h"
#include "QTBInfoUtil.h"
#include "QTBItemCommands.h"
#include "QTBItemDialog.h"
#include "QTBMessageUtil.h"
#include "QTBNodeRelationInfo.h"
#include "QTBPdmGraphUtil.h"
#include "QTBPdmSessionUtil.h"
#include "QTBRequestCommands.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"
#include "QTBTraceUtil.h"

namespace {

constexpr const char* SERVICE = "UpdateRelations";
// Attribute of a usage that says where its instance stands.
constexpr const char* POSITION_ATTR = "Position";

// The product that corresponds to the node, and the node's PDM node.
HRESULT GetProduct(const QTBIRepNode_var& spIRepNode, CATIProduct_var* pspIProduct, QTBIPdmNode_var* pspIPdmNode)
{
    HRESULT hr = spIRepNode != NULL_var ? spIRepNode->GetPdmNode(pspIPdmNode, FALSE, nullptr) : E_FAIL;
    if (FAILED(hr)) {
        return hr;
    }
    QTBICommunicationServices_var spICommunicationServices;
    if (FAILED(QTBCommUtil::GetCommComponent(&spICommunicationServices)) ||
        QTBIPdmRequests_var(spICommunicationServices) == NULL_var) {
        return QTBItemCommands::FailWithoutService(SERVICE);
    }
    const QTBILinkToPsn_var spILinkToPsn(spIRepNode);
    unsigned char bExists = FALSE;
    hr = spILinkToPsn != NULL_var ? spILinkToPsn->CorrespondingPsnNodeExists(&bExists, pspIProduct) : E_FAIL;
    return SUCCEEDED(hr) && bExists != FALSE
               ? S_OK
               : CATError::GetReturn(
                     2, QTBMessageUtil::NoCorrespondingProductError(QTBTraceUtil::GetNodeString(*pspIPdmNode, FALSE)),
                     nullptr, __FILE__, __LINE__);
}

CATUnicodeString GetPlacement(const CATIProduct_var& spIInstance)
{
    const CATIPrdProperties_var spIPrdProperties(spIInstance);
    CATUnicodeString usPlacement;
    if (spIPrdProperties != NULL_var) {
        spIPrdProperties->GetUserProperty(CAT_PRD_PLACEMENT, &usPlacement);
    }
    return usPlacement;
}

QTBItemDialog::Field MakeField(const CATUnicodeString& usAttrName, const CATUnicodeString& usValue)
{
    return {usAttrName, usAttrName, usValue};
}

// Nothing to do when the usage says so already, or the product does not say.
HRESULT WritePosition(const QTBIPdmNode_var& spIPdmUsage, const CATIProduct_var& spIInstance)
{
    const CATUnicodeString usPlacement = GetPlacement(spIInstance);
    const QTBINodeAttributes_var spINodeAttributes(spIPdmUsage);
    unsigned char bIsDefined = FALSE;
    CATUnicodeString usPosition;
    if (SUCCEEDED(spINodeAttributes->AttributeIsDefined(POSITION_ATTR, &bIsDefined)) && bIsDefined != FALSE) {
        spINodeAttributes->GetStringAttributeValue(POSITION_ATTR, &usPosition, FALSE, FALSE);
    }
    if (usPlacement.IsEmpty() || usPlacement == usPosition) {
        return S_OK;
    }
    return QTBRequestCommands::Run(SERVICE, [&](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.UpdateAttributes(spIPdmUsage->GetPdmKey(),
                                         QTBItemDialog::MakeXml({MakeField(POSITION_ATTR, usPlacement)}), pspAnswer);
    });
}

// The first class of relations that the schema allows from the one class to the other.
CATUnicodeString FindRelationClass(const CATUnicodeString& usLeftClass, const CATUnicodeString& usRightClass)
{
    QTBSchema* pSchema = nullptr;
    for (int i = 1; SUCCEEDED(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema)) && i <= pSchema->GetRelationCount(); ++i) {
        QTBSchemaRelation* pRelation = nullptr;
        if (SUCCEEDED(pSchema->GetRelationPtr(i, &pRelation)) && pRelation->StartsAtClass(TRUE, usLeftClass) &&
            pRelation->StartsAtClass(FALSE, usRightClass)) {
            return pRelation->GetName();
        }
    }
    return CATUnicodeString();
}

// The object of that key. Nodes are replaced when they are read anew, so none is kept from one request to the next.
HRESULT FindObject(const CATUnicodeString& usKey, QTBIPdmObjNode_var* pspIPdmObjNode)
{
    QTBIPdmNodeCont_var spIPdmNodeCont;
    QTBIPdmNode_var spIPdmNode;
    unsigned char bFound = FALSE;
    HRESULT hr = QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spIPdmNodeCont);
    if (SUCCEEDED(hr)) {
        hr = spIPdmNodeCont->GetPdmNodeByKey(usKey, &spIPdmNode, &bFound);
    }
    *pspIPdmObjNode = spIPdmNode;
    return FAILED(hr) || *pspIPdmObjNode != NULL_var ? hr : E_FAIL;
}

// Creates the usage of an instance that has none. S_FALSE when the PDM system has no such part.
HRESULT CreateUsage(const CATUnicodeString& usFatherKey, const CATIProduct_var& spIInstance,
                    const CATUnicodeString& usInstanceName)
{
    CATUnicodeString usPartNumberAttr;
    CATUnicodeString usInstanceNameAttr;
    HRESULT hr =
        QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_PART_NUMBER_ATTR, &usPartNumberAttr, TRUE);
    if (SUCCEEDED(hr)) {
        hr = QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_INSTANCE_NAME_ATTR, &usInstanceNameAttr,
                                                             TRUE);
    }
    CATUnicodeString usPartClass;
    if (SUCCEEDED(hr)) {
        hr = QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_PART_CLASS, &usPartClass, TRUE);
    }
    if (FAILED(hr)) {
        return hr;
    }
    CATListValCATUnicodeString names;
    CATListValCATUnicodeString values;
    names.Append(usPartNumberAttr);
    values.Append(spIInstance->GetPartNumber());
    hr = QTBRequestCommands::Run(SERVICE, [&](QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer) {
        return requests.Query(usPartClass, names, values, TRUE, pspAnswer);
    });
    QTBIPdmNodeCont_var spIPdmNodeCont;
    if (SUCCEEDED(hr)) {
        hr = QTBGlobVarsUtil::GetGlobalPdmNodeContainer(&spIPdmNodeCont);
    }
    QTBIPdmNode_var spIPdmPart;
    if (FAILED(hr) || values[1].IsEmpty() || FAILED(spIPdmNodeCont->GetPdmPartByPartNumber(values[1], &spIPdmPart))) {
        return FAILED(hr) ? hr : S_FALSE;
    }
    QTBIPdmObjNode_var spIPdmFather;
    hr = FindObject(usFatherKey, &spIPdmFather);
    if (FAILED(hr)) {
        return hr;
    }
    CATUnicodeString usFatherClass;
    CATUnicodeString usChildClass;
    QTBIPdmNode_var(spIPdmFather)->GetClassName(&usFatherClass);
    spIPdmPart->GetClassName(&usChildClass);
    const CATUnicodeString usRelationClass = FindRelationClass(usFatherClass, usChildClass);
    if (usRelationClass.IsEmpty()) {
        return S_FALSE;
    }
    std::vector<QTBItemDialog::Field> fields = {MakeField(usInstanceNameAttr, usInstanceName)};
    if (const CATUnicodeString usPlacement = GetPlacement(spIInstance); !usPlacement.IsEmpty()) {
        fields.push_back(MakeField(POSITION_ATTR, usPlacement));
    }
    QTBICommunicationServices_var spICommunicationServices;
    CATIDOMDocument_var spAnswer;
    hr = QTBCommUtil::GetCommComponent(&spICommunicationServices);
    if (SUCCEEDED(hr)) {
        hr = spICommunicationServices->CreateRelation(usRelationClass, spIPdmFather, QTBIPdmObjNode_var(spIPdmPart),
                                                      QTBItemDialog::MakeXml(fields), &spAnswer);
    }
    return SUCCEEDED(hr) ? QTBRequestCommands::TakeAnswer(spAnswer, nullptr, nullptr) : hr;
}

// A usage in the PDM system and the instances that it stands for.
struct Usage
{
    CATUnicodeString usKey;
    CATListValCATUnicodeString instanceNames;
};

// The usages below a part, read anew. Those without instance names are left out: no product corresponds to them.
HRESULT GetUsages(const CATUnicodeString& usFatherKey, const CATUnicodeString& usFatherClass,
                  std::vector<Usage>* pUsages)
{
    QTBSchema* pSchema = nullptr;
    HRESULT hr = QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema);
    CATListValQTBNodeRelationInfo infos;
    for (int i = 1; SUCCEEDED(hr) && i <= pSchema->GetRelationCount(); ++i) {
        QTBSchemaRelation* pRelation = nullptr;
        pSchema->GetRelationPtr(i, &pRelation);
        if (pRelation->StartsAtClass(TRUE, usFatherClass)) {
            infos.Append(QTBNodeRelationInfo(pRelation->GetName(), usLEFT_TO_RIGHT));
        }
    }
    CATListValCATUnicodeString keys;
    keys.Append(usFatherKey);
    hr = SUCCEEDED(hr) ? QTBRequestCommands::Fetch(keys, infos, 1) : hr;
    QTBIPdmObjNode_var spIPdmFather;
    hr = SUCCEEDED(hr) ? FindObject(usFatherKey, &spIPdmFather) : hr;
    for (const QTBNodeRelationInfo& info : infos) {
        CATListValCATBaseUnknown_var relations;
        if (SUCCEEDED(hr)) {
            hr = spIPdmFather->GetRightNodes(info.GetRelationName(), &relations, nullptr, ALL_NODES, FALSE, nullptr,
                                             FALSE);
        }
        for (const CATBaseUnknown_var& spRelation : relations) {
            unsigned char bIsUsage = FALSE;
            Usage usage{QTBIPdmNode_var(spRelation)->GetPdmKey(), {}};
            if (SUCCEEDED(QTBPdmGraphUtil::IsPartToPartRelationNode(QTBIPdmRelNode_var(spRelation), &bIsUsage)) &&
                bIsUsage != FALSE &&
                SUCCEEDED(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(spRelation, &usage.instanceNames))) {
                pUsages->push_back(usage);
            }
        }
    }
    return hr;
}

// Makes the usage of one instance what the instance is.
HRESULT UpdateUsage(const CATUnicodeString& usFatherKey, const CATIProduct_var& spIInstance,
                    const CATUnicodeString& usInstanceName)
{
    unsigned char bExists = FALSE;
    QTBIPdmNode_var spIPdmUsage;
    const QTBILinkToQtb_var spILinkToQtb(spIInstance);
    if (spILinkToQtb != NULL_var) {
        spILinkToQtb->ProdStrucPdmNodeExists(&bExists, &spIPdmUsage, nullptr);
    }
    if (bExists != FALSE && QTBIPdmRelNode_var(spIPdmUsage) != NULL_var) {
        return WritePosition(spIPdmUsage, spIInstance);
    }
    const HRESULT hr = CreateUsage(usFatherKey, spIInstance, usInstanceName);
    if (hr == S_FALSE) {
        QTBGlobVarsUtil::AddMessageToInfoListDialog(
            QTBMessageUtil::PartNotInPdmWarning(usInstanceName, spIInstance->GetPartNumber()));
    }
    return hr;
}

} // namespace

HRESULT QTBRelationCommands::UpdateParent(const QTBIRepNode_var& spIRepNode)
{
    CATIProduct_var spIInstance;
    QTBIPdmNode_var spIPdmUsage;
    const HRESULT hr = GetProduct(spIRepNode, &spIInstance, &spIPdmUsage);
    return SUCCEEDED(hr) ? WritePosition(spIPdmUsage, spIInstance) : hr;
}

HRESULT QTBRelationCommands::UpdateBelow(const QTBIRepNode_var& spIRepNode)
{
    CATIProduct_var spIProduct;
    QTBIPdmNode_var spIPdmFather;
    CATUnicodeString usFatherClass;
    HRESULT hr = GetProduct(spIRepNode, &spIProduct, &spIPdmFather);
    if (SUCCEEDED(hr)) {
        hr = spIPdmFather->GetClassName(&usFatherClass);
    }
    if (FAILED(hr)) {
        return hr;
    }
    const CATUnicodeString usFatherKey = spIPdmFather->GetPdmKey();
    std::vector<Usage> usages;
    hr = GetUsages(usFatherKey, usFatherClass, &usages);
    std::set<CATUnicodeString> instanceNames;
    const std::unique_ptr<CATListValCATBaseUnknown_var> pInstances(spIProduct->GetChildren("CATIProduct"));
    for (const CATBaseUnknown_var& spInstance : *pInstances) {
        const CATIProduct_var spIInstance(spInstance);
        CATUnicodeString usInstanceName;
        if (SUCCEEDED(hr) && SUCCEEDED(spIInstance->GetPrdInstanceName(&usInstanceName))) {
            instanceNames.insert(usInstanceName);
            hr = UpdateUsage(usFatherKey, spIInstance, usInstanceName);
        }
    }
    if (FAILED(hr)) {
        return hr;
    }
    CATListValCATUnicodeString gone;
    for (const Usage& usage : usages) {
        if (std::none_of(usage.instanceNames.begin(), usage.instanceNames.end(),
                         [&](const CATUnicodeString& usName) { return instanceNames.count(usName) > 0; })) {
            gone.Append(usage.usKey);
        }
    }
    return gone.Size() > 0 ? QTBRequestCommands::Delete(gone, nullptr) : S_OK;
}
