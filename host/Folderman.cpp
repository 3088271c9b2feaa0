#include "Folderman.h"

#include "Vlapputils.h"
#include "Vlentrypaths.h"
#include "Vlerrors.h"
#include "Vlmessages.h"

#include <QCollator>
#include <QDir>

#include <algorithm>
#include <vector>

namespace
{

// The names of the entry files in a folder, in the order in which they are shown.
QStringList EntryFilesIn(const QString& path)
{
    struct TSortedName
    {
        QCollatorSortKey Key;
        QString Name;
    };

    QCollator collator(QLocale(QLocale::German, QLocale::Germany));
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    collator.setNumericMode(true);
    const QStringList found =
        QDir(ToPlatformPath(path)).entryList({QStringLiteral("*.uri")}, QDir::Files | QDir::System, QDir::Unsorted);
    // To compare names by the language costs more than to read them: what it says of a name is asked once.
    std::vector<TSortedName> sorted;
    sorted.reserve(static_cast<std::size_t>(found.size()));
    for (const QString& name : found)
        sorted.push_back({.Key = collator.sortKey(name), .Name = name});
    std::ranges::sort(sorted, [](const TSortedName& a, const TSortedName& b) {
        const int order = a.Key.compare(b.Key);
        return order != 0 ? order < 0 : a.Name < b.Name;
    });
    QStringList names;
    for (const TSortedName& entry : sorted)
        names.append(entry.Name);
    return names;
}

// Says which entries are left out; of very many only how many.
class TLeftOut
{
public:
    void Add(const std::exception_ptr& error)
    {
        if (++m_count <= MostNamed)
            Note(nullptr, ErrorText(error));
    }

    void Finish() const
    {
        if (m_count > MostNamed)
            Note(nullptr, QStringLiteral("%1 weitere Einträge können nicht gelesen werden.").arg(m_count - MostNamed));
    }

private:
    static constexpr int MostNamed = 20;

    int m_count = 0;
};

// Makes an entry for each name and reports it.
template <class TMake, class TReport> void MakeAll(const QStringList& names, TMake make, TReport report)
{
    TLeftOut leftOut;
    for (const QString& name : names) {
        TNavigationPtr entry;
        try {
            entry = make(name);
        } catch (const TUserError&) {
            leftOut.Add(std::current_exception());
            continue;
        }
        report(std::move(entry));
    }
    leftOut.Finish();
}

} // namespace

TFolderManager::TFolderManager() = default;
TFolderManager::~TFolderManager() = default;

void TFolderManager::AddFolder(const QString& path, const QString& category)
{
    MakeAll(
        EntryFilesIn(path),
        [&](const QString& name) {
            return TNavigation::CreateLoaded(JoinFilePath(ToPackagePath(path), {name}), category);
        },
        [this](TNavigationPtr entry) { Report(std::move(entry)); });
}

void TFolderManager::AddItems(const QStringList& names, const QString& category)
{
    MakeAll(
        names, [&](const QString& name) { return MakeItem(name, category); },
        [this](TNavigationPtr entry) { Report(std::move(entry)); });
}

TNavigationPtr TFolderManager::MakeItem(const QString& name, const QString& category) const
{
    if (QAction* action = FindAction(name))
        return TNavigation::CreateFor(action, category);
    const QString file = ResolveEntryPath(name);
    if (file.isEmpty())
        throw TUserError(QStringLiteral("Der Eintrag \"%1\" braucht ein offenes Projekt.").arg(name));
    return TNavigation::CreateLoaded(file, category);
}

// The receiver may set another event.
void TFolderManager::Report(TNavigationPtr entry)
{
    const TNewItemEvent event = m_newItemEvent;
    if (event)
        event(this, std::move(entry));
}

void TFolderManager::RegisterAction(const QString& name, QAction* action)
{
    m_actions.insert(name.toLower(), action);
}

QAction* TFolderManager::FindAction(const QString& name) const
{
    return m_actions.value(name.toLower());
}

void TFolderManager::RunCommand(const QString& command) const
{
    const TCommandEvent event = m_commandEvent;
    if (!event)
        throw TUserError(QStringLiteral("Hier nimmt niemand den Befehl \"%1\" entgegen.").arg(command));
    event(command);
}

// From the end, because bars give their entries back in reverse order.
void TFolderManager::Remove(TNavigation* entry)
{
    const qsizetype at = m_entries.lastIndexOf(entry);
    if (at >= 0)
        m_entries.removeAt(at);
}

TFolderManager& FolderManager()
{
    static TFolderManager manager;
    return manager;
}
