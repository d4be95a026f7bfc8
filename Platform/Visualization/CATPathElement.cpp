#include "CATPathElement.h"

#include "CATPathElementPool.h"

CATPathElement::CATPathElement(const CATBaseUnknown_var& spObject, CATPathElement* pParent,
                               std::shared_ptr<CATPathElementPool> pPool)
    : m_spObject(spObject), m_pParent(pParent), m_pPool(std::move(pPool)),
      m_Size(pParent != nullptr ? pParent->m_Size + 1 : 1)
{
    if (m_pParent != nullptr) {
        m_pParent->AddRef();
    }
}

CATPathElement::~CATPathElement()
{
    // Another path to the same object may have taken the place since.
    const auto found = m_pPool->m_Paths.find(m_spObject.Get());
    if (found != m_pPool->m_Paths.end() && found->second == this) {
        m_pPool->m_Paths.erase(found);
    }
}

unsigned int CATPathElement::Release()
{
    const unsigned int references = --m_References;
    // A path is as long as the tree is deep, so it is taken down step by step and not by recursion.
    CATPathElement* pPath = references == 0 ? this : nullptr;
    while (pPath != nullptr) {
        CATPathElement* pParent = pPath->m_pParent;
        delete pPath;
        pPath = pParent != nullptr && --pParent->m_References == 0 ? pParent : nullptr;
    }
    return references;
}
