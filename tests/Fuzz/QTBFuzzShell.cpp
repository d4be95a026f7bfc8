// Lines typed into the shell. The files that they can name are those of corpus/shell/files.

#include <filesystem>
#include <sstream>

#include "HostSession.h"
#include "QTBFuzzSession.h"
#include "Shell.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // What a line can open, write or wait for is in there.
    std::filesystem::current_path(QTB_SOURCE_DIR "/tests/Fuzz/files");
    const QTBFuzzSession outer;
    std::ostringstream output;
    HostSession session("", "");
    Shell shell(session, output);
    constexpr std::size_t MOST_LINES = 40;
    std::size_t lines = 0;
    for (const std::string_view line : QTBFuzzSession::SplitLines(QTBFuzzSession::ToText(data, size))) {
        if (++lines > MOST_LINES || !shell.Execute(std::string(line))) {
            break;
        }
        QTBFuzzSession::CheckInvariants();
    }
    return 0;
}
