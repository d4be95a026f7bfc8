#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "CATInstantiateComponent.h"
#include "QTBENodeAttributesOnNode.h"
#include "QTBFaultyExtensions.h"
#include "QTBINodeAttributes.h"
#include "QTBLoadManager.h"
#include "QTBMatchers.h"
#include "QTBTestSession.h"
#include "QTBTraceUtil.h"
#include "QTBXmlElement.h"

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

CATListValCATUnicodeString List(std::initializer_list<const char*> texts)
{
    CATListValCATUnicodeString list;
    for (const char* text : texts) {
        list.Append(text);
    }
    return list;
}

class NodeAttributesOutputTest : public QTBTestSession
{
protected:
    static CATBaseUnknown_var Create(const char* lateType, const char* key)
    {
        void* pv = nullptr;
        EXPECT_EQ(::CATInstantiateComponent(lateType, CLSID_CATBaseUnknown, &pv), S_OK);
        const auto spNode = CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pv));
        EXPECT_THAT(QTBINodeAttributes_var(spNode)->SetKey(key), Succeeds());
        return spNode;
    }

    // A PDM object node with that record.
    static QTBINodeAttributes_var Read(const char* record)
    {
        const QTBINodeAttributes_var spNode = Create("QTBPdmObjNode", "K1");
        EXPECT_THAT(spNode->SetXmlElement(ReadXmlElement(record)), Succeeds());
        return spNode;
    }

    static std::string Write(const QTBINodeAttributes_var& spNode, const char* inner = "",
                             const char* tagAttributes = "", const char* tag = "o")
    {
        CATUnicodeString usXml;
        EXPECT_THAT(spNode->ToXmlString(&usXml, inner, tagAttributes, tag), Succeeds());
        return std::string(usXml.View());
    }
};

} // namespace

TEST_F(NodeAttributesOutputTest, ANodeIsAppendedAsItsTagsAroundItsAttributes)
{
    CATUnicodeString usXml("before");
    EXPECT_THAT(Read("<o><a name=\"Name\">Bracket</a></o>")->ToXmlString(&usXml, "", "", "o"), Succeeds());
    EXPECT_EQ(usXml, "before<o><a name=\"Name\">Bracket</a></o>");
}

TEST_F(NodeAttributesOutputTest, ANodeWithoutAttributesIsWrittenWithBothTags)
{
    EXPECT_EQ(Write(Read("<o/>"), "", "", "r"), "<r></r>");
}

TEST_F(NodeAttributesOutputTest, TagAttributesAndInnerTextAreWrittenVerbatim)
{
    EXPECT_EQ(Write(Read("<o><a name=\"Name\">Bracket</a></o>"), "<x>&</x>", " id=\"1\" raw=<", "o"),
              "<o id=\"1\" raw=<><a name=\"Name\">Bracket</a><x>&</x></o>");
}

TEST_F(NodeAttributesOutputTest, AVersionFlagIsWrittenInsideTheOpeningTagFollowedByABlank)
{
    const QTBINodeAttributes_var spNode =
        Read("<o><a name=\"QtbInfo\" type=\"nvlist\"><nv name=\"QtbCreateNewVersion\">true</nv></a></o>");
    CATUnicodeString usXml;
    EXPECT_THAT(spNode->ToXmlString(CATListValCATUnicodeString(), &usXml, "", "", "o"), Succeeds());
    EXPECT_EQ(usXml, "<o QtbCreateNewVersion=\"true\" ></o>");
}

TEST_F(NodeAttributesOutputTest, BothVersionFlagsStandInTheirOrderInFrontOfTheTagAttributes)
{
    const QTBINodeAttributes_var spNode =
        Read("<o><a name=\"QtbInfo\" type=\"nvlist\"><nv name=\"QtbCreatedNewRevision\">B</nv>"
             "<nv name=\"QtbOther\">1</nv><nv name=\"QtbCreateNewVersion\">true</nv></a></o>");
    CATUnicodeString usXml;
    EXPECT_THAT(spNode->ToXmlString(CATListValCATUnicodeString(), &usXml, "inner", " id=\"1\"", "o"), Succeeds());
    EXPECT_EQ(usXml, "<o QtbCreateNewVersion=\"true\"  QtbCreatedNewRevision=\"B\"  id=\"1\">inner</o>");
}

TEST_F(NodeAttributesOutputTest, NothingOfAVersionFlagIsEscaped)
{
    const QTBINodeAttributes_var spNode =
        Read("<o><a name=\"QtbInfo\" type=\"nvlist\"><nv name=\"QtbCreatedNewRevision\">&lt;&amp;\"&gt;</nv></a></o>");
    CATUnicodeString usXml;
    EXPECT_THAT(spNode->ToXmlString(CATListValCATUnicodeString(), &usXml, "", "", "o"), Succeeds());
    EXPECT_EQ(usXml, "<o QtbCreatedNewRevision=\"<&\">\" ></o>");
}

TEST_F(NodeAttributesOutputTest, OnlyTheRequestedAttributesAreWrittenInTheRequestedOrder)
{
    const QTBINodeAttributes_var spNode =
        Read("<o><a name=\"A\">1</a><a name=\"B\" type=\"list\"><v>2</v></a><a name=\"C\">3</a></o>");
    CATUnicodeString usXml;
    EXPECT_THAT(spNode->ToXmlString(List({"C", "B", "C"}), &usXml, "", "", "o"), Succeeds());
    EXPECT_EQ(usXml, "<o><a name=\"C\">3</a><a name=\"B\" type=\"list\"><v>2</v></a><a name=\"C\">3</a></o>");
}

TEST_F(NodeAttributesOutputTest, AnUnknownNameFailsTheWholeWriteAndLeavesTheTextUnchanged)
{
    const QTBINodeAttributes_var spNode = Read("<o><a name=\"A\">1</a></o>");
    CATUnicodeString usXml("before");
    DebugCapture capture;
    EXPECT_THAT(spNode->ToXmlString(List({"A", "Unknown"}), &usXml, "", "", "o"),
                FailsWithMessage("AttributeNotDefinedERR_2001"));
    EXPECT_THAT(capture.Lines(), AllOf(Contains(StartsWith("GetAttribute : HRESULT FAILED")),
                                       Contains(StartsWith("AddAttributesToXmlString : HRESULT FAILED"))));
    EXPECT_EQ(usXml, "before");
}

namespace {

class NodeAttributesFaultyOutputTest : public NodeAttributesOutputTest
{
protected:
    QTBReplacedExtension m_Replaced{"QTBNode", QTBINodeAttributes::MetaObject(),
                                    QTBFactoryOf<TIEQTBINodeAttributes, QTBINodeAttributes, QTBFaultyAttributes>()};
};

} // namespace

TEST_F(NodeAttributesFaultyOutputTest, AnAttributeThatCannotBeWrittenFailsTheWholeWrite)
{
    const QTBINodeAttributes_var spNode =
        Read("<o><a name=\"A\">1</a><a name=\"O\" type=\"object\"><o><a name=\"B\">2</a></o></a></o>");
    CATUnicodeString usXml("before");
    // Strikes the embedded object's node, which is asked through its interface.
    const QTBFault fault("GetAttribute");
    EXPECT_THAT(spNode->ToXmlString(&usXml, "", "", "o"), FailsCall("CurrentAttribute.WriteXmlToString"));
    EXPECT_EQ(usXml, "before");
}

TEST_F(NodeAttributesOutputTest, WritingNeedsATextToAppendTo)
{
    const QTBINodeAttributes_var spNode = Read("<o/>");
    EXPECT_THAT(spNode->ToXmlString(NULL, "", "", "o"), FailsAssertion("pusXmlString != NULL"));
    EXPECT_THAT(spNode->ToXmlString(CATListValCATUnicodeString(), NULL, "", "", "o"),
                FailsAssertion("pusXmlString != NULL"));
}

TEST_F(NodeAttributesOutputTest, OnlyPdmNodesCanBeWritten)
{
    CATUnicodeString usXml("before");
    for (const char* lateType : {"QTBRepNode", "QTBNode"}) {
        const QTBINodeAttributes_var spNode(Create(lateType, "K1"));
        DebugCapture capture;
        EXPECT_THAT(spNode->ToXmlString(&usXml, "", "", "o"), LacksInterface("spIPdmNodeOnThis")) << lateType;
        EXPECT_THAT(capture.Lines(), Contains(StartsWith("AddAttributesToXmlString : HRESULT FAILED")));
        EXPECT_THAT(spNode->ToXmlString(CATListValCATUnicodeString(), &usXml, "", "", "o"),
                    LacksInterface("spIPdmNodeOnThis"));
    }
    EXPECT_EQ(usXml, "before");
}

TEST_F(NodeAttributesOutputTest, AFailingReadOfAVersionFlagIsPrintedAndTheFlagTreatedAsAbsent)
{
    // Without the list of info attributes their reading fails.
    const QTBINodeAttributes_var spNode = Read("<o><a name=\"A\">1</a></o>");
    CATUnicodeString usXml;
    DebugCapture capture;
    EXPECT_THAT(spNode->ToXmlString(&usXml, "", "", "o"), Succeeds());
    EXPECT_EQ(usXml, "<o><a name=\"A\">1</a></o>");
    int printed = 0;
    for (const std::string& line : capture.Lines()) {
        if (line.find(" File:[QTBModel/QTBModelNode.m/src/QTBENodeAttributesOnNode") != std::string::npos &&
            line.find("], Line:[") != std::string::npos && line.find("QtbInfo") != std::string::npos) {
            ++printed;
        }
    }
    EXPECT_EQ(printed, 2) << capture.Text();
}

TEST_F(NodeAttributesOutputTest, WhatIsWrittenCanBeReadAgain)
{
    const char* record = "<o><a name=\"Name\">a &lt; b &amp; c</a>"
                         "<a name=\"L\" type=\"list\"><v>1</v><v/></a>"
                         "<a name=\"N\" type=\"nvlist\"><nv name=\"A\" unit=\"mm\">1</nv></a>"
                         "<a name=\"T\" type=\"table\"><row><cell>1</cell><cell>2</cell></row></a>"
                         "<a name=\"O\" type=\"object\"><o><a name=\"Name\">Smith</a></o></a></o>";
    const std::string written = Write(Read(record));
    const QTBINodeAttributes_var spAgain = Create("QTBPdmObjNode", "K2");
    ASSERT_THAT(spAgain->SetXmlElement(ReadXmlElement(written)), Succeeds());
    EXPECT_EQ(Write(spAgain), written);
    EXPECT_EQ(AttributeOf(spAgain, "Name"), "a < b & c");
    EXPECT_EQ(AttributeOf(FindNode("K2.O"), "Name"), "Smith");
}

TEST_F(NodeAttributesOutputTest, AChangedValueIsWrittenAsItIsNow)
{
    const QTBINodeAttributes_var spNode = Read("<o><a name=\"Name\">Bracket</a></o>");
    spNode->SetStringAttributeValue("Name", "Plate & Co");
    EXPECT_EQ(Write(spNode), "<o><a name=\"Name\">Plate &amp; Co</a></o>");
}

TEST_F(NodeAttributesOutputTest, ARecordOfTwentyThousandAttributesIsWrittenInReasonableTime)
{
    std::string record = "<o>";
    for (int i = 0; i < 20000; ++i) {
        record += "<a name=\"Attribute" + std::to_string(i) + "\">" + std::to_string(i) + "</a>";
    }
    record += "</o>";
    EXPECT_EQ(Write(Read(record.c_str())), record);
}

TEST_F(NodeAttributesOutputTest, ACatiaAttributeIsKeptUnderTheNodesKey)
{
    const QTBINodeAttributes_var spNode(Create("QTBNode", "K1"));
    EXPECT_THAT(spNode->SetCatiaAttribute("Position", "1 2 3"), Succeeds());
    CATUnicodeString usValue;
    EXPECT_THAT(spNode->GetCatiaAttribute("Position", &usValue), Succeeds());
    EXPECT_EQ(usValue, "1 2 3");
    EXPECT_THAT(g_QTBLoadManager.GetCatiaAttr("K1", "Position", &usValue), Succeeds());
    EXPECT_EQ(usValue, "1 2 3");
    EXPECT_THAT(spNode->SetCatiaAttribute("Position", "4 5 6"), Succeeds());
    EXPECT_THAT(spNode->GetCatiaAttribute("Position", &usValue), Succeeds());
    EXPECT_EQ(usValue, "4 5 6");
}

TEST_F(NodeAttributesOutputTest, CatiaAttributesSurviveTheNodeUnderItsKey)
{
    QTBINodeAttributes_var(Create("QTBPdmObjNode", "K1"))->SetCatiaAttribute("Position", "1 2 3");
    CATUnicodeString usValue;
    EXPECT_THAT(QTBINodeAttributes_var(Create("QTBPdmObjNode", "K1"))->GetCatiaAttribute("Position", &usValue),
                Succeeds());
    EXPECT_EQ(usValue, "1 2 3");
    EXPECT_TRUE(FAILED(QTBINodeAttributes_var(Create("QTBPdmObjNode", "K2"))->GetCatiaAttribute("Position", &usValue)));
}

TEST_F(NodeAttributesOutputTest, ACatiaAttributeNeedsANameFirstOfAll)
{
    const QTBINodeAttributes_var spNode(Create("QTBNode", "K1"));
    CATUnicodeString usValue("before");
    EXPECT_THAT(spNode->SetCatiaAttribute("", "1"), FailsWithMessage("AssertionFailedERR_1003"));
    EXPECT_THAT(spNode->GetCatiaAttribute("", &usValue), FailsWithMessage("AssertionFailedERR_1003"));
    EXPECT_EQ(usValue, "before");
    EXPECT_THAT(spNode->GetCatiaAttribute("", NULL), FailsWith("AssertionFailedERR_1003", "usName != \"\""));
    EXPECT_THAT(spNode->GetCatiaAttribute("Name", NULL), FailsAssertion("pusValue != NULL"));
}

TEST_F(NodeAttributesOutputTest, AFailingLoadManagerIsReported)
{
    const QTBINodeAttributes_var spWithoutKey(Create("QTBNode", ""));
    EXPECT_THAT(spWithoutKey->SetCatiaAttribute("Name", "1"), FailsCall("g_QTBLoadManager.SetCatiaAttr"));
    CATUnicodeString usValue;
    EXPECT_THAT(QTBINodeAttributes_var(Create("QTBNode", "K1"))->GetCatiaAttribute("Unknown", &usValue),
                FailsCall("g_QTBLoadManager.GetCatiaAttr"));
}

TEST_F(NodeAttributesOutputTest, AllCatiaAttributesOfANodeAreReplacedTogether)
{
    const QTBINodeAttributes_var spNode(Create("QTBNode", "K1"));
    spNode->SetCatiaAttribute("Old", "1");
    EXPECT_THAT(spNode->SetCatiaAttributes(List({"B", "A"}), List({"2", "1"})), Succeeds());
    CATListValCATUnicodeString Names = List({"before"});
    CATListValCATUnicodeString Values;
    EXPECT_THAT(spNode->GetCatiaAttributes(&Names, &Values), Succeeds());
    EXPECT_THAT(TextsOf(Names), ElementsAre("B", "A"));
    EXPECT_THAT(TextsOf(Values), ElementsAre("2", "1"));
    CATUnicodeString usValue;
    EXPECT_TRUE(FAILED(spNode->GetCatiaAttribute("Old", &usValue)));
}

TEST_F(NodeAttributesOutputTest, CatiaAttributesOfAnUnknownKeyAreLeftAsPassedIn)
{
    const QTBINodeAttributes_var spNode(Create("QTBNode", "K1"));
    CATListValCATUnicodeString Names;
    CATListValCATUnicodeString Values;
    DebugCapture capture;
    EXPECT_THAT(spNode->GetCatiaAttributes(&Names, &Values), Succeeds());
    EXPECT_THAT(TextsOf(Names), IsEmpty());
    EXPECT_THAT(TextsOf(Values), IsEmpty());
    Names = List({"before"});
    EXPECT_THAT(spNode->GetCatiaAttributes(&Names, &Values), Succeeds());
    EXPECT_THAT(TextsOf(Names), ElementsAre("before"));
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(NodeAttributesOutputTest, SettingAllCatiaAttributesNeedsASetAndListsOfOneSize)
{
    const QTBINodeAttributes_var spNode(Create("QTBNode", "K1"));
    EXPECT_THAT(spNode->SetCatiaAttributes(List({"A"}), List({"1"})),
                FailsCall("g_QTBLoadManager.GetCatiaAttributesNvSetPtr"));
    spNode->SetCatiaAttribute("Old", "1");
    EXPECT_THAT(spNode->SetCatiaAttributes(List({"A", "B"}), List({"1"})), FailsCall("pCatiaAttrsNvSet->SetNvSet"));
    CATUnicodeString usValue;
    EXPECT_THAT(spNode->GetCatiaAttribute("Old", &usValue), Succeeds()) << "a refused set changes nothing";
    CATListValCATUnicodeString Names;
    EXPECT_THAT(spNode->GetCatiaAttributes(&Names, NULL), FailsCall("pCatiaAttrsNvSet->GetNvSet"));
}

TEST_F(NodeAttributesOutputTest, PrintingNamesTheNodeAndItsValuesAndEndsWithAnEmptyLine)
{
    const CATBaseUnknown_var spNode = Create("QTBNode", "K1");
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    spINodeAttributes->SetCatiaAttribute("Position", "1 2 3");
    const std::string title =
        "CATIA attributes for [" + std::string(QTBTraceUtil::GetNodeString(spNode, FALSE).View()) + "]";
    const std::string titleWithKey =
        "CATIA attributes for [" + std::string(QTBTraceUtil::GetNodeString(spNode, TRUE).View()) + "]";
    DebugCapture capture;
    EXPECT_THAT(spINodeAttributes->PrintCatiaAttributes(), Succeeds());
    EXPECT_THAT(capture.Lines(),
                ElementsAre(testing::AnyOf(title, titleWithKey), AllOf(HasSubstr("Position"), HasSubstr("1 2 3")), ""));
}

TEST_F(NodeAttributesOutputTest, PrintingANodeWithoutCatiaAttributesNamesTheNodeOnly)
{
    const QTBINodeAttributes_var spNode(Create("QTBNode", "K1"));
    DebugCapture capture;
    EXPECT_THAT(spNode->PrintCatiaAttributes(), Succeeds());
    EXPECT_THAT(capture.Lines(), ElementsAre(StartsWith("CATIA attributes for [")));
}

TEST_F(NodeAttributesOutputTest, NothingIsPrintedWithTheDebugStatusOff)
{
    const QTBINodeAttributes_var spNode(Create("QTBNode", "K1"));
    spNode->SetCatiaAttribute("Position", "1 2 3");
    std::ostringstream output;
    std::streambuf* pFormerBuffer = std::cout.rdbuf(output.rdbuf());
    const HRESULT hr = spNode->PrintCatiaAttributes();
    std::cout.rdbuf(pFormerBuffer);
    EXPECT_THAT(hr, Succeeds());
    EXPECT_EQ(output.str(), "");
}
