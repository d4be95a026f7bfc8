// A STEP assembly.

#include "CATStepProducts.h"
#include "QTBFuzzSession.h"

// The STEP library makes tables when it is used that it never frees.
extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libTK";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QTBFuzzSession session;
    const std::string path = QTBFuzzSession::WriteFile("assembly.step", QTBFuzzSession::ToText(data, size));
    CATListValCATBaseUnknown_var documents;
    CATStepProducts::OpenFile(path.c_str(), &documents);
    return 0;
}
