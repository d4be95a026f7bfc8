// Requests that read: what they answer, to the letter.

#include <unordered_set>

#include "QTBStoreSession.h"

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

namespace {

class StoreRead : public QTBStoreSession
{
protected:
    // The answer around items.
    static std::string Whole(const std::string& function, const std::string& items)
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<answer><function name=\"" + function + "\">\n" + items +
               "</function></answer>\n";
    }

    // A chain of parts P0, P1, ... and for each but the last the relation R0, R1, ... to the next.
    static std::string Chain(int count)
    {
        std::string items;
        for (int i = 0; i < count; ++i) {
            items += Part("P" + std::to_string(i));
        }
        for (int i = 0; i + 1 < count; ++i) {
            items += PartPart("R" + std::to_string(i), "P" + std::to_string(i), "P" + std::to_string(i + 1));
        }
        return items;
    }

    static QTBStoreQuery Conditions(const char* className, const std::vector<QTBStoreQuery::Condition>& conditions)
    {
        QTBStoreQuery query;
        query.className = className;
        query.conditions = conditions;
        return query;
    }
};

TEST_F(StoreRead, AnObjectIsAnsweredWithItsAttributesItsStateAndTheRightsOfTheUser)
{
    Import(Part("4711", Attribute("PartNumber", "4711") + Attribute("Name", "A & B <c>")));
    ASSERT_THAT(Get({"4711"}), Succeeds());
    EXPECT_EQ(m_Answer, Whole("get", R"(<o><a name="Class">Part</a><a name="Key">4711</a><a name="State">10</a>)"
                                     R"(<a name="PartNumber">4711</a><a name="Name">A &amp; B &lt;c&gt;</a>)"
                                     R"(<a name="QtbInfo" type="nvlist"><nv name="QtbKey">4711</nv>)"
                                     R"(<nv name="QtbVersion">A</nv><nv name="QtbIsNewestVersion">true</nv>)"
                                     R"(<nv name="QtbNewestVersion">A</nv>)"
                                     R"(<nv name="QtbIsCheckOutAllowed">true</nv>)"
                                     R"(<nv name="QtbIsCheckInAllowed">false</nv>)"
                                     R"(<nv name="QtbIsPromoteAllowed">true</nv>)"
                                     R"(<nv name="QtbIsEditAllowed">true</nv>)"
                                     R"(<nv name="QtbIsUpdateSubCmpRelsAllowed">true</nv></a></o>)"
                                     "\n"));
}

TEST_F(StoreRead, ARelationIsAnsweredWithItsEndsAndItsParentClasses)
{
    Import(Part("A") + Object("StandardPart", "S") +
           Relation("StandardPartUsage", "AS", "A", "S", R"(<a name="InstanceName" type="list"><v>S.1</v></a>)"));
    ASSERT_THAT(Get({"AS"}), Succeeds());
    EXPECT_EQ(m_Answer, Whole("get", R"(<r><a name="Class">StandardPartUsage</a>)"
                                     R"(<a name="Relation">StandardPartUsage</a><a name="Key">AS</a>)"
                                     R"(<a name="Left">A</a><a name="Class1">Part</a>)"
                                     R"(<a name="Right">S</a><a name="Class2">StandardPart</a>)"
                                     R"(<a name="InstanceName" type="list"><v>S.1</v></a>)"
                                     R"(<a name="QtbInfo" type="nvlist"><nv name="QtbKey">AS</nv>)"
                                     R"(<nv name="QtbIsEditAllowed">true</nv></a>)"
                                     R"(<parentClasses><class>PartPart</class></parentClasses></r>)"
                                     "\n"));
}

TEST_F(StoreRead, AnObjectWithoutVersionsHasNoStateAndNoVersion)
{
    Import(Object("Person", "jd", Attribute("FullName", "Jo Doe")));
    ASSERT_THAT(Get({"jd"}), Succeeds());
    EXPECT_EQ(m_Answer, Whole("get", R"(<o><a name="Class">Person</a><a name="Key">jd</a>)"
                                     R"(<a name="FullName">Jo Doe</a>)"
                                     R"(<a name="QtbInfo" type="nvlist"><nv name="QtbKey">jd</nv>)"
                                     R"(<nv name="QtbIsEditAllowed">true</nv>)"
                                     R"(<nv name="QtbIsUpdateSubCmpRelsAllowed">true</nv></a></o>)"
                                     "\n"));
}

TEST_F(StoreRead, AttributesOfEveryTypeComeBackAsTheyWere)
{
    const std::string attributes =
        R"(<a name="Colors" type="list"><v>red</v><v></v></a>)"
        R"(<a name="Measures" type="nvlist"><nv name="Mass" unit="kg">1.5</nv></a>)"
        R"(<a name="Tolerances" type="table"><row><cell>hole</cell><cell>H7</cell></row><row></row></a>)"
        R"(<a name="Owner" type="object"><o><a name="Class">Person</a><a name="Key">Person/jd</a></o></a>)"
        R"(<a name="Substitutes" type="objectlist"><o><a name="Key">X</a></o></a>)"
        R"(<a name="Blank">  two  blanks  </a>)";
    Import(Part("A", attributes));
    ASSERT_THAT(Get({"A"}), Succeeds());
    EXPECT_THAT(m_Answer, HasSubstr(attributes));
    ASSERT_THAT(TryUpdate(m_Answer), Succeeds());
    EXPECT_EQ(AttributeOf(FindNode("A"), "Blank"), "  two  blanks  ");
    EXPECT_TRUE(FindNode("A.Owner") != NULL_var);
}

TEST_F(StoreRead, EntriesOfTheInfoAttributeThatAreNotTheStoresOwnArePreserved)
{
    Import(Part("A", Info({{"QtbSubVersion", "3"}, {"QtbActionIndex", "7"}, {"QtbIsEditAllowed", "false"}})));
    ASSERT_THAT(Get({"A"}), Succeeds());
    EXPECT_EQ(InfoIn("A", "QtbSubVersion"), "3");
    EXPECT_EQ(InfoIn("A", "QtbActionIndex"), "not defined");
    EXPECT_EQ(InfoIn("A", "QtbIsEditAllowed"), "true");
}

TEST_F(StoreRead, GettingItemsAnswersObjectsBeforeRelationsAndEachOnce)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    ASSERT_THAT(Get({"AB", "B", "A", "B"}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o B", "o A", "r AB A>B"));
}

TEST_F(StoreRead, AKeyThatNobodyHasIsNamed)
{
    Import(Part("A"));
    EXPECT_THAT(Get({"A", "X"}), FailsWith("ItemNotFoundERR_1101", "X"));
    EXPECT_THAT(Expand({"X"}, PARTS), FailsWith("ItemNotFoundERR_1101", "X"));
}

TEST_F(StoreRead, ExpandingARelationIsRefusedByName)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    EXPECT_THAT(Expand({"AB"}, PARTS), FailsWith("ItemIsRelationERR_1102", "AB"));
}

// Expansion.

TEST_F(StoreRead, AnExpansionFollowsARelationDownToTheLevelAskedFor)
{
    Import(Chain(5));
    ASSERT_THAT(Expand({"P0"}, PARTS, 0), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P0"));
    ASSERT_THAT(Expand({"P0"}, PARTS, 2), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P0", "o P1", "r R0 P0>P1", "o P2", "r R1 P1>P2"));
    ASSERT_THAT(Expand({"P2"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P2", "o P3", "r R2 P2>P3", "o P4", "r R3 P3>P4"));
}

TEST_F(StoreRead, AnExpansionFollowsARelationBackwards)
{
    Import(Chain(4));
    ASSERT_THAT(Expand({"P3"}, USES, 2), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P3", "o P2", "r R2 P2>P3", "o P1", "r R1 P1>P2"));
}

TEST_F(StoreRead, InBothDirectionsEveryItemIsAnsweredOnce)
{
    Import(Chain(3));
    ASSERT_THAT(Expand({"P1"}, {{"PartPart", true}, {"PartPart", false}}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P1", "o P2", "r R1 P1>P2", "o P0", "r R0 P0>P1"));
}

TEST_F(StoreRead, ACircleEndsAndEveryItemIsAnsweredOnce)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B") + PartPart("BA", "B", "A") + PartPart("AA", "A", "A"));
    ASSERT_THAT(Expand({"A"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), UnorderedElementsAre("o A", "o B", "r AB A>B", "r BA B>A", "r AA A>A"));
}

TEST_F(StoreRead, APartThatIsUsedTwiceIsAnsweredOnceWithBothRelations)
{
    Import(Part("A") + Part("N") + PartPart("AN1", "A", "N") + PartPart("AN2", "A", "N"));
    ASSERT_THAT(Expand({"A"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o N", "r AN1 A>N", "r AN2 A>N"));
}

TEST_F(StoreRead, ASubclassOfTheRelationIsFollowedTooAndNotTwice)
{
    Import(Part("A") + Part("B") + Object("StandardPart", "S") + PartPart("AB", "A", "B") +
           Relation("StandardPartUsage", "AS", "A", "S"));
    ASSERT_THAT(Expand({"A"}, {{"PartPart", true}, {"StandardPartUsage", true}}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o B", "r AB A>B", "o S", "r AS A>S"));
    ASSERT_THAT(Expand({"A"}, {{"StandardPartUsage", true}}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o S", "r AS A>S"));
}

TEST_F(StoreRead, SeveralRelationsAreFollowedInTheirOrderAtEveryObject)
{
    Import(Part("A") + Part("B") + Object("CATPartFile", "F") + PartPart("AB", "A", "B") +
           Relation("PartFile", "BF", "B", "F"));
    ASSERT_THAT(Expand({"A"}, {{"PartFile", true}, {"PartPart", true}}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o B", "r AB A>B", "o F", "r BF B>F"));
}

TEST_F(StoreRead, RelationsBelowAnObjectComeInTheOrderInWhichTheyWereMade)
{
    Import(Part("A") + Part("B") + Part("C") + PartPart("2", "A", "C") + PartPart("1", "A", "B"));
    ASSERT_THAT(Expand({"A"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o C", "r 2 A>C", "o B", "r 1 A>B"));
}

TEST_F(StoreRead, AnUnknownRelationIsNamed)
{
    Import(Part("A"));
    EXPECT_THAT(Expand({"A"}, {{"PartWhole", true}}), FailsWith("RelationClassUnknownERR_1109", "PartWhole"));
}

TEST_F(StoreRead, AChainOfManyLevelsIsExpandedWhole)
{
    constexpr int COUNT = 20000;
    Import(Chain(COUNT));
    ASSERT_THAT(Expand({"P0"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), SizeIs(2 * COUNT - 1));
}

TEST_F(StoreRead, AnAnswerIsHandedOnInPieces)
{
    Import(Chain(2000));
    std::size_t longest = 0;
    int pieces = 0;
    ASSERT_THAT(m_pStore->Export(true,
                                 [&](std::string_view piece) {
                                     longest = std::max(longest, piece.size());
                                     ++pieces;
                                 }),
                Succeeds());
    EXPECT_GT(pieces, 5);
    EXPECT_LT(longest, 100000U);
}

TEST_F(StoreRead, WhatIsExpandedFeedsThePdmGraph)
{
    Import(Part("A") + Part("B") + Part("C") + PartPart("AB", "A", "B") + PartPart("BC", "B", "C"));
    ASSERT_THAT(Expand({"A"}, PARTS), Succeeds());
    ASSERT_THAT(TryUpdate(m_Answer), Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("A", "AB", "B", "BC", "C"));
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("AB"));
    EXPECT_THAT(LeftKeys("C", "PartPart"), ElementsAre("BC"));
}

// Queries.

TEST_F(StoreRead, AQueryFindsTheObjectsOfAClassAndItsSubclasses)
{
    Import(Object("CATPartFile", "F") + Part("A") + Object("StandardPart", "S") + Part("B"));
    ASSERT_THAT(Query(Conditions("Part", {})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o B", "o S"));
    ASSERT_THAT(Query(Conditions("StandardPart", {})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o S"));
    ASSERT_THAT(Query(Conditions("", {})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o F", "o A", "o S", "o B"));
    ASSERT_THAT(Query(Conditions("Document", {})), Succeeds());
    EXPECT_EQ(m_Answer, Whole("query", ""));
}

TEST_F(StoreRead, AQueryFindsObjectsWhoseAttributesHaveAllTheValues)
{
    Import(Part("A", Attribute("Name", "nut") + Attribute("Material", "steel")) +
           Part("B", Attribute("Name", "nut") + Attribute("Material", "brass")) +
           Part("C", Attribute("Material", "steel")));
    ASSERT_THAT(Query(Conditions("Part", {{"Name", "nut"}})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o B"));
    ASSERT_THAT(Query(Conditions("Part", {{"Name", "nut"}, {"Material", "steel"}})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A"));
    ASSERT_THAT(Query(Conditions("Part", {{"Name", "bolt"}})), Succeeds());
    EXPECT_THAT(Items(), IsEmpty());
    ASSERT_THAT(Query(Conditions("Part", {{"NoSuchAttribute", "*"}})), Succeeds());
    EXPECT_THAT(Items(), IsEmpty());
}

TEST_F(StoreRead, AStarStandsForAnyText)
{
    Import(Part("A", Attribute("Name", "rod assembly")) + Part("B", Attribute("Name", "rod")) +
           Part("C", Attribute("Name", "a rod")) + Part("D", Attribute("Name", "r?d")));
    ASSERT_THAT(Query(Conditions("Part", {{"Name", "rod*"}})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o B", "o A"));
    ASSERT_THAT(Query(Conditions("Part", {{"Name", "*rod"}})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o C", "o B"));
    ASSERT_THAT(Query(Conditions("Part", {{"Name", "r*d*b*"}})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A"));
    ASSERT_THAT(Query(Conditions("Part", {{"Name", "r?d"}})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o D"));
    ASSERT_THAT(Query(Conditions("Part", {{"Name", "*"}})), Succeeds());
    EXPECT_THAT(Items(), SizeIs(4));
}

TEST_F(StoreRead, KeysAndStatesCanBeAskedFor)
{
    Import(Part("P/1") + Part("P/12") + Part("Q/1", Attribute("State", "30")));
    ASSERT_THAT(Query(Conditions("Part", {{"Key", "P/1"}})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P/1"));
    ASSERT_THAT(Query(Conditions("", {{"Key", "P/*"}})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P/1", "o P/12"));
    ASSERT_THAT(Query(Conditions("Part", {{"State", "30"}})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o Q/1"));
    ASSERT_THAT(Query(Conditions("Part", {{"Key", "Q/1"}, {"State", "10"}})), Succeeds());
    EXPECT_THAT(Items(), IsEmpty());
}

TEST_F(StoreRead, AQueryGivesNoMoreObjectsThanItIsAllowedTo)
{
    Import(Chain(10));
    QTBStoreQuery query = Conditions("Part", {});
    query.maxCount = 3;
    ASSERT_THAT(Query(query), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P0", "o P1", "o P2"));
}

TEST_F(StoreRead, OldVersionsAreFoundOnlyWhenAskedFor)
{
    Import(Part("A", Attribute("Name", "nut")));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    ASSERT_THAT(Query(Conditions("Part", {{"Name", "nut"}})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A/B"));
    QTBStoreQuery query = Conditions("Part", {{"Name", "nut"}});
    query.newestVersionsOnly = false;
    ASSERT_THAT(Query(query), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o A/B"));
    EXPECT_EQ(InfoIn("A", "QtbIsNewestVersion"), "false");
    EXPECT_EQ(InfoIn("A", "QtbNewestVersion"), "B");
    // Both stay in the graph then.
    EXPECT_EQ(InfoIn("A/B", "QtbSupersedes"), "not defined");
}

TEST_F(StoreRead, AnUnknownClassIsNamed)
{
    EXPECT_THAT(Query(Conditions("Partt", {})), FailsWith("ObjectClassUnknownERR_1108", "Partt"));
}

TEST_F(StoreRead, TextsThatSqlOrXmlCouldMistakeAreFoundAndAnswered)
{
    const std::string nasty = "'; DROP TABLE object; -- \"<&>%_\xE2\x82\xAC";
    Import(Part("A", Attribute("Name", nasty)));
    ASSERT_THAT(Query(Conditions("Part", {{"Name", CATUnicodeString(std::string_view{nasty})}})), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A"));
    ASSERT_THAT(TryUpdate(m_Answer), Succeeds());
    EXPECT_EQ(AttributeOf(FindNode("A"), "Name"), nasty);
}

// Functions.

TEST_F(StoreRead, TheVersionsOfAnObjectAreAnsweredAsOutputArguments)
{
    Import(Part("A"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    ASSERT_THAT(Revise({"A/B"}), Succeeds());
    ASSERT_THAT(Invoke("getVersions", {{"key", "A/B"}}), Succeeds());
    EXPECT_THAT(m_Answer, AllOf(HasSubstr("<function name=\"dynamicInvoke\">\n<outArgs><arg name=\"versions\">\n<o>"),
                                HasSubstr("</o>\n</arg></outArgs>\n</function>")));
    EXPECT_THAT(Items(), ElementsAre("o A", "o A/B", "o A/C"));
    ASSERT_THAT(TryUpdate(m_Answer), Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("A", "A/B", "A/C"));
}

TEST_F(StoreRead, WhatAUserHasCheckedOutIsAnswered)
{
    Import(Part("A") + Part("B") + Part("C"));
    ASSERT_THAT(CheckOut({"B"}), Succeeds());
    ASSERT_THAT(OpenFor("lee")->CheckOut({"C"}, {}), Succeeds());
    ASSERT_THAT(Invoke("getCheckedOut", {}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o B"));
    ASSERT_THAT(Invoke("getCheckedOut", {{"user", "lee"}}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o C"));
    ASSERT_THAT(Invoke("getCheckedOut", {{"user", "jo"}}), Succeeds());
    EXPECT_THAT(Items(), IsEmpty());
}

TEST_F(StoreRead, ObjectsThatNobodyUsesAreTheRoots)
{
    Import(Chain(3) + Part("Q") + Object("CATPartFile", "F"));
    ASSERT_THAT(Invoke("getRoots", {{"class", "Part"}}), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P0", "o Q"));
}

TEST_F(StoreRead, AnUnknownFunctionIsNamed)
{
    EXPECT_THAT(Invoke("getRich", {}), FailsWith("FunctionUnknownERR_1116", "getRich"));
    EXPECT_THAT(Invoke("getVersions", {}), FailsWith("ItemNotFoundERR_1101", ""));
}

// Versions that a session missed.

TEST_F(StoreRead, AVersionTakesThePlaceOfTheOneThatTheSessionHolds)
{
    Import(Part("A"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    ASSERT_THAT(Revise({"A/B"}), Succeeds());
    ASSERT_THAT(Get({"A/C"}), Succeeds());
    EXPECT_EQ(InfoIn("A/C", "QtbSupersedes"), "A/B");
    m_pStore->SetSessionKeys([](const CATUnicodeString& usKey) { return usKey == "A"; });
    ASSERT_THAT(Get({"A/C"}), Succeeds());
    EXPECT_EQ(InfoIn("A/C", "QtbSupersedes"), "A");
    // Asked for together they stay apart.
    ASSERT_THAT(Get({"A", "A/C"}), Succeeds());
    EXPECT_EQ(InfoIn("A/C", "QtbSupersedes"), "not defined");
}

TEST_F(StoreRead, AnOldVersionCanBeExpandedBesideTheNewOne)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    ASSERT_THAT(Expand({"A", "A/B"}, PARTS), Succeeds());
    ASSERT_THAT(Items(), SizeIs(5));
    ASSERT_THAT(TryUpdate(m_Answer), Succeeds());
    EXPECT_THAT(RightKeys("A", "PartPart"), ElementsAre("AB"));
    EXPECT_THAT(RightKeys("A/B", "PartPart"), ElementsAre(StartsWith("PartPart/")));
    EXPECT_THAT(m_Answer, Not(HasSubstr("QtbSupersedes")));
}

// Export.

TEST_F(StoreRead, AnExportHasTheNewestVersionsAndTheirRelations)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    ASSERT_THAT(Export(true), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o B", "o A/B", StartsWith("r PartPart/")));
    ASSERT_THAT(Export(false), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o B", "o A/B", "r AB A>B", StartsWith("r PartPart/")));
}

} // namespace
