#pragma once

#include "CATListValCATBaseUnknown_var.h"
#include "QTBILinkToPsn.h"

// QTBILinkToPsn on the late type QTBRepNode: the way from a rep node to the products of the session.
class QTBELinkToPsnOnRepNode : public CATBaseUnknown
{
public:
    HRESULT CorrespondingPsnNodeExists(unsigned char* pbExists, CATIProduct_var* pspIProductOnCorrespondingPsnNode);
    HRESULT CorrespondingPsnNodesExist(unsigned char* pbExist, CATListValCATBaseUnknown_var* pCorrespondingPsnNodes,
                                       CATFrmWindow** ppFrmWindow);
    HRESULT GetPathToRootPartInstanceInfo(CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
                                          CATUnicodeString* pusPartNumberAttrValue, CATUnicodeString* pusFileName);
    HRESULT HighlightPsnNodes(unsigned char bEmptyHighlightFirst, const unsigned char& bActivateWindow,
                              CATFrmWindow** ppFrmWindowWhereHighlighted);

private:
    // The path of a rep node that stands for a part; the part's own number attribute when it is asked for.
    HRESULT GetPathToRootPartInstanceInfo(const QTBILinkToPsn_var& spILinkToPsnOnPartNode,
                                          CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
                                          CATUnicodeString* pusPartNumberAttrValue);
    // The nearest part above a file. Quiet failure when there is none.
    HRESULT GetCorrespondingPdmPartNode(const QTBILinkToPsn_var& spILinkToPsnOnCatiaFileNode,
                                        QTBILinkToPsn_var* pspILinkToPsnOnPdmPartNode);
};
