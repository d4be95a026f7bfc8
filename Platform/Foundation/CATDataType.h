#pragma once

#include <cstdint>

// Result of an operation: zero or positive is success, negative is failure. A failure may carry an
// error object (see CATError::CATGetLastError).
using HRESULT = std::int32_t;

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005U);
inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002U);
inline constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003U);
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000EU);

constexpr bool SUCCEEDED(HRESULT hr)
{
    return hr >= 0;
}

constexpr bool FAILED(HRESULT hr)
{
    return hr < 0;
}

// Flags are unsigned char throughout the interfaces.
inline constexpr unsigned char TRUE = 1;
inline constexpr unsigned char FALSE = 0;
