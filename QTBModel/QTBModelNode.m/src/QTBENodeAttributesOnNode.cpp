#include "QTBENodeAttributesOnNode.h"

#include "CATIDOMElement.h"
#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBGlobVarsUtil.h"
#include "QTBHashTableNvSetAttribute.h"
#include "QTBINode.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmNodeCont.h"
#include "QTBLoadManager.h"
#include "QTBMessageUtil.h"
#include "QTBSchemaAttribute.h"
#include "QTBSchemaDataSource.h"
#include "QTBSchemaUtil.h"
#include "QTBSchemaValue.h"
#include "QTBStringHash.h"
#include "QTBTraceUtil.h"
#include "QTBXmlUtil.h"

namespace {

// Records with more attributes than this find a name through an index.
constexpr int NAMES_TO_WALK = 48;

// Asked for every attribute of every record.
const CATUnicodeString ATTRIBUTE_TAG("a");
const CATUnicodeString NAME_ATTRIBUTE("name");
const CATUnicodeString NOTHING;

// Gives up an element that was appended to a list of that size.
template <class List>
void TakeBack(List* pList, int formerSize)
{
    if (pList->Size() > formerSize) {
        pList->RemovePosition(pList->Size());
    }
}

} // namespace

// The node text in the message about a missing attribute differs by type, and is meant to.
struct QTBENodeAttributesOnNode::StringType
{
    using Attribute = QTBStringAttr;
    static constexpr auto Attributes = &QTBENodeAttributesOnNode::m_StringAttrs;
    static constexpr bool FIND_BY_HASH = true;
    static constexpr const char* GET_NAME = "m_StringAttrs[i]->GetName";
    static constexpr const char* LIST_GIVEN = "pStringAttrs != NULL";
    static constexpr const char* POINTER_EMPTY = "*ppStringAttr == NULL";
    static constexpr const char* POINTER_SET = "*ppStringAttr != NULL";
    static constexpr const char* NEW_IS_VALID = "pNewStringAttr->IsValid()";
    static constexpr const char* NEW_GET_NAME = "pNewStringAttr->GetName";

    static const CATUnicodeString& GetDataType() { return usSTRING; }
    static HRESULT GetNodeText(QTBENodeAttributesOnNode& node, CATUnicodeString* pusNodeText)
    {
        *pusNodeText = node.m_Key;
        return QTB_SUCCESS;
    }
};

struct QTBENodeAttributesOnNode::SimpleListType
{
    using Attribute = QTBSimpleListAttr;
    static constexpr auto Attributes = &QTBENodeAttributesOnNode::m_SimpleListAttrs;
    static constexpr bool FIND_BY_HASH = false;
    static constexpr const char* GET_NAME = "m_SimpleListAttrs[i]->GetName";
    static constexpr const char* LIST_GIVEN = "pSimpleListAttrs != NULL";
    static constexpr const char* POINTER_EMPTY = "*ppSimpleListAttr == NULL";
    static constexpr const char* POINTER_SET = "*ppSimpleListAttr != NULL";
    static constexpr const char* NEW_IS_VALID = "pNewSimpleListAttr->IsValid()";
    static constexpr const char* NEW_GET_NAME = "pNewSimpleListAttr->GetName";

    static const CATUnicodeString& GetDataType() { return usSIMPLE_LIST; }
    static HRESULT GetNodeText(QTBENodeAttributesOnNode& node, CATUnicodeString* pusNodeText)
    {
        const QTBINode_var spINodeOnThis(&node);
        QTB_INTERFACE(spINodeOnThis);
        QTB_CALL(spINodeOnThis->GetPdmClass, pusNodeText);
        return QTB_SUCCESS;
    }
};

struct QTBENodeAttributesOnNode::NameValueListType
{
    using Attribute = QTBNameValueListAttr;
    static constexpr auto Attributes = &QTBENodeAttributesOnNode::m_NameValueListAttrs;
    static constexpr bool FIND_BY_HASH = false;
    static constexpr const char* GET_NAME = "m_NameValueListAttrs[i]->GetName";
    static constexpr const char* LIST_GIVEN = "pNameValueListAttrs != NULL";
    static constexpr const char* POINTER_EMPTY = "*ppNameValueListAttr == NULL";
    static constexpr const char* POINTER_SET = "*ppNameValueListAttr != NULL";
    static constexpr const char* NEW_IS_VALID = "pNewNameValueListAttr->IsValid()";
    static constexpr const char* NEW_GET_NAME = "pNewNameValueListAttr->GetName";

    static const CATUnicodeString& GetDataType() { return usNAME_VALUE_LIST; }
    static HRESULT GetNodeText(QTBENodeAttributesOnNode& node, CATUnicodeString* pusNodeText)
    {
        const QTBINodeAttributes_var spINodeAttributesOnThis(&node);
        QTB_INTERFACE(spINodeAttributesOnThis);
        CATUnicodeString usKey;
        QTB_CALL(spINodeAttributesOnThis->GetKey, &usKey);
        *pusNodeText = "Key:<" + usKey + ">";
        return QTB_SUCCESS;
    }
};

struct QTBENodeAttributesOnNode::TableType
{
    using Attribute = QTBTableAttr;
    static constexpr auto Attributes = &QTBENodeAttributesOnNode::m_TableAttrs;
    static constexpr bool FIND_BY_HASH = false;
    static constexpr const char* GET_NAME = "m_TableAttrs[i]->GetName";
    static constexpr const char* LIST_GIVEN = "pTableAttrs != NULL";
    static constexpr const char* POINTER_EMPTY = "*ppTableAttr == NULL";
    static constexpr const char* POINTER_SET = "*ppTableAttr != NULL";
    static constexpr const char* NEW_IS_VALID = "pNewTableAttr->IsValid()";
    static constexpr const char* NEW_GET_NAME = "pNewTableAttr->GetName";

    static const CATUnicodeString& GetDataType() { return usTABLE; }
    static HRESULT GetNodeText(QTBENodeAttributesOnNode& node, CATUnicodeString* pusNodeText)
    {
        const QTBINode_var spINodeOnThis(&node);
        QTB_INTERFACE(spINodeOnThis);
        QTB_CALL(spINodeOnThis->GetNodeDescriptionString, pusNodeText);
        return QTB_SUCCESS;
    }
};

struct QTBENodeAttributesOnNode::ObjectType
{
    using Attribute = QTBObjectAttr;
    static constexpr auto Attributes = &QTBENodeAttributesOnNode::m_ObjectAttrs;
    static constexpr bool FIND_BY_HASH = false;
    static constexpr const char* GET_NAME = "m_ObjectAttrs[i]->GetName";
    static constexpr const char* LIST_GIVEN = "pObjectAttrs != NULL";
    static constexpr const char* POINTER_EMPTY = "*ppObjectAttr == NULL";
    static constexpr const char* POINTER_SET = "*ppObjectAttr != NULL";
    static constexpr const char* NEW_IS_VALID = "pNewObjectAttr->IsValid()";
    static constexpr const char* NEW_GET_NAME = "pNewObjectAttr->GetName";

    static const CATUnicodeString& GetDataType() { return usOBJECT; }
    static HRESULT GetNodeText(QTBENodeAttributesOnNode& node, CATUnicodeString* pusNodeText)
    {
        return StringType::GetNodeText(node, pusNodeText);
    }
};

QTBENodeAttributesOnNode::QTBENodeAttributesOnNode() = default;

QTBENodeAttributesOnNode::~QTBENodeAttributesOnNode()
{
    CleanUpLists();
}

unsigned int* QTBENodeAttributesOnNode::GetHashKey()
{
    return &m_HashKey;
}

HRESULT QTBENodeAttributesOnNode::SetKey(const CATUnicodeString& usKey)
{
    m_Key = usKey;
    m_HashKey = 0;
    m_HashKey %= m_Key;
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::GetKey(CATUnicodeString* pusKey)
{
    *pusKey = m_Key;
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::SetXmlElement(const CATBaseUnknown_var& spXmlElement)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::SetXmlElement");
    // The argument may be the handle that the clean-up gives up.
    const CATBaseUnknown_var spNewXmlElement(spXmlElement);
    CleanUpLists();
    m_spXmlElement = spNewXmlElement;

    CATListValCATBaseUnknown_var ChildAttributeNodes;
    QTB_CALL(QTBXmlUtil::GetElements, m_spXmlElement, ATTRIBUTE_TAG, NOTHING, NOTHING, &ChildAttributeNodes);
    const int attributeCount = ChildAttributeNodes.Size();
    m_AttributeNames.Reserve(attributeCount);
    m_AttributeDataTypes.Reserve(attributeCount);
    m_AllAttrs.Reserve(attributeCount);
    // Most attributes are strings.
    m_StringAttrs.Reserve(attributeCount);
    for (const CATBaseUnknown_var& spChildAttributeNode : ChildAttributeNodes) {
        const CATIDOMElement_var spIDOMElementOnChildAttributeNode(spChildAttributeNode);
        QTB_INTERFACE(spIDOMElementOnChildAttributeNode);
        QTB_CALL(SetAttributeAsXmlNode, spIDOMElementOnChildAttributeNode);
    }
    QTB_ASSERT(m_AttributeNames.Size() == m_AttributeDataTypes.Size());
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::GetXmlElement(CATBaseUnknown_var* pspXmlElement)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetXmlElement");
    *pspXmlElement = m_spXmlElement;
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::SetAttributeAsXmlNode(const CATBaseUnknown_var& spAttributeElement)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::SetAttributeAsXmlNode");
    CATIDOMElement_var spIDOMElement(spAttributeElement);
    QTB_INTERFACE(spIDOMElement);
    unsigned char bHasNameAttribute = FALSE;
    QTB_CALL(spIDOMElement->HasAttribute, NAME_ATTRIBUTE, &bHasNameAttribute);
    QTB_ASSERT(bHasNameAttribute);
    CATUnicodeString usName;
    QTB_CALL(spIDOMElement->GetAttribute, NAME_ATTRIBUTE, &usName);

    const unsigned char bAttributeIsAlreadyDefined = LocateName(usName) > 0 ? TRUE : FALSE;
    QTB_ASSERT(bAttributeIsAlreadyDefined == FALSE);

    CATUnicodeString usDataType;
    QTB_CALL(QTBXmlUtil::GetNodeAttributeDataType, spIDOMElement, &usDataType);
    if (usDataType == usSTRING) {
        return FileNewAttribute<StringType>(std::make_unique<QTBStringAttr>(&spIDOMElement));
    }
    if (usDataType == usSIMPLE_LIST) {
        return FileNewAttribute<SimpleListType>(std::make_unique<QTBSimpleListAttr>(&spIDOMElement));
    }
    if (usDataType == usNAME_VALUE_LIST) {
        return FileNewAttribute<NameValueListType>(std::make_unique<QTBNameValueListAttr>(&spIDOMElement));
    }
    if (usDataType == usTABLE) {
        return FileNewAttribute<TableType>(std::make_unique<QTBTableAttr>(&spIDOMElement));
    }
    if (usDataType == usOBJECT) {
        return CreateObjectAttribute(spIDOMElement, usName);
    }
    // Object lists are accepted and deliberately not read.
    QTB_ASSERT_AS("FALSE", usDataType == usOBJECT_LIST);
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::CreateObjectAttribute(const CATIDOMElement_var& spIDOMElement,
                                                        const CATUnicodeString& usName)
{
    QTBIPdmNodeCont_var spIPdmNodeCont;
    QTB_CALL(QTBGlobVarsUtil::GetGlobalPdmNodeContainer, &spIPdmNodeCont);
    const CATUnicodeString usEmbeddedKey = m_Key + "." + usName;
    CATBaseUnknown_var spNewPdmObjNode;
    if (const HRESULT hr = FindFormerEmbeddedNode(spIPdmNodeCont, usEmbeddedKey, &spNewPdmObjNode); FAILED(hr)) {
        return hr;
    }
    if (spNewPdmObjNode == NULL_var) {
        QTB_CALL(spIPdmNodeCont->CreatePdmObjNode, usEmbeddedKey, &spNewPdmObjNode, TRUE);
    }
    const QTBINodeAttributes_var spINodeAttributesOnNewPdmObjNode(spNewPdmObjNode);
    QTB_INTERFACE(spINodeAttributesOnNewPdmObjNode);

    CATListValCATBaseUnknown_var ChildXmlNodes;
    QTB_CALL(QTBXmlUtil::GetElements, spIDOMElement, "o", "", "", &ChildXmlNodes);
    QTB_ASSERT(ChildXmlNodes.Size() <= 1);
    if (ChildXmlNodes.Size() == 0) {
        QTB_CALL(QTBXmlUtil::GetElements, spIDOMElement, "embedded", "", "", &ChildXmlNodes);
        QTB_ASSERT(ChildXmlNodes.Size() == 1);
    }
    CATIDOMElement_var spIDOMElementOnChildObjectNode(ChildXmlNodes[1]);
    QTB_INTERFACE(spIDOMElementOnChildObjectNode);
    CATBaseUnknown_var spNodeAttributes(spINodeAttributesOnNewPdmObjNode);
    return FileNewAttribute<ObjectType>(
        std::make_unique<QTBObjectAttr>(&spIDOMElementOnChildObjectNode, &spNodeAttributes));
}

// An item that is read again brings its embedded objects again. Their nodes stay, with the relations and rep nodes that
// they have, and get new attributes; new ones would leave those of all readings in the graph, which finds the oldest.
// Items of the PDM system, which have a PDM key, are nobody's embedded objects.
HRESULT QTBENodeAttributesOnNode::FindFormerEmbeddedNode(const QTBIPdmNodeCont_var& spIPdmNodeCont,
                                                         const CATUnicodeString& usEmbeddedKey,
                                                         CATBaseUnknown_var* pspBaseUnknownOnFormerNode)
{
    QTBIPdmNode_var spIPdmNodeOnFormer;
    unsigned char bNodeFound = FALSE;
    QTB_CALL(spIPdmNodeCont->GetPdmNodeByKey, usEmbeddedKey, &spIPdmNodeOnFormer, &bNodeFound);
    if (bNodeFound != FALSE && spIPdmNodeOnFormer->GetPdmKey().IsEmpty()) {
        *pspBaseUnknownOnFormerNode = spIPdmNodeOnFormer;
    }
    return QTB_SUCCESS;
}

template <class Type>
HRESULT QTBENodeAttributesOnNode::FileNewAttribute(std::unique_ptr<typename Type::Attribute> pNewAttribute)
{
    QTB_ASSERT_AS(Type::NEW_IS_VALID, pNewAttribute->IsValid());
    CATUnicodeString usName;
    QTB_RESULT_AS(Type::NEW_GET_NAME, pNewAttribute->GetName(&usName));
    CATListPtr<typename Type::Attribute>& TypedAttrs = this->*Type::Attributes;
    const int count = m_AllAttrs.Size();
    const int typedCount = TypedAttrs.Size();
    try {
        m_AttributeNames.Append(usName);
        m_AttributeDataTypes.Append(Type::GetDataType());
        if (m_pNamePositions != NULL) {
            m_pNamePositions->emplace(usName, m_AttributeNames.Size());
        }
        TypedAttrs.Append(pNewAttribute.get());
        m_AllAttrs.Append(pNewAttribute.get());
    } catch (...) {
        // All lists have it, or when memory runs out none.
        TakeBack(&m_AttributeNames, count);
        TakeBack(&m_AttributeDataTypes, count);
        m_pNamePositions.reset();
        TakeBack(&TypedAttrs, typedCount);
        throw;
    }
    static_cast<void>(pNewAttribute.release());
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::GetAllAttributeNames(CATListValCATUnicodeString* pNames)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetAllAttributeNames");
    *pNames = m_AttributeNames;
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::AttributeIsDefined(const CATUnicodeString& usName, unsigned char* pbDefined)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::AttributeIsDefined");
    *pbDefined = LocateName(usName) > 0 ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::GetAttribute(const CATUnicodeString& usName, QTBNodeAttr** ppNodeAttr)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetAttribute");
    QTB_ASSERT(ppNodeAttr != NULL);
    QTB_ASSERT(*ppNodeAttr == NULL);
    // The names stand in the order of the attributes.
    if (const int position = LocateName(usName); position > 0) {
        CATUnicodeString usCurrentName;
        QTB_RESULT_AS("m_AllAttrs[i]->GetName", m_AllAttrs[position]->GetName(&usCurrentName));
        if (usCurrentName == usName) {
            *ppNodeAttr = m_AllAttrs[position];
            return QTB_SUCCESS;
        }
    }
    const QTBINode_var spINodeOnThis(this);
    QTB_INTERFACE(spINodeOnThis);
    CATUnicodeString usDescription;
    QTB_CALL(spINodeOnThis->GetNodeDescriptionString, &usDescription);
    return FailAsNotDefined(usDescription, usName);
}

HRESULT QTBENodeAttributesOnNode::GetAttributeDataType(const CATUnicodeString& usName, CATUnicodeString* pusDataType)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetAttributeDataType");
    const int position = LocateName(usName);
    if (position == 0) {
        return QTB_QUIET_FAILURE;
    }
    *pusDataType = m_AttributeDataTypes[position];
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::GetStringAttributeNames(CATListValCATUnicodeString* pNames)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetStringAttributeNames");
    return GetNamesOfType<StringType>(pNames);
}

HRESULT QTBENodeAttributesOnNode::SetStringAttributeValue(const CATUnicodeString& usName,
                                                          const CATUnicodeString& usValue)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::SetStringAttributeValue");
    QTBStringAttr* pStringAttr = NULL;
    QTB_CALL(GetStringAttributePtr, usName, &pStringAttr);
    // The pointer is given whenever that succeeds. NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage)
    QTB_CALL(pStringAttr->SetValue, usValue);
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::GetStringAttributeValue(const CATUnicodeString& usName, CATUnicodeString* pusValue,
                                                          unsigned char bTrySimpleList, unsigned char bShowNlsValue)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetStringAttributeValue");
    QTBStringAttr* pStringAttr = NULL;
    HRESULT hr = GetStringAttributePtr(usName, &pStringAttr);
    if (FAILED(hr) || pStringAttr == NULL) {
        if (bTrySimpleList == FALSE) {
            return hr;
        }
        QTBSimpleListAttr* pSimpleListAttr = NULL;
        hr = GetSimpleListAttributePtr(usName, &pSimpleListAttr);
        if (FAILED(hr) || pSimpleListAttr == NULL) {
            return hr;
        }
        int size = 0;
        hr = pSimpleListAttr->GetSize(&size);
        if (FAILED(hr) || size == 0) {
            return hr;
        }
        QTB_CALL(pSimpleListAttr->GetValue, 1, pusValue);
        return QTB_SUCCESS;
    }
    QTB_CALL(pStringAttr->GetValue, pusValue);
    if (bShowNlsValue != FALSE) {
        ReplaceByDisplayName(usName, pusValue);
    }
    return QTB_SUCCESS;
}

// Whatever fails here leaves the value as it is. The walk goes on behind a match: a display name may be a stored name
// of the source again.
void QTBENodeAttributesOnNode::ReplaceByDisplayName(const CATUnicodeString& usName, CATUnicodeString* pusValue)
{
    unsigned char bShowDataSourceNlsValues = FALSE;
    if (FAILED(QTBSchemaUtil::ShowDataSourceNlsValues(&bShowDataSourceNlsValues)) ||
        bShowDataSourceNlsValues == FALSE) {
        return;
    }
    QTBSchemaAttribute* pSchemaAttribute = NULL;
    if (FAILED(QTBSchemaUtil::GetAttributePtr(usName, &pSchemaAttribute, FALSE)) || pSchemaAttribute == NULL) {
        return;
    }
    const CATUnicodeString usDataSourceName = pSchemaAttribute->GetDataSourceName();
    QTBSchemaDataSource* pDataSource = NULL;
    if (usDataSourceName == "" || FAILED(QTBSchemaUtil::GetDataSourcePtr(usDataSourceName, &pDataSource)) ||
        pDataSource == NULL) {
        return;
    }
    for (int i = 1; i <= pDataSource->GetValuesCount(); ++i) {
        QTBSchemaValue* pValue = NULL;
        if (FAILED(pDataSource->GetValuePtr(i, &pValue)) || pValue == NULL) {
            QTB_TRACE("QTBENodeAttributesOnNode::GetStringAttributeValue -> pDataSource->GetValuePtr (" << i << ") !");
            continue;
        }
        if (pValue->GetName() == *pusValue && !(pValue->GetDisplayName() == "")) {
            const CATUnicodeString usDisplayValue = QTBSchemaUtil::GetCurrentSchemaNlsString(pValue->GetDisplayName());
            QTB_TRACE("QTBENodeAttributesOnNode::GetStringAttributeValue -> changing attribute value from '"
                      << *pusValue << "' to '" << usDisplayValue << "'.");
            *pusValue = usDisplayValue;
        }
    }
}

HRESULT QTBENodeAttributesOnNode::GetStringAttributeValues(CATListValCATUnicodeString* pValues)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetStringAttributeValues");
    QTB_ASSERT(pValues);
    pValues->RemoveAll();
    for (const QTBStringAttr* pStringAttr : m_StringAttrs) {
        CATUnicodeString usValue;
        QTB_RESULT_AS("m_StringAttrs[i]->GetValue", pStringAttr->GetValue(&usValue));
        pValues->Append(usValue);
    }
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::GetStringAttributePtr(const CATUnicodeString& usName, QTBStringAttr** ppStringAttr)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetStringAttributePtr");
    return FindOfType<StringType>(usName, ppStringAttr);
}

HRESULT QTBENodeAttributesOnNode::GetStringAttributes(CATListPtrQTBStringAttr* pStringAttrs)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetStringAttributes");
    return GetAttributesOfType<StringType>(pStringAttrs);
}

HRESULT QTBENodeAttributesOnNode::GetSimpleListAttributeNames(CATListValCATUnicodeString* pNames)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetSimpleListAttributeNames");
    return GetNamesOfType<SimpleListType>(pNames);
}

HRESULT QTBENodeAttributesOnNode::GetSimpleListAttributePtr(const CATUnicodeString& usName,
                                                            QTBSimpleListAttr** ppSimpleListAttr)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetSimpleListAttributePtr");
    return FindOfType<SimpleListType>(usName, ppSimpleListAttr);
}

HRESULT QTBENodeAttributesOnNode::GetSimpleListAttributes(CATListPtrQTBSimpleListAttr* pSimpleListAttrs)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetSimpleListAttributes");
    return GetAttributesOfType<SimpleListType>(pSimpleListAttrs);
}

HRESULT QTBENodeAttributesOnNode::GetNameValueListAttributeNames(CATListValCATUnicodeString* pNames)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetNameValueListAttributeNames");
    return GetNamesOfType<NameValueListType>(pNames);
}

HRESULT QTBENodeAttributesOnNode::GetNameValueListAttributePtr(const CATUnicodeString& usName,
                                                               QTBNameValueListAttr** ppNameValueListAttr)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetNameValueListAttributePtr");
    return FindOfType<NameValueListType>(usName, ppNameValueListAttr);
}

HRESULT QTBENodeAttributesOnNode::GetNameValueListAttributes(CATListPtrQTBNameValueListAttr* pNameValueListAttrs)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetNameValueListAttributes");
    return GetAttributesOfType<NameValueListType>(pNameValueListAttrs);
}

HRESULT QTBENodeAttributesOnNode::GetTableAttributeNames(CATListValCATUnicodeString* pNames)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetTableAttributeNames");
    return GetNamesOfType<TableType>(pNames);
}

HRESULT QTBENodeAttributesOnNode::GetTableAttributePtr(const CATUnicodeString& usName, QTBTableAttr** ppTableAttr)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetTableAttributePtr");
    return FindOfType<TableType>(usName, ppTableAttr);
}

HRESULT QTBENodeAttributesOnNode::GetTableAttributes(CATListPtrQTBTableAttr* pTableAttrs)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetTableAttributes");
    return GetAttributesOfType<TableType>(pTableAttrs);
}

HRESULT QTBENodeAttributesOnNode::GetObjectAttributeNames(CATListValCATUnicodeString* pNames)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetObjectAttributeNames");
    return GetNamesOfType<ObjectType>(pNames);
}

HRESULT QTBENodeAttributesOnNode::GetObjectAttributePtr(const CATUnicodeString& usName, QTBObjectAttr** ppObjectAttr)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetObjectAttributePtr");
    return FindOfType<ObjectType>(usName, ppObjectAttr);
}

HRESULT QTBENodeAttributesOnNode::GetObjectAttributes(CATListPtrQTBObjectAttr* pObjectAttrs)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetObjectAttributes");
    return GetAttributesOfType<ObjectType>(pObjectAttrs);
}

template <class Type>
HRESULT QTBENodeAttributesOnNode::GetNamesOfType(CATListValCATUnicodeString* pNames)
{
    QTB_ASSERT(pNames != NULL);
    pNames->RemoveAll();
    for (const auto* pAttribute : this->*Type::Attributes) {
        CATUnicodeString usName;
        QTB_RESULT_AS(Type::GET_NAME, pAttribute->GetName(&usName));
        pNames->Append(usName);
    }
    return QTB_SUCCESS;
}

template <class Type>
HRESULT QTBENodeAttributesOnNode::GetAttributesOfType(CATListPtr<typename Type::Attribute>* pAttributes)
{
    QTB_ASSERT_AS(Type::LIST_GIVEN, pAttributes != NULL);
    *pAttributes = this->*Type::Attributes;
    return QTB_SUCCESS;
}

template <class Type>
HRESULT QTBENodeAttributesOnNode::FindOfType(const CATUnicodeString& usName, typename Type::Attribute** ppAttribute)
{
    QTB_ASSERT_AS(Type::POINTER_EMPTY, *ppAttribute == NULL);
    unsigned int hashKey = 0;
    if constexpr (Type::FIND_BY_HASH) {
        hashKey %= usName;
    }
    for (typename Type::Attribute* pAttribute : this->*Type::Attributes) {
        if constexpr (Type::FIND_BY_HASH) {
            if (pAttribute == NULL || pAttribute->GetHashKey() != hashKey) {
                continue;
            }
        }
        CATUnicodeString usCurrentName;
        QTB_RESULT_AS(Type::GET_NAME, pAttribute->GetName(&usCurrentName));
        if (usCurrentName == usName) {
            *ppAttribute = pAttribute;
            QTB_ASSERT_AS(Type::POINTER_SET, *ppAttribute != NULL);
            return QTB_SUCCESS;
        }
    }
    CATUnicodeString usNodeText;
    if (const HRESULT hr = Type::GetNodeText(*this, &usNodeText); FAILED(hr)) {
        return hr;
    }
    return FailAsNotDefined(usNodeText, usName);
}

int QTBENodeAttributesOnNode::LocateName(const CATUnicodeString& usName)
{
    if (m_AttributeNames.Size() <= NAMES_TO_WALK) {
        return m_AttributeNames.Locate(usName);
    }
    if (m_pNamePositions == NULL) {
        auto pNamePositions = std::make_unique<std::unordered_map<CATUnicodeString, int>>();
        for (int i = 1; i <= m_AttributeNames.Size(); ++i) {
            pNamePositions->emplace(m_AttributeNames[i], i);
        }
        m_pNamePositions = std::move(pNamePositions);
    }
    const auto found = m_pNamePositions->find(usName);
    return found != m_pNamePositions->end() ? found->second : 0;
}

HRESULT QTBENodeAttributesOnNode::FailAsNotDefined(const CATUnicodeString& usNodeText, const CATUnicodeString& usName)
{
    return CATError::GetReturn(2, QTBMessageUtil::AttributeNotDefinedError(usNodeText, usName), NULL, __FILE__,
                               __LINE__);
}

HRESULT QTBENodeAttributesOnNode::NameNewAttribute(const CATIDOMElement_var& spIDOMElementOnNewAttributeXmlNode,
                                                   const CATUnicodeString& usName)
{
    QTB_CALL(spIDOMElementOnNewAttributeXmlNode->SetAttribute, "name", usName);
    QTB_CALL(SetAttributeAsXmlNode, spIDOMElementOnNewAttributeXmlNode);
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::AddStringAttributeValue(const CATUnicodeString& usName,
                                                          const CATUnicodeString& usValue)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::AddStringAttributeValue");
    unsigned char bAttributeIsDefined = FALSE;
    QTB_CALL(AttributeIsDefined, usName, &bAttributeIsDefined);
    QTB_ASSERT(bAttributeIsDefined == FALSE);

    CATIDOMElement_var spIDOMElementOnXmlElement(m_spXmlElement);
    CATIDOMElement_var spIDOMElementOnNewAttributeXmlNode;
    QTB_CALL(QTBXmlUtil::CreateChildNode, "a", usValue, &spIDOMElementOnXmlElement,
             &spIDOMElementOnNewAttributeXmlNode);
    if (const HRESULT hr = NameNewAttribute(spIDOMElementOnNewAttributeXmlNode, usName); FAILED(hr)) {
        // Left in the record, what is no attribute would keep it from being read again.
        CATIDOMNode_var(spIDOMElementOnXmlElement)->RemoveChild(spIDOMElementOnNewAttributeXmlNode);
        return hr;
    }

    // Reads the display form, so a value that has another display name does not pass; meant.
    CATUnicodeString usValueForCheck;
    QTB_CALL(GetStringAttributeValue, usName, &usValueForCheck, FALSE, TRUE);
    QTB_ASSERT(usValueForCheck == usValue);
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::ToXmlString(const CATListValCATUnicodeString& AttributeNames,
                                              CATUnicodeString* pusXmlString, const CATUnicodeString& usInnerXml,
                                              const CATUnicodeString& usTagAttributes,
                                              const CATUnicodeString& usTagName)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::ToXmlString");
    QTB_ASSERT(pusXmlString != NULL);
    QTB_CALL(AddAttributesToXmlString, AttributeNames, pusXmlString, usInnerXml, usTagAttributes, usTagName);
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::ToXmlString(CATUnicodeString* pusXmlString, const CATUnicodeString& usInnerXml,
                                              const CATUnicodeString& usTagAttributes,
                                              const CATUnicodeString& usTagName)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::ToXmlString");
    QTB_ASSERT(pusXmlString != NULL);
    CATListValCATUnicodeString AttributeNames;
    QTB_CALL(GetAllAttributeNames, &AttributeNames);
    QTB_CALL(AddAttributesToXmlString, AttributeNames, pusXmlString, usInnerXml, usTagAttributes, usTagName);
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::AddAttributesToXmlString(const CATListValCATUnicodeString& AttributeNames,
                                                           CATUnicodeString* pusXmlString,
                                                           const CATUnicodeString& usInnerXml,
                                                           const CATUnicodeString& usTagAttributes,
                                                           const CATUnicodeString& usTagName)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::AddAttributesToXmlString");
    QTB_ASSERT(pusXmlString != NULL);
    CATUnicodeString usXml = "<" + usTagName;
    const QTBIPdmNode_var spIPdmNodeOnThis(this);
    QTB_INTERFACE(spIPdmNodeOnThis);

    QTB_REPORT_CALL(AddQtbNodeAttribute, spIPdmNodeOnThis, "QtbCreateNewVersion", &usXml);
    QTB_REPORT_CALL(AddQtbNodeAttribute, spIPdmNodeOnThis, "QtbCreatedNewRevision", &usXml);
    usXml += usTagAttributes;
    usXml += ">";

    for (const CATUnicodeString& usName : AttributeNames) {
        QTBNodeAttr* pNodeAttr = NULL;
        QTB_CALL(GetAttribute, usName, &pNodeAttr);
        // GetAttribute has failed for a name that the node does not have. NOLINTNEXTLINE(clang-analyzer-core.*)
        const QTBNodeAttr& CurrentAttribute = *pNodeAttr;
        CATUnicodeString usAttributeXml;
        QTB_CALL(CurrentAttribute.WriteXmlToString, &usAttributeXml, FALSE);
        usXml += usAttributeXml;
    }
    usXml += usInnerXml;
    usXml += "</";
    usXml += usTagName;
    usXml += ">";
    *pusXmlString += usXml;
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::AddQtbNodeAttribute(const QTBIPdmNode_var& spIPdmNode, const CATUnicodeString& usName,
                                                      CATUnicodeString* pusXmlString)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::AddQtbNodeAttribute");
    QTB_INTERFACE(spIPdmNode);
    QTB_ASSERT(pusXmlString != NULL);
    CATUnicodeString usValue;
    unsigned char bAttributeIsDefined = FALSE;
    const HRESULT hr = spIPdmNode->GetQtbInfoAttr(usName, &usValue, FALSE, &bAttributeIsDefined, FALSE);
    QTB_REPORT_RESULT_AS("spIPdmNode->GetQtbInfoAttr", hr);
    if (SUCCEEDED(hr) && bAttributeIsDefined != FALSE) {
        *pusXmlString += " " + usName + "=\"" + usValue + "\" ";
    }
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::SetCatiaAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::SetCatiaAttribute");
    QTB_ASSERT(usName != "");
    QTB_CALL(g_QTBLoadManager.SetCatiaAttr, m_Key, usName, usValue);
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::GetCatiaAttribute(const CATUnicodeString& usName, CATUnicodeString* pusValue)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetCatiaAttribute");
    QTB_ASSERT(usName != "");
    QTB_ASSERT(pusValue != NULL);
    QTB_CALL(g_QTBLoadManager.GetCatiaAttr, m_Key, usName, pusValue);
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::SetCatiaAttributes(const CATListValCATUnicodeString& Names,
                                                     const CATListValCATUnicodeString& Values)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::SetCatiaAttributes");
    QTBHashTableNvSetAttribute* pCatiaAttrsNvSet = NULL;
    QTB_CALL(g_QTBLoadManager.GetCatiaAttributesNvSetPtr, m_Key, &pCatiaAttrsNvSet);
    QTB_CALL(pCatiaAttrsNvSet->SetNvSet, Names, Values);
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::GetCatiaAttributes(CATListValCATUnicodeString* pNames,
                                                     CATListValCATUnicodeString* pValues)
{
    QTB_SCOPE("QTBENodeAttributesOnNode::GetCatiaAttributes");
    QTBHashTableNvSetAttribute* pCatiaAttrsNvSet = NULL;
    // A key without CATIA attributes is deliberately no failure.
    if (SUCCEEDED(g_QTBLoadManager.GetCatiaAttributesNvSetPtr(m_Key, &pCatiaAttrsNvSet)) && pCatiaAttrsNvSet != NULL) {
        QTB_CALL(pCatiaAttrsNvSet->GetNvSet, pNames, pValues);
    }
    return QTB_SUCCESS;
}

HRESULT QTBENodeAttributesOnNode::PrintCatiaAttributes()
{
    QTB_SCOPE("QTBENodeAttributesOnNode::PrintCatiaAttributes");
    const CATBaseUnknown_var spBaseUnknownOnThis(this);
    QTB_INTERFACE(spBaseUnknownOnThis);
    QTB_TRACE("CATIA attributes for [" << QTBTraceUtil::GetNodeString(spBaseUnknownOnThis, FALSE) << "]");
    QTBHashTableNvSetAttribute* pCatiaAttrsNvSet = NULL;
    if (SUCCEEDED(g_QTBLoadManager.GetCatiaAttributesNvSetPtr(m_Key, &pCatiaAttrsNvSet)) && pCatiaAttrsNvSet != NULL) {
        pCatiaAttrsNvSet->PrintValues();
        QTB_TRACE("");
    }
    return QTB_SUCCESS;
}

void QTBENodeAttributesOnNode::CleanUpLists()
{
    m_AttributeNames.RemoveAll();
    m_AttributeDataTypes.RemoveAll();
    m_pNamePositions.reset();
    m_StringAttrs.RemoveAll();
    m_SimpleListAttrs.RemoveAll();
    m_NameValueListAttrs.RemoveAll();
    m_TableAttrs.RemoveAll();
    m_ObjectAttrs.RemoveAll();
    for (const QTBNodeAttr* pNodeAttr : m_AllAttrs) {
        delete pNodeAttr;
    }
    m_AllAttrs.RemoveAll();
}
