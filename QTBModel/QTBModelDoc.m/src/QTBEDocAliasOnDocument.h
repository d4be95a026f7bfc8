#pragma once

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"

// CATIDocAlias on the late type QTBDocument: the name under which the frame files and recognises PDM documents.
class QTBEDocAliasOnDocument : public CATBaseUnknown
{
public:
    // "QTBDoc".
    CATUnicodeString GetAlias();
};
