#pragma once

#include "CATListValCATUnicodeString.h"
#include "QTBNodeAttr.h"

// List attribute: `<a name="N" type="list"><v>first</v><v>second</v></a>`. Not valid when the element has other child
// elements or text of its own, or a "v" has child elements.
class QTBBASELIB_API QTBSimpleListAttr : public QTBNodeAttr
{
public:
    explicit QTBSimpleListAttr(CATIDOMElement_var* pspIDOMElement);

    HRESULT GetSize(int* pSize) const;

    // The value at that position, counted from 1. E_FAIL outside the list.
    HRESULT GetValue(int index, CATUnicodeString* pusValue) const;

    // The values, joined with ", ".
    CATUnicodeString ToString() override;

protected:
    std::string_view GetTypeName() const override;
    HRESULT AppendContent(std::string* pXml) const override;

private:
    CATListValCATUnicodeString m_Values;
};

using CATListPtrQTBSimpleListAttr = CATListPtr<QTBSimpleListAttr>;
