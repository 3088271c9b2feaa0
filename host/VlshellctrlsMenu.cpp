#include "Vlshellctrls.h"

#include "UIActions.h"
#include "Vlerrors.h"
#include "Vlmessages.h"
#include "Vlshellmodel.h"
#include "Vlshellops.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFile>
#include <QGuiApplication>
#include <QMenu>

#include <array>

// One row of the popup menu; one without a name is a separator.
struct TCustomShellTreeView::TCommand
{
    const char* Name = nullptr;
    const char16_t* Caption = u"";
    const char* Verb = "";
    const char* Shortcut = "";
    void (TCustomShellTreeView::*Execute)() = nullptr;
    bool (TCustomShellTreeView::*Enabled)() const = nullptr;
};

std::span<const TCustomShellTreeView::TCommand> TCustomShellTreeView::Commands()
{
    using TTree = TCustomShellTreeView;
    // The Enter key is the view's own: it also opens and closes folders.
    static const std::array commands{
        TCommand{.Name = "MenuAction_Open",
                 .Caption = u"Öffnen\tEingabe",
                 .Verb = "open",
                 .Execute = &TTree::MenuAction_Open,
                 .Enabled = &TTree::CanOpen},
        TCommand{.Name = "MenuAction_Edit",
                 .Caption = u"Bearbeiten",
                 .Verb = "edit",
                 .Shortcut = "F4",
                 .Execute = &TTree::MenuAction_Edit,
                 .Enabled = &TTree::CanEdit},
        TCommand{},
        TCommand{.Name = "MenuAction_Rename",
                 .Caption = u"Umbenennen",
                 .Verb = "rename",
                 .Shortcut = "F2",
                 .Execute = &TTree::MenuAction_Rename,
                 .Enabled = &TTree::CanRename},
        TCommand{.Name = "MenuAction_Delete",
                 .Caption = u"Löschen",
                 .Verb = "delete",
                 .Shortcut = "Del",
                 .Execute = &TTree::MenuAction_Delete,
                 .Enabled = &TTree::CanRename},
        TCommand{.Name = "MenuAction_NewFolder",
                 .Caption = u"Neuer Ordner",
                 .Verb = "newfolder",
                 .Shortcut = "Ctrl+Shift+N",
                 .Execute = &TTree::MenuAction_NewFolder,
                 .Enabled = &TTree::HasRoot},
        TCommand{},
        TCommand{.Name = "MenuAction_CopyPath",
                 .Caption = u"Pfad kopieren",
                 .Verb = "copypath",
                 .Shortcut = "Ctrl+Shift+C",
                 .Execute = &TTree::MenuAction_CopyPath,
                 .Enabled = &TTree::HasItem},
        TCommand{.Name = "MenuAction_Refresh",
                 .Caption = u"Aktualisieren",
                 .Verb = "refresh",
                 .Shortcut = "F5",
                 .Execute = &TTree::MenuAction_Refresh,
                 .Enabled = &TTree::HasRoot},
    };
    return commands;
}

void TCustomShellTreeView::MakeMenu()
{
    m_menu = new QMenu(this);
    int number = 0;
    for (const TCommand& command : Commands()) {
        QAction* action = m_menu->addAction(QString::fromUtf16(command.Caption));
        action->setSeparator(!command.Name);
        if (command.Name) {
            action->setObjectName(QString::fromLatin1(command.Name));
            action->setShortcut(QKeySequence(QString::fromLatin1(command.Shortcut)));
            action->setShortcutContext(Qt::WidgetShortcut);
            connect(action, &QAction::triggered, this, [this, number] { RunCommand(number); });
        }
        addAction(action);
        ++number;
    }
}

void TCustomShellTreeView::UpdateActions()
{
    const QList<QAction*> actions = m_menu->actions();
    qsizetype number = 0;
    for (const TCommand& command : Commands()) {
        if (command.Name)
            actions[number]->setEnabled((this->*command.Enabled)());
        ++number;
    }
}

void TCustomShellTreeView::RunCommand(int number)
{
    Guarded([&] {
        const TCommand& command = Commands()[static_cast<std::size_t>(number)];
        if (!(this->*command.Enabled)())
            return;
        const QPointer<TCustomShellTreeView> self(this);
        const TExecuteContextEvent event = m_executeContext;
        bool handled = false;
        if (event)
            event(this, m_menu, number, QString::fromLatin1(command.Verb), handled);
        if (self && !handled)
            (this->*command.Execute)();
    });
}

void TCustomShellTreeView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex item = byMouse ? indexAt(viewport()->mapFrom(this, event->pos())) : SelectedIndex();
    if (!item.isValid())
        clearSelection();
    else
        setCurrentIndex(item);
    UpdateActions();
    const QPoint below = viewport()->mapToGlobal(visualRect(item).bottomLeft());
    m_menu->popup(byMouse ? event->globalPos() : below);
}

bool TCustomShellTreeView::CanOpen() const
{
    const TShellNode* node = m_model->NodeOf(SelectedIndex());
    return node && node->Entry.Kind != skSpecial;
}

bool TCustomShellTreeView::CanEdit() const
{
    const TShellNode* node = m_model->NodeOf(SelectedIndex());
    return node && (node->Entry.Kind == skFile || node->Entry.Kind == skLink);
}

bool TCustomShellTreeView::CanRename() const
{
    const TShellNode* node = m_model->NodeOf(SelectedIndex());
    return node && node->Parent;
}

bool TCustomShellTreeView::HasItem() const
{
    return SelectedIndex().isValid();
}

bool TCustomShellTreeView::HasRoot() const
{
    return m_model->RootItem().isValid();
}

void TCustomShellTreeView::Launch(const QString& verb)
{
    const TShellFolder item = SelectedFolder().value();
    TShellExecuteAction& action = UIActions().ShellExecute;
    action.SetVerb(verb);
    action.SetFileName(item.PathName());
    if (!action.Execute()) {
        throw TUserError(QStringLiteral("\"%1\" kann nicht geöffnet werden (Kein Programm ist dafür eingerichtet)")
                             .arg(ShellDisplayName(item.NativePath())));
    }
}

void TCustomShellTreeView::MenuAction_Open()
{
    const QModelIndex item = SelectedIndex();
    if (SelectedFolder()->IsFolder())
        setExpanded(item, !isExpanded(item));
    else
        Launch(QStringLiteral("open"));
}

void TCustomShellTreeView::MenuAction_Edit()
{
    Launch(QStringLiteral("edit"));
}

void TCustomShellTreeView::MenuAction_Rename()
{
    scrollTo(SelectedIndex());
    edit(SelectedIndex());
}

void TCustomShellTreeView::RenameItem(const QModelIndex& index, const QString& name)
{
    const TShellNode* node = m_model->NodeOf(index);
    if (!node || name == QFile::decodeName(node->Entry.Name))
        return;
    const QByteArray path = RenameShellItem(m_model->PathOf(node), name);
    m_model->HandleRenamed(index, path.mid(path.lastIndexOf('/') + 1));
    scrollTo(SelectedIndex());
}

void TCustomShellTreeView::MenuAction_Delete()
{
    const QByteArray path = SelectedFolder()->NativePath();
    const QByteArray folder = m_model->PathOf(m_model->NodeOf(SelectedIndex().parent()));
    const QPointer<TCustomShellTreeView> self(this);
    if (!Confirm(QStringLiteral("\"%1\" in den Papierkorb legen?").arg(ShellDisplayName(path))) || !self)
        return;
    MoveShellItemToTrash(path);
    m_model->Refresh({folder});
}

void TCustomShellTreeView::MenuAction_NewFolder()
{
    QModelIndex item = SelectedIndex().isValid() ? SelectedIndex() : m_model->RootItem();
    if (m_model->NodeOf(item)->Entry.Kind != skFolder)
        item = item.parent();
    const QByteArray folder = m_model->PathOf(m_model->NodeOf(item));
    const QByteArray path = folder + (folder.endsWith('/') ? "" : "/") + MakeShellFolder(folder);
    m_model->Refresh({folder});
    if (SelectPath(path))
        edit(SelectedIndex());
}

void TCustomShellTreeView::MenuAction_CopyPath()
{
    QGuiApplication::clipboard()->setText(SelectedFolder()->PathName());
}

void TCustomShellTreeView::MenuAction_Refresh()
{
    Refresh();
}
