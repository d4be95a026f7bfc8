#pragma once

#include "CATDataType.h"
#include "PlatformExport.h"

class CATCommandHeader;
class CATUnicodeString;

// The application's command header of that id. E_FAIL for an id that the application does not know; an id whose header
// does not exist yet is known, and the header is null.
PLATFORM_API HRESULT CATAfrGetCommandHeader(const CATUnicodeString& id, CATCommandHeader** ppHeader);
