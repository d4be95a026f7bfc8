#include "CATCommandHeaderRegister.h"

#include <utility>

#include "CATError.h"

namespace {

HRESULT FailNotFound(const CATUnicodeString& command)
{
    auto* pError = CATError::Make<CATInternalError>({command}, "CommandNotFoundERR_1003", "CATApplicationFrame");
    return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
}

} // namespace

CATCommandHeaderRegister::CATCommandHeaderRegister() = default;
CATCommandHeaderRegister::~CATCommandHeaderRegister() = default;

void CATCommandHeaderRegister::Reserve(const CATUnicodeString& id)
{
    m_Headers.try_emplace(id);
}

void CATCommandHeaderRegister::Add(std::unique_ptr<CATCommandHeader> pHeader)
{
    if (pHeader != nullptr) {
        const CATUnicodeString id = pHeader->GetId();
        m_Headers[id] = std::move(pHeader);
    }
}

void CATCommandHeaderRegister::Remove(const CATUnicodeString& id)
{
    m_Headers.erase(id);
}

HRESULT CATCommandHeaderRegister::Find(const CATUnicodeString& id, CATCommandHeader** ppHeader) const
{
    const auto found = m_Headers.find(id);
    if (ppHeader == nullptr || found == m_Headers.end()) {
        return E_FAIL;
    }
    *ppHeader = found->second.get();
    return S_OK;
}

HRESULT CATCommandHeaderRegister::StartCommand(const CATUnicodeString& id, const CATBaseUnknown_var& spObject) const
{
    const auto found = m_Headers.find(id);
    if (found == m_Headers.end() || found->second == nullptr) {
        return FailNotFound(id);
    }
    // A command may take its own header out of the register.
    const std::shared_ptr<CATCommandHeader> pHeader = found->second;
    return pHeader->StartCommand(spObject);
}

void CATCommandHeaderRegister::AddInterpreter(const void* pOwner, Interpreter interpreter)
{
    m_Interpreters.emplace_back(pOwner, std::move(interpreter));
}

void CATCommandHeaderRegister::RemoveInterpreter(const void* pOwner)
{
    std::erase_if(m_Interpreters, [pOwner](const auto& entry) { return entry.first == pOwner; });
}

HRESULT CATCommandHeaderRegister::Interpret(const CATUnicodeString& commandText,
                                            const CATBaseUnknown_var& spObject) const
{
    // A command may change the list.
    const auto interpreters = m_Interpreters;
    for (const auto& [pOwner, interpreter] : interpreters) {
        if (const HRESULT hr = interpreter(commandText, spObject); hr != S_FALSE) {
            return hr;
        }
    }
    return FailNotFound(commandText);
}
