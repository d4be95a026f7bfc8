#pragma once

#include <vector>

#include "CATError.h"
#include "QTBPdmStoreExport.h"

// Refusal of a request by the PDM store, for the user.
class QTBPDMSTORE_API QTBStoreError : public CATError
{
    CATDeclareErrorClass(QTBStoreError, CATError)

public:
    // msgId is a key of the catalog "QTBPdmStoreErrors".
    QTBStoreError(const char* msgId, const std::vector<CATUnicodeString>& parameters);

protected:
    ~QTBStoreError() override;
};
