#include "PaneCommands.h"

#include "ModifiedGuard.h"
#include "Pane.h"
#include "Panes.h"
#include "Vlclassregistry.h"
#include "Vlerrors.h"
#include "Vltext.h"
#include "Vlurlname.h"

#include <algorithm>

namespace
{

bool IsPaneName(const TURLName& url)
{
    return SameText(url.GetScheme(), u"pane");
}

// True for a text that has nothing to say but which pane it means.
bool SaysNothing(const TURLName& url)
{
    TQueryItems items;
    return IsPaneName(url) || (url.GetPath().isEmpty() && !url.GetQueryItems(items));
}

} // namespace

TPaneCommands::TPaneCommands(TPanes& panes, const TClientRegistry& clients, IModifiedAsker& asker)
    : m_panes(panes), m_clients(clients), m_asker(asker), m_previous(FolderManager().GetCommandEvent())
{
    FolderManager().SetCommandEvent([this](const QString& command) { Open(command); });
}

TPaneCommands::~TPaneCommands()
{
    FolderManager().SetCommandEvent(m_previous);
}

TPane& TPaneCommands::Find(const QString& command) const
{
    const TURLName url(command);
    QString id = url.GetPath();
    while (id.endsWith(u'/'))
        id.chop(1);
    const QString className = m_clients.ClassOf(url.GetScheme());
    const QList<TPane*>& panes = m_panes.All();
    const auto found = std::find_if(panes.begin(), panes.end(), [&](const TPane* pane) {
        return IsPaneName(url) ? pane->Id() == id : SameText(m_clients.ClassOf(pane->Setup().Class), className);
    });
    if (found == panes.end())
        throw TUserError(QStringLiteral("Für den Befehl \"%1\" gibt es hier keinen Bereich.").arg(command));
    return **found;
}

void TPaneCommands::Open(const QString& command)
{
    TPane& pane = Find(command);
    const bool onlyShow = SaysNothing(TURLName(command));
    if (!onlyShow && !MayLose({&pane}, m_asker))
        return;
    pane.FocusContent();
    if (!onlyShow)
        pane.Execute(command);
}
