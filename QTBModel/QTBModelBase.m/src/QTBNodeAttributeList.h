#pragma once

#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "QTBModelLibExport.h"

// A name with a list of string values. Equal to another record of the same name, whatever its value.
class QTBMODELLIB_API QTBNodeAttributeList
{
public:
    QTBNodeAttributeList() = default;
    QTBNodeAttributeList(const CATUnicodeString& usName, const CATListValCATUnicodeString& Values)
        : m_usName(usName), m_Values(Values)
    {
    }
    QTBNodeAttributeList(const QTBNodeAttributeList&) = default;
    QTBNodeAttributeList& operator=(const QTBNodeAttributeList&) = default;
    virtual ~QTBNodeAttributeList();

    const CATUnicodeString& GetName() const { return m_usName; }
    const CATListValCATUnicodeString& GetValues() const { return m_Values; }

    friend bool operator==(const QTBNodeAttributeList& a, const QTBNodeAttributeList& b)
    {
        return a.m_usName == b.m_usName;
    }

private:
    CATUnicodeString m_usName;
    CATListValCATUnicodeString m_Values;
};
