#pragma once

#include "CATInterface_var.h"
#include "QTBInterfacesLibExport.h"

inline constexpr IID IID_QTBIInfoNode{"QTBIInfoNode"};

// Marks information nodes: a component is one exactly when it answers this interface.
class QTBINTERFACESLIB_API QTBIInfoNode : public CATBaseUnknown
{
    CATDeclareInterface(QTBIInfoNode, CATBaseUnknown)
};

using QTBIInfoNode_var = CATInterface_var<QTBIInfoNode>;
