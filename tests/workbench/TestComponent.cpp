#include "TestComponent.h"

#include "Vlapputils.h"
#include "Vlclassregistry.h"
#include "Vlerrors.h"
#include "Vlmessages.h"
#include "Vlurlname.h"

#include <QAction>
#include <QDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

namespace
{

const auto ClassName = QStringLiteral("TTestComponent");
// The one component of the default layout that is asked for by its class and works from the start.
const auto FileTreeClass = QStringLiteral("TICmdShellTreeView");

} // namespace

int TTestComponent::LiveCount = 0;

TTestComponent::TTestComponent(QWidget* parent)
    : QWidget(parent),
      Field(new QLineEdit(this)),
      ExportAction(AddAction(QStringLiteral("MenuAction_Export"), QStringLiteral("Exportieren")))
{
    ++LiveCount;
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    (new QVBoxLayout(this))->addWidget(Field, 0, Qt::AlignTop);
    ExportAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
    connect(ExportAction, &QAction::triggered, this, [this] { Guarded([this] { Export(); }); });
    auto* separator = new QAction(this);
    separator->setSeparator(true);
    addAction(separator);
    AddAction(QStringLiteral("MenuAction_Disabled"), QStringLiteral("Gesperrt"))->setEnabled(false);
    AddAction(QStringLiteral("MenuAction_Hidden"), QStringLiteral("Verborgen"))->setVisible(false);
    UserManager()->AddListener(this, &TTestComponent::HandleProjectChange);
}

TTestComponent::~TTestComponent()
{
    --LiveCount;
}

void TTestComponent::Register()
{
    for (const QString& name : {ClassName, FileTreeClass})
        RegisterComponent(name, [](QWidget* parent) { return new TTestComponent(parent); });
    IInterface* found = nullptr;
    FindApplicationInterface(IID_IRegisterClient, &found);
    if (auto* clients = static_cast<IRegisterClient*>(found)) {
        for (const char* progId : {ProgIdMenuTree, ProgIdConfigTree, ProgIdScheduleTree, ProgIdCmdButtons})
            clients->RegisterComponentClass(QString::fromLatin1(progId), ClassName);
    }
}

void TTestComponent::Unregister()
{
    UnregisterComponent(FileTreeClass);
    UnregisterComponent(ClassName);
}

QAction* TTestComponent::AddAction(const QString& name, const QString& caption)
{
    auto* action = new QAction(caption, this);
    action->setObjectName(name);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(action);
    return action;
}

void TTestComponent::QueryCmd(const char* command, bool& accepted)
{
    accepted = !CommandText(command).contains(QStringLiteral("refuse"));
}

void TTestComponent::ExecuteCmd(const char* command, bool& handled)
{
    handled = true;
    const QString text = CommandText(command);
    Commands.append(text);
    if (text.contains(QStringLiteral("throw")))
        throw TUserError(QStringLiteral("Geworfen"));
    if (text.contains(QStringLiteral("error")))
        ShowError(QStringLiteral("Gemeldet"));
    if (text.contains(QStringLiteral("ask")))
        setWindowModified(Confirm(QStringLiteral("Wirklich?")));
    if (text.contains(QStringLiteral("inform")))
        ShowInformation(QStringLiteral("Nur so.\nZweite Zeile."));
    if (text.contains(QStringLiteral("later")))
        QTimer::singleShot(0, this, [] { throw TUserError(QStringLiteral("Später geworfen")); });
    if (text.contains(QStringLiteral("modal")))
        QDialog(this).exec();
    Note(Field, QStringLiteral("Befehl %1").arg(UserManager()->DecodeVars(text)));
}

QString TTestComponent::ExportedPage() const
{
    TQueryItems items;
    TURLName(Commands.value(Commands.size() - 1)).GetQueryItems(items);
    return ToPlatformPath(UserManager()->DecodeVars(items.Value(QStringLiteral("out"))));
}

TDocumentPlace TTestComponent::DocumentPlace(const QString& path, int line)
{
    AskedPlaces.append(QStringLiteral("%1:%2").arg(QFileInfo(path).fileName()).arg(line));
    return [this, place = AskedPlaces.last()] {
        if (HasPlaces)
            ShownPlaces.append(place);
        return HasPlaces;
    };
}

void TTestComponent::Export()
{
    ++Exports;
    if (ExportFails)
        throw TUserError(QStringLiteral("Export misslungen"));
    setWindowModified(ExportKeepsModified);
    Note(this, QStringLiteral("exportiert nach %1").arg(GetEnvironment("NORHOME")));
}

void TTestComponent::HandleProjectChange(QObject*, TUserProperty, const QString&)
{
    ++ProjectChanges;
    setWindowModified(false);
    Note(this, QStringLiteral("neu geladen"));
}
