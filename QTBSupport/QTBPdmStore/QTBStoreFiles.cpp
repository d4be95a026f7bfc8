#include "QTBStoreFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include <openssl/evp.h>

#include "QTBStoreDatabase.h"
#include "QTBStoreFailure.h"
#include "QTBStoreTransaction.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t BLOCK_SIZE = 1 << 16;
constexpr std::size_t HASH_LENGTH = 64;

[[noreturn]] void RaiseUnreadable(const std::string& path, int error)
{
    throw QTBStoreFailure("FileUnreadableERR_1117", CATUnicodeString(std::string_view{path}),
                          CATUnicodeString(std::strerror(error)));
}

[[noreturn]] void RaiseUnwritable(const std::string& path, int error)
{
    throw QTBStoreFailure("FileUnwritableERR_1118", CATUnicodeString(std::string_view{path}),
                          CATUnicodeString(std::strerror(error)));
}

// An open file; closed with the object.
class File
{
public:
    File(const std::string& path, int flags) : m_Descriptor(open(path.c_str(), flags | O_CLOEXEC, 0666)) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File()
    {
        if (m_Descriptor >= 0) {
            close(m_Descriptor);
        }
    }

    bool IsOpen() const { return m_Descriptor >= 0; }
    int Get() const { return m_Descriptor; }

private:
    int m_Descriptor;
};

// A file in the making; it vanishes unless it is kept.
class NewFile
{
public:
    explicit NewFile(std::string path) : m_Path(std::move(path)), m_File(m_Path, O_WRONLY | O_CREAT | O_TRUNC)
    {
        if (!m_File.IsOpen()) {
            RaiseUnwritable(m_Path, errno);
        }
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile()
    {
        if (!m_Path.empty()) {
            unlink(m_Path.c_str());
        }
    }

    void Write(const char* pData, std::size_t size) const
    {
        while (size > 0) {
            const ssize_t written = write(m_File.Get(), pData, size);
            if (written < 0 && errno != EINTR) {
                RaiseUnwritable(m_Path, errno);
            }
            if (written > 0) {
                pData += written;
                size -= static_cast<std::size_t>(written);
            }
        }
    }

    // Gives the file its name, when all of it is on the disk.
    void KeepAs(const std::string& path)
    {
        if (fsync(m_File.Get()) != 0 || std::rename(m_Path.c_str(), path.c_str()) != 0) {
            RaiseUnwritable(path, errno);
        }
        m_Path.clear();
        const File folder(fs::path(path).parent_path().string(), O_RDONLY | O_DIRECTORY);
        if (folder.IsOpen()) {
            fsync(folder.Get());
        }
    }

private:
    std::string m_Path;
    File m_File;
};

// Reads the file block by block, hands each to the receiver and returns the SHA-256 of all and its size.
template <class Receiver>
std::pair<std::string, std::int64_t> ReadAndHash(const std::string& path, Receiver receive)
{
    const File file(path, O_RDONLY);
    if (!file.IsOpen()) {
        RaiseUnreadable(path, errno);
    }
    struct stat status = {};
    if (fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        RaiseUnreadable(path, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    }
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> pContext(EVP_MD_CTX_new(), &EVP_MD_CTX_free);
    EVP_DigestInit_ex(pContext.get(), EVP_sha256(), nullptr);
    std::vector<char> block(BLOCK_SIZE);
    std::int64_t size = 0;
    for (;;) {
        const ssize_t count = read(file.Get(), block.data(), block.size());
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            RaiseUnreadable(path, errno);
        }
        if (count == 0) {
            break;
        }
        EVP_DigestUpdate(pContext.get(), block.data(), static_cast<std::size_t>(count));
        receive(block.data(), static_cast<std::size_t>(count));
        size += count;
    }
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int length = 0;
    EVP_DigestFinal_ex(pContext.get(), digest.data(), &length);
    std::string hash;
    for (unsigned int i = 0; i < length; ++i) {
        constexpr const char* DIGITS = "0123456789abcdef";
        hash += DIGITS[digest[i] >> 4];
        hash += DIGITS[digest[i] & 15];
    }
    return {hash, size};
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
    if (hash.size() != HASH_LENGTH || hash.find_first_not_of("0123456789abcdef") != std::string::npos) {
        m_Database.RaiseDamaged(hash + " is no hash of a file");
    }
    return m_Folder + "/" + hash.substr(0, 2) + "/" + hash.substr(2);
}

std::int64_t QTBStoreFiles::Keep(const CATUnicodeString& usPath)
{
    const std::string source(usPath.View());
    std::error_code error;
    fs::create_directories(m_Folder, error);
    if (error) {
        RaiseUnwritable(m_Folder, error.value());
    }
    // Only one process at a time is here, because it has the right to write to the store.
    NewFile incoming(m_Folder + "/incoming");
    const auto [hash, size] =
        ReadAndHash(source, [&incoming](const char* pData, std::size_t count) { incoming.Write(pData, count); });

    const std::string path = GetPath(hash);
    fs::create_directory(fs::path(path).parent_path(), error);
    const auto keptSize = fs::file_size(path, error);
    if (error || static_cast<std::int64_t>(keptSize) != size) {
        incoming.KeepAs(path);
    }

    QTBStoreStatement statement = m_Database.Prepare("SELECT id FROM file WHERE hash = ?");
    if (statement.Bind(1, std::string_view{hash}).Step()) {
        return statement.GetInt(0);
    }
    m_Database.Prepare("INSERT INTO file (hash, size) VALUES (?, ?)")
        .Bind(1, std::string_view{hash})
        .Bind(2, size)
        .Run();
    return m_Database.GetLastInsertId();
}

QTBStoreFiles::Kept QTBStoreFiles::GetKept(std::int64_t fileId)
{
    QTBStoreStatement statement = m_Database.Prepare("SELECT hash, size FROM file WHERE id = ?");
    if (!statement.Bind(1, fileId).Step()) {
        m_Database.RaiseDamaged("file " + std::to_string(fileId) + " is missing");
    }
    return {std::string(statement.GetText(0)), statement.GetInt(1)};
}

void QTBStoreFiles::Fetch(std::int64_t fileId, const CATUnicodeString& usPath)
{
    const Kept kept = GetKept(fileId);
    const std::string target(usPath.View());
    NewFile outgoing(target + ".new");
    const auto [hash, size] = ReadAndHash(
        GetPath(kept.hash), [&outgoing](const char* pData, std::size_t count) { outgoing.Write(pData, count); });
    if (hash != kept.hash) {
        m_Database.RaiseDamaged("the file " + kept.hash + " has another content than it had");
    }
    outgoing.KeepAs(target);
}

std::string QTBStoreFiles::FindFault(std::int64_t fileId)
{
    const Kept kept = GetKept(fileId);
    try {
        const auto [hash, size] = ReadAndHash(GetPath(kept.hash), [](const char*, std::size_t) {});
        return hash == kept.hash ? std::string() : "the file " + kept.hash + " has another content than it had";
    } catch (const QTBStoreFailure&) {
        return "the file " + kept.hash + " cannot be read";
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
