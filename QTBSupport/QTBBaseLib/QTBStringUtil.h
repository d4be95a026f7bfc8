#pragma once

#include "CATDataType.h"
#include "CATListValCATUnicodeString.h"
#include "QTBBaseLibExport.h"

// Text forms of values.
class QTBBASELIB_API QTBStringUtil
{
public:
    // Splits the text of a list-valued entry of "QtbInfo" into its items. Items are separated by ";"; "\;" is a
    // semicolon and "\\" a backslash inside an item, any other backslash stands for itself. The empty text has no
    // items; between two separators stands an empty item. Empties the list first.
    static HRESULT ConvertQtbInfoListAttrString(const CATUnicodeString& usText, CATListValCATUnicodeString* pItems);

    // The text that the operation above splits into these items. A list of one empty item has no text of its own:
    // E_FAIL.
    static HRESULT MakeQtbInfoListAttrString(const CATListValCATUnicodeString& items, CATUnicodeString* pusText);
};
