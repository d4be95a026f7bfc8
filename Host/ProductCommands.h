#pragma once

#include <string>
#include <vector>

// Questions about the products of a CAD assembly that need no PDM window.
struct ProductOptions
{
    std::string assembly;
    std::string oldAssembly;          // diff: what the assembly is compared with
    std::vector<std::string> answers; // PDM answers, may be empty
    std::string schema;               // empty for the example schema
    std::string language;             // empty for English
    bool asJson = false;
    bool debug = false;
};

// Each prints its answer on the standard output and raises HostError.

// qtbhost diff: the instances that were added to each product and those that are missing, from the old assembly to the
// new one. Instances are the same when name and part are, products when their part numbers are; of a product that only
// one assembly has all instances are reported. With answers the comparison is that of the PDM session: an instance
// counts as the same only while the PDM data say so, and is missing only when they know it.
int RunDiff(const ProductOptions& options);

// qtbhost dirty: which documents have to be saved in the PDM system, and why. Embedded components, which have no
// document of their own, are left out. Without answers the PDM system knows none of them.
int RunDirty(const ProductOptions& options);

// qtbhost types: the type of each product, its PDM node type and the commands offered to change that.
int RunTypes(const ProductOptions& options);
