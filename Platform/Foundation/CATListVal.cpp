#include "CATListVal.h"

#include "CATError.h"

void CATThrowListIndexError(int index, int size)
{
    CATUnicodeString usIndex;
    usIndex.BuildFromNum(index);
    CATUnicodeString usSize;
    usSize.BuildFromNum(size);
    auto* pError = CATError::Make<CATInternalError>({usIndex, usSize}, "ListIndexOutOfRangeERR_1001", "CATCollections");
    CATError::Throw(__FILE__, __LINE__, pError);
}
