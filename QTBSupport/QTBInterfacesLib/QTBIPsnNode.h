#pragma once

#include "CATListVal.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "QTBInterfacesLibExport.h"

class CATDocument;
class CATIProduct;
class QTBPartInstanceInfo;
class QTBPdmMessage;
using CATIProduct_var = CATInterface_var<CATIProduct>;
using CATListValQTBPartInstanceInfo = CATListVal<QTBPartInstanceInfo>;
using CATListValQTBPdmMessage = CATListVal<QTBPdmMessage>;
// Their values stand in the base library (QTBConstants.h).
enum QTBBomType : int;
enum QTBPsnAttrType : int;

inline constexpr IID IID_QTBIPsnNode{"QTBIPsnNode"};

// A product of the CAD session, instance or reference, in the terms of the PDM system.
//
// A product whose type and part number the schema lists needs special behaviour, where the session has that switched
// on: it is ignored with all below it, or skipped, its children standing in its place. bConsiderSpecialBehavior says
// whether an operation heeds that.
class QTBINTERFACESLIB_API QTBIPsnNode : public CATBaseUnknown
{
    CATDeclareInterface(QTBIPsnNode, CATBaseUnknown)

public:
    // The product above; those that are ignored or skipped are passed over. Quiet failure, with an empty handle, at the
    // top.
    virtual HRESULT GetFatherProduct(CATIProduct_var* pspIProductOnFatherNode,
                                     const unsigned char& bConsiderSpecialBehavior) = 0;

    // The children, in the CAD system's order, as CATIProduct.
    //   bStopAtCmiArchiveRoot  the root of an archive has no children
    //   WantedBomType          keeps BOM parts or auxiliary files only; QTB_BOM_TYPE_ALL keeps both
    //   bIgnoreInvalidNodes    leaves out embedded components, broken links and children whose type cannot be told,
    //                          with a warning for each in the information list dialog
    virtual HRESULT GetDirectChildren(CATListValCATBaseUnknown_var* pDirectChildNodes,
                                      const unsigned char& bConsiderSpecialBehavior,
                                      const unsigned char& bStopAtCmiArchiveRoot, const QTBBomType& WantedBomType,
                                      const unsigned char& bIgnoreInvalidNodes) = 0;

    // All products below: below each one the descendants of its children, then the children. With
    // bCheckUniqueInstanceNames brothers of the same instance name are an error, of which the information list dialog
    // tells too. Like every walk below a product it fails with MaxProductsReachedERR_2010 at the limit on products.
    virtual HRESULT GetAllChildren(CATListValCATBaseUnknown_var* pAllChildNodes,
                                   const unsigned char& bConsiderSpecialBehavior,
                                   const unsigned char& bStopAtCmiArchiveRoot, const QTBBomType& WantedBomType,
                                   const unsigned char& bIgnoreInvalidNodes,
                                   const unsigned char& bCheckUniqueInstanceNames) = 0;

    // One child for each reference file, the first, and parallel to them the files' names; the names may be null.
    // Special behaviour counts, archives are not entered.
    virtual HRESULT GetDirectReferenceChildNodes(CATListValCATBaseUnknown_var* pDirectReferenceChildNodes,
                                                 const QTBBomType& WantedBomType,
                                                 CATListValCATUnicodeString* pReferenceFileNames) = 0;

    // The same all the way down, in the order of GetAllChildren. A reference that stands below several others is in the
    // list once for each. The names, which may be null, are not those of the nodes: what the last subtree left there,
    // then those of the direct children.
    virtual HRESULT GetAllReferenceChildNodes(CATListValCATBaseUnknown_var* pAllReferenceChildNodes,
                                              const QTBBomType& WantedBomType,
                                              CATListValCATUnicodeString* pReferenceFileNames) = 0;

    // Whether the product is part of the BOM part structure or an auxiliary file. Infers the PDM class as
    // GetPdmNodeType does.
    virtual HRESULT GetPdmBomInfo(QTBBomType* pBomType) = 0;

    // Whether the product's file is the root of an archive, and the archive's file name, which may be null. The flag
    // keeps its value for a product without reference file, so the caller initialises it. The root of an archive is
    // recorded under the PDM class of archives.
    virtual HRESULT IsCmiArchiveRoot(unsigned char* pbIsCmiArchiveRoot, CATUnicodeString* pusArchiveFileName) = 0;

    // Keeps the instance keys of the children in the load manager, for each product of the tree, once per part number.
    // Called when a structure was loaded from the PDM system.
    virtual HRESULT SaveCurrentChildInstanceInfoStrings() = 0;

    // Instance keys of the children that were added since then, and of those that are missing.
    virtual HRESULT CheckCurrentChildInstanceInfoLists(CATListValCATUnicodeString* pAdditionalPsnNodes,
                                                       CATListValCATUnicodeString* pMissingPsnNodes,
                                                       const unsigned char& bOnlyBomParts) = 0;

    // What the load manager finds the product's PDM file object by: file name without extension, a slash, PDM class.
    virtual HRESULT GetPdmFileObjInfo(CATUnicodeString* pusPdmFileObjInfo) = 0;

    // The type of the product (usCATPRODUCT, usCATPART, ...) and the name of its reference file, for the root of an
    // archive that of the archive. The name may be null. Asks IsCmiArchiveRoot, and records what that records.
    virtual HRESULT GetPsnNodeType(CATUnicodeString* pusPsnNodeType, CATUnicodeString* pusFileName) = 0;

    // Records the PDM class under which the product is or will be stored; the type of a CAD document stands for the PDM
    // class of its files.
    virtual HRESULT SetPdmNodeType(const CATUnicodeString& usPdmNodeType) = 0;

    // That PDM class; when none is recorded it is taken from the PDM graph or inferred, and recorded as if it had been
    // set: what the graph or the schema say later changes it no more. The display text and the flag that tells an
    // inferred type may be null. Quiet failure for a product that has none.
    virtual HRESULT GetPdmNodeType(CATUnicodeString* pusPdmNodeType, CATUnicodeString* pusPdmNodeTypeNls,
                                   unsigned char* pbPdmNodeTypeIsDerived) = 0;

    // Ids of the commands that set the type, in the order of the menu. None for a product that the PDM system knows.
    virtual HRESULT GetPdmNodeTypeCommandHeaderIds(CATListValCATUnicodeString* pCommandHeaderIdList) = 0;

    // The steps from the root part to the product, or to the nearest one above it that has a PDM structure node, root
    // first, and that product, which may be null. Quiet failure when there is none.
    virtual HRESULT GetPathToRootPartInstanceInfo(CATListValQTBPartInstanceInfo* pPathToRootPartInstanceInfoList,
                                                  CATIProduct_var* pspIProductOnPdmPartMainNode) = 0;

    // Writes a standard attribute of the reference, whose document becomes dirty. Part number and instance name
    // identify a product and are never written. The flag, which may be null, tells whether the value was another one;
    // bLoadDocument loads a document that is not in session.
    virtual HRESULT SetStdCatiaAttribute(const QTBPsnAttrType& PsnAttrType, const CATUnicodeString& usValue,
                                         unsigned char* pbAttrChanged, const unsigned char& bLoadDocument) = 0;

    // Whether the product's document has to be saved in the PDM system. The second flag, which may be null, becomes
    // TRUE, never FALSE, for a document that need not but has design tables.
    virtual HRESULT DocumentIsDirty(unsigned char* pbIsDirty, unsigned char* pbHasDesignTables) = 0;

    // The document of the reference; the pointer is null on entry, no reference is added. Errors for the user when
    // there is none, a quiet failure for types other than usCATPRODUCT.
    virtual HRESULT GetReferenceDocumentPtr(CATDocument** ppDocument, unsigned char bTraceDocument) = 0;

    // Whether the product needs special behaviour, and which: usIGNORE_NODE or usSKIP_NODE.
    virtual HRESULT NeedsSpecialBehavior(unsigned char* pbNeedsSpecialBehavior, CATUnicodeString* pusBehavior) = 0;

    // Writes the product, its type and its file name to the debug output.
    virtual HRESULT PrintNodeInformation() = 0;

    // A note of callers that they checked the attributes of the reference.
    virtual HRESULT SetReferenceCatiaAttrsChecked(unsigned char bChecked) = 0;
    virtual HRESULT GetReferenceCatiaAttrsChecked(unsigned char* pbChecked) = 0;

    // Messages that the PDM system sent for the product, kept until they are deleted.
    virtual HRESULT AddMessagesFromPdm(const CATListValQTBPdmMessage& Messages) = 0;
    virtual HRESULT GetMessagesFromPdm(CATListValQTBPdmMessage* pMessagesFromPdm) = 0;
    virtual HRESULT DeleteMessagesFromPdm() = 0;
};

using QTBIPsnNode_var = CATInterface_var<QTBIPsnNode>;
