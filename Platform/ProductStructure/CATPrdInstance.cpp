#include "CATPrdInstance.h"

#include <utility>

#include "CATPrdUsage.h"

CATPrdInstance::CATPrdInstance(CATAsmProduct& father, std::shared_ptr<CATPrdUsage> pUsage)
    : CATAsmProduct(&father), m_pUsage(std::move(pUsage))
{
}

CATPrdReference& CATPrdInstance::GetReference()
{
    return *m_pUsage->pChild;
}

bool CATPrdInstance::IsRemoved() const
{
    return m_pUsage->pParent == nullptr;
}
