// Stores that cannot be used as one would like: each says why, and nothing is lost or half done.

#include <fcntl.h>
#include <pwd.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include <sqlite3.h>

#include "QTBStoreDatabase.h"
#include "QTBStoreSession.h"
#include "QTBStoreTransaction.h"

using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace fs = std::filesystem;

namespace {

class StoreFault : public QTBStoreSession
{
protected:
    HRESULT Open(const std::string& path, const QTBPdmStore::Options& options = MakeOptions())
    {
        return QTBPdmStore::Open(path.c_str(), options, &m_pStore);
    }

    // Runs the test's part in another process; its exit code is 0 when all went as expected there.
    template <class Part>
    static void InOtherProcess(Part part)
    {
        const pid_t pid = fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            _exit(part() ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(pid, &status, 0), pid);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    }

    // As long as it lives the process may read, but not write the file; the administrator, who may write everywhere, is
    // somebody else then.
    class WithoutRights
    {
    public:
        static constexpr uid_t NOBODY = 65534;

        explicit WithoutRights(const std::string& path) : m_Path(path)
        {
            fs::permissions(path, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
            if (m_IsAdministrator) {
                EXPECT_EQ(seteuid(NOBODY), 0);
            }
        }
        WithoutRights(const WithoutRights&) = delete;
        WithoutRights& operator=(const WithoutRights&) = delete;
        ~WithoutRights()
        {
            if (m_IsAdministrator) {
                EXPECT_EQ(seteuid(0), 0);
            }
            fs::permissions(m_Path, fs::perms::owner_write, fs::perm_options::add);
        }

    private:
        const std::string m_Path;
        const bool m_IsAdministrator = geteuid() == 0;
    };

    // Everybody may read, nobody may write.
    static constexpr fs::perms READABLE_FOLDER{0555};

    std::vector<std::string> NamesInFolder() const
    {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(m_Folder.GetPath())) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

    std::vector<std::string> KeptFiles() const
    {
        std::vector<std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(Path() + ".files")) {
            if (entry.is_regular_file()) {
                files.push_back(entry.path());
            }
        }
        return files;
    }

    // Parts P0, P1, ... as an answer.
    static std::string Parts(int count)
    {
        std::string items;
        for (int i = 0; i < count; ++i) {
            items += Part("P" + std::to_string(i), Attribute("Description", std::string(200, 'x')));
        }
        return Answer(items);
    }
};

// Opening.

TEST_F(StoreFault, AStoreThatIsNotThereIsNamed)
{
    EXPECT_THAT(Open(PathOf("missing")), FailsWith("StoreNotFoundERR_1001", PathOf("missing").c_str()));
    EXPECT_FALSE(fs::exists(PathOf("missing")));
}

TEST_F(StoreFault, AFileThatIsNoStoreIsRefusedAndLeftAsItIs)
{
    for (const std::string& content : {std::string(), std::string("<answer/>"), std::string(5000, '\0')}) {
        const std::string path = WriteFile("other", content);
        EXPECT_THAT(Open(path), FailsWith("NoStoreERR_1003", path.c_str()));
        EXPECT_EQ(ReadFile(path), content);
    }
    EXPECT_THAT(Open(m_Folder.GetPath()), FailsWith("NoStoreERR_1003", m_Folder.GetPath().c_str()));
    // A database of somebody else.
    sqlite3* pDatabase = nullptr;
    ASSERT_EQ(sqlite3_open(PathOf("foreign").c_str(), &pDatabase), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(pDatabase, "CREATE TABLE t (x)", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(pDatabase);
    EXPECT_THAT(Open(PathOf("foreign")), FailsWith("NoStoreERR_1003", PathOf("foreign").c_str()));
}

TEST_F(StoreFault, AStoreIsNotMadeWhereAFileIs)
{
    const std::string path = WriteFile("other", "precious");
    EXPECT_THAT(QTBPdmStore::Create(path.c_str()), FailsWith("StoreExistsERR_1002", path.c_str()));
    EXPECT_EQ(ReadFile(path), "precious");
    EXPECT_THAT(QTBPdmStore::Create(Path().c_str()), FailsWith("StoreExistsERR_1002", Path().c_str()));
    EXPECT_THAT(QTBPdmStore::Create(PathOf("no/folder").c_str()), FailsWithMessage("StoreUnusableERR_1009"));
    for (const fs::directory_entry& entry : fs::directory_iterator(m_Folder.GetPath())) {
        EXPECT_THAT(entry.path().string(), Not(HasSubstr(".new-")));
    }
}

TEST_F(StoreFault, AUserIsNeeded)
{
    EXPECT_THAT(Open(Path(), MakeOptions("")), FailsWithMessage("UserMissingERR_1012"));
}

// Damage.

TEST_F(StoreFault, ATruncatedStoreIsDamaged)
{
    ASSERT_THAT(ImportAnswer(Parts(500)), Succeeds());
    m_pStore.reset();
    const auto size = fs::file_size(Path());
    fs::resize_file(Path(), size / 2);
    const HRESULT hr = Open(Path());
    if (SUCCEEDED(hr)) {
        EXPECT_THAT(Export(false), FailsWith("StoreDamagedERR_1005", Path().c_str()));
    } else {
        EXPECT_THAT(hr, FailsWith("StoreDamagedERR_1005", Path().c_str()));
    }
    fs::resize_file(Path(), 60);
    EXPECT_THAT(Open(Path()), AnyOf(FailsWithMessage("NoStoreERR_1003"), FailsWithMessage("StoreDamagedERR_1005")));
}

TEST_F(StoreFault, OverwrittenBytesAreNoticedBeforeTheyReachASession)
{
    ASSERT_THAT(ImportAnswer(Answer(Part("A", Attribute("Name", "precious")) + Part("B"))), Succeeds());
    m_pStore.reset();
    std::string bytes = ReadFile(Path());
    const std::string record = "<a name=\"Name\">precious";
    const std::size_t at = bytes.find(record);
    ASSERT_NE(at, std::string::npos);
    bytes.replace(at, record.size(), "<a name=\"Name\">worth<s<");
    std::ofstream(Path(), std::ios::binary) << bytes;
    ASSERT_THAT(Open(Path()), Succeeds());
    EXPECT_THAT(Get({"A"}), FailsWith("StoreDamagedERR_1005", Path().c_str()));
    EXPECT_THAT(Get({"B"}), Succeeds());
}

TEST_F(StoreFault, ARecordThatSomebodyElseWroteIsNotTakenForTextUnlessItIsOne)
{
    Import(Part("A", Attribute("Name", "x")) + Part("B"));
    m_pStore.reset();
    {
        QTBStoreDatabase database(Path(), {});
        database.Execute(
            "UPDATE object SET record = CAST(x'3C61206E616D653D2258223EFF3C2F613E' AS TEXT) WHERE key = 'A';"
            "UPDATE object SET record = '<a name=\"X\"><b></a>' WHERE key = 'B';"
            "UPDATE object SET checksum = record_checksum(key, version, info, record)");
    }
    m_pStore = OpenFor("kim");
    EXPECT_THAT(Get({"A"}), FailsWith("StoreDamagedERR_1005", Path().c_str()));
    ASSERT_THAT(Get({"B"}), Succeeds());
    CATIDOMDocument_var spAnswer;
    EXPECT_TRUE(FAILED(QTBXmlUtil::GetTrustedDomDocument(m_Answer, &spAnswer)));
}

TEST_F(StoreFault, WhateverBytesAreOverwrittenTheStoreAnswersOrSaysThatItIsDamaged)
{
    ASSERT_THAT(ImportAnswer(Parts(40)), Succeeds());
    ASSERT_THAT(Revise({"P1"}), Succeeds());
    m_pStore.reset();
    const std::string bytes = ReadFile(Path());
    for (std::size_t i = 0; i < 300; ++i) {
        std::string damaged = bytes;
        const std::size_t at = 100 + i * (bytes.size() - 200) / 300;
        for (std::size_t k = 0; k < 8; ++k) {
            damaged[at + k] = static_cast<char>(damaged[at + k] ^ static_cast<char>(i * 37 + k * 11 + 1));
        }
        std::ofstream(Path(), std::ios::binary | std::ios::trunc) << damaged;
        HRESULT hr = Open(Path());
        if (SUCCEEDED(hr)) {
            hr = Export(false);
            CATListValCATUnicodeString faults;
            m_pStore->Check(&faults);
        }
        if (SUCCEEDED(hr)) {
            EXPECT_THAT(TryUpdate(m_Answer), Succeeds()) << "byte " << at;
        } else {
            EXPECT_THAT(MessageOf(hr), Not(HasSubstr("no message"))) << "byte " << at;
        }
        m_pStore.reset();
    }
}

TEST_F(StoreFault, TheCheckFindsWhatNoRequestCanHaveWritten)
{
    Import(Part("A", Attribute("Name", "x")) + Part("B") + PartPart("AB", "A", "B"));
    ASSERT_THAT(Revise({"A"}), Succeeds());
    EXPECT_THAT(Faults(), IsEmpty());
    const std::pair<const char*, const char*> damages[] = {
        {"UPDATE object_attribute SET value = 'y'", "A: the index of attributes is not up to date"},
        {"UPDATE object SET is_newest = 0 WHERE key = 'B'", "B has no newest version"},
        {"UPDATE relation SET right_id = (SELECT id FROM object WHERE key = 'A') WHERE key = 'AB'",
         "AB leads to an old version"},
        {"UPDATE object SET record = '' WHERE key = 'A/B'", "A/B: the checksum does not match"},
        {"PRAGMA foreign_keys = OFF; DELETE FROM object WHERE key = 'B'", "relation 3 refers to a missing object"},
        {"UPDATE counter SET last_id = 1", "B has a number that is still to be given"},
    };
    for (const auto& [sql, fault] : damages) {
        m_pStore.reset();
        const std::string bytes = ReadFile(Path());
        {
            QTBStoreDatabase database(Path(), {});
            database.Execute(sql);
        }
        m_pStore = OpenFor("kim");
        EXPECT_THAT(Faults(), Contains(fault)) << sql;
        m_pStore.reset();
        std::ofstream(Path(), std::ios::binary | std::ios::trunc) << bytes;
        m_pStore = OpenFor("kim");
    }
}

TEST_F(StoreFault, AFileWhoseContentWasChangedIsNotGivenOut)
{
    Import(Object("CATPartFile", "F"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    ASSERT_THAT(CheckIn({"F"}, {WriteFile("f", "content").c_str()}), Succeeds());
    for (const auto& entry : fs::recursive_directory_iterator(Path() + ".files")) {
        if (entry.is_regular_file()) {
            std::ofstream(entry.path()) << "changed";
        }
    }
    WriteFile("fetched", "what was there before");
    EXPECT_THAT(m_pStore->FetchFile("F", PathOf("fetched").c_str()), FailsWithMessage("StoreDamagedERR_1005"));
    EXPECT_EQ(ReadFile(PathOf("fetched")), "what was there before");
    EXPECT_THAT(Faults(), ElementsAre(HasSubstr("has another content than it had")));
    // Neither does it go into a pipe, where it could not be taken back.
    ASSERT_EQ(mkfifo(PathOf("pipe").c_str(), 0600), 0);
    const int reader = open(PathOf("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_THAT(m_pStore->FetchFile("F", PathOf("pipe").c_str()), FailsWithMessage("StoreDamagedERR_1005"));
    char c = 0;
    EXPECT_EQ(read(reader, &c, 1), 0);
    close(reader);
}

TEST_F(StoreFault, AFileWhoseContentWasChangedIsReplacedWhenItsContentComesAgain)
{
    Import(Object("CATPartFile", "F"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    ASSERT_THAT(CheckIn({"F"}, {WriteFile("f", "content").c_str()}), Succeeds());
    for (const auto& entry : fs::recursive_directory_iterator(Path() + ".files")) {
        if (entry.is_regular_file()) {
            std::ofstream(entry.path()) << "CONTENT";
        }
    }
    EXPECT_THAT(Faults(), ElementsAre(HasSubstr("has another content than it had")));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    ASSERT_THAT(CheckIn({"F"}, {PathOf("f").c_str()}), Succeeds());
    EXPECT_THAT(Faults(), IsEmpty());
    ASSERT_THAT(m_pStore->FetchFile("F", PathOf("fetched").c_str()), Succeeds());
    EXPECT_EQ(ReadFile(PathOf("fetched")), "content");
}

TEST_F(StoreFault, AFileOfARefusedChangeIsNotKept)
{
    Import(Object("CATPartFile", "F") + Object("CATPartFile", "G"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    const std::string file = WriteFile("f", "content");
    EXPECT_THAT(CheckIn({"F", "G"}, {file}), FailsWith("NotCheckedOutERR_1113", "G"));
    EXPECT_THAT(KeptFiles(), IsEmpty());
    // Neither by an import; what another object has stays.
    ASSERT_THAT(CheckIn({"F"}, {file}), Succeeds());
    EXPECT_EQ(KeptFiles().size(), 1U);
    WriteFile("g", "other content");
    fs::create_directory(PathOf("folder"));
    std::ofstream(PathOf("folder/f")) << "content";
    std::ofstream(PathOf("folder/g")) << "other content";
    const std::string items =
        Object("CATPartFile", "H", Attribute("FileName", "f")) + Object("CATPartFile", "I", Attribute("FileName", "g"));
    EXPECT_THAT(ImportAnswer(Answer(items + Part("P", Attribute("State", "50"))), PathOf("folder")),
                FailsWith("StateUnknownERR_1122", "50"));
    EXPECT_EQ(KeptFiles().size(), 1U);
    ASSERT_THAT(ImportAnswer(Answer(items), PathOf("folder")), Succeeds());
    EXPECT_EQ(KeptFiles().size(), 2U);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreFault, TheCheckRemovesFilesThatNoRowNames)
{
    Import(Object("CATPartFile", "F"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    ASSERT_THAT(CheckIn({"F"}, {WriteFile("f", "content").c_str()}), Succeeds());
    const std::vector<std::string> kept = KeptFiles();
    const std::string folder = Path() + ".files/ab/";
    fs::create_directories(folder);
    std::ofstream(folder + std::string(62, 'c')) << "left behind";
    // What has no name of the store's is somebody else's.
    std::ofstream(folder + "notes") << "precious";
    EXPECT_THAT(Faults(), IsEmpty());
    EXPECT_FALSE(fs::exists(folder + std::string(62, 'c')));
    EXPECT_EQ(ReadFile(folder + "notes"), "precious");
    fs::remove(folder + "notes");
    EXPECT_EQ(KeptFiles(), kept);
}

TEST_F(StoreFault, AFetchedFileReplacesNothingButItsTarget)
{
    Import(Object("CATPartFile", "F"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    ASSERT_THAT(CheckIn({"F"}, {WriteFile("f", "content").c_str()}), Succeeds());
    WriteFile("target.new", "precious");
    WriteFile("target", "old");
    fs::create_symlink("target", PathOf("link"));
    ASSERT_THAT(m_pStore->FetchFile("F", PathOf("link").c_str()), Succeeds());
    EXPECT_EQ(ReadFile(PathOf("target")), "content");
    EXPECT_TRUE(fs::is_symlink(PathOf("link")));
    EXPECT_EQ(ReadFile(PathOf("target.new")), "precious");
    EXPECT_THAT(m_pStore->FetchFile("F", m_Folder.GetPath().c_str()),
                FailsWith("FileUnwritableERR_1118", m_Folder.GetPath().c_str()));
    const std::string bytes = ReadFile(Path());
    EXPECT_THAT(m_pStore->FetchFile("F", Path().c_str()), FailsWith("FileIsStoresERR_1125", Path().c_str()));
    EXPECT_EQ(ReadFile(Path()), bytes);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreFault, AHashThatIsAPathIsNotFollowed)
{
    Import(Object("CATPartFile", "F"));
    ASSERT_THAT(CheckOut({"F"}), Succeeds());
    ASSERT_THAT(CheckIn({"F"}, {WriteFile("f", "content").c_str()}), Succeeds());
    m_pStore.reset();
    {
        QTBStoreDatabase database(Path(), {});
        database.Execute(("UPDATE file SET hash = '/../../f" + std::string(56, '0') + "'").c_str());
    }
    m_pStore = OpenFor("kim");
    EXPECT_THAT(m_pStore->FetchFile("F", PathOf("fetched").c_str()), FailsWithMessage("StoreDamagedERR_1005"));
}

// Several processes.

TEST_F(StoreFault, AWriterWaitsForAnotherAndThenSaysThatTheStoreIsInUse)
{
    Import(Part("A"));
    int ready[2];
    int done[2];
    ASSERT_EQ(pipe(ready), 0);
    ASSERT_EQ(pipe(done), 0);
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        QTBStoreDatabase database(Path(), {});
        const QTBStoreTransaction transaction(database, QTBStoreTransaction::Kind::Write);
        char c = 'x';
        if (write(ready[1], &c, 1) != 1 || read(done[0], &c, 1) != 1) {
            _exit(1);
        }
        _exit(0);
    }
    char c = 0;
    ASSERT_EQ(read(ready[0], &c, 1), 1);
    const HRESULT hr = CheckOut({"A"});
    EXPECT_THAT(hr, FailsWith("StoreBusyERR_1006", Path().c_str()));
    EXPECT_EQ(MessageOf(hr),
              "The PDM store \"" + Path() + "\" is in use by another program, which has not finished within 200 ms.");
    // Reading goes on.
    EXPECT_THAT(Get({"A"}), Succeeds());
    ASSERT_EQ(write(done[1], &c, 1), 1);
    int status = 0;
    waitpid(pid, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_THAT(CheckOut({"A"}), Succeeds());
    for (const int descriptor : {ready[0], ready[1], done[0], done[1]}) {
        close(descriptor);
    }
}

TEST_F(StoreFault, AStoreThatAnotherProgramLocksForItselfIsSaidToBeInUse)
{
    m_pStore.reset();
    int ready[2];
    int done[2];
    ASSERT_EQ(pipe(ready), 0);
    ASSERT_EQ(pipe(done), 0);
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        QTBStoreDatabase database(Path(), {});
        database.Execute("PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE; UPDATE counter SET last_id = last_id");
        char c = 'x';
        _exit(write(ready[1], &c, 1) == 1 && read(done[0], &c, 1) == 1 ? 0 : 1);
    }
    char c = 0;
    ASSERT_EQ(read(ready[0], &c, 1), 1);
    EXPECT_THAT(Open(Path()), FailsWith("StoreBusyERR_1006", Path().c_str()));
    ASSERT_EQ(write(done[1], &c, 1), 1);
    int status = 0;
    waitpid(pid, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_THAT(Open(Path()), Succeeds());
    for (const int descriptor : {ready[0], ready[1], done[0], done[1]}) {
        close(descriptor);
    }
}

TEST_F(StoreFault, TwoProcessesThatChangeTheStoreTakeTurns)
{
    constexpr int PROCESSES = 3;
    constexpr int OBJECTS = 40;
    m_pStore.reset();
    std::vector<pid_t> pids;
    for (int process = 0; process < PROCESSES; ++process) {
        const pid_t pid = fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            QTBPdmStore::Options options = MakeOptions();
            options.busyTimeoutInMs = 60000;
            std::unique_ptr<QTBPdmStore> pStore;
            bool isWell = SUCCEEDED(QTBPdmStore::Open(Path().c_str(), options, &pStore));
            for (int i = 0; isWell && i < OBJECTS; ++i) {
                isWell = SUCCEEDED(pStore->CreateObject("Part", "", "", {}));
            }
            _exit(isWell ? 0 : 1);
        }
        pids.push_back(pid);
    }
    for (const pid_t pid : pids) {
        int status = 0;
        waitpid(pid, &status, 0);
        EXPECT_EQ(status, 0);
    }
    m_pStore = OpenFor("kim");
    ASSERT_THAT(Export(false), Succeeds());
    EXPECT_EQ(Items().size(), static_cast<std::size_t>(PROCESSES * OBJECTS));
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreFault, AReaderSeesTheStoreAsItWasWhenItsRequestBegan)
{
    ASSERT_THAT(ImportAnswer(Parts(3000)), Succeeds());
    const std::unique_ptr<QTBPdmStore> pOther = OpenFor("lee");
    std::string answer;
    bool isFirst = true;
    ASSERT_THAT(m_pStore->Export(false,
                                 [&](std::string_view piece) {
                                     if (isFirst) {
                                         EXPECT_THAT(pOther->Delete({"P2999"}, "", {}), Succeeds());
                                         isFirst = false;
                                     }
                                     answer.append(piece);
                                 }),
                Succeeds());
    EXPECT_THAT(ItemsOf(answer), Contains("o P2999"));
    EXPECT_THAT(Get({"P2999"}), FailsWith("ItemNotFoundERR_1101", "P2999"));
}

// Stores that may only be read.

TEST_F(StoreFault, AStoreOpenedForReadingRefusesEveryChange)
{
    Import(Part("A") + Part("B") + PartPart("AB", "A", "B"));
    QTBPdmStore::Options options = MakeOptions();
    options.isReadOnly = true;
    ASSERT_THAT(Open(Path(), options), Succeeds());
    const std::string path = Path();
    const auto readOnly = FailsWith("StoreReadOnlyERR_1007", path.c_str());
    EXPECT_THAT(CheckOut({"A"}), readOnly);
    EXPECT_THAT(CheckIn({"A"}), readOnly);
    EXPECT_THAT(CheckIn({"A"}, {WriteFile("f", "content").c_str()}), readOnly);
    EXPECT_FALSE(fs::exists(Path() + ".files"));
    EXPECT_THAT(Promote({"A"}), readOnly);
    EXPECT_THAT(Revise({"A"}), readOnly);
    EXPECT_THAT(UpdateAttributes("A", ""), readOnly);
    EXPECT_THAT(CreateObject("Part", ""), readOnly);
    EXPECT_THAT(Relate("PartPart", "A", "B"), readOnly);
    EXPECT_THAT(Delete({"A"}), readOnly);
    EXPECT_THAT(ImportAnswer(Answer(Part("C"))), readOnly);
    EXPECT_THAT(Expand({"A"}, PARTS), Succeeds());
    EXPECT_THAT(Items(), ElementsAre("o A", "o B", "r AB A>B"));
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(StoreFault, AStoreThatTheUserMayNotWriteToIsRead)
{
    Import(Part("A"));
    m_pStore.reset();
    fs::permissions(m_Folder.GetPath(), READABLE_FOLDER);
    InOtherProcess([this] {
        const WithoutRights withoutRights(Path());
        const HRESULT hrOpen = Open(Path());
        if (FAILED(hrOpen)) {
            std::cerr << MessageOf(hrOpen) << '\n';
            return false;
        }
        return SUCCEEDED(Get({"A"})) && MessageOf(CheckOut({"A"})) ==
                                            "The PDM store \"" + Path() +
                                                "\" can only be read, because you may not write to \"" + Path() + "\".";
    });
    fs::permissions(m_Folder.GetPath(), fs::perms::owner_all);
}

TEST_F(StoreFault, AFolderThatTheUserMayNotWriteToIsNamed)
{
    Import(Part("A"));
    m_pStore.reset();
    fs::permissions(Path(), fs::perms{0666});
    fs::permissions(m_Folder.GetPath(), READABLE_FOLDER);
    InOtherProcess([this] {
        if (geteuid() == 0 && seteuid(WithoutRights::NOBODY) != 0) {
            return false;
        }
        return SUCCEEDED(Open(Path())) && SUCCEEDED(Get({"A"})) &&
               QTBDescribeResult(CheckOut({"A"})).find("StoreNotWritableERR_1013") != std::string::npos &&
               MessageOf(CheckOut({"A"})).find("write to \"" + m_Folder.GetPath() + "\"") != std::string::npos;
    });
    fs::permissions(m_Folder.GetPath(), fs::perms::owner_all);
}

TEST_F(StoreFault, ReadingLeavesNothingBesideTheStore)
{
    Import(Part("A"));
    m_pStore.reset();
    QTBPdmStore::Options options = MakeOptions();
    options.isReadOnly = true;
    ASSERT_THAT(Open(Path(), options), Succeeds());
    EXPECT_THAT(Get({"A"}), Succeeds());
    m_pStore.reset();
    EXPECT_THAT(NamesInFolder(), ElementsAre("pdm.store"));
}

TEST_F(StoreFault, WhoMayNotWriteMakesNoFilesThatKeepTheOwnerFromWriting)
{
    Import(Part("A"));
    m_pStore.reset();
    fs::permissions(m_Folder.GetPath(), fs::perms::all);
    InOtherProcess([this] {
        const WithoutRights withoutRights(Path());
        for (const bool isReadOnly : {true, false}) {
            QTBPdmStore::Options options = MakeOptions();
            options.isReadOnly = isReadOnly;
            if (FAILED(Open(Path(), options)) || FAILED(Get({"A"})) || SUCCEEDED(CheckOut({"A"})) ||
                NamesInFolder() != std::vector<std::string>{"pdm.store"}) {
                return false;
            }
        }
        return true;
    });
    m_pStore = OpenFor("kim");
    EXPECT_THAT(CheckOut({"A"}), Succeeds());
}

TEST_F(StoreFault, WhoMayNotWriteReadsAlongWhileOthersChangeTheStore)
{
    Import(Part("A"));
    fs::permissions(m_Folder.GetPath(), fs::perms::all);
    ASSERT_THAT(CreateObject("Part", "B"), Succeeds());
    ASSERT_TRUE(fs::exists(Path() + "-shm"));
    // The connection of another program.
    InOtherProcess([this] {
        const WithoutRights withoutRights(Path());
        const std::string program = fs::read_symlink("/proc/self/exe").string();
        setenv("QTB_STORE_TO_READ", Path().c_str(), 1);
        // For good: a program that could take its rights back is not let look for leaks in itself.
        if (getuid() == 0 && (seteuid(0) != 0 || setuid(WithoutRights::NOBODY) != 0)) {
            return false;
        }
        execl(program.c_str(), program.c_str(), "--gtest_also_run_disabled_tests", "--gtest_brief=1",
              "--gtest_filter=StoreFault.DISABLED_TheReaderInAProcessOfItsOwn", nullptr);
        return false;
    });
    EXPECT_THAT(CheckOut({"B"}), Succeeds());
    m_pStore.reset();
    EXPECT_THAT(NamesInFolder(), ElementsAre("pdm.store"));
}

TEST_F(StoreFault, DISABLED_TheReaderInAProcessOfItsOwn)
{
    const char* path = std::getenv("QTB_STORE_TO_READ");
    ASSERT_NE(path, nullptr);
    ASSERT_THAT(Open(path), Succeeds());
    EXPECT_THAT(Get({"A", "B"}), Succeeds());
    EXPECT_THAT(CheckOut({"B"}), FailsWith("StoreNotWritableERR_1013", path));
}

TEST_F(StoreFault, WhoMayNotWriteHearsOfChangesWhileHeReads)
{
    ASSERT_THAT(ImportAnswer(Parts(3000)), Succeeds());
    m_pStore.reset();
    fs::permissions(m_Folder.GetPath(), fs::perms::all);
    std::unique_ptr<QTBPdmStore> pReader;
    {
        const WithoutRights withoutRights(Path());
        ASSERT_THAT(QTBPdmStore::Open(Path().c_str(), MakeOptions(), &pReader), Succeeds());
    }
    const auto change = [this](const char* key) {
        m_pStore = OpenFor("kim");
        EXPECT_THAT(Delete({key}), Succeeds());
        m_pStore.reset();
    };
    const auto exportAll = [&pReader](const QTBPdmStore::Receiver& receiver) {
        return pReader->Export(false, receiver);
    };
    // Before a request: it sees them.
    change("P1");
    {
        const WithoutRights withoutRights(Path());
        ASSERT_THAT(Ask(exportAll), Succeeds());
        EXPECT_THAT(Items(), AllOf(Not(Contains("o P1")), Contains("o P2999")));
    }
    // During a request: what it has read is none of one moment.
    bool isFirst = true;
    EXPECT_THAT(pReader->Export(false,
                                [&](std::string_view) {
                                    if (isFirst) {
                                        change("P2999");
                                        isFirst = false;
                                    }
                                }),
                FailsWith("StoreWrittenOverERR_1015", Path().c_str()));
    const WithoutRights withoutRights(Path());
    ASSERT_THAT(Ask(exportAll), Succeeds());
    EXPECT_THAT(Items(), Not(Contains("o P2999")));
}

TEST_F(StoreFault, AFileOfAnotherUserBesideTheStoreIsNamedWithItsOwner)
{
    Import(Part("A"));
    m_pStore.reset();
    fs::permissions(m_Folder.GetPath(), fs::perms::all);
    for (const char* end : {"-wal", "-shm"}) {
        fs::permissions(WriteFile(std::string("pdm.store") + end, ""), fs::perms::owner_read | fs::perms::others_read);
    }
    if (geteuid() == 0) {
        ASSERT_EQ(chown(Path().c_str(), WithoutRights::NOBODY, WithoutRights::NOBODY), 0);
    }
    const std::string owner = getpwuid(geteuid())->pw_name;
    InOtherProcess([this, &owner] {
        if (geteuid() == 0 && seteuid(WithoutRights::NOBODY) != 0) {
            return false;
        }
        HRESULT hr = Open(Path());
        if (SUCCEEDED(hr)) {
            hr = CheckOut({"A"});
        }
        const std::string message = MessageOf(hr);
        return message.find("pdm.store-wal\" belongs to " + owner + ". Have that file removed") != std::string::npos;
    });
    fs::remove(Path() + "-wal");
    fs::remove(Path() + "-shm");
    m_pStore = OpenFor("kim");
    EXPECT_THAT(CheckOut({"A"}), Succeeds());
}

TEST_F(StoreFault, ChangesThatOnlyAWriterCanFinishAreNamed)
{
    Import(Part("A"));
    fs::copy(Path(), PathOf("copy"));
    fs::copy(Path() + "-wal", PathOf("copy-wal"));
    fs::permissions(m_Folder.GetPath(), fs::perms::all);
    const std::string path = PathOf("copy");
    {
        const WithoutRights withoutRights(path);
        EXPECT_THAT(Open(path), FailsWith("StoreUnfinishedERR_1016", path.c_str()));
    }
    ASSERT_THAT(Open(path), Succeeds());
    EXPECT_THAT(Get({"A"}), Succeeds());
}

// Stores that are full.

TEST_F(StoreFault, AStoreThatMayNotGrowSaysSoAndGoesOn)
{
    ASSERT_THAT(ImportAnswer(Parts(20)), Succeeds());
    QTBPdmStore::Options options = MakeOptions();
    options.maxBytes = 400000;
    ASSERT_THAT(Open(Path(), options), Succeeds());
    const std::string before = Dump();
    EXPECT_THAT(ImportAnswer(Parts(5000)), FailsWith("StoreFullERR_1008", Path().c_str()));
    EXPECT_EQ(Dump(), before);
    EXPECT_THAT(Faults(), IsEmpty());
    EXPECT_THAT(Delete({"P1"}), Succeeds());
    EXPECT_THAT(CreateObject("Part", "P1"), Succeeds());
}

TEST_F(StoreFault, ADiskThatIsFullIsSaidToBe)
{
    ASSERT_THAT(ImportAnswer(Parts(20)), Succeeds());
    const std::string before = Dump();
    m_pStore.reset();
    InOtherProcess([this] {
        // No file may become longer than this, which is how a full disk looks to a program.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {500000, 500000};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0 || FAILED(Open(Path()))) {
            return false;
        }
        const HRESULT hr = ImportAnswer(Parts(5000));
        if (QTBDescribeResult(hr).find("StoreFullERR_1008") == std::string::npos) {
            std::cerr << QTBDescribeResult(hr) << '\n';
            return false;
        }
        return SUCCEEDED(CheckOut({"P1"}));
    });
    m_pStore = OpenFor("kim");
    EXPECT_THAT(Faults(), IsEmpty());
    ASSERT_THAT(CheckIn({"P1"}), Succeeds());
    EXPECT_EQ(Dump(), before);
}

// Without a schema. Every other test loads one, so this is looked at in a process of its own.

TEST(StoreWithoutSchema, DISABLED_InAProcessOfItsOwn)
{
    const std::string path = ::testing::TempDir() + "QTBStoreWithoutSchema-" + std::to_string(getpid());
    ASSERT_THAT(QTBPdmStore::Create(path.c_str()), Succeeds());
    QTBPdmStore::Options options;
    options.user = "kim";
    std::unique_ptr<QTBPdmStore> pStore;
    ASSERT_THAT(QTBPdmStore::Open(path.c_str(), options, &pStore), Succeeds());
    EXPECT_THAT(pStore->GetItems({"A"}, {}), FailsWithMessage("NoSchemaForStoreERR_1011"));
    EXPECT_THAT(pStore->CreateObject("Part", "", "", {}), FailsWithMessage("NoSchemaForStoreERR_1011"));
    pStore.reset();
    fs::remove(path);
}

TEST(StoreWithoutSchema, RequestsSayThatNoSchemaIsLoaded)
{
    const std::string program = fs::read_symlink("/proc/self/exe").string();
    const std::string command = program + " --gtest_also_run_disabled_tests "
                                          "--gtest_filter=StoreWithoutSchema.DISABLED_InAProcessOfItsOwn";
    EXPECT_EQ(std::system((command + " > /dev/null").c_str()), 0);
}

} // namespace
