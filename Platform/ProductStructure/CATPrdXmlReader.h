#pragma once

#include <string_view>

#include "CATDataType.h"
#include "CATUnicodeString.h"
#include "PlatformExport.h"

struct CATPrdStructure;

// Reads product structure from XML; docs/formats.md describes the form. Fails with a CATXMLError that names source,
// line and column, what is wrong there and what was expected; the structure stays as it was then.
class PLATFORM_API CATPrdXmlReader
{
public:
    // File names are taken relative to the directory that the file names, and that relative to its own.
    static HRESULT ReadFile(const CATUnicodeString& usPath, CATPrdStructure* pStructure);

    // Text has no directory of its own. usSourceName names it in the error.
    static HRESULT ReadText(const CATUnicodeString& usXml, const CATUnicodeString& usSourceName,
                            CATPrdStructure* pStructure);
};
