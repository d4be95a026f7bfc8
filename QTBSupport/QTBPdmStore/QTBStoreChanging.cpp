#include "QTBStoreChanging.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>

#include "QTBSchema.h"
#include "QTBStoreDatabase.h"
#include "QTBStoreFailure.h"
#include "QTBStoreRecord.h"
#include "QTBStoreVersion.h"

namespace {

using Superseding = QTBStoreAnswer::Superseding;

CATUnicodeString ToText(std::string_view text)
{
    return CATUnicodeString(text);
}

bool IsEnd(const CATUnicodeString& usClass, const QTBSchema& schema, const QTBSchemaRelation& relation, int count,
           HRESULT (QTBSchemaRelation::*getName)(int, CATUnicodeString*) const)
{
    const QTBSchemaObject* pObject = schema.FindObject(usClass);
    for (int i = 1; i <= count && pObject != nullptr; ++i) {
        CATUnicodeString usName;
        if (SUCCEEDED((relation.*getName)(i, &usName)) && pObject->IsKindOf(usName)) {
            return true;
        }
    }
    return false;
}

} // namespace

QTBStoreChanging::QTBStoreChanging(QTBStoreDatabase& database, const Caller& caller, std::string_view function,
                                   QTBStoreFileChanges* pFiles)
    : QTBStoreRequest(database, caller, QTBStoreTransaction::Kind::Write, function), m_Files(*pFiles)
{
}

QTBStoreChanging::~QTBStoreChanging() = default;

void QTBStoreChanging::Require(bool isAllowed, const QTBStoreObject& object)
{
    if (!isAllowed) {
        QTBStoreRights::Refuse(object, m_Items.GetNewest(object), m_Lifecycle, m_User);
    }
}

QTBStoreObject QTBStoreChanging::GetObjectToChange(const CATUnicodeString& usKey, bool QTBStoreRights::*right)
{
    QTBStoreObject object = m_Items.GetObject(usKey);
    Require(RightsOf(object).*right, object);
    return object;
}

std::int64_t QTBStoreChanging::KeepFile(QTBStoreFileCopy& copy)
{
    m_Files.kept.push_back(copy.GetHash());
    return QTBStoreFiles(m_Database).Keep(copy);
}

void QTBStoreChanging::ReleaseFile(const QTBStoreObject& object)
{
    if (object.fileId != 0) {
        m_Files.released.push_back(object.fileId);
    }
}

void QTBStoreChanging::CheckOut(const std::vector<CATUnicodeString>& keys)
{
    for (const CATUnicodeString& usKey : EachOnce(keys)) {
        QTBStoreObject object = GetObjectToChange(usKey, &QTBStoreRights::checkOut);
        m_Items.SetCheckOut(object.id, m_User);
        object.checkedOutBy = m_User.View();
        Answer(object);
    }
    Finish();
}

void QTBStoreChanging::CheckIn(const std::vector<CATUnicodeString>& keys, const FileCopies& copies)
{
    std::unordered_map<std::string_view, QTBStoreFileCopy*> copyOf;
    for (std::size_t i = 0; i < keys.size() && i < copies.size(); ++i) {
        QTBStoreFileCopy*& pCopy = copyOf[keys[i].View()];
        if (pCopy != nullptr && copies[i] != nullptr && pCopy->GetHash() != copies[i]->GetHash()) {
            throw QTBStoreFailure("TwoFilesForObjectERR_1126", keys[i]);
        }
        if (pCopy == nullptr) {
            pCopy = copies[i].get();
        }
    }
    for (const CATUnicodeString& usKey : EachOnce(keys)) {
        QTBStoreObject object = m_Items.GetObject(usKey);
        if (object.checkedOutBy.empty()) {
            throw QTBStoreFailure("NotCheckedOutERR_1113", usKey);
        }
        Require(RightsOf(object).checkIn, object);
        if (const auto copy = copyOf.find(usKey.View()); copy != copyOf.end() && copy->second != nullptr) {
            ReleaseFile(object);
            object.fileId = KeepFile(*copy->second);
            m_Items.Update(object);
        }
        m_Items.RemoveCheckOut(object.id);
        object.checkedOutBy.clear();
        Answer(object);
    }
    Finish();
}

void QTBStoreChanging::Promote(const std::vector<CATUnicodeString>& keys)
{
    for (const CATUnicodeString& usKey : EachOnce(keys)) {
        QTBStoreObject object = GetObjectToChange(usKey, &QTBStoreRights::promote);
        object.stateId = m_Lifecycle.FindNext(object.stateId)->id;
        m_Items.Update(object);
        Answer(object);
        for (const QTBStoreRelation& relation : m_Items.GetRelationsBelow(object.id)) {
            Answer(relation);
        }
    }
    Finish();
}

void QTBStoreChanging::Revise(const std::vector<CATUnicodeString>& keys)
{
    for (const CATUnicodeString& usKey : EachOnce(keys)) {
        ReviseObject(usKey);
    }
    Finish();
}

void QTBStoreChanging::ReviseObject(const CATUnicodeString& usKey)
{
    QTBStoreObject old = GetObjectToChange(usKey, &QTBStoreRights::revise);
    QTBStoreObject revised = old;
    revised.supersedesId = old.id;
    revised.stateId = m_Lifecycle.GetFirst().id;
    revised.version = QTBStoreVersion::GetNext(old.version);
    revised.key = m_Items.MakeKeyUnique(QTBStoreVersion::MakeKey(old.key, old.version, revised.version));

    const QTBSchema& schema = m_Classes.GetSchema();
    QTBStoreRecord record = QTBStoreRecord::ReadStored(old.record, schema);
    const bool showsVersion = std::any_of(record.strings.begin(), record.strings.end(), [&old](const auto& attribute) {
        return attribute.first == QTBStoreRecord::REVISION_ATTR && attribute.second.View() == old.version;
    });
    if (showsVersion) {
        record.SetString(QTBStoreRecord::REVISION_ATTR, ToText(revised.version), schema);
        revised.record = record.attributes;
    }

    old.isNewest = false;
    m_Items.Update(old);
    m_Items.Insert(&revised, ClassOf(revised).name);
    m_Items.IndexAttributes(revised.id, record.strings, m_Classes);
    m_Database.Prepare("UPDATE checkout SET object_id = ? WHERE object_id = ?")
        .Bind(1, revised.id)
        .Bind(2, old.id)
        .Run();
    m_Database.Prepare("UPDATE relation SET right_id = ? WHERE right_id = ?").Bind(1, revised.id).Bind(2, old.id).Run();
    Answer(revised);

    for (QTBStoreRelation relation : m_Items.GetRelationsBelow(old.id)) {
        relation.supersedesId = relation.id;
        relation.leftId = revised.id;
        relation.key.clear();
        m_Items.Insert(&relation, ClassOf(relation).name);
        Answer(relation);
    }
    for (const QTBStoreRelation& relation : m_Items.GetRelationsAbove(revised.id)) {
        if (relation.leftId != old.id && relation.leftId != revised.id) {
            Answer(relation);
        }
    }
}

void QTBStoreChanging::UpdateAttributes(const CATUnicodeString& usKey, const CATUnicodeString& usXml)
{
    const QTBSchema& schema = m_Classes.GetSchema();
    const QTBStoreRecord changes = QTBStoreRecord::ReadAttributes(usXml, usKey, schema);
    QTBStoreObject object;
    QTBStoreRelation relation;
    if (m_Items.GetItem(usKey, &object, &relation)) {
        Require(RightsOf(object).edit, object);
        QTBStoreRecord record = QTBStoreRecord::ReadStored(object.record, schema);
        record.Merge(changes, schema);
        object.record = record.attributes;
        m_Items.Update(object);
        m_Items.ReindexAttributes(object.id, record.strings, m_Classes);
        Answer(object);
    } else {
        QTBStoreObject left;
        m_Items.ReadObject(relation.leftId, &left);
        Require(RightsOf(left).changeStructure, left);
        QTBStoreRecord record = QTBStoreRecord::ReadStored(relation.record, schema);
        record.Merge(changes, schema);
        relation.record = record.attributes;
        m_Items.Update(relation);
        Answer(relation);
    }
    Finish();
}

void QTBStoreChanging::CreateObject(const CATUnicodeString& usClass, const CATUnicodeString& usKey,
                                    const CATUnicodeString& usXml)
{
    const QTBSchema& schema = m_Classes.GetSchema();
    if (schema.FindObject(usClass) == nullptr) {
        throw QTBStoreFailure("ObjectClassUnknownERR_1108", usClass);
    }
    if (!usKey.IsEmpty() && m_Items.KeyIsTaken(usKey.View())) {
        throw QTBStoreFailure("KeyExistsERR_1124", usKey);
    }
    const QTBStoreRecord record = QTBStoreRecord::ReadAttributes(usXml, usKey.IsEmpty() ? usClass : usKey, schema);
    QTBStoreObject object;
    object.classId = m_Classes.RequireClass(usClass);
    object.key = usKey.View();
    object.record = record.attributes;
    if (ClassOf(object).isVersioned) {
        object.version = QTBStoreVersion::FIRST;
        object.stateId = m_Lifecycle.GetFirst().id;
    }
    m_Items.Insert(&object, usClass);
    m_Items.IndexAttributes(object.id, record.strings, m_Classes);
    Answer(object);
    Finish();
}

void QTBStoreChanging::CreateRelation(const CATUnicodeString& usClass, const CATUnicodeString& usLeftKey,
                                      const CATUnicodeString& usRightKey, const CATUnicodeString& usXml)
{
    const QTBSchema& schema = m_Classes.GetSchema();
    QTBSchemaRelation* pRelation = nullptr;
    if (FAILED(schema.GetRelationPtr(usClass, &pRelation))) {
        throw QTBStoreFailure("RelationClassUnknownERR_1109", usClass);
    }
    const QTBStoreRecord record = QTBStoreRecord::ReadAttributes(usXml, usClass, schema);
    const QTBStoreObject left = GetObjectToChange(usLeftKey, &QTBStoreRights::changeStructure);
    const QTBStoreObject named = m_Items.GetObject(usRightKey);
    // Relations lead to the newest version.
    const QTBStoreObject right = m_Items.GetNewest(named);
    const auto getSchemaClass = [](const QTBStoreClass& objectClass) {
        return objectClass.baseName.IsEmpty() ? objectClass.name : objectClass.baseName;
    };
    if (!IsEnd(getSchemaClass(ClassOf(left)), schema, *pRelation, pRelation->GetLeftObjectCount(),
               &QTBSchemaRelation::GetLeftObjectName)) {
        throw QTBStoreFailure("ClassNotAtEndERR_1115", usClass, usLeftKey);
    }
    if (!IsEnd(getSchemaClass(ClassOf(right)), schema, *pRelation, pRelation->GetRightObjectCount(),
               &QTBSchemaRelation::GetRightObjectName)) {
        throw QTBStoreFailure("ClassNotAtEndERR_1115", usClass, usRightKey);
    }
    QTBStoreRelation relation;
    relation.classId = m_Classes.RequireClass(usClass);
    relation.leftId = left.id;
    relation.rightId = right.id;
    relation.record = record.attributes;
    m_Items.Insert(&relation, usClass);
    if (right.id != named.id) {
        Answer(right);
    }
    Answer(relation);
    Finish();
}

void QTBStoreChanging::Delete(const std::vector<CATUnicodeString>& keys, const CATUnicodeString& usOption)
{
    if (!usOption.IsEmpty() && usOption != "AllVersions") {
        throw QTBStoreFailure("DeleteOptionUnknownERR_1119", usOption);
    }
    for (const CATUnicodeString& usKey : EachOnce(keys)) {
        DeleteItem(usKey, usOption);
    }
    Finish();
}

void QTBStoreChanging::DeleteItem(const CATUnicodeString& usKey, const CATUnicodeString& usOption)
{
    QTBStoreObject object;
    QTBStoreRelation relation;
    if (!m_Items.GetItem(usKey, &object, &relation)) {
        QTBStoreObject left;
        m_Items.ReadObject(relation.leftId, &left);
        Require(RightsOf(left).changeStructure, left);
        DeleteRelation(relation);
    } else if (usOption.IsEmpty()) {
        Require(RightsOf(object).changeStructure, object);
        DeleteNewestVersion(object);
    } else {
        DeleteAllVersions(m_Items.GetNewest(object));
    }
}

void QTBStoreChanging::DeleteRelation(const QTBStoreRelation& relation)
{
    m_Items.Delete(relation);
    m_Answer.AddRelationToDelete(relation.key);
}

void QTBStoreChanging::RemoveObject(const QTBStoreObject& object)
{
    ReleaseFile(object);
    m_Items.Delete(object);
    m_Answer.AddObjectToDelete(object.key);
}

void QTBStoreChanging::RequireUsersChangeable(const QTBStoreObject& object)
{
    for (const QTBStoreRelation& relation : m_Items.GetRelationsAbove(object.id)) {
        QTBStoreObject left;
        m_Items.ReadObject(relation.leftId, &left);
        if (left.firstId != object.firstId && !RightsOf(left).changeStructure) {
            throw QTBStoreFailure("ObjectIsUsedERR_1120", ToText(object.key), ToText(left.key));
        }
    }
}

void QTBStoreChanging::DeleteNewestVersion(const QTBStoreObject& object)
{
    QTBStoreObject earlier;
    if (object.supersedesId == 0 || !m_Items.ReadObject(object.supersedesId, &earlier)) {
        RequireUsersChangeable(object);
        for (const QTBStoreRelation& relation : m_Items.GetRelationsAbove(object.id)) {
            DeleteRelation(relation);
        }
        for (const QTBStoreRelation& relation : m_Items.GetRelationsBelow(object.id)) {
            DeleteRelation(relation);
        }
        RemoveObject(object);
        return;
    }

    // The relations of the deleted version give way to those that they came from.
    std::unordered_map<std::int64_t, std::string> deletedKeys;
    const std::vector<QTBStoreRelation> below = m_Items.GetRelationsBelow(object.id);
    for (const QTBStoreRelation& relation : below) {
        deletedKeys.emplace(relation.supersedesId, relation.key);
        m_Items.Delete(relation);
    }
    m_Database.Prepare("UPDATE relation SET right_id = ? WHERE right_id = ?")
        .Bind(1, earlier.id)
        .Bind(2, object.id)
        .Run();
    ReleaseFile(object);
    m_Items.Delete(object);
    earlier.isNewest = true;
    m_Items.Update(earlier);

    Answer(earlier, {Superseding::Kind::Key, object.key});
    for (const QTBStoreRelation& relation : m_Items.GetRelationsBelow(earlier.id)) {
        const auto deleted = deletedKeys.find(relation.id);
        Answer(relation, deleted != deletedKeys.end() ? Superseding{Superseding::Kind::Key, deleted->second}
                                                      : Superseding{Superseding::Kind::None, {}});
    }
    for (const QTBStoreRelation& relation : m_Items.GetRelationsAbove(earlier.id)) {
        if (relation.leftId != earlier.id) {
            Answer(relation);
        }
    }
    for (const QTBStoreRelation& relation : below) {
        m_Answer.AddRelationToDelete(relation.key);
    }
    m_Answer.AddObjectToDelete(object.key);
}

void QTBStoreChanging::DeleteAllVersions(const QTBStoreObject& newest)
{
    std::vector<QTBStoreObject> versions = m_Items.GetVersions(newest);
    std::reverse(versions.begin(), versions.end());
    Require(RightsOf(newest).changeStructure, newest);
    for (const QTBStoreObject& version : versions) {
        if (version.stateId != 0 && !m_Lifecycle.Get(version.stateId).allowsChange) {
            throw QTBStoreFailure("StateForbidsERR_1107", ToText(version.key),
                                  QTBStoreLifecycle::GetDisplayName(m_Lifecycle.Get(version.stateId)));
        }
        RequireUsersChangeable(version);
    }
    for (const QTBStoreObject& version : versions) {
        for (const QTBStoreRelation& relation : m_Items.GetRelationsAbove(version.id)) {
            DeleteRelation(relation);
        }
        for (const QTBStoreRelation& relation : m_Items.GetRelationsBelow(version.id)) {
            DeleteRelation(relation);
        }
        RemoveObject(version);
    }
}
