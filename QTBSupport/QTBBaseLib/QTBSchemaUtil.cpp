#include "QTBSchemaUtil.h"

#include <memory>
#include <vector>

#include "CATError.h"
#include "CATMsgCatalog.h"
#include "QTBINodeAttributes.h"
#include "QTBObjectAttr.h"
#include "QTBPdmSessionUtil.h"
#include "QTBSchema.h"
#include "QTBSchemaReader.h"

namespace {

constexpr const char* ERROR_CATALOG = "QTBSchemaErrors";
// Holds the names of the types of CAD documents under the types.
constexpr const char* DOC_TYPE_CATALOG = "QTBUserMessages";

// The schemas of the session in the order in which they were loaded; the last one is in force. The others stay because
// nodes that were read under them point to their classes.
std::vector<std::unique_ptr<QTBSchema>>& Schemas()
{
    static std::vector<std::unique_ptr<QTBSchema>> s_Schemas;
    return s_Schemas;
}

// Gives the caller something that the schema in force says.
template <class Value, class Read>
HRESULT GiveFromSchema(Value* pValue, Read read)
{
    if (pValue == nullptr) {
        return E_POINTER;
    }
    QTBSchema* pSchema = nullptr;
    const HRESULT hr = QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema);
    if (SUCCEEDED(hr)) {
        *pValue = read(*pSchema);
    }
    return hr;
}

// The same for what the schema may lack: a null pointer is E_FAIL.
template <class Element, class Find>
HRESULT FindInSchema(Element** ppElement, Find find)
{
    Element* pElement = nullptr;
    const HRESULT hr = ppElement != nullptr ? GiveFromSchema(&pElement, find) : E_POINTER;
    if (FAILED(hr)) {
        return hr;
    }
    if (pElement == nullptr) {
        return E_FAIL;
    }
    *ppElement = pElement;
    return S_OK;
}

void GiveList(CATListValCATUnicodeString* pTarget, const CATListValCATUnicodeString& Names)
{
    if (pTarget != nullptr) {
        *pTarget = Names;
    }
}

} // namespace

HRESULT QTBSchemaUtil::LoadSchema(const CATUnicodeString& usPath)
{
    std::unique_ptr<QTBSchema> pSchema;
    const HRESULT hr = QTBSchemaReader::ReadFile(usPath, &pSchema);
    if (SUCCEEDED(hr)) {
        Schemas().push_back(std::move(pSchema));
    }
    return hr;
}

void QTBSchemaUtil::ReleaseReplacedSchemas()
{
    if (Schemas().size() > 1) {
        Schemas().erase(Schemas().begin(), Schemas().end() - 1);
    }
}

HRESULT QTBSchemaUtil::GetCurrentSchemaPtr(QTBSchema** ppSchema)
{
    if (ppSchema == nullptr) {
        return E_POINTER;
    }
    if (Schemas().empty()) {
        return CATError::GetReturn(2, new CATInternalError("NoSchemaERR_1001", ERROR_CATALOG), nullptr, __FILE__,
                                   __LINE__);
    }
    *ppSchema = Schemas().back().get();
    return S_OK;
}

HRESULT QTBSchemaUtil::GetClassAttr(CATUnicodeString* pusAttrName)
{
    return GiveFromSchema(pusAttrName, [](const QTBSchema& schema) { return schema.GetClassAttr(); });
}

HRESULT QTBSchemaUtil::GetKeyAttr(CATUnicodeString* pusAttrName)
{
    return GiveFromSchema(pusAttrName, [](const QTBSchema& schema) { return schema.GetKeyAttr(); });
}

HRESULT QTBSchemaUtil::GetRelationAttr(CATUnicodeString* pusAttrName)
{
    return GiveFromSchema(pusAttrName, [](const QTBSchema& schema) { return schema.GetRelationAttr(); });
}

HRESULT QTBSchemaUtil::GetLeftRelationshipAttr(CATUnicodeString* pusAttrName)
{
    return GiveFromSchema(pusAttrName, [](const QTBSchema& schema) { return schema.GetLeftRelationshipAttr(); });
}

HRESULT QTBSchemaUtil::GetRightRelationshipAttr(CATUnicodeString* pusAttrName)
{
    return GiveFromSchema(pusAttrName, [](const QTBSchema& schema) { return schema.GetRightRelationshipAttr(); });
}

HRESULT QTBSchemaUtil::GetLeftRelationClassAttribute(CATUnicodeString* pusAttrName)
{
    return GiveFromSchema(pusAttrName, [](const QTBSchema& schema) { return schema.GetLeftRelationClassAttr(); });
}

HRESULT QTBSchemaUtil::GetRightRelationClassAttribute(CATUnicodeString* pusAttrName)
{
    return GiveFromSchema(pusAttrName, [](const QTBSchema& schema) { return schema.GetRightRelationClassAttr(); });
}

HRESULT QTBSchemaUtil::PdmClassIsDefined(const CATUnicodeString& usClassName, unsigned char* pbIsDefined,
                                         QTBSchemaNode** ppSchemaNode)
{
    QTBSchemaNode* pSchemaNode = nullptr;
    const auto find = [&usClassName](const QTBSchema& schema) { return schema.FindClass(usClassName); };
    const HRESULT hr = pbIsDefined != nullptr ? GiveFromSchema(&pSchemaNode, find) : E_POINTER;
    if (FAILED(hr)) {
        return hr;
    }
    *pbIsDefined = pSchemaNode != nullptr ? TRUE : FALSE;
    if (ppSchemaNode != nullptr) {
        *ppSchemaNode = pSchemaNode;
    }
    return S_OK;
}

HRESULT QTBSchemaUtil::GetPartClassNames(CATListValCATUnicodeString* pPartClassNames,
                                         CATListValCATUnicodeString* pClassNamesWithSubParts,
                                         CATListValCATUnicodeString* pCatPartClassNames)
{
    QTBSchema* pSchema = nullptr;
    const HRESULT hr = GetCurrentSchemaPtr(&pSchema);
    if (SUCCEEDED(hr)) {
        GiveList(pPartClassNames, pSchema->GetPartClassNames());
        GiveList(pClassNamesWithSubParts, pSchema->GetPartClassNamesWithSubParts());
        GiveList(pCatPartClassNames, pSchema->GetCatPartClassNames());
    }
    return hr;
}

HRESULT QTBSchemaUtil::GetNlsClassName(const QTBSchemaNode* pSchemaNode, CATUnicodeString* pusNlsClassName)
{
    if (pSchemaNode == nullptr || pusNlsClassName == nullptr) {
        return E_POINTER;
    }
    const CATUnicodeString usText = GetCurrentSchemaNlsString(pSchemaNode->GetNlsKey());
    *pusNlsClassName = usText.IsEmpty() ? pSchemaNode->GetName() : usText;
    return S_OK;
}

CATUnicodeString QTBSchemaUtil::GetCurrentSchemaNlsString(const CATUnicodeString& usNlsKey)
{
    CATUnicodeString usCatalog;
    if (usNlsKey.IsEmpty() || FAILED(GetCurrentSchemaCatalogName(&usCatalog)) ||
        !CATMsgCatalog::MessageExists(usCatalog, usNlsKey)) {
        return CATUnicodeString();
    }
    return CATMsgCatalog::BuildMessage(usCatalog, usNlsKey);
}

HRESULT QTBSchemaUtil::GetCurrentSchemaCatalogName(CATUnicodeString* pusCatalogName)
{
    return GiveFromSchema(pusCatalogName, [](const QTBSchema& schema) { return schema.GetCatalogName(); });
}

HRESULT QTBSchemaUtil::MaxDescAttrLength(int* pMaxDescAttrLength)
{
    return GiveFromSchema(pMaxDescAttrLength, [](const QTBSchema& schema) { return schema.GetMaxDescAttrLength(); });
}

HRESULT QTBSchemaUtil::GetEmbeddedDescriptionAttributeValue(const QTBIPdmNode_var& spIPdmNode,
                                                            const CATUnicodeString& usAttrName,
                                                            CATUnicodeString* pusValue)
{
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    QTBSchemaNode* pSchemaNode = nullptr;
    if (spIPdmNode == NULL_var || FAILED(spIPdmNode->GetSchemaNodePtr(&pSchemaNode)) || pSchemaNode == nullptr ||
        pSchemaNode->GetDescriptionPtr() == nullptr) {
        return E_FAIL;
    }
    const QTBSchemaAttributeRep* pDescAttr = pSchemaNode->GetDescriptionPtr()->FindEmbeddedDescAttr(usAttrName);
    if (pDescAttr == nullptr) {
        return E_FAIL;
    }

    return GetAttributeValue(spIPdmNode, *pDescAttr, pusValue);
}

HRESULT QTBSchemaUtil::GetAttributeValue(const QTBIPdmNode_var& spIPdmNode, const QTBSchemaAttributeRep& attr,
                                         CATUnicodeString* pusValue)
{
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    // Absence is asked for first: looking up what is not there makes an error object.
    unsigned char bIsDefined = FALSE;
    QTBINodeAttributes_var spHolder(spIPdmNode);
    if (!attr.GetEmbeddedObjAttr().IsEmpty()) {
        QTBObjectAttr* pObjectAttr = nullptr;
        CATBaseUnknown_var spObjectNode;
        if (spHolder == NULL_var || FAILED(spHolder->AttributeIsDefined(attr.GetEmbeddedObjAttr(), &bIsDefined)) ||
            bIsDefined == FALSE || FAILED(spHolder->GetObjectAttributePtr(attr.GetEmbeddedObjAttr(), &pObjectAttr)) ||
            pObjectAttr == nullptr || FAILED(pObjectAttr->GetObjectNode(&spObjectNode))) {
            return E_FAIL;
        }
        spHolder = spObjectNode;
    }
    if (spHolder == NULL_var || FAILED(spHolder->AttributeIsDefined(attr.GetName(), &bIsDefined)) ||
        bIsDefined == FALSE || FAILED(spHolder->GetStringAttributeValue(attr.GetName(), pusValue, TRUE, TRUE))) {
        return E_FAIL;
    }
    return S_OK;
}

HRESULT QTBSchemaUtil::ShowDataSourceNlsValues(unsigned char* pbShow)
{
    return GiveFromSchema(pbShow, [](const QTBSchema& schema) { return schema.ShowDataSourceNlsValues(); });
}

HRESULT QTBSchemaUtil::GetAttributePtr(const CATUnicodeString& usAttrName, QTBSchemaAttribute** ppAttribute,
                                       unsigned char bReportIfUndefined)
{
    const HRESULT hr =
        FindInSchema(ppAttribute, [&usAttrName](const QTBSchema& schema) { return schema.FindAttribute(usAttrName); });
    if (hr != E_FAIL || bReportIfUndefined == FALSE) {
        return hr;
    }
    auto* pError = CATError::Make<CATInternalError>({usAttrName}, "AttributeNotInSchemaERR_1002", ERROR_CATALOG);
    return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
}

HRESULT QTBSchemaUtil::GetDataSourcePtr(const CATUnicodeString& usName, QTBSchemaDataSource** ppDataSource)
{
    return FindInSchema(ppDataSource, [&usName](const QTBSchema& schema) { return schema.FindDataSource(usName); });
}

HRESULT QTBSchemaUtil::GetSystem(QTBPdmSystem* pSystem)
{
    return GiveFromSchema(pSystem, [](const QTBSchema& schema) { return schema.GetSystem(); });
}

HRESULT QTBSchemaUtil::GetSystem(CATUnicodeString* pusSystem)
{
    return GiveFromSchema(pusSystem, [](const QTBSchema& schema) { return schema.GetSystemText(); });
}

HRESULT QTBSchemaUtil::GetCustomization(CATUnicodeString* pusCustomization)
{
    return GiveFromSchema(pusCustomization, [](const QTBSchema& schema) { return schema.GetCustomization(); });
}

HRESULT QTBSchemaUtil::GetPdmNodeTypeNlsString(const unsigned char& bIsCurrent, const CATUnicodeString& usPdmNodeType,
                                               CATUnicodeString* pusNlsString, unsigned char bTypeIfNoText)
{
    if (pusNlsString == nullptr) {
        return E_POINTER;
    }
    QTBSchema* pSchema = nullptr;
    if (const HRESULT hr = GetCurrentSchemaPtr(&pSchema); FAILED(hr)) {
        return hr;
    }
    const QTBSchemaNode* pSchemaNode = pSchema->FindClass(usPdmNodeType);
    CATUnicodeString usText;
    if (pSchemaNode != nullptr) {
        usText = GetCurrentSchemaNlsString(pSchemaNode->GetNlsKey());
    } else if (CATMsgCatalog::MessageExists(DOC_TYPE_CATALOG, usPdmNodeType)) {
        usText = CATMsgCatalog::BuildMessage(DOC_TYPE_CATALOG, usPdmNodeType);
    }
    if (usText.IsEmpty()) {
        if (bTypeIfNoText == FALSE) {
            return E_FAIL;
        }
        usText = usPdmNodeType;
    }
    constexpr const char* CURRENT_TYPE = "CurrentPdmNodeType";
    if (bIsCurrent != FALSE && CATMsgCatalog::MessageExists(pSchema->GetCatalogName(), CURRENT_TYPE)) {
        usText = CATMsgCatalog::BuildMessage(pSchema->GetCatalogName(), CURRENT_TYPE, {usText});
    }
    *pusNlsString = usText;
    return S_OK;
}

HRESULT QTBSchemaUtil::GetPdmNodeTypeCommandHeaderIdString(const unsigned char& bIsCurrent,
                                                           const CATUnicodeString& usPdmNodeType,
                                                           CATUnicodeString* pusCommandHeaderId)
{
    if (pusCommandHeaderId == nullptr) {
        return E_POINTER;
    }
    QTBSchema* pSchema = nullptr;
    if (const HRESULT hr = GetCurrentSchemaPtr(&pSchema); FAILED(hr)) {
        return hr;
    }
    if (pSchema->FindClass(usPdmNodeType) == nullptr &&
        QTBPdmSessionUtil::GetFileClassOfDocType(usPdmNodeType) == QTB_CATIA_FILE_CLASS_UNKNOWN) {
        return E_FAIL;
    }
    *pusCommandHeaderId =
        (bIsCurrent != FALSE ? "QTBCurrentPdmNodeType" : "QTBSetPdmNodeType") + usPdmNodeType + "CmdHdr";
    return S_OK;
}

HRESULT QTBSchemaUtil::GetCatiaNodeBehaviorDefinitionsPtr(QTBCatiaNodeBehaviorDefinitions** ppDefinitions)
{
    return FindInSchema(ppDefinitions,
                        [](const QTBSchema& schema) { return schema.GetCatiaNodeBehaviorDefinitionsPtr(); });
}
