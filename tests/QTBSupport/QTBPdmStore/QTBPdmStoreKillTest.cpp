// A process that is killed in the middle of its work: what it reported as done is there, nothing is half done.

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <random>
#include <thread>

#include "QTBStoreDatabase.h"
#include "QTBStoreMigrations.h"
#include "QTBStoreSession.h"

using ::testing::IsEmpty;

namespace fs = std::filesystem;

namespace {

class StoreKill : public QTBStoreSession
{
protected:
    void SetUp() override
    {
        QTBStoreSession::SetUp();
        WriteFile("one", std::string(20000, '1'));
        WriteFile("two", std::string(20000, '2'));
    }

    std::string DiskPath() const { return m_DiskFolder.GetPath("pdm.store"); }

    // Requests of every kind that changes the store.
    static constexpr int KINDS = 9;

    // A part of an assembly's life; what a step does follows from its number alone.
    HRESULT RunStep(QTBPdmStore& store, int step) const
    {
        const std::string number = std::to_string(step / KINDS);
        const std::string key = "F" + number;
        const auto toKeys = [](const std::string& text) { return Keys{text.c_str()}; };
        switch (step % KINDS) {
        case 0: {
            CATIDOMDocument_var spAnswer;
            std::string items = Part("P" + number);
            for (int i = 0; i < 10; ++i) {
                const std::string child = "C" + number + "." + std::to_string(i);
                items += Part(child) + PartPart("R" + child, "P" + number, child);
            }
            QTBXmlUtil::GetDomDocument(CATUnicodeString(std::string_view{Answer(items)}), &spAnswer);
            return store.Import(spAnswer, "", nullptr);
        }
        case 1:
            return store.CreateObject("CATPartFile", key.c_str(), Attribute("FileName", key).c_str(), {});
        case 2:
            return store.CreateRelation("PartFile", ("P" + number).c_str(), key.c_str(), "", {});
        case 3:
            return store.CheckOut(toKeys(key), {});
        case 4:
            return store.CheckIn(toKeys(key), {PathOf(step % (2 * KINDS) < KINDS ? "one" : "two").c_str()}, {});
        case 5:
            return store.Delete(toKeys("C" + number + ".3"), "", {});
        case 6:
            return store.Revise(toKeys("P" + number), {});
        case 7:
            return store.UpdateAttributes(("C" + number + ".0").c_str(), Attribute("Name", "new").c_str(), {});
        default:
            return store.Promote(toKeys(key), {});
        }
    }

    static std::string DumpOf(QTBPdmStore& store)
    {
        std::string dump;
        EXPECT_THAT(store.Export(false, [&dump](std::string_view piece) { dump.append(piece); }), Succeeds());
        return dump;
    }

    // Starts a process that works on the store from a step on and writes the number of each finished step to the pipe.
    pid_t StartWork(int firstStep, int lastStep, int descriptor) const
    {
        const pid_t pid = fork();
        if (pid != 0) {
            return pid;
        }
        std::unique_ptr<QTBPdmStore> pStore;
        bool isWell = SUCCEEDED(QTBPdmStore::Open(DiskPath().c_str(), MakeOptions(), &pStore));
        for (int step = firstStep; isWell && step < lastStep; ++step) {
            isWell = SUCCEEDED(RunStep(*pStore, step)) &&
                     write(descriptor, &step, sizeof(step)) == static_cast<ssize_t>(sizeof(step));
        }
        _exit(isWell ? 0 : 1);
    }

    static void KillAfter(pid_t pid, int microseconds)
    {
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
        kill(pid, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(pid, &status, 0), pid);
        // It was killed, or had done everything.
        EXPECT_TRUE(WIFSIGNALED(status) || (WIFEXITED(status) && WEXITSTATUS(status) == 0)) << status;
    }

    // A change takes its time there.
    QTBTestFolder m_DiskFolder;
};

TEST_F(StoreKill, EveryReportedChangeIsThereAndNoneIsHalfDone)
{
    constexpr int STEPS = 30 * KINDS;
    constexpr int KILLS = 80;
    // What the store is after each number of steps.
    std::vector<std::string> dumps = {DumpOf(*m_pStore)};
    for (int step = 0; step < STEPS; ++step) {
        ASSERT_THAT(RunStep(*m_pStore, step), Succeeds()) << step;
        dumps.push_back(DumpOf(*m_pStore));
    }

    ASSERT_THAT(QTBPdmStore::Create(DiskPath().c_str()), Succeeds());
    std::mt19937 random(4711);
    int done = 0;
    int killsInTheMiddle = 0;
    for (int round = 0; round < KILLS && done < STEPS; ++round) {
        int descriptors[2];
        ASSERT_EQ(pipe(descriptors), 0);
        const pid_t pid = StartWork(done, STEPS, descriptors[1]);
        ASSERT_GT(pid, 0);
        close(descriptors[1]);
        KillAfter(pid, static_cast<int>(random() % 40000));
        int reported = done;
        for (int step = 0; read(descriptors[0], &step, sizeof(step)) == static_cast<ssize_t>(sizeof(step));) {
            ASSERT_EQ(step, reported);
            ++reported;
        }
        close(descriptors[0]);

        ASSERT_THAT(QTBPdmStore::Open(DiskPath().c_str(), MakeOptions(), &m_pStore), Succeeds());
        const std::string dump = DumpOf(*m_pStore);
        // A change may be done and not yet reported.
        const bool isDoneUnreported = reported < STEPS && dump == dumps[static_cast<std::size_t>(reported) + 1];
        ASSERT_TRUE(isDoneUnreported || dump == dumps[static_cast<std::size_t>(reported)])
            << "after " << reported << " steps";
        ASSERT_THAT(Faults(), IsEmpty()) << "after " << reported << " steps";
        done = reported + (isDoneUnreported ? 1 : 0);
        killsInTheMiddle += done < STEPS ? 1 : 0;
    }
    // How many of the kills come in time depends on the machine.
    EXPECT_GT(killsInTheMiddle, 0);
    EXPECT_GT(done, 0);
}

TEST_F(StoreKill, AnUpdateOfAnOldStoreIsDoneWholeOrNotAtAll)
{
    const std::string original = m_DiskFolder.GetPath("old.store");
    {
        QTBStoreDatabase::Options options;
        options.mayCreate = true;
        QTBStoreDatabase database(original, options);
        QTBStoreMigrations::Create(database, 1);
        database.Execute(R"(
INSERT INTO class (id, name) VALUES (1, 'Part');
UPDATE counter SET last_id = 5000;
WITH RECURSIVE n (id) AS (VALUES (1) UNION ALL SELECT id + 1 FROM n WHERE id < 5000)
INSERT INTO object (id, key, class_id, first_id, is_newest, version, state_id, info, record)
SELECT id, 'P' || id, 1, id, 1, 'A', 1, '', '<a name="Description">' || hex(randomblob(100)) || '</a>' FROM n;
INSERT INTO attribute (id, name) VALUES (1, 'Description');
INSERT INTO object_attribute (object_id, attribute_id, value)
SELECT id, 1, substr(record, 23, 200) FROM object;
)");
    }
    std::mt19937 random(11);
    for (int round = 0; round < 25; ++round) {
        fs::copy_file(original, DiskPath(), fs::copy_options::overwrite_existing);
        for (const char* end : {"-wal", "-shm"}) {
            fs::remove(DiskPath() + end);
        }
        const pid_t pid = StartWork(0, 0, -1);
        ASSERT_GT(pid, 0);
        KillAfter(pid, static_cast<int>(random() % 60000));
        {
            QTBStoreDatabase database(DiskPath(), {});
            const std::int64_t version = database.GetNumber("PRAGMA user_version");
            EXPECT_TRUE(version == 1 || version == QTBStoreMigrations::CURRENT_VERSION) << version;
        }
        ASSERT_THAT(QTBPdmStore::Open(DiskPath().c_str(), MakeOptions(), &m_pStore), Succeeds());
        ASSERT_THAT(Faults(), IsEmpty());
        ASSERT_THAT(Get({"P1", "P5000"}), Succeeds());
        m_pStore.reset();
    }
}

TEST_F(StoreKill, AStoreInTheMakingIsThereWholeOrNotAtAll)
{
    std::mt19937 random(5);
    int made = 0;
    for (int round = 0; round < 25; ++round) {
        const std::string path = m_DiskFolder.GetPath("new" + std::to_string(round) + ".store");
        const pid_t pid = fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            _exit(SUCCEEDED(QTBPdmStore::Create(path.c_str())) ? 0 : 1);
        }
        KillAfter(pid, static_cast<int>(random() % 30000));
        if (fs::exists(path)) {
            ++made;
            ASSERT_THAT(QTBPdmStore::Open(path.c_str(), MakeOptions(), &m_pStore), Succeeds());
            ASSERT_THAT(Faults(), IsEmpty());
            ASSERT_THAT(CreateObject("Part", "A"), Succeeds());
        } else {
            ASSERT_THAT(QTBPdmStore::Create(path.c_str()), Succeeds());
        }
    }
    SUCCEED() << made;
}

TEST_F(StoreKill, AFileThatNobodyRefersToAfterACrashGoesWithTheNextCheck)
{
    Import(Object("CATPartFile", "F"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    ASSERT_THAT(CheckIn({"F"}, {PathOf("one").c_str()}), Succeeds());
    m_pStore.reset();
    {
        // As if the process had died between the change and the removal of the file.
        QTBStoreDatabase database(Path(), {});
        database.Execute("UPDATE object SET file_id = NULL");
    }
    m_pStore = OpenFor("kim");
    const auto countFiles = [this] {
        int count = 0;
        for (const auto& entry : fs::recursive_directory_iterator(Path() + ".files")) {
            count += entry.is_regular_file() ? 1 : 0;
        }
        return count;
    };
    EXPECT_EQ(countFiles(), 1);
    EXPECT_THAT(Faults(), IsEmpty());
    EXPECT_EQ(countFiles(), 0);

    // A copy that was in the making goes when it is old enough to be nobody's.
    const std::string abandoned = Path() + ".files/incoming-4711-1";
    std::ofstream(abandoned) << "half a file";
    EXPECT_THAT(Faults(), IsEmpty());
    EXPECT_EQ(countFiles(), 1);
    fs::last_write_time(abandoned, fs::file_time_type::clock::now() - std::chrono::hours(25));
    EXPECT_THAT(Faults(), IsEmpty());
    EXPECT_EQ(countFiles(), 0);
}

} // namespace
