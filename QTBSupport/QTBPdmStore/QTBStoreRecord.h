#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "CATDOMElementView.h"
#include "CATUnicodeString.h"

class QTBSchema;

// The attributes of one item, as an answer brings them or a request gives them: those that mean something to the store
// apart, the others as the XML that answers carry.
struct QTBStoreRecord
{
    // Attributes that identify the item; empty where the record has none.
    CATUnicodeString className;
    CATUnicodeString key;
    CATUnicodeString relation;
    CATUnicodeString left;
    CATUnicodeString right;
    // The attribute "State".
    CATUnicodeString state;

    // Entries of "QtbInfo" that the store gives itself.
    CATUnicodeString version;
    CATUnicodeString supersedes;
    CATUnicodeString relevantBaseClass;

    // The other attributes, "a" elements in their order without white space between them, and the other entries of
    // "QtbInfo", "nv" elements likewise.
    std::string attributes;
    std::string info;

    // Name and value of each string attribute among them.
    std::vector<std::pair<CATUnicodeString, CATUnicodeString>> strings;

    static constexpr const char* STATE_ATTR = "State";
    static constexpr const char* REVISION_ATTR = "Revision";
    static constexpr const char* INFO_ATTR = "QtbInfo";

    // Reads an "o" or "r" element. Raises QTBStoreFailure, which names the item, for one that the PDM graph could not
    // read: an attribute without a name or with one that is taken, of an unknown type or not of its type's form.
    static QTBStoreRecord Read(const CATDOMElementView& item, const QTBSchema& schema);

    // Reads attributes that a request gives: "a" elements one after the other. Raises QTBStoreFailure, which names the
    // item by its key, or by its class when it has none yet, also for the attributes that the store gives itself.
    static QTBStoreRecord ReadAttributes(const CATUnicodeString& usXml, const CATUnicodeString& usItem,
                                         const QTBSchema& schema);

    // Reads what the store itself wrote: the columns of an item.
    static QTBStoreRecord ReadStored(std::string_view attributes, const QTBSchema& schema);

    // Puts the attributes of another record in the place of those of the same names, further ones behind the others.
    void Merge(const QTBStoreRecord& changes, const QTBSchema& schema);
    // Puts another value in the place of that of a string attribute, if the record has it.
    void SetString(const CATUnicodeString& usName, const CATUnicodeString& usValue, const QTBSchema& schema);
};
