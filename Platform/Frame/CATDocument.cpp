#include "CATDocument.h"

#include "CATIPersistent.h"

CATDocument* CATDocument::FromComponent(const CATBaseUnknown* pObject)
{
    return pObject != nullptr ? dynamic_cast<CATDocument*>(pObject->GetImpl()) : nullptr;
}

bool CATDocument::IsDirty()
{
    if (m_bDirty != FALSE) {
        return true;
    }
    const CATIPersistent_var spIPersistent(this);
    return spIPersistent != NULL_var && spIPersistent->Dirty() != FALSE;
}
