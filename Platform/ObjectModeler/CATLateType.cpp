#include "CATLateType.h"

#include <cstring>
#include <map>
#include <utility>

#include "CATBaseUnknown.h"
#include "CATDataType.h"
#include "CATMetaClass.h"

namespace {

constexpr const char* ROOT_LATE_TYPE = "CATBaseUnknown";

// Everything that registrations enter. Built on first use, because libraries register while they are loaded.
struct Dictionary
{
    std::vector<std::unique_ptr<CATLateType>> lateTypes;
    std::map<std::string, CATLateType*, std::less<>> lateTypesByName;
    std::map<std::string, std::unique_ptr<CATMetaClass>, std::less<>> records;
    std::map<std::uint64_t, CATMetaClass*> interfaces;
};

Dictionary& TheDictionary()
{
    static Dictionary s_Dictionary;
    return s_Dictionary;
}

CATMetaClass* RetrieveRecord(const char* name, CATClassKind kind, CATMetaClass* pBase, const char* lateType,
                             const IID& iid)
{
    auto& record = TheDictionary().records[name];
    if (record == nullptr) {
        record = std::make_unique<CATMetaClass>(name, kind, pBase, lateType, iid);
    }
    return record.get();
}

} // namespace

CATMetaClass* fct_RetrieveMetaObject(const char* name, int kind, CATMetaClass* pBase, const char* lateType, const char*,
                                     int)
{
    return RetrieveRecord(name, static_cast<CATClassKind>(kind), pBase, lateType != nullptr ? lateType : "", IID(name));
}

CATMetaClass* CATRetrieveInterface(const char* name, const IID& iid, CATMetaClass* pBase)
{
    return RetrieveRecord(name, CATClassKind::Interface, pBase, "", iid);
}

HRESULT CATFillDictionary(CATMetaClass* pExtension, CATMetaClass* pInterface, CATInterfaceObjectFactory factory, int,
                          int)
{
    const IID& iid = pInterface->GetIID();
    auto& known = TheDictionary().interfaces[iid.GetValue()];
    if (known != nullptr && known != pInterface) {
        return E_FAIL;
    }
    known = pInterface;

    CATLateType& lateType = CATLateType::Declare(pExtension->GetLateType().c_str());
    for (const auto& registration : lateType.m_Registrations) {
        if (registration->iid == iid) {
            return E_FAIL;
        }
    }
    lateType.m_Registrations.push_back(
        std::make_unique<CATLateType::Registration>(CATLateType::Registration{iid, pExtension, pInterface, factory}));
    CATLateType::ForgetAnswers();
    return S_OK;
}

void CATRemoveFromDictionary(CATMetaClass* pExtension, CATMetaClass* pInterface)
{
    CATLateType* pLateType = CATLateType::Find(pExtension->GetLateType().c_str());
    if (pLateType == nullptr) {
        return;
    }
    std::erase_if(pLateType->m_Registrations, [&](const auto& registration) {
        return registration->pExtension == pExtension && registration->pInterface == pInterface;
    });
    CATLateType::ForgetAnswers();
}

CATLateType::CATLateType(std::string name, const CATLateType* pBase) : m_Name(std::move(name)), m_pBase(pBase) {}

CATLateType::~CATLateType()
{
    delete m_pCreateInstance;
}

CATLateType& CATLateType::Declare(const char* name, const char* base)
{
    Dictionary& dictionary = TheDictionary();
    const bool isRoot = std::strcmp(name, ROOT_LATE_TYPE) == 0;
    const CATLateType* pBase = isRoot ? nullptr : &Declare(base != nullptr ? base : ROOT_LATE_TYPE);
    CATLateType*& pLateType = dictionary.lateTypesByName[name];
    if (pLateType == nullptr) {
        dictionary.lateTypes.push_back(std::make_unique<CATLateType>(name, pBase));
        pLateType = dictionary.lateTypes.back().get();
    } else if (base != nullptr && pLateType->m_pBase != pBase) {
        pLateType->m_pBase = pBase;
        ForgetAnswers();
    }
    return *pLateType;
}

CATLateType* CATLateType::Find(const char* name)
{
    const auto& byName = TheDictionary().lateTypesByName;
    const auto found = byName.find(std::string_view(name));
    return found != byName.end() ? found->second : nullptr;
}

std::vector<std::string> CATLateType::GetNames()
{
    std::vector<std::string> names;
    for (const auto& lateType : TheDictionary().lateTypes) {
        names.push_back(lateType->m_Name);
    }
    return names;
}

bool CATLateType::IsAKindOf(const char* name) const
{
    for (const CATLateType* pLateType = this; pLateType != nullptr; pLateType = pLateType->m_pBase) {
        if (pLateType->m_Name == name) {
            return true;
        }
    }
    return false;
}

const CATLateType::Registration* CATLateType::Resolve(const IID& iid) const
{
    const std::uint64_t value = iid.GetValue();
    std::size_t slot = value % ANSWER_COUNT;
    while (m_Answers[slot].iid != 0) {
        if (m_Answers[slot].iid == value) {
            return m_Answers[slot].pRegistration;
        }
        slot = (slot + 1) % ANSWER_COUNT;
    }
    const Registration* pRegistration = FindInChain(iid);
    if (m_AnswerCount < ANSWER_COUNT / 2) {
        m_Answers[slot] = Answer{value, pRegistration};
        ++m_AnswerCount;
    }
    return pRegistration;
}

std::vector<const CATLateType::Registration*> CATLateType::GetOwnRegistrations() const
{
    std::vector<const Registration*> registrations;
    for (const auto& registration : m_Registrations) {
        registrations.push_back(registration.get());
    }
    return registrations;
}

const CATLateType::Registration* CATLateType::FindInChain(const IID& iid) const
{
    for (const CATLateType* pLateType = this; pLateType != nullptr; pLateType = pLateType->m_pBase) {
        for (const auto& registration : pLateType->m_Registrations) {
            if (registration->iid == iid) {
                return registration.get();
            }
        }
    }
    return nullptr;
}

void CATLateType::ForgetAnswers()
{
    for (const auto& lateType : TheDictionary().lateTypes) {
        lateType->m_Answers.fill(Answer{});
        lateType->m_AnswerCount = 0;
        // May be the factory of a base.
        delete std::exchange(lateType->m_pCreateInstance, nullptr);
    }
}
