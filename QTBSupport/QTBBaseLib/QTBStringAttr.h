#pragma once

#include "QTBNodeAttr.h"

// String attribute: `<a name="N">text</a>`. The text is the value, blanks included. Not valid when the element has
// child elements.
class QTBBASELIB_API QTBStringAttr : public QTBNodeAttr
{
public:
    explicit QTBStringAttr(CATIDOMElement_var* pspIDOMElement);

    HRESULT GetValue(CATUnicodeString* pusValue) const;

    // Changes the value; the XML element that it was read from stays as it is.
    HRESULT SetValue(const CATUnicodeString& usValue);

    // The value.
    CATUnicodeString ToString() override;

protected:
    std::string_view GetTypeName() const override;
    HRESULT AppendContent(std::string* pXml) const override;

private:
    CATUnicodeString m_Value;
};

using CATListPtrQTBStringAttr = CATListPtr<QTBStringAttr>;
