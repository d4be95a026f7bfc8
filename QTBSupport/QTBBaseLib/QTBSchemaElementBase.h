#pragma once

#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

// What everything in the schema has: a name. Schema objects are made by the reader of the schema file and do not change
// afterwards.
class QTBBASELIB_API QTBSchemaElementBase
{
public:
    QTBSchemaElementBase(const QTBSchemaElementBase&) = delete;
    QTBSchemaElementBase& operator=(const QTBSchemaElementBase&) = delete;

    const CATUnicodeString& GetName() const { return m_usName; }

protected:
    explicit QTBSchemaElementBase(const CATUnicodeString& usName) : m_usName(usName) {}
    ~QTBSchemaElementBase() = default;

private:
    CATUnicodeString m_usName;
};
