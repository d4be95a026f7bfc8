#include "QTBLimits.h"

#include <limits>

#include "CATEnvLimit.h"

namespace {

int GetLimit(const char* variable, int byDefault)
{
    return static_cast<int>(CATGetEnvLimit(variable, byDefault, std::numeric_limits<int>::max()));
}

} // namespace

int QTBLimits::GetMaxRepNodes()
{
    return GetLimit("QTB_MAX_REP_NODES", DEFAULT_MAX_REP_NODES);
}

int QTBLimits::GetMaxProducts()
{
    return GetLimit("QTB_MAX_PRODUCTS", DEFAULT_MAX_PRODUCTS);
}
