#include "QTBSchemaDataSource.h"

#include "QTBSchemaElementList.h"

QTBSchemaDataSource::QTBSchemaDataSource(const CATUnicodeString& usName,
                                         std::vector<std::unique_ptr<QTBSchemaValue>> Values)
    : QTBSchemaElementBase(usName), m_Values(std::move(Values))
{
}

HRESULT QTBSchemaDataSource::GetValuePtr(int index, QTBSchemaValue** ppValue) const
{
    return QTBGetSchemaElement(m_Values, index, ppValue);
}
