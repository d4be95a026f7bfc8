#pragma once

#include <type_traits>
#include <utility>

#include "CATBaseUnknown.h"

// The empty handle of every type.
struct CATNullHandle
{
};
inline constexpr CATNullHandle NULL_var{};

// Raises the error of an empty handle that is dereferenced.
[[noreturn]] PLATFORM_API void CATThrowErrorNullVar(const char* interfaceName);

// Handle: keeps a component alive and gives access to one of its interfaces. Constructed from a handle or pointer of
// another type it queries its interface and is empty (NULL_var) when the component does not answer it. Two handles are
// equal when they belong to the same component, whichever interface each holds.
template <class Interface>
class CATInterface_var
{
public:
    CATInterface_var() noexcept = default;
    CATInterface_var(CATNullHandle) noexcept {}
    CATInterface_var(std::nullptr_t) noexcept {}

    CATInterface_var(const CATInterface_var& other) noexcept : m_pInterface(other.m_pInterface) { Hold(); }
    CATInterface_var(CATInterface_var&& other) noexcept : m_pInterface(std::exchange(other.m_pInterface, nullptr)) {}

    // Adds a reference; the creator's own reference stays the creator's.
    template <class T, class = std::enable_if_t<std::is_base_of_v<CATBaseUnknown, T>>>
    CATInterface_var(T* pObject) : m_pInterface(Cast(pObject))
    {
    }

    template <class Other, class = std::enable_if_t<!std::is_same_v<Other, Interface>>>
    CATInterface_var(const CATInterface_var<Other>& other) : m_pInterface(Cast(other.Get()))
    {
    }

    ~CATInterface_var()
    {
        if (m_pInterface != nullptr) {
            m_pInterface->Release();
        }
    }

    CATInterface_var& operator=(CATInterface_var other) noexcept
    {
        std::swap(m_pInterface, other.m_pInterface);
        return *this;
    }

    // Takes over a reference that somebody already added, for example by QueryInterface.
    static CATInterface_var Adopt(Interface* pInterface) noexcept
    {
        CATInterface_var handle;
        handle.m_pInterface = pInterface;
        return handle;
    }

    // The pointer held, null when empty; no reference is added.
    Interface* Get() const noexcept { return m_pInterface; }

    Interface* operator->() const
    {
        if (m_pInterface == nullptr) [[unlikely]] {
            ThrowErrorNullVar();
        }
        return m_pInterface;
    }
    Interface& operator*() const { return *operator->(); }

    explicit operator bool() const noexcept { return m_pInterface != nullptr; }
    bool operator!() const noexcept { return m_pInterface == nullptr; }

    // The component's identity, null when empty.
    CATBaseUnknown* GetImpl() const { return m_pInterface != nullptr ? m_pInterface->GetImpl() : nullptr; }

    friend bool operator==(const CATInterface_var& handle, CATNullHandle) { return handle.m_pInterface == nullptr; }

    [[noreturn]] static void ThrowErrorNullVar();

private:
    template <class T>
    static Interface* Cast(T* pObject)
    {
        if (pObject == nullptr) {
            return nullptr;
        }
        if constexpr (std::is_same_v<Interface, CATBaseUnknown>) {
            CATBaseUnknown* pImpl = pObject->GetImpl();
            pImpl->AddRef();
            return pImpl;
        } else if constexpr (std::is_same_v<Interface, T>) {
            pObject->AddRef();
            return pObject;
        } else {
            void* pInterface = nullptr;
            return SUCCEEDED(pObject->QueryInterface(Interface::GetIID(), &pInterface))
                       ? static_cast<Interface*>(pInterface)
                       : nullptr;
        }
    }

    void Hold() const
    {
        if (m_pInterface != nullptr) {
            m_pInterface->AddRef();
        }
    }

    Interface* m_pInterface = nullptr;
};

template <class Interface>
void CATInterface_var<Interface>::ThrowErrorNullVar()
{
    if constexpr (std::is_same_v<Interface, CATBaseUnknown>) {
        CATThrowErrorNullVar("CATBaseUnknown");
    } else {
        CATThrowErrorNullVar(Interface::GetInterfaceName());
    }
}

template <class A, class B>
bool operator==(const CATInterface_var<A>& a, const CATInterface_var<B>& b)
{
    return static_cast<const void*>(a.Get()) == static_cast<const void*>(b.Get()) || a.GetImpl() == b.GetImpl();
}

using CATBaseUnknown_var = CATInterface_var<CATBaseUnknown>;
