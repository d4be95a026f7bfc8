#pragma once

// Symbols of the QTBBaseLib library that other libraries link against.
#define QTBBASELIB_API __attribute__((visibility("default")))
