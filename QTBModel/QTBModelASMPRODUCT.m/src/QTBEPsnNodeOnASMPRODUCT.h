#pragma once

#include "CATIProduct.h"
#include "QTBConstants.h"
#include "QTBIPsnNode.h"
#include "QTBPdmMessage.h"

class QTBIPdmNode;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;

// QTBIPsnNode on the CAD system's late type ASMPRODUCT: a product in the terms of the PDM system.
//
// The extension keeps no pointer to its product and reads everything anew from the product, the session and the load
// manager. It keeps the special behaviour, as long as the part number stays the same, the note that the attributes were
// checked, and the messages of the PDM system. The operations stand in several sources: navigation here, PDM node type
// and behaviour (Type), comparison of children (Instances), attributes and documents (Document).
class QTBEPsnNodeOnASMPRODUCT : public CATBaseUnknown
{
public:
    HRESULT GetFatherProduct(CATIProduct_var* pspIProductOnFatherNode, const unsigned char& bConsiderSpecialBehavior);
    HRESULT GetDirectChildren(CATListValCATBaseUnknown_var* pDirectChildNodes,
                              const unsigned char& bConsiderSpecialBehavior, const unsigned char& bStopAtCmiArchiveRoot,
                              const QTBBomType& WantedBomType, const unsigned char& bIgnoreInvalidNodes);
    HRESULT GetAllChildren(CATListValCATBaseUnknown_var* pAllChildNodes, const unsigned char& bConsiderSpecialBehavior,
                           const unsigned char& bStopAtCmiArchiveRoot, const QTBBomType& WantedBomType,
                           const unsigned char& bIgnoreInvalidNodes, const unsigned char& bCheckUniqueInstanceNames);
    HRESULT GetDirectReferenceChildNodes(CATListValCATBaseUnknown_var* pDirectReferenceChildNodes,
                                         const QTBBomType& WantedBomType,
                                         CATListValCATUnicodeString* pReferenceFileNames);
    HRESULT GetAllReferenceChildNodes(CATListValCATBaseUnknown_var* pAllReferenceChildNodes,
                                      const QTBBomType& WantedBomType, CATListValCATUnicodeString* pReferenceFileNames);
    HRESULT GetPdmBomInfo(QTBBomType* pBomType);
    HRESULT IsCmiArchiveRoot(unsigned char* pbIsCmiArchiveRoot, CATUnicodeString* pusArchiveFileName);
    HRESULT SaveCurrentChildInstanceInfoStrings();
    HRESULT CheckCurrentChildInstanceInfoLists(CATListValCATUnicodeString* pAdditionalPsnNodes,
                                               CATListValCATUnicodeString* pMissingPsnNodes,
                                               const unsigned char& bOnlyBomParts);
    HRESULT GetPdmFileObjInfo(CATUnicodeString* pusPdmFileObjInfo);
    HRESULT GetPsnNodeType(CATUnicodeString* pusPsnNodeType, CATUnicodeString* pusFileName);
    HRESULT SetPdmNodeType(const CATUnicodeString& usPdmNodeType);
    HRESULT GetPdmNodeType(CATUnicodeString* pusPdmNodeType, CATUnicodeString* pusPdmNodeTypeNls,
                           unsigned char* pbPdmNodeTypeIsDerived);
    HRESULT GetPdmNodeTypeCommandHeaderIds(CATListValCATUnicodeString* pCommandHeaderIdList);
    HRESULT GetPathToRootPartInstanceInfo(CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
                                          CATIProduct_var* pspIProductOnPdmPartMainNode);
    HRESULT SetStdCatiaAttribute(const QTBPsnAttrType& PsnAttrType, const CATUnicodeString& usValue,
                                 unsigned char* pbAttrChanged, const unsigned char& bLoadDocument);
    HRESULT DocumentIsDirty(unsigned char* pbIsDirty, unsigned char* pbHasDesignTables);
    HRESULT GetReferenceDocumentPtr(CATDocument** ppDocument, unsigned char bTraceDocument);
    HRESULT NeedsSpecialBehavior(unsigned char* pbNeedsSpecialBehavior, CATUnicodeString* pusBehavior);
    HRESULT PrintNodeInformation();
    HRESULT SetReferenceCatiaAttrsChecked(unsigned char bChecked);
    HRESULT GetReferenceCatiaAttrsChecked(unsigned char* pbChecked);
    HRESULT AddMessagesFromPdm(const CATListValQTBPdmMessage& Messages);
    HRESULT GetMessagesFromPdm(CATListValQTBPdmMessage* pMessagesFromPdm);
    HRESULT DeleteMessagesFromPdm();

protected:
    static QTBCatiaFileClass CatiaFileClassStringToEnum(const CATUnicodeString& usPsnNodeType);

    // Whether one of the products above is the root of an archive; the product itself does not count.
    HRESULT IsUnderCmiArchiveRoot(unsigned char* pbIsUnderCmiArchiveRoot);

    // Whether a product has a PDM structure node, and that node, which may be null.
    HRESULT IsPdmPartMainNode(const CATIProduct_var& spIProduct, unsigned char* pbIsPdmPartMainNode,
                              QTBIPdmNode_var* pspIPdmNode);
    // The product, or the nearest one above it, that has one. Quiet failure when there is none.
    HRESULT GetPdmPartMainNode(QTBIPsnNode_var* pspIPsnNodeOnPdmPartMainNode, QTBIPdmNode_var* pspIPdmNode);

    // Whether the PDM system knows one of the products below.
    HRESULT SubNodesHaveCorrespondingPdmNodes(unsigned char* pbHavePdmNodes);

    HRESULT RecursiveGetAllChildren(const QTBIPsnNode_var& spIPsnNode, CATListValCATBaseUnknown_var* pAllChildNodes,
                                    const unsigned char& bConsiderSpecialBehavior,
                                    const unsigned char& bStopAtCmiArchiveRoot, const QTBBomType& WantedBomType,
                                    const unsigned char& bIgnoreInvalidNodes,
                                    const unsigned char& bCheckUniqueInstanceNames);
    HRESULT RecursiveGetAllReferenceChildNodes(const QTBIPsnNode_var& spIPsnNode,
                                               CATListValCATBaseUnknown_var* pAllReferenceChildNodes,
                                               const QTBBomType& WantedBomType,
                                               CATListValCATUnicodeString* pReferenceFileNames);

    HRESULT PartNumberHasChanged(unsigned char* pbPartNumberHasChanged, CATUnicodeString* pusNewPartNumber);
    // The behaviour that the schema lists for products of that type and part number.
    HRESULT NeedsSpecialBehavior(const CATUnicodeString& usPsnNodeType, const CATUnicodeString& usPartNumber,
                                 unsigned char* pbNeedsSpecialBehavior, CATUnicodeString* pusBehavior);
    // Whether the product above is a PDM part, and whether that can have sub-parts.
    HRESULT GetParentPdmPartInfo(unsigned char* pbParentPdmPartExists, unsigned char* pbCanHaveSubParts);

    // Instance keys of the children and, when they are asked for, the children, parallel to them.
    HRESULT GetCurrentDirectChildInstanceInfoStrings(CATListValCATUnicodeString* pDirectChildInstanceInfoStrings,
                                                     CATListValCATBaseUnknown_var* pDirectChildNodes,
                                                     const unsigned char& bOnlyBomParts);
    HRESULT CompareChildInstanceInfoStrings(const CATListValCATUnicodeString& CurrentStrings,
                                            const CATListValCATBaseUnknown_var& CurrentNodes,
                                            const CATListValCATUnicodeString& SavedStrings,
                                            CATListValCATUnicodeString* pAdditionalPsnNodes,
                                            CATListValCATUnicodeString* pMissingPsnNodes);

    // Whether a product's file differs from what the PDM system holds.
    HRESULT PsnDocumentIsDirty(const CATIProduct_var& spIProduct, unsigned char* pbIsDirty);

private:
    // Steps of GetDirectChildren.
    HRESULT AppendChildrenByBehavior(const CATIProduct_var& spIProductOnThis,
                                     CATListValCATBaseUnknown_var* pDirectChildNodes);
    HRESULT KeepWantedBomType(const QTBBomType& WantedBomType, CATListValCATBaseUnknown_var* pDirectChildNodes);
    HRESULT RemoveInvalidNodes(CATListValCATBaseUnknown_var* pDirectChildNodes);
    HRESULT CheckUniqueInstanceNames(const QTBIPsnNode_var& spIPsnNodeOnParent,
                                     const CATListValCATBaseUnknown_var& DirectChildNodes);

    // Steps of GetPdmNodeType for a product of which nothing is recorded.
    HRESULT FindPdmNodeType(const CATUnicodeString& usCmiArchiveType, CATUnicodeString* pusPdmNodeType,
                            unsigned char* pbIsDerived);
    HRESULT InferFileType(const CATUnicodeString& usPsnNodeType, const CATUnicodeString& usCmiArchiveType,
                          CATUnicodeString* pusPdmNodeType);
    HRESULT InferPartOrFileType(const CATUnicodeString& usPsnNodeType, const CATUnicodeString& usCmiArchiveType,
                                CATUnicodeString* pusPdmNodeType, unsigned char* pbIsDerived);
    HRESULT GetCandidateTypes(CATListValCATUnicodeString* pCandidateTypes);

    // Step of CompareChildInstanceInfoStrings.
    HRESULT CompareChildInstance(const CATUnicodeString& usCurrentString, const CATBaseUnknown_var& spCurrentChildNode,
                                 CATListValCATUnicodeString* pAdditionalPsnNodes,
                                 CATListValCATUnicodeString* pMissingPsnNodes);

    // Steps of SetStdCatiaAttribute.
    HRESULT LeavePartNumber(const CATIProduct_var& spIProductOnThis, const CATUnicodeString& usValue,
                            const unsigned char& bLoadDocument);
    HRESULT SetReferenceAttribute(const CATIProduct_var& spIProductOnThis, const QTBPsnAttrType& PsnAttrType,
                                  const CATUnicodeString& usValue, unsigned char* pbAttrChanged,
                                  const unsigned char& bLoadDocument);
    HRESULT SetReferenceDocumentDirty(const CATIProduct_var& spIProductOnThis, const unsigned char& bLoadDocument);

    CATUnicodeString m_usBehaviorPartNumber;
    unsigned char m_bNeedsSpecialBehavior = FALSE;
    CATUnicodeString m_usBehavior;
    unsigned char m_bReferenceCatiaAttrsChecked = FALSE;
    CATListValQTBPdmMessage m_MessagesFromPdm;
};
