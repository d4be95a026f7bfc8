#include "QTBNameValueListAttr.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

#include "CATXMLWriter.h"

namespace {

// From that many entries on a list is searched through an index.
constexpr std::size_t ENTRIES_WITHOUT_INDEX = 32;

struct HashOfName
{
    std::size_t operator()(const QTBPooledName& name) const { return name.GetHashKey(); }
};

// A further XML attribute of the entry at that offset.
struct XmlAttribute
{
    int entry;
    QTBPooledName name;
    CATUnicodeString value;
};

} // namespace

struct QTBNameValueListAttr::Extras
{
    // In the order of the entries, and of the text within each.
    std::vector<XmlAttribute> xmlAttributes;
    // Offsets of the entries; empty for a short list.
    std::unordered_map<QTBPooledName, int, HashOfName> offsets;

    // The first further XML attribute of the entry, where there is one.
    std::vector<XmlAttribute>::const_iterator FirstOf(int entry) const
    {
        return std::lower_bound(xmlAttributes.begin(), xmlAttributes.end(), entry,
                                [](const XmlAttribute& attribute, int offset) { return attribute.entry < offset; });
    }
};

QTBNameValueListAttr::QTBNameValueListAttr(CATIDOMElement_var* pspIDOMElement)
{
    const CATDOMElementView element = ViewElement(pspIDOMElement);
    if (ReadEntries(element)) {
        SetNameFromElement(element);
    }
}

QTBNameValueListAttr::~QTBNameValueListAttr() = default;

bool QTBNameValueListAttr::ReadEntries(const CATDOMElementView& element)
{
    std::size_t count = 0;
    for (CATDOMElementView child = element.GetFirstChild(); child; child = child.GetNextSibling()) {
        ++count;
    }
    m_Entries.reserve(count);
    for (CATDOMElementView child = element.GetFirstChild(); child; child = child.GetNextSibling()) {
        if (!ReadEntry(child)) {
            return false;
        }
    }
    return !element.HasNonBlankText();
}

bool QTBNameValueListAttr::ReadEntry(const CATDOMElementView& element)
{
    if (!element.HasTagName("nv") || element.GetFirstChild()) {
        return false;
    }
    const int offset = static_cast<int>(m_Entries.size());
    QTBPooledName name;
    for (CATDOMAttributeView attribute = element.GetFirstAttribute(); attribute; attribute = attribute.GetNext()) {
        if (attribute.GetName() == "name") {
            name = QTBPooledName(attribute.GetValue());
        } else {
            MakeExtras().xmlAttributes.push_back({offset, QTBPooledName(attribute.GetName()), attribute.GetText()});
        }
    }
    if (name.IsEmpty() || FindEntry(name) >= 0) {
        return false;
    }
    AddEntry(name, element.GetText());
    return true;
}

HRESULT QTBNameValueListAttr::NvValueIsDefined(const CATUnicodeString& usName, unsigned char* pbIsDefined) const
{
    if (pbIsDefined == nullptr) {
        return E_POINTER;
    }
    if (IsValid() == FALSE) {
        return E_FAIL;
    }
    *pbIsDefined = FindEntry(usName) >= 0 ? TRUE : FALSE;
    return S_OK;
}

HRESULT QTBNameValueListAttr::GetNvValue(const CATUnicodeString& usName, CATUnicodeString* pusValue) const
{
    if (pusValue == nullptr) {
        return E_POINTER;
    }
    const int offset = IsValid() != FALSE ? FindEntry(usName) : -1;
    if (offset < 0) {
        return E_FAIL;
    }
    *pusValue = m_Entries[static_cast<std::size_t>(offset)].value;
    return S_OK;
}

HRESULT QTBNameValueListAttr::SetNvValue(const CATUnicodeString& usName, const CATUnicodeString& usValue)
{
    if (IsValid() == FALSE || usName.IsEmpty()) {
        return E_FAIL;
    }
    const QTBPooledName name(usName.View());
    if (const int offset = FindEntry(name); offset >= 0) {
        m_Entries[static_cast<std::size_t>(offset)].value = usValue;
    } else {
        AddEntry(name, usValue);
    }
    return S_OK;
}

HRESULT QTBNameValueListAttr::GetNvEntryXmlAttrVal(const CATUnicodeString& usName,
                                                   const CATUnicodeString& usXmlAttrName,
                                                   CATUnicodeString* pusXmlAttrValue) const
{
    if (pusXmlAttrValue == nullptr) {
        return E_POINTER;
    }
    const int offset = IsValid() != FALSE && m_pExtras != nullptr ? FindEntry(usName) : -1;
    if (offset < 0) {
        return E_FAIL;
    }
    const auto end = m_pExtras->xmlAttributes.end();
    for (auto attribute = m_pExtras->FirstOf(offset); attribute != end && attribute->entry == offset; ++attribute) {
        if (attribute->name.GetText() == usXmlAttrName) {
            *pusXmlAttrValue = attribute->value;
            return S_OK;
        }
    }
    return E_FAIL;
}

HRESULT QTBNameValueListAttr::GetSize(int* pSize) const
{
    if (pSize == nullptr) {
        return E_POINTER;
    }
    if (IsValid() == FALSE) {
        return E_FAIL;
    }
    *pSize = static_cast<int>(m_Entries.size());
    return S_OK;
}

HRESULT QTBNameValueListAttr::GetEntry(int index, CATUnicodeString* pusName, CATUnicodeString* pusValue) const
{
    if (pusName == nullptr || pusValue == nullptr) {
        return E_POINTER;
    }
    if (IsValid() == FALSE || index < 1 || static_cast<std::size_t>(index) > m_Entries.size()) {
        return E_FAIL;
    }
    const Entry& entry = m_Entries[static_cast<std::size_t>(index) - 1];
    *pusName = entry.name.GetText();
    *pusValue = entry.value;
    return S_OK;
}

CATUnicodeString QTBNameValueListAttr::ToString()
{
    TooltipText text;
    for (std::size_t i = 0; IsValid() != FALSE && i < m_Entries.size() && !text.IsFull(); ++i) {
        text.Add(i > 0 ? ", " : "", m_Entries[i].name.GetText());
        text.Add("=", m_Entries[i].value);
    }
    return text.Get();
}

std::string_view QTBNameValueListAttr::GetTypeName() const
{
    return "nvlist";
}

HRESULT QTBNameValueListAttr::AppendContent(std::string* pXml) const
{
    std::vector<XmlAttribute>::const_iterator attribute;
    std::vector<XmlAttribute>::const_iterator end;
    if (m_pExtras != nullptr) {
        attribute = m_pExtras->xmlAttributes.begin();
        end = m_pExtras->xmlAttributes.end();
    }
    for (std::size_t i = 0; i < m_Entries.size(); ++i) {
        pXml->append("<nv");
        CATXMLWriter::AppendAttribute("name", m_Entries[i].name.GetText().View(), pXml);
        for (; attribute != end && static_cast<std::size_t>(attribute->entry) == i; ++attribute) {
            CATXMLWriter::AppendAttribute(attribute->name.GetText().View(), attribute->value.View(), pXml);
        }
        pXml->push_back('>');
        CATXMLWriter::AppendText(m_Entries[i].value.View(), pXml);
        pXml->append("</nv>");
    }
    return S_OK;
}

int QTBNameValueListAttr::FindEntry(const QTBPooledName& name) const
{
    if (name.IsEmpty()) {
        return -1;
    }
    if (m_pExtras != nullptr && !m_pExtras->offsets.empty()) {
        const auto found = m_pExtras->offsets.find(name);
        return found != m_pExtras->offsets.end() ? found->second : -1;
    }
    const auto found =
        std::find_if(m_Entries.begin(), m_Entries.end(), [&name](const Entry& entry) { return entry.name == name; });
    return found != m_Entries.end() ? static_cast<int>(found - m_Entries.begin()) : -1;
}

int QTBNameValueListAttr::FindEntry(const CATUnicodeString& usName) const
{
    return FindEntry(QTBPooledName::Find(usName.View()));
}

void QTBNameValueListAttr::AddEntry(const QTBPooledName& name, const CATUnicodeString& usValue)
{
    // There are many short lists that get one entry more: they grow by little.
    const std::size_t size = m_Entries.size();
    if (size == m_Entries.capacity()) {
        m_Entries.reserve(size + 1 + size / 4);
    }
    m_Entries.push_back({name, usValue});
    if (size + 1 < ENTRIES_WITHOUT_INDEX) {
        return;
    }
    try {
        Extras& extras = MakeExtras();
        for (std::size_t i = extras.offsets.size(); i <= size; ++i) {
            extras.offsets.emplace(m_Entries[i].name, static_cast<int>(i));
        }
    } catch (...) {
        // An index that lacks entries finds those no more: there are all, or none of them and no index.
        m_Entries.pop_back();
        if (m_pExtras != nullptr && m_pExtras->offsets.size() < m_Entries.size()) {
            m_pExtras->offsets.clear();
        }
        throw;
    }
}

QTBNameValueListAttr::Extras& QTBNameValueListAttr::MakeExtras()
{
    if (m_pExtras == nullptr) {
        m_pExtras = std::make_unique<Extras>();
    }
    return *m_pExtras;
}
