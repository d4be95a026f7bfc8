#pragma once

#include <memory>
#include <new>
#include <type_traits>

#include "CATComponent.h"

// Interface objects. A tie implements an interface by forwarding each operation, in slot order, to the extension
// object. The forwarding classes are templates named TIE<interface> over one of the two bases below, which hold
// everything else:
//
//     template <class Tie, class Target = CATOwnTarget>
//     class TIEQTBINode : public Tie
//     {
//     public:
//         using Tie::Tie;
//         HRESULT GetPdmClass(CATUnicodeString* p) override { return Target::Of(*this)->GetPdmClass(p); }
//     };

// Where a tie forwards to: its extension, or the component's own interface object for an interface that this one
// extends, so that a node has one state whichever interface is asked.
struct CATOwnTarget
{
    template <class Tie>
    static auto Of(Tie& tie)
    {
        return tie.Target();
    }
};

template <class Base>
struct CATInheritedTarget
{
    template <class Tie>
    static Base* Of(Tie& tie)
    {
        return tie.template InheritedTarget<Base>();
    }
};

// Base of the ties of a data extension: the extension object lives inside its interface object.
template <class InterfaceType, class ExtensionType>
class CATDataTie : public InterfaceType
{
public:
    using Interface = InterfaceType;
    using Extension = ExtensionType;

    explicit CATDataTie(CATComponent* pComponent) : InterfaceType(pComponent) {}
    ~CATDataTie() override
    {
        if (m_bConstructed) {
            std::destroy_at(Target());
        }
    }

    void ConstructExtension()
    {
        CATComponent::AnnounceExtension(m_Storage, this->GetComponent());
        ::new (static_cast<void*>(m_Storage)) ExtensionType();
        m_bConstructed = true;
    }

    // The extension, also while its constructor runs.
    ExtensionType* Target() { return std::launder(reinterpret_cast<ExtensionType*>(m_Storage)); }

    // The component's own interface object for an interface that this one extends.
    template <class Base>
    Base* InheritedTarget()
    {
        if (m_pInherited == nullptr) {
            m_pInherited = this->GetComponent()->FindInterfaceObject(Base::GetIID());
        }
        return static_cast<Base*>(m_pInherited);
    }

private:
    CATBaseUnknown* m_pInherited = nullptr;
    alignas(ExtensionType) std::byte m_Storage[sizeof(ExtensionType)];
    bool m_bConstructed = false;
};

// Lets a shared extension act for one component for the time of one call.
class CATCodeExtensionCall
{
public:
    CATCodeExtensionCall(CATBaseUnknown* pExtension, CATComponent* pComponent)
        : m_pExtension(pExtension), m_pOuter(pExtension->m_pComponent)
    {
        pExtension->m_pComponent = pComponent;
    }
    CATCodeExtensionCall(const CATCodeExtensionCall&) = delete;
    CATCodeExtensionCall& operator=(const CATCodeExtensionCall&) = delete;
    ~CATCodeExtensionCall() { m_pExtension->m_pComponent = m_pOuter; }

private:
    CATBaseUnknown* m_pExtension;
    CATComponent* m_pOuter;
};

// Base of the ties of a code extension: one stateless extension object serves all components.
template <class InterfaceType, class ExtensionType>
class CATCodeTie : public InterfaceType
{
public:
    using Interface = InterfaceType;
    using Extension = ExtensionType;

    explicit CATCodeTie(CATComponent* pComponent) : InterfaceType(pComponent) {}

    void ConstructExtension() {}

    class Call
    {
    public:
        Call(ExtensionType* pExtension, CATComponent* pComponent) : m_Call(pExtension, pComponent), m_p(pExtension) {}
        ExtensionType* operator->() const { return m_p; }

    private:
        CATCodeExtensionCall m_Call;
        ExtensionType* m_p;
    };

    Call Target()
    {
        static ExtensionType s_Extension;
        return Call(&s_Extension, this->GetComponent());
    }
};

// Makes the interface object of type Tie for a component (see CATInterfaceObjectFactory). An exception out of the
// extension's constructor leaves the component as it was and goes on to the caller of the query.
template <class Tie>
CATBaseUnknown* CATCreateTie(CATComponent* pComponent)
{
    auto pTie = std::make_unique<Tie>(pComponent);
    if (pComponent == nullptr) {
        return pTie.release();
    }
    pComponent->Attach(Tie::Interface::GetIID(), pTie.get());
    try {
        pTie->ConstructExtension();
    } catch (...) {
        pComponent->Detach(pTie.get());
        throw;
    }
    return pTie.release();
}
