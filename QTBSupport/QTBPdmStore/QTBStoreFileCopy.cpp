#include "QTBStoreFileCopy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

#include <openssl/evp.h>

#include "CATUnicodeString.h"
#include "QTBStoreFailure.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t BLOCK_SIZE = 1 << 16;

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

void WriteAll(const File& file, const std::string& path, std::string_view rest)
{
    while (!rest.empty()) {
        const ssize_t written = write(file.Get(), rest.data(), rest.size());
        if (written < 0 && errno != EINTR) {
            RaiseUnwritable(path, errno);
        }
        rest.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
}

} // namespace

QTBStoreFileCopy::QTBStoreFileCopy(const std::string& source, const std::string& interimPath)
    : m_InterimPath(interimPath)
{
    const File file(interimPath, O_WRONLY | O_CREAT | O_TRUNC);
    if (!file.IsOpen()) {
        RaiseUnwritable(interimPath, errno);
    }
    try {
        m_Content =
            Examine(source, [&file, &interimPath](std::string_view block) { WriteAll(file, interimPath, block); });
        if (fsync(file.Get()) != 0) {
            RaiseUnwritable(interimPath, errno);
        }
    } catch (...) {
        unlink(interimPath.c_str());
        throw;
    }
}

QTBStoreFileCopy::~QTBStoreFileCopy()
{
    if (!m_InterimPath.empty()) {
        unlink(m_InterimPath.c_str());
    }
}

void QTBStoreFileCopy::KeepAs(const std::string& path)
{
    if (std::rename(m_InterimPath.c_str(), path.c_str()) != 0) {
        RaiseUnwritable(path, errno);
    }
    m_InterimPath.clear();
    // The name is safe only when the folder is on the disk too.
    const std::string folderPath = fs::path(path).parent_path().string();
    const File folder(folderPath.empty() ? "." : folderPath, O_RDONLY | O_DIRECTORY);
    if (folder.IsOpen()) {
        fsync(folder.Get());
    }
}

QTBStoreFileCopy::Content QTBStoreFileCopy::Examine(const std::string& path,
                                                    const std::function<void(std::string_view)>& receive)
{
    // Not to wait for the other end of a pipe.
    const File file(path, O_RDONLY | O_NONBLOCK);
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
        if (receive) {
            receive({block.data(), static_cast<std::size_t>(count)});
        }
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

void QTBStoreFileCopy::RequireWritten(const std::string& path, const std::error_code& error)
{
    if (error) {
        RaiseUnwritable(path, error.value());
    }
}
