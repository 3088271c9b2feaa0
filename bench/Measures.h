#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

// One line of the report. A ratio compares the medians of the benchmarks `Name`/candidate and `Name`/baseline, which
// run interleaved; a plain value is what `Name`/candidate reports as its counter "value".
struct TMeasure
{
    std::string Name;
    double Limit = 0;
    std::string Unit = "ratio";
};

// Registers a ratio with its two benchmarks. Both measure wall-clock time.
void AddRatio(const std::string& name, double limit, void (*candidate)(benchmark::State&),
              void (*baseline)(benchmark::State&));

// Registers a plain value in `unit`, which must be at most `limit`.
void AddValue(const std::string& name, double limit, const std::string& unit, void (*candidate)(benchmark::State&));

// Registers the wall-clock time of a benchmark, in milliseconds.
void AddMilliseconds(const std::string& name, double limit, void (*candidate)(benchmark::State&));

const std::vector<TMeasure>& Measures();

// The report: prints one line for each measure when all have run.
class TMeasureReporter final : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

    // A measure over its limit, or one that could not be taken.
    bool HasFailed() const { return m_failed; }

private:
    struct TSample
    {
        std::string Name;
        double Value;
    };

    double Median(const std::string& name) const;
    void Print(const TMeasure& measure);

    std::vector<TSample> m_samples;
    bool m_failed = false;
};

// The groups of measures, each in its own file.
void AddSceneMeasures();
void AddMemoryMeasures();
void AddStartMeasures();
void AddEditMeasures();
void AddDatapointMeasures();
void AddMenuMeasures();
void AddScheduleMeasures();
void AddWatchMeasures();
void AddButtonMeasures();

// What the program does instead when it is started as a child to weigh itself; false when it was not.
bool RunAsMemoryChild(int argc, char** argv);
