#pragma once

#include <string>

// qtbhost convert: the PDM answers of a STEP assembly.
struct ConvertOptions
{
    std::string assembly;
    std::string folder; // where the answers are written; created when missing
};

// Writes the answers and tells on the standard output what was written. Raises HostError.
int RunConvert(const ConvertOptions& options);
