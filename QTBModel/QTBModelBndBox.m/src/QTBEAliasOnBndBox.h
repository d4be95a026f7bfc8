#pragma once

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"

// CATIAlias on the late type QTBBndBox: a name that whoever creates the box may give it, empty at first.
class QTBEAliasOnBndBox : public CATBaseUnknown
{
public:
    CATUnicodeString GetAlias();
    // S_OK always.
    HRESULT SetAlias(const CATUnicodeString& usAlias);

private:
    CATUnicodeString m_usAlias;
};
