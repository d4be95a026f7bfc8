#include "ConvertCommand.h"

#include <filesystem>
#include <fstream>

#include <fmt/format.h>

#include "CATStepAssembly.h"
#include "HostError.h"
#include "StepConverter.h"

namespace fs = std::filesystem;

void RunConvert(const ConvertOptions& options)
{
    CATStepAssembly assembly;
    try {
        assembly = CATReadStepAssembly(options.assembly);
    } catch (const std::runtime_error& error) {
        throw HostError(ExitCode::BadInput, error.what());
    }
    std::error_code error;
    fs::create_directories(options.folder, error);
    for (const StepConverter::Answer& answer : StepConverter::ToAnswers(assembly)) {
        const fs::path path = fs::path(options.folder) / (answer.name + ".xml");
        std::ofstream stream(path, std::ios::binary);
        stream << answer.xml;
        if (!stream.flush()) {
            throw HostError(ExitCode::Failure, path.string() + ": the file cannot be written");
        }
        fmt::print("{}\n", path.string());
    }
    fmt::print("{} products, {} usages, {} occurrences, depth {}\n", assembly.products.size(), assembly.usages.size(),
               assembly.CountOccurrences(), assembly.GetDepth());
}
