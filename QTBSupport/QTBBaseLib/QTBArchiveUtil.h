#pragma once

#include "CATInterface_var.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

class CATIProduct;
class QTBIPdmNode;
using CATIProduct_var = CATInterface_var<CATIProduct>;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;

// CMI archives: one file of the PDM system that holds several files of the CAD system, one of which is its root.
class QTBBASELIB_API QTBArchiveUtil
{
public:
    // Name of the archive's root file: entry "QtbArchiveRootFileName" of the file object. Fails quietly when it is
    // absent or empty.
    static HRESULT GetRootFileName(const QTBIPdmNode_var& spIPdmNode, CATUnicodeString* pusRootFileName);

    // Whether an archive has to be saved in the PDM system: one of the documents of its root and of the products below
    // has (QTBDocUtil::DocumentNeedsToBeSavedInPdm). Fails for a product that is not recorded as the root of an archive
    // (QTBLoadManager), for one whose document is not in session, and when a file cannot be read.
    static HRESULT IsArchiveDirty(const CATIProduct_var& spIProduct, unsigned char* pbIsDirty);
};
