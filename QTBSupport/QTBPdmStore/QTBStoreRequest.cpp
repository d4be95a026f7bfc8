#include "QTBStoreRequest.h"

#include <unordered_set>

#include "QTBStoreDatabase.h"

QTBStoreRequest::QTBStoreRequest(QTBStoreDatabase& database, const Caller& caller, QTBStoreTransaction::Kind kind,
                                 std::string_view function)
    : m_Database(database), m_User(caller.user), m_Transaction(database, kind), m_Classes(database),
      m_Lifecycle(database), m_Items(database),
      m_Answer({database, m_Classes, m_Lifecycle, caller.user, caller.isHeld}, caller.sink, function)
{
}

QTBStoreRequest::~QTBStoreRequest() = default;

std::vector<CATUnicodeString> QTBStoreRequest::EachOnce(const std::vector<CATUnicodeString>& keys)
{
    std::vector<CATUnicodeString> once;
    std::unordered_set<std::string_view> known;
    for (const CATUnicodeString& usKey : keys) {
        if (known.insert(usKey.View()).second) {
            once.push_back(usKey);
        }
    }
    return once;
}

void QTBStoreRequest::Finish()
{
    m_Items.SaveCounter();
    m_Answer.Finish();
    m_Transaction.Commit();
}

QTBStoreRights QTBStoreRequest::RightsOf(const QTBStoreObject& object)
{
    return QTBStoreRights::Of(object, ClassOf(object), m_Lifecycle, m_User);
}

void QTBStoreRequest::Answer(const QTBStoreObject& object, const QTBStoreAnswer::Superseding& superseding)
{
    m_Answer.AddObject(object, RightsOf(object), superseding);
}

void QTBStoreRequest::Answer(const QTBStoreRelation& relation, const QTBStoreAnswer::Superseding& superseding)
{
    QTBStoreObject left;
    QTBStoreObject right;
    if (!m_Items.ReadObject(relation.leftId, &left) || !m_Items.ReadObject(relation.rightId, &right)) {
        m_Database.RaiseDamaged("an object of the relation " + relation.key + " is missing");
    }
    m_Answer.AddRelation(relation, {left.key, left.classId}, {right.key, right.classId}, RightsOf(left).changeStructure,
                         superseding);
}
