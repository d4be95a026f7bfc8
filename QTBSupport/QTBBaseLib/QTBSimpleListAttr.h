#pragma once

#include <memory>
#include <string_view>
#include <unordered_set>

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

    // Whether it is one of the values. Takes about constant time, however many there are.
    bool Contains(const CATUnicodeString& usValue) const;

    // The values, joined with ", ".
    CATUnicodeString ToString() override;

protected:
    std::string_view GetTypeName() const override;
    HRESULT AppendContent(std::string* pXml) const override;

private:
    // Up to here looking through the values is as fast.
    static constexpr int VALUES_WITHOUT_INDEX = 16;

    CATListValCATUnicodeString m_Values;
    // Made when a long list is first searched; the texts are those of the values.
    mutable std::unique_ptr<std::unordered_set<std::string_view>> m_pIndex;
};

using CATListPtrQTBSimpleListAttr = CATListPtr<QTBSimpleListAttr>;
