#pragma once

#include "QTBSchemaAttributeRepList.h"

// The attributes whose values make up the one-line description of a node.
class QTBBASELIB_API QTBSchemaDescription
{
public:
    explicit QTBSchemaDescription(QTBSchemaAttributeRepList&& DescAttrs) : m_DescAttrs(std::move(DescAttrs)) {}

    int GetDescAttrCount() const { return m_DescAttrs.GetCount(); }

    // Counted from 1; E_FAIL outside the list.
    HRESULT GetDescAttrPtr(int index, QTBSchemaAttributeRep** ppDescAttr) const
    {
        return m_DescAttrs.GetPtr(index, ppDescAttr);
    }

    // The description attribute of that name that stands in an embedded object, null when there is none. A description
    // has at most one of each name.
    const QTBSchemaAttributeRep* FindEmbeddedDescAttr(const CATUnicodeString& usName) const
    {
        return m_DescAttrs.FindEmbedded(usName);
    }

private:
    QTBSchemaAttributeRepList m_DescAttrs;
};
