#pragma once

#include <memory>
#include <vector>

#include "QTBNodeAttr.h"

// Name/value list: `<a name="N" type="nvlist"><nv name="Mass" unit="kg">1.5</nv></a>`. An entry may carry further XML
// attributes, which are kept and written again. Not valid when the element has other child elements or text of its own,
// when an entry has no non-empty name or has child elements, and when two entries have the same name.
class QTBBASELIB_API QTBNameValueListAttr : public QTBNodeAttr
{
public:
    explicit QTBNameValueListAttr(CATIDOMElement_var* pspIDOMElement);
    ~QTBNameValueListAttr() override;

    HRESULT NvValueIsDefined(const CATUnicodeString& usName, unsigned char* pbIsDefined) const;

    // The value of an entry. E_FAIL when there is no entry of that name.
    HRESULT GetNvValue(const CATUnicodeString& usName, CATUnicodeString* pusValue) const;

    // Changes the value of an entry, whose further XML attributes stay, or adds an entry at the end. Fails for an empty
    // name.
    HRESULT SetNvValue(const CATUnicodeString& usName, const CATUnicodeString& usValue);

    // A further XML attribute of an entry. E_FAIL when the entry or the attribute does not exist.
    HRESULT GetNvEntryXmlAttrVal(const CATUnicodeString& usName, const CATUnicodeString& usXmlAttrName,
                                 CATUnicodeString* pusXmlAttrValue) const;

    // The entries in order; index is counted from 1. E_FAIL outside the list.
    HRESULT GetSize(int* pSize) const;
    HRESULT GetEntry(int index, CATUnicodeString* pusName, CATUnicodeString* pusValue) const;

    // The entries as name=value, joined with ", ".
    CATUnicodeString ToString() override;

protected:
    std::string_view GetTypeName() const override;
    HRESULT AppendContent(std::string* pXml) const override;

private:
    struct Entry
    {
        QTBPooledName name;
        CATUnicodeString value;
    };
    // What only few lists have: further XML attributes, or so many entries that they need an index.
    struct Extras;

    bool ReadEntries(const CATDOMElementView& element);
    bool ReadEntry(const CATDOMElementView& element);
    // The entry's offset in m_Entries, -1 when there is none.
    int FindEntry(const QTBPooledName& name) const;
    int FindEntry(const CATUnicodeString& usName) const;
    void AddEntry(const QTBPooledName& name, const CATUnicodeString& usValue);
    Extras& MakeExtras();

    std::vector<Entry> m_Entries;
    std::unique_ptr<Extras> m_pExtras;
};

using CATListPtrQTBNameValueListAttr = CATListPtr<QTBNameValueListAttr>;
