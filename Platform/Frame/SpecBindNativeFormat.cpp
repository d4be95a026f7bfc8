#include "SpecBindNativeFormat.h"

#include <set>
#include <string>

namespace {

std::set<std::string, std::less<>>& NativeFormats()
{
    static std::set<std::string, std::less<>> s_NativeFormats;
    return s_NativeFormats;
}

} // namespace

HRESULT SpecBindNativeFormat(const char* lateTypeName)
{
    if (lateTypeName == nullptr || *lateTypeName == '\0') {
        return E_FAIL;
    }
    return NativeFormats().insert(lateTypeName).second ? S_OK : S_FALSE;
}

bool SpecNativeFormatIsBound(const char* lateTypeName)
{
    return lateTypeName != nullptr && NativeFormats().count(lateTypeName) > 0;
}
