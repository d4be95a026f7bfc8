#include "CATXMLTextCheck.h"

#include <ostream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CATXMLError.h"

using namespace std::string_view_literals;
using testing::HasSubstr;

namespace {

CATXMLError* ErrorOf(HRESULT hr)
{
    return dynamic_cast<CATXMLError*>(CATError::CATGetLastError(hr, nullptr));
}

struct Malformed
{
    const char* name;
    std::string_view text;
    int line;
    int column;
    const char* problem;
};

void PrintTo(const Malformed& malformed, std::ostream* pStream)
{
    *pStream << malformed.name;
}

class XmlTextCheckRefuses : public testing::TestWithParam<Malformed>
{
};

TEST_P(XmlTextCheckRefuses, WithSourceLineColumnAndProblem)
{
    const HRESULT hr = CATXMLTextCheck::CheckText(GetParam().text, "answer.xml");
    ASSERT_TRUE(FAILED(hr));
    const CATXMLError* pError = ErrorOf(hr);
    ASSERT_NE(pError, nullptr);
    EXPECT_EQ(pError->GetSourceName(), "answer.xml");
    EXPECT_EQ(pError->GetLine(), GetParam().line);
    EXPECT_EQ(pError->GetColumn(), GetParam().column);
    EXPECT_THAT(pError->GetProblem().ConvertToChar(), HasSubstr(GetParam().problem));
    EXPECT_FALSE(pError->GetExpected().IsEmpty());
}

const Malformed MALFORMED_TEXTS[] = {
    {"TwoRoots", "<a/>\n<b/>", 2, 1, "a second root element"},
    {"TextAfterTheRoot", "<a/>\n  text", 2, 3, "text behind the root element"},
    {"TextBeforeTheRoot", "\n text<a/>", 2, 2, "\"text\" in front of the root element"},
    {"WordsBeforeTheRoot", "some text <a/>", 1, 1, "\"some\" in front of the root element"},
    {"ReferenceBeforeTheRoot", "&amp;<a/>", 1, 1, "\"&amp;\" in front of the root element"},
    {"CDataBeforeTheRoot", "<![CDATA[x]]><a/>", 1, 1, "in front of the root element"},
    {"ReferenceAfterTheRoot", "<a/>&amp;", 1, 5, "text behind the root element"},
    {"NoRoot", "<!-- nothing -->\n", 2, 1, "without an element"},
    {"NothingAtAll", "", 1, 1, "without an element"},
    {"BlanksAlone", " \n ", 2, 2, "without an element"},
    {"DeclarationInTheMiddle", "<a>\n <?xml version=\"1.0\"?></a>", 2, 2, "declaration"},
    {"DeclarationBehindABlank", " <?xml version=\"1.0\"?><a/>", 1, 2, "declaration"},
    {"MalformedDeclaration", "<?xml encoding=\"UTF-8\" version=\"1.0\"?><a/>", 1, 7, "declaration"},
    {"DuplicateAttributes", "<a x=\"1\"\n   x=\"2\"/>", 2, 4, "the attribute \"x\" stands twice"},
    {"InvalidUtf8", "<a>\n\xC3(</a>", 2, 1, "0xC3"},
    {"InvalidUtf8InAnAttribute", "<a b=\"\xFF\"/>", 1, 7, "0xFF"},
    {"OverlongUtf8", "<a>\xC0\xAF</a>", 1, 4, "0xC0"},
    {"SurrogateInUtf8", "<a>\xED\xA0\x80</a>", 1, 4, "0xED"},
    {"TextThatEndsInsideACharacter", "<a>\xE2\x82", 1, 4, ""},
    {"NulCharacter", "<a>\nx\0</a>"sv, 2, 2, "a NUL character"},
    {"NulCharacterBehindTheRoot", "<a/>\0"sv, 1, 5, "NUL"},
    {"ControlCharacter", "<a>\x01</a>", 1, 4, "U+0001"},
    {"NoCharacterFFFE", "<a>\xEF\xBF\xBE</a>", 1, 4, "U+FFFE"},
    {"UnknownReference", "<a>\n&nbsp;</a>", 2, 1, "the unknown reference \"&nbsp;\""},
    {"UnknownReferenceInAnAttribute", "<a b=\"&nbsp;\"/>", 1, 7, "the unknown reference \"&nbsp;\""},
    {"ReferenceToNul", "<a>&#0;</a>", 1, 4, "\"&#0;\""},
    {"ReferenceToAControlCharacter", "<a>&#x1;</a>", 1, 4, "\"&#x1;\""},
    {"ReferenceToASurrogate", "<a>&#xD800;</a>", 1, 4, "\"&#xD800;\""},
    {"ReferenceBehindTheLastCharacter", "<a>&#x110000;</a>", 1, 4, "\"&#x110000;\""},
    {"LonelyAmpersand", "<a>R & D</a>", 1, 6, "'&'"},
    {"ReferenceWithoutSemicolon", "<a>&amp</a>", 1, 4, "'&'"},
    {"ReferenceToNoNumber", "<a>&#xZ;</a>", 1, 4, "'&'"},
    {"UnknownReferenceAmongKnownOnes", "<a b=\"&lt;&#65;&amp;&x;\"/>", 1, 21, "\"&x;\""},
    {"TextBehindAByteOrderMark", "\xEF\xBB\xBF text <a/>", 1, 2, "\"text\""},
    {"LonelyLessThan", "<a>1 < 2</a>", 1, 6, "'<'"},
    {"LessThanInAnAttribute", "<a b=\"1<2\"/>", 1, 8, "'<'"},
    {"EndOfCDataInText", "<a>]]></a>", 1, 4, "]]>"},
    {"DocumentType", "<!DOCTYPE a>\n<a/>", 1, 1, "a document type declaration"},
    {"DocumentTypeWithEntities", "<?xml version=\"1.0\"?>\n<!DOCTYPE a [<!ENTITY x \"y\">]>\n<a>&x;</a>", 2, 1,
     "a document type declaration"},
    {"DocumentTypeThatPointsOutside", "<!DOCTYPE a SYSTEM \"file:///etc/passwd\"><a/>", 1, 1,
     "a document type declaration"},
    {"TruncatedInsideAnElement", "<a>\n<b>", 2, 4, "the text ends inside the element \"b\""},
    {"TruncatedInsideAText", "<a>\nhalf of a te", 2, 13, "the text ends inside the element \"a\""},
    {"TruncatedInsideATag", "<a><b c=\"1", 1, 4, "markup that has no end"},
    {"TruncatedInsideAComment", "<a><!-- so", 1, 4, "markup that has no end"},
    {"TruncatedInsideACDataSection", "<a>\n<![CDATA[x", 2, 11, "CDATA"},
    {"TruncatedBehindABracket", "<a><", 1, 4, ""},
    {"ElementsThatOverlap", "<a><b>\n</a></b>", 2, 1, "the tag \"</a>\" does not close the element \"b\""},
    {"EndTagWithoutElement", "<a></a></b>", 1, 8, "the tag \"</b>\" closes no element"},
    {"AttributeWithoutValue", "<a b/>", 1, 5, ""},
    {"AttributeWithoutQuotes", "<a b=1/>", 1, 6, ""},
    {"AttributesWithoutABlankBetween", "<a b=\"1\"c=\"2\"/>", 1, 9, ""},
    {"NameThatBeginsWithADigit", "<1a/>", 1, 1, "'<'"},
    {"TwoDashesInAComment", "<a><!-- a -- b --></a>", 1, 11, "\"--\" inside a comment"},
};

INSTANTIATE_TEST_SUITE_P(Texts, XmlTextCheckRefuses, testing::ValuesIn(MALFORMED_TEXTS),
                         [](const auto& test) { return std::string(test.param.name); });

class XmlTextCheckAccepts : public testing::TestWithParam<const char*>
{
};

TEST_P(XmlTextCheckAccepts, WellFormedText)
{
    EXPECT_EQ(CATXMLTextCheck::CheckText(GetParam(), "answer.xml"), S_OK);
}

INSTANTIATE_TEST_SUITE_P(Texts, XmlTextCheckAccepts,
                         testing::Values("<a/>", "\xEF\xBB\xBF<a/>",
                                         "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<a/>\n",
                                         "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xC3\xA4</a>",
                                         "<a><!-- c --><?p i?></a><!-- end -->",
                                         "<a>&lt;&gt;&amp;&quot;&apos;&#65;&#x1F600;</a>",
                                         "<a><![CDATA[<b>&nbsp;</b>]]></a>", "<p:a q:b=\"1\"/>",
                                         "<Gr\xC3\xB6\xC3\x9F\x65/>", "<a b='\"' c=\"'\"/>"));

TEST(XmlTextCheck, LinesAreCountedForEveryKindOfLineEnd)
{
    const HRESULT hr = CATXMLTextCheck::CheckText("<a>\r\n\r\n\n\r<b></a>", "answer.xml");
    ASSERT_NE(ErrorOf(hr), nullptr);
    EXPECT_EQ(ErrorOf(hr)->GetLine(), 5);
    EXPECT_EQ(ErrorOf(hr)->GetColumn(), 4);
}

TEST(XmlTextCheck, ColumnsCountCharactersNotBytes)
{
    const HRESULT hr = CATXMLTextCheck::CheckText("<a>\xC3\xA4\xE2\x82\xAC&nbsp;</a>", "answer.xml");
    ASSERT_NE(ErrorOf(hr), nullptr);
    EXPECT_EQ(ErrorOf(hr)->GetColumn(), 6);
}

TEST(XmlTextCheck, TheErrorCarriesSourceLineColumnProblemAndExpectation)
{
    const HRESULT hr = CATXMLTextCheck::CheckText("<a>\n<b></c></a>", "answer.xml");
    const CATXMLError* pError = ErrorOf(hr);
    ASSERT_NE(pError, nullptr);
    EXPECT_TRUE(pError->IsAKindOf("CATXMLError"));
    EXPECT_TRUE(pError->IsAKindOf("CATInternalError"));
    EXPECT_EQ(pError->GetMsgCatalog(), "CATXMLParser");
    EXPECT_THAT(
        pError->GetNLSParameters(),
        testing::ElementsAre("answer.xml", "2", "4", "the tag \"</c>\" does not close the element \"b\"", "\"</b>\""));
}

TEST(XmlTextCheck, AMillionNestedElementsAreCheckedWithoutStack)
{
    constexpr int DEPTH = 1000000;
    std::string text;
    for (int i = 0; i < DEPTH; ++i) {
        text += "<a>";
    }
    EXPECT_EQ(ErrorOf(CATXMLTextCheck::CheckText(text, "deep"))->GetColumn(), 3 * DEPTH + 1);
    for (int i = 0; i < DEPTH; ++i) {
        text += "</a>";
    }
    EXPECT_EQ(CATXMLTextCheck::CheckText(text, "deep"), S_OK);
}

// Decoding of files.

std::string Utf16(std::u16string_view text, bool isLittleEndian)
{
    std::string bytes;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFFU);
        const char high = static_cast<char>(static_cast<unsigned int>(unit) >> 8U);
        bytes.push_back(isLittleEndian ? low : high);
        bytes.push_back(isLittleEndian ? high : low);
    }
    return bytes;
}

struct Encoded
{
    const char* name;
    std::string bytes;
    std::string_view text;
};

void PrintTo(const Encoded& encoded, std::ostream* pStream)
{
    *pStream << encoded.name;
}

class XmlDecoding : public testing::TestWithParam<Encoded>
{
};

TEST_P(XmlDecoding, GivesUtf8WithoutByteOrderMark)
{
    std::string bytes = GetParam().bytes;
    ASSERT_EQ(CATXMLTextCheck::DecodeBytes("file.xml", &bytes), S_OK);
    EXPECT_EQ(bytes, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Files, XmlDecoding,
    testing::Values(Encoded{"Utf8", "<a>\xC3\xA4</a>", "<a>\xC3\xA4</a>"},
                    Encoded{"Utf8WithMark", "\xEF\xBB\xBF<a/>", "<a/>"},
                    Encoded{"Utf8Declared", "<?xml version='1.0' encoding='utf-8'?><a/>",
                            "<?xml version='1.0' encoding='utf-8'?><a/>"},
                    Encoded{"Latin1Declared", "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>",
                            "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xC3\xA4</a>"},
                    Encoded{"AsciiDeclared", "<?xml version='1.0' encoding='US-ASCII'?><a/>",
                            "<?xml version='1.0' encoding='US-ASCII'?><a/>"},
                    Encoded{"Utf16LittleEndianWithMark", Utf16(u"\uFEFF<a>\u20AC\U0001F600</a>", true),
                            "<a>\xE2\x82\xAC\xF0\x9F\x98\x80</a>"},
                    Encoded{"Utf16BigEndianWithMark", Utf16(u"\uFEFF<a>\u20AC</a>", false), "<a>\xE2\x82\xAC</a>"},
                    Encoded{"Utf16LittleEndianWithoutMark", Utf16(u"<a>\u20AC</a>", true), "<a>\xE2\x82\xAC</a>"},
                    Encoded{"Utf16BigEndianWithoutMark", Utf16(u"<a>\u20AC</a>", false), "<a>\xE2\x82\xAC</a>"},
                    Encoded{"Utf16Declared", Utf16(u"\uFEFF<?xml version='1.0' encoding='UTF-16'?><a/>", true),
                            "<?xml version='1.0' encoding='UTF-16'?><a/>"},
                    Encoded{"Empty", "", ""}),
    [](const auto& test) { return std::string(test.param.name); });

struct Undecodable
{
    const char* name;
    std::string bytes;
    const char* problem;
};

void PrintTo(const Undecodable& undecodable, std::ostream* pStream)
{
    *pStream << undecodable.name;
}

class XmlDecodingRefuses : public testing::TestWithParam<Undecodable>
{
};

TEST_P(XmlDecodingRefuses, WithTheFileAndTheProblem)
{
    std::string bytes = GetParam().bytes;
    const HRESULT hr = CATXMLTextCheck::DecodeBytes("file.xml", &bytes);
    ASSERT_TRUE(FAILED(hr));
    ASSERT_NE(ErrorOf(hr), nullptr);
    EXPECT_EQ(ErrorOf(hr)->GetSourceName(), "file.xml");
    EXPECT_EQ(ErrorOf(hr)->GetLine(), 1);
    EXPECT_THAT(ErrorOf(hr)->GetProblem().ConvertToChar(), HasSubstr(GetParam().problem));
}

INSTANTIATE_TEST_SUITE_P(
    Files, XmlDecodingRefuses,
    testing::Values(
        Undecodable{"UnknownEncoding", "<?xml version='1.0' encoding='EBCDIC-7'?><a/>", "\"ebcdic-7\""},
        Undecodable{"Utf32LittleEndian", std::string("\xFF\xFE\0\0<\0\0\0", 8), "UTF-32"},
        Undecodable{"Utf32BigEndian", std::string("\0\0\xFE\xFF\0\0\0<", 8), "UTF-32"},
        Undecodable{"Utf16DeclaredInUtf8", "<?xml version='1.0' encoding='UTF-16'?><a/>", "\"utf-16\""},
        Undecodable{"Utf8DeclaredInUtf16", Utf16(u"\uFEFF<?xml version='1.0' encoding='UTF-8'?><a/>", true),
                    "\"utf-8\""},
        Undecodable{"Latin1DeclaredBehindAUtf8Mark", "\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><a/>",
                    "\"iso-8859-1\""},
        Undecodable{"HalfAUtf16Unit", Utf16(u"\uFEFF<a/>", true) + "x", "UTF-16"},
        Undecodable{"LonelyHighSurrogate", Utf16(std::u16string_view(u"\uFEFF<a>\xD83D</a>"), true), "UTF-16"},
        Undecodable{"LonelyLowSurrogate", Utf16(std::u16string_view(u"\uFEFF<a>\xDE00</a>"), true), "UTF-16"},
        Undecodable{"NoAscii", "<?xml version='1.0' encoding='US-ASCII'?><a>\xE4</a>", "0xE4"}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
