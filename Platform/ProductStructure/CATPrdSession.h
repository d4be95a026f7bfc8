#pragma once

#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

#include "CATInterface_var.h"
#include "CATUnicodeString.h"

class CATPrdDocument;
class CATPrdReference;

// What the session knows about its products beside the documents: the look-ups, and the documents that wait for being
// closed because nobody uses them any more.
class CATPrdSession
{
public:
    static CATPrdSession& Instance();

    // Makes a reference known under its part number, or under its file when it is in visualization mode, and takes it
    // out again. A reference without document, an embedded component and one without part number are not known. The
    // reference must not change in between.
    void Index(CATPrdReference& reference);
    void Unindex(const CATPrdReference& reference);

    // The root of the document that came first among those with that part number; null when there is none.
    CATPrdReference* FindRoot(const CATUnicodeString& partNumber) const;
    // The reference in visualization mode that is defined by that file; null when there is none.
    CATPrdReference* FindVisualized(const CATUnicodeString& storageName) const;

    // Closes a document that is neither opened for itself nor used. Structures are as deep as the data, so documents
    // that are closed because of this one wait for it to be done.
    void CloseIfUnneeded(CATPrdDocument& document);

private:
    std::uint64_t m_LastNumber = 0;
    std::unordered_map<CATUnicodeString, std::map<std::uint64_t, CATPrdReference*>> m_Roots;
    std::unordered_map<CATUnicodeString, CATPrdReference*> m_Visualized;
    std::vector<CATBaseUnknown_var> m_Unneeded;
    bool m_bClosing = false;
};
