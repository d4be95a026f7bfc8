#pragma once

#include <cstddef>

#include "CATDataType.h"
#include "CATIID.h"
#include "PlatformExport.h"

class CATComponent;
class CATLateType;
class CATMetaClass;

inline constexpr IID IID_CATBaseUnknown{"CATBaseUnknown"};
inline constexpr IID CLSID_CATBaseUnknown = IID_CATBaseUnknown;

// Root of implementation objects, extension objects and interface objects.
//
// A component is one implementation object of a late type with the extension objects and interface objects that the
// object modeler attaches to it on demand. They share one reference count: AddRef and Release on any of them count on
// the component, and all of them die with the last reference.
class PLATFORM_API CATBaseUnknown
{
public:
    // An extension object that the object modeler is creating learns its component here, so that the constructors of
    // derived classes can use it already. Any other object belongs to no component.
    CATBaseUnknown();
    CATBaseUnknown(const CATBaseUnknown&) = delete;
    CATBaseUnknown& operator=(const CATBaseUnknown&) = delete;
    virtual ~CATBaseUnknown();

    static CATMetaClass* MetaObject();

    // The interface object of the same component for that interface: S_OK and one reference in *ppv, or E_NOINTERFACE
    // and null. The extension is created on the first query and reached again by every later one.
    virtual HRESULT QueryInterface(const IID& iid, void** ppv);

    // The same look-up by interface name; null when the component does not answer it.
    CATBaseUnknown* QueryInterface(const char* interfaceName);

    virtual unsigned int AddRef();
    virtual unsigned int Release();

    // The implementation object, which stands for the component's identity; the object itself outside a component.
    CATBaseUnknown* GetImpl() const;

    // Name of the component's late type, "CATBaseUnknown" outside a component.
    const char* IsA() const;

    // Whether the component's late type is that one or derives from it.
    bool IsAKindOf(const char* lateTypeName) const;

    // Components alive at this moment; tests look at it.
    static int GetLiveComponentCount();

    static void* operator new(std::size_t size);
    static void* operator new(std::size_t, void* pMemory) noexcept { return pMemory; }
    static void operator delete(void* pMemory);
    static void operator delete(void*, void*) noexcept {}

protected:
    // Makes the object the implementation object of a new component of that late type, with one reference that
    // belongs to the creator.
    explicit CATBaseUnknown(const CATLateType& lateType);

    // Makes the object part of an existing component.
    explicit CATBaseUnknown(CATComponent* pComponent) : m_pComponent(pComponent) {}

    CATComponent* GetComponent() const { return m_pComponent; }

private:
    friend class CATComponent;
    friend class CATCodeExtensionCall;

    CATComponent* m_pComponent;
};

// Gives an interface its identifier (a constant IID_<interface> stands before the class) and its class record. Base is
// the interface that it extends, CATBaseUnknown for most.
#define CATDeclareInterface(Interface, Base)                                                                           \
public:                                                                                                                \
    static const char* GetInterfaceName()                                                                              \
    {                                                                                                                  \
        return #Interface;                                                                                             \
    }                                                                                                                  \
    static const IID& GetIID()                                                                                         \
    {                                                                                                                  \
        return IID_##Interface;                                                                                        \
    }                                                                                                                  \
    static CATMetaClass* MetaObject()                                                                                  \
    {                                                                                                                  \
        static CATMetaClass* const s_pRecord = CATRetrieveInterface(#Interface, GetIID(), Base::MetaObject());         \
        return s_pRecord;                                                                                              \
    }                                                                                                                  \
                                                                                                                       \
protected:                                                                                                             \
    using Base::Base;                                                                                                  \
                                                                                                                       \
private:

// The class record of an interface, made on first use.
PLATFORM_API CATMetaClass* CATRetrieveInterface(const char* name, const IID& iid, CATMetaClass* pBase);
