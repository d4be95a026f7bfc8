#include "QTBStoreItems.h"

#include <algorithm>
#include <cstring>
#include <string>

#include <utf8.h>

#include "QTBStoreChecksum.h"
#include "QTBStoreDatabase.h"
#include "QTBStoreFailure.h"

namespace {

std::string ObjectQuery(std::string_view condition)
{
    return std::string("SELECT ")
        .append(QTBStoreItems::OBJECT_COLUMNS)
        .append(QTBStoreItems::OBJECT_SOURCE)
        .append(condition);
}

std::string RelationQuery(std::string_view condition)
{
    return std::string("SELECT ").append(QTBStoreItems::RELATION_COLUMNS).append(" FROM relation r ").append(condition);
}

std::int64_t ChecksumOf(const QTBStoreItems::Texts& texts)
{
    QTBStoreChecksum checksum;
    for (const std::string_view text : texts) {
        checksum.Add(text);
    }
    return checksum.Get();
}

// Whether the text is what a session takes for granted. Nearly all of it is ASCII, which is looked at word by word.
bool IsUtf8(std::string_view text)
{
    constexpr std::uint64_t HIGH_BITS = 0x8080808080808080U;
    std::size_t at = 0;
    for (std::uint64_t word = 0; at + sizeof(word) <= text.size(); at += sizeof(word)) {
        std::memcpy(&word, text.data() + at, sizeof(word));
        if ((word & HIGH_BITS) != 0) {
            break;
        }
    }
    text.remove_prefix(at);
    return utf8::is_valid(text.begin(), text.end());
}

} // namespace

QTBStoreItems::QTBStoreItems(QTBStoreDatabase& database) : m_Database(database) {}

void QTBStoreItems::ReadObject(const QTBStoreStatement& row, QTBStoreObject* pObject) const
{
    pObject->id = row.GetInt(0);
    pObject->key = row.GetText(1);
    pObject->classId = row.GetInt(2);
    pObject->firstId = row.GetInt(3);
    pObject->supersedesId = row.GetInt(4);
    pObject->isNewest = row.GetInt(5) != 0;
    pObject->version = row.GetText(6);
    pObject->stateId = row.GetInt(7);
    pObject->fileId = row.GetInt(8);
    pObject->info = row.GetText(9);
    pObject->record = row.GetText(10);
    pObject->checkedOutBy = row.GetText(12);
    Verify({pObject->key, pObject->version, pObject->info, pObject->record}, row.GetInt(11));
}

void QTBStoreItems::ReadRelation(const QTBStoreStatement& row, QTBStoreRelation* pRelation) const
{
    pRelation->id = row.GetInt(0);
    pRelation->key = row.GetText(1);
    pRelation->classId = row.GetInt(2);
    pRelation->leftId = row.GetInt(3);
    pRelation->rightId = row.GetInt(4);
    pRelation->supersedesId = row.GetInt(5);
    pRelation->info = row.GetText(6);
    pRelation->record = row.GetText(7);
    Verify({pRelation->key, "", pRelation->info, pRelation->record}, row.GetInt(8));
}

void QTBStoreItems::Verify(const Texts& texts, std::int64_t checksum) const
{
    if (ChecksumOf(texts) != checksum || !std::all_of(texts.begin(), texts.end(), &IsUtf8)) {
        m_Database.RaiseDamaged("the checksum of " + std::string(texts.front()) + " does not match");
    }
}

bool QTBStoreItems::FindObject(std::string_view key, QTBStoreObject* pObject)
{
    static const std::string s_Query = ObjectQuery("WHERE o.key = ?");
    QTBStoreStatement statement = m_Database.Prepare(s_Query);
    if (!statement.Bind(1, key).Step()) {
        return false;
    }
    ReadObject(statement, pObject);
    return true;
}

bool QTBStoreItems::FindRelation(std::string_view key, QTBStoreRelation* pRelation)
{
    static const std::string s_Query = RelationQuery("WHERE r.key = ?");
    QTBStoreStatement statement = m_Database.Prepare(s_Query);
    if (!statement.Bind(1, key).Step()) {
        return false;
    }
    ReadRelation(statement, pRelation);
    return true;
}

bool QTBStoreItems::ReadObject(std::int64_t id, QTBStoreObject* pObject)
{
    static const std::string s_Query = ObjectQuery("WHERE o.id = ?");
    QTBStoreStatement statement = m_Database.Prepare(s_Query);
    if (!statement.Bind(1, id).Step()) {
        return false;
    }
    ReadObject(statement, pObject);
    return true;
}

bool QTBStoreItems::IsObjectKey(std::string_view key)
{
    return m_Database.Prepare("SELECT 1 FROM object WHERE key = ?").Bind(1, key).Step();
}

bool QTBStoreItems::IsRelationKey(std::string_view key)
{
    return m_Database.Prepare("SELECT 1 FROM relation WHERE key = ?").Bind(1, key).Step();
}

QTBStoreObject QTBStoreItems::GetObject(const CATUnicodeString& usKey)
{
    QTBStoreObject object;
    if (!FindObject(usKey.View(), &object)) {
        throw QTBStoreFailure(KeyIsTaken(usKey.View()) ? "ItemIsRelationERR_1102" : "ItemNotFoundERR_1101", usKey);
    }
    return object;
}

bool QTBStoreItems::GetItem(const CATUnicodeString& usKey, QTBStoreObject* pObject, QTBStoreRelation* pRelation)
{
    if (FindObject(usKey.View(), pObject)) {
        return true;
    }
    if (!FindRelation(usKey.View(), pRelation)) {
        throw QTBStoreFailure("ItemNotFoundERR_1101", usKey);
    }
    return false;
}

QTBStoreObject QTBStoreItems::GetNewest(const QTBStoreObject& object)
{
    if (object.isNewest) {
        return object;
    }
    static const std::string s_Query = ObjectQuery("WHERE o.first_id = ? AND o.is_newest = 1");
    QTBStoreStatement statement = m_Database.Prepare(s_Query);
    if (!statement.Bind(1, object.firstId).Step()) {
        m_Database.RaiseDamaged("the newest version of " + object.key + " is missing");
    }
    QTBStoreObject newest;
    ReadObject(statement, &newest);
    return newest;
}

std::vector<QTBStoreObject> QTBStoreItems::GetVersions(const QTBStoreObject& object)
{
    static const std::string s_Query = ObjectQuery("WHERE o.first_id = ? ORDER BY o.id");
    QTBStoreStatement statement = m_Database.Prepare(s_Query);
    statement.Bind(1, object.firstId);
    std::vector<QTBStoreObject> versions;
    while (statement.Step()) {
        ReadObject(statement, &versions.emplace_back());
    }
    return versions;
}

std::vector<QTBStoreRelation> QTBStoreItems::ReadRelations(std::string_view condition, std::int64_t id)
{
    QTBStoreStatement statement = m_Database.Prepare(RelationQuery(condition));
    statement.Bind(1, id);
    std::vector<QTBStoreRelation> relations;
    while (statement.Step()) {
        ReadRelation(statement, &relations.emplace_back());
    }
    return relations;
}

std::vector<QTBStoreRelation> QTBStoreItems::GetRelationsBelow(std::int64_t leftId)
{
    return ReadRelations("WHERE r.left_id = ? ORDER BY r.id", leftId);
}

std::vector<QTBStoreRelation> QTBStoreItems::GetRelationsAbove(std::int64_t rightId)
{
    return ReadRelations("WHERE r.right_id = ? ORDER BY r.id", rightId);
}

std::string QTBStoreItems::MakeKeyUnique(const std::string& key)
{
    std::string candidate = key;
    for (int i = 2; KeyIsTaken(candidate); ++i) {
        candidate = key + "~" + std::to_string(i);
    }
    return candidate;
}

std::int64_t QTBStoreItems::TakeId()
{
    if (m_LastId == 0) {
        m_LastId = m_Database.GetNumber("SELECT last_id FROM counter");
    }
    return ++m_LastId;
}

void QTBStoreItems::SaveCounter()
{
    if (m_LastId != 0) {
        m_Database.Prepare("UPDATE counter SET last_id = ?").Bind(1, m_LastId).Run();
    }
}

std::string QTBStoreItems::MakeKey(const CATUnicodeString& usClass, std::int64_t id)
{
    return MakeKeyUnique(std::string(usClass.View()) + "/" + std::to_string(id));
}

void QTBStoreItems::Insert(QTBStoreObject* pObject, const CATUnicodeString& usClass)
{
    pObject->id = TakeId();
    if (pObject->firstId == 0) {
        pObject->firstId = pObject->id;
    }
    if (pObject->key.empty()) {
        pObject->key = MakeKey(usClass, pObject->id);
    }
    m_Database
        .Prepare("INSERT INTO object (id, key, class_id, first_id, supersedes_id, is_newest, version, state_id, "
                 "file_id, info, record, checksum) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
        .Bind(1, pObject->id)
        .Bind(2, pObject->key)
        .Bind(3, pObject->classId)
        .Bind(4, pObject->firstId)
        .BindId(5, pObject->supersedesId)
        .Bind(6, std::int64_t{pObject->isNewest})
        .Bind(7, pObject->version)
        .BindId(8, pObject->stateId)
        .BindId(9, pObject->fileId)
        .Bind(10, pObject->info)
        .Bind(11, pObject->record)
        .Bind(12, ChecksumOf({pObject->key, pObject->version, pObject->info, pObject->record}))
        .Run();
}

void QTBStoreItems::Insert(QTBStoreRelation* pRelation, const CATUnicodeString& usClass)
{
    pRelation->id = TakeId();
    if (pRelation->key.empty()) {
        pRelation->key = MakeKey(usClass, pRelation->id);
    }
    m_Database
        .Prepare("INSERT INTO relation (id, key, class_id, left_id, right_id, supersedes_id, info, record, checksum) "
                 "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)")
        .Bind(1, pRelation->id)
        .Bind(2, pRelation->key)
        .Bind(3, pRelation->classId)
        .Bind(4, pRelation->leftId)
        .Bind(5, pRelation->rightId)
        .BindId(6, pRelation->supersedesId)
        .Bind(7, pRelation->info)
        .Bind(8, pRelation->record)
        .Bind(9, ChecksumOf({pRelation->key, "", pRelation->info, pRelation->record}))
        .Run();
}

void QTBStoreItems::Update(const QTBStoreObject& object)
{
    m_Database
        .Prepare("UPDATE object SET class_id = ?2, is_newest = ?3, version = ?4, state_id = ?5, file_id = ?6, "
                 "info = ?7, record = ?8, checksum = ?9 WHERE id = ?1")
        .Bind(1, object.id)
        .Bind(2, object.classId)
        .Bind(3, std::int64_t{object.isNewest})
        .Bind(4, object.version)
        .BindId(5, object.stateId)
        .BindId(6, object.fileId)
        .Bind(7, object.info)
        .Bind(8, object.record)
        .Bind(9, ChecksumOf({object.key, object.version, object.info, object.record}))
        .Run();
}

void QTBStoreItems::Update(const QTBStoreRelation& relation)
{
    m_Database
        .Prepare("UPDATE relation SET class_id = ?2, left_id = ?3, right_id = ?4, supersedes_id = ?5, info = ?6, "
                 "record = ?7, checksum = ?8 WHERE id = ?1")
        .Bind(1, relation.id)
        .Bind(2, relation.classId)
        .Bind(3, relation.leftId)
        .Bind(4, relation.rightId)
        .BindId(5, relation.supersedesId)
        .Bind(6, relation.info)
        .Bind(7, relation.record)
        .Bind(8, ChecksumOf({relation.key, "", relation.info, relation.record}))
        .Run();
}

void QTBStoreItems::Delete(const QTBStoreObject& object)
{
    m_Database.Prepare("DELETE FROM object WHERE id = ?").Bind(1, object.id).Run();
}

void QTBStoreItems::Delete(const QTBStoreRelation& relation)
{
    m_Database.Prepare("DELETE FROM relation WHERE id = ?").Bind(1, relation.id).Run();
}

void QTBStoreItems::IndexAttributes(std::int64_t objectId, const Strings& strings, QTBStoreClasses& classes)
{
    QTBStoreStatement statement =
        m_Database.Prepare("INSERT INTO object_attribute (object_id, attribute_id, value) VALUES (?, ?, ?)");
    for (const auto& [usName, usValue] : strings) {
        statement.Bind(1, objectId).Bind(2, classes.RequireAttribute(usName)).Bind(3, usValue).Run();
    }
}

void QTBStoreItems::ReindexAttributes(std::int64_t objectId, const Strings& strings, QTBStoreClasses& classes)
{
    m_Database.Prepare("DELETE FROM object_attribute WHERE object_id = ?").Bind(1, objectId).Run();
    IndexAttributes(objectId, strings, classes);
}

void QTBStoreItems::SetCheckOut(std::int64_t objectId, const CATUnicodeString& usUser)
{
    m_Database
        .Prepare("INSERT INTO checkout (object_id, user_name, since) "
                 "VALUES (?, ?, strftime('%Y-%m-%dT%H:%M:%SZ', 'now'))")
        .Bind(1, objectId)
        .Bind(2, usUser)
        .Run();
}

void QTBStoreItems::RemoveCheckOut(std::int64_t objectId)
{
    m_Database.Prepare("DELETE FROM checkout WHERE object_id = ?").Bind(1, objectId).Run();
}
