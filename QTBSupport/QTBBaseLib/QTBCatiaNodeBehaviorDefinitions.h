#pragma once

#include <memory>
#include <vector>

#include "CATDataType.h"
#include "QTBBaseLibExport.h"
#include "QTBCatiaNodeBehavior.h"

// The behaviours that the schema configures, in the order in which they are tried.
class QTBBASELIB_API QTBCatiaNodeBehaviorDefinitions
{
public:
    int GetCatiaNodeBehaviorCount() const { return static_cast<int>(m_Behaviors.size()); }

    // Counted from 1; E_FAIL outside the list.
    HRESULT GetCatiaNodeBehaviorPtr(int index, QTBCatiaNodeBehavior** ppCatiaNodeBehavior) const;

    void Append(std::unique_ptr<QTBCatiaNodeBehavior> pBehavior) { m_Behaviors.push_back(std::move(pBehavior)); }

private:
    std::vector<std::unique_ptr<QTBCatiaNodeBehavior>> m_Behaviors;
};
