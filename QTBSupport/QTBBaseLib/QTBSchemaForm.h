#pragma once

#include "QTBSchemaAttributeRepList.h"

// A form of a class: the attributes that a dialog shows, for example "Properties" or "UpdateItem".
class QTBBASELIB_API QTBSchemaForm : public QTBSchemaElementBase
{
public:
    QTBSchemaForm(const CATUnicodeString& usName, QTBSchemaAttributeRepList&& FormAttrs)
        : QTBSchemaElementBase(usName), m_FormAttrs(std::move(FormAttrs))
    {
    }

    int GetFormAttrCount() const { return m_FormAttrs.GetCount(); }

    // Counted from 1; E_FAIL outside the list.
    HRESULT GetFormAttrPtr(int index, QTBSchemaAttributeRep** ppFormAttr) const
    {
        return m_FormAttrs.GetPtr(index, ppFormAttr);
    }

private:
    QTBSchemaAttributeRepList m_FormAttrs;
};
