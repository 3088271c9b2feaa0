#include "ImportDialog.h"

#include "DatapointKey.h"
#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlmessages.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int ProgressSteps = 1000;
constexpr int ProblemLines = 5;
constexpr int PatienceMilliseconds = 500; // before progress is shown

QTreeWidgetItem* MakeRow(const TDatapoint& datapoint, const QString& change)
{
    const QString type = datapoint.EisNumber == 0 ? QString() : QStringLiteral("EIS %1").arg(datapoint.EisNumber);
    return new QTreeWidgetItem({DatapointIdentifier(datapoint), datapoint.Name, type, change});
}

QSet<QString> Addresses(const QList<TDatapoint>& datapoints)
{
    QSet<QString> addresses;
    for (const TDatapoint& datapoint : datapoints)
        addresses.insert(DatapointIdentifier(datapoint));
    return addresses;
}

} // namespace

TImportDialog::TImportDialog(TDatapointStore& store, const QString& path, QWidget* parent)
    : QDialog(parent),
      m_store(store),
      m_path(path),
      m_summary(new QLabel(this)),
      m_encoding(new QComboBox(this)),
      m_replaced(new QComboBox(this)),
      m_datapoints(new QTreeWidget(this)),
      m_problems(new QPlainTextEdit(this))
{
    setWindowTitle(QStringLiteral("Datenpunkte importieren"));
    MakeControls();
}

TImportDialog::~TImportDialog() = default;

void TImportDialog::MakeControls()
{
    m_summary->setObjectName(QStringLiteral("LabelSummary"));
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_encoding->setObjectName(QStringLiteral("CBoxEncoding"));
    m_encoding->addItem(QStringLiteral("automatisch"), QString());
    for (const QString& name : ImportEncodings())
        m_encoding->addItem(name, name);
    m_replaced->setObjectName(QStringLiteral("CBoxReplaced"));
    m_replaced->addItem(QStringLiteral("keine, zusätzlich aufnehmen"), QString());
    for (const TDatapointFile& file : m_store.Files())
        m_replaced->addItem(file.Name, file.Name);
    // Another name may be another building's: which file goes, is then for the user to say.
    m_replaced->setCurrentIndex(std::max(0, m_replaced->findData(TargetName())));
    m_datapoints->setObjectName(QStringLiteral("TreePreview"));
    m_datapoints->setHeaderLabels(
        {QStringLiteral("Adresse"), QStringLiteral("Name"), QStringLiteral("Typ"), QStringLiteral("Änderung")});
    m_datapoints->setUniformRowHeights(true);
    m_datapoints->setRootIsDecorated(false);
    m_problems->setObjectName(QStringLiteral("EditProblems"));
    m_problems->setReadOnly(true);
    m_problems->setTabChangesFocus(true);
    m_problems->setMaximumHeight(fontMetrics().lineSpacing() * (ProblemLines + 1));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_import = buttons->addButton(QStringLiteral("Importieren"), QDialogButtonBox::AcceptRole);
    m_import->setObjectName(QStringLiteral("BtnImport"));
    m_import->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_encoding, &QComboBox::currentIndexChanged, this, [this] { Guarded([this] { Preview(); }); });
    connect(m_replaced, &QComboBox::currentIndexChanged, this, [this] { Guarded([this] { ShowResult(); }); });

    auto* fields = new QFormLayout;
    auto* path = new QLabel(ToPlatformPath(m_path), this);
    path->setTextFormat(Qt::PlainText);
    path->setWordWrap(true);
    fields->addRow(QStringLiteral("Datei:"), path);
    fields->addRow(QStringLiteral("&Zeichensatz:"), m_encoding);
    fields->addRow(QStringLiteral("&Ersetzt:"), m_replaced);
    fields->addRow(QStringLiteral("Inhalt:"), m_summary);
    auto* problemsLabel = new QLabel(QStringLiteral("Nicht lesbare Zeilen:"), this);
    problemsLabel->setBuddy(m_problems);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(m_datapoints, 1);
    layout->addWidget(problemsLabel);
    layout->addWidget(m_problems);
    layout->addWidget(buttons);
    resize(760, 560);
}

QString TImportDialog::ChosenEncoding() const
{
    return m_encoding->currentData().toString();
}

QString TImportDialog::ReplacedFile() const
{
    return m_replaced->currentData().toString();
}

TDatapointImport TImportDialog::Requested() const
{
    return {.FileName = TargetName(),
            .Content = m_content,
            .Encoding = ChosenEncoding(),
            .Replaced = ReplacedFile(),
            .Result = m_result};
}

QString TImportDialog::TargetName() const
{
    return ExtractFileName(m_path);
}

bool TImportDialog::Execute()
{
    try {
        m_content = ReadFile(m_path);
    } catch (const TUserError& error) {
        ShowError(error.Message());
        return false;
    }
    return Preview() && exec() == Accepted;
}

bool TImportDialog::Preview()
{
    QProgressDialog progress(QStringLiteral("%1 wird gelesen ...").arg(TargetName()), QStringLiteral("Abbrechen"), 0,
                             ProgressSteps, this);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(PatienceMilliseconds);
    TImportOptions options;
    options.Encoding = ChosenEncoding();
    options.Progress = [&progress](double share) {
        progress.setValue(static_cast<int>(share * (ProgressSteps - 1)));
        return !progress.wasCanceled();
    };
    TImportResult result = ReadDatapoints(m_store.Kind(), m_content, options);
    if (result.Cancelled) {
        reject();
        return false;
    }
    m_result = std::move(result);
    ShowResult();
    return true;
}

void TImportDialog::ShowResult()
{
    const TImportChanges changes = m_store.Compare(Requested());
    if (m_result.Recognised) {
        m_summary->setText(QStringLiteral("%1, %2: %3 Datenpunkte, davon %4 neu und %5 umbenannt; %6 entfallen. "
                                          "%7 Meldungen.")
                               .arg(m_result.Format, m_result.Encoding)
                               .arg(m_result.Datapoints.size())
                               .arg(changes.Added.size())
                               .arg(changes.Renamed.size())
                               .arg(changes.Gone.size())
                               .arg(m_result.Problems.size()));
    } else {
        m_summary->setText(QStringLiteral("Das ist keine Datei, die hier importiert werden kann."));
    }
    ShowDatapoints(changes);
    QStringList problems;
    for (const TImportProblem& problem : std::as_const(m_result.Problems)) {
        problems.append(problem.Line == 0 ? problem.Reason
                                          : QStringLiteral("Zeile %1: %2").arg(problem.Line).arg(problem.Reason));
    }
    m_problems->setPlainText(problems.join(u'\n'));
    m_import->setEnabled(m_result.Recognised && !m_result.Datapoints.isEmpty());
}

void TImportDialog::ShowDatapoints(const TImportChanges& changes)
{
    const QSet<QString> added = Addresses(changes.Added);
    const QSet<QString> renamed = Addresses(changes.Renamed);
    // What changes comes first.
    QList<QTreeWidgetItem*> changed;
    QList<QTreeWidgetItem*> unchanged;
    for (const TDatapoint& datapoint : changes.Gone)
        changed.append(MakeRow(datapoint, QStringLiteral("entfällt")));
    for (const TDatapoint& datapoint : std::as_const(m_result.Datapoints)) {
        const QString key = DatapointIdentifier(datapoint);
        if (added.contains(key))
            changed.append(MakeRow(datapoint, QStringLiteral("neu")));
        else if (renamed.contains(key))
            changed.append(MakeRow(datapoint, QStringLiteral("umbenannt")));
        else
            unchanged.append(MakeRow(datapoint, QString()));
    }
    m_datapoints->clear();
    m_datapoints->addTopLevelItems(changed + unchanged);
    for (int column = 0; column < m_datapoints->columnCount(); ++column)
        m_datapoints->resizeColumnToContents(column);
}

void TImportDialog::done(int result)
{
    if (result == Accepted && !Import())
        return;
    QDialog::done(result);
}

// False when it failed; the dialog then stays, so that the user can choose differently.
bool TImportDialog::Import()
{
    try {
        m_store.Import(Requested());
    } catch (const TUserError& error) {
        ShowError(error.Message());
        return false;
    }
    return true;
}
