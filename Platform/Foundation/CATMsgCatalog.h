#pragma once

#include <vector>

#include "CATUnicodeString.h"
#include "PlatformExport.h"

// Access to the message catalogs: one text file per catalog and language, `Key = "Text with /P1";` per message and
// line. In a text \" stands for a quote, \\ for a backslash, \n and \t for line end and tab; // begins a comment line.
//
// A catalog is the file NAME.CATNls in one of the search directories (English), or NAME.CATNls in the directory's
// subdirectory named after the session's language. A message that the language lacks is taken in English.
class PLATFORM_API CATMsgCatalog
{
public:
    // The text of a message with its parameters filled in. Without such a message the answer is the key followed by
    // the parameters in brackets, so that nothing that was to be said is lost. Used by CATError and the dialogs.
    static CATUnicodeString BuildMessage(const CATUnicodeString& catalog, const CATUnicodeString& key,
                                         const std::vector<CATUnicodeString>& parameters = {});

    // Whether the catalog has the message in the session's language or in English.
    static bool MessageExists(const CATUnicodeString& catalog, const CATUnicodeString& key);

    // Sets the directories that are searched, in order, and forgets the catalogs read so far.
    static void SetSearchPath(const std::vector<CATUnicodeString>& directories);

    // Sets the session's language by the name of its subdirectory, for example "German"; empty for English.
    static void SetLanguage(const CATUnicodeString& language);

    // What is wrong with the catalog files read since the search path was set: file, line and what was expected there.
    // A bad line is left out and also reported on the standard error stream.
    static const std::vector<CATUnicodeString>& GetReports();
};
