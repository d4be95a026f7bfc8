// Answers taken into the store.

#include "QTBStoreSession.h"

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

class StoreImport : public QTBStoreSession
{
protected:
    // A refused import leaves the store as it was.
    template <class Matcher>
    void ExpectRefusal(const std::string& answer, const Matcher& matcher)
    {
        const std::string before = Dump();
        EXPECT_THAT(ImportAnswer(answer), matcher);
        EXPECT_EQ(Dump(), before);
        EXPECT_THAT(Faults(), IsEmpty());
    }
};

TEST_F(StoreImport, TheExampleAssemblyIsTakenInWhole)
{
    for (const char* name : {"structure", "files"}) {
        ASSERT_THAT(ImportAnswer(ReadFile(QTB_SOURCE_DIR "/examples/as1/" + std::string(name) + ".xml")), Succeeds());
        EXPECT_EQ(m_Report.objectsAdded, 9);
        EXPECT_EQ(m_Report.relationsAdded, name == std::string("structure") ? 13 : 9);
        EXPECT_EQ(m_Report.itemsLeftOut, 0);
    }
    ASSERT_THAT(Expand({"as1"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), SizeIs(9 + 13));
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreImport, AnAttributeOfEachTypeIsTakenInAndGivenBack)
{
    const std::string formats = ReadFile(QTB_SOURCE_DIR "/docs/formats.md");
    const std::string begin = "<!-- example: answer -->\n```xml\n";
    const std::size_t from = formats.find(begin);
    ASSERT_NE(from, std::string::npos);
    const std::size_t to = formats.find("```", from + begin.size());
    ASSERT_THAT(ImportAnswer(formats.substr(from + begin.size(), to - from - begin.size())), Succeeds());
    EXPECT_EQ(m_Report.itemsLeftOut, 0);
    ASSERT_THAT(Get({"Part/4711/B"}), Succeeds());
    for (const char* type : {"list", "nvlist", "table", "object", "objectlist"}) {
        EXPECT_THAT(m_Answer, HasSubstr("type=\"" + std::string(type) + "\"")) << type;
    }
    ASSERT_THAT(TryUpdate(m_Answer), Succeeds()) << "the PDM graph reads what the store gives back";
    EXPECT_EQ(AttributeOf(FindNode("Part/4711/B.Owner"), "FullName"), "Jo Doe");
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreImport, TheSameAnswerAgainChangesNothing)
{
    const std::string answer = ReadFile(QTB_SOURCE_DIR "/examples/as1/structure.xml");
    ASSERT_THAT(ImportAnswer(answer), Succeeds());
    const std::string before = Dump();
    ASSERT_THAT(ImportAnswer(answer), Succeeds());
    EXPECT_EQ(m_Report.itemsUnchanged, 22);
    EXPECT_EQ(m_Report.objectsAdded + m_Report.objectsChanged + m_Report.relationsAdded + m_Report.relationsChanged, 0);
    EXPECT_EQ(Dump(), before);
}

TEST_F(StoreImport, WhatAnExportWritesAnotherStoreTakesIn)
{
    Import(Part("P") + Part("A", Attribute("Revision", "A")) + Part("C") + Object("Person", "jd") +
           PartPart("PA", "P", "A") + PartPart("AC", "A", "C"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    ASSERT_THAT(Promote({"C"}), Succeeds());
    const std::string dump = Dump();
    m_pStore.reset();
    std::filesystem::remove(Path());
    ASSERT_THAT(QTBPdmStore::Create(Path().c_str()), Succeeds());
    m_pStore = OpenFor("kim");
    ASSERT_THAT(ImportAnswer(dump), Succeeds());
    EXPECT_EQ(m_Report.itemsLeftOut, 0);
    EXPECT_EQ(Dump(), dump);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreImport, VersionsAndStatesOfTheAnswerAreKept)
{
    Import(Part("A", Attribute("State", "30") + Info({{"QtbVersion", "D"}})) + Part("B"));
    ASSERT_THAT(Get({"A", "B"}), Succeeds());
    EXPECT_EQ(InfoIn("A", "QtbVersion"), "D");
    EXPECT_THAT(m_Answer, HasSubstr("<a name=\"State\">30</a>"));
    EXPECT_EQ(InfoIn("B", "QtbVersion"), "A");
}

TEST_F(StoreImport, AStateThatIsNoneOfTheLifecycleIsRefused)
{
    ExpectRefusal(Answer(Part("A") + Part("B", Attribute("State", "99"))), FailsWith("StateUnknownERR_1122", "99"));
}

TEST_F(StoreImport, ItemsThatTheGraphWouldLeaveOutAreLeftOutAndNamed)
{
    Import(Part("A") + Object("Alien", "X") + "<o><a name=\"Class\">Part</a></o>" + PartPart("AY", "A", "Y") +
           Relation("Alien", "AA", "A", "A"));
    EXPECT_EQ(m_Report.objectsAdded, 1);
    EXPECT_EQ(m_Report.itemsLeftOut, 4);
    EXPECT_THAT(TextsOf(m_Report.leftOut),
                ElementsAre("X: the schema does not know its class", "object without a key",
                            "AY: an object of the relation is missing", "AA: the schema does not know its class"));
}

TEST_F(StoreImport, AClassThatTheSchemaDoesNotKnowIsReplacedByItsRelevantBaseClass)
{
    Import(Object("SpecialPart", "A", Info({{"QtbRelevantBaseClass", "Part"}})) + Part("B"));
    ASSERT_THAT(Relate("PartPart", "A", "B"), Succeeds());
    QTBStoreQuery query;
    query.className = "Part";
    ASSERT_THAT(Query(query), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o B"));
    EXPECT_EQ(InfoIn("A", "QtbRelevantBaseClass"), "Part");
    EXPECT_EQ(InfoIn("A", "QtbVersion"), "A");
    ASSERT_THAT(TryUpdate(m_Answer), Succeeds());
    EXPECT_THAT(AllKeys(), ElementsAre("A", "B"));
}

TEST_F(StoreImport, AnItemThatComesTwiceIsTheLaterOne)
{
    Import(Part("A", Attribute("Name", "one") + Attribute("State", "30")) +
           Part("A", Attribute("Name", "two") + Attribute("State", "30")));
    ASSERT_THAT(Get({"A"}), Succeeds());
    EXPECT_THAT(m_Answer, HasSubstr("<a name=\"Name\">two</a>"));
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreImport, ChangedItemsAreBroughtUpToDateWhereTheUserMayChangeThem)
{
    Import(Part("A", Attribute("Name", "one")) + Part("B") + Part("C") + PartPart("AB", "A", "B"));
    Import(Part("A", Attribute("Name", "two")) + PartPart("AB", "A", "C"));
    EXPECT_EQ(m_Report.objectsChanged, 1);
    EXPECT_EQ(m_Report.relationsChanged, 1);
    ASSERT_THAT(Expand({"A"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o C", "r AB A>C"));
    EXPECT_THAT(m_Answer, HasSubstr("<a name=\"Name\">two</a>"));
    ASSERT_THAT(OpenFor("lee")->CheckOut({"A"}, {}), Succeeds());
    ExpectRefusal(Answer(Part("B", Attribute("Name", "b")) + Part("A", Attribute("Name", "three"))),
                  FailsWith("CheckedOutByOtherERR_1103", "A"));
    ExpectRefusal(Answer(PartPart("AC", "A", "C")), FailsWith("CheckedOutByOtherERR_1103", "A"));
}

TEST_F(StoreImport, AReleasedPartCanBringItsRelationsButGetNoNewOnes)
{
    const std::string released = Part("A", Attribute("State", "30")) + Part("B") + PartPart("AB", "A", "B");
    Import(released);
    EXPECT_EQ(m_Report.relationsAdded, 1);
    ExpectRefusal(Answer(PartPart("AB2", "A", "B")), FailsWith("StateForbidsERR_1107", "A"));
    Import(released);
    EXPECT_EQ(m_Report.itemsUnchanged, 3);
}

TEST_F(StoreImport, ANewVersionTakesThePlaceOfTheOneThatItSupersedes)
{
    Import(Part("P") + Part("A") + PartPart("PA", "P", "A"));
    Import(Part("A2", Info({{"QtbSupersedes", "A"}, {"QtbVersion", "2"}})));
    ASSERT_THAT(Expand({"P"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o P", "o A2", "r PA P>A2"));
    EXPECT_EQ(InfoIn("A2", "QtbVersion"), "2");
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreImport, AVersionThatTheObjectHasAlreadyIsCountedOn)
{
    Import(Part("A", Info({{"QtbVersion", "A"}})));
    Import(Part("A2", Info({{"QtbSupersedes", "A"}, {"QtbVersion", "A"}})));
    ASSERT_THAT(Get({"A2"}), Succeeds());
    EXPECT_EQ(InfoIn("A2", "QtbVersion"), "B");
}

TEST_F(StoreImport, ListedItemsAreDeleted)
{
    Import(Part("A") + Part("B") + Part("C") + PartPart("AB", "A", "B") + PartPart("AC", "A", "C"));
    ASSERT_THAT(ImportAnswer(Answer("<objectToDelete>C</objectToDelete><relationToDelete>AB</relationToDelete>"
                                    "<objectToDelete>X</objectToDelete>")),
                Succeeds());
    EXPECT_EQ(m_Report.itemsDeleted, 2);
    ASSERT_THAT(Export(false), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o B"));
}

TEST_F(StoreImport, AnAnswerOfAnInvokedFunctionIsTakenIn)
{
    ASSERT_THAT(ImportAnswer("<x><function name=\"dynamicInvoke\"><outArgs><arg name=\"a\">" + Part("A") +
                             "</arg></outArgs>" + Part("B") + "</function></x>"),
                Succeeds());
    ASSERT_THAT(Export(false), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A"));
}

TEST_F(StoreImport, AnAnswerHasOneFunction)
{
    ExpectRefusal("<answer/>", FailsWithMessage("AnswerWithoutFunctionERR_1121"));
    ExpectRefusal("<answer><function/><function/></answer>", FailsWithMessage("AnswerWithoutFunctionERR_1121"));
    EXPECT_THAT(m_pStore->Import(NULL_var, "", nullptr), FailsQuietly());
}

TEST_F(StoreImport, AnItemThatTheGraphCouldNotReadIsRefusedByName)
{
    ExpectRefusal(Answer(Part("A") + Part("B", "<a name=\"Measures\" type=\"nvlist\"><v>1</v></a>")),
                  FailsWith("AttributeMalformedERR_1110", "Measures"));
    ExpectRefusal(Answer(Part("A", Attribute("Name", "x") + Attribute("Name", "y"))),
                  FailsWith("AttributeMalformedERR_1110", "Name"));
}

TEST_F(StoreImport, AnObjectAndARelationCannotHaveTheSameKey)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    ExpectRefusal(Answer(Part("AB")), FailsWith("KeyTakenERR_1114", "AB"));
    ExpectRefusal(Answer(PartPart("A", "A", "B")), FailsWith("KeyTakenERR_1114", "A"));
}

TEST_F(StoreImport, FilesOfTheFolderAreTakenInUnderTheirNames)
{
    const std::string folder = PathOf("files");
    std::filesystem::create_directory(folder);
    std::ofstream(folder + "/nut.CATPart") << "a nut";
    WriteFile("secret.CATPart", "not in the folder");
    const std::string answer = Answer(Object("CATPartFile", "F", Attribute("FileName", "nut.CATPart")) +
                                      Object("CATPartFile", "G", Attribute("FileName", "../secret.CATPart")) +
                                      Object("CATPartFile", "H", Attribute("FileName", "missing.CATPart")));
    ASSERT_THAT(ImportAnswer(answer, folder), Succeeds());
    EXPECT_EQ(m_Report.filesAdded, 1);
    ASSERT_THAT(Get({"F", "G", "H"}), Succeeds());
    EXPECT_EQ(InfoIn("F", "QtbHasFile"), "true");
    EXPECT_EQ(InfoIn("G", "QtbHasFile"), "false");
    EXPECT_EQ(InfoIn("H", "QtbHasFile"), "false");
    ASSERT_THAT(m_pStore->FetchFile("F", PathOf("fetched").c_str()), Succeeds());
    EXPECT_EQ(ReadFile(PathOf("fetched")), "a nut");
    ASSERT_THAT(ImportAnswer(answer, folder), Succeeds());
    EXPECT_EQ(m_Report.filesAdded, 0);
}

} // namespace
