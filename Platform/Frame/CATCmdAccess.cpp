#include "CATCmdAccess.h"

#include <utility>
#include <vector>

CATCmdAccess::CATCmdAccess(const CATUnicodeString& name) : m_Name(name) {}

CATCmdAccess::~CATCmdAccess()
{
    if (m_pLink != nullptr) {
        // Deleted by somebody else than the item that it hangs on.
        static_cast<void>(m_pLink->release());
    }
    // One after the other: a menu may have any number of items.
    while (m_pNext != nullptr) {
        Link pRest = std::move(m_pNext->m_pNext);
        if (pRest != nullptr) {
            pRest->m_pLink = nullptr;
        }
        m_pNext->m_pLink = nullptr;
        m_pNext = std::move(pRest);
    }
}

void CATCmdAccess::SetNext(CATCmdAccess* pNext)
{
    Hang(m_pNext, pNext);
}

void CATCmdAccess::Hang(Link& link, CATCmdAccess* pItem)
{
    if (pItem == link.get() || IsReachedFrom(pItem)) {
        return;
    }
    Link pTaken(pItem);
    if (pItem != nullptr && pItem->m_pLink != nullptr) {
        static_cast<void>(pItem->m_pLink->release());
    }
    if (link != nullptr) {
        link->m_pLink = nullptr;
    }
    link = std::move(pTaken);
    if (link != nullptr) {
        link->m_pLink = &link;
    }
}

bool CATCmdAccess::IsReachedFrom(const CATCmdAccess* pItem) const
{
    // An item without a menu of its own needs no memory here, so that it can always be hung.
    std::vector<const CATCmdAccess*> waiting;
    const CATCmdAccess* pCurrent = pItem;
    while (pCurrent != nullptr && pCurrent != this) {
        if (pCurrent->GetChild() != nullptr) {
            waiting.push_back(pCurrent->GetChild());
        }
        pCurrent = pCurrent->GetNext();
        if (pCurrent == nullptr && !waiting.empty()) {
            pCurrent = waiting.back();
            waiting.pop_back();
        }
    }
    return pCurrent == this;
}
