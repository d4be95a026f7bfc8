#pragma once

#include <cstdint>
#include <string_view>

#include "CATUnicodeString.h"

class QTBStoreDatabase;
struct sqlite3_stmt;

// A prepared statement of the store's database, lent by QTBStoreDatabase::Prepare and given back, reset, with the
// object. Parameters are counted from 1, columns from 0. Failures raise QTBStoreFailure.
class QTBStoreStatement
{
public:
    QTBStoreStatement(QTBStoreDatabase& database, sqlite3_stmt* pStatement)
        : m_Database(database), m_pStatement(pStatement)
    {
    }
    QTBStoreStatement(const QTBStoreStatement&) = delete;
    QTBStoreStatement& operator=(const QTBStoreStatement&) = delete;
    ~QTBStoreStatement();

    // Binding starts the statement anew.
    QTBStoreStatement& Bind(int parameter, std::int64_t value);
    QTBStoreStatement& Bind(int parameter, std::string_view text);
    QTBStoreStatement& Bind(int parameter, const CATUnicodeString& text) { return Bind(parameter, text.View()); }
    QTBStoreStatement& BindNull(int parameter);
    // Null for 0, which is no row's id.
    QTBStoreStatement& BindId(int parameter, std::int64_t id);

    // Goes to the next row; false behind the last.
    bool Step();
    // Runs a statement that gives no rows.
    void Run();
    // Starts anew with the same parameters.
    void Reset();

    // Columns of the current row. A text is good until the next step; null reads as 0 and the empty text.
    std::int64_t GetInt(int column) const;
    std::string_view GetText(int column) const;
    bool IsNull(int column) const;

private:
    void StartAnew();
    void Check(int code);

    QTBStoreDatabase& m_Database;
    sqlite3_stmt* m_pStatement;
    bool m_IsStarted = false;
};
