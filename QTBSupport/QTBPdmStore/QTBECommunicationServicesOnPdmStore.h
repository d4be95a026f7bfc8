#pragma once

#include "CATIDOMDocument.h"
#include "CATUnicodeString.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmObjNode.h"

// QTBICommunicationServices on the late type QTBPdmStore.
class QTBECommunicationServicesOnPdmStore : public CATBaseUnknown
{
public:
    HRESULT CreateRelation(const CATUnicodeString& usRelationClass, const QTBIPdmObjNode_var& spLeftObject,
                           const QTBIPdmObjNode_var& spRightObject, const CATUnicodeString& usRelationXml,
                           CATIDOMDocument_var* pspAnswer);

    // The option may be "AllVersions"; without it the newest version is deleted.
    HRESULT Delete(const QTBINodeAttributes_var& spItem, const CATUnicodeString* pusDeleteOption);
};
