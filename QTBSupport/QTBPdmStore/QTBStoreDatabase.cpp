#include "QTBStoreDatabase.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include <sqlite3.h>

#include "QTBStoreChecksum.h"
#include "QTBStoreFailure.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* READERS_FILE_SYSTEM = "qtb-reader";
constexpr const char* CHANGES = "-wal";
constexpr const char* INDEX = "-shm";

// The path as a name with an option.
std::string ToName(const std::string& path, const char* option)
{
    std::string name = "file:";
    for (const char c : path) {
        switch (c) {
        case '%':
            name += "%25";
            break;
        case '?':
            name += "%3f";
            break;
        case '#':
            name += "%23";
            break;
        default:
            name += c;
        }
    }
    return name + "?" + option;
}

bool MayWrite(const std::string& path)
{
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

std::string FolderOf(const std::string& path)
{
    const std::string folder = fs::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

bool IsThere(const std::string& path)
{
    std::error_code error;
    return fs::exists(path, error);
}

// Whether there are changes beside the main file that are not in it yet.
bool HasChangesBeside(const std::string& path)
{
    std::error_code error;
    const auto size = fs::file_size(path + CHANGES, error);
    return !error && size > 0;
}

// Which file beside the store keeps the user from changing it; empty for none.
std::string FindObstacle(const std::string& path)
{
    for (const char* end : {CHANGES, INDEX}) {
        if (IsThere(path + end) && !MayWrite(path + end)) {
            return path + end;
        }
    }
    return {};
}

std::string GetOwner(const std::string& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        return "?";
    }
    const passwd* pEntry = getpwuid(status.st_uid);
    return pEntry != nullptr ? pEntry->pw_name : std::to_string(status.st_uid);
}

int OpenWithoutMaking(sqlite3_vfs* pFileSystem, const char* name, sqlite3_file* pFile, int flags, int* pFlags)
{
    if ((flags & SQLITE_OPEN_WAL) != 0) {
        flags = (flags & ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) | SQLITE_OPEN_READONLY;
    }
    return sqlite3_vfs_find(nullptr)->xOpen(pFileSystem, name, pFile, flags, pFlags);
}

// The usual file system, but the files beside a store are not made where they are missing.
void AddReadersFileSystem()
{
    static sqlite3_vfs s_FileSystem = [] {
        sqlite3_vfs fileSystem = *sqlite3_vfs_find(nullptr);
        fileSystem.zName = READERS_FILE_SYSTEM;
        fileSystem.xOpen = &OpenWithoutMaking;
        return fileSystem;
    }();
    sqlite3_vfs_register(&s_FileSystem, 0);
}

bool IsSpaceMissing(int systemError)
{
    return systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
}

} // namespace

QTBStoreDatabase::QTBStoreDatabase(const std::string& path, const Options& options) : m_Path(path), m_Options(options)
{
    BeginReading();
}

QTBStoreDatabase::~QTBStoreDatabase()
{
    Close();
}

void QTBStoreDatabase::Open()
{
    m_LiesStill = false;
    if (m_Options.mayCreate || MayWrite(m_Path)) {
        try {
            // For reading too: only who may write can remove the files beside the store when he was the last.
            Open(m_Path, SQLITE_OPEN_READWRITE | (m_Options.mayCreate ? SQLITE_OPEN_CREATE : 0));
            return;
        } catch (const QTBStoreFailure&) {
            if (m_Options.mayCreate || MayWrite(FolderOf(m_Path))) {
                throw;
            }
        }
        Close();
    }
    AddReadersFileSystem();
    m_State = GetState();
    try {
        Open(ToName(m_Path, "readonly_shm=1"), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, READERS_FILE_SYSTEM);
        return;
    } catch (const QTBStoreFailure&) {
        if (IsThere(m_Path + CHANGES) && IsThere(m_Path + INDEX)) {
            throw;
        }
    }
    Close();
    if (HasChangesBeside(m_Path)) {
        throw QTBStoreFailure("StoreUnfinishedERR_1016", CATUnicodeString(std::string_view{m_Path}),
                              CATUnicodeString((m_Path + CHANGES).c_str()));
    }
    m_LiesStill = true;
    Open(ToName(m_Path, "immutable=1"), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
}

void QTBStoreDatabase::Open(const std::string& name, int flags, const char* fileSystem)
{
    if (const int code = sqlite3_open_v2(name.c_str(), &m_pDatabase, flags, fileSystem); code != SQLITE_OK) {
        Raise(code);
    }
    sqlite3_extended_result_codes(m_pDatabase, 1);
    Configure();
}

void QTBStoreDatabase::Configure()
{
    sqlite3_busy_timeout(m_pDatabase, m_Options.busyTimeoutInMs);
    // What stands in the file is data, never a program.
    sqlite3_db_config(m_pDatabase, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(m_pDatabase, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_create_function_v2(m_pDatabase, "record_checksum", 4,
                               SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY, nullptr,
                               &QTBStoreDatabase::ComputeChecksum, nullptr, nullptr, nullptr);
    Execute("PRAGMA cell_size_check = ON; PRAGMA foreign_keys = ON; PRAGMA cache_size = -32768;"
            "PRAGMA temp_store = MEMORY;");
    if (m_Options.mayCreate) {
        Execute("PRAGMA journal_mode = WAL");
    }
    // A change that was reported as done survives a power failure.
    Execute("PRAGMA synchronous = FULL");
    if (m_Options.isReadOnly) {
        Execute("PRAGMA query_only = ON");
    }
    if (m_Options.maxBytes > 0) {
        const std::int64_t pageSize = std::max<std::int64_t>(GetNumber("PRAGMA page_size"), 1);
        Execute(("PRAGMA max_page_count = " + std::to_string(m_Options.maxBytes / pageSize + 1)).c_str());
    }
    // The first access to the file tells whether it can be read at all.
    GetNumber("SELECT count(*) FROM sqlite_schema");
}

void QTBStoreDatabase::Close() noexcept
{
    for (auto& [sql, statements] : m_Idle) {
        for (sqlite3_stmt* pStatement : statements) {
            sqlite3_finalize(pStatement);
        }
    }
    m_Idle.clear();
    sqlite3_close(m_pDatabase);
    m_pDatabase = nullptr;
}

QTBStoreDatabase::State QTBStoreDatabase::GetState() const
{
    struct stat status = {};
    if (stat(m_Path.c_str(), &status) != 0) {
        return {};
    }
    return {status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ino};
}

void QTBStoreDatabase::BeginReading()
{
    const bool isOld = m_LiesStill && (WasWrittenOver() || HasChangesBeside(m_Path));
    if (!isOld && m_pDatabase != nullptr) {
        return;
    }
    Close();
    try {
        Open();
    } catch (...) {
        Close();
        throw;
    }
}

void QTBStoreDatabase::FinishReading() const
{
    if (WasWrittenOver()) {
        throw QTBStoreFailure("StoreWrittenOverERR_1015", CATUnicodeString(std::string_view{m_Path}));
    }
}

bool QTBStoreDatabase::IsReadOnly() const
{
    return m_Options.isReadOnly || m_pDatabase == nullptr || sqlite3_db_readonly(m_pDatabase, "main") != 0;
}

void QTBStoreDatabase::RequireWritable() const
{
    if (!IsReadOnly()) {
        return;
    }
    const CATUnicodeString usPath(std::string_view{m_Path});
    for (const std::string& path : {m_Path, FolderOf(m_Path)}) {
        if (!m_Options.isReadOnly && !MayWrite(path)) {
            throw QTBStoreFailure("StoreNotWritableERR_1013", usPath, CATUnicodeString(std::string_view{path}));
        }
    }
    throw QTBStoreFailure("StoreReadOnlyERR_1007", usPath);
}

QTBStoreStatement QTBStoreDatabase::Prepare(std::string_view sql)
{
    std::vector<sqlite3_stmt*>& idle = m_Idle[std::string(sql)];
    if (!idle.empty()) {
        sqlite3_stmt* pStatement = idle.back();
        idle.pop_back();
        return QTBStoreStatement(*this, pStatement);
    }
    sqlite3_stmt* pStatement = nullptr;
    const int code = sqlite3_prepare_v3(m_pDatabase, sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &pStatement, nullptr);
    if (code != SQLITE_OK) {
        Raise(code);
    }
    return QTBStoreStatement(*this, pStatement);
}

void QTBStoreDatabase::GiveBack(sqlite3_stmt* pStatement) noexcept
{
    sqlite3_reset(pStatement);
    sqlite3_clear_bindings(pStatement);
    try {
        m_Idle[sqlite3_sql(pStatement)].push_back(pStatement);
    } catch (const std::exception&) {
        sqlite3_finalize(pStatement);
    }
}

void QTBStoreDatabase::Execute(const char* sql)
{
    errno = 0;
    if (const int code = sqlite3_exec(m_pDatabase, sql, nullptr, nullptr, nullptr); code != SQLITE_OK) {
        Raise(code);
    }
}

std::int64_t QTBStoreDatabase::GetNumber(std::string_view sql)
{
    QTBStoreStatement statement = Prepare(sql);
    return statement.Step() ? statement.GetInt(0) : 0;
}

std::int64_t QTBStoreDatabase::GetLastInsertId() const
{
    return sqlite3_last_insert_rowid(m_pDatabase);
}

bool QTBStoreDatabase::IsInTransaction() const
{
    return sqlite3_get_autocommit(m_pDatabase) == 0;
}

void QTBStoreDatabase::Raise(int code) const
{
    const char* message = m_pDatabase != nullptr ? sqlite3_errmsg(m_pDatabase) : sqlite3_errstr(code);
    // The database does not note the system's error everywhere; errno was cleared before it was called.
    int systemError = m_pDatabase != nullptr ? sqlite3_system_errno(m_pDatabase) : 0;
    if (systemError == 0 && (code & 0xFF) == SQLITE_IOERR) {
        systemError = errno;
    }
    FinishReading();
    const CATUnicodeString usPath(std::string_view{m_Path});
    if ((code & 0xFF) == SQLITE_READONLY || (code & 0xFF) == SQLITE_CANTOPEN) {
        if (const std::string obstacle = FindObstacle(m_Path); !obstacle.empty() && MayWrite(m_Path)) {
            throw QTBStoreFailure("StoreObstructedERR_1014", usPath, CATUnicodeString(std::string_view{obstacle}),
                                  CATUnicodeString(GetOwner(obstacle).c_str()));
        }
    }
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED: {
        CATUnicodeString usTimeout;
        usTimeout.BuildFromNum(m_Options.busyTimeoutInMs);
        throw QTBStoreFailure("StoreBusyERR_1006", usPath, usTimeout);
    }
    case SQLITE_READONLY:
        throw QTBStoreFailure("StoreReadOnlyERR_1007", usPath);
    case SQLITE_FULL:
        throw QTBStoreFailure("StoreFullERR_1008", usPath);
    case SQLITE_NOTADB:
        throw QTBStoreFailure("NoStoreERR_1003", usPath);
    case SQLITE_CORRUPT:
        throw QTBStoreFailure("StoreDamagedERR_1005", usPath, CATUnicodeString(message));
    case SQLITE_IOERR:
        if (IsSpaceMissing(systemError)) {
            throw QTBStoreFailure("StoreFullERR_1008", usPath);
        }
        [[fallthrough]];
    default:
        throw QTBStoreFailure("StoreUnusableERR_1009", usPath,
                              CATUnicodeString(systemError != 0
                                                   ? (std::string(message) + ": " + std::strerror(systemError)).c_str()
                                                   : message));
    }
}

void QTBStoreDatabase::RaiseDamaged(const std::string& what) const
{
    FinishReading();
    throw QTBStoreFailure("StoreDamagedERR_1005", CATUnicodeString(std::string_view{m_Path}),
                          CATUnicodeString(std::string_view{what}));
}

void QTBStoreDatabase::ComputeChecksum(sqlite3_context* pContext, int count, sqlite3_value** ppValues)
{
    QTBStoreChecksum checksum;
    for (int i = 0; i < count; ++i) {
        const auto* pText = reinterpret_cast<const char*>(sqlite3_value_text(ppValues[i]));
        checksum.Add(pText != nullptr
                         ? std::string_view(pText, static_cast<std::size_t>(sqlite3_value_bytes(ppValues[i])))
                         : std::string_view());
    }
    sqlite3_result_int64(pContext, checksum.Get());
}
