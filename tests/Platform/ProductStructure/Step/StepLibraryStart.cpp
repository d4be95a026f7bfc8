#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "CATStepAssembly.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>

namespace {

// The STEP library makes tables when it is first used that it never frees. It is used for the first time here, so that
// what is leaked later is still found.
class StepLibraryStart : public testing::Environment
{
public:
    void SetUp() override
    {
        const std::string path = std::filesystem::path(testing::TempDir()) / "step-library-start.stp";
        std::ofstream(path) << "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nDATA;\nENDSEC;\n"
                               "END-ISO-10303-21;\n";
        __lsan_disable();
        EXPECT_THROW(CATReadStepAssembly(path), std::runtime_error);
        __lsan_enable();
        std::filesystem::remove(path);
    }
};

const testing::Environment* const s_pStart = testing::AddGlobalTestEnvironment(new StepLibraryStart);

} // namespace
#endif
