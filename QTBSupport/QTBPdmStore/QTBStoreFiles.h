#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "CATUnicodeString.h"
#include "QTBStoreFileCopy.h"

class QTBStoreDatabase;

// The files of a store: kept in a folder beside it, each under the SHA-256 of its content, so that the same content is
// kept once. A file is complete before a change that refers to it is committed, and removed only after the change that
// gives it up was; what a crash leaves behind is therefore at most a file that nobody refers to.
class QTBStoreFiles
{
public:
    explicit QTBStoreFiles(QTBStoreDatabase& database);

    // The folder of a store.
    static std::string GetFolder(const std::string& storePath);

    // Copies a file into the folder, so that it can be kept. Takes its time, so no other program waits for it: not for
    // inside a transaction for writing unless nothing else is at hand.
    std::unique_ptr<QTBStoreFileCopy> Take(const CATUnicodeString& usPath) const;

    // Keeps the copy; the id of its row, that of an earlier file with the same content if there is one. Only inside a
    // transaction for writing.
    std::int64_t Keep(QTBStoreFileCopy& copy);

    // Writes a copy of a kept file, which replaces one that is there. Raises QTBStoreFailure when the store's copy is
    // missing or not what it was.
    void Fetch(std::int64_t fileId, const CATUnicodeString& usPath);

    // Removes those of the files that no object has any more, in a transaction of its own.
    void RemoveUnused(const std::vector<std::int64_t>& fileIds);

    std::vector<std::int64_t> GetAll();
    // What is wrong with the kept file, empty when it is as it was.
    std::string FindFault(std::int64_t fileId);

    // Removes copies that programs left behind when they died.
    void RemoveAbandoned() const;

private:
    std::string GetHash(std::int64_t fileId);
    std::string FindFault(const std::string& hash) const;
    std::string GetPath(const std::string& hash) const;

    QTBStoreDatabase& m_Database;
    std::string m_Folder;
};
