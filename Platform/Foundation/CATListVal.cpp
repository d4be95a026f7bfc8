#include "CATListVal.h"

#include "CATError.h"

void CATThrowListIndexError(int index, int size)
{
    CATUnicodeString usIndex;
    usIndex.BuildFromNum(index);
    CATUnicodeString usSize;
    usSize.BuildFromNum(size);
    auto* pError = new CATInternalError("ListIndexOutOfRangeERR_1001", "CATCollections");
    pError->SetNLSParameters(2, usIndex, usSize);
    CATError::Throw(__FILE__, __LINE__, pError);
}
