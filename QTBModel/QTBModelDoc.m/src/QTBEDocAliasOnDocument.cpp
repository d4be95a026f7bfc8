#include "QTBEDocAliasOnDocument.h"

#include "QTBCheck.h"

CATUnicodeString QTBEDocAliasOnDocument::GetAlias()
{
    QTB_SCOPE("QTBEDocAliasOnDocument::GetAlias");
    return "QTBDoc";
}
