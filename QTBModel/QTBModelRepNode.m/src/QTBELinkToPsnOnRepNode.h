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
    // The root product of the document in session that is nearest to the root of the node's path, the steps that are
    // left below it, and the file name for a node that stands for a file. Quiet failure when no such document is there.
    HRESULT GetMostAppropriatePsnDocumentInSession(CATIProduct_var* pspIProductOnDocRootProduct,
                                                   CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
                                                   CATUnicodeString* pusFileName);
    // Follows the path from a product downwards, from that step on, and appends the products at its end; with a file
    // name those of that file.
    HRESULT GetTargetPsnNodes(const CATIProduct_var& spIProductOnCurrentPsnNode,
                              const CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
                              int InstanceInfoIndex, CATListValCATBaseUnknown_var* pCorrespondingPsnNodes,
                              const CATUnicodeString& usFileName);
    static HRESULT GetChildrenOfStep(const CATIProduct_var& spIProductOnCurrentPsnNode,
                                     const CATListValQTBPartInstanceInfo& PathToRootPartInstanceInfoList,
                                     int InstanceInfoIndex, CATListValCATBaseUnknown_var* pChildren);
    static HRESULT AppendTargets(const CATIProduct_var& spIProductOnCurrentPsnNode, const CATUnicodeString& usFileName,
                                 CATListValCATBaseUnknown_var* pCorrespondingPsnNodes);
    HRESULT FindByPartStructure(CATIProduct_var* pspIProductOnDocRootProduct, CATListValCATBaseUnknown_var* pPsnNodes);
    HRESULT FindByFileStructure(CATIProduct_var* pspIProductOnDocRootProduct, CATListValCATBaseUnknown_var* pPsnNodes);
};
