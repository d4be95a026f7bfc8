#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "CATDictionary.h"
#include "CATIID.h"
#include "PlatformExport.h"

// A late type: a name, at most one base, and the extensions registered for it. Every late type ends at the root late
// type "CATBaseUnknown", whose extensions every component answers.
class PLATFORM_API CATLateType
{
public:
    struct Registration
    {
        IID iid;
        CATMetaClass* pExtension;
        CATMetaClass* pInterface;
        CATInterfaceObjectFactory factory;
    };

    CATLateType(std::string name, const CATLateType* pBase);
    CATLateType(const CATLateType&) = delete;
    CATLateType& operator=(const CATLateType&) = delete;
    ~CATLateType();

    // The late type of that name, made on first use; base names its late-type base, null for none. Naming a base
    // settles it: an earlier call without one is completed.
    static CATLateType& Declare(const char* name, const char* base = nullptr);

    // Null when no such late type has been declared.
    static CATLateType* Find(const char* name);

    // Names of all late types, in order of declaration.
    static std::vector<std::string> GetNames();

    const std::string& GetName() const { return m_Name; }
    const CATLateType* GetBase() const { return m_pBase; }
    bool IsAKindOf(const char* name) const;

    // The registration that answers the interface: the late type's own, else that of its nearest base; null when there
    // is none. The answer is remembered, so that a repeated look-up is a short probe.
    const Registration* Resolve(const IID& iid) const;

    // The registrations of this late type itself.
    std::vector<const Registration*> GetOwnRegistrations() const;

private:
    friend HRESULT CATFillDictionary(CATMetaClass*, CATMetaClass*, CATInterfaceObjectFactory, int, int);
    friend void CATRemoveFromDictionary(CATMetaClass*, CATMetaClass*);
    friend HRESULT CATInstantiateComponent(const char*, const IID&, void**);

    struct Answer
    {
        std::uint64_t iid = 0;
        const Registration* pRegistration = nullptr;
    };

    // A power of two well above the number of interfaces that are asked of one late type.
    static constexpr std::size_t ANSWER_COUNT = 128;

    const Registration* FindInChain(const IID& iid) const;
    static void ForgetAnswers();

    std::string m_Name;
    const CATLateType* m_pBase;
    std::vector<std::unique_ptr<Registration>> m_Registrations;
    mutable std::array<Answer, ANSWER_COUNT> m_Answers{};
    mutable std::size_t m_AnswerCount = 0;
    CATBaseUnknown* m_pCreateInstance = nullptr;
};
