#include "QTBStoreFiles.h"

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "QTBOutputFile.h"
#include "QTBStoreDatabase.h"
#include "QTBStoreFailure.h"
#include "QTBStoreTransaction.h"

namespace fs = std::filesystem;

namespace {

// Names of copies in the making begin so.
constexpr const char* INCOMING = "incoming-";

bool IsHash(const std::string& text)
{
    return text.size() == QTBStoreFileCopy::HASH_LENGTH &&
           text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

std::string ToFault(const std::string& hash)
{
    return "the file " + hash + " has another content than it had";
}

} // namespace

QTBStoreFiles::QTBStoreFiles(QTBStoreDatabase& database) : m_Database(database), m_Folder(GetFolder(database.GetPath()))
{
}

std::string QTBStoreFiles::GetFolder(const std::string& storePath)
{
    return storePath + ".files";
}

std::string QTBStoreFiles::GetPath(const std::string& hash) const
{
    // The text comes from the store's file, and a path is made of it.
    if (!IsHash(hash)) {
        m_Database.RaiseDamaged(hash + " is no hash of a file");
    }
    return m_Folder + "/" + hash.substr(0, 2) + "/" + hash.substr(2);
}

std::unique_ptr<QTBStoreFileCopy> QTBStoreFiles::Take(const std::string& path) const
{
    static std::atomic<int> s_Number = 0;
    std::error_code error;
    fs::create_directories(m_Folder, error);
    if (error) {
        throw QTBStoreFailure("FileUnwritableERR_1118", CATUnicodeString(std::string_view{m_Folder}),
                              CATUnicodeString(error.message().c_str()));
    }
    const std::string interimPath =
        m_Folder + "/" + INCOMING + std::to_string(getpid()) + "-" + std::to_string(++s_Number);
    return std::make_unique<QTBStoreFileCopy>(path, interimPath);
}

std::int64_t QTBStoreFiles::Keep(QTBStoreFileCopy& copy)
{
    const std::string path = GetPath(copy.GetHash());
    std::error_code error;
    fs::create_directory(fs::path(path).parent_path(), error);
    try {
        // Also when the content is there already: nobody knows how it fared since.
        copy.KeepAs(path);
    } catch (const QTBStoreFailure&) {
        // The folder may be another user's; the content is not less good for that.
        if (!FindFault(copy.GetHash()).empty()) {
            throw;
        }
    }
    QTBStoreStatement statement = m_Database.Prepare("SELECT id FROM file WHERE hash = ?");
    if (statement.Bind(1, std::string_view{copy.GetHash()}).Step()) {
        return statement.GetInt(0);
    }
    m_Database.Prepare("INSERT INTO file (hash, size) VALUES (?, ?)")
        .Bind(1, std::string_view{copy.GetHash()})
        .Bind(2, copy.GetSize())
        .Run();
    return m_Database.GetLastInsertId();
}

std::string QTBStoreFiles::GetHash(std::int64_t fileId)
{
    QTBStoreStatement statement = m_Database.Prepare("SELECT hash FROM file WHERE id = ?");
    if (!statement.Bind(1, fileId).Step()) {
        m_Database.RaiseDamaged("file " + std::to_string(fileId) + " is missing");
    }
    return std::string(statement.GetText(0));
}

void QTBStoreFiles::Fetch(std::int64_t fileId, const std::string& target)
{
    const std::string hash = GetHash(fileId);
    const auto require = [&target](const std::error_code& error) { QTBStoreFileCopy::RequireWritten(target, error); };
    QTBOutputFile file;
    require(file.Open(target));
    // What goes straight to its target cannot be taken back, so it is looked at before.
    if (file.IsStraight() && QTBStoreFileCopy::Examine(GetPath(hash)).hash != hash) {
        m_Database.RaiseDamaged(ToFault(hash));
    }
    const auto content = QTBStoreFileCopy::Examine(
        GetPath(hash), [&file, &require](std::string_view block) { require(file.Write(block)); });
    if (content.hash != hash) {
        m_Database.RaiseDamaged(ToFault(hash));
    }
    require(file.Complete());
}

bool QTBStoreFiles::IsSame(std::int64_t fileId, const std::string& path)
{
    std::error_code error;
    return fs::exists(path, error) && QTBStoreFileCopy::Examine(path).hash == GetHash(fileId);
}

std::string QTBStoreFiles::FindFault(std::int64_t fileId)
{
    return FindFault(GetHash(fileId));
}

std::string QTBStoreFiles::FindFault(const std::string& hash) const
{
    try {
        return QTBStoreFileCopy::Examine(GetPath(hash)).hash == hash ? std::string() : ToFault(hash);
    } catch (const QTBStoreFailure&) {
        return "the file " + hash + " cannot be read";
    }
}

void QTBStoreFiles::RemoveAbandoned()
{
    const auto yesterday = fs::file_time_type::clock::now() - std::chrono::hours(24);
    std::vector<std::string> unnamed;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_Folder, error)) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with(INCOMING)) {
            if (entry.last_write_time(error) < yesterday && !error) {
                fs::remove(entry.path(), error);
            }
            continue;
        }
        for (const fs::directory_entry& kept : fs::directory_iterator(entry.path(), error)) {
            const std::string hash = name + kept.path().filename().string();
            if (IsHash(hash) && !HasRow(hash)) {
                unnamed.push_back(hash);
            }
        }
    }
    RemoveUnnamed(unnamed);
}

bool QTBStoreFiles::HasRow(const std::string& hash)
{
    return m_Database.Prepare("SELECT 1 FROM file WHERE hash = ?").Bind(1, std::string_view{hash}).Step();
}

void QTBStoreFiles::RemoveUnnamed(const std::vector<std::string>& hashes)
{
    if (hashes.empty()) {
        return;
    }
    // The other writers stay out: one of them may have kept a file and not committed its row yet.
    QTBStoreTransaction transaction(m_Database, QTBStoreTransaction::Kind::Write);
    for (const std::string& hash : hashes) {
        std::error_code error;
        if (!HasRow(hash)) {
            fs::remove(GetPath(hash), error);
        }
    }
    transaction.Commit();
}

void QTBStoreFiles::RemoveUnused(const std::vector<std::int64_t>& fileIds)
{
    if (fileIds.empty()) {
        return;
    }
    // The other writers stay out, so that none takes up a file that goes.
    QTBStoreTransaction transaction(m_Database, QTBStoreTransaction::Kind::Write);
    for (const std::int64_t id : fileIds) {
        QTBStoreStatement statement = m_Database.Prepare("SELECT f.hash FROM file f WHERE f.id = ?1 AND NOT EXISTS "
                                                         "(SELECT 1 FROM object o WHERE o.file_id = ?1)");
        if (!statement.Bind(1, id).Step()) {
            continue;
        }
        std::error_code error;
        fs::remove(GetPath(std::string(statement.GetText(0))), error);
        if (!error) {
            m_Database.Prepare("DELETE FROM file WHERE id = ?").Bind(1, id).Run();
        }
    }
    transaction.Commit();
}

std::vector<std::int64_t> QTBStoreFiles::GetAll()
{
    std::vector<std::int64_t> ids;
    QTBStoreStatement statement = m_Database.Prepare("SELECT id FROM file ORDER BY id");
    while (statement.Step()) {
        ids.push_back(statement.GetInt(0));
    }
    return ids;
}
