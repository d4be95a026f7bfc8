#include "CATError.h"

#include <array>
#include <cstring>

#include "CATMsgCatalog.h"

namespace {

int s_LiveErrors = 0;

} // namespace

// Keeps the errors of the last failures, so that a result finds its error again. A failing result is a mark and a
// serial number; the serial number names a slot and tells whether the slot still holds that failure's error.
class CATErrorRegister
{
public:
    ~CATErrorRegister() { Clear(); }

    HRESULT Enter(CATError* pError)
    {
        m_Serial = (m_Serial + 1) & SERIAL_MASK;
        CATError*& slot = m_Slots[m_Serial % SLOT_COUNT];
        if (slot != nullptr) {
            Forget(slot);
        }
        slot = pError;
        pError->m_Result = static_cast<HRESULT>(CARRIES_ERROR | m_Serial);
        return pError->m_Result;
    }

    CATError* Find(HRESULT hr) const
    {
        if ((static_cast<std::uint32_t>(hr) & ~SERIAL_MASK) != CARRIES_ERROR) {
            return nullptr;
        }
        CATError* pError = m_Slots[(static_cast<std::uint32_t>(hr) & SERIAL_MASK) % SLOT_COUNT];
        return pError != nullptr && pError->m_Result == hr ? pError : nullptr;
    }

    void Clear()
    {
        for (CATError*& slot : m_Slots) {
            if (slot != nullptr) {
                Forget(slot);
                slot = nullptr;
            }
        }
    }

private:
    static constexpr std::uint32_t CARRIES_ERROR = 0xA0000000U;
    static constexpr std::uint32_t SERIAL_MASK = 0x0FFFFFFFU;
    static constexpr std::size_t SLOT_COUNT = 8192;

    static void Forget(CATError* pError)
    {
        pError->m_Result = S_OK;
        pError->Release();
    }

    std::array<CATError*, SLOT_COUNT> m_Slots{};
    std::uint32_t m_Serial = 0;
};

namespace {

CATErrorRegister& Register()
{
    static CATErrorRegister s_Register;
    return s_Register;
}

} // namespace

CATError::CATError(const char* msgId, const char* catalog) : m_MsgId(msgId), m_Catalog(catalog)
{
    ++s_LiveErrors;
}

CATError::~CATError()
{
    --s_LiveErrors;
}

bool CATError::IsSameClass(const char* a, const char* b)
{
    return std::strcmp(a, b) == 0;
}

void CATError::Release()
{
    if (--m_References == 0) {
        delete this;
    }
}

CATUnicodeString CATError::GetNLSMessage() const
{
    return CATMsgCatalog::BuildMessage(m_Catalog, m_MsgId, m_Parameters);
}

HRESULT CATError::GetFailure(int, CATError* pError, void*, const char*, int)
{
    if (pError == nullptr) {
        return E_FAIL;
    }
    return pError->m_Result != S_OK ? pError->m_Result : Register().Enter(pError);
}

CATError* CATError::CATGetLastError(HRESULT hr, void*)
{
    return Register().Find(hr);
}

void CATError::Throw(const char*, int, CATError* pError)
{
    CATXHException exception(pError);
    if (pError->m_Result == S_OK) {
        pError->Release();
    }
    throw exception;
}

int CATError::GetLiveCount()
{
    return s_LiveErrors;
}

void CATError::ForgetResults()
{
    Register().Clear();
}

CATInternalError::~CATInternalError() = default;

CATXHException::CATXHException(CATError* pError) : m_pError(pError)
{
    m_pError->AddRef();
}

CATXHException::CATXHException(const CATXHException& other) noexcept : std::exception(other), m_pError(other.m_pError)
{
    m_pError->AddRef();
}

CATXHException::~CATXHException()
{
    m_pError->Release();
}

HRESULT CATXHException::GetResult() const
{
    if (m_pError->m_Result == S_OK) {
        // The error mechanism takes a reference over; this exception keeps its own.
        m_pError->AddRef();
    }
    return CATError::GetReturn(2, m_pError, nullptr, __FILE__, __LINE__);
}

const char* CATXHException::what() const noexcept
{
    return m_pError->GetMsgId().ConvertToChar();
}
