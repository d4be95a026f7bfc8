#pragma once

#include "CATInterface_var.h"
#include "QTBBaseLibExport.h"

class CATError;
class CATUnicodeString;

// Makes the messages for the user. Each operation returns a new error object of the catalog "QTBUserMessages", never
// null, whose reference belongs to the caller: it goes to CATError::GetReturn, CATError::Throw or the information list
// dialog, or is released. Node texts are those of QTBTraceUtil::GetNodeString.
class QTBBASELIB_API QTBMessageUtil
{
public:
    // Errors (QTBUserError).
    static CATError* AttributeNotDefinedError(const CATUnicodeString& usNodeText, const CATUnicodeString& usAttrName);
    static CATError* FunctionalityNotImplemented();
    static CATError* InstanceNameOccursMoreThanOnce(const CATUnicodeString& usParentText,
                                                    const CATUnicodeString& usInstanceName);
    static CATError* ObjectIsCheckedOutByUser(const CATUnicodeString& usUser);
    static CATError* PsnEmbeddedComponentNotSupported(const CATBaseUnknown_var& spProduct);
    static CATError* PsnNodeRefDocNotFoundError(const CATUnicodeString& usInstanceName);
    // The session has nobody to talk to the PDM system with.
    static CATError* NoPdmConnectionError();
    // The connection to the PDM system does not offer the service that a command needs.
    static CATError* PdmServiceNotAvailableError(const CATUnicodeString& usServiceName);
    // A command that the schema in force does not know.
    static CATError* CommandTextNotKnownError(const CATUnicodeString& usCommandText);
    // A product structure has more places than a walk through it may pass (QTBLimits).
    static CATError* MaxProductsReachedError(int iMaxProducts);
    // A command needs the product in the CAD session that corresponds to a PDM node.
    static CATError* NoCorrespondingProductError(const CATUnicodeString& usNodeText);

    // Warnings (QTBWarning).
    static CATError* CircleInRecursiveExpandWarning(const CATUnicodeString& usNodeText);
    static CATError* IgnoredInvalidNodeWarning(const CATUnicodeString& usNodeText, const CATUnicodeString& usTypeText);
    static CATError* PartNotInPdmWarning(const CATUnicodeString& usInstanceName, const CATUnicodeString& usPartNumber);
    static CATError* MaxExpansionLevelReached(int iMaxExpansionLevel);
    // A tree has more nodes than an update may pass (QTBLimits).
    static CATError* MaxRepNodesReached(int iMaxRepNodes);

    // Information (QTBInformation).
    static CATError* RepNodeDeleted(const CATUnicodeString& usRepNodeText, const CATUnicodeString& usProductText);
};
