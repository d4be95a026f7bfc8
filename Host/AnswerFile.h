#pragma once

#include <iosfwd>
#include <string>

#include "CATIDOMDocument.h"

// PDM answers in files.
namespace AnswerFile {

// Reads an answer. Raises HostError for a file that is not there, not well-formed or no answer, with file, line and
// what was expected.
CATIDOMDocument_var Read(const std::string& path);

// Reads an answer from a stream to its end, in the encodings that files may have. Raises HostError likewise.
CATIDOMDocument_var Read(std::istream& stream, const std::string& name);

} // namespace AnswerFile
