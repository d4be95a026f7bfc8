#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>

// A copy of a file in the making: it vanishes with the object unless it is given a name. Operations raise
// QTBStoreFailure.
class QTBStoreFileCopy
{
public:
    // Copies the source, all of it to the disk, under an interim path.
    QTBStoreFileCopy(const std::string& source, const std::string& interimPath);
    QTBStoreFileCopy(const QTBStoreFileCopy&) = delete;
    QTBStoreFileCopy& operator=(const QTBStoreFileCopy&) = delete;
    ~QTBStoreFileCopy();

    // SHA-256 of the content, in lower-case hexadecimal digits, and its size in bytes.
    const std::string& GetHash() const { return m_Content.hash; }
    std::int64_t GetSize() const { return m_Content.size; }

    // Gives the copy its name, on the same disk; a file of that name is replaced.
    void KeepAs(const std::string& path);

    struct Content
    {
        std::string hash;
        std::int64_t size = 0;
    };
    // What is in a file, which goes to the receiver, if there is one, block by block.
    static Content Examine(const std::string& path, const std::function<void(std::string_view)>& receive = {});

    // Fails, if there is an error, because of a file that cannot be written.
    static void RequireWritten(const std::string& path, const std::error_code& error);

    static constexpr std::size_t HASH_LENGTH = 64;

private:
    std::string m_InterimPath;
    Content m_Content;
};
