#include "QTBMessageUtil.h"

#include "QTBInformation.h"
#include "QTBTraceUtil.h"
#include "QTBUserError.h"
#include "QTBWarning.h"

namespace {

template <class Message, class... Text>
CATError* Make(const char* msgId, const Text&... texts)
{
    return CATError::Make<Message>({texts...}, msgId);
}

CATUnicodeString ToText(int number)
{
    CATUnicodeString usNumber;
    usNumber.BuildFromNum(number);
    return usNumber;
}

} // namespace

CATError* QTBMessageUtil::AttributeNotDefinedError(const CATUnicodeString& usNodeText,
                                                   const CATUnicodeString& usAttrName)
{
    return Make<QTBUserError>("AttributeNotDefinedERR_2001", usNodeText, usAttrName);
}

CATError* QTBMessageUtil::FunctionalityNotImplemented()
{
    return Make<QTBUserError>("FunctionalityNotImplementedERR_2002");
}

CATError* QTBMessageUtil::InstanceNameOccursMoreThanOnce(const CATUnicodeString& usParentText,
                                                         const CATUnicodeString& usInstanceName)
{
    return Make<QTBUserError>("InstanceNameOccursMoreThanOnceERR_2003", usParentText, usInstanceName);
}

CATError* QTBMessageUtil::ObjectIsCheckedOutByUser(const CATUnicodeString& usUser)
{
    return Make<QTBUserError>("ObjectIsCheckedOutByUserERR_2004", usUser);
}

CATError* QTBMessageUtil::PsnEmbeddedComponentNotSupported(const CATBaseUnknown_var& spProduct)
{
    return Make<QTBUserError>("PsnEmbeddedComponentNotSupportedERR_2005",
                              QTBTraceUtil::GetNodeString(spProduct, FALSE));
}

CATError* QTBMessageUtil::PsnNodeRefDocNotFoundError(const CATUnicodeString& usInstanceName)
{
    return Make<QTBUserError>("PsnNodeRefDocNotFoundERR_2006", usInstanceName);
}

CATError* QTBMessageUtil::NoPdmConnectionError()
{
    return Make<QTBUserError>("NoPdmConnectionERR_2007");
}

CATError* QTBMessageUtil::PdmServiceNotAvailableError(const CATUnicodeString& usServiceName)
{
    return Make<QTBUserError>("PdmServiceNotAvailableERR_2008", usServiceName);
}

CATError* QTBMessageUtil::CommandTextNotKnownError(const CATUnicodeString& usCommandText)
{
    return Make<QTBUserError>("CommandTextNotKnownERR_2009", usCommandText);
}

CATError* QTBMessageUtil::MaxProductsReachedError(int iMaxProducts)
{
    return Make<QTBUserError>("MaxProductsReachedERR_2010", ToText(iMaxProducts));
}

CATError* QTBMessageUtil::NoCorrespondingProductError(const CATUnicodeString& usNodeText)
{
    return Make<QTBUserError>("NoCorrespondingProductERR_2011", usNodeText);
}

CATError* QTBMessageUtil::CircleInRecursiveExpandWarning(const CATUnicodeString& usNodeText)
{
    return Make<QTBWarning>("CircleInRecursiveExpandWRN_2101", usNodeText);
}

CATError* QTBMessageUtil::IgnoredInvalidNodeWarning(const CATUnicodeString& usNodeText,
                                                    const CATUnicodeString& usTypeText)
{
    if (usTypeText.IsEmpty()) {
        return Make<QTBWarning>("IgnoredNodeWithoutTypeWRN_2106", usNodeText);
    }
    return Make<QTBWarning>("IgnoredInvalidNodeWRN_2102", usNodeText, usTypeText);
}

CATError* QTBMessageUtil::PartNotInPdmWarning(const CATUnicodeString& usInstanceName,
                                              const CATUnicodeString& usPartNumber)
{
    return Make<QTBWarning>("PartNotInPdmWRN_2105", usInstanceName, usPartNumber);
}

CATError* QTBMessageUtil::MaxExpansionLevelReached(int iMaxExpansionLevel)
{
    return Make<QTBWarning>("MaxExpansionLevelReachedWRN_2103", ToText(iMaxExpansionLevel));
}

CATError* QTBMessageUtil::MaxRepNodesReached(int iMaxRepNodes)
{
    return Make<QTBWarning>("MaxRepNodesReachedWRN_2104", ToText(iMaxRepNodes));
}

CATError* QTBMessageUtil::RepNodeDeleted(const CATUnicodeString& usRepNodeText, const CATUnicodeString& usProductText)
{
    return Make<QTBInformation>("RepNodeDeletedINF_2201", usRepNodeText, usProductText);
}
