#include "CATXMLDocumentFactory.h"

#include <filesystem>
#include <fstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CATXMLError.h"
#include "QTBTestEnvironment.h"

using testing::HasSubstr;

namespace {

CATXMLError* ErrorOf(HRESULT hr)
{
    return dynamic_cast<CATXMLError*>(CATError::CATGetLastError(hr, nullptr));
}

CATUnicodeString RootText(const CATIDOMDocument_var& spDocument)
{
    CATIDOMElement_var spRoot;
    CATUnicodeString usText;
    EXPECT_EQ(spDocument->GetDocumentElement(&spRoot), S_OK);
    EXPECT_EQ(spRoot->GetCharData(&usText), S_OK);
    return usText;
}

CATUnicodeString ReadRootText(const char* xml)
{
    CATIDOMDocument_var spDocument;
    EXPECT_EQ(CATXMLDocumentFactory::ReadText(xml, "text", &spDocument), S_OK);
    return spDocument != NULL_var ? RootText(spDocument) : CATUnicodeString("not read");
}

// A file that goes with the test.
class XmlFile : public testing::Test
{
protected:
    ~XmlFile() override { std::filesystem::remove_all(m_Directory); }

    CATUnicodeString Write(const std::string& bytes)
    {
        std::filesystem::create_directories(m_Directory);
        const std::filesystem::path path = m_Directory / "answer.xml";
        std::ofstream(path, std::ios::binary) << bytes;
        return CATUnicodeString(path.c_str());
    }

    const std::filesystem::path m_Directory =
        std::filesystem::path(testing::TempDir()) /
        ("xml-" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
};

TEST(XmlDocumentFactory, CreatesADocumentOfOneEmptyElement)
{
    CATIDOMDocument_var spDocument;
    ASSERT_EQ(CATXMLDocumentFactory::CreateDocument("root", &spDocument), S_OK);
    CATIDOMElement_var spRoot;
    ASSERT_EQ(spDocument->GetDocumentElement(&spRoot), S_OK);
    CATUnicodeString usTagName;
    CATIDOMNode_var spChild;
    EXPECT_EQ(spRoot->GetTagName(&usTagName), S_OK);
    EXPECT_EQ(usTagName, "root");
    EXPECT_EQ(spRoot->GetFirstChild(&spChild), S_OK);
    EXPECT_TRUE(spChild == NULL_var);
    EXPECT_EQ(RootText(spDocument), "");
}

TEST(XmlDocumentFactory, RefusesNamesThatXmlDoesNotAllow)
{
    for (const char* name : {"", "1a", "a b", "a<", "-a", "a\x01", "\xC3\x97"}) {
        CATIDOMDocument_var spDocument;
        EXPECT_EQ(CATXMLDocumentFactory::CreateDocument(name, &spDocument), E_FAIL) << name;
        EXPECT_TRUE(spDocument == NULL_var);
    }
    CATIDOMDocument_var spDocument;
    EXPECT_EQ(CATXMLDocumentFactory::CreateDocument("Gr\xC3\xB6\xC3\x9F\x65", &spDocument), S_OK);
}

TEST(XmlDocumentFactory, TextSplitByCommentsAndCDataIsReadWhole)
{
    EXPECT_EQ(ReadRootText("<a>one<!-- c -->two<![CDATA[<three> & ]]>four</a>"), "onetwo<three> & four");
    EXPECT_EQ(ReadRootText("<a><![CDATA[one]]><![CDATA[two]]></a>"), "onetwo");
    EXPECT_EQ(ReadRootText("<a>one<?p i?>two</a>"), "onetwo");
    EXPECT_EQ(ReadRootText("<a><!-- c -->one</a>"), "one");
    EXPECT_EQ(ReadRootText("<a> x <!-- c --> y </a>"), " x  y ");
    EXPECT_EQ(ReadRootText("<a>x<!-- c --> <!-- d -->y</a>"), "x y");
}

TEST(XmlDocumentFactory, BlanksOfATextCount)
{
    EXPECT_EQ(ReadRootText("<a>  two  </a>"), "  two  ");
    EXPECT_EQ(ReadRootText("<a> </a>"), " ");
    EXPECT_EQ(ReadRootText("<a><![CDATA[ ]]></a>"), " ");
    EXPECT_EQ(ReadRootText("<a> <!-- c --> </a>"), "  ");
    EXPECT_EQ(ReadRootText("<a>\n\t</a>"), "\n\t");
}

TEST(XmlDocumentFactory, BlanksBetweenElementsAreLayout)
{
    EXPECT_EQ(ReadRootText("<a>\n  <b/>\n  <b/>\n</a>"), "");
    EXPECT_EQ(ReadRootText("<a>\n  <b/>\n  <!-- c -->\n <b/></a>"), "");
    EXPECT_EQ(ReadRootText("<a>x<b/> y <b/> </a>"), "x y ");
}

TEST(XmlDocumentFactory, ReferencesAndLineEndsAreResolved)
{
    EXPECT_EQ(ReadRootText("<a>&lt;&gt;&amp;&quot;&apos;&#65;&#x20AC;</a>"), "<>&\"'A\xE2\x82\xAC");
    EXPECT_EQ(ReadRootText("<a>1\r\n2\r3\n4&#13;5</a>"), "1\n2\n3\n4\r5");
    EXPECT_EQ(ReadRootText("<a>&amp;lt;</a>"), "&lt;");
}

TEST(XmlDocumentFactory, TheTextIsUtf8WhateverItsDeclarationSays)
{
    EXPECT_EQ(ReadRootText("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xC3\xA4</a>"), "\xC3\xA4");
}

TEST(XmlDocumentFactory, RefusedTextLeavesTheHandleAsItWas)
{
    CATIDOMDocument_var spDocument;
    ASSERT_EQ(CATXMLDocumentFactory::ReadText("<a>old</a>", "first", &spDocument), S_OK);
    const HRESULT hr = CATXMLDocumentFactory::ReadText("<a>\n<b></a>", "second", &spDocument);
    EXPECT_TRUE(FAILED(hr));
    EXPECT_EQ(RootText(spDocument), "old");
    ASSERT_NE(ErrorOf(hr), nullptr);
    EXPECT_EQ(ErrorOf(hr)->GetSourceName(), "second");
    EXPECT_EQ(ErrorOf(hr)->GetLine(), 2);
}

TEST(XmlDocumentFactory, TrustedTextIsReadUnchecked)
{
    CATIDOMDocument_var spDocument;
    ASSERT_EQ(CATXMLDocumentFactory::ReadTrustedText("<a>one</a>", &spDocument), S_OK);
    EXPECT_EQ(RootText(spDocument), "one");
    const HRESULT hr = CATXMLDocumentFactory::ReadTrustedText("<a>\n<b></a>", &spDocument);
    ASSERT_NE(ErrorOf(hr), nullptr);
    EXPECT_EQ(ErrorOf(hr)->GetLine(), 2);
    EXPECT_EQ(RootText(spDocument), "one");
}

TEST(XmlDocumentFactory, TrustedTextThatIsNoUtf8IsRepaired)
{
    CATIDOMDocument_var spDocument;
    ASSERT_EQ(CATXMLDocumentFactory::ReadTrustedText("<a>\xFF</a>", &spDocument), S_OK);
    EXPECT_EQ(RootText(spDocument), "\xEF\xBF\xBD");
}

TEST(XmlDocumentFactory, ANullPointerIsRefused)
{
    EXPECT_EQ(CATXMLDocumentFactory::CreateDocument("a", nullptr), E_POINTER);
    EXPECT_EQ(CATXMLDocumentFactory::ReadText("<a/>", "text", nullptr), E_POINTER);
    EXPECT_EQ(CATXMLDocumentFactory::ReadTrustedText("<a/>", nullptr), E_POINTER);
    EXPECT_EQ(CATXMLDocumentFactory::ReadFile("a.xml", nullptr), E_POINTER);
}

TEST(XmlDocumentFactory, ADocumentDiesWithItsLastHandle)
{
    const int before = CATXMLDocumentFactory::GetLiveDocumentCount();
    CATIDOMElement_var spElement;
    {
        CATIDOMDocument_var spDocument;
        ASSERT_EQ(CATXMLDocumentFactory::ReadText("<a><b>x</b></a>", "text", &spDocument), S_OK);
        EXPECT_EQ(CATXMLDocumentFactory::GetLiveDocumentCount(), before + 1);
        CATIDOMElement_var spRoot;
        CATIDOMNode_var spChild;
        spDocument->GetDocumentElement(&spRoot);
        spRoot->GetFirstChild(&spChild);
        spElement = spChild;
    }
    EXPECT_EQ(CATXMLDocumentFactory::GetLiveDocumentCount(), before + 1);
    CATUnicodeString usText;
    EXPECT_EQ(spElement->GetCharData(&usText), S_OK);
    EXPECT_EQ(usText, "x");
    spElement = NULL_var;
    EXPECT_EQ(CATXMLDocumentFactory::GetLiveDocumentCount(), before);
}

TEST_F(XmlFile, IsReadInEveryEncodingThatItDeclares)
{
    CATIDOMDocument_var spDocument;
    ASSERT_EQ(
        CATXMLDocumentFactory::ReadFile(Write("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>"), &spDocument),
        S_OK);
    EXPECT_EQ(RootText(spDocument), "\xC3\xA4");
    ASSERT_EQ(
        CATXMLDocumentFactory::ReadFile(Write(std::string("\xFF\xFE<\0a\0>\0\xAC\x20<\0/\0a\0>\0", 18)), &spDocument),
        S_OK);
    EXPECT_EQ(RootText(spDocument), "\xE2\x82\xAC");
    ASSERT_EQ(CATXMLDocumentFactory::ReadFile(Write("\xEF\xBB\xBF<a>\xC3\xA4</a>"), &spDocument), S_OK);
    EXPECT_EQ(RootText(spDocument), "\xC3\xA4");
}

TEST_F(XmlFile, ThatIsMalformedIsNamedWithTheLine)
{
    const CATUnicodeString usPath = Write("<a>\n<b>\n</a>");
    CATIDOMDocument_var spDocument;
    const HRESULT hr = CATXMLDocumentFactory::ReadFile(usPath, &spDocument);
    ASSERT_NE(ErrorOf(hr), nullptr);
    EXPECT_EQ(ErrorOf(hr)->GetSourceName(), usPath);
    EXPECT_EQ(ErrorOf(hr)->GetLine(), 3);
    EXPECT_TRUE(spDocument == NULL_var);
}

TEST_F(XmlFile, WithBytesThatAreNoUtf8IsRefused)
{
    CATIDOMDocument_var spDocument;
    const HRESULT hr = CATXMLDocumentFactory::ReadFile(Write("<a>\n\xE4</a>"), &spDocument);
    ASSERT_NE(ErrorOf(hr), nullptr);
    EXPECT_EQ(ErrorOf(hr)->GetLine(), 2);
    EXPECT_THAT(ErrorOf(hr)->GetProblem().ConvertToChar(), HasSubstr("0xE4"));
}

TEST_F(XmlFile, ThatCannotBeReadIsNamed)
{
    CATIDOMDocument_var spDocument;
    const CATUnicodeString usMissing((m_Directory / "missing.xml").c_str());
    const HRESULT hrOfMissing = CATXMLDocumentFactory::ReadFile(usMissing, &spDocument);
    ASSERT_NE(ErrorOf(hrOfMissing), nullptr);
    EXPECT_EQ(ErrorOf(hrOfMissing)->GetSourceName(), usMissing);
    EXPECT_EQ(ErrorOf(hrOfMissing)->GetLine(), 0);

    const HRESULT hrOfDirectory = CATXMLDocumentFactory::ReadFile(testing::TempDir().c_str(), &spDocument);
    ASSERT_NE(ErrorOf(hrOfDirectory), nullptr);
    EXPECT_THAT(ErrorOf(hrOfDirectory)->GetProblem().ConvertToChar(), HasSubstr("no file"));

    const HRESULT hrOfEmpty = CATXMLDocumentFactory::ReadFile(Write(""), &spDocument);
    ASSERT_NE(ErrorOf(hrOfEmpty), nullptr);
    EXPECT_EQ(ErrorOf(hrOfEmpty)->GetLine(), 1);
}

TEST_F(XmlFile, OfTheLargestSizeIsReadAndOneOfAByteMoreIsNot)
{
    const QTBTestEnvironment limit("CAT_MAX_FILE_MB", "1");
    constexpr std::size_t MOST = 1024 * 1024;
    const std::string largest = "<a>" + std::string(MOST - 7, 'x') + "</a>";
    CATIDOMDocument_var spDocument;
    EXPECT_EQ(CATXMLDocumentFactory::ReadFile(Write(largest), &spDocument), S_OK);
    EXPECT_EQ(CATXMLDocumentFactory::ReadText(CATUnicodeString(largest), "text", &spDocument), S_OK);

    const HRESULT hrOfFile = CATXMLDocumentFactory::ReadFile(Write(largest + "\n"), &spDocument);
    ASSERT_NE(ErrorOf(hrOfFile), nullptr);
    EXPECT_EQ(ErrorOf(hrOfFile)->GetProblem(), "1048577 bytes");
    EXPECT_EQ(ErrorOf(hrOfFile)->GetExpected(), "at most 1048576 bytes (CAT_MAX_FILE_MB)");
    const HRESULT hrOfText = CATXMLDocumentFactory::ReadText(CATUnicodeString(largest + "\n"), "text", &spDocument);
    ASSERT_NE(ErrorOf(hrOfText), nullptr);
    EXPECT_EQ(ErrorOf(hrOfText)->GetSourceName(), "text");
}

TEST_F(XmlFile, OfMoreThanAnyMemoryIsRefusedUnread)
{
    const CATUnicodeString usPath = Write("<a/>");
    std::filesystem::resize_file(usPath.ConvertToChar(), 1ULL << 40U);
    CATIDOMDocument_var spDocument;
    ASSERT_NE(ErrorOf(CATXMLDocumentFactory::ReadFile(usPath, &spDocument)), nullptr);
    EXPECT_TRUE(spDocument == NULL_var);
}

} // namespace
