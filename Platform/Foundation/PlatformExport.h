#pragma once

// Symbols of the Platform library that other libraries link against.
#define PLATFORM_API __attribute__((visibility("default")))
