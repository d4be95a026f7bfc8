#pragma once

#include <string>

#include "CATIDOMDocument.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATUnicodeString.h"

// What the answer to a change says, as text for people: a line for each item.
namespace AnswerText {

// KEY: description, version and state of objects that have them.
std::string DescribeObjects(const CATListValCATBaseUnknown_var& pdmObjects);

// KEY: LEFT -> RIGHT, as the answer has them, whether or not the graph holds their objects.
std::string DescribeRelations(const CATIDOMDocument_var& spAnswer);
int CountRelations(const CATIDOMDocument_var& spAnswer);

// KEY: deleted
std::string DescribeDeleted(const CATIDOMDocument_var& spAnswer);

// Version and state of an object, with a comma in front; empty for an object that has neither.
std::string DescribeState(const CATBaseUnknown_var& spPdmObject);

} // namespace AnswerText
