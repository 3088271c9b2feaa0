#include "WeekView.h"

#include "Userman.h"
#include "Vlapputils.h"
#include "Vlclassregistry.h"
#include "Vlerrors.h"
#include "Vlmessages.h"
#include "Vltext.h"
#include "Vlurlname.h"
#include "WeekCanvas.h"
#include "WeekOutput.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QVBoxLayout>

#include <utility>

namespace
{

const auto ClassName = QStringLiteral("TWeekView");
constexpr int ClockInterval = 20000; // milliseconds

QString NothingSelectedText()
{
    return QStringLiteral("Wählen Sie im Wochenschaltplan eine Gruppe oder einen Datenpunkt.");
}

QString NoEntriesText(const QString& title)
{
    return QStringLiteral("\"%1\" hat noch keine Schaltzeiten.").arg(title);
}

IWeekSchedule* ScheduleOf(QWidget* component)
{
    auto* target = qobject_cast<ICmdTarget*>(component);
    void* schedule = nullptr;
    if (target)
        target->QueryInterface(IID_IWeekSchedule, &schedule);
    return static_cast<IWeekSchedule*>(schedule);
}

// `title` as the name of a file.
QString FileNameOf(QString title)
{
    for (QChar& letter : title) {
        if (!letter.isLetterOrNumber() && !QStringLiteral(" -_().").contains(letter))
            letter = u'_';
    }
    return title.simplified();
}

} // namespace

TWeekView::TWeekView(QWidget* parent) : QWidget(parent), m_title(new QLabel(this)), m_canvas(new TWeekCanvas(this))
{
    setObjectName(ClassName);
    setAccessibleName(QStringLiteral("Wochenansicht"));
    setFocusProxy(m_canvas);
    m_title->setObjectName(QStringLiteral("WeekTitle"));
    m_title->setTextFormat(Qt::PlainText);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_title->setMargin(4);
    QFont titleFont = m_title->font();
    titleFont.setBold(true);
    m_title->setFont(titleFont);
    MakeActions();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_title);
    layout->addWidget(m_canvas, 1);
    connect(m_canvas, &TWeekCanvas::EntryChosen, this, [this](int entry) { Guarded([&] { SelectEntry(entry); }); });
    connect(m_canvas, &TWeekCanvas::Zoomed, this, &TWeekView::UpdateActions);
    m_timer.setObjectName(QStringLiteral("ClockTimer"));
    m_timer.setInterval(ClockInterval);
    connect(&m_timer, &QTimer::timeout, this, [this] { Guarded([this] { FollowTime(); }); });
    Refresh();
}

TWeekView::~TWeekView() = default;

void TWeekView::MakeActions()
{
    m_menu = new QMenu(this);
    AddAction("MenuAction_Print", QStringLiteral("Drucken..."), QKeySequence(Qt::CTRL | Qt::Key_P),
              &TWeekView::MenuAction_Print);
    AddAction("MenuAction_SavePdf", QStringLiteral("Als PDF speichern..."), {}, &TWeekView::MenuAction_SavePdf);
    AddAction("MenuAction_SavePng", QStringLiteral("Als PNG speichern..."), {}, &TWeekView::MenuAction_SavePng);
    auto* separator = new QAction(this);
    separator->setSeparator(true);
    m_menu->addAction(separator);
    addAction(separator);
    AddAction("MenuAction_ZoomIn", QStringLiteral("Vergrößern"), QKeySequence(Qt::CTRL | Qt::Key_Plus),
              &TWeekView::MenuAction_ZoomIn);
    AddAction("MenuAction_ZoomOut", QStringLiteral("Verkleinern"), QKeySequence(Qt::CTRL | Qt::Key_Minus),
              &TWeekView::MenuAction_ZoomOut);
    AddAction("MenuAction_ZoomReset", QStringLiteral("Normale Größe"), QKeySequence(Qt::CTRL | Qt::Key_0),
              &TWeekView::MenuAction_ZoomReset);
}

QAction* TWeekView::AddAction(const char* name, const QString& text, const QKeySequence& shortcut,
                              void (TWeekView::*execute)())
{
    auto* action = new QAction(text, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(shortcut);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, [this, execute] { Guarded([&] { (this->*execute)(); }); });
    m_menu->addAction(action);
    addAction(action);
    return action;
}

void TWeekView::QueryCmd(const char* command, bool& accepted)
{
    accepted = SameText(TURLName(CommandText(command)).GetScheme(), u"weekview");
}

void TWeekView::ExecuteCmd(const char* command, bool& handled)
{
    QueryCmd(command, handled);
    TQueryItems items;
    if (!handled || !TURLName(CommandText(command)).GetQueryItems(items))
        return;
    const QString pane = items.Value(u"pane");
    if (!pane.isEmpty()) {
        m_sourcePane = pane;
        Connect();
    }
    for (const TFileKind* kind : {&Pdf(), &Png()}) {
        const QString location = items.Value(kind->Key);
        if (!location.isEmpty())
            SaveByCommand(*kind, location);
    }
}

void TWeekView::FollowPanes(const IPaneComponents& panes)
{
    m_panes = &panes;
    Connect();
}

void TWeekView::Connect()
{
    QWidget* source = m_panes && !m_sourcePane.isEmpty() ? m_panes->ComponentOf(m_sourcePane) : nullptr;
    if (source && source == m_source)
        return;
    m_listener.reset();
    m_source = source;
    m_schedule = ScheduleOf(source);
    if (m_schedule) {
        m_listener = std::make_unique<QObject>();
        m_schedule->AddWeekListener(m_listener.get(), [this] { Guarded([this] { Refresh(); }); });
        connect(source, &QObject::destroyed, this, &TWeekView::Disconnect, Qt::UniqueConnection);
    }
    Refresh();
}

// A source that is on its way out of the world says so; its pane still knows it then.
void TWeekView::Disconnect(QObject* source)
{
    if (m_source && m_source != source)
        return;
    m_listener.reset();
    m_source = nullptr;
    m_schedule = nullptr;
    Refresh();
}

void TWeekView::Refresh()
{
    if (m_source && m_schedule) {
        ShowSchedule();
    } else {
        m_title->clear();
        m_canvas->ShowHint(m_source
                               ? QStringLiteral("Der Bereich \"%1\" zeigt keinen Wochenschaltplan.").arg(m_sourcePane)
                               : NothingSelectedText());
    }
    UpdateActions();
}

void TWeekView::ShowSchedule()
{
    const QString title = m_schedule->WeekTitle();
    m_title->setText(title);
    m_title->setToolTip(title.toHtmlEscaped());
    if (!m_schedule->HasWeek()) {
        m_canvas->ShowHint(NothingSelectedText());
        return;
    }
    const QList<TWeekEntry> entries = m_schedule->WeekEntries();
    m_canvas->ShowWeek(entries, m_schedule->SelectedWeekEntry(), entries.isEmpty() ? NoEntriesText(title) : QString());
}

bool TWeekView::HasWeek() const
{
    return m_source && m_schedule && m_schedule->HasWeek();
}

// The schedule tells of it later; the next key needs it now.
void TWeekView::SelectEntry(int entry)
{
    if (!m_source || !m_schedule)
        return;
    m_schedule->SelectWeekEntry(entry);
    Refresh();
}

void TWeekView::SetClock(TClock clock)
{
    m_clock = std::move(clock);
    FollowTime();
}

void TWeekView::FollowTime()
{
    m_canvas->SetNow(m_clock());
}

void TWeekView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    FollowTime();
    m_timer.start();
}

void TWeekView::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
}

void TWeekView::UpdateActions()
{
    for (QAction* action : actions()) {
        const QString name = action->objectName();
        if (name == QStringLiteral("MenuAction_ZoomIn"))
            action->setEnabled(m_canvas->CanZoomIn());
        else if (name.startsWith(QStringLiteral("MenuAction_Zoom")))
            action->setEnabled(m_canvas->CanZoomOut());
        else
            action->setEnabled(HasWeek());
    }
}

void TWeekView::contextMenuEvent(QContextMenuEvent* event)
{
    UpdateActions();
    m_menu->popup(event->globalPos());
}

TWeekPage TWeekView::Page() const
{
    const TProject* project = UserManager() ? UserManager()->GetActiveProject() : nullptr;
    return {.Title = m_title->text(),
            .Project = project ? project->GetName() : QString(),
            .Date = m_clock().date(),
            .Entries = m_canvas->Picture().Entries};
}

const TWeekView::TFileKind& TWeekView::Pdf()
{
    static const TFileKind kind{QStringLiteral("pdf"), QStringLiteral("PDF"), QStringLiteral(".pdf"), &SaveWeekPdf};
    return kind;
}

const TWeekView::TFileKind& TWeekView::Png()
{
    static const TFileKind kind{QStringLiteral("png"), QStringLiteral("PNG"), QStringLiteral(".png"), &SaveWeekPng};
    return kind;
}

void TWeekView::Save(const TFileKind& kind, const QString& path)
{
    if (!HasWeek())
        throw TUserError(
            QStringLiteral("Es gibt keine Woche zu speichern: Im Wochenschaltplan ist nichts ausgewählt."));
    kind.Save(Page(), path);
    Note(this, QStringLiteral("Woche von \"%1\" als %2 gespeichert (%3)")
                   .arg(m_title->text(), kind.Name, ToPlatformPath(path)));
}

void TWeekView::SaveByCommand(const TFileKind& kind, const QString& location)
{
    if (TUserManager::DependsOnProject(location) && !(UserManager() && UserManager()->GetActiveProject()))
        throw TUserError(QStringLiteral("\"%1\" liegt in einem Projekt, und es ist keines geöffnet.").arg(location));
    Save(kind, UserManager() ? UserManager()->EnvToFilePath(location) : location);
}

void TWeekView::AskAndSave(const TFileKind& kind)
{
    if (!IsInteractive()) {
        ShowError(QStringLiteral("Nach dem Dateinamen kann hier nicht gefragt werden; der Befehl weekview://?%1=DATEI "
                                 "speichert ohne Frage.")
                      .arg(kind.Key));
        return;
    }
    const TProject* project = UserManager() ? UserManager()->GetActiveProject() : nullptr;
    QFileDialog dialog(this, QStringLiteral("Als %1 speichern").arg(kind.Name),
                       project ? project->GetRootDirectory() : QString(),
                       QStringLiteral("%1 (*%2)").arg(kind.Name, kind.Suffix));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(kind.Suffix.mid(1));
    dialog.selectFile(FileNameOf(m_title->text()) + kind.Suffix);
    if (dialog.exec() == QDialog::Accepted)
        Save(kind, dialog.selectedFiles().constFirst());
}

void TWeekView::MenuAction_Print()
{
    if (!IsInteractive()) {
        ShowError(QStringLiteral("Drucken braucht eine Antwort und ist hier nicht möglich."));
        return;
    }
    const TWeekPage page = Page();
    QPrinter printer(QPrinter::HighResolution);
    PrepareWeekPrinter(page, printer);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted)
        PrintWeek(page, printer);
}

void TWeekView::MenuAction_SavePdf()
{
    AskAndSave(Pdf());
}

void TWeekView::MenuAction_SavePng()
{
    AskAndSave(Png());
}

void TWeekView::MenuAction_ZoomIn()
{
    m_canvas->ZoomIn();
}

void TWeekView::MenuAction_ZoomOut()
{
    m_canvas->ZoomOut();
}

void TWeekView::MenuAction_ZoomReset()
{
    m_canvas->ResetZoom();
}

void RegisterWeekView()
{
    RegisterComponent(ClassName, [](QWidget* parent) -> QWidget* { return new TWeekView(parent); });
}

void UnregisterWeekView()
{
    UnregisterComponent(ClassName);
}
