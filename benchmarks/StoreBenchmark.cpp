// A PDM store: taking in an answer, expanding everything, queries by attribute, each beside the bare SQL that reads or
// writes the same rows.

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include "AnswerGenerator.h"
#include "BenchmarkSession.h"
#include "CATError.h"
#include "QTBPdmStore.h"
#include "QTBXmlUtil.h"

namespace fs = std::filesystem;

namespace {

constexpr int CHILDREN = 10;

void Sizes(benchmark::internal::Benchmark* pBenchmark)
{
    // Objects and relations together; there are as many of each.
    pBenchmark->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

void ReportPerItem(benchmark::State& state)
{
    state.counters["per_item"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Require(HRESULT hr, const char* what)
{
    if (FAILED(hr)) {
        const CATError* pError = CATError::CATGetLastError(hr, nullptr);
        std::cerr << what << " failed: " << (pError != nullptr ? pError->GetNLSMessage() : "no error") << '\n';
        std::exit(1);
    }
}

// A folder that goes with the object.
class Folder
{
public:
    Folder() : m_Path((fs::temp_directory_path() / ("QTBStoreBenchmark-" + std::to_string(getpid()))).string())
    {
        fs::remove_all(m_Path);
        fs::create_directory(m_Path);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { fs::remove_all(m_Path); }

    std::string GetStorePath() const { return m_Path + "/pdm.store"; }

private:
    std::string m_Path;
};

CATIDOMDocument_var MakeAnswer(int items)
{
    CATIDOMDocument_var spAnswer;
    Require(QTBXmlUtil::GetTrustedDomDocument(AnswerGenerator::Tree(items / 2, CHILDREN), &spAnswer), "answer");
    return spAnswer;
}

std::unique_ptr<QTBPdmStore> MakeStore(const Folder& folder)
{
    Require(QTBPdmStore::Create(folder.GetStorePath().c_str()), "Create");
    QTBPdmStore::Options options;
    options.user = "kim";
    std::unique_ptr<QTBPdmStore> pStore;
    Require(QTBPdmStore::Open(folder.GetStorePath().c_str(), options, &pStore), "Open");
    return pStore;
}

// A store with a generated assembly.
class FilledStore
{
public:
    explicit FilledStore(int items) : m_pStore(MakeStore(m_Folder))
    {
        Require(m_pStore->Import(MakeAnswer(items), "", nullptr), "Import");
    }

    QTBPdmStore& Get() { return *m_pStore; }
    std::string GetPath() const { return m_Folder.GetStorePath(); }

private:
    Folder m_Folder;
    std::unique_ptr<QTBPdmStore> m_pStore;
};

// The bare database.
class Database
{
public:
    explicit Database(const std::string& path)
    {
        if (sqlite3_open(path.c_str(), &m_pDatabase) != SQLITE_OK) {
            std::exit(1);
        }
        Execute("PRAGMA cache_size = -32768");
    }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() { sqlite3_close(m_pDatabase); }

    void Execute(const char* sql) { Check(sqlite3_exec(m_pDatabase, sql, nullptr, nullptr, nullptr)); }

    sqlite3_stmt* Prepare(const char* sql)
    {
        sqlite3_stmt* pStatement = nullptr;
        Check(sqlite3_prepare_v2(m_pDatabase, sql, -1, &pStatement, nullptr));
        return pStatement;
    }

    // Reads all columns of all rows; the bytes read.
    std::size_t Read(sqlite3_stmt* pStatement)
    {
        std::size_t bytes = 0;
        const int count = sqlite3_column_count(pStatement);
        while (sqlite3_step(pStatement) == SQLITE_ROW) {
            for (int i = 0; i < count; ++i) {
                sqlite3_column_text(pStatement, i);
                bytes += static_cast<std::size_t>(sqlite3_column_bytes(pStatement, i));
            }
        }
        sqlite3_reset(pStatement);
        return bytes;
    }

private:
    void Check(int code)
    {
        if (code != SQLITE_OK) {
            std::cerr << sqlite3_errmsg(m_pDatabase) << '\n';
            std::exit(1);
        }
    }

    sqlite3* m_pDatabase = nullptr;
};

// Import.

void StoreImport(benchmark::State& state)
{
    const BenchmarkSession session;
    const CATIDOMDocument_var spAnswer = MakeAnswer(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        const Folder folder;
        std::unique_ptr<QTBPdmStore> pStore = MakeStore(folder);
        state.ResumeTiming();
        Require(pStore->Import(spAnswer, "", nullptr), "Import");
        state.PauseTiming();
        pStore.reset();
        state.ResumeTiming();
    }
    ReportPerItem(state);
}
BENCHMARK(StoreImport)->Name("Measured/Store import")->Apply(Sizes);

// Copies the rows of a table, one by one.
void CopyRows(Database& from, Database& to, const std::string& table)
{
    sqlite3_stmt* pRows = from.Prepare(("SELECT * FROM " + table).c_str());
    const int count = sqlite3_column_count(pRows);
    std::string places = "?";
    for (int i = 1; i < count; ++i) {
        places += ", ?";
    }
    sqlite3_stmt* pInsert = to.Prepare(("INSERT INTO " + table + " VALUES (" + places + ")").c_str());
    while (sqlite3_step(pRows) == SQLITE_ROW) {
        for (int i = 0; i < count; ++i) {
            sqlite3_bind_value(pInsert, i + 1, sqlite3_column_value(pRows, i));
        }
        sqlite3_step(pInsert);
        sqlite3_reset(pInsert);
    }
    sqlite3_finalize(pInsert);
    sqlite3_finalize(pRows);
}

void BareImport(benchmark::State& state)
{
    const BenchmarkSession session;
    const FilledStore store(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        const std::string target = store.GetPath() + "-copy";
        fs::remove(target);
        Require(QTBPdmStore::Create(target.c_str()), "Create");
        {
            Database from(store.GetPath());
            Database to(target);
            state.ResumeTiming();
            to.Execute("BEGIN");
            for (const char* table : {"class", "attribute", "object", "relation", "object_attribute"}) {
                CopyRows(from, to, table);
            }
            to.Execute("COMMIT");
            state.PauseTiming();
        }
        fs::remove(target);
        state.ResumeTiming();
    }
    ReportPerItem(state);
}
BENCHMARK(BareImport)->Name("Floor/Store import")->Apply(Sizes);

// Expansion.

void StoreExpand(benchmark::State& state)
{
    const BenchmarkSession session;
    FilledStore store(static_cast<int>(state.range(0)));
    const QTBStoreExpansion expansion{{AnswerGenerator::Key(0).c_str()}, {{"PartPart", true}}, -1};
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        Require(store.Get().Expand(expansion, [&bytes](std::string_view piece) { bytes += piece.size(); }), "Expand");
    }
    state.counters["bytes"] = static_cast<double>(bytes);
    ReportPerItem(state);
}
BENCHMARK(StoreExpand)->Name("Measured/Store expansion")->Apply(Sizes);

void BareExpand(benchmark::State& state)
{
    const BenchmarkSession session;
    const FilledStore store(static_cast<int>(state.range(0)));
    Database database(store.GetPath());
    // The same items, found and read by the database alone.
    const std::string reach = "WITH RECURSIVE reached (id) AS (SELECT id FROM object WHERE key = '" +
                              AnswerGenerator::Key(0) +
                              "' UNION SELECT r.right_id FROM reached JOIN relation r ON r.left_id = reached.id) ";
    sqlite3_stmt* pObjects =
        database.Prepare((reach + "SELECT o.*, c.user_name FROM reached JOIN object o ON o.id = reached.id "
                                  "LEFT JOIN checkout c ON c.object_id = o.id")
                             .c_str());
    sqlite3_stmt* pRelations =
        database.Prepare((reach + "SELECT r.*, x.key, x.class_id FROM reached JOIN relation r ON r.left_id = "
                                  "reached.id JOIN object x ON x.id = r.right_id")
                             .c_str());
    for (auto _ : state) {
        benchmark::DoNotOptimize(database.Read(pObjects) + database.Read(pRelations));
    }
    sqlite3_finalize(pObjects);
    sqlite3_finalize(pRelations);
    ReportPerItem(state);
}
BENCHMARK(BareExpand)->Name("Floor/Store expansion")->Apply(Sizes);

// The whole command: the store expands, the graph reads. The difference to the expansion is the graph's share.
void ExpandIntoGraph(benchmark::State& state)
{
    std::unique_ptr<FilledStore> pStore;
    {
        const BenchmarkSession session;
        pStore = std::make_unique<FilledStore>(static_cast<int>(state.range(0)));
    }
    const QTBStoreExpansion expansion{{AnswerGenerator::Key(0).c_str()}, {{"PartPart", true}}, -1};
    for (auto _ : state) {
        state.PauseTiming();
        auto pSession = std::make_unique<BenchmarkSession>();
        state.ResumeTiming();
        {
            std::string answer;
            Require(pStore->Get().Expand(expansion, [&answer](std::string_view piece) { answer.append(piece); }),
                    "Expand");
            CATIDOMDocument_var spAnswer;
            Require(QTBXmlUtil::GetTrustedDomDocument(answer, &spAnswer), "answer");
            Require(pSession->GetPdmNodeCont()->UpdatePdmGraph(spAnswer, nullptr, nullptr), "UpdatePdmGraph");
        }
        state.PauseTiming();
        pSession.reset();
        state.ResumeTiming();
    }
    ReportPerItem(state);
}
BENCHMARK(ExpandIntoGraph)->Name("Measured/Store expansion into the graph")->Apply(Sizes);

// Queries: one object out of many, by an attribute.

void StoreQuery(benchmark::State& state)
{
    const BenchmarkSession session;
    FilledStore store(static_cast<int>(state.range(0)));
    QTBStoreQuery query;
    query.className = "Part";
    query.conditions = {{"PartNumber", "1000123"}};
    std::size_t bytes = 0;
    for (auto _ : state) {
        Require(store.Get().Query(query, [&bytes](std::string_view piece) { bytes += piece.size(); }), "Query");
    }
    benchmark::DoNotOptimize(bytes);
}
BENCHMARK(StoreQuery)->Name("Measured/Store query")->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);

void BareQuery(benchmark::State& state)
{
    const BenchmarkSession session;
    const FilledStore store(static_cast<int>(state.range(0)));
    Database database(store.GetPath());
    sqlite3_stmt* pStatement =
        database.Prepare("SELECT o.*, c.user_name FROM attribute n JOIN object_attribute a ON a.attribute_id = n.id "
                         "JOIN object o ON o.id = a.object_id LEFT JOIN checkout c ON c.object_id = o.id "
                         "WHERE n.name = 'PartNumber' AND a.value = '1000123'");
    for (auto _ : state) {
        database.Execute("BEGIN");
        benchmark::DoNotOptimize(database.Read(pStatement));
        database.Execute("COMMIT");
    }
    sqlite3_finalize(pStatement);
}
BENCHMARK(BareQuery)->Name("Floor/Store query")->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);

} // namespace
