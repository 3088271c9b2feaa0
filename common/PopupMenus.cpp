#include "PopupMenus.h"

#include "Vlerrors.h"

#include <QAction>
#include <QEvent>
#include <QPointer>
#include <QTimer>
#include <QWidget>

TPopupMenu::TPopupMenu(QWidget* widget, TShortcutRule shortcutRule)
    : QObject(widget), m_widget(widget), m_menu(new QMenu(widget)), m_shortcutRule(shortcutRule)
{
    widget->installEventFilter(this);
    connect(m_menu, &QMenu::aboutToHide, this, [this] {
        // The chosen operation runs after the menu has gone and still needs the node.
        QTimer::singleShot(0, this, [this] { Guarded([this] { ForgetTarget(); }); });
    });
}

TPopupMenu::~TPopupMenu() = default;

void TPopupMenu::Open(const QPoint& place)
{
    ApplyRules();
    m_menu->popup(place);
}

void TPopupMenu::ForgetTarget()
{
    if (m_menu->isVisible())
        return; // opened again meanwhile, for another node
    m_target.reset();
    ApplyRules();
}

void TPopupMenu::ApplyRules() const
{
    for (const TEntry& entry : m_entries) {
        entry.Action->setEnabled(entry.Enabled());
        entry.Action->setVisible(entry.Visible());
        if (!entry.Chosen)
            continue;
        const std::optional<int> chosen = entry.Chosen();
        const QList<QAction*> numbers = entry.Action->menu()->actions();
        for (qsizetype i = 0; i < numbers.size(); ++i)
            numbers[i]->setChecked(chosen == static_cast<int>(i));
    }
}

void TPopupMenu::EnableShortcuts() const
{
    for (const TEntry& entry : m_entries) {
        if (!entry.Action->shortcut().isEmpty())
            entry.Action->setEnabled(true);
    }
}

bool TPopupMenu::eventFilter(QObject* watched, QEvent* event)
{
    // Comes before a key is looked up among the short cuts.
    if (event->type() == QEvent::ShortcutOverride) {
        Guarded([this] {
            ApplyRules();
            if (m_shortcutRule == TShortcutRule::OperationDecides)
                EnableShortcuts();
        });
        // A key that is none of the short cuts leaves nothing enabled behind.
        if (m_shortcutRule == TShortcutRule::OperationDecides)
            QTimer::singleShot(0, this, [this] { Guarded([this] { ApplyRules(); }); });
    }
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

void TPopupMenu::Run(const TRule& allowed, const std::function<void()>& execute)
{
    Guarded([&] {
        const QPointer<TPopupMenu> self(this);
        if (allowed())
            execute();
        if (self)
            ApplyRules();
    });
}

void TPopupMenu::AddRow(const TRow& row, const std::function<void()>& execute)
{
    auto* action = new QAction(RcText(row.Caption), m_menu);
    action->setObjectName(QString::fromLatin1(row.Name));
    action->setShortcut(QKeySequence(QString::fromLatin1(row.Shortcut)));
    action->setShortcutContext(Qt::WidgetShortcut);
    // An action that is not enabled in the menu cannot be chosen there; what else arrives is the short cut.
    const bool free = m_shortcutRule == TShortcutRule::OperationDecides && !action->shortcut().isEmpty();
    const TRule allowed = free ? TRule([] { return true; }) : row.Enabled;
    connect(action, &QAction::triggered, this, [this, allowed, execute] { Run(allowed, execute); });
    m_menu->addAction(action);
    m_entries.push_back({.Action = action, .Enabled = row.Enabled, .Visible = row.Visible, .Chosen = {}});
}

void TPopupMenu::AddNumbers(const TRow& row, int last, const std::function<void(int)>& choose,
                            const std::function<std::optional<int>()>& chosen)
{
    QMenu* menu = m_menu->addMenu(RcText(row.Caption));
    menu->menuAction()->setObjectName(QString::fromLatin1(row.Name));
    for (int number = 0; number <= last; ++number) {
        QAction* action = menu->addAction(QString::number(number));
        action->setObjectName(QStringLiteral("%1_%2").arg(QString::fromLatin1(row.Name)).arg(number));
        action->setCheckable(true);
        const auto execute = [choose, number] { choose(number); };
        connect(action, &QAction::triggered, this, [this, allowed = row.Enabled, execute] { Run(allowed, execute); });
    }
    m_entries.push_back(
        {.Action = menu->menuAction(), .Enabled = row.Enabled, .Visible = row.Visible, .Chosen = chosen});
}
