#include "CATXMLStrictElement.h"

#include <functional>

#include <gtest/gtest.h>

#include "CATXMLDocumentFactory.h"

namespace {

constexpr const char* XML = "<a x='1' flag='true' odd='maybe' empty=''> <b/><c>text</c></a>";

class XmlStrictElement : public testing::Test
{
protected:
    XmlStrictElement()
    {
        EXPECT_EQ(CATXMLDocumentFactory::ReadText(XML, "text", &m_spDocument), S_OK);
        EXPECT_EQ(m_spDocument->GetDocumentElement(&m_spRoot), S_OK);
        m_Root = CATXMLStrictElement(m_spRoot->GetView());
    }

    // The refusal that an operation raises, as "offset: problem; expected".
    static std::string RefusalOf(const std::function<void()>& operation)
    {
        try {
            operation();
        } catch (const CATXMLRefusal& refusal) {
            return std::to_string(refusal.offset) + ": " + refusal.problem.ConvertToChar() + "; " +
                   refusal.expected.ConvertToChar();
        }
        return "none";
    }

    CATIDOMDocument_var m_spDocument;
    CATIDOMElement_var m_spRoot;
    CATXMLStrictElement m_Root;
};

TEST_F(XmlStrictElement, GivesAttributesAndTheirDefaults)
{
    EXPECT_EQ(m_Root.GetText("x"), "1");
    EXPECT_EQ(m_Root.GetName("x"), "1");
    EXPECT_EQ(m_Root.GetText("none"), "");
    EXPECT_TRUE(m_Root.GetFlag("flag", false));
    EXPECT_TRUE(m_Root.GetFlag("none", true));
    EXPECT_TRUE(m_Root.Has("empty"));
    EXPECT_FALSE(m_Root.Has("none"));
    EXPECT_EQ(m_Root.GetFirstChild().GetNextSibling().GetContent(), "text");
    EXPECT_FALSE(m_Root.GetFirstChild().GetNextSibling().GetNextSibling());
}

TEST_F(XmlStrictElement, AcceptsWhatIsOfItsForm)
{
    EXPECT_EQ(RefusalOf([this] { m_Root.CheckForm({"x", "flag", "odd", "empty"}, {"b", "c"}); }), "none");
    EXPECT_EQ(RefusalOf([this] { m_Root.GetFirstChild().GetNextSibling().CheckForm({}, {}, true); }), "none");
}

TEST_F(XmlStrictElement, RefusesWhatIsNotOfItsFormWhereItStands)
{
    EXPECT_EQ(RefusalOf([this] {
                  m_Root.CheckForm({"x", "flag", "odd"}, {"b", "c"});
              }),
              "33: the attribute \"empty\" of the element \"a\"; \"x\", \"flag\" or \"odd\"");
    EXPECT_EQ(RefusalOf([this] {
                  m_Root.CheckForm({"x", "flag", "odd", "empty"}, {"b"});
              }),
              "47: the element \"c\" in the element \"a\"; <b>");
    EXPECT_EQ(RefusalOf([this] { m_Root.GetFirstChild().GetNextSibling().CheckForm({}, {}); }),
              "47: text in the element \"c\"; attributes and elements only");
    EXPECT_EQ(RefusalOf([this] { m_Root.GetName("none"); }),
              "0: the element \"a\" has no attribute \"none\"; none=\"...\"");
    EXPECT_EQ(RefusalOf([this] { m_Root.GetName("empty"); }),
              "33: the value \"\" of the attribute \"empty\"; a text that is not empty");
    EXPECT_EQ(RefusalOf([this] { m_Root.GetFlag("odd", true); }),
              "21: the value \"maybe\" of the attribute \"odd\"; \"true\" or \"false\"");
}

TEST_F(XmlStrictElement, TakesWholeNumbersBetweenTheirBounds)
{
    EXPECT_EQ(m_Root.GetInteger("none", -1, 0, 9), -1);
    EXPECT_EQ(m_Root.GetInteger("x", -1, 1, 1), 1);
    EXPECT_EQ(RefusalOf([this] { m_Root.GetInteger("x", -1, 2, 9); }),
              "3: the value \"1\" of the attribute \"x\"; a whole number from 2 to 9");
    EXPECT_EQ(RefusalOf([this] { m_Root.GetInteger("odd", -1, 0, 9); }),
              "21: the value \"maybe\" of the attribute \"odd\"; a whole number from 0 to 9");
}

TEST_F(XmlStrictElement, RefusesWhatMayStandOnce)
{
    const CATXMLStrictElement b = m_Root.GetFirstChild();
    EXPECT_EQ(RefusalOf([&b] { b.RefuseSecond(false); }), "none");
    EXPECT_EQ(RefusalOf([&b] { b.RefuseSecond(true); }), "43: a second element \"b\"; one at most");
    EXPECT_EQ(RefusalOf([&b] { b.RefuseSecondName(false); }), "none");
}

TEST_F(XmlStrictElement, CutsLongTextsInMessages)
{
    EXPECT_EQ(CATXMLStrictElement::Quote(std::string(60, 'x')), ("\"" + std::string(60, 'x') + "\"").c_str());
    EXPECT_EQ(CATXMLStrictElement::Quote(std::string(61, 'x')), ("\"" + std::string(60, 'x') + "...\"").c_str());
}

} // namespace
