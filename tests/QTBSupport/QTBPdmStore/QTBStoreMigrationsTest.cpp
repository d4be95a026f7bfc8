// Stores of earlier versions.

#include "QTBStoreMigrations.h"

#include "QTBStoreDatabase.h"
#include "QTBStoreSession.h"

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class StoreMigrations : public QTBStoreSession
{
protected:
    // A store as an earlier version of the program left it.
    std::string MakeOldStore(int version) const
    {
        const std::string path = PathOf("old-" + std::to_string(version) + ".store");
        QTBStoreDatabase::Options options;
        options.mayCreate = true;
        QTBStoreDatabase database(path, options);
        QTBStoreMigrations::Create(database, version);
        database.Execute(R"(
INSERT INTO class (id, name) VALUES (1, 'Part'), (2, 'PartPart');
INSERT INTO attribute (id, name) VALUES (1, 'Name');
UPDATE counter SET last_id = 4;
INSERT INTO object (id, key, class_id, first_id, supersedes_id, is_newest, version, state_id, info, record)
VALUES (1, 'A', 1, 1, NULL, 0, 'A', 3, '', '<a name="Name">one</a>'),
       (2, 'A/B', 1, 1, 1, 1, 'B', 1, '<nv name="QtbSubVersion">7</nv>', '<a name="Name">two</a>'),
       (3, 'C', 1, 3, NULL, 1, 'A', 1, '', '');
INSERT INTO object_attribute (object_id, attribute_id, value) VALUES (1, 1, 'one'), (2, 1, 'two');
INSERT INTO relation (id, key, class_id, left_id, right_id, supersedes_id, info, record)
VALUES (4, 'AC', 2, 2, 3, NULL, '', '<a name="Quantity">2</a>');
INSERT INTO checkout (object_id, user_name) VALUES (2, 'kim');
)");
        return path;
    }

    static std::int64_t GetVersion(const std::string& path)
    {
        QTBStoreDatabase database(path, {});
        return database.GetNumber("PRAGMA user_version");
    }
};

TEST_F(StoreMigrations, AStoreOfEveryEarlierVersionIsBroughtUpToDate)
{
    for (int version = 1; version < QTBStoreMigrations::CURRENT_VERSION; ++version) {
        const std::string path = MakeOldStore(version);
        EXPECT_EQ(GetVersion(path), version);
        ASSERT_THAT(QTBPdmStore::Open(path.c_str(), MakeOptions(), &m_pStore), Succeeds()) << version;
        EXPECT_EQ(GetVersion(path), QTBStoreMigrations::CURRENT_VERSION);
        EXPECT_THAT(Faults(), IsEmpty()) << version;
        ASSERT_THAT(Expand({"A/B"}, PARTS), Succeeds());
        EXPECT_THAT(Items(), ElementsAre("o A/B", "o C", "r AC A/B>C"));
        EXPECT_EQ(InfoIn("A/B", "QtbSubVersion"), "7");
        EXPECT_EQ(InfoIn("A/B", "QtbCheckedOutBy"), "kim");
        EXPECT_EQ(InfoIn("A/B", "QtbSupersedes"), "A");
        EXPECT_THAT(m_Answer, HasSubstr("<a name=\"Quantity\">2</a>"));
        // And it can be worked with.
        EXPECT_THAT(CheckIn({"A/B"}, {WriteFile("f", "content").c_str()}), Succeeds());
        EXPECT_THAT(Revise({"A/B"}), Succeeds());
        EXPECT_THAT(Faults(), IsEmpty()) << version;
    }
}

TEST_F(StoreMigrations, TheDocumentationHasEveryTableAndIndex)
{
    const std::string text = ReadFile(QTB_SOURCE_DIR "/docs/store.md");
    m_pStore.reset();
    QTBStoreDatabase database(Path(), {});
    QTBStoreStatement rows = database.Prepare("SELECT name FROM sqlite_schema WHERE name NOT LIKE 'sqlite_%'");
    int count = 0;
    while (rows.Step()) {
        EXPECT_THAT(text, HasSubstr(std::string(rows.GetText(0))));
        ++count;
    }
    EXPECT_GT(count, 15);
}

TEST_F(StoreMigrations, AnOldStoreThatMayOnlyBeReadStaysAsItIs)
{
    const std::string path = MakeOldStore(1);
    QTBPdmStore::Options options = MakeOptions();
    options.isReadOnly = true;
    EXPECT_THAT(QTBPdmStore::Open(path.c_str(), options, &m_pStore), FailsWith("StoreTooOldERR_1010", path.c_str()));
    EXPECT_EQ(GetVersion(path), 1);
}

TEST_F(StoreMigrations, AStoreOfANewerVersionIsRefusedAndStaysAsItIs)
{
    m_pStore.reset();
    {
        QTBStoreDatabase database(Path(), {});
        database.Execute("PRAGMA user_version = 99");
    }
    const std::string before = ReadFile(Path());
    EXPECT_THAT(QTBPdmStore::Open(Path().c_str(), MakeOptions(), &m_pStore),
                FailsWith("StoreTooNewERR_1004", Path().c_str()));
    EXPECT_EQ(ReadFile(Path()), before);
}

TEST_F(StoreMigrations, AnUpdateThatFailsLeavesTheOldVersion)
{
    const std::string path = MakeOldStore(1);
    {
        // Something that stands where the update wants to write.
        QTBStoreDatabase database(path, {});
        database.Execute("CREATE TABLE file (id INTEGER PRIMARY KEY)");
    }
    EXPECT_THAT(QTBPdmStore::Open(path.c_str(), MakeOptions(), &m_pStore), FailsWithMessage("StoreUnusableERR_1009"));
    EXPECT_EQ(GetVersion(path), 1);
}

} // namespace
