#pragma once

#include "CATListVal.h"
#include "CATUnicodeString.h"

// A design table of a part or product: its name in the document and the path of the file that holds the table, empty
// for a table that is kept in the document itself.
class QTBDesignTable
{
public:
    QTBDesignTable() = default;
    QTBDesignTable(const CATUnicodeString& usName, const CATUnicodeString& usFilePath)
        : m_usName(usName), m_usFilePath(usFilePath)
    {
    }

    const CATUnicodeString& GetName() const { return m_usName; }
    const CATUnicodeString& GetFilePath() const { return m_usFilePath; }

    friend bool operator==(const QTBDesignTable&, const QTBDesignTable&) = default;

private:
    CATUnicodeString m_usName;
    CATUnicodeString m_usFilePath;
};

using CATListValQTBDesignTable = CATListVal<QTBDesignTable>;
