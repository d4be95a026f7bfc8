#pragma once

#include <memory>
#include <vector>

#include "CATDataType.h"
#include "QTBSchemaAttributeRep.h"

// Attributes in the order in which they are shown.
class QTBBASELIB_API QTBSchemaAttributeRepList
{
public:
    int GetCount() const { return static_cast<int>(m_Reps.size()); }

    // Counted from 1; E_FAIL outside the list.
    HRESULT GetPtr(int index, QTBSchemaAttributeRep** ppAttributeRep) const;

    // The attribute of that name that stands in an embedded object, null when there is none.
    const QTBSchemaAttributeRep* FindEmbedded(const CATUnicodeString& usName) const;

    void Append(std::unique_ptr<QTBSchemaAttributeRep> pAttributeRep) { m_Reps.push_back(std::move(pAttributeRep)); }

private:
    std::vector<std::unique_ptr<QTBSchemaAttributeRep>> m_Reps;
};
