// What happens to a window's tree, all levels at once: expanded, redrawn, folded; and the clean-up of the graph below
// it. Beside a tree of plain structs that holds the same nodes, made, walked and dropped.

#include <memory>

#include <benchmark/benchmark.h>

#include "AnswerGenerator.h"
#include "PlainTree.h"
#include "RepTree.h"

namespace {

constexpr int CHILDREN = 10;

void Sizes(benchmark::internal::Benchmark* pBenchmark)
{
    // Parts; each but the root gives two rep nodes, its relation's and its own.
    pBenchmark->Arg(500)->Arg(5000)->Arg(50000)->Arg(100000)->Arg(500000)->Unit(benchmark::kMillisecond);
}

void ReportPerNode(benchmark::State& state)
{
    state.counters["per_rep_node"] =
        benchmark::Counter(2.0 * static_cast<double>(state.range(0)) - 1,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

int PartsOf(const benchmark::State& state)
{
    return static_cast<int>(state.range(0));
}

void ExpandRepTree(benchmark::State& state)
{
    const BenchmarkSession session;
    session.Update(AnswerGenerator::Tree(PartsOf(state), CHILDREN));
    for (auto _ : state) {
        state.PauseTiming();
        auto pTree = std::make_unique<RepTree>();
        state.ResumeTiming();
        pTree->Expand(session);
        state.PauseTiming();
        pTree->Require(PartsOf(state));
        pTree.reset();
        state.ResumeTiming();
    }
    ReportPerNode(state);
}
BENCHMARK(ExpandRepTree)->Name("Measured/Expansion")->Apply(Sizes);

void MakePlainTree(benchmark::State& state)
{
    for (auto _ : state) {
        auto pTree = std::make_unique<PlainTree>(PartsOf(state), CHILDREN);
        state.PauseTiming();
        pTree.reset();
        state.ResumeTiming();
    }
    ReportPerNode(state);
}
BENCHMARK(MakePlainTree)->Name("Floor/Expansion")->Apply(Sizes);

// From the text of an answer to the tree in a window.
void ReadAndExpand(benchmark::State& state)
{
    const std::string xml = AnswerGenerator::Tree(PartsOf(state), CHILDREN);
    for (auto _ : state) {
        state.PauseTiming();
        auto pSession = std::make_unique<BenchmarkSession>();
        auto pTree = std::make_unique<RepTree>();
        state.ResumeTiming();
        pSession->Update(xml);
        pTree->Expand(*pSession);
        state.PauseTiming();
        pTree->Require(PartsOf(state));
        pTree.reset();
        pSession.reset();
        state.ResumeTiming();
    }
    ReportPerNode(state);
}
BENCHMARK(ReadAndExpand)->Name("Measured/Update and expansion")->Apply(Sizes);

void RedrawRepTree(benchmark::State& state)
{
    const BenchmarkSession session;
    session.Update(AnswerGenerator::Tree(PartsOf(state), CHILDREN));
    const RepTree tree;
    tree.Expand(session);
    tree.Require(PartsOf(state));
    const QTBIRepNode_var spIRepNodeOnRoot = tree.GetRoot();
    for (auto _ : state) {
        unsigned char bRecursive = TRUE;
        spIRepNodeOnRoot->Redraw(&bRecursive);
    }
    ReportPerNode(state);
}
BENCHMARK(RedrawRepTree)->Name("Measured/Redraw")->Apply(Sizes);

void WalkPlainTree(benchmark::State& state)
{
    const PlainTree tree(PartsOf(state), CHILDREN);
    for (auto _ : state) {
        benchmark::DoNotOptimize(tree.Walk());
    }
    ReportPerNode(state);
}
BENCHMARK(WalkPlainTree)->Name("Floor/Redraw")->Apply(Sizes);

void FoldRepTree(benchmark::State& state)
{
    const BenchmarkSession session;
    session.Update(AnswerGenerator::Tree(PartsOf(state), CHILDREN));
    for (auto _ : state) {
        state.PauseTiming();
        auto pTree = std::make_unique<RepTree>();
        pTree->Expand(session);
        pTree->Require(PartsOf(state));
        QTBIRepNode_var spIRepNodeOnRoot = pTree->GetRoot();
        state.ResumeTiming();
        pTree->GetCont()->DeExpand(&spIRepNodeOnRoot);
        state.PauseTiming();
        spIRepNodeOnRoot = NULL_var;
        pTree.reset();
        state.ResumeTiming();
    }
    ReportPerNode(state);
}
BENCHMARK(FoldRepTree)->Name("Measured/Fold")->Apply(Sizes);

void DropPlainTree(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto pTree = std::make_unique<PlainTree>(PartsOf(state), CHILDREN);
        state.ResumeTiming();
        pTree.reset();
    }
    ReportPerNode(state);
}
BENCHMARK(DropPlainTree)->Name("Floor/Fold")->Apply(Sizes);

// The window closes and the graph goes: two nodes of the graph and two rep nodes for each part.
void CleanUp(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto pSession = std::make_unique<BenchmarkSession>();
        pSession->Update(AnswerGenerator::Tree(PartsOf(state), CHILDREN));
        auto pTree = std::make_unique<RepTree>();
        pTree->Expand(*pSession);
        state.ResumeTiming();
        pTree.reset();
        pSession.reset();
    }
    ReportPerNode(state);
}
BENCHMARK(CleanUp)->Name("Measured/Clean-up")->Apply(Sizes);

void DropTwoPlainTrees(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto pGraph = std::make_unique<PlainTree>(PartsOf(state), CHILDREN);
        auto pTree = std::make_unique<PlainTree>(PartsOf(state), CHILDREN);
        state.ResumeTiming();
        pTree.reset();
        pGraph.reset();
    }
    ReportPerNode(state);
}
BENCHMARK(DropTwoPlainTrees)->Name("Floor/Clean-up")->Apply(Sizes);

} // namespace
