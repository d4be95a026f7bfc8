#pragma once

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

// A folder for the files of a test, empty at first; it goes with the object.
class QTBTestFolder
{
public:
    // parent: where the folder is made. Throws std::system_error when it cannot be.
    explicit QTBTestFolder(const std::filesystem::path& parent = std::filesystem::temp_directory_path())
    {
        std::string path = std::filesystem::canonical(parent) / "QTBTestFolder-XXXXXX";
        if (mkdtemp(path.data()) == nullptr) {
            throw std::system_error(errno, std::generic_category(), path);
        }
        m_Path = path;
    }
    QTBTestFolder(const QTBTestFolder&) = delete;
    QTBTestFolder& operator=(const QTBTestFolder&) = delete;
    ~QTBTestFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_Path, ignored);
    }

    // The parent of folders whose files are not to wait for the disk: in memory where that is possible.
    static std::filesystem::path GetFastParent()
    {
        return std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
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
