#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "QTBStoreStatement.h"

struct sqlite3;
struct sqlite3_context;
struct sqlite3_value;

// The connection to the file of a store. Failures raise QTBStoreFailure with a message that says what is wrong with the
// store: busy, read-only, full, damaged, no store at all.
class QTBStoreDatabase
{
public:
    struct Options
    {
        bool isReadOnly = false;
        // How long to wait for another process that is changing the store.
        int busyTimeoutInMs = 5000;
        // What the file may grow to, 0 for what the disk holds.
        std::int64_t maxBytes = 0;
        // Only for a store in the making.
        bool mayCreate = false;
    };

    QTBStoreDatabase(const std::string& path, const Options& options);
    QTBStoreDatabase(const QTBStoreDatabase&) = delete;
    QTBStoreDatabase& operator=(const QTBStoreDatabase&) = delete;
    ~QTBStoreDatabase();

    const std::string& GetPath() const { return m_Path; }
    // Whether the store can only be read, because it was opened so or the file does not allow more.
    bool IsReadOnly() const;
    // Raises the failure of a store that can only be read, if it is one.
    void RequireWritable() const;

    // Prepares the statement or takes one of that text that was given back.
    QTBStoreStatement Prepare(std::string_view sql);

    // Runs statements that have no parameters, one after the other.
    void Execute(const char* sql);
    // The number in the first column of the first row; 0 without a row.
    std::int64_t GetNumber(std::string_view sql);

    std::int64_t GetLastInsertId() const;
    bool IsInTransaction() const;

    [[noreturn]] void Raise(int code) const;
    // The store holds what no request can have written.
    [[noreturn]] void RaiseDamaged(const std::string& what) const;

private:
    friend class QTBStoreStatement;

    void Open(const Options& options, const std::string& name, int flags);
    void Configure(const Options& options);
    void Close() noexcept;
    void GiveBack(sqlite3_stmt* pStatement) noexcept;
    static void ComputeChecksum(sqlite3_context* pContext, int count, sqlite3_value** ppValues);

    std::string m_Path;
    sqlite3* m_pDatabase = nullptr;
    int m_BusyTimeoutInMs = 0;
    // Statements that nobody uses at the moment, by their text.
    std::unordered_map<std::string, std::vector<sqlite3_stmt*>> m_Idle;
};
