#pragma once

#include <cstdint>
#include <string>

#include "CATUnicodeString.h"

class QTBSchemaRelation;
class QTBSchemaObject;

// A class of the store's objects or relations and what the PDM schema says about it.
struct QTBStoreClass
{
    std::int64_t id = 0;
    CATUnicodeString name;
    // Class that stands in for one that the schema does not know; empty for all others.
    CATUnicodeString baseName;

    // Objects have versions and states when they are parts, documents or files; others, persons for example, have not.
    bool isVersioned = false;
    // Objects must be checked out to be changed: the schema offers the check-out for them.
    bool needsCheckOut = false;
    // Objects hold a CAD file.
    bool isFile = false;

    // How answers write the attributes that name the class: for an object its class; for a relation its class and
    // relation attribute, and the element of its parent classes, if any.
    std::string classXml;
    std::string parentClassesXml;
};
