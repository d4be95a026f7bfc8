#pragma once

// Symbols of the QTBPdmStore library that other libraries link against.
#define QTBPDMSTORE_API __attribute__((visibility("default")))
