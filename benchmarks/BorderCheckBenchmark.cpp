// What the check of XML from outside costs, beside the parse that follows it.

#include <string>

#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include "AnswerGenerator.h"
#include "CATXMLTextCheck.h"

namespace {

constexpr int OBJECTS = 50000;
constexpr int CHILDREN = 10;

void BorderCheck(benchmark::State& state)
{
    const std::string xml = AnswerGenerator::Tree(OBJECTS, CHILDREN);
    for (auto _ : state) {
        benchmark::DoNotOptimize(CATXMLTextCheck::CheckText(xml, "answer"));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(xml.size()) * state.iterations());
}
BENCHMARK(BorderCheck)->Name("Measured/Border check")->Unit(benchmark::kMillisecond);

void BareParse(benchmark::State& state)
{
    const std::string xml = AnswerGenerator::Tree(OBJECTS, CHILDREN);
    for (auto _ : state) {
        pugi::xml_document document;
        benchmark::DoNotOptimize(document.load_buffer(xml.data(), xml.size()));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(xml.size()) * state.iterations());
}
BENCHMARK(BareParse)->Name("Floor/Border check")->Unit(benchmark::kMillisecond);

} // namespace
