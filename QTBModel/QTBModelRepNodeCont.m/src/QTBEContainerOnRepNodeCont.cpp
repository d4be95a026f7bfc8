#include "QTBEContainerOnRepNodeCont.h"

#include "QTBCheck.h"

_SEQUENCE_CATBaseUnknown_ptr QTBEContainerOnRepNodeCont::ListMembers(const char*)
{
    QTB_SCOPE("QTBEContainerOnRepNodeCont::ListMembers");
    return _SEQUENCE_CATBaseUnknown_ptr();
}

CATBaseUnknown* QTBEContainerOnRepNodeCont::FindMember(const CATUnicodeString&)
{
    QTB_SCOPE("QTBEContainerOnRepNodeCont::FindMember");
    return NULL;
}
