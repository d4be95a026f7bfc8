#pragma once

#include "CATInterface_var.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

class QTBIPdmNode;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;

// CMI archives: one file of the PDM system that holds several files of the CAD system, one of which is its root.
class QTBBASELIB_API QTBArchiveUtil
{
public:
    // Name of the archive's root file: entry "QtbArchiveRootFileName" of the file object. Fails quietly when it is
    // absent or empty.
    static HRESULT GetRootFileName(const QTBIPdmNode_var& spIPdmNode, CATUnicodeString* pusRootFileName);
};
