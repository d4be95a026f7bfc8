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
//
// Who uses a store keeps two files beside it, which the last user removes. Who may not write to the store makes none,
// since those who may could not use his: he reads along when the files are there, else the store as it lies, which
// then must not change before he has finished.
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

    // Before a request that reads: takes notice of what others changed.
    void BeginReading();
    // After a request that reads: raises a failure when others wrote over what it has read.
    void FinishReading() const;

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

    // What tells that a file was written to.
    struct State
    {
        std::int64_t size = 0;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        std::uint64_t number = 0;

        friend bool operator==(const State&, const State&) = default;
    };

    void Open();
    void Open(const std::string& name, int flags, const char* fileSystem = nullptr);
    void Configure();
    void Close() noexcept;
    State GetState() const;
    bool WasWrittenOver() const { return m_LiesStill && GetState() != m_State; }
    void GiveBack(sqlite3_stmt* pStatement) noexcept;
    static void ComputeChecksum(sqlite3_context* pContext, int count, sqlite3_value** ppValues);

    std::string m_Path;
    sqlite3* m_pDatabase = nullptr;
    Options m_Options;
    // The store is read as it lies, and how it lay when it was opened.
    bool m_LiesStill = false;
    State m_State;
    // Statements that nobody uses at the moment, by their text.
    std::unordered_map<std::string, std::vector<sqlite3_stmt*>> m_Idle;
};
