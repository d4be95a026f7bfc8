#include "HostResources.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <vector>

#include "HostError.h"

namespace fs = std::filesystem;

std::string HostResources::GetFolder()
{
    if (const char* folder = std::getenv("QTB_RESOURCES"); folder != nullptr && *folder != '\0') {
        if (!fs::is_directory(folder)) {
            throw HostError(ExitCode::Usage, std::string("QTB_RESOURCES names no folder: ") + folder);
        }
        return folder;
    }
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    const std::vector<fs::path> candidates = {program.parent_path() / "../share/qtbmodel/resources",
                                              fs::path(QTB_SOURCE_DIR) / "resources"};
    for (const fs::path& candidate : candidates) {
        if (fs::is_directory(candidate)) {
            return fs::weakly_canonical(candidate).string();
        }
    }
    throw HostError(ExitCode::Failure, "the resources folder is missing; name it with QTB_RESOURCES");
}
