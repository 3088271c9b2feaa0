#include "Vlnavigation.h"

#include "Folderman.h"
#include "Userman.h"
#include "Vlapputils.h"
#include "Vlentrypaths.h"
#include "Vlerrors.h"
#include "Vlmessages.h"
#include "Vlrunentry.h"
#include "dlgEntryProps.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextDocument>

namespace
{

QString WithoutMnemonic(QString text)
{
    text.replace(QStringLiteral("&&"), QStringLiteral("\n"));
    text.remove(u'&');
    return text.replace(u'\n', u'&');
}

[[noreturn]] void FailToSave(const QString& file, const QString& reason)
{
    throw TFileError(FileErrorText(file, QStringLiteral("geschrieben"), reason));
}

// What keeps a file from being written there, in words that help.
void CheckPlace(const QString& file)
{
    const QString directory = ExtractFileDir(file);
    if (!QDir::isAbsolutePath(ToPlatformPath(file)))
        FailToSave(file, QStringLiteral("Es gibt keinen Ordner dafür"));
    if (FileExists(directory))
        FailToSave(file, QStringLiteral("\"%1\" ist eine Datei und kein Ordner").arg(ExtractFileName(directory)));
    if (!DirectoryExists(directory))
        FailToSave(file, QStringLiteral("Den Ordner gibt es nicht"));
}

} // namespace

void TNavigationFree::operator()(TNavigation* entry) const
{
    entry->Detach();
    entry->SetChangeEvent({});
    if (entry->IsInUse())
        entry->m_isFreed = true;
    else
        delete entry;
}

TNavigation::TNavigation(const QString& file, const QString& category) : m_file(file), m_category(category)
{
    FolderManager().Attach(this);
    connect(this, &QAction::triggered, this, [this] { Guarded([this] { Execute(); }); });
}

TNavigation::~TNavigation() = default;

TNavigationPtr TNavigation::Create(const QString& file, const QString& category)
{
    TNavigationPtr entry(new TNavigation(file, category));
    entry->ShowRecord();
    return entry;
}

TNavigationPtr TNavigation::CreateLoaded(const QString& file, const QString& category)
{
    TNavigationPtr entry(new TNavigation(file, category));
    entry->Load();
    return entry;
}

TNavigationPtr TNavigation::CreateFor(QAction* action, const QString& category)
{
    TNavigationPtr entry(new TNavigation({}, category));
    entry->m_standsForAction = true;
    entry->m_action = action;
    entry->m_record.Caption = WithoutMnemonic(action->text());
    entry->m_record.Removable = false;
    entry->ShowRecord();
    entry->setIcon(action->icon());
    entry->setToolTip(action->toolTip());
    return entry;
}

void TNavigation::Load()
{
    if (!QFileInfo(ToPlatformPath(m_file)).isFile()) {
        throw TFileError(FileErrorText(m_file, QStringLiteral("gelesen"),
                                       QFileInfo::exists(ToPlatformPath(m_file))
                                           ? QStringLiteral("Dort steht keine gewöhnliche Datei")
                                           : QStringLiteral("Die Datei gibt es nicht")));
    }
    const QByteArray text = ReadFile(m_file);
    try {
        SetRecord(ParseEntry(text));
    } catch (const TUserError& error) {
        throw TUserError(
            QStringLiteral("Der Eintrag \"%1\" ist beschädigt: %2.").arg(ToPlatformPath(m_file), error.Message()));
    }
}

void TNavigation::Save()
{
    CheckPlace(m_file);
    const QByteArray text = FormatEntry(m_record, FileExists(m_file) ? ReadFile(m_file) : QByteArray());
    try {
        ParseEntry(text);
    } catch (const TUserError& error) {
        FailToSave(m_file, error.Message());
    }
    WriteFile(m_file, text);
    m_isNew = false;
}

void TNavigation::SetRecord(const TEntryRecord& record)
{
    m_record = record;
    ShowRecord();
}

void TNavigation::ShowRecord()
{
    QString text = GetCaption();
    setText(text.replace(u'&', QStringLiteral("&&")));
    const QString tip = m_record.Target.isEmpty() ? GetCaption() : GetCaption() + u'\n' + m_record.Target;
    // A tip that looks like markup would be shown as such.
    setToolTip(Qt::mightBeRichText(tip) ? Qt::convertFromPlainText(tip) : tip);
}

QString TNavigation::GetCaption() const
{
    return m_record.Caption.isEmpty() ? ChangeFileExt(ExtractFileName(m_file), {}) : m_record.Caption;
}

QString TNavigation::GetCategory() const
{
    return m_record.Category.isEmpty() ? m_category : m_record.Category;
}

QString TNavigation::GetIconFile() const
{
    return ResolveEntryPath(m_record.Icon);
}

void TNavigation::Accept(const TEntryRecord& record)
{
    const TEntryRecord before = m_record;
    SetRecord(record);
    try {
        Save();
    } catch (...) {
        SetRecord(before);
        throw;
    }
}

bool TNavigation::EditProperties()
{
    if (m_standsForAction) {
        ShowInformation(
            QStringLiteral("\"%1\" ist ein Befehl der Werkbank und hat keine Eigenschaften.").arg(GetCaption()));
        return false;
    }
    if (!IsInteractive())
        throw TUserError(QStringLiteral("Die Eigenschaften von \"%1\" brauchen einen Dialog.").arg(GetCaption()));
    const TUse use(*this);
    // The window that it stands over may go before it.
    const QPointer<TEntryPropsDialog> dialog = new TEntryPropsDialog(QApplication::activeWindow());
    dialog->SetFile(m_file, m_isNew);
    dialog->SetRecord(m_record, m_category);
    bool saved = false;
    dialog->SetAcceptEvent([&](const TEntryRecord& record) {
        Accept(record);
        saved = true;
    });
    dialog->exec();
    delete dialog.data();
    // A copy: whoever hears of it may set another event.
    const TChangeEvent changeEvent = m_changeEvent;
    if (saved && changeEvent)
        changeEvent(this);
    return saved;
}

void TNavigation::Execute()
{
    const TUse use(*this);
    if (!m_standsForAction) {
        RunEntry(GetCaption(), m_record, m_file);
        return;
    }
    if (!m_action || !m_action->isEnabled())
        throw TUserError(QStringLiteral("\"%1\" ist zurzeit nicht möglich.").arg(GetCaption()));
    m_action->trigger();
}

void TNavigation::Detach()
{
    FolderManager().Remove(this);
}
