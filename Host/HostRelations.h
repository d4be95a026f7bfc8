#pragma once

#include <string>
#include <vector>

#include "CATListValCATUnicodeString.h"
#include "QTBNodeRelationInfo.h"

// The relations of the schema in force, as a person names them. Operations raise HostError.
namespace HostRelations {

// Their names, in the order of the schema.
CATListValCATUnicodeString GetNames();

// The relation that a text names and the direction in which it is followed: NAME or NAME:right to the right, NAME:left
// to the left.
QTBNodeRelationInfo Parse(const std::string& text);

// The relations that the texts name, in their order; all of the schema, to the right, when there are no texts.
CATListValQTBNodeRelationInfo Get(const std::vector<std::string>& texts);

// The same for the expansion of rep nodes: new children go in front of the others, so the relation that is to stand
// first comes last.
CATListValQTBNodeRelationInfo GetToExpand(const std::vector<std::string>& texts);

} // namespace HostRelations
