#include "QTBStoreCheck.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "QTBSchema.h"
#include "QTBStoreClasses.h"
#include "QTBStoreDatabase.h"
#include "QTBStoreFiles.h"
#include "QTBStoreRecord.h"
#include "QTBStoreTransaction.h"

namespace {

constexpr int MAX_FAULTS = 1000;

} // namespace

CATListValCATUnicodeString QTBStoreCheck::Run()
{
    {
        QTBStoreTransaction transaction(m_Database, QTBStoreTransaction::Kind::Read);
        CheckPages();
        if (m_Faults.Size() == 0) {
            CheckReferences();
            CheckRecords();
            CheckVersions();
            CheckIndex();
            CheckFiles();
        }
        transaction.Commit();
    }
    if (m_Faults.Size() == 0 && !m_Database.IsReadOnly()) {
        QTBStoreFiles files(m_Database);
        files.RemoveUnused(files.GetAll());
        files.RemoveAbandoned();
    }
    return m_Faults;
}

bool QTBStoreCheck::Report(std::string_view fault)
{
    m_Faults.Append(CATUnicodeString(fault));
    return m_Faults.Size() < MAX_FAULTS;
}

void QTBStoreCheck::CheckPages()
{
    QTBStoreStatement rows = m_Database.Prepare("PRAGMA integrity_check(1000)");
    while (rows.Step()) {
        if (rows.GetText(0) != "ok" && !Report(rows.GetText(0))) {
            return;
        }
    }
}

void QTBStoreCheck::CheckReferences()
{
    QTBStoreStatement rows = m_Database.Prepare("PRAGMA foreign_key_check");
    while (rows.Step()) {
        const std::string row = std::string(rows.GetText(0)) + " " + std::to_string(rows.GetInt(1));
        if (!Report(row + " refers to a missing " + std::string(rows.GetText(2)))) {
            return;
        }
    }
}

void QTBStoreCheck::CheckRecords()
{
    QTBStoreStatement rows = m_Database.Prepare(
        "SELECT key FROM object WHERE checksum <> record_checksum(key, version, info, record) UNION ALL "
        "SELECT key FROM relation WHERE checksum <> record_checksum(key, '', info, record)");
    while (rows.Step() && Report(std::string(rows.GetText(0)) + ": the checksum does not match")) {
    }
}

void QTBStoreCheck::CheckVersions()
{
    constexpr std::pair<const char*, const char*> RULES[] = {
        {"SELECT key FROM object o WHERE is_newest = 0 AND NOT EXISTS "
         "(SELECT 1 FROM object n WHERE n.first_id = o.first_id AND n.is_newest = 1)",
         "has no newest version"},
        {"SELECT key FROM object o WHERE is_newest = (EXISTS (SELECT 1 FROM object n WHERE n.supersedes_id = o.id))",
         "is the newest version and superseded, or neither"},
        {"SELECT o.key FROM object o JOIN object e ON e.id = o.supersedes_id WHERE e.first_id <> o.first_id",
         "supersedes another object"},
        {"SELECT r.key FROM relation r JOIN object x ON x.id = r.right_id WHERE x.is_newest = 0",
         "leads to an old version"},
        {"SELECT r.key FROM relation r JOIN relation s ON s.id = r.supersedes_id JOIN object l ON l.id = r.left_id "
         "WHERE l.supersedes_id IS NOT s.left_id",
         "goes on from a relation of another object"},
        {"SELECT o.key FROM checkout c JOIN object o ON o.id = c.object_id WHERE o.is_newest = 0",
         "is an old version that is checked out"},
        {"SELECT key FROM object WHERE (SELECT last_id FROM counter) < id UNION ALL "
         "SELECT key FROM relation WHERE (SELECT last_id FROM counter) < id",
         "has a number that is still to be given"},
        {"SELECT o.key FROM object o JOIN relation r ON r.key = o.key", "is the key of an object and a relation"},
    };
    for (const auto& [query, fault] : RULES) {
        QTBStoreStatement rows = m_Database.Prepare(query);
        while (rows.Step()) {
            if (!Report(std::string(rows.GetText(0)) + " " + fault)) {
                return;
            }
        }
    }
}

void QTBStoreCheck::CheckIndex()
{
    QTBStoreClasses classes(m_Database);
    QTBStoreStatement rows = m_Database.Prepare("SELECT id, key, record FROM object ORDER BY id");
    QTBStoreStatement indexed =
        m_Database.Prepare("SELECT n.name, a.value FROM object_attribute a JOIN attribute n ON n.id = a.attribute_id "
                           "WHERE a.object_id = ?");
    while (rows.Step()) {
        auto strings = QTBStoreRecord::ReadStored(rows.GetText(2), classes.GetSchema()).strings;
        std::vector<std::pair<CATUnicodeString, CATUnicodeString>> found;
        indexed.Bind(1, rows.GetInt(0));
        while (indexed.Step()) {
            found.emplace_back(CATUnicodeString(indexed.GetText(0)), CATUnicodeString(indexed.GetText(1)));
        }
        std::sort(strings.begin(), strings.end());
        std::sort(found.begin(), found.end());
        if (strings != found && !Report(std::string(rows.GetText(1)) + ": the index of attributes is not up to date")) {
            return;
        }
    }
}

void QTBStoreCheck::CheckFiles()
{
    QTBStoreFiles files(m_Database);
    QTBStoreStatement rows =
        m_Database.Prepare("SELECT DISTINCT file_id FROM object WHERE file_id IS NOT NULL ORDER BY file_id");
    while (rows.Step()) {
        const std::string fault = files.FindFault(rows.GetInt(0));
        if (!fault.empty() && !Report(fault)) {
            return;
        }
    }
}
