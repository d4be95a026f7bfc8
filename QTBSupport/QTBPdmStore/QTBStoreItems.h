#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QTBStoreClasses.h"
#include "QTBStoreItem.h"
#include "QTBStoreStatement.h"

class QTBStoreDatabase;
struct QTBStoreRecord;

// Reads and writes the objects and relations of the store. Raises QTBStoreFailure for an item whose checksum says that
// it was damaged.
class QTBStoreItems
{
public:
    explicit QTBStoreItems(QTBStoreDatabase& database);

    // What the checksum of an item covers: key, version, info and record.
    using Texts = std::array<std::string_view, 4>;

    // Columns of an object in the order in which ReadObject takes them, from "object o LEFT JOIN checkout c". A
    // statement for these may give further columns behind them.
    static constexpr std::string_view OBJECT_COLUMNS =
        "o.id, o.key, o.class_id, o.first_id, o.supersedes_id, o.is_newest, o.version, o.state_id, o.file_id, o.info, "
        "o.record, o.checksum, c.user_name";
    static constexpr int OBJECT_COLUMN_COUNT = 13;
    static constexpr std::string_view OBJECT_SOURCE = " FROM object o LEFT JOIN checkout c ON c.object_id = o.id ";

    static constexpr std::string_view RELATION_COLUMNS =
        "r.id, r.key, r.class_id, r.left_id, r.right_id, r.supersedes_id, r.info, r.record, r.checksum";
    static constexpr int RELATION_COLUMN_COUNT = 9;

    void ReadObject(const QTBStoreStatement& row, QTBStoreObject* pObject) const;
    void ReadRelation(const QTBStoreStatement& row, QTBStoreRelation* pRelation) const;

    // False when there is no such item.
    bool FindObject(std::string_view key, QTBStoreObject* pObject);
    bool FindRelation(std::string_view key, QTBStoreRelation* pRelation);
    bool ReadObject(std::int64_t id, QTBStoreObject* pObject);
    bool IsObjectKey(std::string_view key);
    bool IsRelationKey(std::string_view key);
    bool KeyIsTaken(std::string_view key) { return IsObjectKey(key) || IsRelationKey(key); }

    // The object of that key. Raises QTBStoreFailure when there is none, or a relation.
    QTBStoreObject GetObject(const CATUnicodeString& usKey);
    // The object or relation of that key; true for an object.
    bool GetItem(const CATUnicodeString& usKey, QTBStoreObject* pObject, QTBStoreRelation* pRelation);

    // The newest version of the object that this one is a version of.
    QTBStoreObject GetNewest(const QTBStoreObject& object);
    // All versions, oldest first.
    std::vector<QTBStoreObject> GetVersions(const QTBStoreObject& object);

    // Relations whose left or right end is that object, in the order in which they were made.
    std::vector<QTBStoreRelation> GetRelationsBelow(std::int64_t leftId);
    std::vector<QTBStoreRelation> GetRelationsAbove(std::int64_t rightId);

    // Adds the object with what its id decides: id, first version, and for an empty key a key made from the class.
    void Insert(QTBStoreObject* pObject, const CATUnicodeString& usClass);
    void Insert(QTBStoreRelation* pRelation, const CATUnicodeString& usClass);
    // Writes everything but the check-out.
    void Update(const QTBStoreObject& object);
    void Update(const QTBStoreRelation& relation);
    // Deletes the row and what depends on it; relations of an object must be gone before.
    void Delete(const QTBStoreObject& object);
    void Delete(const QTBStoreRelation& relation);

    // Puts the string attributes of a new object into the index, and brings the index up to date for a changed one.
    using Strings = std::vector<std::pair<CATUnicodeString, CATUnicodeString>>;
    void IndexAttributes(std::int64_t objectId, const Strings& strings, QTBStoreClasses& classes);
    void ReindexAttributes(std::int64_t objectId, const Strings& strings, QTBStoreClasses& classes);

    void SetCheckOut(std::int64_t objectId, const CATUnicodeString& usUser);
    void RemoveCheckOut(std::int64_t objectId);

    // A key that no item has: the text, with a number behind it if need be.
    std::string MakeKeyUnique(const std::string& key);

    // Writes down which ids were given; before the request that inserted items is committed.
    void SaveCounter();

private:
    // Raises the failure of a damaged store unless the texts of an item are what they were when they were written.
    void Verify(const Texts& texts, std::int64_t checksum) const;
    // An id that no item has or had: keys made from ids are never given twice.
    std::int64_t TakeId();
    std::string MakeKey(const CATUnicodeString& usClass, std::int64_t id);
    std::vector<QTBStoreRelation> ReadRelations(std::string_view condition, std::int64_t id);

    QTBStoreDatabase& m_Database;
    // The last id given, 0 before the request gives one.
    std::int64_t m_LastId = 0;
};
