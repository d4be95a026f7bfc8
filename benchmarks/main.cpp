// Runs the benchmarks and prints, behind the times, what each costs beside its floor: two benchmarks named
// Measured/<what>/... and Floor/<what>/... with the same arguments are a pair.

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

const std::string MEASURED = "Measured/";
const std::string FLOOR = "Floor/";

class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            const bool isMedian = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (run.run_type == Run::RT_Aggregate && !isMedian) {
                continue;
            }
            std::string name = run.run_name.str();
            const std::string& prefix = name.starts_with(MEASURED) ? MEASURED : FLOOR;
            if (!name.starts_with(prefix)) {
                continue;
            }
            name.erase(0, prefix.size());
            Pair& pair = m_Pairs[name];
            (prefix == MEASURED ? pair.measured : pair.floor) = run.GetAdjustedRealTime();
            if (pair.position == 0) {
                pair.position = m_Pairs.size();
            }
        }
    }

    void Finalize() override
    {
        std::vector<const std::pair<const std::string, Pair>*> ordered(m_Pairs.size());
        for (const auto& pair : m_Pairs) {
            ordered[pair.second.position - 1] = &pair;
        }
        std::printf("\n%-60s %14s\n", "beside its floor", "ratio");
        for (const auto* pPair : ordered) {
            if (pPair->second.measured > 0 && pPair->second.floor > 0) {
                std::printf("%-60s %14.2f\n", pPair->first.c_str(), pPair->second.measured / pPair->second.floor);
            }
        }
    }

private:
    struct Pair
    {
        double measured = 0;
        double floor = 0;
        std::size_t position = 0;
    };

    std::map<std::string, Pair> m_Pairs;
};

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
