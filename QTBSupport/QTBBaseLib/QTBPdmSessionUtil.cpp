#include "QTBPdmSessionUtil.h"

#include <array>

#include "CATError.h"
#include "QTBSchema.h"
#include "QTBSchemaUtil.h"

namespace {

constexpr const char* ERROR_CATALOG = "QTBSchemaErrors";

struct DocType
{
    const CATUnicodeString* pusDocType;
    QTBCatiaFileClass fileClass;
};
constexpr std::array<DocType, 7> DOC_TYPES{{{&usCATPRODUCT, QTB_CATIA_FILE_CLASS_CATPRODUCT},
                                            {&usCATPART, QTB_CATIA_FILE_CLASS_CATPART},
                                            {&usCATDRAWING, QTB_CATIA_FILE_CLASS_CATDRAWING},
                                            {&usCMIARCHIVE, QTB_CATIA_FILE_CLASS_CMIARCHIVE},
                                            {&usCGR, QTB_CATIA_FILE_CLASS_CGR},
                                            {&usDESIGNTABLE, QTB_CATIA_FILE_CLASS_DESIGNTABLE},
                                            {&usV4MODEL, QTB_CATIA_FILE_CLASS_V4MODEL}}};

HRESULT Report(const char* msgId, const CATUnicodeString& usParameter)
{
    auto* pError = CATError::Make<CATInternalError>({usParameter}, msgId, ERROR_CATALOG);
    return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
}

// What the setting is called in a schema file.
const char* NameOfSetting(QTBPdmSessionStringAttr attr)
{
    for (const QTBSchema::SessionSetting& setting : QTBSchema::SESSION_SETTINGS) {
        if (setting.key == attr) {
            return setting.attribute;
        }
    }
    return "";
}

QTBSchema::CatiaFileClassInfo* FindFirst(QTBSchema* pSchema, QTBCatiaFileClass fileClass, QTBBomType first,
                                         QTBBomType second)
{
    QTBSchema::CatiaFileClassInfo* pInfo = pSchema->FindCatiaFileClassInfo(fileClass, first);
    return pInfo != nullptr ? pInfo : pSchema->FindCatiaFileClassInfo(fileClass, second);
}

} // namespace

unsigned char QTBPdmSessionUtil::UseBomPartStructure()
{
    QTBSchema* pSchema = nullptr;
    return SUCCEEDED(QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema)) ? pSchema->UseBomPartStructure() : FALSE;
}

HRESULT QTBPdmSessionUtil::GetPdmSessionStringAttrValue(const QTBPdmSessionStringAttr& attr, CATUnicodeString* pusValue,
                                                        const unsigned char& bReportIfUndefined)
{
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    QTBSchema* pSchema = nullptr;
    if (const HRESULT hr = QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema); FAILED(hr)) {
        return hr;
    }
    const CATUnicodeString& usValue = pSchema->GetSessionValue(attr);
    if (usValue.IsEmpty()) {
        return bReportIfUndefined != FALSE ? Report("SessionSettingNotDefinedERR_1003", NameOfSetting(attr)) : E_FAIL;
    }
    *pusValue = usValue;
    return S_OK;
}

HRESULT QTBPdmSessionUtil::GetCatiaFileClassInfo(const QTBCatiaFileClass& fileClass, CATUnicodeString* pusPdmClass,
                                                 unsigned char* pbIsBomPart, CATListValCATUnicodeString** ppPdmClasses,
                                                 const QTBBomType& bomType, unsigned char* pbIsDefined)
{
    QTBSchema* pSchema = nullptr;
    if (const HRESULT hr = QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema); FAILED(hr)) {
        return hr;
    }
    QTBSchema::CatiaFileClassInfo* pInfo = bomType == QTB_BOM_TYPE_ALL
                                               ? FindFirst(pSchema, fileClass, QTB_BOM_TYPE_PART, QTB_BOM_TYPE_AUX_FILE)
                                               : pSchema->FindCatiaFileClassInfo(fileClass, bomType);
    if (pusPdmClass != nullptr) {
        *pusPdmClass = pInfo != nullptr ? pInfo->pdmClasses[1] : CATUnicodeString();
    }
    if (pbIsBomPart != nullptr) {
        *pbIsBomPart = pInfo != nullptr ? pInfo->bIsBomPart : FALSE;
    }
    if (ppPdmClasses != nullptr) {
        *ppPdmClasses = pInfo != nullptr ? &pInfo->pdmClasses : nullptr;
    }
    if (pbIsDefined != nullptr) {
        *pbIsDefined = pInfo != nullptr ? TRUE : FALSE;
    }
    return S_OK;
}

HRESULT QTBPdmSessionUtil::IsCatiaFileClass(const QTBCatiaFileClass& fileClass, const CATUnicodeString& usPdmNodeType,
                                            unsigned char* pbIsFileClass)
{
    if (pbIsFileClass == nullptr) {
        return E_POINTER;
    }
    QTBSchema* pSchema = nullptr;
    if (const HRESULT hr = QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema); FAILED(hr)) {
        return hr;
    }
    const QTBSchemaObject* pObject = pSchema->FindObject(usPdmNodeType);
    const bool isFileClass =
        pObject != nullptr && fileClass != QTB_CATIA_FILE_CLASS_UNKNOWN && pObject->GetCatiaFileClass() == fileClass;
    *pbIsFileClass = isFileClass ? TRUE : FALSE;
    return S_OK;
}

HRESULT QTBPdmSessionUtil::CatDocTypeCatToPdm(const CATUnicodeString& usCatDocType, CATUnicodeString* pusPdmClass,
                                              const unsigned char& bReportIfUndefined)
{
    if (pusPdmClass == nullptr) {
        return E_POINTER;
    }
    QTBSchema* pSchema = nullptr;
    if (const HRESULT hr = QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema); FAILED(hr)) {
        return hr;
    }
    const QTBSchema::CatiaFileClassInfo* pInfo =
        FindFirst(pSchema, GetFileClassOfDocType(usCatDocType), QTB_BOM_TYPE_AUX_FILE, QTB_BOM_TYPE_PART);
    if (pInfo == nullptr) {
        return bReportIfUndefined != FALSE ? Report("DocTypeNotDefinedERR_1004", usCatDocType) : E_FAIL;
    }
    *pusPdmClass = pInfo->pdmClasses[1];
    return S_OK;
}

HRESULT QTBPdmSessionUtil::CatDocTypePdmToCat(const CATUnicodeString& usPdmClass, CATUnicodeString* pusCatDocType,
                                              QTBCatiaFileClass* pFileClass)
{
    QTBSchema* pSchema = nullptr;
    if (const HRESULT hr = QTBSchemaUtil::GetCurrentSchemaPtr(&pSchema); FAILED(hr)) {
        return hr;
    }
    const QTBSchemaObject* pObject = pSchema->FindObject(usPdmClass);
    if (pObject == nullptr || pObject->GetCatiaFileClass() == QTB_CATIA_FILE_CLASS_UNKNOWN) {
        return E_FAIL;
    }
    if (pusCatDocType != nullptr) {
        *pusCatDocType = GetDocTypeOfFileClass(pObject->GetCatiaFileClass());
    }
    if (pFileClass != nullptr) {
        *pFileClass = pObject->GetCatiaFileClass();
    }
    return S_OK;
}

QTBCatiaFileClass QTBPdmSessionUtil::GetFileClassOfDocType(const CATUnicodeString& usCatDocType)
{
    for (const DocType& docType : DOC_TYPES) {
        if (*docType.pusDocType == usCatDocType) {
            return docType.fileClass;
        }
    }
    return QTB_CATIA_FILE_CLASS_UNKNOWN;
}

CATUnicodeString QTBPdmSessionUtil::GetDocTypeOfFileClass(QTBCatiaFileClass fileClass)
{
    for (const DocType& docType : DOC_TYPES) {
        if (docType.fileClass == fileClass) {
            return *docType.pusDocType;
        }
    }
    return CATUnicodeString();
}
