#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "CATIPrdLink.h"
#include "CATUnicodeString.h"
#include "PlatformExport.h"

// Properties that other programs put on a product, by name.
using CATPrdUserProperties = std::map<CATUnicodeString, CATUnicodeString>;

// User property of a product with a shape: the box along its axes that holds it, in millimetres. The lowest x, y and z,
// then the highest, with blanks between.
inline constexpr const char* CAT_PRD_BOUNDING_BOX = "BoundingBox";
// User property of an instance: where it stands in its father, in millimetres. Its x, y and z axes, then its origin.
inline constexpr const char* CAT_PRD_PLACEMENT = "Placement";

// Name and path of each design table; the path is empty for a table that is kept in the document.
using CATPrdDesignTables = std::vector<std::pair<CATUnicodeString, CATUnicodeString>>;

// What a document says about the product that it defines.
struct CATPrdDefinition
{
    CATUnicodeString partNumber;
    CATUnicodeString nomenclature;
    CATUnicodeString descriptionRef;
    CATUnicodeString definition;
    CATUnicodeString revision;
    CATPrdUserProperties userProperties;
    CATPrdDesignTables designTables;
};

// Product structure as plain data, as a file describes it: what CATProductServices::Open makes documents and products
// of. References are named by their positions, from 0.

struct CATPrdReferenceData
{
    CATPrdLinkState linkState = CATPrdLinkState::Loaded;
    // Path of the file that defines the reference; empty for an embedded component and for a document that was never
    // saved. One file defines one reference.
    CATUnicodeString storageName;
    // Type of the document (see CATPrdDocument); none for an embedded component and a broken link.
    CATUnicodeString documentType;
    // Name shown for the document; empty for the file's own name.
    CATUnicodeString displayName;
    // Path of the document with the shape; needed in visualization mode, possible for an embedded component.
    CATUnicodeString shapeStorageName;
    bool isDirty = false;
    // Opened for itself, although other documents use it. A document that none uses always is.
    bool isOpened = false;
    CATPrdDefinition definition;
};

// One use of a reference in another. The uses in one parent stand in the order of the children.
struct CATPrdUsageData
{
    std::size_t parent;
    std::size_t child;
    CATUnicodeString instanceName;
    CATUnicodeString description;
    CATPrdUserProperties userProperties;
};

struct PLATFORM_API CATPrdStructure
{
    std::vector<CATPrdReferenceData> references;
    std::vector<CATPrdUsageData> usages;

    // What makes the structure impossible, and what would be right: said of a use, or of a reference.
    struct Problem
    {
        CATUnicodeString problem;
        CATUnicodeString expected;
        std::size_t position;
        bool isUsage;
    };

    // The first thing that is wrong, of which no document can be made: a use of a reference that is not there, in a
    // reference that can have no children or without a name; a file of two references; a document without type; an
    // embedded component that belongs to no document or to several; a product that contains itself.
    std::optional<Problem> FindProblem() const;

    // Positions of the uses in each reference, in order.
    std::vector<std::vector<std::size_t>> GetUsagesByParent() const;
};
