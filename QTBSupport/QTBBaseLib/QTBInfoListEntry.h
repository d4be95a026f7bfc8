#pragma once

#include "CATListVal.h"
#include "CATUnicodeString.h"

// One line of the information list dialog.
struct QTBInfoListEntry
{
    enum Kind
    {
        Information,
        Warning,
        Error
    };

    Kind kind;
    CATUnicodeString text;
};

using CATListValQTBInfoListEntry = CATListVal<QTBInfoListEntry>;
