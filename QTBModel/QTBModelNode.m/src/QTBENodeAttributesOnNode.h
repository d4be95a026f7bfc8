#pragma once

#include <memory>
#include <unordered_map>

#include "CATInterface_var.h"
#include "CATListPtr.h"
#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "QTBNameValueListAttr.h"
#include "QTBObjectAttr.h"
#include "QTBSimpleListAttr.h"
#include "QTBStringAttr.h"
#include "QTBTableAttr.h"

class CATIDOMElement;
class QTBHashTableNvSetAttribute;
class QTBIPdmNode;
class QTBIPdmNodeCont;
using CATIDOMElement_var = CATInterface_var<CATIDOMElement>;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIPdmNodeCont_var = CATInterface_var<QTBIPdmNodeCont>;

// QTBINodeAttributes on the late type QTBNode: the key of a node, the XML element that is its record, and the record's
// attributes as typed objects. Owns the attribute objects; the typed lists are views on them.
class QTBENodeAttributesOnNode : public CATBaseUnknown
{
public:
    QTBENodeAttributesOnNode();
    ~QTBENodeAttributesOnNode() override;

    unsigned int* GetHashKey();
    HRESULT SetKey(const CATUnicodeString& usKey);
    HRESULT GetKey(CATUnicodeString* pusKey);

    HRESULT SetXmlElement(const CATBaseUnknown_var& spXmlElement);
    HRESULT GetXmlElement(CATBaseUnknown_var* pspXmlElement);
    HRESULT SetAttributeAsXmlNode(const CATBaseUnknown_var& spAttributeElement);

    HRESULT GetAllAttributeNames(CATListValCATUnicodeString* pNames);
    HRESULT AttributeIsDefined(const CATUnicodeString& usName, unsigned char* pbDefined);
    HRESULT GetAttribute(const CATUnicodeString& usName, QTBNodeAttr** ppNodeAttr);
    HRESULT GetAttributeDataType(const CATUnicodeString& usName, CATUnicodeString* pusDataType);

    HRESULT GetStringAttributeNames(CATListValCATUnicodeString* pNames);
    HRESULT SetStringAttributeValue(const CATUnicodeString& usName, const CATUnicodeString& usValue);
    HRESULT GetStringAttributeValue(const CATUnicodeString& usName, CATUnicodeString* pusValue,
                                    unsigned char bTrySimpleList, unsigned char bShowNlsValue);
    HRESULT GetStringAttributeValues(CATListValCATUnicodeString* pValues);
    HRESULT GetStringAttributePtr(const CATUnicodeString& usName, QTBStringAttr** ppStringAttr);
    HRESULT GetStringAttributes(CATListPtrQTBStringAttr* pStringAttrs);

    HRESULT GetSimpleListAttributeNames(CATListValCATUnicodeString* pNames);
    HRESULT GetSimpleListAttributePtr(const CATUnicodeString& usName, QTBSimpleListAttr** ppSimpleListAttr);
    HRESULT GetSimpleListAttributes(CATListPtrQTBSimpleListAttr* pSimpleListAttrs);

    HRESULT GetNameValueListAttributeNames(CATListValCATUnicodeString* pNames);
    HRESULT GetNameValueListAttributePtr(const CATUnicodeString& usName, QTBNameValueListAttr** ppNameValueListAttr);
    HRESULT GetNameValueListAttributes(CATListPtrQTBNameValueListAttr* pNameValueListAttrs);

    HRESULT GetTableAttributeNames(CATListValCATUnicodeString* pNames);
    HRESULT GetTableAttributePtr(const CATUnicodeString& usName, QTBTableAttr** ppTableAttr);
    HRESULT GetTableAttributes(CATListPtrQTBTableAttr* pTableAttrs);

    HRESULT GetObjectAttributeNames(CATListValCATUnicodeString* pNames);
    HRESULT GetObjectAttributePtr(const CATUnicodeString& usName, QTBObjectAttr** ppObjectAttr);
    HRESULT GetObjectAttributes(CATListPtrQTBObjectAttr* pObjectAttrs);

    HRESULT AddStringAttributeValue(const CATUnicodeString& usName, const CATUnicodeString& usValue);

    HRESULT ToXmlString(const CATListValCATUnicodeString& AttributeNames, CATUnicodeString* pusXmlString,
                        const CATUnicodeString& usInnerXml, const CATUnicodeString& usTagAttributes,
                        const CATUnicodeString& usTagName);
    HRESULT ToXmlString(CATUnicodeString* pusXmlString, const CATUnicodeString& usInnerXml,
                        const CATUnicodeString& usTagAttributes, const CATUnicodeString& usTagName);

    HRESULT SetCatiaAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue);
    HRESULT GetCatiaAttribute(const CATUnicodeString& usName, CATUnicodeString* pusValue);
    HRESULT SetCatiaAttributes(const CATListValCATUnicodeString& Names, const CATListValCATUnicodeString& Values);
    HRESULT GetCatiaAttributes(CATListValCATUnicodeString* pNames, CATListValCATUnicodeString* pValues);
    HRESULT PrintCatiaAttributes();

private:
    // The five types of attributes: each names its class, its list, its data type and the texts of its checks.
    struct StringType;
    struct SimpleListType;
    struct NameValueListType;
    struct TableType;
    struct ObjectType;

    template <class Type>
    HRESULT GetNamesOfType(CATListValCATUnicodeString* pNames);
    template <class Type>
    HRESULT GetAttributesOfType(CATListPtr<typename Type::Attribute>* pAttributes);
    template <class Type>
    HRESULT FindOfType(const CATUnicodeString& usName, typename Type::Attribute** ppAttribute);
    // Files a new attribute object, or deletes it when it could not be read.
    template <class Type>
    HRESULT FileNewAttribute(std::unique_ptr<typename Type::Attribute> pNewAttribute);
    HRESULT CreateObjectAttribute(const CATIDOMElement_var& spIDOMElement, const CATUnicodeString& usName);
    static HRESULT FindFormerEmbeddedNode(const QTBIPdmNodeCont_var& spIPdmNodeCont,
                                          const CATUnicodeString& usEmbeddedKey,
                                          CATBaseUnknown_var* pspBaseUnknownOnFormerNode);
    HRESULT NameNewAttribute(const CATIDOMElement_var& spIDOMElementOnNewAttributeXmlNode,
                             const CATUnicodeString& usName);

    // Position of an attribute in m_AttributeNames, 0 when there is none.
    int LocateName(const CATUnicodeString& usName);
    // The error that tells the user that a node lacks an attribute; the caller reports it.
    static HRESULT FailAsNotDefined(const CATUnicodeString& usNodeText, const CATUnicodeString& usName);
    void ReplaceByDisplayName(const CATUnicodeString& usName, CATUnicodeString* pusValue);

    HRESULT AddAttributesToXmlString(const CATListValCATUnicodeString& AttributeNames, CATUnicodeString* pusXmlString,
                                     const CATUnicodeString& usInnerXml, const CATUnicodeString& usTagAttributes,
                                     const CATUnicodeString& usTagName);
    static HRESULT AddQtbNodeAttribute(const QTBIPdmNode_var& spIPdmNode, const CATUnicodeString& usName,
                                       CATUnicodeString* pusXmlString);
    void CleanUpLists();

    unsigned int m_HashKey = 0;
    CATUnicodeString m_Key;
    CATListValCATUnicodeString m_AttributeNames;
    CATListValCATUnicodeString m_AttributeDataTypes;
    CATListPtrQTBNodeAttr m_AllAttrs;
    CATListPtrQTBStringAttr m_StringAttrs;
    CATListPtrQTBSimpleListAttr m_SimpleListAttrs;
    CATListPtrQTBNameValueListAttr m_NameValueListAttrs;
    CATListPtrQTBTableAttr m_TableAttrs;
    CATListPtrQTBObjectAttr m_ObjectAttrs;
    CATBaseUnknown_var m_spXmlElement;
    // Positions in m_AttributeNames, for records with so many attributes that a walk would be felt.
    std::unique_ptr<std::unordered_map<CATUnicodeString, int>> m_pNamePositions;
};
