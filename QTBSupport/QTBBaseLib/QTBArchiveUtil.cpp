#include "QTBArchiveUtil.h"

#include "QTBIPdmNode.h"

HRESULT QTBArchiveUtil::GetRootFileName(const QTBIPdmNode_var& spIPdmNode, CATUnicodeString* pusRootFileName)
{
    if (pusRootFileName == nullptr) {
        return E_POINTER;
    }
    if (spIPdmNode == NULL_var) {
        return E_FAIL;
    }
    unsigned char bIsDefined = FALSE;
    CATUnicodeString usRootFileName;
    const HRESULT hr =
        spIPdmNode->GetQtbInfoAttr("QtbArchiveRootFileName", &usRootFileName, FALSE, &bIsDefined, FALSE);
    if (FAILED(hr) || bIsDefined == FALSE) {
        return E_FAIL;
    }
    *pusRootFileName = usRootFileName;
    return S_OK;
}
