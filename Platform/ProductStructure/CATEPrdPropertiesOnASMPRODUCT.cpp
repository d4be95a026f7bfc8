#include "CATEPrdPropertiesOnASMPRODUCT.h"

#include "CATPrdReference.h"
#include "CATPrdUsage.h"

CATAsmProduct* CATEPrdPropertiesOnASMPRODUCT::GetProduct() const
{
    return CATAsmProduct::FromComponent(this);
}

CATPrdDefinition* CATEPrdPropertiesOnASMPRODUCT::GetDefinitionOfReference() const
{
    CATAsmProduct* pProduct = GetProduct();
    return pProduct != nullptr && pProduct->GetReference().IsLoaded() ? &pProduct->GetReference().GetDefinition()
                                                                      : nullptr;
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::Get(Property property, CATUnicodeString* pusValue) const
{
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    const CATPrdDefinition* pDefinition = GetDefinitionOfReference();
    if (pDefinition == nullptr) {
        return E_FAIL;
    }
    *pusValue = pDefinition->*property;
    return S_OK;
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::Set(Property property, const CATUnicodeString& usValue) const
{
    CATPrdDefinition* pDefinition = GetDefinitionOfReference();
    if (pDefinition == nullptr) {
        return E_FAIL;
    }
    pDefinition->*property = usValue;
    return S_OK;
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::GetNomenclature(CATUnicodeString* pusNomenclature)
{
    return Get(&CATPrdDefinition::nomenclature, pusNomenclature);
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::SetNomenclature(const CATUnicodeString& usNomenclature)
{
    return Set(&CATPrdDefinition::nomenclature, usNomenclature);
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::GetDescriptionRef(CATUnicodeString* pusDescription)
{
    return Get(&CATPrdDefinition::descriptionRef, pusDescription);
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::SetDescriptionRef(const CATUnicodeString& usDescription)
{
    return Set(&CATPrdDefinition::descriptionRef, usDescription);
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::GetDefinition(CATUnicodeString* pusDefinition)
{
    return Get(&CATPrdDefinition::definition, pusDefinition);
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::SetDefinition(const CATUnicodeString& usDefinition)
{
    return Set(&CATPrdDefinition::definition, usDefinition);
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::GetRevision(CATUnicodeString* pusRevision)
{
    return Get(&CATPrdDefinition::revision, pusRevision);
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::SetRevision(const CATUnicodeString& usRevision)
{
    return Set(&CATPrdDefinition::revision, usRevision);
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::GetDescriptionInst(CATUnicodeString* pusDescription)
{
    if (pusDescription == nullptr) {
        return E_POINTER;
    }
    CATAsmProduct* pProduct = GetProduct();
    if (pProduct == nullptr || pProduct->GetUsage() == nullptr) {
        return E_FAIL;
    }
    *pusDescription = pProduct->GetUsage()->description;
    return S_OK;
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::SetDescriptionInst(const CATUnicodeString& usDescription)
{
    CATAsmProduct* pProduct = GetProduct();
    if (pProduct == nullptr || pProduct->GetUsage() == nullptr) {
        return E_FAIL;
    }
    pProduct->GetUsage()->description = usDescription;
    return S_OK;
}

CATPrdUserProperties* CATEPrdPropertiesOnASMPRODUCT::GetUserProperties() const
{
    CATAsmProduct* pProduct = GetProduct();
    if (pProduct != nullptr && pProduct->GetUsage() != nullptr) {
        return &pProduct->GetUsage()->userProperties;
    }
    CATPrdDefinition* pDefinition = GetDefinitionOfReference();
    return pDefinition != nullptr ? &pDefinition->userProperties : nullptr;
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::GetUserProperty(const CATUnicodeString& usName, CATUnicodeString* pusValue)
{
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    const CATPrdUserProperties* pProperties = GetUserProperties();
    if (pProperties == nullptr) {
        return E_FAIL;
    }
    const auto found = pProperties->find(usName);
    if (found == pProperties->end()) {
        return E_FAIL;
    }
    *pusValue = found->second;
    return S_OK;
}

HRESULT CATEPrdPropertiesOnASMPRODUCT::SetUserProperty(const CATUnicodeString& usName, const CATUnicodeString& usValue)
{
    CATPrdUserProperties* pProperties = GetUserProperties();
    if (pProperties == nullptr || usName.IsEmpty()) {
        return E_FAIL;
    }
    pProperties->insert_or_assign(usName, usValue);
    return S_OK;
}
