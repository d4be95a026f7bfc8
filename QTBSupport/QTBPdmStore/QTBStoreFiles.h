#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "CATUnicodeString.h"
#include "QTBStoreFileCopy.h"

class QTBStoreDatabase;

// What a change did to the files: those that may have no object any more when it is committed, by the ids of their
// rows, and those it kept, by their hashes, which may have no row when it is not.
struct QTBStoreFileChanges
{
    std::vector<std::int64_t> released;
    std::vector<std::string> kept;
};

// The files of a store: kept in a folder beside it, each under the SHA-256 of its content, so that the same content is
// kept once. A file is complete before a change that refers to it is committed, and removed only after the change that
// gives it up was; what a crash leaves behind is therefore at most a file that nobody refers to.
// There is a row for each file, made by the transaction that keeps it, so who may write can tell which have none.
class QTBStoreFiles
{
public:
    explicit QTBStoreFiles(QTBStoreDatabase& database);

    // The folder of a store.
    static std::string GetFolder(const std::string& storePath);

    // Copies a file into the folder, so that it can be kept. Takes its time, so no other program waits for it: not for
    // inside a transaction for writing unless nothing else is at hand.
    std::unique_ptr<QTBStoreFileCopy> Take(const std::string& path) const;

    // Keeps the copy; the id of its row, that of an earlier file with the same content if there is one. Only inside a
    // transaction for writing.
    std::int64_t Keep(QTBStoreFileCopy& copy);

    // Writes a copy of a kept file, which replaces one that is there. Raises QTBStoreFailure when the store's copy is
    // missing or not what it was.
    void Fetch(std::int64_t fileId, const std::string& target);

    // Whether a file has the content of a kept one; not when there is none of that name.
    bool IsSame(std::int64_t fileId, const std::string& path);

    // Removes those of the files that no object has any more, in a transaction of its own.
    void RemoveUnused(const std::vector<std::int64_t>& fileIds);

    std::vector<std::int64_t> GetAll();
    // What is wrong with the kept file, empty when it is as it was.
    std::string FindFault(std::int64_t fileId);

    // Removes those of the files that have no row, in a transaction of its own.
    void RemoveUnnamed(const std::vector<std::string>& hashes);

    // Removes files and copies in the making that programs left behind when they died.
    void RemoveAbandoned();

private:
    std::string GetHash(std::int64_t fileId);
    std::string FindFault(const std::string& hash) const;
    bool HasRow(const std::string& hash);
    std::string GetPath(const std::string& hash) const;

    QTBStoreDatabase& m_Database;
    std::string m_Folder;
};
