#include "QTBEAliasOnRepNode.h"

#include "QTBCheck.h"
#include "QTBIRepNode.h"

namespace {

constexpr const char* DEFAULT_ROOT_ALIAS = "Default Node";
constexpr const char* ANY_ALIAS = "Node";

} // namespace

CATUnicodeString QTBEAliasOnRepNode::GetAlias()
{
    QTB_SCOPE("QTBEAliasOnRepNode::GetAlias");
    try {
        return GetAliasGuarded();
    } catch (const CATXHException& exception) {
        QTB_TRACE("QTBEAliasOnRepNode::GetAlias -> caught exception:" << exception.GetError()->GetNLSMessage());
        return ANY_ALIAS;
    }
}

CATUnicodeString QTBEAliasOnRepNode::GetAliasGuarded()
{
    const QTBIRepNode_var spIRepNodeOnThis(this);
    QTB_RAISE_INTERFACE(spIRepNodeOnThis);
    unsigned char bIsRepDefaultNode = FALSE;
    QTB_RAISE_CALL(spIRepNodeOnThis->IsRepDefaultNode, &bIsRepDefaultNode);
    if (bIsRepDefaultNode != FALSE) {
        return DEFAULT_ROOT_ALIAS;
    }
    CATUnicodeString usDisplayString;
    return SUCCEEDED(spIRepNodeOnThis->GetDisplayString(&usDisplayString)) ? usDisplayString
                                                                           : CATUnicodeString(ANY_ALIAS);
}

HRESULT QTBEAliasOnRepNode::SetAlias(const CATUnicodeString&)
{
    QTB_SCOPE("QTBEAliasOnRepNode::SetAlias");
    return E_FAIL;
}
