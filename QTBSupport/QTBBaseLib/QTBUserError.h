#pragma once

#include "CATError.h"
#include "QTBBaseLibExport.h"

// Failure that the user is told of.
class QTBBASELIB_API QTBUserError : public CATError
{
    CATDeclareErrorClass(QTBUserError, CATError)

public:
    // msgId is a key of the catalog "QTBUserMessages".
    explicit QTBUserError(const char* msgId);

protected:
    ~QTBUserError() override;
};
