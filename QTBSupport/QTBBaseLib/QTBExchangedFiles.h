#pragma once

#include "CATDataType.h"
#include "CATUnicodeString.h"

// The files that the session exchanged with the PDM system, as they were on disk at that moment. Errors name the file
// that cannot be read.
class QTBExchangedFiles
{
public:
    // How a file on disk stands to what was noted.
    enum class State
    {
        Absent,   // there is no file
        NotNoted, // there is one, of which nothing is known
        Unchanged,
        Changed
    };

    // Notes the file with that path as it is now: size, time of the last writing, content. Fails for a file that is not
    // there.
    static HRESULT Note(const CATUnicodeString& usPath);

    // Compares size and time, and for a file of the same size but another time, with compareContent, the content.
    static HRESULT GetState(const CATUnicodeString& usPath, bool compareContent, State* pState);

    // Forgets all; called at the end of the session.
    static void Forget();
};
