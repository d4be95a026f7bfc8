#include "CATFormat.h"

#include <map>

#include "SpecBindNativeFormat.h"

CATFormat* CATFormat::GetRegisteredFormat(const CATString& name)
{
    // Kept to the end of the program: what is open then may still be asked for its formats.
    static auto* const s_pFormats = new std::map<CATString, CATFormat*>();
    if (name.IsEmpty()) {
        return nullptr;
    }
    CATFormat*& pFormat = (*s_pFormats)[name];
    if (pFormat == nullptr) {
        pFormat = new CATFormat(name);
    }
    return pFormat;
}

bool CATFormat::IsNative() const
{
    return SpecNativeFormatIsBound(m_Name.ConvertToChar());
}
