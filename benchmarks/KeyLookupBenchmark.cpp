// Look-up of a node by its key, beside std::unordered_map::find on the same keys.

#include <algorithm>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include <benchmark/benchmark.h>

#include "AnswerGenerator.h"
#include "BenchmarkSession.h"
#include "CATUnicodeString.h"
#include "QTBIPdmNode.h"

namespace {

// Keys in an order that has nothing to do with the order of insertion.
std::vector<int> ShuffledOrder(int count)
{
    std::vector<int> order(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        order[static_cast<std::size_t>(i)] = i;
    }
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    return order;
}

void LookUpByKey(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    BenchmarkSession session;
    for (int i = 0; i < count; ++i) {
        session.CreateObject(AnswerGenerator::Key(i).c_str());
    }
    std::vector<CATUnicodeString> keys;
    for (const int i : ShuffledOrder(count)) {
        keys.push_back(CATUnicodeString(AnswerGenerator::Key(i)));
    }
    const QTBIPdmNodeCont_var spIPdmNodeCont = session.GetPdmNodeCont();
    std::size_t next = 0;
    for (auto _ : state) {
        QTBIPdmNode_var spIPdmNode;
        unsigned char bFound = FALSE;
        spIPdmNodeCont->GetPdmNodeByKey(keys[next], &spIPdmNode, &bFound);
        benchmark::DoNotOptimize(bFound);
        next = next + 1 == keys.size() ? 0 : next + 1;
    }
}
BENCHMARK(LookUpByKey)->Name("Measured/Look-up by key")->RangeMultiplier(10)->Range(1000, 1000000);

void UnorderedMapFind(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    std::unordered_map<std::string, void*> map;
    for (int i = 0; i < count; ++i) {
        map.emplace(AnswerGenerator::Key(i), &map);
    }
    std::vector<std::string> keys;
    for (const int i : ShuffledOrder(count)) {
        keys.push_back(AnswerGenerator::Key(i));
    }
    std::size_t next = 0;
    for (auto _ : state) {
        auto found = map.find(keys[next]);
        benchmark::DoNotOptimize(found);
        next = next + 1 == keys.size() ? 0 : next + 1;
    }
}
BENCHMARK(UnorderedMapFind)->Name("Floor/Look-up by key")->RangeMultiplier(10)->Range(1000, 1000000);

} // namespace
