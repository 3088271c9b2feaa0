#include "PopupMenus.h"

#include "Vlerrors.h"

#include <QAction>
#include <QEvent>
#include <QPointer>
#include <QWidget>

TPopupMenu::TPopupMenu(QWidget* widget) : QObject(widget), m_widget(widget), m_menu(new QMenu(widget))
{
    widget->installEventFilter(this);
}

TPopupMenu::~TPopupMenu() = default;

void TPopupMenu::ApplyRules() const
{
    for (const TEntry& entry : m_entries)
        entry.Action->setEnabled(entry.Enabled());
}

bool TPopupMenu::eventFilter(QObject* watched, QEvent* event)
{
    // Comes before a key is looked up among the short cuts.
    if (event->type() == QEvent::ShortcutOverride)
        Guarded([this] { ApplyRules(); });
    return QObject::eventFilter(watched, event);
}

void TPopupMenu::SetAttached(bool attached)
{
    for (QAction* action : m_menu->actions()) {
        if (attached)
            m_widget->addAction(action);
        else
            m_widget->removeAction(action);
    }
}

void TPopupMenu::AddSeparator()
{
    auto* separator = new QAction(m_menu);
    separator->setSeparator(true);
    m_menu->addAction(separator);
}

void TPopupMenu::AddRow(const char* name, TResourceId caption, const char* shortcut,
                        const std::function<void()>& execute, const std::function<bool()>& enabled)
{
    auto* action = new QAction(RcText(caption), m_menu);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(QKeySequence(QString::fromLatin1(shortcut)));
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, [this, execute, enabled] {
        Guarded([&] {
            const QPointer<TPopupMenu> self(this);
            if (enabled())
                execute();
            if (self)
                ApplyRules();
        });
    });
    m_menu->addAction(action);
    m_entries.push_back({.Action = action, .Enabled = enabled});
}
