#include "CATComponent.h"

#include <algorithm>
#include <cassert>
#include <thread>
#include <utility>

#include "CATLateType.h"
#include "CATMetaClass.h"

namespace {

int s_LiveComponents = 0;

// The extension object that is about to be constructed.
struct Announcement
{
    const void* pAddress = nullptr;
    CATComponent* pComponent = nullptr;
};
Announcement s_Announcement;

// The last of the components whose last reference has gone; null while none is being destroyed. One that dies while
// another is being destroyed waits behind it, so that a chain of components that hold each other is taken down without
// recursion, and without memory.
CATComponent* s_pLastDying = nullptr;

} // namespace

CATComponent::CATComponent(CATBaseUnknown* pImpl, const CATLateType& lateType) : m_pLateType(&lateType), m_pImpl(pImpl)
{
    ++s_LiveComponents;
}

CATComponent::~CATComponent()
{
    --s_LiveComponents;
}

CATBaseUnknown* CATComponent::FindInterfaceObject(const IID& iid)
{
    void* pInterface = nullptr;
    if (FAILED(QueryInterface(iid, &pInterface))) {
        return nullptr;
    }
    --m_References;
    return static_cast<CATBaseUnknown*>(pInterface);
}

HRESULT CATComponent::QueryFurther(const IID& iid, void** ppv)
{
    if (iid == IID_CATBaseUnknown) {
        *ppv = m_pImpl;
        AddRef();
        return S_OK;
    }
    for (const Facet& facet : m_MoreFacets) {
        if (facet.iid == iid.GetValue()) {
            *ppv = facet.pInterface;
            AddRef();
            return S_OK;
        }
    }
    *ppv = nullptr;
    // A component that is being destroyed grows no new extensions.
    const CATLateType::Registration* pRegistration = m_bDying ? nullptr : m_pLateType->Resolve(iid);
    if (pRegistration == nullptr) {
        return E_NOINTERFACE;
    }
    // The factory's product may be asked for by the extension's constructor already; it dies with the component.
    CATBaseUnknown* pInterface = pRegistration->factory(this);
    if (pInterface == nullptr) {
        return E_NOINTERFACE;
    }
    *ppv = pInterface;
    AddRef();
    return S_OK;
}

void CATComponent::Attach(const IID& iid, CATBaseUnknown* pInterface)
{
    const Facet facet{iid.GetValue(), pInterface};
    if (m_FacetCount < FACETS_AT_HAND) {
        m_Facets[m_FacetCount++] = facet;
    } else {
        m_MoreFacets.push_back(facet);
    }
}

void CATComponent::Detach(CATBaseUnknown* pInterface)
{
    const auto isIt = [pInterface](const Facet& facet) { return facet.pInterface == pInterface; };
    std::erase_if(m_MoreFacets, isIt);
    const auto begin = m_Facets.begin();
    const auto end = std::remove_if(begin, begin + m_FacetCount, isIt);
    m_FacetCount = static_cast<std::uint8_t>(end - begin);
}

void CATComponent::AnnounceExtension(void* pAddress, CATComponent* pComponent)
{
    s_Announcement = Announcement{pAddress, pComponent};
}

CATComponent* CATComponent::TakeAnnouncement(const void* pAddress)
{
    return s_Announcement.pAddress == pAddress ? std::exchange(s_Announcement, Announcement{}).pComponent : nullptr;
}

int CATComponent::GetLiveCount()
{
    return s_LiveComponents;
}

void CATComponent::Destroy(CATComponent* pComponent)
{
    if (pComponent->m_bDying) {
        return;
    }
    pComponent->m_bDying = true;
    if (s_pLastDying != nullptr) {
        s_pLastDying->m_pNextDying = pComponent;
        s_pLastDying = pComponent;
        return;
    }
    s_pLastDying = pComponent;
    for (CATComponent* pDying = pComponent; pDying != nullptr;) {
        pDying->DestroyObjects();
        CATComponent* pDestroyed = std::exchange(pDying, pDying->m_pNextDying);
        if (pDying == nullptr) {
            s_pLastDying = nullptr;
        }
        delete pDestroyed;
    }
}

void CATComponent::DestroyObjects()
{
    // Destructors of extensions may take and drop handles on their own component.
    m_References = 1;
    while (!m_MoreFacets.empty()) {
        const Facet facet = m_MoreFacets.back();
        m_MoreFacets.pop_back();
        delete facet.pInterface;
    }
    while (m_FacetCount > 0) {
        delete m_Facets[--m_FacetCount].pInterface;
    }
    delete m_pImpl;
}

#ifndef NDEBUG
void CATComponent::CheckThread()
{
    static const std::thread::id s_Thread = std::this_thread::get_id();
    assert(std::this_thread::get_id() == s_Thread && "components belong to the interactive thread");
}
#endif
