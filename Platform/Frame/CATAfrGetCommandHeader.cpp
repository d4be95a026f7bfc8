#include "CATAfrGetCommandHeader.h"

#include "CATApplicationFrame.h"
#include "CATCommandHeaderRegister.h"

HRESULT CATAfrGetCommandHeader(const CATUnicodeString& id, CATCommandHeader** ppHeader)
{
    return CATApplicationFrame::GetFrame()->GetCommandHeaders().Find(id, ppHeader);
}
