#include "QTBStoreRecord.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>

#include "CATError.h"
#include "CATIDOMDocument.h"
#include "CATXMLWriter.h"
#include "QTBObjectAttr.h"
#include "QTBSchema.h"
#include "QTBStoreFailure.h"
#include "QTBXmlUtil.h"

namespace {

// Entries of "QtbInfo" that the store or the session gives itself.
constexpr std::array<std::string_view, 13> OWN_ENTRIES = {
    "QtbKey",           "QtbSupersedes",    "QtbRelevantBaseClass", "QtbVersion",          "QtbIsNewestVersion",
    "QtbNewestVersion", "QtbIsEditAllowed", "QtbIsCheckOutAllowed", "QtbIsCheckInAllowed", "QtbIsPromoteAllowed",
    "QtbCheckedOutBy",  "QtbActionIndex",   "QtbHasFile",
};
constexpr std::string_view UPDATE_SUB_CMP_RELS_ENTRY = "QtbIsUpdateSubCmpRelsAllowed";

bool IsOwnEntry(std::string_view name)
{
    return name == UPDATE_SUB_CMP_RELS_ENTRY ||
           std::find(OWN_ENTRIES.begin(), OWN_ENTRIES.end(), name) != OWN_ENTRIES.end();
}

std::string_view TypeOf(const CATDOMElementView& attribute)
{
    const CATDOMAttributeView type = attribute.FindAttribute("type");
    return type ? type.GetValue() : std::string_view("string");
}

std::string_view NameOf(const CATDOMElementView& element)
{
    const CATDOMAttributeView name = element.FindAttribute("name");
    return name ? name.GetValue() : std::string_view();
}

// Whether all child elements have that tag, and none of them any below it when they are to be leaves.
bool HasOnly(const CATDOMElementView& element, std::string_view tag, bool asLeaves)
{
    for (CATDOMElementView child = element.GetFirstChild(); child; child = child.GetNextSibling()) {
        if (!child.HasTagName(tag) || (asLeaves && child.GetFirstChild())) {
            return false;
        }
    }
    return !element.HasNonBlankText();
}

// Names that must not come twice. Few of them are looked through faster than hashed.
class NameSet
{
public:
    // False for an empty name and for one that was added before.
    bool Add(std::string_view name)
    {
        if (name.empty() || std::find(m_First.begin(), m_First.end(), name) != m_First.end()) {
            return false;
        }
        if (m_First.size() < LOOKED_THROUGH) {
            m_First.push_back(name);
            return true;
        }
        return m_Others.insert(name).second;
    }

private:
    static constexpr std::size_t LOOKED_THROUGH = 24;

    std::vector<std::string_view> m_First;
    std::unordered_set<std::string_view> m_Others;
};

bool IsNameValueList(const CATDOMElementView& attribute)
{
    if (!HasOnly(attribute, "nv", true)) {
        return false;
    }
    NameSet names;
    for (CATDOMElementView entry = attribute.GetFirstChild(); entry; entry = entry.GetNextSibling()) {
        if (!names.Add(NameOf(entry))) {
            return false;
        }
    }
    return true;
}

bool IsTable(const CATDOMElementView& attribute)
{
    if (!HasOnly(attribute, "row", false)) {
        return false;
    }
    for (CATDOMElementView row = attribute.GetFirstChild(); row; row = row.GetNextSibling()) {
        if (!HasOnly(row, "cell", true)) {
            return false;
        }
    }
    return true;
}

// The one child element of that tag; empty when there is none or more than one.
CATDOMElementView FindSingleChild(const CATDOMElementView& element, std::string_view tag, int* pCount)
{
    CATDOMElementView found;
    *pCount = 0;
    for (CATDOMElementView child = element.GetFirstChild(); child; child = child.GetNextSibling()) {
        if (child.HasTagName(tag)) {
            found = child;
            ++*pCount;
        }
    }
    return *pCount == 1 ? found : CATDOMElementView();
}

// The embedded object of an object attribute; empty when it has not exactly one.
CATDOMElementView FindEmbeddedObject(const CATDOMElementView& attribute)
{
    int count = 0;
    const CATDOMElementView object = FindSingleChild(attribute, "o", &count);
    return count != 0 ? object : FindSingleChild(attribute, "embedded", &count);
}

// The text of an item's attribute; empty without one.
CATUnicodeString FindText(const CATDOMElementView& item, const CATUnicodeString& usName)
{
    for (CATDOMElementView child = item.GetFirstChild(); child; child = child.GetNextSibling()) {
        if (child.HasTagName("a") && NameOf(child) == usName.View()) {
            return child.GetText();
        }
    }
    return CATUnicodeString();
}

// Checks that the PDM graph can read the attributes of an item and of the objects embedded in it.
class FormCheck
{
public:
    FormCheck(const CATDOMElementView& item, const CATUnicodeString& itemText) : m_ItemText(itemText)
    {
        m_Waiting.push_back({item, 0});
        while (!m_Waiting.empty()) {
            const Item next = m_Waiting.back();
            m_Waiting.pop_back();
            CheckItem(next);
        }
    }

private:
    struct Item
    {
        CATDOMElementView element;
        int depth;
    };

    void CheckItem(const Item& item)
    {
        NameSet names;
        for (CATDOMElementView child = item.element.GetFirstChild(); child; child = child.GetNextSibling()) {
            if (!child.HasTagName("a")) {
                continue;
            }
            const std::string_view name = NameOf(child);
            if (!names.Add(name) || !IsOfItsType(child, item.depth)) {
                throw QTBStoreFailure("AttributeMalformedERR_1110", CATUnicodeString(name), m_ItemText);
            }
        }
    }

    bool IsOfItsType(const CATDOMElementView& attribute, int depth)
    {
        const std::string_view type = TypeOf(attribute);
        if (type == "string") {
            return !attribute.GetFirstChild();
        }
        if (type == "list") {
            return HasOnly(attribute, "v", true);
        }
        if (type == "nvlist") {
            return IsNameValueList(attribute);
        }
        if (type == "table") {
            return IsTable(attribute);
        }
        if (type == "object") {
            const CATDOMElementView object = FindEmbeddedObject(attribute);
            if (!object || depth >= QTBObjectAttr::MAX_NESTING) {
                return false;
            }
            m_Waiting.push_back({object, depth + 1});
            return true;
        }
        return type == "objectlist";
    }

    const CATUnicodeString& m_ItemText;
    std::vector<Item> m_Waiting;
};

class Reader
{
public:
    Reader(const QTBSchema& schema, QTBStoreRecord* pRecord) : m_Schema(schema), m_pRecord(pRecord) {}

    void Read(const CATDOMElementView& item)
    {
        for (CATDOMElementView child = item.GetFirstChild(); child; child = child.GetNextSibling()) {
            if (child.HasTagName("a")) {
                ReadAttribute(child);
            }
        }
    }

    // The place for an attribute that identifies the item; null for any other.
    CATUnicodeString* FindOwnPlace(std::string_view name)
    {
        const std::pair<const CATUnicodeString&, CATUnicodeString*> places[] = {
            {m_Schema.GetClassAttr(), &m_pRecord->className},
            {m_Schema.GetKeyAttr(), &m_pRecord->key},
            {m_Schema.GetRelationAttr(), &m_pRecord->relation},
            {m_Schema.GetLeftRelationshipAttr(), &m_pRecord->left},
            {m_Schema.GetRightRelationshipAttr(), &m_pRecord->right},
            {m_Schema.GetLeftRelationClassAttr(), &m_Ignored},
            {m_Schema.GetRightRelationClassAttr(), &m_Ignored},
        };
        for (const auto& [attrName, pPlace] : places) {
            if (!attrName.IsEmpty() && attrName.View() == name) {
                return pPlace;
            }
        }
        return name == QTBStoreRecord::STATE_ATTR ? &m_pRecord->state : nullptr;
    }

private:
    void ReadAttribute(const CATDOMElementView& attribute)
    {
        const std::string_view name = NameOf(attribute);
        const std::string_view type = TypeOf(attribute);
        const bool isString = type == "string";
        if (CATUnicodeString* pPlace = FindOwnPlace(name); pPlace != nullptr && isString) {
            *pPlace = attribute.GetText();
        } else if (name == QTBStoreRecord::INFO_ATTR && type == "nvlist") {
            ReadInfo(attribute);
        } else {
            CATXMLWriter::AppendElement(attribute, &m_pRecord->attributes);
            if (isString) {
                m_pRecord->strings.emplace_back(attribute.FindAttribute("name").GetText(), attribute.GetText());
            }
        }
    }

    void ReadInfo(const CATDOMElementView& attribute)
    {
        for (CATDOMElementView entry = attribute.GetFirstChild(); entry; entry = entry.GetNextSibling()) {
            const std::string_view name = NameOf(entry);
            if (name == "QtbVersion") {
                m_pRecord->version = entry.GetText();
            } else if (name == "QtbSupersedes") {
                m_pRecord->supersedes = entry.GetText();
            } else if (name == "QtbRelevantBaseClass") {
                m_pRecord->relevantBaseClass = entry.GetText();
            } else if (!IsOwnEntry(name)) {
                CATXMLWriter::AppendElement(entry, &m_pRecord->info);
            }
        }
    }

    const QTBSchema& m_Schema;
    QTBStoreRecord* m_pRecord;
    CATUnicodeString m_Ignored;
};

// A document around attributes, and the element that holds them.
class AttributesDocument
{
public:
    explicit AttributesDocument(std::string_view attributes)
    {
        Take(QTBXmlUtil::GetTrustedDomDocument("<o>" + std::string(attributes) + "</o>", &m_spDocument));
    }
    // Text from outside.
    explicit AttributesDocument(const CATUnicodeString& usXml)
    {
        Take(QTBXmlUtil::GetDomDocument("<o>" + usXml + "</o>", &m_spDocument));
    }

    CATDOMElementView GetItem() const { return m_spRoot->GetView(); }

private:
    void Take(HRESULT hr)
    {
        if (SUCCEEDED(hr)) {
            hr = m_spDocument->GetDocumentElement(&m_spRoot);
        }
        if (FAILED(hr) || m_spRoot == NULL_var) {
            const CATError* pError = CATError::CATGetLastError(hr, nullptr);
            throw QTBStoreFailure("AttributesMalformedERR_1111",
                                  pError != nullptr ? pError->GetNLSMessage() : CATUnicodeString());
        }
    }

    CATIDOMDocument_var m_spDocument;
    CATIDOMElement_var m_spRoot;
};

} // namespace

QTBStoreRecord QTBStoreRecord::Read(const CATDOMElementView& item, const QTBSchema& schema)
{
    QTBStoreRecord record;
    Reader reader(schema, &record);
    CATUnicodeString usItem = FindText(item, schema.GetKeyAttr());
    if (usItem.IsEmpty()) {
        usItem = FindText(item, schema.GetClassAttr());
    }
    const FormCheck check(item, usItem);
    reader.Read(item);
    return record;
}

QTBStoreRecord QTBStoreRecord::ReadAttributes(const CATUnicodeString& usXml, const CATUnicodeString& usItem,
                                              const QTBSchema& schema)
{
    const AttributesDocument document(usXml);
    const CATDOMElementView item = document.GetItem();
    QTBStoreRecord record;
    Reader reader(schema, &record);
    if (!HasOnly(item, "a", false)) {
        throw QTBStoreFailure("AttributesMalformedERR_1111", usXml);
    }
    for (CATDOMElementView child = item.GetFirstChild(); child; child = child.GetNextSibling()) {
        const std::string_view name = NameOf(child);
        if (name == INFO_ATTR || reader.FindOwnPlace(name) != nullptr) {
            throw QTBStoreFailure("AttributeReservedERR_1112", CATUnicodeString(name));
        }
    }
    const FormCheck check(item, usItem);
    reader.Read(item);
    return record;
}

QTBStoreRecord QTBStoreRecord::ReadStored(std::string_view attributes, const QTBSchema& schema)
{
    const AttributesDocument document(attributes);
    QTBStoreRecord record;
    Reader(schema, &record).Read(document.GetItem());
    return record;
}

void QTBStoreRecord::Merge(const QTBStoreRecord& changes, const QTBSchema& schema)
{
    const AttributesDocument document(std::string_view{attributes});
    const AttributesDocument changesDocument(std::string_view{changes.attributes});
    std::unordered_map<std::string_view, CATDOMElementView> replacements;
    for (CATDOMElementView child = changesDocument.GetItem().GetFirstChild(); child; child = child.GetNextSibling()) {
        replacements.emplace(NameOf(child), child);
    }
    std::string merged;
    std::unordered_set<std::string_view> done;
    for (CATDOMElementView child = document.GetItem().GetFirstChild(); child; child = child.GetNextSibling()) {
        const auto replacement = replacements.find(NameOf(child));
        CATXMLWriter::AppendElement(replacement != replacements.end() ? replacement->second : child, &merged);
        done.insert(NameOf(child));
    }
    for (CATDOMElementView child = changesDocument.GetItem().GetFirstChild(); child; child = child.GetNextSibling()) {
        if (done.count(NameOf(child)) == 0) {
            CATXMLWriter::AppendElement(child, &merged);
        }
    }
    const QTBStoreRecord reread = ReadStored(merged, schema);
    attributes = merged;
    strings = reread.strings;
}

void QTBStoreRecord::SetString(const CATUnicodeString& usName, const CATUnicodeString& usValue, const QTBSchema& schema)
{
    const bool isThere = std::any_of(strings.begin(), strings.end(),
                                     [&usName](const auto& attribute) { return attribute.first == usName; });
    if (!isThere) {
        return;
    }
    QTBStoreRecord change;
    change.attributes = "<a";
    CATXMLWriter::AppendAttribute("name", usName.View(), &change.attributes);
    change.attributes += '>';
    CATXMLWriter::AppendText(usValue.View(), &change.attributes);
    change.attributes += "</a>";
    Merge(change, schema);
}
