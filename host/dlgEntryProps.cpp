#include "dlgEntryProps.h"

#include "Vlapputils.h"
#include "Vlentryicons.h"
#include "Vlentrypaths.h"
#include "Vlerrors.h"
#include "Vlfiledropedit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QUrl>

#include <array>

namespace
{

struct TKindRow
{
    TEntryKind Kind;
    const char* Caption;
    const char* TargetCaption;
    const char* Example;
};

constexpr std::array Kinds{
    TKindRow{TEntryKind::Command, "Bereich öffnen", "Be&fehlstext:", "pane://scenes"},
    TKindRow{TEntryKind::File, "Datei öffnen", "&Datei:", "%PRJPATH%/_menu/menu.html"},
    TKindRow{TEntryKind::Address, "Webadresse öffnen", "Adr&esse:", "https://"},
};

template <class TField> TField* MakeField(QWidget* parent, const char* name, const QString& accessibleName)
{
    auto* field = new TField(parent);
    field->setObjectName(QString::fromLatin1(name));
    field->setAccessibleName(accessibleName);
    return field;
}

} // namespace

TEntryPropsDialog::TEntryPropsDialog(QWidget* parent)
    : QDialog(parent),
      m_projectRoot(ActiveProjectRoot()),
      m_fields(new QFormLayout),
      m_caption(MakeField<QLineEdit>(this, "EditCaption", QStringLiteral("Bezeichnung"))),
      m_kind(MakeField<QComboBox>(this, "ComboKind", QStringLiteral("Art"))),
      m_targetLabel(new QLabel(this)),
      m_target(MakeField<TVlFileDropEdit>(this, "EditTarget", {})),
      m_browseTarget(
          MakeBrowseButton("BtnTarget", QStringLiteral("Datei auswählen"), &TEntryPropsDialog::BrowseTarget)),
      m_category(MakeField<QLineEdit>(this, "EditCategory", QStringLiteral("Kategorie"))),
      m_icon(MakeField<TVlFileDropEdit>(this, "EditIcon", QStringLiteral("Symbol"))),
      m_preview(MakeField<QLabel>(this, "Preview", QStringLiteral("Vorschau des Symbols"))),
      m_removable(MakeField<QCheckBox>(this, "CheckRemovable", QStringLiteral("Darf entfernt werden"))),
      m_file(MakeField<QLabel>(this, "LabelFile", QStringLiteral("Datei des Eintrags"))),
      m_error(MakeField<QLabel>(this, "LabelError", QStringLiteral("Fehler")))
{
    setObjectName(QStringLiteral("TEntryPropsDialog"));
    setMinimumWidth(520);
    BuildFields();
    BuildButtons();
    ShowKind();
    ShowIcon();
}

TEntryPropsDialog::~TEntryPropsDialog() = default;

QPushButton* TEntryPropsDialog::MakeBrowseButton(const char* name, const QString& hint,
                                                 void (TEntryPropsDialog::*browse)())
{
    auto* button = new QPushButton(QStringLiteral("..."), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(hint);
    button->setAccessibleName(hint);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, browse] { Guarded([&] { (this->*browse)(); }); });
    return button;
}

void TEntryPropsDialog::AddRow(const QString& caption, QWidget* field, QWidget* more)
{
    auto* label = new QLabel(caption, this);
    label->setBuddy(field);
    if (!more) {
        m_fields->addRow(label, field);
        return;
    }
    auto* row = new QHBoxLayout;
    row->addWidget(field, 1);
    row->addWidget(more);
    m_fields->addRow(label, row);
}

void TEntryPropsDialog::BuildFields()
{
    AddRow(QStringLiteral("&Bezeichnung:"), m_caption);
    for (const TKindRow& row : Kinds)
        m_kind->addItem(QString::fromUtf8(row.Caption));
    AddRow(QStringLiteral("&Art:"), m_kind);
    auto* target = new QHBoxLayout;
    target->addWidget(m_target, 1);
    target->addWidget(m_browseTarget);
    m_targetLabel->setBuddy(m_target);
    m_fields->addRow(m_targetLabel, target);
    AddRow(QStringLiteral("&Kategorie:"), m_category);
    auto* browseIcon = MakeBrowseButton("BtnIcon", QStringLiteral("Symbol auswählen"), &TEntryPropsDialog::BrowseIcon);
    AddRow(QStringLiteral("&Symbol:"), m_icon, browseIcon);
    setTabOrder(m_icon, browseIcon);
    setTabOrder(browseIcon, m_removable);
    m_preview->setFixedSize(EntryIconSize + 8, EntryIconSize + 8);
    m_preview->setAlignment(Qt::AlignCenter);
    m_preview->setFrameShape(QFrame::StyledPanel);
    m_fields->addRow({}, m_preview);
    m_removable->setText(QStringLiteral("Darf aus der Leiste entfernt &werden"));
    m_fields->addRow({}, m_removable);
    m_file->setTextFormat(Qt::PlainText);
    m_file->setWordWrap(true);
    m_file->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_fields->addRow(QStringLiteral("Gespeichert in:"), m_file);

    // A file that is dropped is written as an entry writes it.
    const auto takeDroppedFile = [this](QObject*, QString& fileName) {
        fileName = PortableEntryPath(m_projectRoot, fileName);
        return true;
    };
    m_target->SetValidateFileEvent(takeDroppedFile);
    m_icon->SetValidateFileEvent(takeDroppedFile);
    connect(m_kind, &QComboBox::currentIndexChanged, this, [this] { Guarded([this] { ShowKind(); }); });
    connect(m_icon, &QLineEdit::textChanged, this, [this] { Guarded([this] { ShowIcon(); }); });
}

void TEntryPropsDialog::BuildButtons()
{
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole)->setObjectName(QStringLiteral("BtnOK"));
    buttons->addButton(QStringLiteral("Abbrechen"), QDialogButtonBox::RejectRole)
        ->setObjectName(QStringLiteral("BtnCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_error->setTextFormat(Qt::PlainText);
    m_error->setWordWrap(true);
    m_error->hide();

    auto* all = new QVBoxLayout(this);
    all->addLayout(m_fields);
    all->addWidget(m_error);
    all->addWidget(buttons);
}

void TEntryPropsDialog::SetFile(const QString& file, bool isNew)
{
    setWindowTitle(isNew ? QStringLiteral("Neue Aktion") : QStringLiteral("Eigenschaften der Aktion"));
    m_file->setText(ToPlatformPath(file));
}

void TEntryPropsDialog::SetRecord(const TEntryRecord& record, const QString& category)
{
    m_caption->setText(record.Caption);
    m_kind->setCurrentIndex(static_cast<int>(record.Kind));
    m_target->setText(record.Target);
    m_category->setText(record.Category);
    m_category->setPlaceholderText(category);
    m_givenIcon = record.Icon.trimmed();
    m_icon->setText(record.Icon);
    m_removable->setChecked(record.Removable);
}

TEntryRecord TEntryPropsDialog::GetRecord() const
{
    return {.Caption = m_caption->text().trimmed(),
            .Kind = GetKind(),
            .Target = m_target->text().trimmed(),
            .Category = m_category->text().trimmed(),
            .Icon = m_icon->text().trimmed(),
            .Removable = m_removable->isChecked()};
}

TEntryKind TEntryPropsDialog::GetKind() const
{
    return Kinds[static_cast<std::size_t>(m_kind->currentIndex())].Kind;
}

void TEntryPropsDialog::ShowKind()
{
    const TKindRow& row = Kinds[static_cast<std::size_t>(m_kind->currentIndex())];
    const QString caption = QString::fromUtf8(row.TargetCaption);
    m_targetLabel->setText(caption);
    m_target->setAccessibleName(QString(caption).remove(u'&').remove(u':'));
    m_target->setPlaceholderText(QString::fromLatin1(row.Example));
    m_browseTarget->setVisible(row.Kind == TEntryKind::File);
}

void TEntryPropsDialog::ShowIcon()
{
    const auto icon = LoadEntryIcon(Resolve(m_icon->text().trimmed()));
    m_preview->setPixmap(icon ? icon->pixmap(QSize(EntryIconSize, EntryIconSize), devicePixelRatioF()) : QPixmap());
    m_preview->setVisible(icon.has_value());
}

void TEntryPropsDialog::BrowseTarget()
{
    const QString file = QFileDialog::getOpenFileName(this, QStringLiteral("Datei auswählen"), m_projectRoot);
    if (!file.isEmpty())
        m_target->setText(PortableEntryPath(m_projectRoot, file));
}

void TEntryPropsDialog::BrowseIcon()
{
    const QString file =
        QFileDialog::getOpenFileName(this, QStringLiteral("Symbol auswählen"), m_projectRoot,
                                     QStringLiteral("Bilder (*.png *.svg *.jpg *.jpeg *.gif *.ico *.bmp)"));
    if (!file.isEmpty())
        m_icon->setText(PortableEntryPath(m_projectRoot, file));
}

bool TEntryPropsDialog::Refuse(QWidget* field, const QString& reason)
{
    m_error->setText(reason);
    m_error->show();
    field->setFocus(Qt::OtherFocusReason);
    return false;
}

QString TEntryPropsDialog::TargetFault() const
{
    const QString target = m_target->text().trimmed();
    const bool hasScheme = target.indexOf(QStringLiteral("://")) > 0;
    switch (GetKind()) {
    case TEntryKind::Command:
        if (!hasScheme)
            return QStringLiteral("Ein Befehlstext beginnt mit einem Bereich oder einer Komponente und \"://\", zum "
                                  "Beispiel \"pane://scenes\".");
        break;
    case TEntryKind::File:
        if (target.isEmpty())
            return QStringLiteral("Geben Sie die Datei an, die geöffnet werden soll.");
        if (IsEntryFileName(target))
            return QStringLiteral("Ein Eintrag kann keinen Eintrag öffnen. Geben Sie eine andere Datei an.");
        break;
    case TEntryKind::Address:
        if (!hasScheme || !QUrl(target).isValid())
            return QStringLiteral("Geben Sie eine vollständige Adresse an, zum Beispiel \"https://www.example.org/\".");
        break;
    }
    return {};
}

QString TEntryPropsDialog::IconFault() const
{
    const QString icon = m_icon->text().trimmed();
    if (icon.isEmpty() || icon == m_givenIcon || LoadEntryIcon(Resolve(icon)))
        return {};
    return QStringLiteral("\"%1\" gibt es nicht oder ist kein Bild.").arg(icon);
}

QString TEntryPropsDialog::Resolve(const QString& path) const
{
    return ResolveEntryPathIn(m_projectRoot, path);
}

bool TEntryPropsDialog::Validate()
{
    m_error->hide();
    if (m_caption->text().trimmed().isEmpty())
        return Refuse(m_caption, QStringLiteral("Geben Sie eine Bezeichnung ein."));
    const QString fault = TargetFault();
    if (!fault.isEmpty())
        return Refuse(m_target, fault);
    const QString iconFault = IconFault();
    return iconFault.isEmpty() || Refuse(m_icon, iconFault);
}

void TEntryPropsDialog::accept()
{
    Guarded([this] {
        if (!Validate())
            return;
        if (m_acceptEvent)
            m_acceptEvent(GetRecord());
        QDialog::accept();
    });
}
