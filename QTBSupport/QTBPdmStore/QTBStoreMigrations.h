#pragma once

class QTBStoreDatabase;

// The tables of a store (docs/store.md) and how they came to be: a store is made by going through all versions of its
// schema from the first one, and an older store is brought up to date by going through those that it lacks.
class QTBStoreMigrations
{
public:
    // Marks the file as a store ("QTBS").
    static constexpr int APPLICATION_ID = 0x51544253;
    static constexpr int CURRENT_VERSION = 3;

    // Makes the tables of an empty file, up to a version; below the current one only for tests.
    static void Create(QTBStoreDatabase& database, int version = CURRENT_VERSION);

    // Checks that the file is a store that can be read and brings it up to date in one transaction. Raises
    // QTBStoreFailure for a file that is none, for a store of a newer version and for an older one that may only be
    // read.
    static void Update(QTBStoreDatabase& database);
};
