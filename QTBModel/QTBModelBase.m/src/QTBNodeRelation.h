#pragma once

#include "CATInterface_var.h"
#include "CATUnicodeString.h"
#include "QTBModelLibExport.h"

// A name with a node. Equal to another record of the same name, whatever its value.
class QTBMODELLIB_API QTBNodeRelation
{
public:
    QTBNodeRelation() = default;
    QTBNodeRelation(const CATUnicodeString& usName, const CATBaseUnknown_var& spNode)
        : m_usName(usName), m_spNode(spNode)
    {
    }
    QTBNodeRelation(const QTBNodeRelation&) = default;
    QTBNodeRelation& operator=(const QTBNodeRelation&) = default;
    virtual ~QTBNodeRelation();

    const CATUnicodeString& GetName() const { return m_usName; }
    const CATBaseUnknown_var& GetNode() const { return m_spNode; }

    friend bool operator==(const QTBNodeRelation& a, const QTBNodeRelation& b) { return a.m_usName == b.m_usName; }

private:
    CATUnicodeString m_usName;
    CATBaseUnknown_var m_spNode;
};
