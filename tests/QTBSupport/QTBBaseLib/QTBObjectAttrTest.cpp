#include "QTBObjectAttr.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CATXMLDocumentFactory.h"
#include "QTBConstants.h"
#include "QTBINode.h"
#include "QTBINodeAttributes.h"
#include "QTBNameValueListAttr.h"
#include "QTBStringAttr.h"
#include "QTBXmlElement.h"

namespace {

int s_LiveNodes = 0;

// Node that keeps the attributes of its record and nothing else: strings, name/value lists and embedded objects, for
// each of which it makes another node.
class RecordNode final : public QTBINodeAttributes
{
public:
    RecordNode() { ++s_LiveNodes; }

    using CATBaseUnknown::QueryInterface;
    HRESULT QueryInterface(const IID& iid, void** ppv) override
    {
        *ppv = nullptr;
        if (iid == IID_QTBINode) {
            *ppv = &m_Identity;
        } else if (iid == IID_QTBINodeAttributes || iid == IID_CATBaseUnknown) {
            *ppv = this;
        } else {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    unsigned int AddRef() override { return ++m_References; }
    unsigned int Release() override
    {
        const unsigned int references = --m_References;
        if (references == 0) {
            delete this;
        }
        return references;
    }

    HRESULT SetXmlElement(const CATBaseUnknown_var& spXmlElement) override
    {
        CATListValCATBaseUnknown_var Elements;
        QTBXmlUtil::GetElements(spXmlElement, "a", "", "", &Elements);
        m_Names.RemoveAll();
        m_Attributes.clear();
        for (const CATBaseUnknown_var& spElement : Elements) {
            if (FAILED(SetAttributeAsXmlNode(spElement))) {
                return E_FAIL;
            }
        }
        return S_OK;
    }

    HRESULT SetAttributeAsXmlNode(const CATBaseUnknown_var& spAttributeElement) override
    {
        CATIDOMElement_var spElement(spAttributeElement);
        CATUnicodeString usDataType;
        QTBXmlUtil::GetNodeAttributeDataType(spElement, &usDataType);
        if (usDataType == usOBJECT_LIST) {
            return S_OK;
        }
        std::unique_ptr<QTBNodeAttr> pAttribute;
        if (usDataType == usOBJECT) {
            CATIDOMNode_var spChild;
            spElement->GetFirstChild(&spChild);
            CATIDOMElement_var spObject(spChild);
            CATBaseUnknown_var spNode = CATInterface_var<RecordNode>::Adopt(new RecordNode);
            pAttribute = std::make_unique<QTBObjectAttr>(&spObject, &spNode);
        } else if (usDataType == usNAME_VALUE_LIST) {
            pAttribute = std::make_unique<QTBNameValueListAttr>(&spElement);
        } else {
            pAttribute = std::make_unique<QTBStringAttr>(&spElement);
        }
        CATUnicodeString usName;
        if (FAILED(pAttribute->GetName(&usName)) || m_Names.Locate(usName) > 0) {
            return E_FAIL;
        }
        m_Names.Append(usName);
        m_Attributes.push_back(std::move(pAttribute));
        return S_OK;
    }

    HRESULT GetAllAttributeNames(CATListValCATUnicodeString* pNames) override
    {
        *pNames = m_Names;
        return S_OK;
    }

    HRESULT GetAttribute(const CATUnicodeString& usName, QTBNodeAttr** ppNodeAttr) override
    {
        const int position = m_Names.Locate(usName);
        if (position == 0) {
            return E_FAIL;
        }
        *ppNodeAttr = m_Attributes[static_cast<std::size_t>(position) - 1].get();
        return S_OK;
    }

    // What an attribute object never asks.
    unsigned int* GetHashKey() override { return nullptr; }
    HRESULT SetKey(const CATUnicodeString&) override { return E_FAIL; }
    HRESULT GetKey(CATUnicodeString*) override { return E_FAIL; }
    HRESULT GetXmlElement(CATBaseUnknown_var*) override { return E_FAIL; }
    HRESULT AttributeIsDefined(const CATUnicodeString&, unsigned char*) override { return E_FAIL; }
    HRESULT GetAttributeDataType(const CATUnicodeString&, CATUnicodeString*) override { return E_FAIL; }
    HRESULT GetStringAttributeNames(CATListValCATUnicodeString*) override { return E_FAIL; }
    HRESULT SetStringAttributeValue(const CATUnicodeString&, const CATUnicodeString&) override { return E_FAIL; }
    HRESULT GetStringAttributeValue(const CATUnicodeString&, CATUnicodeString*, unsigned char, unsigned char) override
    {
        return E_FAIL;
    }
    HRESULT GetStringAttributeValues(CATListValCATUnicodeString*) override { return E_FAIL; }
    HRESULT GetStringAttributePtr(const CATUnicodeString&, QTBStringAttr**) override { return E_FAIL; }
    HRESULT GetStringAttributes(CATListPtrQTBStringAttr*) override { return E_FAIL; }
    HRESULT GetSimpleListAttributeNames(CATListValCATUnicodeString*) override { return E_FAIL; }
    HRESULT GetSimpleListAttributePtr(const CATUnicodeString&, QTBSimpleListAttr**) override { return E_FAIL; }
    HRESULT GetSimpleListAttributes(CATListPtrQTBSimpleListAttr*) override { return E_FAIL; }
    HRESULT GetNameValueListAttributeNames(CATListValCATUnicodeString*) override { return E_FAIL; }
    HRESULT GetNameValueListAttributePtr(const CATUnicodeString&, QTBNameValueListAttr**) override { return E_FAIL; }
    HRESULT GetNameValueListAttributes(CATListPtrQTBNameValueListAttr*) override { return E_FAIL; }
    HRESULT GetTableAttributeNames(CATListValCATUnicodeString*) override { return E_FAIL; }
    HRESULT GetTableAttributePtr(const CATUnicodeString&, QTBTableAttr**) override { return E_FAIL; }
    HRESULT GetTableAttributes(CATListPtrQTBTableAttr*) override { return E_FAIL; }
    HRESULT GetObjectAttributeNames(CATListValCATUnicodeString*) override { return E_FAIL; }
    HRESULT GetObjectAttributePtr(const CATUnicodeString&, QTBObjectAttr**) override { return E_FAIL; }
    HRESULT GetObjectAttributes(CATListPtrQTBObjectAttr*) override { return E_FAIL; }
    HRESULT AddStringAttributeValue(const CATUnicodeString&, const CATUnicodeString&) override { return E_FAIL; }
    HRESULT ToXmlString(const CATListValCATUnicodeString&, CATUnicodeString*, const CATUnicodeString&,
                        const CATUnicodeString&, const CATUnicodeString&) override
    {
        return E_FAIL;
    }
    HRESULT ToXmlString(CATUnicodeString*, const CATUnicodeString&, const CATUnicodeString&,
                        const CATUnicodeString&) override
    {
        return E_FAIL;
    }
    HRESULT SetCatiaAttribute(const CATUnicodeString&, const CATUnicodeString&) override { return E_FAIL; }
    HRESULT GetCatiaAttribute(const CATUnicodeString&, CATUnicodeString*) override { return E_FAIL; }
    HRESULT SetCatiaAttributes(const CATListValCATUnicodeString&, const CATListValCATUnicodeString&) override
    {
        return E_FAIL;
    }
    HRESULT GetCatiaAttributes(CATListValCATUnicodeString*, CATListValCATUnicodeString*) override { return E_FAIL; }
    HRESULT PrintCatiaAttributes() override { return E_FAIL; }

private:
    class Identity final : public QTBINode
    {
    public:
        explicit Identity(RecordNode* pNode) : m_pNode(pNode) {}
        using CATBaseUnknown::QueryInterface;
        HRESULT QueryInterface(const IID& iid, void** ppv) override { return m_pNode->QueryInterface(iid, ppv); }
        unsigned int AddRef() override { return m_pNode->AddRef(); }
        unsigned int Release() override { return m_pNode->Release(); }
        HRESULT GetNodeDescriptionString(CATUnicodeString* pusNodeDescriptionString) override
        {
            *pusNodeDescriptionString = "the description";
            return S_OK;
        }
        HRESULT GetPdmClass(CATUnicodeString*) override { return E_FAIL; }

    private:
        RecordNode* m_pNode;
    };

    ~RecordNode() override { --s_LiveNodes; }

    unsigned int m_References = 1;
    Identity m_Identity{this};
    CATListValCATUnicodeString m_Names;
    std::vector<std::unique_ptr<QTBNodeAttr>> m_Attributes;
};

class ObjectAttr : public testing::Test
{
protected:
    ~ObjectAttr() override
    {
        m_pAttribute.reset();
        m_spNode = NULL_var;
        EXPECT_EQ(s_LiveNodes, 0);
    }

    // Reads an "a" element; the object is its first child element.
    QTBObjectAttr& Read(const std::string& xml)
    {
        CATIDOMNode_var spChild;
        EXPECT_EQ(ReadXmlElement(xml)->GetFirstChild(&spChild), S_OK);
        m_spObject = spChild;
        m_spNode = CATInterface_var<RecordNode>::Adopt(new RecordNode);
        m_pAttribute = std::make_unique<QTBObjectAttr>(&m_spObject, &m_spNode);
        return *m_pAttribute;
    }

    // An "a" element with embedded objects, one in the other.
    static std::string Nested(int depth)
    {
        std::string xml;
        for (int i = 0; i < depth; ++i) {
            xml += "<a name=\"N\" type=\"object\"><o>";
        }
        xml += "<a name=\"S\">innermost</a>";
        for (int i = 0; i < depth; ++i) {
            xml += "</o></a>";
        }
        return xml;
    }

    CATIDOMElement_var m_spObject;
    CATBaseUnknown_var m_spNode;
    std::unique_ptr<QTBObjectAttr> m_pAttribute;
};

TEST_F(ObjectAttr, TheNameIsThatOfTheElementAroundTheObject)
{
    const QTBObjectAttr& attribute =
        Read("<a name=\"Owner\" type=\"object\"><o name=\"no\"><a name=\"Key\">K1</a></o></a>");
    CATUnicodeString usName;
    EXPECT_EQ(attribute.IsValid(), TRUE);
    EXPECT_EQ(attribute.GetName(&usName), S_OK);
    EXPECT_EQ(usName, "Owner");
}

TEST_F(ObjectAttr, TheNodeIsFilledFromTheObject)
{
    const QTBObjectAttr& attribute = Read("<a name=\"Owner\" type=\"object\"><o><a name=\"Key\">K1</a></o></a>");
    CATBaseUnknown_var spNode;
    ASSERT_EQ(attribute.GetObjectNode(&spNode), S_OK);
    EXPECT_TRUE(spNode == m_spNode);
    CATListValCATUnicodeString Names;
    ASSERT_EQ(QTBINodeAttributes_var(spNode)->GetAllAttributeNames(&Names), S_OK);
    ASSERT_EQ(Names.Size(), 1);
    EXPECT_EQ(Names[1], "Key");
    EXPECT_EQ(attribute.GetObjectNode(nullptr), E_POINTER);
}

TEST_F(ObjectAttr, TheTooltipIsTheDescriptionOfTheNode)
{
    EXPECT_EQ(Read("<a name=\"Owner\" type=\"object\"><o/></a>").ToString(), "the description");
}

TEST_F(ObjectAttr, WhatIsWrittenReadsBack)
{
    const std::string xml = "<a name=\"&quot;Owner&quot;\" type=\"object\"><embedded id=\"1 &amp; 2\">"
                            "<a name=\"Key\">K1 &lt;\xE6\x97\xA5\xE6\x9C\xAC&gt;</a>"
                            "<a name=\"Info\" type=\"nvlist\"><nv name=\"A\" unit=\"x\">1</nv></a>"
                            "<a name=\"In\" type=\"object\"><o><a name=\"S\">deep\n&#13;</a></o></a>"
                            "</embedded></a>";
    EXPECT_EQ(WriteAttribute(Read(xml)), xml);
}

TEST_F(ObjectAttr, PresentAttributesAreWritten)
{
    const QTBObjectAttr& attribute =
        Read("<a name=\"Owner\" type=\"object\"><o><a name=\"A\">old</a><a name=\"B\">b</a></o></a>");
    const QTBINodeAttributes_var spINodeAttributes(m_spNode);
    QTBNodeAttr* pNodeAttr = nullptr;
    ASSERT_EQ(spINodeAttributes->GetAttribute("A", &pNodeAttr), S_OK);
    ASSERT_EQ(static_cast<QTBStringAttr*>(pNodeAttr)->SetValue("new"), S_OK);
    ASSERT_EQ(spINodeAttributes->SetAttributeAsXmlNode(ReadXmlElement("<a name=\"C\">added</a>")), S_OK);
    EXPECT_EQ(WriteAttribute(attribute), "<a name=\"Owner\" type=\"object\"><o><a name=\"A\">new</a><a name=\"B\">b</a>"
                                         "<a name=\"C\">added</a></o></a>");
}

TEST_F(ObjectAttr, WhatIsNoAttributeOfTheNodeIsWrittenAsItWasRead)
{
    EXPECT_EQ(WriteAttribute(Read("<a name=\"Owner\" type=\"object\"><o><x y=\"1\">t<z/></x>"
                                  "<a name=\"L\" type=\"objectlist\"><o/></a><a name=\"A\">1</a></o></a>")),
              "<a name=\"Owner\" type=\"object\"><o><a name=\"A\">1</a><x y=\"1\">t<z></z></x>"
              "<a name=\"L\" type=\"objectlist\"><o></o></a></o></a>");
}

TEST_F(ObjectAttr, ObjectsMayBeNestedUpToTheLimit)
{
    const std::string deepest = Nested(QTBObjectAttr::MAX_NESTING);
    EXPECT_EQ(WriteAttribute(Read(deepest)), deepest);
    EXPECT_EQ(Read(Nested(QTBObjectAttr::MAX_NESTING + 1)).IsValid(), FALSE);
    EXPECT_EQ(Read(Nested(100000)).IsValid(), FALSE);
}

TEST_F(ObjectAttr, AnObjectThatCannotBeReadMakesTheAttributeInvalid)
{
    for (const char* xml :
         {"<a type=\"object\"><o/></a>", "<a name=\"\" type=\"object\"><o/></a>",
          "<b name=\"N\" type=\"object\"><o/></b>", "<a name=\"N\" type=\"object\"><o><a>nameless</a></o></a>",
          "<a name=\"N\" type=\"object\"><o><a name=\"A\"/><a name=\"A\"/></o></a>"}) {
        QTBObjectAttr& attribute = Read(xml);
        CATUnicodeString usText("untouched");
        CATBaseUnknown_var spNode;
        EXPECT_EQ(attribute.IsValid(), FALSE) << xml;
        EXPECT_EQ(attribute.GetName(&usText), E_FAIL);
        EXPECT_EQ(attribute.GetObjectNode(&spNode), E_FAIL);
        EXPECT_EQ(attribute.WriteXmlToString(&usText, FALSE), E_FAIL);
        EXPECT_EQ(usText, "untouched");
        EXPECT_EQ(attribute.ToString(), "");
    }
}

TEST_F(ObjectAttr, WithoutElementOrNodeItIsNotValid)
{
    Read("<a name=\"N\" type=\"object\"><o/></a>");
    CATIDOMElement_var spNoElement;
    CATBaseUnknown_var spNoNode;
    CATBaseUnknown_var spOtherComponent = ReadXmlElement("<x/>");
    EXPECT_EQ(QTBObjectAttr(&spNoElement, &m_spNode).IsValid(), FALSE);
    EXPECT_EQ(QTBObjectAttr(nullptr, &m_spNode).IsValid(), FALSE);
    EXPECT_EQ(QTBObjectAttr(&m_spObject, &spNoNode).IsValid(), FALSE);
    EXPECT_EQ(QTBObjectAttr(&m_spObject, &spOtherComponent).IsValid(), FALSE);
    EXPECT_EQ(QTBObjectAttr(&m_spObject, nullptr).IsValid(), FALSE);
    CATIDOMElement_var spRoot = ReadXmlElement("<o/>");
    EXPECT_EQ(QTBObjectAttr(&spRoot, &m_spNode).IsValid(), FALSE);
}

} // namespace
