#pragma once

#include "CATInterface_var.h"
#include "QTBInterfacesLibExport.h"

class CATIDOMDocument;
class CATUnicodeString;
class QTBINodeAttributes;
class QTBIPdmObjNode;
using CATIDOMDocument_var = CATInterface_var<CATIDOMDocument>;
using QTBINodeAttributes_var = CATInterface_var<QTBINodeAttributes>;
using QTBIPdmObjNode_var = CATInterface_var<QTBIPdmObjNode>;

inline constexpr IID IID_QTBICommunicationServices{"QTBICommunicationServices"};

// The PDM system, as the library talks to it.
class QTBINTERFACESLIB_API QTBICommunicationServices : public CATBaseUnknown
{
    CATDeclareInterface(QTBICommunicationServices, CATBaseUnknown)

public:
    // Creates a relation of that class; usRelationXml holds further "a" elements for it. The answer is a document that
    // the PDM graph can be updated with.
    virtual HRESULT CreateRelation(const CATUnicodeString& usRelationClass, const QTBIPdmObjNode_var& spLeftObject,
                                   const QTBIPdmObjNode_var& spRightObject, const CATUnicodeString& usRelationXml,
                                   CATIDOMDocument_var* pspAnswer) = 0;

    // Deletes the item that these attributes identify. The option belongs to the PDM system and may be null.
    virtual HRESULT Delete(const QTBINodeAttributes_var& spItem, const CATUnicodeString* pusDeleteOption) = 0;
};

using QTBICommunicationServices_var = CATInterface_var<QTBICommunicationServices>;
