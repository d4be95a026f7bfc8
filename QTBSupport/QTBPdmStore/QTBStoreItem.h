#pragma once

#include <cstdint>
#include <string>

// Rows of the store, as requests read and write them (docs/store.md). Ids are 0 where there is none.
struct QTBStoreObject
{
    std::int64_t id = 0;
    std::string key;
    std::int64_t classId = 0;
    // The first version of the object; all versions share it.
    std::int64_t firstId = 0;
    // The version before this one.
    std::int64_t supersedesId = 0;
    bool isNewest = true;
    std::string version;
    // None for an object without versions and states.
    std::int64_t stateId = 0;
    std::int64_t fileId = 0;
    std::string info;
    std::string record;
    // User who has the object checked out, empty when nobody has.
    std::string checkedOutBy;
};

struct QTBStoreRelation
{
    std::int64_t id = 0;
    std::string key;
    std::int64_t classId = 0;
    std::int64_t leftId = 0;
    std::int64_t rightId = 0;
    // The relation of an earlier version of the left object that this one goes on from.
    std::int64_t supersedesId = 0;
    std::string info;
    std::string record;
};
