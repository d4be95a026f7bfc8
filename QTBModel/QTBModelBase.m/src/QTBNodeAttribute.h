#pragma once

#include "CATUnicodeString.h"
#include "QTBModelLibExport.h"

// A name with a string value. Equal to another record of the same name, whatever its value.
class QTBMODELLIB_API QTBNodeAttribute
{
public:
    QTBNodeAttribute() = default;
    QTBNodeAttribute(const CATUnicodeString& usName, const CATUnicodeString& usValue)
        : m_usName(usName), m_usValue(usValue)
    {
    }
    QTBNodeAttribute(const QTBNodeAttribute&) = default;
    QTBNodeAttribute& operator=(const QTBNodeAttribute&) = default;
    virtual ~QTBNodeAttribute();

    const CATUnicodeString& GetName() const { return m_usName; }
    const CATUnicodeString& GetValue() const { return m_usValue; }

    friend bool operator==(const QTBNodeAttribute& a, const QTBNodeAttribute& b) { return a.m_usName == b.m_usName; }

private:
    CATUnicodeString m_usName;
    CATUnicodeString m_usValue;
};
