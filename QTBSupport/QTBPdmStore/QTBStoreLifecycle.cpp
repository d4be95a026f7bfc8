#include "QTBStoreLifecycle.h"

#include <algorithm>
#include <string>

#include "QTBSchemaAttribute.h"
#include "QTBSchemaDataSource.h"
#include "QTBSchemaUtil.h"
#include "QTBSchemaValue.h"
#include "QTBStoreDatabase.h"
#include "QTBStoreRecord.h"

QTBStoreLifecycle::QTBStoreLifecycle(QTBStoreDatabase& database) : m_Database(database)
{
    QTBStoreStatement statement =
        database.Prepare("SELECT id, name, allows_change, allows_revise FROM state ORDER BY position");
    while (statement.Step()) {
        m_States.push_back({statement.GetInt(0), CATUnicodeString(statement.GetText(1)), statement.GetInt(2) != 0,
                            statement.GetInt(3) != 0});
    }
    if (m_States.empty()) {
        database.RaiseDamaged("there are no states");
    }
}

const QTBStoreLifecycle::State& QTBStoreLifecycle::Get(std::int64_t id) const
{
    const auto found =
        std::find_if(m_States.begin(), m_States.end(), [id](const State& state) { return state.id == id; });
    if (found == m_States.end()) {
        m_Database.RaiseDamaged("state " + std::to_string(id) + " is missing");
    }
    return *found;
}

const QTBStoreLifecycle::State* QTBStoreLifecycle::FindNext(std::int64_t id) const
{
    const State* pNext = &Get(id) + 1;
    return pNext != m_States.data() + m_States.size() ? pNext : nullptr;
}

const QTBStoreLifecycle::State* QTBStoreLifecycle::FindByName(const CATUnicodeString& usName) const
{
    const auto found =
        std::find_if(m_States.begin(), m_States.end(), [&usName](const State& state) { return state.name == usName; });
    return found != m_States.end() ? &*found : nullptr;
}

CATUnicodeString QTBStoreLifecycle::GetNames() const
{
    CATUnicodeString usNames;
    for (const State& state : m_States) {
        usNames += usNames.IsEmpty() ? state.name : ", " + state.name;
    }
    return usNames;
}

CATUnicodeString QTBStoreLifecycle::GetDisplayName(const State& state)
{
    QTBSchemaAttribute* pAttribute = nullptr;
    QTBSchemaDataSource* pDataSource = nullptr;
    if (FAILED(QTBSchemaUtil::GetAttributePtr(QTBStoreRecord::STATE_ATTR, &pAttribute, FALSE)) ||
        FAILED(QTBSchemaUtil::GetDataSourcePtr(pAttribute->GetDataSourceName(), &pDataSource))) {
        return state.name;
    }
    for (int i = 1; i <= pDataSource->GetValuesCount(); ++i) {
        QTBSchemaValue* pValue = nullptr;
        if (SUCCEEDED(pDataSource->GetValuePtr(i, &pValue)) && pValue->GetName() == state.name) {
            const CATUnicodeString usText = QTBSchemaUtil::GetCurrentSchemaNlsString(pValue->GetDisplayName());
            return usText.IsEmpty() ? state.name : usText;
        }
    }
    return state.name;
}
