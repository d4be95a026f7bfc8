#include "QTBStoreTransaction.h"

#include "QTBStoreDatabase.h"
#include "QTBStoreFailure.h"

QTBStoreTransaction::QTBStoreTransaction(QTBStoreDatabase& database, Kind kind) : m_Database(database)
{
    if (kind == Kind::Write) {
        database.RequireWritable();
    } else {
        database.BeginReading();
    }
    database.Execute(kind == Kind::Write ? "BEGIN IMMEDIATE" : "BEGIN");
}

QTBStoreTransaction::~QTBStoreTransaction()
{
    if (m_Database.IsInTransaction()) {
        try {
            m_Database.Execute("ROLLBACK");
        } catch (const QTBStoreFailure&) {
            // What was not committed is gone in any case; the failure that led here is being reported.
        }
    }
}

void QTBStoreTransaction::Commit()
{
    m_Database.FinishReading();
    m_Database.Execute("COMMIT");
}
