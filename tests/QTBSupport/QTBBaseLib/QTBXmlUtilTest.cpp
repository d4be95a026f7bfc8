#include "QTBXmlUtil.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CATXMLError.h"
#include "CATXMLWriter.h"
#include "QTBConstants.h"
#include "QTBListValues.h"
#include "QTBTestFolder.h"
#include "QTBXmlElement.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* RECORD = "<o id=\"1\">"
                               "<a name=\"Key\">K1</a>"
                               "<a name=\"Owner\" type=\"object\"><o><a name=\"Inner\">deep</a></o></a>"
                               "<b name=\"Key\">other</b>"
                               "<a name=\"Key\">second</a>"
                               "<a/>"
                               "</o>";

// What stands in the elements of a list, one after the other.
std::vector<std::string> TextsOf(const CATListValCATBaseUnknown_var& Elements)
{
    std::vector<std::string> texts;
    for (const CATBaseUnknown_var& spElement : Elements) {
        CATUnicodeString usText;
        EXPECT_EQ(QTBXmlUtil::GetCharData(spElement, &usText), S_OK);
        texts.emplace_back(usText.ConvertToChar());
    }
    return texts;
}

std::vector<std::string> GetElements(const CATBaseUnknown_var& spParent, const char* tag, const char* attrName = "",
                                     const char* attrValue = "")
{
    CATListValCATBaseUnknown_var Elements;
    Elements.Append(spParent);
    EXPECT_EQ(QTBXmlUtil::GetElements(spParent, tag, attrName, attrValue, &Elements), S_OK);
    return TextsOf(Elements);
}

CATUnicodeString TypeOf(const char* xml)
{
    CATUnicodeString usDataType;
    EXPECT_EQ(QTBXmlUtil::GetNodeAttributeDataType(ReadXmlElement(xml), &usDataType), S_OK);
    return usDataType;
}

TEST(XmlUtil, ANewDocumentHasOneElement)
{
    CATIDOMDocument_var spDocument;
    CATIDOMElement_var spRoot;
    CATUnicodeString usName;
    ASSERT_EQ(QTBXmlUtil::CreateEmptyDOMDocument("root", &spDocument), S_OK);
    ASSERT_EQ(spDocument->GetDocumentElement(&spRoot), S_OK);
    EXPECT_EQ(spRoot->GetTagName(&usName), S_OK);
    EXPECT_EQ(usName, "root");
    EXPECT_EQ(QTBXmlUtil::CreateEmptyDOMDocument("no name", &spDocument), E_FAIL);
    EXPECT_EQ(QTBXmlUtil::CreateEmptyDOMDocument("root", nullptr), E_POINTER);
}

TEST(XmlUtil, MalformedTextIsRefusedWithItsLineAndTheDocumentStays)
{
    CATIDOMDocument_var spDocument;
    ASSERT_EQ(QTBXmlUtil::GetDomDocument("<a/>", &spDocument), S_OK);
    const CATIDOMDocument_var spBefore = spDocument;
    const HRESULT hr = QTBXmlUtil::GetDomDocument("<a>\n\n<b></a>", &spDocument);
    EXPECT_TRUE(FAILED(hr));
    EXPECT_TRUE(spDocument == spBefore);
    const auto* pError = dynamic_cast<CATXMLError*>(CATError::CATGetLastError(hr, nullptr));
    ASSERT_NE(pError, nullptr);
    EXPECT_EQ(pError->GetLine(), 3);
}

TEST(XmlUtil, TrustedTextIsRead)
{
    CATIDOMDocument_var spDocument;
    ASSERT_EQ(QTBXmlUtil::GetTrustedDomDocument("<a>x</a>", &spDocument), S_OK);
    EXPECT_THAT(GetElements(spDocument, "a"), ElementsAre("x"));
}

TEST(XmlUtil, AFileIsReadAndNamedWhenItIsMalformed)
{
    const QTBTestFolder folder;
    const std::string path = folder.Write("file.xml", "<a>x</a>");
    CATIDOMDocument_var spDocument;
    EXPECT_EQ(QTBXmlUtil::GetDomDocumentFromFile(path.c_str(), &spDocument), S_OK);
    EXPECT_THAT(GetElements(spDocument, "a"), ElementsAre("x"));
    folder.Write("file.xml", "<a>\n<b/>");
    const HRESULT hr = QTBXmlUtil::GetDomDocumentFromFile(path.c_str(), &spDocument);
    const auto* pError = dynamic_cast<CATXMLError*>(CATError::CATGetLastError(hr, nullptr));
    ASSERT_NE(pError, nullptr);
    EXPECT_EQ(pError->GetSourceName(), path.c_str());
    EXPECT_EQ(pError->GetLine(), 2);
}

TEST(XmlUtil, OnlyDirectChildrenAreFoundInDocumentOrder)
{
    const CATIDOMElement_var spRecord = ReadXmlElement(RECORD);
    EXPECT_THAT(GetElements(spRecord, "a"), ElementsAre("K1", "", "second", ""));
    EXPECT_THAT(GetElements(spRecord, "b"), ElementsAre("other"));
    EXPECT_THAT(GetElements(spRecord, "o"), IsEmpty());
    EXPECT_THAT(GetElements(spRecord, ""), IsEmpty());
}

TEST(XmlUtil, AnAttributeNameSelectsByValue)
{
    const CATIDOMElement_var spRecord = ReadXmlElement(RECORD);
    EXPECT_THAT(GetElements(spRecord, "a", "name", "Key"), ElementsAre("K1", "second"));
    EXPECT_THAT(GetElements(spRecord, "a", "name", "Inner"), IsEmpty());
    EXPECT_THAT(GetElements(spRecord, "a", "name", ""), IsEmpty());
    EXPECT_THAT(GetElements(spRecord, "a", "type", "object"), ElementsAre(""));
    EXPECT_THAT(GetElements(spRecord, "a", "", "ignored"), ElementsAre("K1", "", "second", ""));
}

TEST(XmlUtil, TheChildOfADocumentIsItsElement)
{
    CATIDOMDocument_var spDocument;
    ASSERT_EQ(QTBXmlUtil::GetDomDocument("<r>x<a/></r>", &spDocument), S_OK);
    EXPECT_THAT(GetElements(spDocument, "r"), ElementsAre("x"));
    EXPECT_THAT(GetElements(spDocument, "a"), IsEmpty());
    CATIDOMElement_var spRoot;
    ASSERT_EQ(spDocument->GetDocumentElement(&spRoot), S_OK);
    ASSERT_EQ(spDocument->RemoveChild(spRoot), S_OK);
    EXPECT_THAT(GetElements(spDocument, "r"), IsEmpty());
}

TEST(XmlUtil, TheFirstAttributeElementOfANameIsFound)
{
    const CATIDOMElement_var spRecord = ReadXmlElement(RECORD);
    CATIDOMElement_var spElement;
    CATUnicodeString usText;
    EXPECT_EQ(QTBXmlUtil::GetSingleAttributeElement(spRecord, "Key", &spElement), S_OK);
    EXPECT_EQ(QTBXmlUtil::GetCharData(spElement, &usText), S_OK);
    EXPECT_EQ(usText, "K1");
    CATIDOMElement_var spNone;
    EXPECT_EQ(QTBXmlUtil::GetSingleAttributeElement(spRecord, "Inner", &spNone), E_FAIL);
    EXPECT_EQ(QTBXmlUtil::GetSingleAttributeElement(spRecord, "", &spNone), E_FAIL);
    EXPECT_TRUE(spNone == NULL_var);
}

TEST(XmlUtil, TextsOfRecurringElementsAreCollected)
{
    const CATIDOMElement_var spParent =
        ReadXmlElement("<r><k>one</k><x/><k/><k> t<!-- c -->wo </k><y><k>deep</k></y></r>");
    CATListValCATUnicodeString Texts;
    Texts.Append("old");
    EXPECT_EQ(QTBXmlUtil::GetRecurringElementCharData(spParent, "k", &Texts), S_OK);
    EXPECT_THAT(ListValues(Texts), ElementsAre("one", "", " two "));
    EXPECT_EQ(QTBXmlUtil::GetRecurringElementCharData(spParent, "none", &Texts), S_OK);
    EXPECT_THAT(ListValues(Texts), IsEmpty());
}

TEST(XmlUtil, TheTypeOfAnAttributeElementIsItsDataType)
{
    EXPECT_EQ(TypeOf("<a name=\"N\">x</a>"), usSTRING);
    EXPECT_EQ(TypeOf("<a name=\"N\" type=\"string\"/>"), usSTRING);
    EXPECT_EQ(TypeOf("<a name=\"N\" type=\"list\"/>"), usSIMPLE_LIST);
    EXPECT_EQ(TypeOf("<a name=\"N\" type=\"nvlist\"/>"), usNAME_VALUE_LIST);
    EXPECT_EQ(TypeOf("<a name=\"N\" type=\"table\"/>"), usTABLE);
    EXPECT_EQ(TypeOf("<a name=\"N\" type=\"object\"/>"), usOBJECT);
    EXPECT_EQ(TypeOf("<a name=\"N\" type=\"objectlist\"/>"), usOBJECT_LIST);
}

TEST(XmlUtil, AnUnknownTypeIsReturnedAsItStands)
{
    EXPECT_EQ(TypeOf("<a name=\"N\" type=\"String\"/>"), "String");
    EXPECT_EQ(TypeOf("<a name=\"N\" type=\"\"/>"), "");
    CATUnicodeString usDataType;
    EXPECT_EQ(QTBXmlUtil::GetNodeAttributeDataType(NULL_var, &usDataType), E_FAIL);
    EXPECT_EQ(QTBXmlUtil::GetNodeAttributeDataType(ReadXmlElement("<a/>"), nullptr), E_POINTER);
}

TEST(XmlUtil, AChildIsAppendedWithItsText)
{
    CATIDOMElement_var spParent = ReadXmlElement("<r><a/></r>");
    CATIDOMElement_var spChild;
    EXPECT_EQ(QTBXmlUtil::CreateChildNode("b", AWKWARD_TEXT, &spParent, &spChild), S_OK);
    EXPECT_THAT(GetElements(spParent, "b"), ElementsAre(AWKWARD_TEXT));
    EXPECT_EQ(QTBXmlUtil::CreateChildNode("c", "", &spParent, &spChild), S_OK);
    // The child may take the place of the parent's handle.
    CATIDOMElement_var spDeeper = spChild;
    EXPECT_EQ(QTBXmlUtil::CreateChildNode("d", "x", &spDeeper, &spDeeper), S_OK);
    EXPECT_THAT(GetElements(spChild, "d"), ElementsAre("x"));
    std::string xml;
    CATXMLWriter::AppendElement(spChild->GetView(), &xml);
    EXPECT_EQ(xml, "<c><d>x</d></c>");
}

TEST(XmlUtil, AChildThatCannotBeMadeLeavesTheParentAsItWas)
{
    CATIDOMElement_var spParent = ReadXmlElement("<r/>");
    CATIDOMElement_var spChild;
    CATIDOMElement_var spNone;
    EXPECT_EQ(QTBXmlUtil::CreateChildNode("no name", "x", &spParent, &spChild), E_FAIL);
    EXPECT_EQ(QTBXmlUtil::CreateChildNode("a", "x", &spNone, &spChild), E_FAIL);
    EXPECT_TRUE(spChild == NULL_var);
    EXPECT_EQ(QTBXmlUtil::CreateChildNode("a", "x", nullptr, &spChild), E_POINTER);
    EXPECT_EQ(QTBXmlUtil::CreateChildNode("a", "x", &spParent, nullptr), E_POINTER);
    std::string xml;
    CATXMLWriter::AppendElement(spParent->GetView(), &xml);
    EXPECT_EQ(xml, "<r></r>");
}

TEST(XmlUtil, TheObjectsOfAnInvokeAnswerAreThoseOfItsOutArguments)
{
    const CATIDOMElement_var spFunction =
        ReadXmlElement("<dynamicInvoke><o>no</o><outArgs><arg name=\"first\"><o>1</o><x/><o>2</o></arg><o>no</o>"
                       "<arg name=\"second\"/><arg name=\"third\"><o>3</o><y><o>no</o></y></arg></outArgs>"
                       "<inArgs><arg><o>no</o></arg></inArgs></dynamicInvoke>");
    CATListValCATBaseUnknown_var Objects;
    Objects.Append(spFunction);
    EXPECT_EQ(QTBXmlUtil::GetOutArgObjectsOfInvokeFunction(spFunction, &Objects), S_OK);
    EXPECT_THAT(TextsOf(Objects), ElementsAre("1", "2", "3"));
    EXPECT_EQ(QTBXmlUtil::GetOutArgObjectsOfInvokeFunction(ReadXmlElement("<dynamicInvoke/>"), &Objects), S_OK);
    EXPECT_EQ(Objects.Size(), 0);
}

TEST(XmlUtil, WhatIsNoXmlNodeIsRefused)
{
    CATListValCATBaseUnknown_var Elements;
    CATListValCATUnicodeString Texts;
    CATIDOMElement_var spElement;
    CATUnicodeString usText;
    EXPECT_EQ(QTBXmlUtil::GetElements(NULL_var, "a", "", "", &Elements), E_FAIL);
    EXPECT_EQ(QTBXmlUtil::GetSingleAttributeElement(NULL_var, "Key", &spElement), E_FAIL);
    EXPECT_EQ(QTBXmlUtil::GetCharData(NULL_var, &usText), E_FAIL);
    EXPECT_EQ(QTBXmlUtil::GetRecurringElementCharData(NULL_var, "a", &Texts), E_FAIL);
    EXPECT_EQ(QTBXmlUtil::GetOutArgObjectsOfInvokeFunction(NULL_var, &Elements), E_FAIL);

    CATBaseUnknown noNode;
    EXPECT_EQ(QTBXmlUtil::GetElements(&noNode, "a", "", "", &Elements), E_FAIL);
    EXPECT_EQ(QTBXmlUtil::GetCharData(&noNode, &usText), E_FAIL);
}

TEST(XmlUtil, NullPointersAreRefused)
{
    const CATIDOMElement_var spRecord = ReadXmlElement(RECORD);
    EXPECT_EQ(QTBXmlUtil::GetDomDocument("<a/>", nullptr), E_POINTER);
    EXPECT_EQ(QTBXmlUtil::GetTrustedDomDocument("<a/>", nullptr), E_POINTER);
    EXPECT_EQ(QTBXmlUtil::GetDomDocumentFromFile("a.xml", nullptr), E_POINTER);
    EXPECT_EQ(QTBXmlUtil::GetElements(spRecord, "a", "", "", nullptr), E_POINTER);
    EXPECT_EQ(QTBXmlUtil::GetSingleAttributeElement(spRecord, "Key", nullptr), E_POINTER);
    EXPECT_EQ(QTBXmlUtil::GetCharData(spRecord, nullptr), E_POINTER);
    EXPECT_EQ(QTBXmlUtil::GetRecurringElementCharData(spRecord, "a", nullptr), E_POINTER);
    EXPECT_EQ(QTBXmlUtil::GetOutArgObjectsOfInvokeFunction(spRecord, nullptr), E_POINTER);
}

} // namespace
