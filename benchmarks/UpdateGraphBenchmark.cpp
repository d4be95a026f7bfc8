// One PDM answer read into the graph, beside pugixml's bare parse of the same bytes; what the border check costs; what
// the graph holds in memory, beside what pugixml alone holds.

#include <malloc.h>

#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include "AnswerGenerator.h"
#include "BenchmarkSession.h"
#include "QTBXmlUtil.h"

namespace {

constexpr int CHILDREN = 10;

void Sizes(benchmark::internal::Benchmark* pBenchmark)
{
    // Objects; there are as many relations.
    pBenchmark->Arg(500)->Arg(5000)->Arg(50000)->Arg(100000)->Arg(250000)->Unit(benchmark::kMillisecond);
}

double HeapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

void ReportPerNode(benchmark::State& state, int objectCount)
{
    state.counters["per_node"] = benchmark::Counter(2.0 * objectCount, benchmark::Counter::kIsIterationInvariantRate |
                                                                           benchmark::Counter::kInvert);
}

void UpdatePdmGraph(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const std::string xml = AnswerGenerator::Tree(count, CHILDREN);
    for (auto _ : state) {
        state.PauseTiming();
        auto pSession = std::make_unique<BenchmarkSession>();
        CATIDOMDocument_var spIDOMDocument;
        const double before = HeapInUse();
        state.ResumeTiming();
        // The text was made by this process; the border check has a benchmark of its own.
        QTBXmlUtil::GetTrustedDomDocument(xml, &spIDOMDocument);
        pSession->GetPdmNodeCont()->UpdatePdmGraph(spIDOMDocument, nullptr, nullptr);
        state.PauseTiming();
        state.counters["bytes_per_node"] = (HeapInUse() - before) / (2.0 * count);
        spIDOMDocument = NULL_var;
        pSession.reset();
        malloc_trim(0);
        state.ResumeTiming();
    }
    ReportPerNode(state, count);
}
BENCHMARK(UpdatePdmGraph)->Name("Measured/UpdatePdmGraph")->Apply(Sizes);

void PugixmlParse(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const std::string xml = AnswerGenerator::Tree(count, CHILDREN);
    for (auto _ : state) {
        state.PauseTiming();
        auto pDocument = std::make_unique<pugi::xml_document>();
        const double before = HeapInUse();
        state.ResumeTiming();
        pDocument->load_buffer(xml.data(), xml.size());
        state.PauseTiming();
        state.counters["bytes_per_node"] = (HeapInUse() - before) / (2.0 * count);
        pDocument.reset();
        malloc_trim(0);
        state.ResumeTiming();
    }
    ReportPerNode(state, count);
}
BENCHMARK(PugixmlParse)->Name("Floor/UpdatePdmGraph")->Apply(Sizes);

} // namespace
