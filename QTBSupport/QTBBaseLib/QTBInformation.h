#pragma once

#include "CATError.h"
#include "QTBBaseLibExport.h"

// Message that tells the user of something that happened as it should. It travels like an error but produces no
// diagnosis.
class QTBBASELIB_API QTBInformation : public CATError
{
    CATDeclareErrorClass(QTBInformation, CATError)

public:
    // msgId is a key of the catalog "QTBUserMessages".
    explicit QTBInformation(const char* msgId);

protected:
    ~QTBInformation() override;
};
