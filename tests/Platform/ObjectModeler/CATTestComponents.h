#pragma once

#include "CATBaseUnknown.h"
#include "CATDictionary.h"
#include "CATInstantiateComponent.h"
#include "CATInterface_var.h"
#include "CATLateType.h"
#include "CATMetaClass.h"
#include "CATTie.h"

// Interfaces, extensions and registrations that the tests of the object modeler play with.

inline constexpr IID IID_ITestCounter{"ITestCounter"};

class ITestCounter : public CATBaseUnknown
{
    CATDeclareInterface(ITestCounter, CATBaseUnknown)

public:
    virtual int Increment() = 0;
    virtual const void* GetExtension() = 0;
};
using ITestCounter_var = CATInterface_var<ITestCounter>;

template <class Tie, class Target = CATOwnTarget>
class TIEITestCounter : public Tie
{
public:
    using Tie::Tie;
    int Increment() override { return Target::Of(*this)->Increment(); }
    const void* GetExtension() override { return Target::Of(*this)->GetExtension(); }
};

inline constexpr IID IID_ITestName{"ITestName"};

class ITestName : public CATBaseUnknown
{
    CATDeclareInterface(ITestName, CATBaseUnknown)

public:
    virtual const char* GetName() = 0;
};
using ITestName_var = CATInterface_var<ITestName>;

template <class Tie, class Target = CATOwnTarget>
class TIEITestName : public Tie
{
public:
    using Tie::Tie;
    const char* GetName() override { return Target::Of(*this)->GetName(); }
};

// An extension that counts for itself.
class TestCounter : public CATBaseUnknown
{
public:
    TestCounter() { ++s_LiveCount; }
    ~TestCounter() override { --s_LiveCount; }
    int Increment() { return ++m_Count; }
    const void* GetExtension() { return this; }

    inline static int s_LiveCount = 0;

private:
    int m_Count = 0;
};

// Says which late type its component has.
class TestName : public CATBaseUnknown
{
public:
    const char* GetName() { return IsA(); }
};

class OtherTestName : public CATBaseUnknown
{
public:
    const char* GetName() { return "other"; }
};

// Enters a dictionary entry and takes it back.
class TestRegistration
{
public:
    TestRegistration(const char* lateType, const char* extension, CATClassKind kind, CATMetaClass* pInterface,
                     CATInterfaceObjectFactory factory)
        : m_pExtension(fct_RetrieveMetaObject(extension, static_cast<int>(kind), CATBaseUnknown::MetaObject(), lateType,
                                              "External", 0)),
          m_pInterface(pInterface), m_Result(CATFillDictionary(m_pExtension, m_pInterface, factory, 0, 1))
    {
    }
    TestRegistration(const TestRegistration&) = delete;
    TestRegistration& operator=(const TestRegistration&) = delete;
    ~TestRegistration()
    {
        if (SUCCEEDED(m_Result)) {
            TakeBack();
        }
    }

    void TakeBack() { CATRemoveFromDictionary(m_pExtension, m_pInterface); }
    HRESULT GetResult() const { return m_Result; }
    CATMetaClass* GetExtension() const { return m_pExtension; }

private:
    CATMetaClass* m_pExtension;
    CATMetaClass* m_pInterface;
    HRESULT m_Result;
};

// Implementation object of any late type.
class TestImplementation : public CATBaseUnknown
{
public:
    explicit TestImplementation(const char* lateType) : CATBaseUnknown(CATLateType::Declare(lateType)) {}
};

inline CATBaseUnknown_var CreateTestComponent(const char* lateType)
{
    return CATBaseUnknown_var::Adopt(new TestImplementation(lateType));
}

template <class Extension>
CATBaseUnknown* CreateTestCounterTie(CATComponent* pComponent)
{
    return CATCreateTie<TIEITestCounter<CATDataTie<ITestCounter, Extension>>>(pComponent);
}

template <class Extension>
CATBaseUnknown* CreateTestNameTie(CATComponent* pComponent)
{
    return CATCreateTie<TIEITestName<CATDataTie<ITestName, Extension>>>(pComponent);
}
