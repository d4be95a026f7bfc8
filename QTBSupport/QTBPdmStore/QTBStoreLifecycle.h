#pragma once

#include <cstdint>
#include <vector>

#include "CATUnicodeString.h"

class QTBStoreDatabase;

// The states that objects go through, in the order of promotion, and what each allows.
class QTBStoreLifecycle
{
public:
    struct State
    {
        std::int64_t id = 0;
        CATUnicodeString name;
        bool allowsChange = false;
        bool allowsRevise = false;
    };

    explicit QTBStoreLifecycle(QTBStoreDatabase& database);

    const State& GetFirst() const { return m_States.front(); }
    // The state of that id; raises QTBStoreFailure for an unknown one, which no request writes.
    const State& Get(std::int64_t id) const;
    // Null for the last one.
    const State* FindNext(std::int64_t id) const;
    // Null for a name that is no state's.
    const State* FindByName(const CATUnicodeString& usName) const;
    // Names of all states in their order, divided by commas.
    CATUnicodeString GetNames() const;
    // The state as the user knows it: by the display name that the PDM schema gives the value of the attribute.
    static CATUnicodeString GetDisplayName(const State& state);

private:
    QTBStoreDatabase& m_Database;
    std::vector<State> m_States;
};
