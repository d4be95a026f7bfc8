#include "QTBStoreMigrations.h"

#include <iterator>
#include <string>

#include "CATUnicodeString.h"
#include "QTBStoreDatabase.h"
#include "QTBStoreFailure.h"
#include "QTBStoreTransaction.h"

namespace {

// The statements that lead to version 1, 2 and so on. What stands here is history: a change of the tables is a new
// entry.
constexpr const char* STEPS[] = {
    // Objects with their versions and states, relations, check-outs, the index of attributes.
    R"(
CREATE TABLE counter (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    last_id INTEGER NOT NULL
) STRICT;
INSERT INTO counter (id, last_id) VALUES (1, 0);

CREATE TABLE state (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    position INTEGER NOT NULL UNIQUE,
    allows_change INTEGER NOT NULL CHECK (allows_change IN (0, 1)),
    allows_revise INTEGER NOT NULL CHECK (allows_revise IN (0, 1))
) STRICT;
INSERT INTO state (name, position, allows_change, allows_revise)
VALUES ('10', 1, 1, 1), ('20', 2, 0, 0), ('30', 3, 0, 1), ('40', 4, 0, 0);

CREATE TABLE class (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    base_name TEXT
) STRICT;

CREATE TABLE attribute (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE
) STRICT;

CREATE TABLE object (
    id INTEGER PRIMARY KEY,
    key TEXT NOT NULL UNIQUE CHECK (key <> ''),
    class_id INTEGER NOT NULL REFERENCES class (id),
    first_id INTEGER NOT NULL REFERENCES object (id),
    supersedes_id INTEGER UNIQUE REFERENCES object (id),
    is_newest INTEGER NOT NULL CHECK (is_newest IN (0, 1)),
    version TEXT NOT NULL,
    state_id INTEGER REFERENCES state (id),
    info TEXT NOT NULL,
    record TEXT NOT NULL,
    UNIQUE (first_id, version)
) STRICT;
CREATE INDEX object_by_class ON object (class_id, is_newest);
CREATE UNIQUE INDEX object_newest ON object (first_id) WHERE is_newest = 1;

CREATE TABLE relation (
    id INTEGER PRIMARY KEY,
    key TEXT NOT NULL UNIQUE CHECK (key <> ''),
    class_id INTEGER NOT NULL REFERENCES class (id),
    left_id INTEGER NOT NULL REFERENCES object (id),
    right_id INTEGER NOT NULL REFERENCES object (id),
    supersedes_id INTEGER REFERENCES relation (id) ON DELETE SET NULL,
    info TEXT NOT NULL,
    record TEXT NOT NULL
) STRICT;
CREATE INDEX relation_by_left ON relation (left_id, class_id);
CREATE INDEX relation_by_right ON relation (right_id, class_id);
CREATE UNIQUE INDEX relation_by_superseded ON relation (supersedes_id) WHERE supersedes_id IS NOT NULL;

CREATE TABLE checkout (
    object_id INTEGER PRIMARY KEY REFERENCES object (id) ON DELETE CASCADE,
    user_name TEXT NOT NULL CHECK (user_name <> '')
) STRICT;
CREATE INDEX checkout_by_user ON checkout (user_name);

CREATE TABLE object_attribute (
    object_id INTEGER NOT NULL REFERENCES object (id) ON DELETE CASCADE,
    attribute_id INTEGER NOT NULL REFERENCES attribute (id),
    value TEXT NOT NULL,
    PRIMARY KEY (object_id, attribute_id)
) STRICT, WITHOUT ROWID;
CREATE INDEX object_attribute_by_value ON object_attribute (attribute_id, value);
)",
    // Files of objects; when an object was checked out.
    R"(
CREATE TABLE file (
    id INTEGER PRIMARY KEY,
    hash TEXT NOT NULL UNIQUE CHECK (length(hash) = 64),
    size INTEGER NOT NULL CHECK (size >= 0)
) STRICT;
ALTER TABLE object ADD COLUMN file_id INTEGER REFERENCES file (id);
CREATE INDEX object_by_file ON object (file_id) WHERE file_id IS NOT NULL;
ALTER TABLE checkout ADD COLUMN since TEXT NOT NULL DEFAULT '';
)",
    // Checksums, so that damage is noticed.
    R"(
ALTER TABLE object ADD COLUMN checksum INTEGER NOT NULL DEFAULT 0;
ALTER TABLE relation ADD COLUMN checksum INTEGER NOT NULL DEFAULT 0;
UPDATE object SET checksum = record_checksum(key, version, info, record);
UPDATE relation SET checksum = record_checksum(key, '', info, record);
)",
};
static_assert(std::size(STEPS) == QTBStoreMigrations::CURRENT_VERSION);

void Apply(QTBStoreDatabase& database, int from, int to)
{
    for (int version = from + 1; version <= to; ++version) {
        database.Execute(STEPS[version - 1]);
        database.Execute(("PRAGMA user_version = " + std::to_string(version)).c_str());
    }
}

CATUnicodeString ToText(std::int64_t number)
{
    return CATUnicodeString(std::to_string(number).c_str());
}

} // namespace

void QTBStoreMigrations::Create(QTBStoreDatabase& database, int version)
{
    QTBStoreTransaction transaction(database, QTBStoreTransaction::Kind::Write);
    database.Execute(("PRAGMA application_id = " + std::to_string(APPLICATION_ID)).c_str());
    Apply(database, 0, version);
    transaction.Commit();
}

void QTBStoreMigrations::Update(QTBStoreDatabase& database)
{
    const CATUnicodeString usPath(std::string_view{database.GetPath()});
    if (database.GetNumber("PRAGMA application_id") != APPLICATION_ID) {
        throw QTBStoreFailure("NoStoreERR_1003", usPath);
    }
    const auto getVersion = [&database, &usPath] {
        const std::int64_t version = database.GetNumber("PRAGMA user_version");
        if (version > CURRENT_VERSION) {
            throw QTBStoreFailure("StoreTooNewERR_1004", usPath, ToText(version), ToText(CURRENT_VERSION));
        }
        return static_cast<int>(version);
    };
    const int version = getVersion();
    if (version < 1) {
        throw QTBStoreFailure("NoStoreERR_1003", usPath);
    }
    if (version == CURRENT_VERSION) {
        return;
    }
    if (database.IsReadOnly()) {
        throw QTBStoreFailure("StoreTooOldERR_1010", usPath, ToText(version), ToText(CURRENT_VERSION));
    }
    QTBStoreTransaction transaction(database, QTBStoreTransaction::Kind::Write);
    // Another process may have been faster.
    Apply(database, getVersion(), CURRENT_VERSION);
    transaction.Commit();
}
