#pragma once

#include "CATDataType.h"
#include "CATListValCATBaseUnknown_var.h"
#include "QTBBaseLibExport.h"

class QTBPartToFileInfo;

// From the displayed parts to their files.
class QTBBASELIB_API QTBPartToFileUtil
{
public:
    // The PDM trees that lead from the given rep nodes to files, each with the rep nodes that it starts from. Which
    // tree that is, the schema says for the PDM class of the part; rep nodes of other classes, and those that lost
    // their PDM node, are left out. Trees stand in the order of their first rep node, rep nodes in the given order.
    // Fails for a component that is no rep node. Called when a filtered structure has been fetched for a root part.
    static HRESULT GetPartToFileInfo(const CATListValCATBaseUnknown_var& RepNodes, QTBPartToFileInfo* pPartToFileInfo);
};
