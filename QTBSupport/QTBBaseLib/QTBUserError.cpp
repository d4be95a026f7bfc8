#include "QTBUserError.h"

QTBUserError::QTBUserError(const char* msgId) : CATError(msgId, "QTBUserMessages") {}

QTBUserError::~QTBUserError() = default;
