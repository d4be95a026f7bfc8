#pragma once

#include "QTBSchemaElementBase.h"

// A relation as it is called when it is followed in one direction: "consists of", "is used in".
class QTBBASELIB_API QTBSchemaRelationship : public QTBSchemaElementBase
{
public:
    QTBSchemaRelationship(const CATUnicodeString& usName, const CATUnicodeString& usNlsKey,
                          const CATUnicodeString& usMultiExpand)
        : QTBSchemaElementBase(usName), m_usNlsKey(usNlsKey), m_usMultiExpand(usMultiExpand)
    {
    }

    // Key of the display name in the schema's catalog, empty when it has none.
    const CATUnicodeString& GetNlsKey() const { return m_usNlsKey; }
    // "true" when several levels may be expanded at once in this direction.
    const CATUnicodeString& GetMultiExpand() const { return m_usMultiExpand; }

private:
    CATUnicodeString m_usNlsKey;
    CATUnicodeString m_usMultiExpand;
};
