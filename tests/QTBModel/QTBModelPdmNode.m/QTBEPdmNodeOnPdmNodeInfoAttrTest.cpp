#include <optional>

#include <gmock/gmock.h>

#include "QTBEPdmNodeOnPdmNode.h"
#include "QTBFaultyPdmSession.h"
#include "QTBINodeAttributes.h"
#include "QTBNameValueListAttr.h"
#include "QTBStringUtil.h"
#include "QTBTestLateType.h"
#include "TIEQTBIPdmNode.h"

using QTBDiagnosis::Assertion;
using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

// A has info attributes; the graph stamps every node that it reads with one of its own.
class PdmNodeInfoAttributes : public QTBFaultyPdmSession
{
protected:
    void SetUp() override
    {
        QTBFaultyPdmSession::SetUp();
        Update(Part("A", R"(<a name="QtbInfo" type="nvlist"><nv name="Text">some text</nv><nv name="Empty"/>)"
                         R"(<nv name="Mass" unit="kg" source="">1.5</nv></a>)"));
        m_spNode = PdmNode("A");
        m_BareType.Register<TIEQTBIPdmNode, QTBIPdmNode, QTBEPdmNodeOnPdmNode>();
    }

    void TearDown() override
    {
        m_spNode = NULL_var;
        QTBFaultyPdmSession::TearDown();
    }

    // A node without the list of info attributes.
    static QTBIPdmNode_var CreateNodeWithoutInfo()
    {
        CATBaseUnknown_var spNode;
        EXPECT_THAT(GetPdmNodeCont()->CreatePdmObjNode("K1", &spNode, FALSE), Succeeds());
        return spNode;
    }

    // The result of a read and what became of its out-values, which are "before" and 2 before it.
    template <class Value>
    struct Answer
    {
        HRESULT hr;
        Value value;
        unsigned char bIsDefined = 2;
    };

    // Whether the caller asks if the attribute is defined.
    enum Question
    {
        NotAsking,
        Asking
    };

    Answer<std::string> ReadText(const char* name, Question question = NotAsking, unsigned char bEmptyCounts = FALSE,
                                 unsigned char bPrint = FALSE) const
    {
        CATUnicodeString usValue("before");
        Answer<std::string> answer{};
        answer.bIsDefined = 2;
        answer.hr = m_spNode->GetQtbInfoAttr(name, &usValue, bPrint, question == Asking ? &answer.bIsDefined : nullptr,
                                             bEmptyCounts);
        answer.value = usValue.ConvertToChar();
        return answer;
    }

    Answer<std::vector<std::string>> ReadList(const char* name, Question question = NotAsking,
                                              unsigned char bEmptyCounts = FALSE) const
    {
        CATListValCATUnicodeString values;
        values.Append("before");
        Answer<std::vector<std::string>> answer{};
        answer.bIsDefined = 2;
        answer.hr = m_spNode->GetQtbInfoAttr(name, &values, FALSE, question == Asking ? &answer.bIsDefined : nullptr,
                                             bEmptyCounts);
        answer.value = TextsOf(values);
        return answer;
    }

    Answer<unsigned char> ReadFlag(const char* name, Question question = NotAsking,
                                   unsigned char bEmptyCounts = FALSE) const
    {
        Answer<unsigned char> answer{};
        answer.value = 2;
        answer.bIsDefined = 2;
        answer.hr = m_spNode->GetQtbInfoAttr(name, &answer.value, FALSE,
                                             question == Asking ? &answer.bIsDefined : nullptr, bEmptyCounts);
        return answer;
    }

    void Set(const char* name, const char* value) const
    {
        EXPECT_THAT(m_spNode->SetQtbInfoAttr(name, value), Succeeds());
    }

    QTBIPdmNode_var m_spNode;
    QTBTestLateType m_BareType{"TestBarePdmNode"};
};

} // namespace

TEST_F(PdmNodeInfoAttributes, AreReadAsText)
{
    const auto asked = ReadText("Text", Asking);
    EXPECT_THAT(asked.hr, Succeeds());
    EXPECT_EQ(asked.value, "some text");
    EXPECT_EQ(asked.bIsDefined, TRUE);
    const auto notAsked = ReadText("Text");
    EXPECT_THAT(notAsked.hr, Succeeds());
    EXPECT_EQ(notAsked.value, "some text");
}

TEST_F(PdmNodeInfoAttributes, WithAnEmptyValueAreNotDefinedUnlessEmptyValuesCount)
{
    EXPECT_THAT(ReadText("Empty").hr, FailsQuietly());
    const auto asked = ReadText("Empty", Asking);
    EXPECT_THAT(asked.hr, Succeeds());
    EXPECT_EQ(asked.bIsDefined, FALSE);
    EXPECT_EQ(asked.value, "");

    const auto counted = ReadText("Empty", NotAsking, TRUE);
    EXPECT_THAT(counted.hr, Succeeds());
    EXPECT_EQ(counted.value, "");
    EXPECT_EQ(ReadText("Empty", Asking, TRUE).bIsDefined, TRUE);
}

TEST_F(PdmNodeInfoAttributes, ThatAreUndefinedAreASuccessForACallerWhoAsks)
{
    for (const unsigned char bEmptyCounts : {FALSE, TRUE}) {
        const auto answer = ReadText("Other", Asking, bEmptyCounts);
        EXPECT_THAT(answer.hr, Succeeds());
        EXPECT_EQ(answer.bIsDefined, FALSE);
        EXPECT_EQ(answer.value, "");
    }
}

TEST_F(PdmNodeInfoAttributes, ThatAreUndefinedFailQuietlyForOneWhoDoesNot)
{
    for (const unsigned char bEmptyCounts : {FALSE, TRUE}) {
        const DebugCapture capture;
        const auto answer = ReadText("Other", NotAsking, bEmptyCounts);
        EXPECT_THAT(answer.hr, FailsQuietly());
        EXPECT_EQ(answer.value, "before");
        EXPECT_THAT(capture.Lines(), IsEmpty());
    }
}

TEST_F(PdmNodeInfoAttributes, CanBeAskedForWithoutReadingTheirValue)
{
    unsigned char bIsDefined = 2;
    CATUnicodeString* const pusNothing = nullptr;
    EXPECT_THAT(m_spNode->GetQtbInfoAttr("Text", pusNothing, FALSE, &bIsDefined, FALSE), Succeeds());
    EXPECT_EQ(bIsDefined, TRUE);
    EXPECT_THAT(m_spNode->GetQtbInfoAttr("Other", pusNothing, FALSE, &bIsDefined, FALSE), Succeeds());
    EXPECT_EQ(bIsDefined, FALSE);
    EXPECT_THAT(m_spNode->GetQtbInfoAttr("Text", pusNothing, FALSE, nullptr, FALSE), Succeeds());
    EXPECT_THAT(m_spNode->GetQtbInfoAttr("Other", pusNothing, FALSE, nullptr, FALSE), FailsQuietly());
}

TEST_F(PdmNodeInfoAttributes, ThatAreUndefinedAreWrittenToTheDebugOutputOnRequest)
{
    const DebugCapture capture;
    EXPECT_THAT(ReadText("Other", NotAsking, FALSE, TRUE).hr, FailsQuietly());
    ASSERT_FALSE(capture.Lines().empty());
    EXPECT_EQ(capture.Lines().front(), "QTBEPdmNodeOnPdmNode::PrintAttributeDoesNotExistError -> QTB Info attribute "
                                       "'Other' not found on node 'A");
    EXPECT_THAT(capture.Lines(), Contains(HasSubstr("QtbInfo"))) << "the attributes of the node";
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture), IsEmpty());
}

TEST_F(PdmNodeInfoAttributes, ThatAreDefinedOrAskedForAreNotWritten)
{
    const DebugCapture capture;
    ReadText("Text", NotAsking, FALSE, TRUE);
    ReadText("Other", Asking, FALSE, TRUE);
    EXPECT_THAT(capture.Lines(), IsEmpty());
}

TEST_F(PdmNodeInfoAttributes, WhatKeepsAMissingOneFromBeingWrittenIsNamed)
{
    {
        const QTBFault fault("GetKey", m_spNode);
        EXPECT_THAT(DiagnosisOf([&] { return ReadText("Other", NotAsking, FALSE, TRUE).hr; }),
                    ElementsAre(Call("spINodeAttributesOnThis->GetKey"), Call("PrintAttributeDoesNotExistError")));
    }
    const QTBFault fault("GetAllAttributeNames", m_spNode);
    const DebugCapture capture;
    EXPECT_THAT(ReadText("Other", NotAsking, FALSE, TRUE).hr, FailsQuietly());
    EXPECT_THAT(capture.Lines(),
                ElementsAre("QTBEPdmNodeOnPdmNode::PrintAttributeDoesNotExistError -> QTB Info attribute 'Other' not "
                            "found on node 'A",
                            "QTBEPdmNodeOnPdmNode::PrintAttributeDoesNotExistError -> "
                            "QTBTraceUtil::PrintQtbAttributes !"));
}

TEST_F(PdmNodeInfoAttributes, AMissingOneCanBeWrittenByItself)
{
    auto* pExtension = QTBExtensionBehind<QTBEPdmNodeOnPdmNode, TIEQTBIPdmNode>(m_spNode);
    ASSERT_NE(pExtension, nullptr);
    const DebugCapture capture;
    EXPECT_THAT(pExtension->PrintAttributeDoesNotExistError("Other"), Succeeds());
    EXPECT_THAT(capture.Lines(),
                Contains("QTBEPdmNodeOnPdmNode::PrintAttributeDoesNotExistError -> QTB Info attribute 'Other' not "
                         "found on node 'A"));
    const QTBIPdmNode_var spBare(m_BareType.Create());
    auto* pBareExtension = QTBExtensionBehind<QTBEPdmNodeOnPdmNode, TIEQTBIPdmNode>(spBare);
    EXPECT_THAT(pBareExtension->PrintAttributeDoesNotExistError("Other"), LacksInterface("spINodeAttributesOnThis"));
}

TEST_F(PdmNodeInfoAttributes, NeedANameAPlaceAndAList)
{
    CATUnicodeString usText;
    unsigned char bIsDefined = 2;
    EXPECT_THAT(m_spNode->GetQtbInfoAttr("", &usText, FALSE, &bIsDefined, TRUE), FailsAssertion("usAttrName != \"\""));
    EXPECT_EQ(bIsDefined, 2);
    EXPECT_THAT(m_spNode->GetQtbInfoAttr("Text", static_cast<unsigned char*>(nullptr), FALSE, nullptr, FALSE),
                FailsAssertion("pbAttrValue != NULL"));
    EXPECT_THAT(
        m_spNode->GetQtbInfoAttr("Text", static_cast<CATListValCATUnicodeString*>(nullptr), FALSE, nullptr, FALSE),
        FailsAssertion("pAttrValues != NULL"));
    EXPECT_THAT(QTBIPdmNode_var(m_BareType.Create())->GetQtbInfoAttr("Text", &usText, FALSE, &bIsDefined, FALSE),
                LacksInterface("spINodeAttributesOnThis"));

    const QTBIPdmNode_var spWithout = CreateNodeWithoutInfo();
    const DebugCapture capture;
    EXPECT_THAT(spWithout->GetQtbInfoAttr("Text", &usText, FALSE, &bIsDefined, FALSE),
                FailsWithMessage("AttributeNotDefinedERR_2001"));
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture),
                ElementsAre(Call("spINodeAttributesOnThis->GetNameValueListAttributePtr")));
    EXPECT_EQ(bIsDefined, 2);
}

TEST_F(PdmNodeInfoAttributes, AreTheEntriesOfTheListQtbInfo)
{
    Set("Text", "other text");
    Set("New", "new text");
    QTBNameValueListAttr* pQtbInfo = nullptr;
    ASSERT_THAT(QTBINodeAttributes_var(m_spNode)->GetNameValueListAttributePtr("QtbInfo", &pQtbInfo), Succeeds());
    CATUnicodeString usValue;
    EXPECT_THAT(pQtbInfo->GetNvValue("Text", &usValue), Succeeds());
    EXPECT_EQ(usValue, "other text");
    EXPECT_THAT(pQtbInfo->GetNvValue("New", &usValue), Succeeds());
    EXPECT_EQ(usValue, "new text");
    EXPECT_THAT(pQtbInfo->SetNvValue("New", "newer text"), Succeeds());
    EXPECT_EQ(ReadText("New").value, "newer text");
}

TEST_F(PdmNodeInfoAttributes, CanBeEmptied)
{
    Set("Text", "");
    EXPECT_EQ(ReadText("Text", Asking).bIsDefined, FALSE);
    EXPECT_EQ(ReadText("Text", Asking, TRUE).bIsDefined, TRUE);
}

TEST_F(PdmNodeInfoAttributes, AreSetUnderANameInAListThatIsThere)
{
    EXPECT_THAT(m_spNode->SetQtbInfoAttr("", "text"), FailsAssertion("usAttrName != \"\""));
    EXPECT_THAT(QTBIPdmNode_var(m_BareType.Create())->SetQtbInfoAttr("Text", "text"),
                LacksInterface("spINodeAttributesOnThis"));
    const QTBIPdmNode_var spWithout = CreateNodeWithoutInfo();
    const DebugCapture capture;
    EXPECT_THAT(spWithout->SetQtbInfoAttr("Text", "text"), FailsWithMessage("AttributeNotDefinedERR_2001"));
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture),
                ElementsAre(Call("spINodeAttributesOnThis->GetNameValueListAttributePtr")));
}

TEST_F(PdmNodeInfoAttributes, AreReadAsList)
{
    CATListValCATUnicodeString items;
    for (const char* item : {"Oslo", "Rome; New York", ""}) {
        items.Append(item);
    }
    CATUnicodeString usText;
    ASSERT_THAT(QTBStringUtil::MakeQtbInfoListAttrString(items, &usText), Succeeds());
    Set("Sites", usText.ConvertToChar());
    const auto answer = ReadList("Sites", Asking);
    EXPECT_THAT(answer.hr, Succeeds());
    EXPECT_THAT(answer.value, ElementsAre("Oslo", "Rome; New York", ""));
    EXPECT_EQ(answer.bIsDefined, TRUE);
    EXPECT_THAT(ReadList("Text").value, ElementsAre("some text"));
}

TEST_F(PdmNodeInfoAttributes, ThatAreUndefinedAreAnEmptyListForACallerWhoAsks)
{
    const auto answer = ReadList("Other", Asking);
    EXPECT_THAT(answer.hr, Succeeds());
    EXPECT_THAT(answer.value, IsEmpty());
    EXPECT_EQ(answer.bIsDefined, FALSE);
    const auto counted = ReadList("Empty", Asking, TRUE);
    EXPECT_THAT(counted.hr, Succeeds());
    EXPECT_THAT(counted.value, IsEmpty());
    EXPECT_EQ(counted.bIsDefined, TRUE);
}

TEST_F(PdmNodeInfoAttributes, ThatAreUndefinedFailAsListAndAsFlagWithTheNameOfTheCall)
{
    EXPECT_THAT(DiagnosisOf([&] { return ReadList("Other").hr; }), ElementsAre(Call("GetQtbInfoAttr")));
    EXPECT_THAT(DiagnosisOf([&] { return ReadFlag("Other").hr; }), ElementsAre(Call("GetQtbInfoAttr")));
    EXPECT_THAT(DiagnosisOf([&] { return ReadFlag("").hr; }),
                ElementsAre(Assertion("usAttrName != \"\""), Call("GetQtbInfoAttr")));
    EXPECT_THAT(DiagnosisOf([&] { return ReadList("").hr; }),
                ElementsAre(Assertion("usAttrName != \"\""), Call("GetQtbInfoAttr")));
    EXPECT_THAT(ReadList("Other").value, IsEmpty());
    EXPECT_EQ(ReadFlag("Other").value, 2);
}

TEST_F(PdmNodeInfoAttributes, AreReadAsFlagInThreeSpellings)
{
    for (const char* spelling : {"true", "True", "TRUE"}) {
        Set("Flag", spelling);
        const auto answer = ReadFlag("Flag", Asking);
        EXPECT_THAT(answer.hr, Succeeds()) << spelling;
        EXPECT_EQ(answer.value, TRUE) << spelling;
        EXPECT_EQ(answer.bIsDefined, TRUE);
    }
    for (const char* spelling : {"false", "False", "FALSE"}) {
        Set("Flag", spelling);
        const auto answer = ReadFlag("Flag");
        EXPECT_THAT(answer.hr, Succeeds()) << spelling;
        EXPECT_EQ(answer.value, FALSE) << spelling;
    }
}

TEST_F(PdmNodeInfoAttributes, WithAnyOtherTextAreNoFlags)
{
    for (const char* text : {"tRUE", "1", "yes", " true", "true "}) {
        Set("Flag", text);
        const DebugCapture capture;
        const auto answer = ReadFlag("Flag");
        EXPECT_THAT(answer.hr, FailsQuietly()) << text;
        EXPECT_EQ(answer.value, 2);
        EXPECT_THAT(capture.Lines(),
                    ElementsAre("QTBEPdmNodeOnPdmNode::GetQtbInfoAttr -> expected boolean value (\"true\" or "
                                "\"false\", for \"Flag\" got \"" +
                                std::string(text)));
    }
}

TEST_F(PdmNodeInfoAttributes, ThatAreUndefinedAreNoFlagsForACallerWhoAsksEither)
{
    const DebugCapture capture;
    const auto answer = ReadFlag("Other", Asking);
    EXPECT_THAT(answer.hr, FailsQuietly());
    EXPECT_EQ(answer.bIsDefined, FALSE);
    EXPECT_EQ(answer.value, 2);
    EXPECT_THAT(capture.Lines(), ElementsAre("QTBEPdmNodeOnPdmNode::GetQtbInfoAttr -> expected boolean value (\"true\" "
                                             "or \"false\", for \"Other\" got \""));
}

TEST_F(PdmNodeInfoAttributes, HaveFurtherXmlAttributes)
{
    CATUnicodeString usValue("before");
    EXPECT_THAT(m_spNode->GetQtbInfoAttrXmlAttrVal("Mass", "unit", &usValue), Succeeds());
    EXPECT_EQ(usValue, "kg");
    EXPECT_THAT(m_spNode->GetQtbInfoAttrXmlAttrVal("Mass", "source", &usValue), Succeeds());
    EXPECT_EQ(usValue, "");
}

TEST_F(PdmNodeInfoAttributes, AnswerAnEmptyTextForAnXmlAttributeThatTheyDoNotHave)
{
    for (const char* name : {"Mass", "Text", "Empty"}) {
        CATUnicodeString usValue("before");
        EXPECT_THAT(m_spNode->GetQtbInfoAttrXmlAttrVal(name, "other", &usValue), Succeeds());
        EXPECT_EQ(usValue, "");
    }
}

TEST_F(PdmNodeInfoAttributes, ThatAreUndefinedHaveNoXmlAttributes)
{
    CATUnicodeString usValue("before");
    const DebugCapture capture;
    EXPECT_THAT(m_spNode->GetQtbInfoAttrXmlAttrVal("Other", "unit", &usValue), FailsQuietly());
    EXPECT_THAT(m_spNode->GetQtbInfoAttrXmlAttrVal("", "unit", &usValue), FailsQuietly());
    EXPECT_EQ(usValue, "before");
    EXPECT_THAT(capture.Lines(), IsEmpty());
}

TEST_F(PdmNodeInfoAttributes, WhatKeepsAnXmlAttributeFromBeingReadIsNamed)
{
    CATUnicodeString usValue;
    EXPECT_THAT(m_spNode->GetQtbInfoAttrXmlAttrVal("Mass", "unit", nullptr), FailsAssertion("pusXmlAttrValue != NULL"));
    EXPECT_THAT(QTBIPdmNode_var(m_BareType.Create())->GetQtbInfoAttrXmlAttrVal("Mass", "unit", &usValue),
                LacksInterface("spINodeAttributesOnThis"));
    const QTBIPdmNode_var spWithout = CreateNodeWithoutInfo();
    const DebugCapture capture;
    EXPECT_THAT(spWithout->GetQtbInfoAttrXmlAttrVal("Mass", "unit", &usValue),
                FailsWithMessage("AttributeNotDefinedERR_2001"));
    EXPECT_THAT(QTBDiagnosis::DiagnosesIn(capture),
                ElementsAre(Call("spINodeAttributesOnThis->GetNameValueListAttributePtr")));
}

TEST_F(PdmNodeInfoAttributes, AreNotWhatTheGeneralGettersGive)
{
    unsigned char flag = 2;
    unsigned char bIsDefined = 2;
    CATUnicodeString text("before");
    CATListValCATUnicodeString texts;
    const DebugCapture capture;
    for (unsigned char* pbIsDefined : {static_cast<unsigned char*>(nullptr), &bIsDefined}) {
        EXPECT_THAT(m_spNode->GetQtbAttr("Text", &flag, TRUE, pbIsDefined, TRUE), FailsQuietly());
        EXPECT_THAT(m_spNode->GetQtbAttr("Text", &texts, TRUE, pbIsDefined, TRUE), FailsQuietly());
        EXPECT_THAT(m_spNode->GetQtbAttr("Text", &text, TRUE, pbIsDefined, TRUE), FailsQuietly());
        EXPECT_THAT(m_spNode->GetQtbAttr("", &text, TRUE, pbIsDefined, TRUE), FailsQuietly());
    }
    EXPECT_EQ(flag, 2);
    EXPECT_EQ(bIsDefined, 2);
    EXPECT_EQ(text, "before");
    EXPECT_THAT(capture.Lines(), IsEmpty());
    EXPECT_THAT(m_spNode->GetQtbAttr("Text", static_cast<unsigned char*>(nullptr), FALSE, nullptr, FALSE),
                FailsAssertion("pbAttrValue != NULL"));
    EXPECT_THAT(m_spNode->GetQtbAttr("Text", static_cast<CATListValCATUnicodeString*>(nullptr), FALSE, nullptr, FALSE),
                FailsAssertion("pAttrValues != NULL"));
    EXPECT_THAT(m_spNode->GetQtbAttr("Text", static_cast<CATUnicodeString*>(nullptr), FALSE, nullptr, FALSE),
                FailsAssertion("pusAttrValue != NULL"));
}
