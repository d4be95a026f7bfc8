#pragma once

#include "CATListVal.h"
#include "CATListValCATUnicodeString.h"
#include "QTBNodeAttr.h"

// Table attribute: `<a name="N" type="table"><row><cell>1.1</cell><cell>1.2</cell></row></a>`. Rows may differ in
// length. Not valid when anything else stands in the table, in a row or in a cell.
class QTBBASELIB_API QTBTableAttr : public QTBNodeAttr
{
public:
    explicit QTBTableAttr(CATIDOMElement_var* pspIDOMElement);

    HRESULT GetRowCount(int* pRowCount) const;

    // The number of cells in a row, and one cell of it; both are counted from 1. E_FAIL outside the table.
    HRESULT GetCellCount(int row, int* pCellCount) const;
    HRESULT GetCell(int row, int cell, CATUnicodeString* pusValue) const;

    // The cells, joined with ", ", the rows with "; ".
    CATUnicodeString ToString() override;

protected:
    std::string_view GetTypeName() const override;
    HRESULT AppendContent(std::string* pXml) const override;

private:
    bool ReadRow(const CATDOMElementView& element);

    CATListVal<CATListValCATUnicodeString> m_Rows;
};

using CATListPtrQTBTableAttr = CATListPtr<QTBTableAttr>;
