#pragma once

#include <string>
#include <string_view>

// How versions are counted.
class QTBStoreVersion
{
public:
    // The version of a new object.
    static constexpr std::string_view FIRST = "A";

    // The version behind that one: the digits or the letters at its end count on (A, B, ... Z, AA; 9, 10; v3.5, v3.6);
    // behind anything else stands ".1".
    static std::string GetNext(std::string_view version);

    // The key of another version of an object: the version at the end of the key is replaced, or else put there.
    static std::string MakeKey(std::string_view key, std::string_view version, std::string_view nextVersion);
};
