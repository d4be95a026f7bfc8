#pragma once

#include <string>
#include <utility>
#include <vector>

#include "CATIDOMDocument.h"
#include "CATUnicodeString.h"

struct QTBStoreImportReport;

// What people give to a PDM store, on the command line and in the shell. Operations raise HostError.
namespace StoreInput {

// Whether the text is what the store can keep, and not only the name of a file.
bool IsUtf8(const std::string& text);

// The user in whose name requests are made: the name given, or who runs the program when it is empty.
std::string GetUser(const std::string& name);

// NAME=VALUE
std::pair<CATUnicodeString, CATUnicodeString> ParseAttribute(const std::string& text);

// Attributes given as NAME=VALUE as XML: "a" elements, one after the other.
CATUnicodeString MakeAttributesXml(const std::vector<std::string>& attributes);

// The answers that a file holds: one for an answer (.xml), two for a STEP file.
std::vector<CATIDOMDocument_var> ReadAnswers(const std::string& path);

// What an import did, a line, and what it left out.
std::string Describe(const std::string& input, const QTBStoreImportReport& report);

} // namespace StoreInput
