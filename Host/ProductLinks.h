#pragma once

#include <string>
#include <vector>

#include "ProductTree.h"

// What corresponds to the products of an assembly in the PDM system.
namespace ProductLinks {

// Reasons.
inline constexpr const char* BY_INSTANCE = "by instance";
inline constexpr const char* BY_PART_NUMBER = "by part number";
inline constexpr const char* BROKEN_LINK = "broken link";
inline constexpr const char* NOT_IN_PDM = "not in PDM";

// What corresponds to one product, and why.
struct Correspondence
{
    std::string reason; // one of the texts above
    std::string note;   // what else is to be said
    std::string part;   // PDM keys, empty for none
    std::string relation;
    std::string file;
};

// What corresponds to one of the places. Raises HostError for a product that does not answer the PDM interfaces.
Correspondence Find(const std::vector<ProductTree::Place>& places, const ProductTree::Place& place);

// In one line.
std::string Describe(const Correspondence& found);

} // namespace ProductLinks
