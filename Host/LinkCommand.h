#pragma once

#include <string>
#include <vector>

// qtbhost link: a CAD assembly beside its PDM data.
struct LinkOptions
{
    std::string assembly;
    std::vector<std::string> answers;
    std::string schema;       // empty for the example schema
    std::string language;     // empty for English
    std::string highlight;    // path of instance names of a product to show in the PDM window; "/" for the top
    std::string highlightPdm; // key of a PDM object or relation to show in the assembly
    bool asJson = false;
    bool debug = false;
};

// Prints for each product which PDM part, relation and file correspond to it and why, and what is on one side only.
// Raises HostError.
int RunLink(const LinkOptions& options);
