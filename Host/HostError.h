#pragma once

#include <stdexcept>

// What the program ends with.
enum class ExitCode : int
{
    Success = 0,
    Failure = 1,  // the session could not do what was asked
    Usage = 2,    // the command line is wrong
    BadInput = 3, // a schema, answer or assembly cannot be read
};

// What a person is told when memory runs out.
inline constexpr const char* NO_MEMORY = "there is not enough memory for this";

// What a person is told who gives a STEP file to a program that cannot read it.
inline constexpr const char* NO_STEP_READER =
    "this program was built without the STEP reader; ./run convert builds one that has it";

// A failure that a person is told about; ends the program with its exit code.
class HostError : public std::runtime_error
{
public:
    HostError(ExitCode exitCode, const std::string& message) : std::runtime_error(message), m_ExitCode(exitCode) {}

    ExitCode GetExitCode() const { return m_ExitCode; }

private:
    ExitCode m_ExitCode;
};
