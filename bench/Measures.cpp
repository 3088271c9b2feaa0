#include "Measures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace
{

constexpr int Repetitions = 7;
constexpr auto Candidate = "/candidate";
constexpr auto Baseline = "/baseline";
constexpr auto ValueCounter = "value";

std::vector<TMeasure>& Registered()
{
    static std::vector<TMeasure> measures;
    return measures;
}

void Register(const std::string& name, void (*function)(benchmark::State&), int repetitions)
{
    benchmark::RegisterBenchmark(name.c_str(), function)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Iterations(1)
        ->Repetitions(repetitions);
}

bool BelongsTo(const std::string& runName, const std::string& benchmarkName)
{
    return runName.rfind(benchmarkName + '/', 0) == 0 || runName == benchmarkName;
}

} // namespace

void AddRatio(const std::string& name, double limit, void (*candidate)(benchmark::State&),
              void (*baseline)(benchmark::State&))
{
    Registered().push_back({.Name = name, .Limit = limit, .Unit = "ratio"});
    Register(name + Candidate, candidate, Repetitions);
    Register(name + Baseline, baseline, Repetitions);
}

void AddValue(const std::string& name, double limit, const std::string& unit, void (*candidate)(benchmark::State&))
{
    Registered().push_back({.Name = name, .Limit = limit, .Unit = unit});
    Register(name + Candidate, candidate, 1);
}

void AddMilliseconds(const std::string& name, double limit, void (*candidate)(benchmark::State&))
{
    Registered().push_back({.Name = name, .Limit = limit, .Unit = "ms"});
    Register(name + Candidate, candidate, Repetitions);
}

const std::vector<TMeasure>& Measures()
{
    return Registered();
}

bool TMeasureReporter::ReportContext(const Context&)
{
    std::printf("%-44s %12s %12s  %s\n", "measure", "value", "limit", "unit");
    return true;
}

void TMeasureReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Iteration)
            continue;
        if (run.error_occurred) {
            std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
            m_failed = true;
            continue;
        }
        const auto counter = run.counters.find(ValueCounter);
        const double value = counter == run.counters.end() ? run.GetAdjustedRealTime() : counter->second.value;
        m_samples.push_back({.Name = run.benchmark_name(), .Value = value});
    }
}

void TMeasureReporter::Finalize()
{
    for (const TMeasure& measure : Measures())
        Print(measure);
}

double TMeasureReporter::Median(const std::string& name) const
{
    std::vector<double> values;
    for (const TSample& sample : m_samples) {
        if (BelongsTo(sample.Name, name))
            values.push_back(sample.Value);
    }
    if (values.empty())
        return std::numeric_limits<double>::quiet_NaN();
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void TMeasureReporter::Print(const TMeasure& measure)
{
    const double candidate = Median(measure.Name + Candidate);
    const double baseline = Median(measure.Name + Baseline);
    if (std::isnan(candidate))
        return; // filtered out
    const bool isRatio = !std::isnan(baseline);
    const double value = isRatio ? candidate / baseline : candidate;
    std::printf("%-44s %12.2f %12.2f  %s", measure.Name.c_str(), value, measure.Limit, measure.Unit.c_str());
    if (isRatio)
        std::printf("  (%.1f ms : %.1f ms)", candidate, baseline);
    const bool over = value > measure.Limit;
    std::printf("%s\n", over ? "  OVER" : "");
    std::fflush(stdout);
    m_failed = m_failed || over;
}
