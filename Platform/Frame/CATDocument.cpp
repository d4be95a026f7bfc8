#include "CATDocument.h"

#include "CATDocumentRegister.h"
#include "CATIPersistent.h"

CATDocument* CATDocument::FromComponent(const CATBaseUnknown* pObject)
{
    return pObject != nullptr ? dynamic_cast<CATDocument*>(pObject->GetImpl()) : nullptr;
}

void CATDocument::SetStorageName(const CATUnicodeString& storageName)
{
    CATDocumentRegister::Session().Rename(*this, storageName);
}

CATUnicodeString CATDocument::GetDisplayName() const
{
    return m_DisplayName.IsEmpty() ? CATUnicodeString::FromValidUtf8(GetFileName(m_StorageName)) : m_DisplayName;
}

bool CATDocument::IsDirty()
{
    if (m_bDirty != FALSE) {
        return true;
    }
    const CATIPersistent_var spIPersistent(this);
    return spIPersistent != NULL_var && spIPersistent->Dirty() != FALSE;
}

std::string_view CATDocument::GetFileName(const CATUnicodeString& storageName)
{
    const std::string_view path = storageName.View();
    return path.substr(path.find_last_of('/') + 1);
}
