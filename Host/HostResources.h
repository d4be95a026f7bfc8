#pragma once

#include <string>

// Where the program finds its resources: message catalogs, schema, icons.
namespace HostResources {

// The resources folder: that of the environment variable QTB_RESOURCES, else the installed one beside the program, else
// that of the source tree it was built from. Raises HostError when none of them exists.
std::string GetFolder();

} // namespace HostResources
