#include "CATRep.h"

CATRep::~CATRep() = default;
