#pragma once

// Symbols of the QTBModelLib library that other libraries link against.
#define QTBMODELLIB_API __attribute__((visibility("default")))
