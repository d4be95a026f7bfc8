#include "HostOutputFile.h"

#include "HostError.h"

HostOutputFile::HostOutputFile(const std::string& path) : m_Path(path)
{
    Require(m_File.Open(path));
}

void HostOutputFile::Write(std::string_view piece)
{
    Require(m_File.Write(piece));
}

void HostOutputFile::Complete()
{
    Require(m_File.Complete());
}

void HostOutputFile::Require(const std::error_code& error) const
{
    if (error == std::errc::is_a_directory) {
        throw HostError(ExitCode::Failure, m_Path + " is a folder, not a file");
    }
    if (error) {
        throw HostError(ExitCode::Failure, m_Path + " cannot be written to: " + error.message());
    }
}
