#pragma once

#include "CATListVal.h"
#include "CATListValCATBaseUnknown_var.h"
#include "QTBInterfacesLibExport.h"

class CATFrmWindow;
class CATIProduct;
class CATUnicodeString;
class QTBPartInstanceInfo;
using CATIProduct_var = CATInterface_var<CATIProduct>;
using CATListValQTBPartInstanceInfo = CATListVal<QTBPartInstanceInfo>;

inline constexpr IID IID_QTBILinkToPsn{"QTBILinkToPsn"};

// The way from a rep node to the products of the CAD session that correspond to it.
class QTBINTERFACESLIB_API QTBILinkToPsn : public CATBaseUnknown
{
    CATDeclareInterface(QTBILinkToPsn, CATBaseUnknown)

public:
    // Not finding a product is no failure: the flag is FALSE. The product pointer may be null.
    virtual HRESULT CorrespondingPsnNodeExists(unsigned char* pbExists,
                                               CATIProduct_var* pspIProductOnCorrespondingPsnNode) = 0;
    // As above; the list and the window may be null.
    virtual HRESULT CorrespondingPsnNodesExist(unsigned char* pbExist,
                                               CATListValCATBaseUnknown_var* pCorrespondingPsnNodes,
                                               CATFrmWindow** ppFrmWindow) = 0;
    // The steps from the root part to the node, root first. The texts may be null. Quiet failure when the node is not
    // below a chain of parts.
    virtual HRESULT GetPathToRootPartInstanceInfo(CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
                                                  CATUnicodeString* pusPartNumberAttrValue,
                                                  CATUnicodeString* pusFileName) = 0;
    // Highlights the products in their window. Fails when there are none. The window pointer may be null.
    virtual HRESULT HighlightPsnNodes(unsigned char bEmptyHighlightFirst, const unsigned char& bActivateWindow,
                                      CATFrmWindow** ppFrmWindowWhereHighlighted) = 0;
};

using QTBILinkToPsn_var = CATInterface_var<QTBILinkToPsn>;
