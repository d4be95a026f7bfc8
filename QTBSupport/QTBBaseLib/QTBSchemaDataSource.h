#pragma once

#include <memory>
#include <vector>

#include "CATDataType.h"
#include "QTBSchemaValue.h"

// The values that an attribute can have, with their display names.
class QTBBASELIB_API QTBSchemaDataSource : public QTBSchemaElementBase
{
public:
    QTBSchemaDataSource(const CATUnicodeString& usName, std::vector<std::unique_ptr<QTBSchemaValue>> Values);

    int GetValuesCount() const { return static_cast<int>(m_Values.size()); }

    // Counted from 1; E_FAIL outside the list.
    HRESULT GetValuePtr(int index, QTBSchemaValue** ppValue) const;

private:
    std::vector<std::unique_ptr<QTBSchemaValue>> m_Values;
};
