#include "ICmdButtons.h"

#include "CmdButton.h"
#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QContextMenuEvent>
#include <QScopeGuard>

#include <array>

namespace
{

// A name for an entry file that nobody else has had.
QString NewEntryName()
{
    const QString file = GetTemporaryFilename(QStringLiteral(".uri"));
    DeleteFileAt(file);
    return GetLastPathItem(file, PathSeparator);
}

} // namespace

std::span<const TPopupRow<TICmdButtons>> TICmdButtons::PopupRows()
{
    static constexpr std::array<TPopupRow<TICmdButtons>, 4> Rows{{
        {.Name = "MenuAction_NewAction", .Caption = _RSTR_NEW_ACTION, .Execute = &TICmdButtons::MenuAction_NewAction},
        {.Name = "MenuAction_Remove",
         .Caption = _RSTR_REMOVE,
         .Execute = &TICmdButtons::MenuAction_Remove,
         .Enabled = &TICmdButtons::CanRemove,
         .Visible = &TICmdButtons::CanRemove},
        {},
        {.Name = "MenuAction_Properties",
         .Caption = _RSTR_PROPERTIES,
         .Execute = &TICmdButtons::MenuAction_Properties,
         .Enabled = &TICmdButtons::HasTarget,
         .Visible = &TICmdButtons::HasTarget},
    }};
    return Rows;
}

TCmdButton* TICmdButtons::MenuTarget() const
{
    auto* button = m_target ? m_target->data() : FocusedButton();
    // One that has retired while its action was in use is still there, without its action.
    return button && button->Action() ? button : nullptr;
}

// The bar's, not the content's: that one remembers its button also when the bar itself has taken the focus.
TCmdButton* TICmdButtons::FocusedButton() const
{
    return qobject_cast<TCmdButton*>(focusWidget());
}

bool TICmdButtons::CanRemove() const
{
    const TCmdButton* button = MenuTarget();
    return button && button->Action()->IsRemovable();
}

void TICmdButtons::HandleContextPopup(QObject*, const QPoint& mousePosition, bool& handled)
{
    handled = false;
    auto* button = qobject_cast<TCmdButton*>(widget()->childAt(widget()->mapFrom(viewport(), mousePosition)));
    m_target.emplace(button && button->isEnabled() ? button : nullptr);
}

void TICmdButtons::contextMenuEvent(QContextMenuEvent* event)
{
    QPoint place = event->pos();
    // The menu key means the button with the focus, wherever the mouse is, and none where the bar itself has it.
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    TCmdButton* focused = FocusedButton();
    if (isByKey && focused) {
        ensureWidgetVisible(focused);
        place = focused->mapTo(viewport(), focused->rect().center());
    }
    bool handled = false;
    HandleContextPopup(this, place, handled);
    if (isByKey && !focused)
        m_target.emplace(nullptr);
    if (!handled)
        m_popupMenu->Open(viewport()->mapToGlobal(place));
}

void TICmdButtons::ForgetTarget()
{
    if (PopupMenu()->isVisible())
        return; // opened again meanwhile, for another button
    m_target.reset();
    m_popupMenu->ApplyRules();
}

void TICmdButtons::HandleMenuClick(QObject* sender)
{
    RunMenuEntry(PopupMenu()->actions().indexOf(qobject_cast<QAction*>(sender)));
}

// The bar may be gone when the dialog that an entry shows is closed, but not the menu.
void TICmdButtons::RunMenuEntry(qsizetype index)
{
    const auto leave = qScopeGuard([self = QPointer(this), menu = QPointer(PopupMenu())] {
        if (self)
            --self->m_runningEntries;
        else if (menu)
            menu->deleteLater();
    });
    ++m_runningEntries;
    DoMenuEntry(index);
}

void TICmdButtons::DoMenuEntry(qsizetype index)
{
    switch (index) {
    case miNewAction:
        AssignNewAction();
        break;
    case miRemove:
        RemoveCmdButton(MenuTarget());
        break;
    case miProperties:
        ShowProperties(MenuTarget());
        break;
    default:
        break;
    }
}

void TICmdButtons::AssignNewAction()
{
    if (m_location.isEmpty())
        throw TUserError(QStringLiteral("Die Leiste zeigt noch keinen Ordner, in dem eine neue Aktion stehen könnte."));
    if (m_sourceLocation.isEmpty()) {
        throw TUserError(QStringLiteral("Eine neue Aktion braucht einen Ordner, und \"%1\" gibt es nicht.")
                             .arg(UserManager()->EnvToFilePath(m_location)));
    }
    const QString source = m_sourceLocation;
    const QString file = JoinFilePath(source, {NewEntryName()});
    TNavigationPtr entry = TNavigation::Create(file, m_category);
    entry->SetNew(true);
    const QPointer<TICmdButtons> self(this);
    if (!entry->EditProperties()) {
        if (FileExists(file))
            DeleteFileAt(file);
        entry->Detach();
        return;
    }
    // Meanwhile another project may have come, or another command, or the bar may be gone.
    if (self && m_sourceLocation == source)
        NewButtonNotify(this, std::move(entry));
}

void TICmdButtons::ShowProperties(QWidget* control)
{
    auto* button = qobject_cast<TCmdButton*>(control);
    if (button && button->Action())
        button->Action()->EditProperties();
}
