#include "CATEProductOnASMPRODUCT.h"

#include <memory>

#include "CATError.h"
#include "CATIPrdProperties.h"
#include "CATPrdDocument.h"
#include "CATPrdReference.h"
#include "CATPrdUsage.h"

CATAsmProduct* CATEProductOnASMPRODUCT::GetProduct() const
{
    return CATAsmProduct::FromComponent(this);
}

CATIProduct_var CATEProductOnASMPRODUCT::GetFatherProduct()
{
    const CATAsmProduct* pProduct = GetProduct();
    return pProduct != nullptr ? CATIProduct_var(pProduct->GetFather()) : CATIProduct_var();
}

CATListValCATBaseUnknown_var* CATEProductOnASMPRODUCT::GetChildren(const char* interfaceName)
{
    auto pChildren = std::make_unique<CATListValCATBaseUnknown_var>();
    CATAsmProduct* pProduct = GetProduct();
    if (pProduct == nullptr || interfaceName == nullptr) {
        return pChildren.release();
    }
    if (IID(interfaceName) == IID_CATIProduct) {
        *pChildren = pProduct->GetChildren();
        return pChildren.release();
    }
    const CATListValCATBaseUnknown_var all = pProduct->GetChildren();
    for (const CATBaseUnknown_var& spChild : all) {
        if (CATBaseUnknown* pInterface = spChild->QueryInterface(interfaceName); pInterface != nullptr) {
            pInterface->Release();
            pChildren->Append(spChild);
        }
    }
    return pChildren.release();
}

HRESULT CATEProductOnASMPRODUCT::IsReference()
{
    CATAsmProduct* pProduct = GetProduct();
    return pProduct != nullptr && pProduct->GetUsage() == nullptr ? S_OK : E_FAIL;
}

CATIProduct_var CATEProductOnASMPRODUCT::GetReferenceProduct()
{
    CATAsmProduct* pProduct = GetProduct();
    if (pProduct == nullptr || pProduct->GetReference().GetLinkState() == CATPrdLinkState::Broken) {
        return {};
    }
    return CATIProduct_var(&pProduct->GetReference());
}

HRESULT CATEProductOnASMPRODUCT::GetPrdInstanceName(CATUnicodeString* pusInstanceName)
{
    if (pusInstanceName == nullptr) {
        return E_POINTER;
    }
    CATAsmProduct* pProduct = GetProduct();
    const CATPrdUsage* pUsage = pProduct != nullptr ? pProduct->GetUsage() : nullptr;
    if (pUsage == nullptr) {
        return E_FAIL;
    }
    *pusInstanceName = pUsage->instanceName;
    return S_OK;
}

HRESULT CATEProductOnASMPRODUCT::SetPrdInstanceName(const CATUnicodeString& usInstanceName)
{
    CATAsmProduct* pProduct = GetProduct();
    CATPrdUsage* pUsage = pProduct != nullptr ? pProduct->GetUsage() : nullptr;
    if (pUsage == nullptr || pUsage->pParent == nullptr || usInstanceName.IsEmpty()) {
        return E_FAIL;
    }
    pUsage->instanceName = usInstanceName;
    pUsage->pParent->Touch();
    return S_OK;
}

CATUnicodeString CATEProductOnASMPRODUCT::GetPartNumber()
{
    CATAsmProduct* pProduct = GetProduct();
    return pProduct != nullptr && pProduct->GetReference().IsLoaded()
               ? pProduct->GetReference().GetDefinition().partNumber
               : CATUnicodeString();
}

HRESULT CATEProductOnASMPRODUCT::SetPartNumber(const CATUnicodeString& usPartNumber)
{
    CATAsmProduct* pProduct = GetProduct();
    if (pProduct == nullptr || !pProduct->GetReference().IsLoaded() || usPartNumber.IsEmpty()) {
        return E_FAIL;
    }
    pProduct->GetReference().SetPartNumber(usPartNumber);
    pProduct->GetReference().Touch();
    return S_OK;
}

HRESULT CATEProductOnASMPRODUCT::GetNomenclature(CATUnicodeString* pusNomenclature)
{
    return CATIPrdProperties_var(this)->GetNomenclature(pusNomenclature);
}

HRESULT CATEProductOnASMPRODUCT::GetDescriptionRef(CATUnicodeString* pusDescription)
{
    return CATIPrdProperties_var(this)->GetDescriptionRef(pusDescription);
}

HRESULT CATEProductOnASMPRODUCT::GetDefinition(CATUnicodeString* pusDefinition)
{
    return CATIPrdProperties_var(this)->GetDefinition(pusDefinition);
}

HRESULT CATEProductOnASMPRODUCT::GetRevision(CATUnicodeString* pusRevision)
{
    return CATIPrdProperties_var(this)->GetRevision(pusRevision);
}

HRESULT CATEProductOnASMPRODUCT::AddChild(const CATIProduct_var& spProduct, const CATUnicodeString& usInstanceName,
                                          CATIProduct_var* pspChild)
{
    CATAsmProduct* pFather = GetProduct();
    CATAsmProduct* pProduct = CATAsmProduct::FromComponent(spProduct.Get());
    if (pFather == nullptr || pProduct == nullptr || usInstanceName.IsEmpty()) {
        return E_FAIL;
    }
    CATPrdReference& parent = pFather->GetReference();
    CATPrdReference& child = pProduct->GetReference();
    if (!parent.IsLoaded() || parent.GetDocument() == nullptr || child.GetDocument() == nullptr) {
        return E_FAIL;
    }
    if (child.GetLinkState() == CATPrdLinkState::Embedded && child.GetDocument() != parent.GetDocument()) {
        return E_FAIL;
    }
    // What nothing uses stands below nothing.
    if (&parent == &child || (parent.IsUsed() && child.Contains(parent))) {
        auto* pError = CATError::Make<CATInternalError>({parent.GetDefinition().partNumber, usInstanceName},
                                                        "ProductContainsItselfERR_1001", "CATProductStructure");
        return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
    }
    parent.AddUsage(child, CATPrdUsageData{0, 0, usInstanceName, {}, {}});
    parent.Touch();
    if (pspChild != nullptr) {
        const CATListValCATBaseUnknown_var& children = pFather->GetChildren();
        *pspChild = children.Size() > 0 ? CATIProduct_var(children[children.Size()]) : CATIProduct_var();
    }
    return S_OK;
}

HRESULT CATEProductOnASMPRODUCT::RemoveChild(const CATIProduct_var& spChild)
{
    CATAsmProduct* pFather = GetProduct();
    CATAsmProduct* pChild = CATAsmProduct::FromComponent(spChild.Get());
    if (pFather == nullptr || pChild == nullptr || pChild->GetFather() != pFather) {
        return E_FAIL;
    }
    // The child goes last of all, whoever else held it.
    const CATBaseUnknown_var spRemoved(spChild);
    CATPrdReference& parent = pFather->GetReference();
    const int position = parent.RemoveUsage(*pChild->GetUsage());
    if (position == 0) {
        return E_FAIL;
    }
    pFather->DropChild(position);
    parent.Touch();
    return S_OK;
}
