#pragma once

#include "CATDataType.h"
#include "PlatformExport.h"

// Makes the late type a native format of the clipboard, under its own name: components of the type are copied and
// pasted as they are. S_OK; S_FALSE when it is one already; E_FAIL for a null or empty name.
PLATFORM_API HRESULT SpecBindNativeFormat(const char* lateTypeName);

// Whether the late type is a native format of the clipboard.
PLATFORM_API bool SpecNativeFormatIsBound(const char* lateTypeName);
