#include "CATCmdContainer.h"

CATCmdContainer::CATCmdContainer(const CATUnicodeString& name, int persistence)
    : CATCmdAccess(name), m_Persistence(persistence)
{
}

CATCmdContainer::~CATCmdContainer()
{
    Hang(m_pChild, nullptr);
}

void CATCmdContainer::AddChild(CATCmdAccess* pItem)
{
    CATCmdAccess* pLast = m_pChild.get();
    if (pLast == nullptr) {
        Hang(m_pChild, pItem);
        return;
    }
    while (pLast->GetNext() != nullptr) {
        pLast = pLast->GetNext();
    }
    pLast->SetNext(pItem);
}

void CATCmdContainer::Dismiss(CATCmdAccess* pMenu)
{
    const auto* pContainer = dynamic_cast<CATCmdContainer*>(pMenu);
    if (pContainer != nullptr && pContainer->m_Persistence == GivenAway) {
        delete pContainer;
    }
}
