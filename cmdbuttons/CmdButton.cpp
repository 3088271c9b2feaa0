#include "CmdButton.h"

#include "Vlapputils.h"
#include "Vlentryicons.h"
#include "Vlmessages.h"

#include <QKeyEvent>
#include <QStyleOptionToolButton>

TCmdButton::TCmdButton(TNavigationPtr action, QWidget* parent) : QToolButton(parent), m_action(std::move(action))
{
    setAutoRaise(true);
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setIconSize({EntryIconSize, EntryIconSize});
    setFixedHeight(Height);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QToolButton::clicked, this, &TCmdButton::Run);
    ShowCaption();
    ShowGlyph();
}

TCmdButton::~TCmdButton() = default;

void TCmdButton::ShowCaption()
{
    setText(m_action->text());
    setToolTip(m_action->toolTip());
    setAccessibleName(m_action->GetCaption());
}

void TCmdButton::ShowGlyph()
{
    if (!m_action->icon().isNull())
        setIcon(m_action->icon());
    const QString file = m_action->GetIconFile();
    if (const auto icon = LoadEntryIcon(file))
        setIcon(*icon);
    else if (FileExists(file))
        Note(parentWidget(), QStringLiteral("Das Symbol \"%1\" von \"%2\" ist kein Bild.")
                                 .arg(ToPlatformPath(file), m_action->GetCaption()));
}

// The bar gives all its buttons one width, so the caption is not measured for it.
QSize TCmdButton::sizeHint() const
{
    return {EntryIconSize, Height};
}

// The action may do anything, also retire the button.
void TCmdButton::Run()
{
    if (!m_action)
        return;
    ++m_runs;
    m_action->trigger();
    if (--m_runs == 0 && !m_action)
        deleteLater();
}

void TCmdButton::Retire()
{
    const bool isInUse = m_action->IsInUse() || m_runs > 0;
    m_action.reset();
    // Hiding leads the keyboard to the next button; destroying would leave it nowhere.
    if (isInUse || hasFocus())
        hide();
    if (!isInUse) {
        delete this;
        return;
    }
    // The click that runs the action has yet to return through the button, and the bar may go before it. A dialog of
    // the action has an event loop of its own, in which the button must not go either: Run sees to it.
    setParent(nullptr);
    if (m_runs == 0)
        deleteLater();
}

bool TCmdButton::event(QEvent* event)
{
    // The toolkit lets disabled buttons swallow the request for a menu, which is the bar's.
    if (event->type() == QEvent::ContextMenu && !isEnabled()) {
        event->ignore();
        return false;
    }
    // One that is scrolled out of sight has nothing to paint. The toolkit finds that out only after it has compared the
    // button with all others of the bar.
    if (event->type() == QEvent::UpdateLater && visibleRegion().isEmpty())
        return true;
    return QToolButton::event(event);
}

void TCmdButton::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter || event->isAutoRepeat())
        QToolButton::keyPressEvent(event);
    else
        click();
}

void TCmdButton::initStyleOption(QStyleOptionToolButton* option) const
{
    QToolButton::initStyleOption(option);
    constexpr int Margin = 8;
    option->text = option->fontMetrics.elidedText(option->text, Qt::ElideRight, width() - Margin, Qt::TextShowMnemonic);
}
