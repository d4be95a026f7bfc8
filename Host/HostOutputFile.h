#pragma once

#include <string>
#include <string_view>
#include <system_error>

#include "QTBOutputFile.h"

// A file that a command writes and that is there only when it is whole (QTBOutputFile). Operations raise HostError with
// the file's name and the reason.
class HostOutputFile
{
public:
    explicit HostOutputFile(const std::string& path);

    void Write(std::string_view piece);
    void Complete();

private:
    void Require(const std::error_code& error) const;

    std::string m_Path;
    QTBOutputFile m_File;
};
