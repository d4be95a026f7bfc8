#pragma once

#include "QTBSchemaElementBase.h"

// The use of an attribute in a description or a form.
class QTBBASELIB_API QTBSchemaAttributeRep : public QTBSchemaElementBase
{
public:
    QTBSchemaAttributeRep(const CATUnicodeString& usName, const CATUnicodeString& usEmbeddedObjAttr)
        : QTBSchemaElementBase(usName), m_usEmbeddedObjAttr(usEmbeddedObjAttr)
    {
    }

    // Name of the object attribute whose embedded object holds the attribute; empty for an attribute of the item
    // itself.
    const CATUnicodeString& GetEmbeddedObjAttr() const { return m_usEmbeddedObjAttr; }

private:
    CATUnicodeString m_usEmbeddedObjAttr;
};
