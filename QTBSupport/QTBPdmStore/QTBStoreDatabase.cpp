#include "QTBStoreDatabase.h"

#include <fcntl.h>
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

// The path as a name that the database reads as unchangeable: no other process is expected to write to it.
std::string ToImmutableName(const std::string& path)
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
    return name + "?immutable=1";
}

// Whether there are changes beside the main file that only a reader with access to the folder finds.
bool HasChangesBeside(const std::string& path)
{
    std::error_code error;
    const auto size = fs::file_size(path + "-wal", error);
    return !error && size > 0;
}

bool IsSpaceMissing(int systemError)
{
    return systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
}

} // namespace

QTBStoreDatabase::QTBStoreDatabase(const std::string& path, const Options& options)
    : m_Path(path), m_BusyTimeoutInMs(options.busyTimeoutInMs)
{
    int flags = options.isReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    if (options.mayCreate) {
        flags |= SQLITE_OPEN_CREATE;
    }
    try {
        Open(options, path, flags);
    } catch (const QTBStoreFailure&) {
        // A store on a medium that cannot be written to is read without the files that are kept beside one in use.
        const std::string folder = fs::path(path).parent_path().string();
        const bool isUnwritable = faccessat(AT_FDCWD, folder.empty() ? "." : folder.c_str(), W_OK, AT_EACCESS) != 0;
        Close();
        if (options.mayCreate || !isUnwritable || HasChangesBeside(path)) {
            throw;
        }
        try {
            Open(options, ToImmutableName(path), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
        } catch (...) {
            Close();
            throw;
        }
    }
}

QTBStoreDatabase::~QTBStoreDatabase()
{
    Close();
}

void QTBStoreDatabase::Open(const Options& options, const std::string& name, int flags)
{
    if (const int code = sqlite3_open_v2(name.c_str(), &m_pDatabase, flags, nullptr); code != SQLITE_OK) {
        Raise(code);
    }
    sqlite3_extended_result_codes(m_pDatabase, 1);
    Configure(options);
}

void QTBStoreDatabase::Configure(const Options& options)
{
    sqlite3_busy_timeout(m_pDatabase, m_BusyTimeoutInMs);
    // What stands in the file is data, never a program.
    sqlite3_db_config(m_pDatabase, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(m_pDatabase, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_create_function_v2(m_pDatabase, "record_checksum", 4,
                               SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY, nullptr,
                               &QTBStoreDatabase::ComputeChecksum, nullptr, nullptr, nullptr);
    Execute("PRAGMA cell_size_check = ON; PRAGMA foreign_keys = ON; PRAGMA cache_size = -32768;"
            "PRAGMA temp_store = MEMORY;");
    if (options.mayCreate) {
        Execute("PRAGMA journal_mode = WAL");
    }
    // A change that was reported as done survives a power failure.
    Execute("PRAGMA synchronous = FULL");
    if (options.maxBytes > 0) {
        const std::int64_t pageSize = std::max<std::int64_t>(GetNumber("PRAGMA page_size"), 1);
        Execute(("PRAGMA max_page_count = " + std::to_string(options.maxBytes / pageSize + 1)).c_str());
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

bool QTBStoreDatabase::IsReadOnly() const
{
    return sqlite3_db_readonly(m_pDatabase, "main") != 0;
}

void QTBStoreDatabase::RequireWritable() const
{
    if (IsReadOnly()) {
        throw QTBStoreFailure("StoreReadOnlyERR_1007", CATUnicodeString(std::string_view{m_Path}));
    }
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
    CATUnicodeString usPath(std::string_view{m_Path});
    switch (code & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED: {
        CATUnicodeString usTimeout;
        usTimeout.BuildFromNum(m_BusyTimeoutInMs);
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
