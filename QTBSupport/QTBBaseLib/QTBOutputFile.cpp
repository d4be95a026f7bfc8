#include "QTBOutputFile.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t BUFFER_SIZE = 1 << 16;
constexpr const char* OWN_FILES = "/proc/self/fd";

std::error_code MakeError(int number)
{
    return {number, std::generic_category()};
}

std::error_code GetLastError()
{
    return MakeError(errno);
}

std::string GetFolder(const fs::path& path)
{
    return path.has_parent_path() ? path.parent_path().string() : ".";
}

// A link there, the standard output for example, leads to an open file, which its text need not name.
bool IsInProc(const std::string& folder)
{
    struct statfs status = {};
    return statfs(folder.c_str(), &status) == 0 && status.f_type == PROC_SUPER_MAGIC;
}

// Follows symbolic links, also to a file that is not there yet; *pIsOpenFile tells of a link to an open file.
std::error_code FollowLinks(fs::path* pPath, bool* pIsOpenFile)
{
    constexpr int MAX_LINKS = 40;
    for (int count = 0; count < MAX_LINKS; ++count) {
        std::error_code error;
        if (!fs::is_symlink(*pPath, error)) {
            return {};
        }
        if (IsInProc(GetFolder(*pPath))) {
            *pIsOpenFile = true;
            return {};
        }
        const fs::path target = fs::read_symlink(*pPath, error);
        if (error) {
            return error;
        }
        *pPath = pPath->parent_path() / target;
    }
    return MakeError(ELOOP);
}

} // namespace

QTBOutputFile::~QTBOutputFile()
{
    if (m_Descriptor >= 0) {
        close(m_Descriptor);
    }
    if (!m_InterimPath.empty()) {
        unlink(m_InterimPath.c_str());
    }
}

std::error_code QTBOutputFile::Open(const std::string& path)
{
    fs::path target = path;
    if (const std::error_code error = FollowLinks(&target, &m_IsStraight)) {
        return error;
    }
    struct stat status = {};
    const bool isThere = stat(target.c_str(), &status) == 0;
    if (!isThere && errno != ENOENT) {
        return GetLastError();
    }
    if ((isThere && S_ISDIR(status.st_mode)) || !target.has_filename()) {
        return MakeError(EISDIR);
    }
    m_IsStraight = m_IsStraight || (isThere && !S_ISREG(status.st_mode));
    if (m_IsStraight) {
        m_Descriptor = open(target.c_str(), O_WRONLY | O_APPEND | O_NOCTTY | O_CLOEXEC);
        return m_Descriptor >= 0 ? std::error_code() : GetLastError();
    }
    // To be replaced it need not be writable, but who made it read-only does not want that.
    if (isThere && faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
        return GetLastError();
    }
    m_Target = target.string();
    m_Folder = GetFolder(target);
    if (const std::error_code error = OpenInterim()) {
        return error;
    }
    if (isThere) {
        // Only the administrator can give a file away. The permissions come last, because a new owner may cost some.
        [[maybe_unused]] const int ignored = fchown(m_Descriptor, status.st_uid, status.st_gid);
        if (fchmod(m_Descriptor, status.st_mode & 0777) != 0) {
            return GetLastError();
        }
    }
    return {};
}

template <class Make>
std::error_code QTBOutputFile::MakeInterimName(Make make)
{
    static std::atomic<unsigned int> s_Number = 0;
    const std::string beginning = m_Folder + "/.new-" + std::to_string(getpid()) + "-";
    for (;;) {
        const std::string path = beginning + std::to_string(++s_Number);
        if (make(path)) {
            m_InterimPath = path;
            return {};
        }
        if (errno != EEXIST) {
            return GetLastError();
        }
    }
}

std::error_code QTBOutputFile::OpenInterim()
{
    // The file gets its name through the folder of open files.
    if (access(OWN_FILES, X_OK) == 0) {
        m_Descriptor = open(m_Folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
        if (m_Descriptor >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)) {
            return m_Descriptor >= 0 ? std::error_code() : GetLastError();
        }
    }
    return MakeInterimName([this](const std::string& path) {
        m_Descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        return m_Descriptor >= 0;
    });
}

std::error_code QTBOutputFile::Write(std::string_view piece)
{
    m_Buffer += piece;
    return m_Buffer.size() >= BUFFER_SIZE ? WriteBuffer() : std::error_code();
}

std::error_code QTBOutputFile::WriteBuffer()
{
    std::string_view rest = m_Buffer;
    while (!rest.empty()) {
        const ssize_t written = write(m_Descriptor, rest.data(), rest.size());
        if (written < 0 && errno != EINTR) {
            return GetLastError();
        }
        rest.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    m_Buffer.clear();
    return {};
}

std::error_code QTBOutputFile::Complete()
{
    if (const std::error_code error = WriteBuffer()) {
        return error;
    }
    if (!m_IsStraight) {
        if (fsync(m_Descriptor) != 0) {
            return GetLastError();
        }
        if (m_InterimPath.empty()) {
            // A name that is taken cannot be given to it, so it gets another one first.
            const std::string self = std::string(OWN_FILES) + "/" + std::to_string(m_Descriptor);
            const auto link = [&self](const std::string& path) {
                return linkat(AT_FDCWD, self.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
            };
            if (const std::error_code error = MakeInterimName(link)) {
                return error;
            }
        }
        if (std::rename(m_InterimPath.c_str(), m_Target.c_str()) != 0) {
            return GetLastError();
        }
        m_InterimPath.clear();
        // The name is safe only when the folder is on the disk too.
        if (const int folder = open(m_Folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); folder >= 0) {
            fsync(folder);
            close(folder);
        }
    }
    const int descriptor = m_Descriptor;
    m_Descriptor = -1;
    return close(descriptor) == 0 ? std::error_code() : GetLastError();
}
