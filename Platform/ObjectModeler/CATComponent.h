#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "CATBaseUnknown.h"
#include "PlatformExport.h"

// One component: its reference count, its late type and the interface objects attached to it so far. Reached through
// CATBaseUnknown; only the object modeler and the ties know it.
class PLATFORM_API CATComponent
{
public:
    CATComponent(CATBaseUnknown* pImpl, const CATLateType& lateType);
    CATComponent(const CATComponent&) = delete;
    CATComponent& operator=(const CATComponent&) = delete;
    ~CATComponent();

    CATBaseUnknown* GetImpl() const { return m_pImpl; }
    const CATLateType& GetLateType() const { return *m_pLateType; }

    // Whether the object is the implementation object and goes without the component: its construction failed.
    bool IsAbandonedBy(const CATBaseUnknown* pObject) const { return m_pImpl == pObject && !m_bDying; }

    unsigned int AddRef()
    {
        CheckThread();
        return ++m_References;
    }

    unsigned int Release()
    {
        CheckThread();
        const unsigned int references = --m_References;
        if (references == 0) {
            Destroy(this);
        }
        return references;
    }

    HRESULT QueryInterface(const IID& iid, void** ppv)
    {
        const std::uint64_t value = iid.GetValue();
        for (std::size_t i = 0; i < m_FacetCount; ++i) {
            if (m_Facets[i].iid == value) {
                *ppv = m_Facets[i].pInterface;
                AddRef();
                return S_OK;
            }
        }
        return QueryFurther(iid, ppv);
    }

    // The interface object of the component for that interface, without a reference; null when it has none. Interface
    // objects live as long as the component, so ties of the same component may keep it.
    CATBaseUnknown* FindInterfaceObject(const IID& iid);

    // Used by the interface-object factories: an interface object is known to the component before its extension is
    // constructed, so that the constructor's queries reach the object under construction.
    void Attach(const IID& iid, CATBaseUnknown* pInterface);
    void Detach(CATBaseUnknown* pInterface);

    // Tells the CATBaseUnknown that will be constructed at that address which component it belongs to.
    static void AnnounceExtension(void* pAddress, CATComponent* pComponent);
    static CATComponent* TakeAnnouncement(const void* pAddress);

    static int GetLiveCount();

private:
    struct Facet
    {
        std::uint64_t iid;
        CATBaseUnknown* pInterface;
    };

    // A node of the PDM graph answers four interfaces in daily work.
    static constexpr std::size_t FACETS_AT_HAND = 4;

    HRESULT QueryFurther(const IID& iid, void** ppv);
    static void Destroy(CATComponent* pComponent);
    void DestroyObjects();

#ifdef NDEBUG
    static void CheckThread() {}
#else
    static void CheckThread();
#endif

    unsigned int m_References = 1;
    bool m_bDying = false;
    std::uint8_t m_FacetCount = 0;
    const CATLateType* m_pLateType;
    CATBaseUnknown* m_pImpl;
    // Of the components that wait for their destruction.
    CATComponent* m_pNextDying = nullptr;
    std::array<Facet, FACETS_AT_HAND> m_Facets;
    std::vector<Facet> m_MoreFacets;
};
