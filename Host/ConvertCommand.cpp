#include "ConvertCommand.h"

#include <filesystem>
#include <fstream>

#include <fmt/format.h>

#include "CATPrdStructure.h"
#include "CATStepAssembly.h"
#include "CATStepProducts.h"
#include "HostError.h"
#include "StepConverter.h"

namespace fs = std::filesystem;

int RunConvert(const ConvertOptions& options)
{
    CATStepAssembly assembly;
    try {
        assembly = CATReadStepAssembly(options.assembly, CATStepContent::StructureAndBoxes);
    } catch (const std::runtime_error& error) {
        throw HostError(ExitCode::BadInput, error.what());
    }
    std::error_code error;
    fs::create_directories(options.folder, error);
    std::vector<StepConverter::Answer> files = StepConverter::ToAnswers(assembly);
    const std::string directory = fs::path(options.assembly).stem().string();
    files.push_back(
        {"products", StepConverter::ToProducts(CATStepProducts::ToStructure(assembly, directory.c_str()), directory)});
    for (const StepConverter::Answer& answer : files) {
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
    return static_cast<int>(ExitCode::Success);
}
