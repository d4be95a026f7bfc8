#pragma once

class QTBStoreDatabase;

// A transaction: everything in it is done with Commit, or nothing. A transaction for reading sees the store as it was
// at its first statement, whatever other processes do meanwhile.
class QTBStoreTransaction
{
public:
    enum class Kind
    {
        Read,
        // Keeps other writers out from the start, so that it never has to give up half-way.
        Write
    };

    QTBStoreTransaction(QTBStoreDatabase& database, Kind kind);
    QTBStoreTransaction(const QTBStoreTransaction&) = delete;
    QTBStoreTransaction& operator=(const QTBStoreTransaction&) = delete;
    ~QTBStoreTransaction();

    void Commit();

private:
    QTBStoreDatabase& m_Database;
};
