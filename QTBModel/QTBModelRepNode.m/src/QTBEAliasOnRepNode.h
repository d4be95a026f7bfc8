#pragma once

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"

// CATIAlias on the late type QTBRepNode, a code extension: a rep node is called as the tree shows it.
class QTBEAliasOnRepNode : public CATBaseUnknown
{
public:
    // "Default Node" for the default root; "Node" for a node whose display string cannot be had, and on failure.
    CATUnicodeString GetAlias();

    // E_FAIL: the name comes from the PDM node.
    HRESULT SetAlias(const CATUnicodeString& usAlias);

private:
    CATUnicodeString GetAliasGuarded();
};
