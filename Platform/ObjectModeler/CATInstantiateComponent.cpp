#include "CATInstantiateComponent.h"

#include "CATICreateInstance.h"
#include "CATInterface_var.h"
#include "CATLateType.h"

HRESULT CATInstantiateComponent(const char* lateTypeName, const IID& iid, void** ppv)
{
    if (ppv == nullptr || lateTypeName == nullptr) {
        return E_POINTER;
    }
    *ppv = nullptr;
    CATLateType* pLateType = CATLateType::Find(lateTypeName);
    if (pLateType == nullptr) {
        return E_FAIL;
    }
    if (pLateType->m_pCreateInstance == nullptr) {
        const CATLateType::Registration* pRegistration = pLateType->Resolve(IID_CATICreateInstance);
        if (pRegistration == nullptr) {
            return E_FAIL;
        }
        pLateType->m_pCreateInstance = pRegistration->factory(nullptr);
    }
    void* pCreated = nullptr;
    const HRESULT hr = static_cast<CATICreateInstance*>(pLateType->m_pCreateInstance)->CreateInstance(&pCreated);
    if (FAILED(hr) || pCreated == nullptr) {
        return FAILED(hr) ? hr : E_FAIL;
    }
    if (iid == CLSID_CATBaseUnknown) {
        *ppv = pCreated;
        return S_OK;
    }
    const auto spComponent = CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pCreated));
    return spComponent->QueryInterface(iid, ppv);
}
