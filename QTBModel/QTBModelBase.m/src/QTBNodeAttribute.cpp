#include "QTBNodeAttribute.h"

QTBNodeAttribute::~QTBNodeAttribute() = default;
