#include "QTBInfoUtil.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <unordered_map>

#include "CATError.h"
#include "CATIDOMElement.h"
#include "CATIDOMNode.h"
#include "QTBConstants.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmObjNode.h"
#include "QTBLoadManager.h"
#include "QTBMessageUtil.h"
#include "QTBNameValueListAttr.h"
#include "QTBPdmGraphUtil.h"
#include "QTBPdmSessionUtil.h"
#include "QTBSimpleListAttr.h"
#include "QTBStringHash.h"
#include "QTBXmlUtil.h"

namespace {

const CATUnicodeString QTB_INFO("QtbInfo");

// Entries of "QtbInfo".
const CATUnicodeString ACTION_INDEX("QtbActionIndex");
const CATUnicodeString RELEVANT_BASE_CLASS("QtbRelevantBaseClass");
const CATUnicodeString VERSION("QtbVersion");
const CATUnicodeString SUB_VERSION("QtbSubVersion");
const CATUnicodeString IS_NEWEST_VERSION("QtbIsNewestVersion");
const CATUnicodeString NEWEST_VERSION("QtbNewestVersion");
const CATUnicodeString IS_EDIT_ALLOWED("QtbIsEditAllowed");
const CATUnicodeString IS_CHECK_OUT_ALLOWED("QtbIsCheckOutAllowed");
const CATUnicodeString IS_CHECK_IN_ALLOWED("QtbIsCheckInAllowed");
const CATUnicodeString IS_UPDATE_SUB_CMP_RELS_ALLOWED("QtbIsUpdateSubCmpRelsAllowed");
const CATUnicodeString CHECKED_OUT_BY("QtbCheckedOutBy");
const CATUnicodeString HAS_FILE("QtbHasFile");

// The node's "QtbInfo", null when its record has none. Looks through the name/value lists instead of asking for the one
// of that name, because that makes an error object when there is none.
QTBNameValueListAttr* FindQtbInfo(const QTBINodeAttributes_var& spINodeAttributes)
{
    CATListPtrQTBNameValueListAttr NameValueListAttrs;
    if (FAILED(spINodeAttributes->GetNameValueListAttributes(&NameValueListAttrs))) {
        return nullptr;
    }
    for (QTBNameValueListAttr* pNameValueListAttr : NameValueListAttrs) {
        CATUnicodeString usName;
        if (SUCCEEDED(pNameValueListAttr->GetName(&usName)) && usName == QTB_INFO) {
            return pNameValueListAttr;
        }
    }
    return nullptr;
}

// The entries of a node's "QtbInfo" as an operation reads them.
class InfoEntries
{
public:
    explicit InfoEntries(const QTBIPdmNode_var& spIPdmNode)
        : m_spINodeAttributes(spIPdmNode),
          m_pQtbInfo(m_spINodeAttributes != NULL_var ? FindQtbInfo(m_spINodeAttributes) : nullptr)
    {
    }

    // FALSE for a node that has no attributes at all, an empty handle for example.
    bool AreReadable() const { return m_spINodeAttributes != NULL_var; }

    // Empty when the entry is absent.
    CATUnicodeString GetText(const CATUnicodeString& usName) const
    {
        CATUnicodeString usText;
        if (m_pQtbInfo != nullptr) {
            m_pQtbInfo->GetNvValue(usName, &usText);
        }
        return usText;
    }

    // The default when the entry is absent or empty.
    unsigned char GetFlag(const CATUnicodeString& usName, unsigned char bDefault = FALSE) const
    {
        const CATUnicodeString usText = GetText(usName);
        if (usText.IsEmpty()) {
            return bDefault;
        }
        return usText == "true" || usText == "True" || usText == "TRUE" ? TRUE : FALSE;
    }

private:
    // Keeps the attribute alive.
    QTBINodeAttributes_var m_spINodeAttributes;
    const QTBNameValueListAttr* m_pQtbInfo;
};

HRESULT GetRight(const QTBIPdmNode_var& spIPdmNode, const CATUnicodeString& usEntry, unsigned char* pbIsAllowed)
{
    const InfoEntries info(spIPdmNode);
    if (pbIsAllowed == nullptr || !info.AreReadable()) {
        return E_FAIL;
    }
    *pbIsAllowed = info.GetFlag(usEntry);
    return S_OK;
}

// An entry that is of use only when it says something.
HRESULT GetFilledText(const QTBIPdmNode_var& spIPdmNode, const CATUnicodeString& usEntry, CATUnicodeString* pusText)
{
    const CATUnicodeString usText = InfoEntries(spIPdmNode).GetText(usEntry);
    if (pusText == nullptr || usText.IsEmpty()) {
        return E_FAIL;
    }
    *pusText = usText;
    return S_OK;
}

template <class T>
void Give(T* pOut, const T& value)
{
    if (pOut != nullptr) {
        *pOut = value;
    }
}

int ParseIndex(std::string_view text)
{
    int index = 0;
    const char* pEnd = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), pEnd, index);
    return result.ec == std::errc() && result.ptr == pEnd ? index : 0;
}

// All nodes of an action are stamped with the same text.
const CATUnicodeString& TextOfIndex(int iActionIndex)
{
    static int s_iActionIndex = 0;
    static CATUnicodeString s_usActionIndex("0");
    if (s_iActionIndex != iActionIndex) {
        s_usActionIndex.BuildFromNum(iActionIndex);
        s_iActionIndex = iActionIndex;
    }
    return s_usActionIndex;
}

// Adds an empty "QtbInfo" to the node's record; null when that is impossible.
QTBNameValueListAttr* AddQtbInfo(const QTBINodeAttributes_var& spINodeAttributes)
{
    unsigned char bNameIsTaken = FALSE;
    CATBaseUnknown_var spXmlElement;
    if (FAILED(spINodeAttributes->AttributeIsDefined(QTB_INFO, &bNameIsTaken)) || bNameIsTaken != FALSE ||
        FAILED(spINodeAttributes->GetXmlElement(&spXmlElement))) {
        return nullptr;
    }
    CATIDOMElement_var spRecord(spXmlElement);
    CATIDOMElement_var spAttribute;
    if (spRecord == NULL_var || FAILED(QTBXmlUtil::CreateChildNode("a", "", &spRecord, &spAttribute))) {
        return nullptr;
    }
    if (FAILED(spAttribute->SetAttribute("name", QTB_INFO)) || FAILED(spAttribute->SetAttribute("type", "nvlist")) ||
        FAILED(spINodeAttributes->SetAttributeAsXmlNode(spAttribute))) {
        CATIDOMNode_var spRecordNode(spRecord);
        CATIDOMNode_var spAttributeNode(spAttribute);
        spRecordNode->RemoveChild(spAttributeNode);
        return nullptr;
    }
    return FindQtbInfo(spINodeAttributes);
}

// Names of the instances that a relation stands for, none when its record has no such attribute. Fails for a node
// without attributes.
HRESULT ReadInstanceNames(const QTBIPdmNode_var& spIPdmNode, CATListValCATUnicodeString* pInstanceNames)
{
    if (QTBINodeAttributes_var(spIPdmNode) == NULL_var) {
        return E_FAIL;
    }
    if (FAILED(QTBInfoUtil::GetCatiaInstanceNameListFromPdm(spIPdmNode, pInstanceNames))) {
        pInstanceNames->RemoveAll();
    }
    return S_OK;
}

// The different texts of a list in order of first occurrence, and how often each occurs.
void CountTexts(const CATListValCATUnicodeString& texts, CATListValCATUnicodeString* pDifferentTexts,
                CATRawCollint* pOccurrences)
{
    std::unordered_map<CATUnicodeString, int> positions;
    for (const CATUnicodeString& usText : texts) {
        const auto [found, isNew] = positions.try_emplace(usText, pDifferentTexts->Size() + 1);
        if (isNew) {
            pDifferentTexts->Append(usText);
            pOccurrences->Append(1);
        } else {
            pOccurrences->Replace(found->second, (*pOccurrences)[found->second] + 1);
        }
    }
}

} // namespace

HRESULT QTBInfoUtil::GetActionIndex(const QTBIPdmNode_var& spIPdmNode, int* pActionIndex)
{
    const InfoEntries info(spIPdmNode);
    if (pActionIndex == nullptr || !info.AreReadable()) {
        return E_FAIL;
    }
    *pActionIndex = ParseIndex(info.GetText(ACTION_INDEX).View());
    return S_OK;
}

HRESULT QTBInfoUtil::SetActionIndex(const int& iActionIndex, QTBIPdmNode_var* pspIPdmNode)
{
    if (pspIPdmNode == nullptr) {
        return E_FAIL;
    }
    const QTBINodeAttributes_var spINodeAttributes(*pspIPdmNode);
    if (spINodeAttributes == NULL_var) {
        return E_FAIL;
    }
    QTBNameValueListAttr* pQtbInfo = FindQtbInfo(spINodeAttributes);
    if (pQtbInfo == nullptr) {
        pQtbInfo = AddQtbInfo(spINodeAttributes);
    }
    if (pQtbInfo == nullptr) {
        return E_FAIL;
    }
    const HRESULT hr = pQtbInfo->SetNvValue(ACTION_INDEX, TextOfIndex(iActionIndex));
    CATUnicodeString usKey;
    if (SUCCEEDED(hr) && SUCCEEDED(spINodeAttributes->GetKey(&usKey))) {
        g_QTBLoadManager.PdmNodeWasRead(usKey);
    }
    return hr;
}

HRESULT QTBInfoUtil::GetRelevantBaseClassFromPdm(const QTBIPdmNode_var& spIPdmNode, CATUnicodeString* pusClassName)
{
    return GetFilledText(spIPdmNode, RELEVANT_BASE_CLASS, pusClassName);
}

HRESULT QTBInfoUtil::GetPdmVersionInfo(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsNewest,
                                       unsigned char* pbHasSubVersion, CATUnicodeString* pusVersion,
                                       CATUnicodeString* pusNewestVersion, CATUnicodeString* pusSubVersion)
{
    const InfoEntries info(spIPdmNode);
    const CATUnicodeString usVersion = info.GetText(VERSION);
    const CATUnicodeString usSubVersion = info.GetText(SUB_VERSION);
    CATUnicodeString usNewestVersion = info.GetText(NEWEST_VERSION);
    if (usVersion.IsEmpty() && usNewestVersion.IsEmpty() && info.GetText(IS_NEWEST_VERSION).IsEmpty()) {
        return E_FAIL;
    }
    const bool bNoneIsNewer = usNewestVersion.IsEmpty() || usNewestVersion == usVersion;
    const unsigned char bIsNewest = info.GetFlag(IS_NEWEST_VERSION, bNoneIsNewer ? TRUE : FALSE);
    if (usNewestVersion.IsEmpty() && bIsNewest != FALSE) {
        usNewestVersion = usVersion;
    }
    Give(pbIsNewest, bIsNewest);
    Give(pbHasSubVersion, usSubVersion.IsEmpty() ? FALSE : TRUE);
    Give(pusVersion, usVersion);
    Give(pusNewestVersion, usNewestVersion);
    Give(pusSubVersion, usSubVersion);
    return S_OK;
}

HRESULT QTBInfoUtil::GetQtbVersion(const QTBIPdmNode_var& spIPdmNode, CATUnicodeString* pusVersion)
{
    return GetFilledText(spIPdmNode, VERSION, pusVersion);
}

HRESULT QTBInfoUtil::PdmObjectIsEditAllowed(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed)
{
    return GetRight(spIPdmNode, IS_EDIT_ALLOWED, pbIsAllowed);
}

HRESULT QTBInfoUtil::PdmObjectIsCheckOutAllowed(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed,
                                                CATUnicodeString* pusUser)
{
    const HRESULT hr = GetRight(spIPdmNode, IS_CHECK_OUT_ALLOWED, pbIsAllowed);
    if (SUCCEEDED(hr) && pusUser != nullptr) {
        *pusUser = InfoEntries(spIPdmNode).GetText(CHECKED_OUT_BY);
    }
    return hr;
}

HRESULT QTBInfoUtil::PdmObjectIsCheckInAllowed(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed)
{
    return GetRight(spIPdmNode, IS_CHECK_IN_ALLOWED, pbIsAllowed);
}

HRESULT QTBInfoUtil::PdmObjectIsUpdateSubCmpRelsAllowed(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed)
{
    return GetRight(spIPdmNode, IS_UPDATE_SUB_CMP_RELS_ALLOWED, pbIsAllowed);
}

HRESULT QTBInfoUtil::PdmDocumentHasFile(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbHasFile)
{
    const InfoEntries info(spIPdmNode);
    if (pbHasFile == nullptr || !info.AreReadable()) {
        return E_FAIL;
    }
    if (!info.GetText(HAS_FILE).IsEmpty()) {
        *pbHasFile = info.GetFlag(HAS_FILE);
        return S_OK;
    }
    unsigned char bIsFileNode = FALSE;
    const QTBIPdmObjNode_var spIPdmObjNode(spIPdmNode);
    if (spIPdmObjNode != NULL_var &&
        FAILED(QTBPdmGraphUtil::IsCatiaFileNode(spIPdmObjNode, &bIsFileNode, nullptr, nullptr))) {
        bIsFileNode = FALSE;
    }
    *pbHasFile = bIsFileNode;
    return S_OK;
}

HRESULT QTBInfoUtil::GetCatiaPartNumberFromPdm(const QTBIPdmNode_var& spIPdmNode, CATUnicodeString* pusPartNumber,
                                               const unsigned char& bReportIfUndefined,
                                               const unsigned char& bEmptyIsUndefined)
{
    const QTBINodeAttributes_var spINodeAttributes(spIPdmNode);
    CATUnicodeString usAttrName;
    if (pusPartNumber == nullptr || spINodeAttributes == NULL_var ||
        FAILED(QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_PART_NUMBER_ATTR, &usAttrName, FALSE))) {
        return E_FAIL;
    }
    CATUnicodeString usDataType;
    CATUnicodeString usPartNumber;
    if (SUCCEEDED(spINodeAttributes->GetAttributeDataType(usAttrName, &usDataType)) && usDataType == usSTRING &&
        SUCCEEDED(spINodeAttributes->GetStringAttributeValue(usAttrName, &usPartNumber, FALSE, FALSE)) &&
        (bEmptyIsUndefined == FALSE || !usPartNumber.IsEmpty())) {
        *pusPartNumber = usPartNumber;
        return S_OK;
    }
    if (bReportIfUndefined == FALSE) {
        return E_FAIL;
    }
    CATUnicodeString usKey;
    spINodeAttributes->GetKey(&usKey);
    return CATError::GetReturn(2, QTBMessageUtil::AttributeNotDefinedError(usKey, usAttrName), nullptr, __FILE__,
                               __LINE__);
}

HRESULT QTBInfoUtil::CatiaPartNumberFromPdmIsDefined(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsDefined)
{
    if (pbIsDefined == nullptr || QTBINodeAttributes_var(spIPdmNode) == NULL_var) {
        return E_FAIL;
    }
    CATUnicodeString usPartNumber;
    *pbIsDefined = SUCCEEDED(GetCatiaPartNumberFromPdm(spIPdmNode, &usPartNumber, FALSE, TRUE)) ? TRUE : FALSE;
    return S_OK;
}

HRESULT QTBInfoUtil::GetCatiaInstanceNameListFromPdm(const QTBIPdmNode_var& spIPdmNode,
                                                     CATListValCATUnicodeString* pInstanceNames)
{
    const QTBINodeAttributes_var spINodeAttributes(spIPdmNode);
    CATUnicodeString usAttrName;
    CATUnicodeString usDataType;
    if (pInstanceNames == nullptr || spINodeAttributes == NULL_var ||
        FAILED(
            QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_INSTANCE_NAME_ATTR, &usAttrName, FALSE)) ||
        FAILED(spINodeAttributes->GetAttributeDataType(usAttrName, &usDataType))) {
        return E_FAIL;
    }
    CATListValCATUnicodeString InstanceNames;
    if (usDataType == usSTRING) {
        CATUnicodeString usInstanceName;
        if (FAILED(spINodeAttributes->GetStringAttributeValue(usAttrName, &usInstanceName, FALSE, FALSE))) {
            return E_FAIL;
        }
        InstanceNames.Append(usInstanceName);
    } else if (usDataType == usSIMPLE_LIST) {
        QTBSimpleListAttr* pSimpleListAttr = nullptr;
        int iSize = 0;
        if (FAILED(spINodeAttributes->GetSimpleListAttributePtr(usAttrName, &pSimpleListAttr)) ||
            FAILED(pSimpleListAttr->GetSize(&iSize))) {
            return E_FAIL;
        }
        for (int i = 1; i <= iSize; ++i) {
            CATUnicodeString usInstanceName;
            if (FAILED(pSimpleListAttr->GetValue(i, &usInstanceName))) {
                return E_FAIL;
            }
            InstanceNames.Append(usInstanceName);
        }
    } else {
        return E_FAIL;
    }
    *pInstanceNames = InstanceNames;
    return S_OK;
}

HRESULT QTBInfoUtil::CatiaInstanceNameFromPdmIsDefined(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsDefined)
{
    CATListValCATUnicodeString InstanceNames;
    if (pbIsDefined == nullptr || FAILED(ReadInstanceNames(spIPdmNode, &InstanceNames))) {
        return E_FAIL;
    }
    *pbIsDefined = std::any_of(InstanceNames.begin(), InstanceNames.end(),
                               [](const CATUnicodeString& usName) { return !usName.IsEmpty(); })
                       ? TRUE
                       : FALSE;
    return S_OK;
}

HRESULT QTBInfoUtil::CatiaInstanceNameIsUsedInRelation(const QTBIPdmNode_var& spIPdmNodeOnRelation,
                                                       const CATUnicodeString& usInstanceName, unsigned char* pbIsUsed)
{
    const QTBINodeAttributes_var spINodeAttributes(spIPdmNodeOnRelation);
    if (pbIsUsed == nullptr || spINodeAttributes == NULL_var) {
        return E_FAIL;
    }
    *pbIsUsed = FALSE;
    CATUnicodeString usAttrName;
    CATUnicodeString usDataType;
    if (usInstanceName.IsEmpty() ||
        FAILED(
            QTBPdmSessionUtil::GetPdmSessionStringAttrValue(QTB_PDM_SESSION_INSTANCE_NAME_ATTR, &usAttrName, FALSE)) ||
        FAILED(spINodeAttributes->GetAttributeDataType(usAttrName, &usDataType))) {
        return S_OK;
    }
    // One relation may place thousands of instances: the list is searched where it is.
    CATUnicodeString usOnlyName;
    QTBSimpleListAttr* pSimpleListAttr = nullptr;
    if (usDataType == usSTRING) {
        *pbIsUsed = SUCCEEDED(spINodeAttributes->GetStringAttributeValue(usAttrName, &usOnlyName, FALSE, FALSE)) &&
                            usOnlyName == usInstanceName
                        ? TRUE
                        : FALSE;
    } else if (usDataType == usSIMPLE_LIST) {
        *pbIsUsed = SUCCEEDED(spINodeAttributes->GetSimpleListAttributePtr(usAttrName, &pSimpleListAttr)) &&
                            pSimpleListAttr->Contains(usInstanceName)
                        ? TRUE
                        : FALSE;
    }
    return S_OK;
}

HRESULT QTBInfoUtil::RelationHasEmptyInstanceName(const QTBIPdmNode_var& spIPdmNodeOnRelation,
                                                  unsigned char* pbHasEmptyName)
{
    CATListValCATUnicodeString InstanceNames;
    if (pbHasEmptyName == nullptr || FAILED(ReadInstanceNames(spIPdmNodeOnRelation, &InstanceNames))) {
        return E_FAIL;
    }
    *pbHasEmptyName = InstanceNames.Size() == 0 || InstanceNames.Locate("") > 0 ? TRUE : FALSE;
    return S_OK;
}

HRESULT QTBInfoUtil::IsMultiQuantityRelation(const QTBIPdmNode_var& spIPdmNodeOnRelation, unsigned char* pbIsMulti,
                                             CATListValCATUnicodeString* pInstanceNames,
                                             CATListValCATUnicodeString* pDifferentNames, CATRawCollint* pOccurrences)
{
    CATListValCATUnicodeString InstanceNames;
    if (pbIsMulti == nullptr || FAILED(ReadInstanceNames(spIPdmNodeOnRelation, &InstanceNames))) {
        return E_FAIL;
    }
    *pbIsMulti = InstanceNames.Size() > 1 ? TRUE : FALSE;
    Give(pInstanceNames, InstanceNames);
    if (pDifferentNames != nullptr || pOccurrences != nullptr) {
        CATListValCATUnicodeString DifferentNames;
        CATRawCollint Occurrences;
        CountTexts(InstanceNames, &DifferentNames, &Occurrences);
        Give(pDifferentNames, DifferentNames);
        Give(pOccurrences, Occurrences);
    }
    return S_OK;
}
