#include "Measures.h"

#include "XmlReading.h"

#include <QApplication>

#include <string>
#include <vector>

// Arguments: a regular expression that chooses measures by name, or nothing for all of them.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    InitializeXml();
    if (RunAsMemoryChild(argc, argv))
        return 0;

    AddSceneMeasures();
    AddEditMeasures();
    AddDatapointMeasures();
    AddMenuMeasures();
    AddScheduleMeasures();
    AddWatchMeasures();
    AddButtonMeasures();
    AddMemoryMeasures();
    AddStartMeasures();

    std::vector<std::string> options{argv[0], "--benchmark_enable_random_interleaving=true"};
    if (argc > 1)
        options.push_back(std::string("--benchmark_filter=") + argv[1]);
    std::vector<char*> arguments;
    for (std::string& option : options)
        arguments.push_back(option.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());

    TMeasureReporter reporter;
    if (benchmark::RunSpecifiedBenchmarks(&reporter) == 0) {
        std::fprintf(stderr, "No measure of that name.\n");
        return 1;
    }
    return reporter.HasFailed() ? 1 : 0;
}
