#pragma once

#include "QTBSchemaElementBase.h"

// An attribute of the PDM system as the schema describes it.
class QTBBASELIB_API QTBSchemaAttribute : public QTBSchemaElementBase
{
public:
    QTBSchemaAttribute(const CATUnicodeString& usName, const CATUnicodeString& usNlsKey,
                       const CATUnicodeString& usDataSourceName)
        : QTBSchemaElementBase(usName), m_usNlsKey(usNlsKey), m_usDataSourceName(usDataSourceName)
    {
    }

    // Key of the display name in the schema's catalog, empty when it has none.
    const CATUnicodeString& GetNlsKey() const { return m_usNlsKey; }
    // The data source that gives the values their display names, empty when there is none.
    const CATUnicodeString& GetDataSourceName() const { return m_usDataSourceName; }

private:
    CATUnicodeString m_usNlsKey;
    CATUnicodeString m_usDataSourceName;
};
