#include "CATAsmProduct.h"

#include <unordered_map>
#include <utility>

#include "CATLateType.h"
#include "CATPrdInstance.h"
#include "CATPrdReference.h"

namespace {

// Only instances are held as children.
CATPrdInstance& ToInstance(const CATBaseUnknown_var& spChild)
{
    return static_cast<CATPrdInstance&>(*spChild);
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
    for (auto i = static_cast<std::size_t>(m_Children.Size()); i < usages.size(); ++i) {
        m_Children.Append(CATBaseUnknown_var::Adopt(new CATPrdInstance(*this, usages[i])));
    }
    return m_Children;
}

void CATAsmProduct::DropChild(const CATBaseUnknown_var& spChild)
{
    const int position = m_Children.Locate(spChild);
    if (position > 0 && m_RemovedUsages + 1 == GetReference().GetRemovedUsageCount()) {
        ToInstance(spChild).m_pFather = nullptr;
        m_Children.RemovePosition(position);
        ++m_RemovedUsages;
    }
}

void CATAsmProduct::DropChildren()
{
    // They go when this product is done with them.
    const CATListValCATBaseUnknown_var children = std::exchange(m_Children, {});
    for (const CATBaseUnknown_var& spChild : children) {
        ToInstance(spChild).m_pFather = nullptr;
    }
}

void CATAsmProduct::DropRemovedChildren()
{
    const CATListValCATBaseUnknown_var children = std::exchange(m_Children, {});
    for (const CATBaseUnknown_var& spChild : children) {
        if (ToInstance(spChild).IsRemoved()) {
            ToInstance(spChild).m_pFather = nullptr;
        } else {
            m_Children.Append(spChild);
        }
    }
}
