#include "NewProjectDialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>

TNewProjectDialog::TNewProjectDialog(QWidget* parent)
    : QDialog(parent),
      m_name(new QLineEdit(this)),
      m_folder(new QLineEdit(this)),
      m_directory(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(QStringLiteral("Neues Projekt"));
    setMinimumWidth(480);
    m_name->setObjectName(QStringLiteral("ProjectName"));
    m_folder->setObjectName(QStringLiteral("ProjectFolder"));
    m_folder->setText(QDir::toNativeSeparators(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)));

    auto* form = new QFormLayout(this);
    form->addRow(QStringLiteral("&Name:"), m_name);
    AddFolderRow(*form);
    m_directory->setWordWrap(true);
    form->addRow(QStringLiteral("Verzeichnis:"), m_directory);
    form->addRow(m_buttons);

    connect(m_name, &QLineEdit::textChanged, this, &TNewProjectDialog::Update);
    connect(m_folder, &QLineEdit::textChanged, this, &TNewProjectDialog::Update);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    Update();
}

void TNewProjectDialog::AddFolderRow(QFormLayout& form)
{
    auto* browse = new QPushButton(QStringLiteral("&Durchsuchen..."), this);
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, &TNewProjectDialog::Browse);
    auto* row = new QHBoxLayout;
    row->addWidget(m_folder);
    row->addWidget(browse);
    auto* label = new QLabel(QStringLiteral("&Ordner:"), this);
    label->setBuddy(m_folder);
    form.addRow(label, row);
}

QString TNewProjectDialog::GetName() const
{
    return m_name->text().trimmed();
}

QString TNewProjectDialog::GetDirectory() const
{
    return QDir(m_folder->text().trimmed()).filePath(GetName());
}

void TNewProjectDialog::Browse()
{
    const QString folder =
        QFileDialog::getExistingDirectory(this, QStringLiteral("Ordner für das Projekt"), m_folder->text());
    if (!folder.isEmpty())
        m_folder->setText(QDir::toNativeSeparators(folder));
}

// A name is the name of a directory, too.
void TNewProjectDialog::Update()
{
    const QString name = GetName();
    const bool usable = !name.isEmpty() && !name.contains(u'/') && !name.contains(u'\\') && !name.startsWith(u'.') &&
                        !m_folder->text().trimmed().isEmpty();
    m_directory->setText(usable ? QDir::toNativeSeparators(GetDirectory()) : QString());
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(usable);
}
