#pragma once

#include "CATTie.h"
#include "QTBINodeAttributes.h"

// Interface object of QTBINodeAttributes; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBINodeAttributes : public Tie
{
public:
    using Tie::Tie;

    unsigned int* GetHashKey() override
    {
        return Target::Of(*this)->GetHashKey();
    }

    HRESULT SetKey(const CATUnicodeString& usKey) override
    {
        return Target::Of(*this)->SetKey(usKey);
    }

    HRESULT GetKey(CATUnicodeString* pusKey) override
    {
        return Target::Of(*this)->GetKey(pusKey);
    }

    HRESULT SetXmlElement(const CATBaseUnknown_var& spXmlElement) override
    {
        return Target::Of(*this)->SetXmlElement(spXmlElement);
    }

    HRESULT GetXmlElement(CATBaseUnknown_var* pspXmlElement) override
    {
        return Target::Of(*this)->GetXmlElement(pspXmlElement);
    }

    HRESULT SetAttributeAsXmlNode(const CATBaseUnknown_var& spAttributeElement) override
    {
        return Target::Of(*this)->SetAttributeAsXmlNode(spAttributeElement);
    }

    HRESULT GetAllAttributeNames(CATListValCATUnicodeString* pNames) override
    {
        return Target::Of(*this)->GetAllAttributeNames(pNames);
    }

    HRESULT AttributeIsDefined(const CATUnicodeString& usName, unsigned char* pbDefined) override
    {
        return Target::Of(*this)->AttributeIsDefined(usName, pbDefined);
    }

    HRESULT GetAttribute(const CATUnicodeString& usName, QTBNodeAttr** ppNodeAttr) override
    {
        return Target::Of(*this)->GetAttribute(usName, ppNodeAttr);
    }

    HRESULT GetAttributeDataType(const CATUnicodeString& usName, CATUnicodeString* pusDataType) override
    {
        return Target::Of(*this)->GetAttributeDataType(usName, pusDataType);
    }

    HRESULT GetStringAttributeNames(CATListValCATUnicodeString* pNames) override
    {
        return Target::Of(*this)->GetStringAttributeNames(pNames);
    }

    HRESULT SetStringAttributeValue(const CATUnicodeString& usName, const CATUnicodeString& usValue) override
    {
        return Target::Of(*this)->SetStringAttributeValue(usName, usValue);
    }

    HRESULT GetStringAttributeValue(const CATUnicodeString& usName, CATUnicodeString* pusValue, unsigned char bTrySimpleList, unsigned char bShowNlsValue) override
    {
        return Target::Of(*this)->GetStringAttributeValue(usName, pusValue, bTrySimpleList, bShowNlsValue);
    }

    HRESULT GetStringAttributeValues(CATListValCATUnicodeString* pValues) override
    {
        return Target::Of(*this)->GetStringAttributeValues(pValues);
    }

    HRESULT GetStringAttributePtr(const CATUnicodeString& usName, QTBStringAttr** ppStringAttr) override
    {
        return Target::Of(*this)->GetStringAttributePtr(usName, ppStringAttr);
    }

    HRESULT GetStringAttributes(CATListPtrQTBStringAttr* pStringAttrs) override
    {
        return Target::Of(*this)->GetStringAttributes(pStringAttrs);
    }

    HRESULT GetSimpleListAttributeNames(CATListValCATUnicodeString* pNames) override
    {
        return Target::Of(*this)->GetSimpleListAttributeNames(pNames);
    }

    HRESULT GetSimpleListAttributePtr(const CATUnicodeString& usName, QTBSimpleListAttr** ppSimpleListAttr) override
    {
        return Target::Of(*this)->GetSimpleListAttributePtr(usName, ppSimpleListAttr);
    }

    HRESULT GetSimpleListAttributes(CATListPtrQTBSimpleListAttr* pSimpleListAttrs) override
    {
        return Target::Of(*this)->GetSimpleListAttributes(pSimpleListAttrs);
    }

    HRESULT GetNameValueListAttributeNames(CATListValCATUnicodeString* pNames) override
    {
        return Target::Of(*this)->GetNameValueListAttributeNames(pNames);
    }

    HRESULT GetNameValueListAttributePtr(const CATUnicodeString& usName, QTBNameValueListAttr** ppNameValueListAttr) override
    {
        return Target::Of(*this)->GetNameValueListAttributePtr(usName, ppNameValueListAttr);
    }

    HRESULT GetNameValueListAttributes(CATListPtrQTBNameValueListAttr* pNameValueListAttrs) override
    {
        return Target::Of(*this)->GetNameValueListAttributes(pNameValueListAttrs);
    }

    HRESULT GetTableAttributeNames(CATListValCATUnicodeString* pNames) override
    {
        return Target::Of(*this)->GetTableAttributeNames(pNames);
    }

    HRESULT GetTableAttributePtr(const CATUnicodeString& usName, QTBTableAttr** ppTableAttr) override
    {
        return Target::Of(*this)->GetTableAttributePtr(usName, ppTableAttr);
    }

    HRESULT GetTableAttributes(CATListPtrQTBTableAttr* pTableAttrs) override
    {
        return Target::Of(*this)->GetTableAttributes(pTableAttrs);
    }

    HRESULT GetObjectAttributeNames(CATListValCATUnicodeString* pNames) override
    {
        return Target::Of(*this)->GetObjectAttributeNames(pNames);
    }

    HRESULT GetObjectAttributePtr(const CATUnicodeString& usName, QTBObjectAttr** ppObjectAttr) override
    {
        return Target::Of(*this)->GetObjectAttributePtr(usName, ppObjectAttr);
    }

    HRESULT GetObjectAttributes(CATListPtrQTBObjectAttr* pObjectAttrs) override
    {
        return Target::Of(*this)->GetObjectAttributes(pObjectAttrs);
    }

    HRESULT AddStringAttributeValue(const CATUnicodeString& usName, const CATUnicodeString& usValue) override
    {
        return Target::Of(*this)->AddStringAttributeValue(usName, usValue);
    }

    HRESULT ToXmlString(const CATListValCATUnicodeString& AttributeNames, CATUnicodeString* pusXmlString, const CATUnicodeString& usInnerXml, const CATUnicodeString& usTagAttributes, const CATUnicodeString& usTagName) override
    {
        return Target::Of(*this)->ToXmlString(AttributeNames, pusXmlString, usInnerXml, usTagAttributes, usTagName);
    }

    HRESULT ToXmlString(CATUnicodeString* pusXmlString, const CATUnicodeString& usInnerXml, const CATUnicodeString& usTagAttributes, const CATUnicodeString& usTagName) override
    {
        return Target::Of(*this)->ToXmlString(pusXmlString, usInnerXml, usTagAttributes, usTagName);
    }

    HRESULT SetCatiaAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue) override
    {
        return Target::Of(*this)->SetCatiaAttribute(usName, usValue);
    }

    HRESULT GetCatiaAttribute(const CATUnicodeString& usName, CATUnicodeString* pusValue) override
    {
        return Target::Of(*this)->GetCatiaAttribute(usName, pusValue);
    }

    HRESULT SetCatiaAttributes(const CATListValCATUnicodeString& Names, const CATListValCATUnicodeString& Values) override
    {
        return Target::Of(*this)->SetCatiaAttributes(Names, Values);
    }

    HRESULT GetCatiaAttributes(CATListValCATUnicodeString* pNames, CATListValCATUnicodeString* pValues) override
    {
        return Target::Of(*this)->GetCatiaAttributes(pNames, pValues);
    }

    HRESULT PrintCatiaAttributes() override
    {
        return Target::Of(*this)->PrintCatiaAttributes();
    }
};
