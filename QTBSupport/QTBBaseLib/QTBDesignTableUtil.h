#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "QTBBaseLibExport.h"
#include "QTBDesignTable.h"

class CATIProduct;
using CATIProduct_var = CATInterface_var<CATIProduct>;

// Design tables of products.
class QTBBASELIB_API QTBDesignTableUtil
{
public:
    // The design tables of a product's reference, each in one of three lists and in the document's order: those whose
    // file the PDM system knows, those whose file it does not know, those that are kept in the document itself. The
    // last list holds the PDM objects of the first, parallel to it. Each pointer may be null. The lists stay empty for
    // a product that is not loaded: nothing is known of its tables. Fails quietly for an empty handle and for a
    // component that is no product.
    static HRESULT GetDesignTableInformation(const CATIProduct_var& spIProduct, CATListValQTBDesignTable* pTablesInPdm,
                                             CATListValQTBDesignTable* pTablesNotInPdm,
                                             CATListValQTBDesignTable* pTablesInDocument,
                                             CATListValCATBaseUnknown_var* pPdmNodes);
};
