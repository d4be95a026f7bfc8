#pragma once

#include <memory>

#include "CATAsmProduct.h"

// An instance: one place of a use in a tree.
class CATPrdInstance final : public CATAsmProduct
{
public:
    CATPrdInstance(CATAsmProduct& father, std::shared_ptr<CATPrdUsage> pUsage);

    CATPrdReference& GetReference() override;
    CATPrdUsage* GetUsage() override { return m_pUsage.get(); }

private:
    bool IsInTree() const override { return GetFather() != nullptr; }
    bool IsRemoved() const override;

    std::shared_ptr<CATPrdUsage> m_pUsage;
};
