#include "ICmdButtons.h"

#include "CmdButton.h"
#include "CommandItems.h"
#include "Vlapputils.h"
#include "Vlclassregistry.h"
#include "Vlerrors.h"
#include "Vltext.h"

#include <QApplication>
#include <QScopeGuard>
#include <QTimer>
#include <QVBoxLayout>

namespace
{

const auto ClassName = QStringLiteral("TICmdButtons");
const auto ProgId = QString::fromLatin1(ProgIdCmdButtons);

} // namespace

TICmdButtons::TICmdButtons(QWidget* parent)
    : QScrollArea(parent), m_popupMenu(new TPopupMenu(this, PopupRows())), m_layout(new QVBoxLayout)
{
    setObjectName(ClassName);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::ClickFocus); // the keyboard goes to the buttons
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_layout->setAlignment(Qt::AlignTop);
    m_layout->setContentsMargins(2, 2, 2, 2);
    m_layout->setSpacing(2);
    auto* content = new QWidget;
    content->setLayout(m_layout);
    setWidget(content);
    m_popupMenu->SetAttached(true);
    // The chosen operation runs after the menu has gone and still needs the button.
    connect(PopupMenu(), &QMenu::aboutToHide, this,
            [this] { QTimer::singleShot(0, this, [this] { Guarded([this] { ForgetTarget(); }); }); });
    SetupUserManager();
}

TICmdButtons::~TICmdButtons()
{
    RemoveButtons();
    // What runs has yet to return through the menu, see RunMenuEntry.
    if (m_runningEntries > 0)
        PopupMenu()->setParent(nullptr);
    // At the end of the application the host takes the manager down first.
    if (m_listening && !QCoreApplication::closingDown() && UserManager())
        UserManager()->RemoveListener(this, &TICmdButtons::HandleProjectChange);
    DisposeUserManager();
}

void TICmdButtons::QueryCmd(const char* command, bool& accepted)
{
    accepted = CommandText(command).contains(ProgId, Qt::CaseInsensitive);
}

// Deliberately stricter than QueryCmd: a ProgID in other letters is accepted there and not handled here.
void TICmdButtons::ExecuteCmd(const char* command, bool& handled)
{
    handled = false;
    const QString text = CommandText(command);
    if (!text.contains(ProgId))
        return;
    RemoveButtons();
    handled = true;
    const TURLName url(text);
    m_location = url.GetPath();
    const QString expanded = UserManager()->EnvToFilePath(m_location);
    WalkCommandItems(url, [this](const QString& key, const QString& value) { ApplyItem(key, value); });
    const auto listen = qScopeGuard([this] { SetProjectListener(); });
    LoadCmdItems(expanded);
}

void TICmdButtons::ApplyItem(const QString& key, const QString& value)
{
    if (SameText(key, u"bgcolor"))
        ApplyColor(this, QPalette::Window, StrToColorDef(value, AppWorkspaceColor));
    else if (SameText(key, u"color"))
        ApplyColor(this, QPalette::ButtonText, StrToColorDef(value, DefaultColor)); // the buttons inherit it
    else if (SameText(key, u"category"))
        m_category = value;
}

QList<TCmdButton*> TICmdButtons::Buttons() const
{
    QList<TCmdButton*> buttons;
    for (int i = 0; i < m_layout->count(); ++i)
        buttons.append(qobject_cast<TCmdButton*>(m_layout->itemAt(i)->widget()));
    return buttons;
}

TCmdButton* TICmdButtons::AddCmdButton(TNavigationPtr action)
{
    auto* button = new TCmdButton(std::move(action), widget());
    m_layout->addWidget(button);
    if (widget()->isVisible())
        button->show();
    return button;
}

void TICmdButtons::RemoveCmdButton(QWidget* control)
{
    auto* button = qobject_cast<TCmdButton*>(control);
    if (!button || !widget()->isAncestorOf(button))
        return;
    m_layout->removeWidget(button);
    button->Retire();
    m_popupMenu->ApplyRules();
}

void TICmdButtons::RemoveButtons()
{
    const QList<TCmdButton*> buttons = Buttons();
    // Else the keyboard would go from button to button and at last to another pane.
    if (widget()->isAncestorOf(QApplication::focusWidget()))
        setFocus(Qt::OtherFocusReason);
    widget()->setUpdatesEnabled(false);
    for (auto button = buttons.rbegin(); button != buttons.rend(); ++button) {
        delete m_layout->takeAt(m_layout->count() - 1);
        (*button)->Retire();
    }
    widget()->setUpdatesEnabled(true);
    // A menu that is open has lost its button.
    m_popupMenu->ApplyRules();
}

void TICmdButtons::NewButtonNotify(QObject*, TNavigationPtr action)
{
    if (action->GetCategory().isEmpty())
        action->SetCategory(m_category);
    TNavigation* entry = action.get();
    TCmdButton* button = AddCmdButton(std::move(action));
    entry->SetChangeEvent([this](QObject* sender) { HandleButtonChange(sender); });
    entry->SetButton(button);
}

void TICmdButtons::HandleButtonChange(QObject* sender)
{
    auto* entry = qobject_cast<TNavigation*>(sender);
    auto* button = entry ? qobject_cast<TCmdButton*>(entry->GetButton()) : nullptr;
    if (!button || button->Action() != entry)
        return;
    button->ShowCaption();
    button->ShowGlyph();
}

void TICmdButtons::SetProjectListener()
{
    const bool listens = TUserManager::DependsOnProject(m_location);
    // The manager tolerates a listener that is added again and calls it once.
    if (listens)
        UserManager()->AddListener(this, &TICmdButtons::HandleProjectChange);
    else if (m_listening)
        UserManager()->RemoveListener(this, &TICmdButtons::HandleProjectChange);
    m_listening = listens;
}

void TICmdButtons::HandleProjectChange(QObject* sender, TUserProperty, const QString&)
{
    if (sender != UserManager() || !UserManager()->GetActiveProject())
        return;
    Guarded([this] {
        RemoveButtons();
        LoadCmdItems(UserManager()->EnvToFilePath(m_location));
    });
}

void InitializeCmdButtonsUnit()
{
    RegisterComponent(ClassName, [](QWidget* parent) -> QWidget* { return new TICmdButtons(parent); });
}

void FinalizeCmdButtonsUnit()
{
    UnregisterComponent(ClassName);
}
