#include "QTBEnvVarUtil.h"

#include <cstdlib>

HRESULT QTBEnvVarUtil::GetOptionalEnvVarValue(const CATUnicodeString& usName, CATUnicodeString* pusValue)
{
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    *pusValue = std::getenv(usName.ConvertToChar());
    return S_OK;
}
