#pragma once

#include <string>
#include <vector>

// qtbhost tree: PDM answers as the trees of a PDM window.
struct TreeOptions
{
    std::string schema; // empty for the example schema
    std::vector<std::string> answers;
    std::vector<std::string> roots;     // PDM keys; empty for the roots that the window shows after the answers
    std::vector<std::string> relations; // NAME, NAME:right or NAME:left; empty for all, to the right
    int level = -1;                     // object levels to expand; -1 for all
    std::string consider = "all";       // all, recent or current
    int showLevel = -1;                 // tree levels to print; -1 for all
    bool asJson = false;
    std::string language; // of the messages; empty for English
    bool debug = false;
    int traceLevel = 0;
};

// Prints the trees on the standard output. Raises HostError. The result is Failure when the session had to stop short
// of what was asked, after printing what there is.
int RunTree(const TreeOptions& options);
