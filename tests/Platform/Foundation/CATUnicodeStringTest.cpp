#include "CATUnicodeString.h"

#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

#include <gmock/gmock.h>

namespace {

// Six characters of one, two, three and four bytes.
constexpr const char* MIXED = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80zb";
constexpr const char* REPLACEMENT = "\xEF\xBF\xBD";

} // namespace

TEST(CATUnicodeStringTest, ADefaultStringIsEmpty)
{
    const CATUnicodeString usText;
    EXPECT_TRUE(usText.IsEmpty());
    EXPECT_EQ(usText.GetLengthInChar(), 0);
    EXPECT_EQ(usText.GetLengthInByte(), 0U);
    EXPECT_STREQ(usText.ConvertToChar(), "");
}

TEST(CATUnicodeStringTest, ANullPointerGivesTheEmptyString)
{
    const char* pNothing = nullptr;
    EXPECT_TRUE(CATUnicodeString(pNothing).IsEmpty());
    CATUnicodeString usText("a");
    usText += pNothing;
    EXPECT_EQ(usText, "a");
}

TEST(CATUnicodeStringTest, LengthsCountCharactersNotBytes)
{
    const CATUnicodeString usText(MIXED);
    EXPECT_EQ(usText.GetLengthInChar(), 6);
    EXPECT_EQ(usText.GetLengthInByte(), 12U);
}

TEST(CATUnicodeStringTest, ALengthFollowsTheTextThatItBelongsTo)
{
    CATUnicodeString usText("\xC3\xA4");
    EXPECT_EQ(usText.GetLengthInChar(), 1);
    usText += "\xC3\xB6x";
    EXPECT_EQ(usText.GetLengthInChar(), 3);
    usText = "";
    EXPECT_EQ(usText.GetLengthInChar(), 0);
}

TEST(CATUnicodeStringTest, ASearchAnswersAPositionInCharacters)
{
    const CATUnicodeString usText("\xC3\xA4\xC3\xA4x\xE2\x82\xACx");
    EXPECT_EQ(usText.SearchSubString("x"), 2);
    EXPECT_EQ(usText.SearchSubString("x", 3), 4);
    EXPECT_EQ(usText.SearchSubString("\xE2\x82\xAC"), 3);
    EXPECT_EQ(usText.SearchSubString("y"), -1);
}

TEST(CATUnicodeStringTest, ASearchFromOutsideTheTextFindsNothing)
{
    const CATUnicodeString usText("abc");
    EXPECT_EQ(usText.SearchSubString("a", -1), -1);
    EXPECT_EQ(usText.SearchSubString("c", 4), -1);
    EXPECT_EQ(usText.SearchSubString("abcd"), -1);
    EXPECT_EQ(CATUnicodeString().SearchSubString("a"), -1);
}

TEST(CATUnicodeStringTest, ASubStringIsTakenByCharacters)
{
    const CATUnicodeString usText(MIXED);
    EXPECT_EQ(usText.SubString(1, 3), "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(usText.SubString(0, 6), MIXED);
    EXPECT_EQ(usText.SubString(5, 1), "b");
}

TEST(CATUnicodeStringTest, ASubStringLeavesOutWhatLiesOutsideTheText)
{
    const CATUnicodeString usText(MIXED);
    EXPECT_EQ(usText.SubString(4, 100), "zb");
    EXPECT_EQ(usText.SubString(4, std::numeric_limits<int>::max()), "zb");
    EXPECT_EQ(usText.SubString(6, 1), "");
    EXPECT_EQ(usText.SubString(100, 1), "");
    EXPECT_EQ(usText.SubString(-1, 2), "");
    EXPECT_EQ(usText.SubString(1, 0), "");
    EXPECT_EQ(usText.SubString(1, -1), "");
}

TEST(CATUnicodeStringTest, InvalidBytesAreReplacedSoThatAStringHoldsValidText)
{
    EXPECT_EQ(CATUnicodeString("a\xFFz"), (std::string("a") + REPLACEMENT + "z").c_str());
    // A sequence that breaks off, an overlong form and a surrogate.
    EXPECT_THAT(CATUnicodeString("a\xE2\x82").ConvertToChar(), testing::StartsWith(std::string("a") + REPLACEMENT));
    EXPECT_THAT(CATUnicodeString("\xC0\xAF").ConvertToChar(), testing::HasSubstr(REPLACEMENT));
    EXPECT_THAT(CATUnicodeString("\xED\xA0\x80").ConvertToChar(), testing::HasSubstr(REPLACEMENT));
    CATUnicodeString usAppended("a");
    usAppended += "\xFF";
    EXPECT_EQ(usAppended, (std::string("a") + REPLACEMENT).c_str());
}

TEST(CATUnicodeStringTest, AViewMayHoldANullCharacter)
{
    const CATUnicodeString usText(std::string_view("a\0b", 3));
    EXPECT_EQ(usText.GetLengthInChar(), 3);
    EXPECT_EQ(usText.View(), std::string_view("a\0b", 3));
}

TEST(CATUnicodeStringTest, ACopyKeepsItsTextWhenTheOriginalChanges)
{
    CATUnicodeString usOriginal("part");
    const CATUnicodeString usCopy(usOriginal);
    usOriginal += "-1";
    EXPECT_EQ(usCopy, "part");
    EXPECT_EQ(usOriginal, "part-1");
}

TEST(CATUnicodeStringTest, AnOriginalKeepsItsTextWhenTheCopyChanges)
{
    const CATUnicodeString usOriginal("part");
    CATUnicodeString usCopy;
    usCopy = usOriginal;
    usCopy += "-1";
    EXPECT_EQ(usOriginal, "part");
    usCopy.BuildFromNum(7);
    EXPECT_EQ(usCopy, "7");
    EXPECT_EQ(usOriginal, "part");
}

TEST(CATUnicodeStringTest, AStringCanBeAssignedAndAppendedToItself)
{
    CATUnicodeString usText("ab");
    const CATUnicodeString& usSame = usText;
    usText = usSame;
    EXPECT_EQ(usText, "ab");
    usText += usSame;
    EXPECT_EQ(usText, "abab");
    usText.Append(usSame);
    EXPECT_EQ(usText, "abababab");
}

TEST(CATUnicodeStringTest, AStringCanAppendAPieceOfItsOwnText)
{
    CATUnicodeString usText("a long text that does not fit twice into the room that it has");
    const std::string before = usText.ConvertToChar();
    usText += usText.ConvertToChar();
    EXPECT_EQ(usText, (before + before).c_str());
}

TEST(CATUnicodeStringTest, AMovedStringKeepsItsText)
{
    CATUnicodeString usFirst("first");
    CATUnicodeString usSecond(std::move(usFirst));
    EXPECT_EQ(usSecond, "first");
    CATUnicodeString usThird("third");
    usThird = std::move(usSecond);
    EXPECT_EQ(usThird, "first");
}

TEST(CATUnicodeStringTest, ANumberIsBuiltInItsDecimalForm)
{
    CATUnicodeString usText("before");
    usText.BuildFromNum(0);
    EXPECT_EQ(usText, "0");
    usText.BuildFromNum(-17);
    EXPECT_EQ(usText, "-17");
    usText.BuildFromNum(std::numeric_limits<int>::max());
    EXPECT_EQ(usText, "2147483647");
    usText.BuildFromNum(std::numeric_limits<int>::min());
    EXPECT_EQ(usText, "-2147483648");
}

TEST(CATUnicodeStringTest, TextsAreComparedByContent)
{
    const CATUnicodeString usText("K1");
    EXPECT_TRUE(usText == CATUnicodeString("K1"));
    EXPECT_TRUE(usText != CATUnicodeString("k1"));
    EXPECT_TRUE(usText == "K1");
    EXPECT_TRUE(usText != "K");
    EXPECT_TRUE(CATUnicodeString() == "");
    EXPECT_TRUE(CATUnicodeString("a") < CATUnicodeString("b"));
    EXPECT_TRUE(CATUnicodeString("a") < CATUnicodeString("ab"));
    EXPECT_FALSE(CATUnicodeString("b") < CATUnicodeString("a"));
}

TEST(CATUnicodeStringTest, EqualTextsHaveEqualHashes)
{
    const std::hash<CATUnicodeString> hash;
    CATUnicodeString usBuilt("PAR");
    usBuilt += "T-1";
    EXPECT_EQ(hash(usBuilt), hash(CATUnicodeString("PART-1")));
    std::unordered_map<CATUnicodeString, int> numbers{{"PART-1", 1}, {"PART-2", 2}};
    EXPECT_EQ(numbers.at(usBuilt), 1);
}

TEST(CATUnicodeStringTest, SumsPutTextsTogether)
{
    const CATUnicodeString usMiddle("b");
    EXPECT_EQ(usMiddle + usMiddle, "bb");
    EXPECT_EQ("a" + usMiddle, "ab");
    EXPECT_EQ(usMiddle + "c", "bc");
    EXPECT_EQ("a" + usMiddle + "c" + usMiddle, "abcb");
    EXPECT_EQ(usMiddle, "b");
}

TEST(CATUnicodeStringTest, AStringIsWrittenToAStreamAsItStands)
{
    std::ostringstream stream;
    stream << '[' << CATUnicodeString(MIXED) << ']' << CATUnicodeString();
    EXPECT_EQ(stream.str(), std::string("[") + MIXED + "]");
}

TEST(CATUnicodeStringTest, ReservingRoomChangesNothingOfTheText)
{
    CATUnicodeString usText("part");
    const CATUnicodeString usCopy(usText);
    usText.Reserve(1000);
    EXPECT_EQ(usText, "part");
    usText.Reserve(1);
    usText += "-1";
    EXPECT_EQ(usText, "part-1");
    EXPECT_EQ(usCopy, "part");
    CATUnicodeString usEmpty;
    usEmpty.Reserve(100);
    EXPECT_TRUE(usEmpty.IsEmpty());
    EXPECT_STREQ(usEmpty.ConvertToChar(), "");
}

// A text and copies of it at different times, beside texts that share nothing.
TEST(CATUnicodeStringTest, RandomWorkOnSharedTextsAgreesWithUnsharedTexts)
{
    std::mt19937 random(20);
    std::vector<CATUnicodeString> texts(5);
    std::vector<std::u32string> expected(5);
    const char* const pieces[] = {"a", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"};
    const std::u32string characters = U"a\u00E4\u20AC\U0001F600";
    for (int step = 0; step < 5000; ++step) {
        const std::size_t i = random() % texts.size();
        const std::size_t j = random() % texts.size();
        switch (random() % 5) {
        case 0:
            texts[i] = texts[j];
            expected[i] = expected[j];
            break;
        case 1:
            if (expected[i].size() + expected[j].size() < 200) {
                texts[i] += texts[j];
                expected[i] += std::u32string(expected[j]);
            }
            break;
        case 2: {
            const int start = static_cast<int>(random() % 12);
            const int length = static_cast<int>(random() % 12);
            texts[i] = texts[j].SubString(start, length);
            expected[i] = static_cast<std::size_t>(start) <= expected[j].size()
                              ? expected[j].substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length))
                              : std::u32string();
            break;
        }
        default: {
            const std::size_t piece = random() % 4;
            texts[i] += pieces[piece];
            expected[i] += characters[piece];
        }
        }
        ASSERT_EQ(texts[i].GetLengthInChar(), static_cast<int>(expected[i].size())) << "step " << step;
        for (std::size_t k = 0; k < expected[i].size(); k += 7) {
            const auto piece = characters.find(expected[i][k]);
            ASSERT_EQ(texts[i].SubString(static_cast<int>(k), 1), pieces[piece]) << "step " << step;
        }
    }
}
