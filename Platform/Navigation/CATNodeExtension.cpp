#include "CATNodeExtension.h"

#include "CATNavigInstance.h"

void CATNodeExtension::UpdateElem(CATNavigInstance*) {}

HRESULT CATNodeExtension::ModifyShortHelp(CATUnicodeString&)
{
    return S_OK;
}

CATNavigInstance* CATNodeExtension::GetAssociatedInstance()
{
    return m_pInstance;
}

void CATNodeExtension::SetAssociatedInstance(CATNavigInstance* pInstance)
{
    m_pInstance = pInstance;
}

CATNavigExpansionMode CATNodeExtension::GetExpansionMode()
{
    return m_ExpansionMode;
}

void CATNodeExtension::SetExpansionMode(CATNavigExpansionMode mode)
{
    m_ExpansionMode = mode;
}

CATNavigBox* CATNodeExtension::GetFatherContainer()
{
    return m_pInstance != nullptr ? m_pInstance->GetBox() : nullptr;
}
