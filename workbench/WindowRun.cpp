#include "WindowRun.h"

#include "HostServices.h"
#include "MainWindow.h"
#include "ModifiedBox.h"
#include "Options.h"
#include "WindowMessages.h"

#include <QApplication>
#include <QTimer>

#include <memory>

namespace
{

// Ends the program when the widget it watches has been painted for the first time.
class TPaintWatch final : public QObject
{
protected:
    // The children are painted in the same go, before the event loop comes round again.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
        return QObject::eventFilter(watched, event);
    }
};

void OpenFirst(TMainWindow& window, const QString& projectDirectory)
{
    if (projectDirectory.isEmpty() || !window.OpenProject(projectDirectory))
        window.UnloadProject();
}

} // namespace

int RunWindow(const TOptions& options)
{
    THostServices services;
    TModifiedBoxAsker asker;
    auto window = std::make_unique<TMainWindow>(services.Clients(), asker);
    TWindowMessages messages(*window, window->Messages(), window->Panes());
    services.LoadPackage();
    OpenFirst(*window, options.ProjectDirectory);
    window->RememberArrangement();

    TPaintWatch paintWatch;
    if (options.QuitAfterPaint)
        window->installEventFilter(&paintWatch);
    window->show();
    window->FocusFirstPane();
    // Boxes are shown over the window, so they wait for the event loop.
    QTimer::singleShot(0, window.get(), [&messages] { messages.BeginBoxes(); });
    const int code = QApplication::exec();
    // Components may have something to say when they go: the messages outlive them.
    window.reset();
    return code;
}
