// Runs the benchmarks and prints, behind the times, what each costs beside its floor and its peers: benchmarks named
// Measured/<what>/..., Floor/<what>/... and "Peer <whose>/<what>/..." with the same arguments belong together.

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

const std::string MEASURED = "Measured";

class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred || (run.run_type == Run::RT_Aggregate && run.aggregate_name != "median")) {
                continue;
            }
            const std::string name = run.run_name.str();
            const std::size_t slash = name.find('/');
            const std::string what = name.substr(slash + 1);
            if (m_Times[what].empty()) {
                m_Order.push_back(what);
            }
            m_Times[what][name.substr(0, slash)] = run.GetAdjustedCPUTime();
        }
    }

    void Finalize() override
    {
        std::printf("\n%-50s %-24s %14s\n", "processor time", "beside", "ratio");
        for (const std::string& what : m_Order) {
            const std::map<std::string, double>& times = m_Times[what];
            const auto measured = times.find(MEASURED);
            if (measured == times.end()) {
                continue;
            }
            for (const auto& [side, time] : times) {
                if (side != MEASURED && time > 0) {
                    std::printf("%-50s %-24s %14.2f\n", what.c_str(), side.c_str(), measured->second / time);
                }
            }
        }
    }

private:
    // What was measured, in order, and the time of each side.
    std::vector<std::string> m_Order;
    std::map<std::string, std::map<std::string, double>> m_Times;
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
