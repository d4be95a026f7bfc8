#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// The border that STEP files have to pass. The reader behind it says nothing about files that were cut off and little
// about others; here the exchange structure of ISO 10303-21 is checked, statement by statement, without a look at what
// the entities mean. Takes time linear in the text and no memory.
class CATStepTextCheck
{
public:
    struct Refusal
    {
        // Line, counted from 1, in which the statement begins that is wrong, or in which the text ends.
        std::size_t line;
        std::string problem;
        std::string expected;
    };

    // What is wrong with the text first; nothing when it is complete.
    static std::optional<Refusal> Check(std::string_view text);
};
