#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

// qtbhost store: a PDM store, from the command line.
struct StoreOptions
{
    std::string store;
    std::string user;     // empty for the one who runs the program
    std::string schema;   // empty for the example schema
    std::string language; // of the messages; empty for English

    std::vector<std::string> inputs; // answers and STEP files to import
    std::vector<std::string> keys;
    std::string key;
    std::vector<std::string> attributes; // NAME=VALUE: conditions of a query, values of an item
    std::string className;
    std::vector<std::string> relations; // NAME, NAME:right or NAME:left; empty for all, to the right
    std::string left;
    std::string right;
    int level = -1; // object levels to expand; -1 for all
    int limit = 0;  // objects that a query finds at most; 0 for all
    bool allVersions = false;
    std::string folder;             // where files come from or go to
    std::vector<std::string> files; // to check in, parallel to the keys
    std::string output;             // file for an answer; empty for the standard output
};

// Adds the command to the program's command line.
void AddStore(CLI::App& app, StoreOptions& options);

// Runs the store command that the command line has. Raises HostError. The result is Failure when a check found faults.
int RunStore(const CLI::App& app, const StoreOptions& options);
