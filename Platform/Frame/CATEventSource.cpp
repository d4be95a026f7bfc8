#include "CATEventSource.h"

CATEventSource::~CATEventSource() = default;
