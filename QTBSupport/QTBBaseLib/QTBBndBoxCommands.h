#pragma once

#include "CATInterface_var.h"
#include "QTBBaseLibExport.h"

// Commands on a bounding box in the 3D view.
class QTBBASELIB_API QTBBndBoxCommands
{
public:
    // Marks the box or takes the mark away, and has the views draw it anew. E_FAIL for anything that is no box.
    static HRESULT SetMarked(const CATBaseUnknown_var& spBndBox, unsigned char bMarked);
};
