#include "Application.h"
#include "BatchRun.h"
#include "Installation.h"
#include "Options.h"
#include "Vlerrors.h"
#include "WindowRun.h"

#include <iostream>

namespace
{

int Run(bool hasScreen)
{
    const TOptions options = ParseOptions(QCoreApplication::arguments());
    if (options.Help || options.Version) {
        std::cout << (options.Help ? HelpText() : VersionText() + u'\n').toStdString();
        return 0;
    }
    ProvideProductHome();
    if (options.Batch)
        return RunBatch(options, std::cout, std::cerr);
    if (!hasScreen)
        throw TUserError(QStringLiteral("Es ist keine Anzeige da; ohne sie geht nur der Stapelbetrieb (--batch)."));
    return RunWindow(options);
}

} // namespace

int main(int argc, char** argv)
{
    const bool hasScreen = ChoosePlatform();
    TApplication application(argc, argv);
    try {
        return Run(hasScreen);
    } catch (...) {
        std::cerr << ErrorText(std::current_exception()).toStdString() << std::endl;
    }
    return 1;
}
