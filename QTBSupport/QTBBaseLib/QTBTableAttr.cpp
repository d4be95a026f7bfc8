#include "QTBTableAttr.h"

#include "CATXMLWriter.h"

QTBTableAttr::QTBTableAttr(CATIDOMElement_var* pspIDOMElement)
{
    const CATDOMElementView element = ViewElement(pspIDOMElement);
    for (CATDOMElementView row = element.GetFirstChild(); row; row = row.GetNextSibling()) {
        if (!ReadRow(row)) {
            return;
        }
    }
    if (!element.HasNonBlankText()) {
        SetNameFromElement(element);
    }
}

bool QTBTableAttr::ReadRow(const CATDOMElementView& element)
{
    if (!element.HasTagName("row") || element.HasNonBlankText()) {
        return false;
    }
    CATListValCATUnicodeString Cells;
    for (CATDOMElementView cell = element.GetFirstChild(); cell; cell = cell.GetNextSibling()) {
        if (!cell.HasTagName("cell") || cell.GetFirstChild()) {
            return false;
        }
        Cells.Append(cell.GetText());
    }
    m_Rows.Append(Cells);
    return true;
}

HRESULT QTBTableAttr::GetRowCount(int* pRowCount) const
{
    if (pRowCount == nullptr) {
        return E_POINTER;
    }
    if (IsValid() == FALSE) {
        return E_FAIL;
    }
    *pRowCount = m_Rows.Size();
    return S_OK;
}

HRESULT QTBTableAttr::GetCellCount(int row, int* pCellCount) const
{
    if (pCellCount == nullptr) {
        return E_POINTER;
    }
    if (IsValid() == FALSE || row < 1 || row > m_Rows.Size()) {
        return E_FAIL;
    }
    *pCellCount = m_Rows[row].Size();
    return S_OK;
}

HRESULT QTBTableAttr::GetCell(int row, int cell, CATUnicodeString* pusValue) const
{
    int iCellCount = 0;
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    if (FAILED(GetCellCount(row, &iCellCount)) || cell < 1 || cell > iCellCount) {
        return E_FAIL;
    }
    *pusValue = m_Rows[row][cell];
    return S_OK;
}

CATUnicodeString QTBTableAttr::ToString()
{
    TooltipText text;
    for (int row = 1; IsValid() != FALSE && row <= m_Rows.Size() && !text.IsFull(); ++row) {
        const CATListValCATUnicodeString& Cells = m_Rows[row];
        text.Add(row > 1 ? "; " : "", Cells.Size() > 0 ? Cells[1] : CATUnicodeString());
        for (int cell = 2; cell <= Cells.Size() && !text.IsFull(); ++cell) {
            text.Add(", ", Cells[cell]);
        }
    }
    return text.Get();
}

std::string_view QTBTableAttr::GetTypeName() const
{
    return "table";
}

HRESULT QTBTableAttr::AppendContent(std::string* pXml) const
{
    for (const CATListValCATUnicodeString& Cells : m_Rows) {
        pXml->append("<row>");
        for (const CATUnicodeString& usCell : Cells) {
            pXml->append("<cell>");
            CATXMLWriter::AppendText(usCell.View(), pXml);
            pXml->append("</cell>");
        }
        pXml->append("</row>");
    }
    return S_OK;
}
