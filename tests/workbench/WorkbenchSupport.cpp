#include "WorkbenchSupport.h"

#include "Pane.h"

TModifiedAnswer TScriptedAsker::Ask(const QStringList& titles)
{
    Asked.append(titles);
    return Answer;
}

TPaneSetup TestPane(const QString& id, const QString& command)
{
    return {.Id = id,
            .Title = QStringLiteral("Bereich ") + id,
            .Class = QStringLiteral("TTestComponent"),
            .Command = command};
}

TWorkbenchTest::TWorkbenchTest()
{
    TTestComponent::Register();
    RestartWindow();
}

TWorkbenchTest::~TWorkbenchTest()
{
    m_window.reset();
    TTestComponent::Unregister();
    UserManager()->CloseProject();
}

void TWorkbenchTest::RestartWindow()
{
    m_window.reset();
    m_window = std::make_unique<TMainWindow>(m_services.Clients(), m_asker);
}

QString TWorkbenchTest::MakeProject(const QString& name, const QByteArray& layout) const
{
    QString root = TProject::Create(m_directory.filePath(name), name).GetRootDirectory();
    if (!layout.isNull())
        WriteAll(root + QStringLiteral("/velmora.layout"), layout);
    return root;
}

TPane& TWorkbenchTest::Pane(const QString& id)
{
    TPane* pane = Window().Panes().Find(id);
    if (!pane)
        throw std::logic_error("no pane " + id.toStdString());
    return *pane;
}

TTestComponent& TWorkbenchTest::Component(const QString& id)
{
    auto* component = qobject_cast<TTestComponent*>(Pane(id).Component());
    if (!component)
        throw std::logic_error("no component in " + id.toStdString());
    return *component;
}

void TWorkbenchTest::OpenAndEdit()
{
    ASSERT_TRUE(Window().OpenProject(MakeProject(QStringLiteral("Haus"))));
    Window().show();
    Component(QStringLiteral("scenes")).Edit();
}
