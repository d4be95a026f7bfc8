#pragma once

#include <string>
#include <string_view>
#include <system_error>

#include "QTBBaseLibExport.h"

// A file that is there only when it is whole. Until it is completed, a file of that name stays as it is and none comes
// into being: what is written has no name yet, so that nothing remains of it even when the program is killed. (Where
// the file system offers no files without name, it has an interim one beside the target.) A symbolic link stays and
// the file that it leads to is replaced, which keeps its permissions and, if possible, its owner.
//
// What is no regular file, a pipe or a device, is written to straight, likewise what /proc and /dev/stdout name.
//
// Operations return the system's error, which is empty for success.
class QTBBASELIB_API QTBOutputFile
{
public:
    QTBOutputFile() = default;
    QTBOutputFile(const QTBOutputFile&) = delete;
    QTBOutputFile& operator=(const QTBOutputFile&) = delete;
    // Without Complete nothing remains of what was written.
    ~QTBOutputFile();

    // Fails for a folder and for a file that may not be written to; once for each object.
    std::error_code Open(const std::string& path);

    // Whether what is written goes straight to the target and cannot be taken back.
    bool IsStraight() const { return m_IsStraight; }

    std::error_code Write(std::string_view piece);

    // Brings all that was written to the disk and puts it in place.
    std::error_code Complete();

private:
    std::error_code OpenInterim();
    std::error_code WriteBuffer();
    template <class Make>
    std::error_code MakeInterimName(Make make);

    // The target, not a symbolic link to it.
    std::string m_Target;
    std::string m_Folder;
    std::string m_InterimPath;
    int m_Descriptor = -1;
    bool m_IsStraight = false;
    std::string m_Buffer;
};
