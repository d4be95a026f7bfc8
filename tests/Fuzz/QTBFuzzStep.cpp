// A STEP assembly.

#include "CATStepProducts.h"
#include "QTBFuzzSession.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QTBFuzzSession session;
    const std::string path = QTBFuzzSession::WriteFile("assembly.step", QTBFuzzSession::ToText(data, size));
    CATListValCATBaseUnknown_var documents;
    CATStepProducts::OpenFile(path.c_str(), &documents);
    return 0;
}
