#include "ImportDialog.h"

#include "DatapointDirectory.h"
#include "ImportPreviewModel.h"
#include "ProblemSummary.h"
#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlmessages.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr int ProgressSteps = 1000;
constexpr int ProblemLines = 5;
constexpr int Patience = 500; // milliseconds

// Opening what is no file could wait for ever.
QByteArray ReadImportFile(const QString& path)
{
    const auto action = QStringLiteral("gelesen");
    if (QDir::separator() != PathSeparator && path.contains(PathSeparator) && QFileInfo::exists(path)) {
        throw TUserError(QStringLiteral("\"%1\" kann nicht gelesen werden (Ein Backslash im Namen gilt als "
                                        "Pfadtrenner; bitte benennen Sie die Datei um)")
                             .arg(path));
    }
    const QFileInfo file(ToPlatformPath(path));
    if (file.exists() && !file.isFile() && !file.isDir())
        throw TFileError(FileErrorText(path, action, QStringLiteral("Das ist keine gewöhnliche Datei")));
    return ReadDatapointFile(path);
}

QString ProblemText(const TImportProblem& problem)
{
    return problem.Line == 0 ? problem.Reason
                             : QStringLiteral("Zeile %1: %2").arg(QString::number(problem.Line), problem.Reason);
}

} // namespace

TImportDialog::TImportDialog(TDatapointStore& store, const QString& path, QWidget* parent)
    : QDialog(parent),
      m_store(store),
      m_directory(store.Directory()),
      m_path(path),
      m_patience(Patience),
      m_summary(new QLabel(this)),
      m_encodings(new QComboBox(this)),
      m_replaced(new QComboBox(this)),
      m_model(new TImportPreviewModel(this)),
      m_preview(new QTreeView(this)),
      m_problems(new QPlainTextEdit(this))
{
    setWindowTitle(QStringLiteral("Datenpunkte importieren"));
    MakeFields();
    MakeControls();
}

TImportDialog::~TImportDialog() = default;

void TImportDialog::MakeFields()
{
    m_summary->setObjectName(QStringLiteral("LabelSummary"));
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_encodings->setObjectName(QStringLiteral("CBoxEncoding"));
    m_encodings->addItem(QStringLiteral("automatisch"), QString());
    for (const QString& name : ImportEncodings())
        m_encodings->addItem(name, name);
    m_encodings->setCurrentIndex(std::max(0, m_encodings->findData(m_store.ChosenEncoding(TargetName()))));
    m_replaced->setObjectName(QStringLiteral("CBoxReplaced"));
    m_replaced->addItem(QStringLiteral("keine, zusätzlich aufnehmen"), QString());
    for (const TDatapointFile& file : m_store.Files())
        m_replaced->addItem(file.Name, file.Name);
    // Another name may be another building's: which file goes, is then for the user to say.
    m_replaced->setCurrentIndex(std::max(0, m_replaced->findData(TargetName())));
    m_preview->setObjectName(QStringLiteral("TreePreview"));
    m_preview->setModel(m_model);
    m_preview->setUniformRowHeights(true);
    m_preview->setRootIsDecorated(false);
    m_problems->setObjectName(QStringLiteral("EditProblems"));
    m_problems->setReadOnly(true);
    m_problems->setTabChangesFocus(true);
    m_problems->setMaximumHeight(fontMetrics().lineSpacing() * (ProblemLines + 1));
    connect(m_encodings, &QComboBox::currentIndexChanged, this, [this] { Guarded([this] { Preview(); }); });
    connect(m_replaced, &QComboBox::currentIndexChanged, this, [this] { Guarded([this] { ShowResult(); }); });
}

void TImportDialog::MakeControls()
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_import = buttons->addButton(QStringLiteral("Importieren"), QDialogButtonBox::AcceptRole);
    m_import->setObjectName(QStringLiteral("BtnImport"));
    m_import->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* problemsLabel = new QLabel(QStringLiteral("&Meldungen:"), this);
    problemsLabel->setBuddy(m_problems);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(MakeForm());
    layout->addWidget(m_preview, 1);
    layout->addWidget(problemsLabel);
    layout->addWidget(m_problems);
    layout->addWidget(buttons);
    resize(760, 560);
}

QFormLayout* TImportDialog::MakeForm()
{
    auto* fields = new QFormLayout;
    auto* path = new QLabel(ToPlatformPath(m_path), this);
    path->setTextFormat(Qt::PlainText);
    path->setWordWrap(true);
    fields->addRow(QStringLiteral("Datei:"), path);
    fields->addRow(QStringLiteral("&Zeichensatz:"), m_encodings);
    fields->addRow(QStringLiteral("&Ersetzt:"), m_replaced);
    fields->addRow(QStringLiteral("Inhalt:"), m_summary);
    return fields;
}

QString TImportDialog::ReplacedFile() const
{
    return m_replaced->currentData().toString();
}

QString TImportDialog::TargetName() const
{
    return ExtractFileName(m_path);
}

bool TImportDialog::Execute()
{
    bool shown = false;
    Guarded([&] {
        m_content = ReadImportFile(m_path);
        shown = Preview();
    });
    return shown && exec() == Accepted;
}

// Reads the file in the chosen encoding and shows the result. When that is cancelled, what was shown before stays.
bool TImportDialog::Preview()
{
    const QString encoding = m_encodings->currentData().toString();
    TImportResult result = ReadWithProgress(encoding);
    if (result.Cancelled) {
        const QSignalBlocker blocker(m_encodings);
        m_encodings->setCurrentIndex(m_encodings->findData(m_encoding));
        return false;
    }
    m_result = std::move(result);
    m_encoding = encoding;
    ShowResult();
    return true;
}

TImportResult TImportDialog::ReadWithProgress(const QString& encoding)
{
    QProgressDialog progress(QStringLiteral("%1 wird gelesen ...").arg(TargetName()), QStringLiteral("Abbrechen"), 0,
                             ProgressSteps, isVisible() ? this : parentWidget());
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(m_patience);
    progress.setValue(0);
    TImportOptions options;
    options.Encoding = encoding;
    options.Progress = [&progress](double share) {
        progress.setValue(static_cast<int>(share * (ProgressSteps - 1)));
        return !progress.wasCanceled();
    };
    return ReadDatapoints(m_store.Kind(), m_content, options);
}

TDatapointImport TImportDialog::Requested() const
{
    return {.FileName = TargetName(),
            .Content = m_content,
            .Encoding = m_encoding,
            .Replaced = ReplacedFile(),
            .Result = m_result};
}

void TImportDialog::ShowResult()
{
    const TImportChanges changes = m_store.Compare(Requested());
    if (m_result.Recognised) {
        m_summary->setText(QStringLiteral("%1, %2: %3 Datenpunkte. Im Projekt werden damit %4 neu und %5 umbenannt; "
                                          "%6 entfallen. %7 Meldungen.")
                               .arg(m_result.Format, m_result.Encoding, CountText(m_result.Datapoints.size()),
                                    CountText(changes.Added.size()), CountText(changes.Renamed.size()),
                                    CountText(changes.Gone.size()), CountText(changes.Problems.size())));
    } else {
        m_summary->setText(QStringLiteral("Das ist keine Datei, die hier importiert werden kann."));
    }
    m_model->Show(m_store.Kind(), m_result, changes);
    for (int column = 0; column < m_model->columnCount(); ++column)
        m_preview->resizeColumnToContents(column);
    QStringList problems;
    for (const TImportProblem& problem : changes.Problems)
        problems.append(ProblemText(problem));
    m_problems->setPlainText(problems.join(u'\n'));
    m_import->setEnabled(m_result.Recognised && !m_result.Datapoints.isEmpty());
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
    bool imported = false;
    Guarded([&] {
        if (m_store.Directory() != m_directory) {
            throw TUserError(QStringLiteral("Inzwischen ist ein anderes Projekt geöffnet. Dieser Import gehört zu "
                                            "\"%1\" und wird nicht ausgeführt.")
                                 .arg(ToPlatformPath(m_directory)));
        }
        m_store.Import(Requested());
        imported = true;
    });
    return imported;
}
