#pragma once

#include "QTBSchemaElementBase.h"

// A value of a data source. Its name is the value as the PDM system stores it.
class QTBBASELIB_API QTBSchemaValue : public QTBSchemaElementBase
{
public:
    QTBSchemaValue(const CATUnicodeString& usName, const CATUnicodeString& usDisplayName)
        : QTBSchemaElementBase(usName), m_usDisplayName(usDisplayName)
    {
    }

    // Key of the value's display text in the schema's catalog; empty for a value that is shown as it is stored.
    const CATUnicodeString& GetDisplayName() const { return m_usDisplayName; }

private:
    CATUnicodeString m_usDisplayName;
};
