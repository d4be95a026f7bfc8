// Requests that change: what they do, what they answer, and to whom they refuse it.

#include "QTBStoreSession.h"

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

namespace {

class StoreChange : public QTBStoreSession
{
protected:
    void SetUp() override
    {
        QTBStoreSession::SetUp();
        m_pOther = OpenFor("lee");
    }
    void TearDown() override
    {
        m_pOther.reset();
        QTBStoreSession::TearDown();
    }

    // A request of the other user.
    template <class Request>
    HRESULT AsOther(Request request)
    {
        std::swap(m_pStore, m_pOther);
        const HRESULT hr = request();
        std::swap(m_pStore, m_pOther);
        return hr;
    }

    // A refused request leaves the store as it was.
    template <class Matcher, class Request>
    void ExpectRefusal(Request request, const Matcher& matcher)
    {
        const std::string before = Dump();
        EXPECT_THAT(request(), matcher);
        EXPECT_EQ(Dump(), before);
        EXPECT_THAT(Faults(), IsEmpty());
    }

    std::string Rights(const std::string& key)
    {
        EXPECT_THAT(Get({key.c_str()}), Succeeds());
        std::string rights;
        for (const char* right : {"Edit", "CheckOut", "CheckIn", "Promote", "UpdateSubCmpRels"}) {
            if (InfoIn(key, "QtbIs" + std::string(right) + "Allowed") == "true") {
                rights += rights.empty() ? right : std::string(" ") + right;
            }
        }
        return rights;
    }
    std::string RightsOfOther(const std::string& key)
    {
        std::swap(m_pStore, m_pOther);
        const std::string rights = Rights(key);
        std::swap(m_pStore, m_pOther);
        return rights;
    }
    std::string StateOf(const char* key)
    {
        EXPECT_THAT(Get({key}), Succeeds());
        const std::size_t from = m_Answer.find("<a name=\"State\">");
        return from == std::string::npos ? "none" : m_Answer.substr(from + 16, 2);
    }

    std::unique_ptr<QTBPdmStore> m_pOther;
};

// Rights.

TEST_F(StoreChange, APartCanBeChangedByAnybodyUntilSomebodyChecksItOut)
{
    Import(Part("A"));
    EXPECT_EQ(Rights("A"), "Edit CheckOut Promote UpdateSubCmpRels");
    ASSERT_THAT(CheckOut({"A"}), Succeeds());
    EXPECT_EQ(Rights("A"), "Edit CheckIn UpdateSubCmpRels");
    EXPECT_EQ(InfoIn("A", "QtbCheckedOutBy"), "kim");
    EXPECT_EQ(RightsOfOther("A"), "");
    EXPECT_EQ(InfoIn("A", "QtbCheckedOutBy"), "kim");
}

TEST_F(StoreChange, AFileMustBeCheckedOutToBeChanged)
{
    Import(Object("CATPartFile", "F"));
    EXPECT_EQ(Rights("F"), "CheckOut Promote UpdateSubCmpRels");
    EXPECT_THAT(UpdateAttributes("F", Attribute("FileName", "x")), FailsWith("NotCheckedOutERR_1113", "F"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    EXPECT_EQ(Rights("F"), "Edit CheckIn UpdateSubCmpRels");
    EXPECT_THAT(UpdateAttributes("F", Attribute("FileName", "x")), Succeeds());
}

TEST_F(StoreChange, EachStateHasItsRights)
{
    Import(Part("A"));
    EXPECT_EQ(StateOf("A"), "10");
    ASSERT_THAT(Promote({"A"}), Succeeds());
    EXPECT_EQ(StateOf("A"), "20");
    EXPECT_EQ(Rights("A"), "Promote");
    ASSERT_THAT(Promote({"A"}), Succeeds());
    EXPECT_EQ(StateOf("A"), "30");
    EXPECT_EQ(Rights("A"), "Promote");
    ASSERT_THAT(Promote({"A"}), Succeeds());
    EXPECT_EQ(StateOf("A"), "40");
    EXPECT_EQ(Rights("A"), "");
}

TEST_F(StoreChange, AnOldVersionHasNoRights)
{
    Import(Part("A"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    EXPECT_EQ(Rights("A"), "");
    EXPECT_EQ(Rights("A/B"), "Edit CheckOut Promote UpdateSubCmpRels");
}

TEST_F(StoreChange, TheRightsReachTheNodesOfTheSession)
{
    Import(Object("CATPartFile", "F"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    ASSERT_THAT(TryUpdate(m_Answer), Succeeds());
    EXPECT_EQ(InfoOf(FindNode("F"), "QtbIsEditAllowed"), "true");
    EXPECT_EQ(InfoOf(FindNode("F"), "QtbHasFile"), "false");
    ASSERT_THAT(AsOther([this] { return Get({"F"}); }), Succeeds());
    ASSERT_THAT(TryUpdate(m_Answer), Succeeds());
    CATUnicodeString usDescription;
    ASSERT_THAT(PdmNode("F")->GetDescriptionString(&usDescription), Succeeds());
    EXPECT_EQ(usDescription, "Part file (checked out by kim)");
}

// Check-out and check-in.

TEST_F(StoreChange, WhatIsCheckedOutCannotBeCheckedOutAgain)
{
    Import(Part("A"));
    ASSERT_THAT(CheckOut({"A"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A"));
    ExpectRefusal([this] { return CheckOut({"A"}); }, FailsWith("CheckedOutByUserERR_1105", "A"));
    ExpectRefusal([this] { return AsOther([this] { return CheckOut({"A"}); }); },
                  FailsWith("CheckedOutByOtherERR_1103", "A"));
    ExpectRefusal([this] { return AsOther([this] { return CheckIn({"A"}); }); },
                  FailsWith("CheckedOutByOtherERR_1103", "A"));
}

TEST_F(StoreChange, ManyKeysAreCheckedOutAsAWhole)
{
    Import(Part("A") + Part("B"));
    ASSERT_THAT(AsOther([this] { return CheckOut({"B"}); }), Succeeds());
    ExpectRefusal([this] { return CheckOut({"A", "B"}); }, FailsWith("CheckedOutByOtherERR_1103", "B"));
    ExpectRefusal([this] { return CheckOut({"A", "X"}); }, FailsWith("ItemNotFoundERR_1101", "X"));
}

TEST_F(StoreChange, CheckingInEndsTheCheckOut)
{
    Import(Part("A"));
    ExpectRefusal([this] { return CheckIn({"A"}); }, FailsWith("NotCheckedOutERR_1113", "A"));
    ASSERT_THAT(CheckOut({"A"}), Succeeds());
    ASSERT_THAT(CheckIn({"A"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A"));
    EXPECT_EQ(InfoIn("A", "QtbCheckedOutBy"), "not defined");
    EXPECT_THAT(AsOther([this] { return CheckOut({"A"}); }), Succeeds());
}

TEST_F(StoreChange, APersonIsNotCheckedOut)
{
    Import(Object("Person", "jd"));
    ExpectRefusal([this] { return CheckOut({"jd"}); }, FailsWith("ObjectNotVersionedERR_1106", "jd"));
    ExpectRefusal([this] { return Promote({"jd"}); }, FailsWith("ObjectNotVersionedERR_1106", "jd"));
    ExpectRefusal([this] { return Revise({"jd"}); }, FailsWith("ObjectNotVersionedERR_1106", "jd"));
    EXPECT_THAT(UpdateAttributes("jd", Attribute("FullName", "Jo")), Succeeds());
}

TEST_F(StoreChange, AFileComesBackAsItWasCheckedIn)
{
    Import(Object("CATPartFile", "F"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    const std::string content("\0\x01 CATPart \xFF", 12);
    ASSERT_THAT(CheckIn({"F"}, {WriteFile("f.CATPart", content).c_str()}), Succeeds());
    EXPECT_EQ(InfoIn("F", "QtbHasFile"), "true");
    ASSERT_THAT(m_pStore->FetchFile("F", PathOf("fetched").c_str()), Succeeds());
    EXPECT_EQ(ReadFile(PathOf("fetched")), content);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreChange, AFileThatCannotBeReadLeavesTheObjectCheckedOut)
{
    Import(Object("CATPartFile", "F"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    ExpectRefusal([this] { return CheckIn({"F"}, {PathOf("missing").c_str()}); },
                  FailsWith("FileUnreadableERR_1117", PathOf("missing").c_str()));
    ExpectRefusal([this] { return CheckIn({"F"}, {m_Folder.GetPath().c_str()}); },
                  FailsWith("FileUnreadableERR_1117", m_Folder.GetPath().c_str()));
    EXPECT_EQ(Rights("F"), "Edit CheckIn UpdateSubCmpRels");
}

TEST_F(StoreChange, AnObjectWithoutAFileSaysSo)
{
    Import(Object("CATPartFile", "F"));
    EXPECT_THAT(m_pStore->FetchFile("F", PathOf("fetched").c_str()), FailsWith("ObjectWithoutFileERR_1123", "F"));
    EXPECT_THAT(m_pStore->FetchFile("X", PathOf("fetched").c_str()), FailsWith("ItemNotFoundERR_1101", "X"));
    EXPECT_FALSE(std::filesystem::exists(PathOf("fetched")));
}

// Promotion.

TEST_F(StoreChange, PromotingAnswersTheObjectAndTheRelationsThatAreFrozenWithIt)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    ASSERT_THAT(Promote({"A"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "r AB A>B"));
    EXPECT_EQ(InfoIn("AB", "QtbIsEditAllowed"), "false");
    EXPECT_THAT(UpdateAttributes("AB", Attribute("Quantity", "2")), FailsWithMessage("StateForbidsERR_1107"));
}

TEST_F(StoreChange, ARefusalNamesTheStateAsTheUserKnowsIt)
{
    Import(Part("A", Attribute("State", "30")));
    const HRESULT hr = UpdateAttributes("A", Attribute("Name", "x"));
    ASSERT_THAT(hr, FailsWith("StateForbidsERR_1107", "A"));
    EXPECT_EQ(CATError::CATGetLastError(hr, nullptr)->GetNLSMessage(),
              "\"A\" is in the state Released, which does not allow that.");
}

TEST_F(StoreChange, WhatIsCheckedOutIsNotPromoted)
{
    Import(Part("A"));
    ASSERT_THAT(CheckOut({"A"}), Succeeds());
    ExpectRefusal([this] { return Promote({"A"}); }, FailsWith("CheckedOutByUserERR_1105", "A"));
}

TEST_F(StoreChange, TheLastStateIsNotLeft)
{
    Import(Part("A", Attribute("State", "40")));
    ExpectRefusal([this] { return Promote({"A"}); }, FailsWith("StateForbidsERR_1107", "A"));
    ExpectRefusal([this] { return Revise({"A"}); }, FailsWith("StateForbidsERR_1107", "A"));
    ExpectRefusal([this] { return CheckOut({"A"}); }, FailsWith("StateForbidsERR_1107", "A"));
}

// Revision.

TEST_F(StoreChange, ANewVersionBeginsInTheFirstStateAndNamesTheOneBefore)
{
    Import(Part("A", Attribute("State", "30") + Attribute("Revision", "A")));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A/B"));
    EXPECT_EQ(InfoIn("A/B", "QtbSupersedes"), "A");
    EXPECT_EQ(InfoIn("A/B", "QtbKey"), "A/B");
    EXPECT_EQ(InfoIn("A/B", "QtbVersion"), "B");
    EXPECT_EQ(InfoIn("A/B", "QtbIsNewestVersion"), "true");
    EXPECT_THAT(m_Answer, HasSubstr(R"(<a name="State">10</a><a name="Revision">B</a>)"));
    EXPECT_EQ(StateOf("A"), "30");
    EXPECT_EQ(InfoIn("A", "QtbNewestVersion"), "B");
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreChange, TheNewVersionHasTheRelationsOfTheOldOneAndTheUsersFollowIt)
{
    Import(Part("P") + Part("A") + Part("C") + PartPart("PA", "P", "A") + PartPart("AC", "A", "C"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    ASSERT_THAT(Items(), ElementsAre("o A/B", StartsWith("r PartPart/"), "r PA P>A/B"));
    const std::string newRelation = Items()[1].substr(2, Items()[1].find(' ', 2) - 2);
    EXPECT_EQ(InfoIn(newRelation, "QtbSupersedes"), "AC");
    ASSERT_THAT(Expand({"A"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o C", "r AC A>C"));
    ASSERT_THAT(Expand({"P"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P", "o A/B", "r PA P>A/B", "o C", "r " + newRelation + " A/B>C"));
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreChange, ACheckOutPassesToTheNewVersion)
{
    Import(Part("A"));
    ASSERT_THAT(CheckOut({"A"}), Succeeds());
    ASSERT_THAT(Revise({"A"}), Succeeds());
    EXPECT_EQ(InfoIn("A/B", "QtbCheckedOutBy"), "kim");
    EXPECT_THAT(CheckIn({"A"}), FailsWith("NotCheckedOutERR_1113", "A"));
    EXPECT_THAT(CheckIn({"A/B"}), Succeeds());
}

TEST_F(StoreChange, WhatAnotherHasCheckedOutIsNotRevised)
{
    Import(Part("A"));
    ASSERT_THAT(AsOther([this] { return CheckOut({"A"}); }), Succeeds());
    ExpectRefusal([this] { return Revise({"A"}); }, FailsWith("CheckedOutByOtherERR_1103", "A"));
}

TEST_F(StoreChange, OnlyTheNewestVersionIsRevised)
{
    Import(Part("A"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    ASSERT_THAT(Revise({"A/B"}), Succeeds());
    ExpectRefusal([this] { return Revise({"A"}); }, FailsWith("VersionNotNewestERR_1104", "A"));
    EXPECT_EQ(MessageOf(Revise({"A"})), "\"A\" is not the newest version; that is \"A/C\".");
}

TEST_F(StoreChange, APartThatUsesItselfIsRevised)
{
    Import(Part("A") + PartPart("AA", "A", "A"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    ASSERT_THAT(Items(), SizeIs(2));
    EXPECT_THAT(Items()[1], HasSubstr(" A/B>A/B"));
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreChange, TheNewVersionHasTheFileOfTheOldOne)
{
    Import(Object("CATPartFile", "F"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    ASSERT_THAT(CheckIn({"F"}, {WriteFile("f", "one").c_str()}), Succeeds());
    ASSERT_THAT(Revise({"F"}), Succeeds());
    ASSERT_THAT(CheckOut({"F/B"}), Succeeds());
    ASSERT_THAT(CheckIn({"F/B"}, {WriteFile("f", "two").c_str()}), Succeeds());
    ASSERT_THAT(m_pStore->FetchFile("F", PathOf("fetched").c_str()), Succeeds());
    EXPECT_EQ(ReadFile(PathOf("fetched")), "one");
    ASSERT_THAT(m_pStore->FetchFile("F/B", PathOf("fetched").c_str()), Succeeds());
    EXPECT_EQ(ReadFile(PathOf("fetched")), "two");
}

TEST_F(StoreChange, AKeyThatIsTakenIsNotGivenToANewVersion)
{
    Import(Part("A") + Part("A/B"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A/B~2"));
}

// Attributes.

TEST_F(StoreChange, AttributesAreReplacedInTheirPlacesAndNewOnesStandBehind)
{
    Import(Part("A", Attribute("Name", "nut") + Attribute("Material", "steel")));
    ASSERT_THAT(UpdateAttributes("A", Attribute("Mass", "2") + R"(<a name="Name" type="list"><v>x</v></a>)"),
                Succeeds());
    EXPECT_THAT(m_Answer, HasSubstr(R"(<a name="Name" type="list"><v>x</v></a><a name="Material">steel</a>)"
                                    R"(<a name="Mass">2</a><a name="QtbInfo")"));
    QTBStoreQuery query;
    query.conditions = {{"Mass", "2"}};
    ASSERT_THAT(Query(query), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A"));
    query.conditions = {{"Name", "nut"}};
    ASSERT_THAT(Query(query), Succeeds());
    EXPECT_THAT(Items(), IsEmpty());
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreChange, AttributesOfARelationAreChangedByWhoMayChangeItsLeftObject)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    ASSERT_THAT(UpdateAttributes("AB", Attribute("Quantity", "4")), Succeeds());
    EXPECT_THAT(m_Answer, HasSubstr(R"(<a name="Quantity">4</a>)"));
    ASSERT_THAT(AsOther([this] { return CheckOut({"A"}); }), Succeeds());
    ExpectRefusal([this] { return UpdateAttributes("AB", Attribute("Quantity", "5")); },
                  FailsWith("CheckedOutByOtherERR_1103", "A"));
}

TEST_F(StoreChange, AttributesThatAreTheStoresOwnAreNotWritten)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    for (const char* name : {"Class", "Key", "State", "QtbInfo"}) {
        ExpectRefusal([&] { return UpdateAttributes("A", Attribute(name, "x")); },
                      FailsWith("AttributeReservedERR_1112", name));
    }
    for (const char* name : {"Left", "Right", "Class1", "Class2", "Relation"}) {
        ExpectRefusal([&] { return Relate("PartPart", "A", "B", Attribute(name, "x")); },
                      FailsWith("AttributeReservedERR_1112", name));
    }
}

TEST_F(StoreChange, AKeyThatIsGivenTwiceIsMeantOnce)
{
    Import(Part("A") + Object("CATPartFile", "F"));
    ASSERT_THAT(Get({"A", "F", "A"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o F"));
    ASSERT_THAT(Expand({"A", "A"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A"));
    ASSERT_THAT(CheckOut({"A", "F", "A"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o F"));
    ASSERT_THAT(CheckIn({"A", "A"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A"));
    ASSERT_THAT(Revise({"A", "A"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A/B"));
    ASSERT_THAT(Promote({"A/B", "A/B"}), Succeeds());
    ASSERT_THAT(Get({"A/B"}), Succeeds());
    EXPECT_THAT(m_Answer, HasSubstr("<a name=\"State\">20</a>"));
    // With the file that one of its mentions brings; there cannot be two.
    const std::string one = WriteFile("one", "content");
    const std::string other = WriteFile("other", "other content");
    ExpectRefusal(
        [&] {
            return CheckIn({"F", "F"}, {one.c_str(), other.c_str()});
        },
        FailsWith("TwoFilesForObjectERR_1126", "F"));
    ASSERT_THAT(CheckIn({"F", "F"}, {"", one.c_str()}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o F"));
    ASSERT_THAT(m_pStore->FetchFile("F", PathOf("fetched").c_str()), Succeeds());
    EXPECT_EQ(ReadFile(PathOf("fetched")), "content");
    ASSERT_THAT(Delete({"F", "F"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("objectToDelete F"));
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreChange, AttributesThatAreNoneAreRefused)
{
    Import(Part("A"));
    for (const char* xml : {"<a name='x'>", "</o><o>", "text", "<b/>", "<!DOCTYPE x><a name='x'/>", "&x;"}) {
        ExpectRefusal([&] { return UpdateAttributes("A", xml); }, FailsWithMessage("AttributesMalformedERR_1111"));
    }
    for (const char* xml :
         {"<a/>", "<a name=''/>", "<a name='x'/><a name='x'/>", "<a name='x'><b/></a>", "<a name='x' type='lisd'/>",
          "<a name='x' type=''/>", "<a name='x' type='list'><w/></a>", "<a name='x' type='nvlist'><nv/></a>",
          "<a name='x' type='nvlist'><nv name='n'/><nv name='n'/></a>", "<a name='x' type='table'><cell/></a>",
          "<a name='x' type='object'/>", "<a name='x' type='object'><o/><o/></a>",
          "<a name='x' type='object'><o><a/></o></a>"}) {
        ExpectRefusal([&] { return UpdateAttributes("A", xml); }, FailsWithMessage("AttributeMalformedERR_1110"));
    }
    const std::string twice = "<a name='x'/><a name='x'/>";
    EXPECT_THAT(MessageOf(UpdateAttributes("A", twice)), StartsWith("The attribute \"x\" of \"A\" is "));
    EXPECT_THAT(MessageOf(CreateObject("Part", "B", twice)), StartsWith("The attribute \"x\" of \"B\" is "));
    EXPECT_THAT(MessageOf(CreateObject("Part", "", twice)), StartsWith("The attribute \"x\" of \"Part\" is "));
    EXPECT_THAT(MessageOf(Relate("PartPart", "A", "A", twice)), StartsWith("The attribute \"x\" of \"PartPart\" is "));
}

TEST_F(StoreChange, ObjectsThatAreNestedTooDeeplyAreRefused)
{
    Import(Part("A"));
    std::string xml;
    for (int i = 0; i < 20000; ++i) {
        xml += "<a name=\"x\" type=\"object\"><o>";
    }
    for (int i = 0; i < 20000; ++i) {
        xml += "</o></a>";
    }
    ExpectRefusal([&] { return UpdateAttributes("A", xml); }, FailsWithMessage("AttributeMalformedERR_1110"));
}

// New items.

TEST_F(StoreChange, ANewObjectGetsAKeyAVersionAndTheFirstState)
{
    ASSERT_THAT(CreateObject("Part", "", Attribute("Name", "nut")), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o Part/1"));
    EXPECT_EQ(InfoIn("Part/1", "QtbVersion"), "A");
    EXPECT_THAT(m_Answer, HasSubstr(R"(<a name="State">10</a><a name="Name">nut</a>)"));
    ASSERT_THAT(CreateObject("Part", "mine"), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o mine"));
    ExpectRefusal([this] { return CreateObject("Part", "mine"); }, FailsWith("KeyExistsERR_1124", "mine"));
    ExpectRefusal([this] { return CreateObject("Partt", ""); }, FailsWith("ObjectClassUnknownERR_1108", "Partt"));
    ExpectRefusal([this] { return CreateObject("PartPart", ""); }, FailsWith("ObjectClassUnknownERR_1108", "PartPart"));
}

TEST_F(StoreChange, AKeyIsNeverGivenTwice)
{
    ASSERT_THAT(CreateObject("Part", ""), Succeeds());
    ASSERT_THAT(Delete({"Part/1"}), Succeeds());
    ASSERT_THAT(CreateObject("Part", ""), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o Part/2"));
}

TEST_F(StoreChange, ANewRelationIsAnsweredWithItsAttributes)
{
    Import(Part("A") + Part("B"));
    ASSERT_THAT(Relate("PartPart", "A", "B", Attribute("InstanceName", "B.1")), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("r PartPart/3 A>B"));
    EXPECT_THAT(m_Answer, HasSubstr(R"(<a name="InstanceName">B.1</a>)"));
}

TEST_F(StoreChange, ARelationNeedsBothItsObjects)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    ExpectRefusal([this] { return Relate("PartPart", "A", "X"); }, FailsWith("ItemNotFoundERR_1101", "X"));
    ExpectRefusal([this] { return Relate("PartPart", "X", "B"); }, FailsWith("ItemNotFoundERR_1101", "X"));
    ExpectRefusal([this] { return Relate("PartPart", "A", "AB"); }, FailsWith("ItemIsRelationERR_1102", "AB"));
}

TEST_F(StoreChange, ARelationStandsBetweenTheClassesThatTheSchemaNames)
{
    Import(Part("A") + Object("CATPartFile", "F") + Object("StandardPart", "S"));
    ExpectRefusal([this] { return Relate("PartPart", "A", "F"); }, FailsWith("ClassNotAtEndERR_1115", "PartPart"));
    ExpectRefusal([this] { return Relate("PartFile", "F", "A"); }, FailsWith("ClassNotAtEndERR_1115", "PartFile"));
    ExpectRefusal([this] { return Relate("PartWhole", "A", "A"); },
                  FailsWith("RelationClassUnknownERR_1109", "PartWhole"));
    EXPECT_THAT(Relate("PartFile", "A", "F"), Succeeds());
    EXPECT_THAT(Relate("PartPart", "A", "S"), Succeeds());
}

TEST_F(StoreChange, ARelationIsMadeByWhoMayChangeItsLeftObject)
{
    Import(Part("A") + Part("B") + Part("R", Attribute("State", "30")));
    ASSERT_THAT(AsOther([this] { return CheckOut({"A"}); }), Succeeds());
    ExpectRefusal([this] { return Relate("PartPart", "A", "B"); }, FailsWith("CheckedOutByOtherERR_1103", "A"));
    ExpectRefusal([this] { return Relate("PartPart", "R", "B"); }, FailsWith("StateForbidsERR_1107", "R"));
    EXPECT_THAT(Relate("PartPart", "B", "A"), Succeeds());
    EXPECT_THAT(Relate("PartPart", "B", "R"), Succeeds());
}

TEST_F(StoreChange, ARelationToAnOldVersionLeadsToTheNewestOne)
{
    Import(Part("A") + Part("B"));
    ASSERT_THAT(Revise({"B"}), Succeeds());
    ASSERT_THAT(Relate("PartPart", "A", "B"), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o B/B", "r PartPart/4 A>B/B"));
    ExpectRefusal([this] { return Relate("PartPart", "B", "A"); }, FailsWith("VersionNotNewestERR_1104", "B"));
}

// Deletion.

TEST_F(StoreChange, ADeletedObjectTakesItsRelationsWithIt)
{
    Import(Part("P") + Part("A") + Part("C") + PartPart("PA", "P", "A") + PartPart("AC", "A", "C"));
    ASSERT_THAT(Delete({"A"}), Succeeds());
    EXPECT_EQ(m_Answer, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<answer><function name=\"delete\">\n"
                        "<relationToDelete>PA</relationToDelete>\n<relationToDelete>AC</relationToDelete>\n"
                        "<objectToDelete>A</objectToDelete>\n</function></answer>\n");
    ASSERT_THAT(Export(false), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P", "o C"));
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreChange, ADeletedRelationLeavesItsObjects)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    ASSERT_THAT(Delete({"AB"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("relationToDelete AB"));
    ASSERT_THAT(Export(false), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o B"));
}

TEST_F(StoreChange, WhatAnotherHasCheckedOutIsNotDeleted)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    ASSERT_THAT(AsOther([this] { return CheckOut({"A"}); }), Succeeds());
    ExpectRefusal([this] { return Delete({"A"}); }, FailsWith("CheckedOutByOtherERR_1103", "A"));
    ExpectRefusal([this] { return Delete({"AB"}); }, FailsWith("CheckedOutByOtherERR_1103", "A"));
    // The part that uses it would change.
    ExpectRefusal([this] { return Delete({"B"}); }, FailsWith("ObjectIsUsedERR_1120", "B"));
}

TEST_F(StoreChange, WhatIsReleasedIsNotDeletedNorWhatItIsMadeOf)
{
    Import(Part("A", Attribute("State", "30")) + Part("B") + PartPart("AB", "A", "B"));
    ExpectRefusal([this] { return Delete({"A"}); }, FailsWith("StateForbidsERR_1107", "A"));
    ExpectRefusal([this] { return Delete({"B"}); }, FailsWith("ObjectIsUsedERR_1120", "B"));
    ExpectRefusal([this] { return Delete({"A"}, "AllVersions"); }, FailsWith("StateForbidsERR_1107", "A"));
}

TEST_F(StoreChange, ManyItemsAreDeletedAsAWhole)
{
    Import(Part("A") + Part("B"));
    ExpectRefusal([this] { return Delete({"A", "X"}); }, FailsWith("ItemNotFoundERR_1101", "X"));
    ASSERT_THAT(Delete({"A", "B"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("objectToDelete A", "objectToDelete B"));
}

TEST_F(StoreChange, WhenTheNewestVersionIsDeletedTheOneBeforeTakesItsPlace)
{
    Import(Part("P") + Part("A") + Part("C") + PartPart("PA", "P", "A") + PartPart("AC", "A", "C"));
    const std::string before = Dump();
    ASSERT_THAT(Revise({"A"}), Succeeds());
    const std::string newRelation = Items()[1].substr(2, Items()[1].find(' ', 2) - 2);
    ASSERT_THAT(Delete({"A/B"}), Succeeds());
    EXPECT_THAT(Items(),
                ElementsAre("o A", "r AC A>C", "r PA P>A", "relationToDelete " + newRelation, "objectToDelete A/B"));
    EXPECT_EQ(InfoIn("A", "QtbSupersedes"), "A/B");
    EXPECT_EQ(InfoIn("AC", "QtbSupersedes"), newRelation);
    EXPECT_EQ(Dump(), before);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreChange, OnlyTheNewestVersionIsDeleted)
{
    Import(Part("A"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    ExpectRefusal([this] { return Delete({"A"}); }, FailsWith("VersionNotNewestERR_1104", "A"));
}

TEST_F(StoreChange, AllVersionsAreDeletedWhenTheOptionSaysSo)
{
    Import(Part("P") + Part("A") + PartPart("PA", "P", "A") + PartPart("AP", "A", "P"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    ASSERT_THAT(Delete({"A"}, "AllVersions"), Succeeds());
    EXPECT_THAT(Items(), SizeIs(5));
    ASSERT_THAT(Export(false), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P"));
    ExpectRefusal([this] { return Delete({"P"}, "Everything"); },
                  FailsWith("DeleteOptionUnknownERR_1119", "Everything"));
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreChange, AFileLeavesTheFolderWithItsLastObject)
{
    Import(Object("CATPartFile", "F") + Object("CATPartFile", "G"));
    ASSERT_THAT(CheckOut({"F", "G"}), Succeeds());
    const std::string path = WriteFile("f", "content");
    ASSERT_THAT(CheckIn({"F", "G"}, {path, path}), Succeeds());
    const auto countFiles = [this] {
        int count = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Path() + ".files")) {
            count += entry.is_regular_file() ? 1 : 0;
        }
        return count;
    };
    EXPECT_EQ(countFiles(), 1);
    ASSERT_THAT(Delete({"F"}), Succeeds());
    EXPECT_EQ(countFiles(), 1);
    ASSERT_THAT(m_pStore->FetchFile("G", PathOf("fetched").c_str()), Succeeds());
    ASSERT_THAT(Delete({"G"}), Succeeds());
    EXPECT_EQ(countFiles(), 0);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreChange, AnEmptyReceiverIsNoAnswer)
{
    Import(Part("A"));
    EXPECT_THAT(m_pStore->CheckOut({"A"}, {}), Succeeds());
    EXPECT_THAT(m_pStore->GetItems({"A"}, {}), Succeeds());
}

} // namespace
