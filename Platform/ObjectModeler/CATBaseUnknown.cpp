#include "CATBaseUnknown.h"

#include <cstdlib>
#include <new>

#include "CATComponent.h"
#include "CATError.h"
#include "CATInterface_var.h"
#include "CATLateType.h"
#include "CATMetaClass.h"

CATBaseUnknown::CATBaseUnknown() : m_pComponent(CATComponent::TakeAnnouncement(this)) {}

CATBaseUnknown::CATBaseUnknown(const CATLateType& lateType) : m_pComponent(new CATComponent(this, lateType)) {}

CATBaseUnknown::~CATBaseUnknown()
{
    if (m_pComponent != nullptr && m_pComponent->IsAbandonedBy(this)) {
        delete m_pComponent;
    }
}

CATMetaClass* CATBaseUnknown::MetaObject()
{
    static CATMetaClass* const s_pRecord = CATRetrieveInterface("CATBaseUnknown", IID_CATBaseUnknown, nullptr);
    return s_pRecord;
}

HRESULT CATBaseUnknown::QueryInterface(const IID& iid, void** ppv)
{
    if (ppv == nullptr) {
        return E_POINTER;
    }
    if (m_pComponent != nullptr) {
        return m_pComponent->QueryInterface(iid, ppv);
    }
    if (iid == IID_CATBaseUnknown) {
        *ppv = this;
        AddRef();
        return S_OK;
    }
    *ppv = nullptr;
    return E_NOINTERFACE;
}

CATBaseUnknown* CATBaseUnknown::QueryInterface(const char* interfaceName)
{
    void* pInterface = nullptr;
    if (interfaceName == nullptr || FAILED(QueryInterface(IID(interfaceName), &pInterface))) {
        return nullptr;
    }
    return static_cast<CATBaseUnknown*>(pInterface);
}

unsigned int CATBaseUnknown::AddRef()
{
    return m_pComponent != nullptr ? m_pComponent->AddRef() : 1;
}

unsigned int CATBaseUnknown::Release()
{
    return m_pComponent != nullptr ? m_pComponent->Release() : 1;
}

CATBaseUnknown* CATBaseUnknown::GetImpl() const
{
    return m_pComponent != nullptr ? m_pComponent->GetImpl() : const_cast<CATBaseUnknown*>(this);
}

const char* CATBaseUnknown::IsA() const
{
    return m_pComponent != nullptr ? m_pComponent->GetLateType().GetName().c_str() : "CATBaseUnknown";
}

bool CATBaseUnknown::IsAKindOf(const char* lateTypeName) const
{
    return m_pComponent != nullptr && m_pComponent->GetLateType().IsAKindOf(lateTypeName);
}

int CATBaseUnknown::GetLiveComponentCount()
{
    return CATComponent::GetLiveCount();
}

void* CATBaseUnknown::operator new(std::size_t size)
{
    return ::operator new(size);
}

void CATBaseUnknown::operator delete(void* pMemory)
{
    ::operator delete(pMemory);
}

void CATThrowErrorNullVar(const char* interfaceName)
{
    auto* pError = CATError::Make<CATInternalError>({interfaceName}, "NullHandleERR_1001", "CATObjectModeler");
    CATError::Throw(__FILE__, __LINE__, pError);
}
