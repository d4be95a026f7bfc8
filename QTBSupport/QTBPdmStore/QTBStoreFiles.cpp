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
    if (hash.size() != QTBStoreFileCopy::HASH_LENGTH ||
        hash.find_first_not_of("0123456789abcdef") != std::string::npos) {
        m_Database.RaiseDamaged(hash + " is no hash of a file");
    }
    return m_Folder + "/" + hash.substr(0, 2) + "/" + hash.substr(2);
}

std::unique_ptr<QTBStoreFileCopy> QTBStoreFiles::Take(const CATUnicodeString& usPath) const
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
    return std::make_unique<QTBStoreFileCopy>(std::string(usPath.View()), interimPath);
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

void QTBStoreFiles::Fetch(std::int64_t fileId, const CATUnicodeString& usPath)
{
    const std::string hash = GetHash(fileId);
    const std::string target(usPath.View());
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

void QTBStoreFiles::RemoveAbandoned() const
{
    const auto yesterday = fs::file_time_type::clock::now() - std::chrono::hours(24);
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_Folder, error)) {
        if (entry.path().filename().string().starts_with(INCOMING) && entry.last_write_time(error) < yesterday &&
            !error) {
            fs::remove(entry.path(), error);
        }
    }
}

void QTBStoreFiles::RemoveUnused(const std::vector<std::int64_t>& fileIds)
{
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
