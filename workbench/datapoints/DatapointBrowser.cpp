#include "DatapointBrowser.h"

#include "DatapointKey.h"
#include "DatapointModel.h"
#include "DatapointView.h"
#include "ImportDialog.h"
#include "ProblemSummary.h"
#include "ProblemsDialog.h"
#include "Vlapputils.h"
#include "Vlclassregistry.h"
#include "Vlerrors.h"
#include "Vlhourglass.h"
#include "Vlmessages.h"
#include "Vlurlname.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace
{

constexpr int MostEisNumber = 15;
constexpr qsizetype MostProblemLines = 20;

constexpr std::array<std::pair<const char*, TDatapointKind>, 3> Browsers{
    {{"TEibBrowser", dkEib}, {"TModbusBrowser", dkModbus}, {"TVirtualBrowser", dkVirtual}}};

QString KindTitle(TDatapointKind kind)
{
    switch (kind) {
    case dkEib:
        return QStringLiteral("EIB-Gruppenadressen");
    case dkModbus:
        return QStringLiteral("Modbus-Register");
    case dkVirtual:
        break;
    }
    return QStringLiteral("Virtuelle Variablen");
}

} // namespace

TDatapointBrowser::TDatapointBrowser(TDatapointKind kind, QWidget* parent)
    : QWidget(parent),
      m_store(kind),
      m_model(new TDatapointModel(m_store, this)),
      m_filter(new QLineEdit(this)),
      m_view(new TDatapointView(*m_model, this)),
      m_counts(new QLabel(this))
{
    setObjectName(QStringLiteral("TDatapointBrowser"));
    setAccessibleName(KindTitle(kind));
    setFocusProxy(m_filter);
    MakeView();
    MakeActions();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(2);
    layout->addWidget(m_filter);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_counts);
}

TDatapointBrowser::~TDatapointBrowser()
{
    if (m_listening && !QCoreApplication::closingDown() && UserManager())
        UserManager()->RemoveListener(this, &TDatapointBrowser::HandleProjectChange);
}

void TDatapointBrowser::MakeView()
{
    m_filter->setObjectName(QStringLiteral("EditFilter"));
    m_filter->setPlaceholderText(QStringLiteral("Name oder Adresse suchen"));
    m_filter->setAccessibleName(QStringLiteral("Filter nach Name oder Adresse"));
    m_filter->setClearButtonEnabled(true);
    m_filter->installEventFilter(this);
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString& text) { Guarded([&] { Filter(text); }); });

    m_view->setObjectName(QStringLiteral("TreeDatapoints"));
    m_view->setAccessibleName(KindTitle(m_store.Kind()));
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { UpdateActions(); });
}

void TDatapointBrowser::MakeActions()
{
    m_menu = new QMenu(this);
    m_import = AddAction("MenuAction_Import", QStringLiteral("Datenpunkte importieren..."), Qt::CTRL | Qt::Key_I,
                         &TDatapointBrowser::MenuAction_Import);
    m_copy = AddAction("MenuAction_Copy", QStringLiteral("Kopieren"), QKeySequence::Copy,
                       &TDatapointBrowser::MenuAction_Copy);
    m_chooseType = AddAction("MenuAction_ChooseType", QStringLiteral("Typ wählen..."), Qt::CTRL | Qt::Key_T,
                             &TDatapointBrowser::MenuAction_ChooseType);
    m_showProblems = AddAction("MenuAction_ShowProblems", QStringLiteral("Meldungen anzeigen..."), QKeySequence(),
                               &TDatapointBrowser::MenuAction_ShowProblems);
    AddAction("MenuAction_Reload", QStringLiteral("Neu laden"), QKeySequence(), &TDatapointBrowser::MenuAction_Reload);
    m_typeMenu = MakeTypeMenu();
    UpdateActions();
}

QAction* TDatapointBrowser::AddAction(const char* name, const QString& text, const QKeySequence& shortcut,
                                      void (TDatapointBrowser::*execute)())
{
    auto* action = new QAction(text, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(shortcut);
    action->setShortcutVisibleInContextMenu(true);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, [this, execute] { Guarded([&] { (this->*execute)(); }); });
    m_menu->addAction(action);
    addAction(action);
    return action;
}

QMenu* TDatapointBrowser::MakeTypeMenu()
{
    auto* menu = new QMenu(QStringLiteral("Typ wählen"), this);
    menu->setObjectName(QStringLiteral("MenuTypes"));
    for (int number = 0; number <= MostEisNumber; ++number) {
        QAction* action =
            menu->addAction(number == 0 ? QStringLiteral("unbestimmt") : QStringLiteral("EIS %1").arg(number));
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, number] { Guarded([&] { ChooseType(number); }); });
    }
    return menu;
}

void TDatapointBrowser::ExecuteCmd(const char* command, bool& handled)
{
    handled = true;
    m_location = TURLName(CommandText(command)).GetPath();
    if (!m_listening && UserManager() && TUserManager::DependsOnProject(m_location)) {
        UserManager()->AddListener(this, &TDatapointBrowser::HandleProjectChange);
        m_listening = true;
    }
    Reload();
}

void TDatapointBrowser::HandleProjectChange(QObject* sender, TUserProperty, const QString&)
{
    if (sender == UserManager())
        Guarded([this] { Reload(); });
}

void TDatapointBrowser::Reload()
{
    const THourglass hourglass;
    const bool waits =
        TUserManager::DependsOnProject(m_location) && !(UserManager() && UserManager()->GetActiveProject());
    m_store.Load(waits || !UserManager() ? QString() : UserManager()->EnvToFilePath(m_location));
    ShowStore();
    if (!m_store.Files().isEmpty()) {
        const qsizetype files = m_store.Files().size();
        Note(this, QStringLiteral("%1 Datenpunkte aus %2 geladen")
                       .arg(m_store.Datapoints().size())
                       .arg(files == 1 ? m_store.Files().first().Name : QStringLiteral("%1 Dateien").arg(files)));
    }
    NoteProblems();
}

void TDatapointBrowser::NoteProblems()
{
    for (const QString& line : SummarizeProblems(m_store.Problems(), MostProblemLines))
        Note(this, line);
}

QTreeView* TDatapointBrowser::View() const
{
    return m_view;
}

void TDatapointBrowser::ShowStore()
{
    Filter(m_filter->text());
}

void TDatapointBrowser::Filter(const QString& text)
{
    m_view->Filter(text);
    ShowCounts();
    UpdateActions();
}

void TDatapointBrowser::ShowCounts()
{
    if (m_store.Datapoints().isEmpty())
        m_counts->setText(QStringLiteral("Noch keine Datenpunkte. \"Datenpunkte importieren...\" holt welche."));
    else
        m_counts->setText(
            QStringLiteral("%1 von %2 Datenpunkten").arg(m_model->ShownDatapoints()).arg(m_store.Datapoints().size()));
}

const TDatapoint* TDatapointBrowser::Selected() const
{
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    return rows.isEmpty() ? nullptr : m_model->DatapointAt(rows.first());
}

void TDatapointBrowser::UpdateActions()
{
    const TDatapoint* selected = Selected();
    m_import->setEnabled(UserManager() && UserManager()->GetActiveProject());
    m_copy->setEnabled(selected != nullptr);
    // A type that the file gives is not for the user to change.
    m_chooseType->setEnabled(selected && selected->EisNumber == 0);
    m_showProblems->setEnabled(!m_store.Problems().isEmpty());
}

void TDatapointBrowser::ChooseType(int eisNumber)
{
    const TDatapoint* selected = Selected();
    if (!selected || selected->EisNumber != 0)
        return;
    m_store.SetEisNumber(*selected, eisNumber);
    m_model->NoteType(m_view->selectionModel()->selectedRows().first());
}

void TDatapointBrowser::MenuAction_ChooseType()
{
    const TDatapoint* selected = Selected();
    if (!selected)
        return;
    if (!IsInteractive()) {
        ShowError(QStringLiteral("Die Wahl eines Typs braucht eine Antwort und ist hier nicht möglich."));
        return;
    }
    const QList<QAction*> types = m_typeMenu->actions();
    const int eisNumber = m_store.EisNumber(*selected);
    for (int number = 0; number < types.size(); ++number)
        types[number]->setChecked(number == eisNumber);
    m_view->scrollTo(m_view->currentIndex());
    const QRect row = m_view->visualRect(m_view->currentIndex());
    m_typeMenu->popup(m_view->viewport()->mapToGlobal(row.bottomLeft()));
    m_typeMenu->setActiveAction(types.value(eisNumber));
}

void TDatapointBrowser::MenuAction_ShowProblems()
{
    if (!IsInteractive()) {
        for (const TFileProblem& problem : m_store.Problems())
            Note(this, problem.Text());
        return;
    }
    QStringList texts;
    for (const TFileProblem& problem : m_store.Problems())
        texts.append(problem.Text());
    TProblemsDialog(texts, this).exec();
}

void TDatapointBrowser::MenuAction_Import()
{
    if (!IsInteractive()) {
        ShowError(QStringLiteral("Ein Import braucht eine Antwort und ist hier nicht möglich."));
        return;
    }
    const QString path = QFileDialog::getOpenFileName(
        this, QStringLiteral("Datenpunkte importieren"), QString(),
        QStringLiteral("Exporte und Listen (*.esf *.csv *.tsv *.txt *.xml);;Alle Dateien (*)"));
    if (path.isEmpty())
        return;
    TImportDialog dialog(m_store, path, this);
    if (!dialog.Execute())
        return;
    ShowStore();
    Note(this, QStringLiteral("\"%1\" importiert, %2 Datenpunkte im Projekt")
                   .arg(ExtractFileName(path), CountText(m_store.Datapoints().size())));
    NoteProblems();
}

void TDatapointBrowser::MenuAction_Copy()
{
    const TDatapoint* selected = Selected();
    if (!selected)
        return;
    QMimeData* content = m_model->mimeData(m_view->selectionModel()->selectedRows());
    content->setText(DatapointIdentifier(*selected));
    QApplication::clipboard()->setMimeData(content);
}

void TDatapointBrowser::MenuAction_Reload()
{
    Reload();
}

void TDatapointBrowser::contextMenuEvent(QContextMenuEvent* event)
{
    UpdateActions();
    m_menu->popup(event->globalPos());
}

// From the filter line the arrow keys lead into the tree.
bool TDatapointBrowser::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_filter && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
            m_view->setFocus(Qt::TabFocusReason);
            if (!m_view->currentIndex().isValid())
                m_view->setCurrentIndex(m_model->index(0, 0));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void RegisterDatapointBrowsers()
{
    for (const auto& [name, kind] : Browsers) {
        RegisterComponent(QString::fromLatin1(name), [browserKind = kind](QWidget* parent) -> QWidget* {
            return new TDatapointBrowser(browserKind, parent);
        });
    }
}

void UnregisterDatapointBrowsers()
{
    for (const auto& [name, kind] : Browsers)
        UnregisterComponent(QString::fromLatin1(name));
}
