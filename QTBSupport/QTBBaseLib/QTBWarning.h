#pragma once

#include "CATError.h"
#include "QTBBaseLibExport.h"

// Message that warns the user; the operation went on or stopped short as it should. It travels like an error but
// produces no diagnosis.
class QTBBASELIB_API QTBWarning : public CATError
{
    CATDeclareErrorClass(QTBWarning, CATError)

public:
    // msgId is a key of the catalog "QTBUserMessages".
    explicit QTBWarning(const char* msgId);

protected:
    ~QTBWarning() override;
};
