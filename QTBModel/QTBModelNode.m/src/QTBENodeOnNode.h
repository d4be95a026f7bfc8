#pragma once

#include "CATBaseUnknown.h"

class CATUnicodeString;

// QTBINode on the late type QTBNode. The extensions of PDM nodes and rep nodes derive from this class, so that their
// interfaces begin with these two operations.
class QTBENodeOnNode : public CATBaseUnknown
{
public:
    // The description of the PDM node or the display string of the rep node; "?" for a component that is neither. What
    // fails on the way is only traced and leaves whatever text there is; fails for a null pointer only.
    HRESULT GetNodeDescriptionString(CATUnicodeString* pusNodeDescriptionString);

    // The class of the PDM node or of the PDM node that the rep node represents, as above.
    HRESULT GetPdmClass(CATUnicodeString* pusPdmClass);
};
