#pragma once

#include "CATUnicodeString.h"

// A notice that was shown to the user.
struct CATDlgNotice
{
    CATUnicodeString title;
    CATUnicodeString message;
    unsigned int style;
};
