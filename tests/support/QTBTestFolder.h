#pragma once

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

// A folder for the files of a test, empty at first; it goes with the object.
class QTBTestFolder
{
public:
    QTBTestFolder()
        : m_Path(std::filesystem::canonical(testing::TempDir()) / ("QTBTestFolder-" + std::to_string(getpid())))
    {
        std::filesystem::remove_all(m_Path);
        std::filesystem::create_directories(m_Path);
    }
    QTBTestFolder(const QTBTestFolder&) = delete;
    QTBTestFolder& operator=(const QTBTestFolder&) = delete;
    ~QTBTestFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_Path, ignored);
    }

    std::string GetPath() const { return m_Path.string(); }
    std::string GetPath(const std::string& fileName) const { return (m_Path / fileName).string(); }

    // Writes a file, which gets another time than it had before.
    std::string Write(const std::string& fileName, const std::string& content) const
    {
        const std::filesystem::path path = m_Path / fileName;
        const bool isThere = std::filesystem::exists(path);
        const auto formerTime = isThere ? std::filesystem::last_write_time(path) : std::filesystem::file_time_type();
        std::ofstream(path, std::ios::binary) << content;
        if (isThere) {
            std::filesystem::last_write_time(path, formerTime + std::chrono::seconds(1));
        }
        return path.string();
    }

    void Remove(const std::string& fileName) const { std::filesystem::remove(m_Path / fileName); }

private:
    std::filesystem::path m_Path;
};
