#include "QTBStoreFailure.h"

#include "CATError.h"
#include "QTBStoreError.h"

HRESULT QTBStoreFailure::ToResult() const
{
    return CATError::GetReturn(2, new QTBStoreError(m_MsgId, m_Parameters), nullptr, __FILE__, __LINE__);
}
