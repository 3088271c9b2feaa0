#include "BatchRun.h"

#include "BatchMessages.h"
#include "HostServices.h"
#include "MainWindow.h"
#include "ModifiedGuard.h"
#include "Pane.h"
#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QCoreApplication>
#include <QPixmap>

#include <memory>

namespace
{

constexpr QSize PictureSize(1280, 800);

// Whoever runs a batch says by its commands what is exported.
class TNoQuestions final : public IModifiedAsker
{
public:
    TModifiedAnswer Ask(const QStringList&) override { return TModifiedAnswer::Discard; }
};

TPane& PaneOf(const TPanes& panes, const TBatchStep& step)
{
    TPane* pane = panes.Find(step.Pane);
    if (!pane)
        throw TUserError(QStringLiteral("Den Bereich \"%1\" gibt es nicht.").arg(step.Pane));
    return *pane;
}

void RunStep(const TPanes& panes, const TBatchStep& step)
{
    TPane& pane = PaneOf(panes, step);
    if (step.Kind == TBatchStep::TKind::Command)
        pane.Execute(step.Text);
    else
        pane.Trigger(step.Text);
}

void SavePicture(TMainWindow& window, const QString& file)
{
    window.resize(PictureSize);
    window.show();
    window.FocusFirstPane();
    QCoreApplication::processEvents();
    if (!window.grab().save(ToPlatformPath(file), "PNG"))
        throw TUserError(QStringLiteral("Das Bild \"%1\" kann nicht geschrieben werden.").arg(file));
}

// One run: the parts of the workbench, and what has gone wrong so far.
class TBatchRun
{
public:
    TBatchRun(const TOptions& options, std::ostream& output)
        : m_options(options),
          m_window(std::make_unique<TMainWindow>(m_services.Clients(), m_asker)),
          m_messages(output, m_window->Messages(), m_window->Panes(), options.AnswerYes)
    {
    }

    // Components may have something to say when they go: the messages outlive them.
    ~TBatchRun() { m_window.reset(); }

    const QString& FirstError() const { return m_messages.FirstError(); }

    void Run()
    {
        bool well = Attempt([this] { m_services.LoadPackage(); }) && Attempt([this] {
                        m_window->LoadProject(m_options.ProjectDirectory);
                        m_window->Panes().LoadAll();
                    });
        for (qsizetype i = 0; well && i < m_options.Steps.size(); ++i) {
            const TBatchStep& step = m_options.Steps[i];
            well = Attempt([&] { RunStep(m_window->Panes(), step); });
            if (well)
                Note(nullptr, QStringLiteral("%1: %2 ausgeführt").arg(step.Pane, step.Text));
        }
        if (well && !m_options.PictureFile.isEmpty() &&
            Attempt([this] { SavePicture(*m_window, m_options.PictureFile); }))
            Note(nullptr, QStringLiteral("Bild gespeichert (%1)").arg(m_options.PictureFile));
    }

private:
    // What a step has put off belongs to the step.
    template <class TFunction> bool Attempt(TFunction&& function)
    {
        Guarded(std::forward<TFunction>(function));
        QCoreApplication::processEvents();
        return FirstError().isEmpty();
    }

    const TOptions& m_options;
    THostServices m_services;
    TNoQuestions m_asker;
    std::unique_ptr<TMainWindow> m_window;
    TBatchMessages m_messages;
};

} // namespace

int RunBatch(const TOptions& options, std::ostream& output, std::ostream& errors)
{
    TBatchRun run(options, output);
    run.Run();
    if (run.FirstError().isEmpty())
        return 0;
    errors << run.FirstError().toStdString() << std::endl;
    return 1;
}
