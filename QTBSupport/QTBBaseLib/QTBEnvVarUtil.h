#pragma once

#include "CATDataType.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

// Environment of the process.
class QTBBASELIB_API QTBEnvVarUtil
{
public:
    // The value of an environment variable that need not be set: S_OK with the empty text when it is not.
    static HRESULT GetOptionalEnvVarValue(const CATUnicodeString& usName, CATUnicodeString* pusValue);
};
