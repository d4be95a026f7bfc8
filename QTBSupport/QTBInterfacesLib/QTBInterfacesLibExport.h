#pragma once

// Symbols of the QTBInterfacesLib library that other libraries link against.
#define QTBINTERFACESLIB_API __attribute__((visibility("default")))
