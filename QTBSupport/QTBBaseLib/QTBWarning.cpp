#include "QTBWarning.h"

QTBWarning::QTBWarning(const char* msgId) : CATError(msgId, "QTBUserMessages") {}

QTBWarning::~QTBWarning() = default;
