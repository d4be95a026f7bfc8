#pragma once

#include <string_view>

#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

// String hash of keys and attribute names: continues from the value that hash holds, leaves the result there and
// returns it. A caller that wants the hash of one string starts from 0. QTBNodeAttr::GetHashKey holds the same value
// for the attribute's name.
QTBBASELIB_API unsigned int& operator%=(unsigned int& hash, const CATUnicodeString& usText);

// The same hash of UTF-8 bytes that are no string yet.
QTBBASELIB_API unsigned int QTBHashBytes(std::string_view utf8Text, unsigned int hash = 0);
