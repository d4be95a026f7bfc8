#pragma once

#include "CATBaseUnknown.h"
#include "CATInterface_var.h"
#include "QTBInterfacesLibExport.h"

class CATUnicodeString;

inline constexpr IID IID_QTBINode{"QTBINode"};

// Identity of a node: what every node of the model answers about itself.
class QTBINTERFACESLIB_API QTBINode : public CATBaseUnknown
{
    CATDeclareInterface(QTBINode, CATBaseUnknown)

public:
    // The text that describes the node to a person; "?" for a node that is neither a PDM node nor a rep node. Fails
    // only for a null pointer.
    virtual HRESULT GetNodeDescriptionString(CATUnicodeString* pusNodeDescriptionString) = 0;

    // The PDM class of the node or of the PDM node that it represents, "?" as above. Fails only for a null pointer.
    virtual HRESULT GetPdmClass(CATUnicodeString* pusPdmClass) = 0;
};

using QTBINode_var = CATInterface_var<QTBINode>;
