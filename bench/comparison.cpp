#include "comparison.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <utility>
#include <vector>

namespace bench {
namespace {

constexpr int repetitions = 15;
constexpr const char* oursSuffix = " | ours";
constexpr const char* theirsSuffix = " | theirs";

std::vector<Comparison>& comparisons()
{
    static std::vector<Comparison> all;
    return all;
}

// Keeps the time of each repetition, by the name of its benchmark.
class Collector : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration)
                m_nanoseconds[run.run_name.function_name].push_back(run.GetAdjustedCPUTime());
        }
    }

    const std::vector<double>& of(const std::string& name) const { return m_nanoseconds.at(name); }

private:
    std::map<std::string, std::vector<double>> m_nanoseconds;
};

double minimum(const std::vector<double>& times)
{
    return *std::min_element(times.begin(), times.end());
}

double median(std::vector<double> times)
{
    std::nth_element(
        times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2), times.end());
    return times[times.size() / 2];
}

std::string readable(double nanoseconds)
{
    const std::pair<double, const char*> scales[] = {{1e9, "s"}, {1e6, "ms"}, {1e3, "us"}};
    char text[32];
    for (const auto& [scale, unit] : scales) {
        if (nanoseconds >= scale) {
            std::snprintf(text, sizeof text, "%.2f %s", nanoseconds / scale, unit);
            return text;
        }
    }
    std::snprintf(text, sizeof text, "%.1f ns", nanoseconds);
    return text;
}

void registerRounds(const std::string& name, const std::function<void()>& round)
{
    benchmark::RegisterBenchmark(name.c_str(), [round](benchmark::State& state) {
        for (auto _ : state)
            round();
    })->Repetitions(repetitions);
}

} // namespace

void add(Comparison comparison)
{
    comparisons().push_back(std::move(comparison));
}

bool run(const std::string& filter)
{
    std::vector<Comparison> chosen;
    // Widgets in the comparisons must not outlive the application object.
    for (Comparison& comparison : std::exchange(comparisons(), {})) {
        if (comparison.name.find(filter) != std::string::npos)
            chosen.push_back(std::move(comparison));
    }
    for (const Comparison& comparison : chosen) {
        registerRounds(comparison.name + oursSuffix, comparison.ours);
        registerRounds(comparison.name + theirsSuffix, comparison.theirs);
    }

    Collector times;
    benchmark::RunSpecifiedBenchmarks(&times);
    benchmark::ClearRegisteredBenchmarks();

    bool allWithin = true;
    std::printf("| what | against | ours | theirs | ratio (median) | ratio (min) | bound | |\n");
    std::printf("|---|---|---|---|---|---|---|---|\n");
    for (const Comparison& comparison : chosen) {
        const std::vector<double>& ours = times.of(comparison.name + oursSuffix);
        const std::vector<double>& theirs = times.of(comparison.name + theirsSuffix);
        const double ratio = median(ours) / median(theirs);
        const bool within = ratio <= comparison.bound;
        allWithin = allWithin && within;
        std::printf("| %s | %s | %s | %s | %.2f | %.2f | %.2f | %s |\n", comparison.name.c_str(),
            comparison.alternative.c_str(), readable(median(ours)).c_str(),
            readable(median(theirs)).c_str(), ratio, minimum(ours) / minimum(theirs),
            comparison.bound, within ? "within" : "OVER");
    }
    return allWithin;
}

} // namespace bench
