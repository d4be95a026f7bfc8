#pragma once

#include "CATError.h"
#include "QTBLimits.h"
#include "QTBMessageUtil.h"

// Counts the products that one walk through a structure passes. Products that several places share make more of them
// than any memory holds.
class QTBProductCount
{
public:
    // Counts one more. Fails with MaxProductsReachedERR_2010 beyond QTBLimits::GetMaxProducts.
    HRESULT Add()
    {
        return ++m_Count <= m_Max ? S_OK
                                  : CATError::GetReturn(2, QTBMessageUtil::MaxProductsReachedError(m_Max), nullptr,
                                                        __FILE__, __LINE__);
    }

private:
    const int m_Max = QTBLimits::GetMaxProducts();
    int m_Count = 0;
};
