#include "Pane.h"

#include "Folders.h"
#include "Vlclassregistry.h"
#include "Vlerrors.h"
#include "Vlmessages.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMenu>

namespace
{

QAction* FindIn(const QList<QAction*>& actions, const QString& name)
{
    for (QAction* action : actions) {
        if (action->objectName() == name)
            return action;
        QAction* inner = action->menu() ? FindIn(action->menu()->actions(), name) : nullptr;
        if (inner)
            return inner;
    }
    return nullptr;
}

// The content itself, or the first control in it that takes the keyboard.
QWidget* FocusTarget(QWidget* content)
{
    if (content->focusPolicy() & Qt::TabFocus)
        return content;
    for (QWidget* child : content->findChildren<QWidget*>()) {
        if ((child->focusPolicy() & Qt::TabFocus) && child->isVisibleTo(content) && child->isEnabled())
            return child;
    }
    return content;
}

} // namespace

TPane::TPane(const TPaneSetup& setup, const TClientRegistry& clients, QWidget* parent)
    : QDockWidget(parent), m_setup(setup), m_clients(clients)
{
    setObjectName(setup.Id);
    setAccessibleName(setup.Title);
    UpdateTitle();
    connect(this, &QDockWidget::visibilityChanged, this, &TPane::HandleVisibility);
}

// What the component sends while it is destroyed after this must not arrive here.
TPane::~TPane()
{
    if (m_component)
        m_component->removeEventFilter(this);
}

void TPane::Load()
{
    if (widget())
        return;
    Guarded([this] { m_component = CreateComponent(m_clients.ClassOf(m_setup.Class), this); });
    if (!m_component) {
        ShowMissingClass();
        return;
    }
    if (m_component->accessibleName().isEmpty())
        m_component->setAccessibleName(m_setup.Title);
    m_component->installEventFilter(this);
    setWidget(m_component);
    Q_EMIT ComponentMade();
    SendCommand();
    UpdateTitle();
    Q_EMIT ComponentChanged();
}

void TPane::SendCommand()
{
    Guarded([this] {
        if (!m_setup.Command.isEmpty())
            Execute(m_setup.Command);
    });
}

void TPane::HandleOtherProject()
{
    if (m_component && !m_setup.OnProject.isEmpty())
        SendCommand();
}

void TPane::ShowMissingClass()
{
    const QString text = QStringLiteral("Der Bereich \"%1\" bleibt leer: Die Komponente \"%2\" ist nicht vorhanden.")
                             .arg(m_setup.Title, m_setup.Class);
    auto* label = new QLabel(text, this);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    label->setMargin(12);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setWidget(label);
    ShowError(text);
}

bool TPane::Contains(const QObject* object) const
{
    for (; object; object = object->parent()) {
        if (object == m_component)
            return true;
    }
    return false;
}

void TPane::Execute(const QString& command)
{
    auto* target = qobject_cast<ICmdTarget*>(m_component.data());
    if (!target)
        throw TUserError(QStringLiteral("Der Bereich \"%1\" kann keine Befehle ausführen.").arg(m_setup.Id));
    const QByteArray text = command.toUtf8();
    bool accepted = false;
    target->QueryCmd(text.constData(), accepted);
    bool handled = false;
    if (accepted)
        target->ExecuteCmd(text.constData(), handled);
    if (!handled)
        throw TUserError(
            QStringLiteral("Der Bereich \"%1\" nimmt den Befehl \"%2\" nicht an.").arg(m_setup.Id, command));
}

QList<QAction*> TPane::Actions() const
{
    if (!m_component)
        return {};
    Invoke("UpdateActions");
    return m_component->actions();
}

QAction* TPane::FindAction(const QString& name) const
{
    return FindIn(Actions(), name);
}

void TPane::Trigger(const QString& actionName)
{
    QAction* action = FindAction(actionName);
    if (!action)
        throw TUserError(
            QStringLiteral("Der Bereich \"%1\" kennt die Aktion \"%2\" nicht.").arg(m_setup.Id, actionName));
    if (!action->isEnabled()) {
        throw TUserError(QStringLiteral("Die Aktion \"%1\" ist im Bereich \"%2\" zurzeit nicht möglich.")
                             .arg(actionName, m_setup.Id));
    }
    action->trigger();
}

void TPane::FocusContent()
{
    show();
    raise();
    Load();
    FocusTarget(widget())->setFocus(Qt::OtherFocusReason);
}

void TPane::HandleVisibility(bool visible)
{
    if (visible)
        Load();
}

// A refused close leaves the entry in the view menu as it was before the click.
void TPane::closeEvent(QCloseEvent* event)
{
    bool allowed = true;
    Q_EMIT Closing(this, allowed);
    event->setAccepted(allowed);
    if (allowed)
        Unload();
    else
        toggleViewAction()->setChecked(true);
}

// The click that closes the pane may come from inside the component.
void TPane::Unload()
{
    QWidget* content = widget();
    if (!content)
        return;
    content->removeEventFilter(this);
    m_component = nullptr;
    setWidget(nullptr);
    content->hide();
    content->deleteLater();
    UpdateTitle();
    Q_EMIT ComponentChanged();
}

bool TPane::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_component && event->type() == QEvent::ModifiedChange)
        UpdateTitle();
    return QDockWidget::eventFilter(watched, event);
}

void TPane::UpdateTitle()
{
    const QString title = IsModified() ? m_setup.Title + u'*' : m_setup.Title;
    setWindowTitle(title);
}

void TPane::CommitEdits()
{
    if (m_component)
        Invoke("CommitEdits");
}

// Calls an operation that a component may have.
void TPane::Invoke(const char* operation) const
{
    const QByteArray signature = QByteArray(operation) + "()";
    if (m_component->metaObject()->indexOfMethod(signature) >= 0)
        QMetaObject::invokeMethod(m_component, operation, Qt::DirectConnection);
}
