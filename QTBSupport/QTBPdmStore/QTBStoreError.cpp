#include "QTBStoreError.h"

#include <cstddef>

QTBStoreError::QTBStoreError(const char* msgId, const std::vector<CATUnicodeString>& parameters)
    : CATError(msgId, "QTBPdmStoreErrors")
{
    const auto parameter = [&parameters](std::size_t i) {
        return i < parameters.size() ? parameters[i] : CATUnicodeString();
    };
    SetNLSParameters(static_cast<int>(parameters.size()), parameter(0), parameter(1), parameter(2));
}

QTBStoreError::~QTBStoreError() = default;
