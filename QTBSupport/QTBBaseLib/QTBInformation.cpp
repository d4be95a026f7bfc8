#include "QTBInformation.h"

QTBInformation::QTBInformation(const char* msgId) : CATError(msgId, "QTBUserMessages") {}

QTBInformation::~QTBInformation() = default;
