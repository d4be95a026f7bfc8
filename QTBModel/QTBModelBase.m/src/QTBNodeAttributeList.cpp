#include "QTBNodeAttributeList.h"

QTBNodeAttributeList::~QTBNodeAttributeList() = default;
