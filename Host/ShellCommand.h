#pragma once

#include <string>

// qtbhost shell: an interactive session.
struct ShellOptions
{
    std::string schema;   // empty for the example schema
    std::string language; // empty for English
    std::string script;   // file with commands; empty for the standard input
    std::string store;    // PDM store to work with; empty for none
    std::string user;     // in whose name; empty for the one who runs the program
    bool debug = false;
};

// Reads commands until the end of the input or quit. On a terminal with line editing, history and completion; otherwise
// each line is repeated in the output, so that the record of a session can be read and compared. The result is Failure
// when a line failed.
int RunShell(const ShellOptions& options);
