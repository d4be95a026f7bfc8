#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "CATUnicodeString.h"
#include "PlatformExport.h"

// Where the name of an instance comes from.
enum class CATStepNameOrigin
{
    File,       // the file names the instance
    Designator, // the file leaves the name empty but gives a reference designator
    Derived     // the file says nothing; made from the child's name and its count below the parent
};

// One product of a STEP assembly, as the file describes it.
struct CATStepProduct
{
    CATUnicodeString id;
    CATUnicodeString name;
    CATUnicodeString description;
    CATUnicodeString version;
    // Base name of the STEP file that defines the product's content: the file read, or the external file referred to.
    CATUnicodeString file;
    // The file that defines the product could not be found: a broken link.
    bool isBrokenLink = false;
    // The box along the product's own axes that holds its shape, in millimetres: the lowest x, y and z, then the
    // highest. Only where shapes were asked for, and only of a product that has a shape and no usages in it.
    std::optional<std::array<double, 6>> box{};
};

// One use of a product in another. Parent and child are positions in the list of products, from 0.
struct CATStepUsage
{
    std::size_t parent;
    std::size_t child;
    CATUnicodeString instanceName;
    CATStepNameOrigin origin;
    // Where the child stands in its parent, in millimetres: its x, y and z axes, then its origin. Only where shapes
    // were asked for.
    std::optional<std::array<double, 12>> placement{};
};

// Structure of an assembly read from a STEP file and the files it refers to: products, usages and root products, in
// file order. Only products that take part in the structure are held; a file with a single part has that one.
struct PLATFORM_API CATStepAssembly
{
    std::vector<CATStepProduct> products;
    std::vector<CATStepUsage> usages;
    std::vector<std::size_t> roots;

    // Occurrences of all products below the roots, repeats counted, roots left out; the greatest number there is when
    // there are more.
    std::size_t CountOccurrences() const;

    // Longest path from a root to a leaf, in usages.
    std::size_t GetDepth() const;
};

// What is read of a STEP file. Shapes take many times longer than the structure alone.
enum class CATStepContent
{
    Structure,
    StructureAndBoxes
};

// Reads the structure and, when asked for, the boxes of the shapes. Texts that are not valid UTF-8 are repaired, names
// that a file leaves empty are filled as CATStepNameOrigin says. Files referred to are looked for beside the file that
// refers to them; all products that refer to one file are one product, described as where it was first met. Raises
// std::runtime_error for a file that is missing, empty, truncated, not STEP or without any product, and for a structure
// in which a product contains itself. Its text names the file, the line where there is one, and the reason.
PLATFORM_API CATStepAssembly CATReadStepAssembly(const std::string& path,
                                                 CATStepContent content = CATStepContent::Structure);
