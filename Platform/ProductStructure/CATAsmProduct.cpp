#include "CATAsmProduct.h"

#include <unordered_map>
#include <utility>

#include "CATLateType.h"
#include "CATPrdInstance.h"
#include "CATPrdReference.h"

namespace {

CATAsmProduct& ToProduct(const CATBaseUnknown_var& spChild)
{
    return static_cast<CATAsmProduct&>(*spChild);
}

} // namespace

const CATLateType& CATAsmProduct::GetLateType()
{
    static const CATLateType& s_LateType = CATLateType::Declare("ASMPRODUCT");
    return s_LateType;
}

CATAsmProduct* CATAsmProduct::FromComponent(const CATBaseUnknown* pObject)
{
    return pObject != nullptr ? dynamic_cast<CATAsmProduct*>(pObject->GetImpl()) : nullptr;
}

CATAsmProduct::CATAsmProduct(CATAsmProduct* pFather) : CATBaseUnknown(GetLateType()), m_pFather(pFather) {}

CATAsmProduct::~CATAsmProduct()
{
    DropChildren();
}

const CATListValCATBaseUnknown_var& CATAsmProduct::GetChildren()
{
    if (!IsInTree()) {
        DropChildren();
        return m_Children;
    }
    CATPrdReference& reference = GetReference();
    if (m_RemovedUsages != reference.GetRemovedUsageCount()) {
        DropRemovedChildren();
        m_RemovedUsages = reference.GetRemovedUsageCount();
    }
    const auto& usages = reference.GetUsages();
    m_Children.Reserve(m_Children.Size() == 0 ? usages.Size() : 0);
    while (m_Children.Size() < usages.Size()) {
        m_Children.Append(CATBaseUnknown_var::Adopt(new CATPrdInstance(*this, usages[m_Children.Size() + 1])));
    }
    return m_Children;
}

void CATAsmProduct::DropChild(int position)
{
    // Children that were not up to date before are brought up to date when they are asked for.
    if (m_RemovedUsages + 1 == GetReference().GetRemovedUsageCount()) {
        ToProduct(m_Children[position]).m_pFather = nullptr;
        m_Children.RemovePosition(position);
        ++m_RemovedUsages;
    }
}

void CATAsmProduct::DropChildren()
{
    // They go when this product is done with them.
    const CATListValCATBaseUnknown_var children = std::exchange(m_Children, {});
    for (const CATBaseUnknown_var& spChild : children) {
        ToProduct(spChild).m_pFather = nullptr;
    }
}

void CATAsmProduct::DropRemovedChildren()
{
    const CATListValCATBaseUnknown_var children = std::exchange(m_Children, {});
    for (const CATBaseUnknown_var& spChild : children) {
        if (ToProduct(spChild).IsRemoved()) {
            ToProduct(spChild).m_pFather = nullptr;
        } else {
            m_Children.Append(spChild);
        }
    }
}
