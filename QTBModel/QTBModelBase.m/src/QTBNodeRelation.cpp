#include "QTBNodeRelation.h"

QTBNodeRelation::~QTBNodeRelation() = default;
