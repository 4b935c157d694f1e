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

std::vector<Comparison>& comparisons()
{
    static std::vector<Comparison> all;
    return all;
}

std::vector<TimeLimit>& timeLimits()
{
    static std::vector<TimeLimit> all;
    return all;
}

std::vector<std::string>& notes()
{
    static std::vector<std::string> all;
    return all;
}

// Moves everything with `filter` in its name out of `all`: the rounds hold widgets, which
// must not outlive the application object.
template <typename Each>
std::vector<Each> take(std::vector<Each>& all, const std::string& filter)
{
    std::vector<Each> chosen;
    for (Each& each : std::exchange(all, {})) {
        if (each.name.find(filter) != std::string::npos)
            chosen.push_back(std::move(each));
    }
    return chosen;
}

// Keeps the time of each repetition, by the name of the benchmark.
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

// The same task may have several alternatives.
std::string oursOf(const Comparison& comparison)
{
    return comparison.name + " | ours, against " + comparison.alternative;
}

std::string theirsOf(const Comparison& comparison)
{
    return comparison.name + " | " + comparison.alternative;
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

bool printComparisons(const std::vector<Comparison>& chosen, const Collector& times)
{
    bool allWithin = true;
    std::printf("| what | against | ours | theirs | ratio (median) | ratio (min) | bound | |\n");
    std::printf("|---|---|---|---|---|---|---|---|\n");
    for (const Comparison& comparison : chosen) {
        const std::vector<double>& ours = times.of(oursOf(comparison));
        const std::vector<double>& theirs = times.of(theirsOf(comparison));
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

bool printTimeLimits(const std::vector<TimeLimit>& chosen, const Collector& times)
{
    bool allWithin = true;
    std::printf("\n| what | time (median) | time (min) | limit | |\n");
    std::printf("|---|---|---|---|---|\n");
    for (const TimeLimit& limit : chosen) {
        const std::vector<double>& rounds = times.of(limit.name);
        const bool within = median(rounds) <= 1e6 * limit.milliseconds;
        allWithin = allWithin && within;
        std::printf("| %s | %s | %s | %s | %s |\n", limit.name.c_str(),
            readable(median(rounds)).c_str(), readable(minimum(rounds)).c_str(),
            readable(1e6 * limit.milliseconds).c_str(), within ? "within" : "OVER");
    }
    return allWithin;
}

} // namespace

void add(Comparison comparison)
{
    comparisons().push_back(std::move(comparison));
}

void add(TimeLimit limit)
{
    timeLimits().push_back(std::move(limit));
}

void note(std::string text)
{
    notes().push_back(std::move(text));
}

bool run(const std::string& filter)
{
    const std::vector<Comparison> chosen = take(comparisons(), filter);
    const std::vector<TimeLimit> limited = take(timeLimits(), filter);
    for (const Comparison& comparison : chosen) {
        registerRounds(oursOf(comparison), comparison.ours);
        registerRounds(theirsOf(comparison), comparison.theirs);
    }
    for (const TimeLimit& limit : limited)
        registerRounds(limit.name, limit.round);

    Collector times;
    benchmark::RunSpecifiedBenchmarks(&times);
    benchmark::ClearRegisteredBenchmarks();

    bool allWithin = !chosen.empty() || !limited.empty();
    if (!chosen.empty())
        allWithin = printComparisons(chosen, times) && allWithin;
    if (!limited.empty())
        allWithin = printTimeLimits(limited, times) && allWithin;
    for (const std::string& text : notes())
        std::printf("\n%s.\n", text.c_str());
    return allWithin;
}

} // namespace bench
