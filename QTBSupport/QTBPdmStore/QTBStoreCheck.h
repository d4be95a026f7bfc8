#pragma once

#include <string_view>

#include "CATListValCATUnicodeString.h"

class QTBStoreDatabase;

// Goes through a whole store and finds what no request can have made of it.
class QTBStoreCheck
{
public:
    explicit QTBStoreCheck(QTBStoreDatabase& database) : m_Database(database) {}

    // What is wrong, a line each; of very many the first. Removes files that nobody refers to when the store can be
    // written to.
    CATListValCATUnicodeString Run();

private:
    void CheckPages();
    void CheckReferences();
    void CheckRecords();
    void CheckVersions();
    void CheckIndex();
    void CheckFiles();
    bool Report(std::string_view fault);

    QTBStoreDatabase& m_Database;
    CATListValCATUnicodeString m_Faults;
};
