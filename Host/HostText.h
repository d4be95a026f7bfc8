#pragma once

#include <string>

#include "CATUnicodeString.h"
#include "QTBInfoListEntry.h"

// Values of the library as text for people and programs.
namespace HostText {

inline std::string ToText(const CATUnicodeString& text)
{
    return std::string(text.View());
}

// The kind of a message.
inline const char* ToText(QTBInfoListEntry::Kind kind)
{
    switch (kind) {
    case QTBInfoListEntry::Information:
        return "information";
    case QTBInfoListEntry::Warning:
        return "warning";
    default:
        return "error";
    }
}

} // namespace HostText
