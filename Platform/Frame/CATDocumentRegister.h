#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <unordered_map>

#include "CATListValCATBaseUnknown_var.h"
#include "CATUnicodeString.h"

class CATDocument;

// The documents of the session: their order and the look-up by file. Sessions have as many documents as an assembly has
// different parts, so nothing here walks all of them. CATDocumentServices uses it.
class CATDocumentRegister
{
public:
    static CATDocumentRegister& Session();

    // Takes a document in behind the others; absence or presence is no error.
    void Add(CATDocument& document);
    void Remove(CATDocument& document);

    // Gives a document, in session or not, another storage name.
    void Rename(CATDocument& document, const CATUnicodeString& storageName);

    static bool Contains(const CATDocument& document);

    // The document that came first among those with that storage name; null when there is none.
    CATDocument* Find(const CATUnicodeString& storageName) const;
    bool HasFileName(const CATUnicodeString& fileName) const { return m_FileNames.count(fileName) > 0; }

    const CATListValCATBaseUnknown_var& GetList();

private:
    void Index(CATDocument& document);
    void Unindex(const CATDocument& document);

    std::uint64_t m_LastNumber = 0;
    std::map<std::uint64_t, CATBaseUnknown_var> m_Documents;
    // The same as a list, made when it is asked for.
    CATListValCATBaseUnknown_var m_List;
    bool m_bListIsValid = true;
    std::unordered_map<CATUnicodeString, std::map<std::uint64_t, CATDocument*>> m_StorageNames;
    // How many documents there are with a file name, in whatever folder.
    std::unordered_map<CATUnicodeString, std::size_t> m_FileNames;
};
