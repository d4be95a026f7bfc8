#pragma once

#include "CATListPtr.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "QTBInterfacesLibExport.h"

class QTBNameValueListAttr;
class QTBNodeAttr;
class QTBObjectAttr;
class QTBSimpleListAttr;
class QTBStringAttr;
class QTBTableAttr;
using CATListPtrQTBStringAttr = CATListPtr<QTBStringAttr>;
using CATListPtrQTBSimpleListAttr = CATListPtr<QTBSimpleListAttr>;
using CATListPtrQTBNameValueListAttr = CATListPtr<QTBNameValueListAttr>;
using CATListPtrQTBTableAttr = CATListPtr<QTBTableAttr>;
using CATListPtrQTBObjectAttr = CATListPtr<QTBObjectAttr>;

inline constexpr IID IID_QTBINodeAttributes{"QTBINodeAttributes"};

// Key, XML element and typed attributes of a node, and its CATIA attributes, which the load manager keeps per key.
//
// Call SetKey before the node is filed in a container, SetXmlElement whenever its record arrives or is replaced.
// Pointers to attributes stay valid until the next SetXmlElement or the node's end; callers never delete them, and the
// pointer that receives one must be null on entry. Lists of names, values and attributes are replaced. A look-up of an
// attribute that is not defined fails with a message for the user, except where an operation says otherwise.
class QTBINTERFACESLIB_API QTBINodeAttributes : public CATBaseUnknown
{
    CATDeclareInterface(QTBINodeAttributes, CATBaseUnknown)

public:
    // Address of the stored hash of the key; it holds 0 until a key is set.
    virtual unsigned int* GetHashKey() = 0;
    virtual HRESULT SetKey(const CATUnicodeString& usKey) = 0;
    // Empty until a key is set.
    virtual HRESULT GetKey(CATUnicodeString* pusKey) = 0;

    // Replaces all attributes by those of the element's "a" children, in document order. Fails at the first child that
    // is no attribute; those before it stay.
    virtual HRESULT SetXmlElement(const CATBaseUnknown_var& spXmlElement) = 0;
    virtual HRESULT GetXmlElement(CATBaseUnknown_var* pspXmlElement) = 0;
    // Adds the attribute of one "a" element. Fails when its name is missing or taken or its content is not of its type.
    virtual HRESULT SetAttributeAsXmlNode(const CATBaseUnknown_var& spAttributeElement) = 0;

    virtual HRESULT GetAllAttributeNames(CATListValCATUnicodeString* pNames) = 0;
    virtual HRESULT AttributeIsDefined(const CATUnicodeString& usName, unsigned char* pbDefined) = 0;
    virtual HRESULT GetAttribute(const CATUnicodeString& usName, QTBNodeAttr** ppNodeAttr) = 0;
    // Fails quietly, without touching the text, for an attribute that is not defined.
    virtual HRESULT GetAttributeDataType(const CATUnicodeString& usName, CATUnicodeString* pusDataType) = 0;

    virtual HRESULT GetStringAttributeNames(CATListValCATUnicodeString* pNames) = 0;
    virtual HRESULT SetStringAttributeValue(const CATUnicodeString& usName, const CATUnicodeString& usValue) = 0;
    // With bTrySimpleList the first value of a simple list stands in for a missing string. With bShowNlsValue the value
    // is the display name that the schema's data source gives it, if any.
    virtual HRESULT GetStringAttributeValue(const CATUnicodeString& usName, CATUnicodeString* pusValue,
                                            unsigned char bTrySimpleList, unsigned char bShowNlsValue) = 0;
    virtual HRESULT GetStringAttributeValues(CATListValCATUnicodeString* pValues) = 0;
    virtual HRESULT GetStringAttributePtr(const CATUnicodeString& usName, QTBStringAttr** ppStringAttr) = 0;
    virtual HRESULT GetStringAttributes(CATListPtrQTBStringAttr* pStringAttrs) = 0;

    virtual HRESULT GetSimpleListAttributeNames(CATListValCATUnicodeString* pNames) = 0;
    virtual HRESULT GetSimpleListAttributePtr(const CATUnicodeString& usName, QTBSimpleListAttr** ppSimpleListAttr) = 0;
    virtual HRESULT GetSimpleListAttributes(CATListPtrQTBSimpleListAttr* pSimpleListAttrs) = 0;

    virtual HRESULT GetNameValueListAttributeNames(CATListValCATUnicodeString* pNames) = 0;
    virtual HRESULT GetNameValueListAttributePtr(const CATUnicodeString& usName,
                                                 QTBNameValueListAttr** ppNameValueListAttr) = 0;
    virtual HRESULT GetNameValueListAttributes(CATListPtrQTBNameValueListAttr* pNameValueListAttrs) = 0;

    virtual HRESULT GetTableAttributeNames(CATListValCATUnicodeString* pNames) = 0;
    virtual HRESULT GetTableAttributePtr(const CATUnicodeString& usName, QTBTableAttr** ppTableAttr) = 0;
    virtual HRESULT GetTableAttributes(CATListPtrQTBTableAttr* pTableAttrs) = 0;

    virtual HRESULT GetObjectAttributeNames(CATListValCATUnicodeString* pNames) = 0;
    virtual HRESULT GetObjectAttributePtr(const CATUnicodeString& usName, QTBObjectAttr** ppObjectAttr) = 0;
    virtual HRESULT GetObjectAttributes(CATListPtrQTBObjectAttr* pObjectAttrs) = 0;

    // Adds a string attribute to the record and to the XML element. Fails, changing nothing, for a name that is taken,
    // and after the change when the value read back in its display form is another.
    virtual HRESULT AddStringAttributeValue(const CATUnicodeString& usName, const CATUnicodeString& usValue) = 0;

    // Appends the node as an XML element of that tag: the named attributes in their order, or all of them in document
    // order, then the inner XML. Only PDM nodes are written; on failure the text is unchanged.
    virtual HRESULT ToXmlString(const CATListValCATUnicodeString& AttributeNames, CATUnicodeString* pusXmlString,
                                const CATUnicodeString& usInnerXml, const CATUnicodeString& usTagAttributes,
                                const CATUnicodeString& usTagName) = 0;
    virtual HRESULT ToXmlString(CATUnicodeString* pusXmlString, const CATUnicodeString& usInnerXml,
                                const CATUnicodeString& usTagAttributes, const CATUnicodeString& usTagName) = 0;

    virtual HRESULT SetCatiaAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue) = 0;
    virtual HRESULT GetCatiaAttribute(const CATUnicodeString& usName, CATUnicodeString* pusValue) = 0;
    virtual HRESULT SetCatiaAttributes(const CATListValCATUnicodeString& Names,
                                       const CATListValCATUnicodeString& Values) = 0;
    // Succeeds with both lists untouched when the key has no CATIA attributes.
    virtual HRESULT GetCatiaAttributes(CATListValCATUnicodeString* pNames, CATListValCATUnicodeString* pValues) = 0;
    virtual HRESULT PrintCatiaAttributes() = 0;
};

using QTBINodeAttributes_var = CATInterface_var<QTBINodeAttributes>;
