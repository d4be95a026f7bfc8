#pragma once

#include "CATInterface_var.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATUnicodeString.h"
#include "QTBPartInstanceInfo.h"

class CATFrmWindow;
class CATIProduct;
class QTBIPdmNode;
class QTBIPdmObjNode;
class QTBIPdmRelNode;
class QTBIRepNode;
using CATIProduct_var = CATInterface_var<CATIProduct>;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIPdmObjNode_var = CATInterface_var<QTBIPdmObjNode>;
using QTBIPdmRelNode_var = CATInterface_var<QTBIPdmRelNode>;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// QTBILinkToQtb on the late type ASMPRODUCT: decides which PDM nodes a product of the CAD session corresponds to and
// shows them in the PDM window. Everything is looked up anew by every call; only part numbers are remembered, so that a
// product that is shown without its document keeps being found.
class QTBELinkToQtbOnASMPRODUCT : public CATBaseUnknown
{
public:
    HRESULT ProdStrucPdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode,
                                   QTBIPdmObjNode_var* pspIPdmObjNodeOnPart);
    HRESULT HighlightProdStrucNode(unsigned char bEmptyHighlightFirst, unsigned char bActivateWindow,
                                   CATFrmWindow** ppFrmWindowWhereHighlighted);
    HRESULT CatiaFilePdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode);
    HRESULT HighlightCatiaFileNode(unsigned char bEmptyHighlightFirst, unsigned char bActivateWindow,
                                   CATFrmWindow** ppFrmWindowWhereHighlighted);
    HRESULT FileStrucPdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode,
                                   unsigned char* pbNameOrVersionDiffers);
    HRESULT CorrespondingPdmNodesExist(unsigned char* pbExist, QTBIPdmRelNode_var* pspIPdmRelNodeOnPartRel,
                                       QTBIPdmObjNode_var* pspIPdmObjNodeOnPartObj,
                                       QTBIPdmObjNode_var* pspIPdmObjNodeOnFileObj);
    HRESULT SetCatiaPartNumberForLink(const CATUnicodeString& usCatiaPartNumber);
    HRESULT GetCatiaPartNumberForLink(CATUnicodeString* pusCatiaPartNumber, const unsigned char& bLoadDocument);

private:
    // Accepts a relation for an instance, with the object at its right end, or rejects it, with a quiet failure,
    // because that object is another part.
    HRESULT GetQtbStructureNodes(const CATIProduct_var& spIProductOnPsnInstance,
                                 const QTBIPdmRelNode_var& spIPdmRelNodeOnCorrespondingPdmNode,
                                 QTBIPdmRelNode_var* pspIPdmRelNode, QTBIPdmObjNode_var* pspIPdmObjNode);
    // Whether the file at the relation's right end has the product's part number and the version of that part number's
    // file. What cannot be compared counts as equal.
    HRESULT CheckNameAndVersion(const CATIProduct_var& spIProduct,
                                const QTBIPdmRelNode_var& spIPdmRelNodeOnFileToFileRelation, unsigned char* pbIsEqual);
    // The part of a reference, by its part number. Quiet failure without one.
    HRESULT GetCorrespondingPartPdmObjNode(const CATIProduct_var& spIProductOnReference,
                                           QTBIPdmObjNode_var* pspIPdmObjNodeOnPart);
    HRESULT FindPartOf(const CATIProduct_var& spIProduct, unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode,
                       QTBIPdmObjNode_var* pspIPdmObjNodeOnPart);
    HRESULT FindStructureOfInstance(const CATIProduct_var& spIProductOnThis, unsigned char* pbExists,
                                    QTBIPdmNode_var* pspIPdmNode, QTBIPdmObjNode_var* pspIPdmObjNodeOnPart);
    void TracePartNumbers(const CATUnicodeString& usPsnPartNumber) const;

    HRESULT GetCorrespondingProdStrucRepNodes(CATListValCATBaseUnknown_var* pProdStrucRepNodes,
                                              CATFrmWindow** ppFrmWindow);
    HRESULT GetTargetProdStrucRepNode(const QTBIRepNode_var& spIRepNodeOnRootNode,
                                      const CATListValQTBPartInstanceInfo& PathToRootPartInstanceInfoList,
                                      QTBIRepNode_var* pspIRepNodeOnTargetProdStrucNode);
    // One step down the tree: from a part's rep node to that of the child part that the step names.
    HRESULT ExpandToChildPart(const QTBIRepNode_var& spIRepNodeOnPartNode, const QTBPartInstanceInfo& PartInstanceInfo,
                              QTBIRepNode_var* pspIRepNodeOnChildPart);
    HRESULT GetCorrespondingCatiaFileRepNodes(CATListValCATBaseUnknown_var* pCatiaFileRepNodes);
    // The rep nodes of files of that name that belong to a part, and not to one of its child parts.
    HRESULT GetRelatedCatiaFileNodes(const QTBIRepNode_var& spIRepNodeOnProdStrucNode,
                                     const CATUnicodeString& usFileName,
                                     CATListValCATBaseUnknown_var* pCatiaFileRepNodes);

    CATUnicodeString m_usCatiaPartNumberForLink;
    CATUnicodeString m_usPsnPartNumber;
};
