#pragma once

#include <string>

#include "CATIDOMDocument.h"

// PDM answers in files.
namespace AnswerFile {

// Reads an answer. Raises HostError for a file that is not there, not well-formed or no answer, with file, line and
// what was expected.
CATIDOMDocument_var Read(const std::string& path);

} // namespace AnswerFile
