#pragma once

#include "CATInterface_var.h"
#include "CATUnicodeString.h"
#include "QTBInterfacesLibExport.h"

class CATFrmWindow;
class QTBIPdmNode;
class QTBIPdmObjNode;
class QTBIPdmRelNode;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIPdmObjNode_var = CATInterface_var<QTBIPdmObjNode>;
using QTBIPdmRelNode_var = CATInterface_var<QTBIPdmRelNode>;

inline constexpr IID IID_QTBILinkToQtb{"QTBILinkToQtb"};

// The way from a product of the CAD session to the PDM nodes and rep nodes that correspond to it.
//
// Not finding a counterpart is no failure: the existence operations succeed with the flag FALSE. Their out-handles may
// be null.
class QTBINTERFACESLIB_API QTBILinkToQtb : public CATBaseUnknown
{
    CATDeclareInterface(QTBILinkToQtb, CATBaseUnknown)

public:
    // The PDM structure node: for an instance the relation that places its part below the father's, else, and for a
    // reference, the part object; besides, the part object in either case.
    virtual HRESULT ProdStrucPdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode,
                                           QTBIPdmObjNode_var* pspIPdmObjNodeOnPart) = 0;

    // Highlights the rep nodes of the PDM structure node in their window. Fails when there are none. The window pointer
    // may be null.
    virtual HRESULT HighlightProdStrucNode(unsigned char bEmptyHighlightFirst, unsigned char bActivateWindow,
                                           CATFrmWindow** ppFrmWindowWhereHighlighted) = 0;

    // The PDM object of the document behind the product.
    virtual HRESULT CatiaFilePdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode) = 0;

    // The same as HighlightProdStrucNode for the rep nodes of that object.
    virtual HRESULT HighlightCatiaFileNode(unsigned char bEmptyHighlightFirst, unsigned char bActivateWindow,
                                           CATFrmWindow** ppFrmWindowWhereHighlighted) = 0;

    // In sessions without the BOM part structure, the relation that places an instance's file below that of its father.
    // The last flag tells that part number or version of that file are not those of the product.
    virtual HRESULT FileStrucPdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode,
                                           unsigned char* pbNameOrVersionDiffers) = 0;

    // All of these in one call: relation and object of the structure, and the file object. What is not asked for, with
    // null, is not looked up.
    virtual HRESULT CorrespondingPdmNodesExist(unsigned char* pbExist, QTBIPdmRelNode_var* pspIPdmRelNodeOnPartRel,
                                               QTBIPdmObjNode_var* pspIPdmObjNodeOnPartObj,
                                               QTBIPdmObjNode_var* pspIPdmObjNodeOnFileObj) = 0;

    // Links the product to a part number, which is written to the product where it has another one.
    virtual HRESULT SetCatiaPartNumberForLink(const CATUnicodeString& usCatiaPartNumber) = 0;

    // The part number by which the product's counterparts are found: that of the reference, else what is known of it,
    // else the file's name. bLoadDocument loads a document of which the part number is not known. Quiet failure when
    // there is not even a file name.
    virtual HRESULT GetCatiaPartNumberForLink(CATUnicodeString* pusCatiaPartNumber,
                                              const unsigned char& bLoadDocument) = 0;
};

using QTBILinkToQtb_var = CATInterface_var<QTBILinkToQtb>;
