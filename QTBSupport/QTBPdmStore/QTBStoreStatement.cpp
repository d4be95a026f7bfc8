#include "QTBStoreStatement.h"

#include <cerrno>

#include <sqlite3.h>

#include "QTBStoreDatabase.h"

QTBStoreStatement::~QTBStoreStatement()
{
    m_Database.GiveBack(m_pStatement);
}

QTBStoreStatement& QTBStoreStatement::Bind(int parameter, std::int64_t value)
{
    StartAnew();
    Check(sqlite3_bind_int64(m_pStatement, parameter, value));
    return *this;
}

QTBStoreStatement& QTBStoreStatement::Bind(int parameter, std::string_view text)
{
    StartAnew();
    // A null pointer would bind null.
    Check(sqlite3_bind_text64(m_pStatement, parameter, text.data() != nullptr ? text.data() : "", text.size(),
                              SQLITE_TRANSIENT, SQLITE_UTF8));
    return *this;
}

QTBStoreStatement& QTBStoreStatement::BindNull(int parameter)
{
    StartAnew();
    Check(sqlite3_bind_null(m_pStatement, parameter));
    return *this;
}

QTBStoreStatement& QTBStoreStatement::BindId(int parameter, std::int64_t id)
{
    return id != 0 ? Bind(parameter, id) : BindNull(parameter);
}

bool QTBStoreStatement::Step()
{
    m_IsStarted = true;
    errno = 0;
    const int code = sqlite3_step(m_pStatement);
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        m_Database.Raise(code);
    }
    return false;
}

void QTBStoreStatement::Run()
{
    Step();
    Reset();
}

void QTBStoreStatement::Reset()
{
    // Repeats the code of a failed step, which was reported already.
    sqlite3_reset(m_pStatement);
    m_IsStarted = false;
}

std::int64_t QTBStoreStatement::GetInt(int column) const
{
    return sqlite3_column_int64(m_pStatement, column);
}

std::string_view QTBStoreStatement::GetText(int column) const
{
    const auto* pText = reinterpret_cast<const char*>(sqlite3_column_text(m_pStatement, column));
    return pText != nullptr
               ? std::string_view(pText, static_cast<std::size_t>(sqlite3_column_bytes(m_pStatement, column)))
               : std::string_view();
}

bool QTBStoreStatement::IsNull(int column) const
{
    return sqlite3_column_type(m_pStatement, column) == SQLITE_NULL;
}

void QTBStoreStatement::StartAnew()
{
    if (m_IsStarted) {
        Reset();
    }
}

void QTBStoreStatement::Check(int code)
{
    if (code != SQLITE_OK) {
        m_Database.Raise(code);
    }
}
