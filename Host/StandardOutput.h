#pragma once

// The standard output of the program.
class StandardOutput
{
public:
    // At the beginning of the program: when it was started without standard input, output or error output, no file that
    // it opens takes their place.
    static void Prepare();

    // Whether something that was printed did not arrive.
    static bool HasFailed();

    // Raises HostError when something that was printed, up to now, does not arrive.
    static void Require();

    static constexpr const char* FAILURE = "the standard output cannot be written to";
};
