#include "SceneTree.h"

#include "SceneFiles.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

namespace
{

QString NameOf(const TSceneNode* node)
{
    return node->Item() ? node->Item()->Alias : node->Caption();
}

} // namespace

TSceneTree::TSceneTree()
{
    TSceneFiles house;
    house.WriteSmallHouse();
    const TFileContents contents = house.Contents();
    for (auto file = contents.begin(); file != contents.end(); ++file)
        WriteAll(m_project.Scenes(file.key()), file.value());
    m_frame = MakeFrame();
}

TSceneTree::~TSceneTree() = default;

std::unique_ptr<TConfigTreeFrame> TSceneTree::MakeFrame()
{
    auto frame = std::make_unique<TConfigTreeFrame>();
    bool handled = false;
    frame->ExecuteCmd(R"(Velmora.ConfigTree.1://?scenes=%PRJPATH%\_config\data\scenes\scenes.xml)", handled);
    EXPECT_TRUE(handled);
    frame->expandAll();
    frame->setWindowTitle(QStringLiteral("[*]"));
    frame->resize(400, 600);
    frame->show();
    frame->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    frame->setFocus();
    return frame;
}

TSceneNode* TSceneTree::NodeOf(const TConfigTreeFrame& frame, const char* alias)
{
    const QString name = QString::fromUtf8(alias);
    for (TTreeNode* node = frame.TopNode(); node; node = node->Next()) {
        if (NameOf(static_cast<TSceneNode*>(node)) == name)
            return static_cast<TSceneNode*>(node);
    }
    ADD_FAILURE() << "no node " << alias;
    return nullptr;
}

std::string TSceneTree::Below(const TSceneNode* node) const
{
    QStringList captions;
    for (int i = 0; node && i < node->Count(); ++i)
        captions.append(node->Child(i)->Caption());
    return captions.join(u'|').toStdString();
}

std::string TSceneTree::Selected() const
{
    QStringList names;
    const QList<TTreeNode*> nodes = m_frame->SelectedNodes();
    for (const TTreeNode* node : nodes)
        names.append(NameOf(static_cast<const TSceneNode*>(node)));
    return names.join(u'|').toStdString();
}

std::string TSceneTree::LinkOf(const TSceneNode* node)
{
    const TSceneNode* link = node && node->Item() ? node->Item()->Link.Get() : nullptr;
    return link ? NameOf(link).toStdString() : "none";
}

std::string TSceneTree::Record(const TSceneNode* node)
{
    return RecordOf(node).toStdString();
}

std::string TSceneTree::Outline() const
{
    return OutlineOf(Top()).join(u'\n').toStdString();
}

void TSceneTree::Click(const char* alias, Qt::KeyboardModifiers keys) const
{
    const QPoint place = m_frame->visualItemRect(Node(alias)).center();
    QTest::mouseClick(m_frame->viewport(), Qt::LeftButton, keys, place);
}

void TSceneTree::Select(const std::vector<const char*>& aliases) const
{
    m_frame->expandAll();
    m_frame->clearSelection();
    Qt::KeyboardModifiers keys = Qt::NoModifier;
    for (const char* alias : aliases) {
        Click(alias, keys);
        keys = Qt::ControlModifier;
    }
}

QLineEdit* TSceneTree::OpenEditor(const char* alias) const
{
    Select({alias});
    m_frame->activateWindow();
    m_frame->setFocus();
    QTest::keyClick(m_frame.get(), Qt::Key_F2);
    return m_frame->viewport()->findChild<QLineEdit*>();
}

void TSceneTree::Rename(const char* alias, const char* text) const
{
    QLineEdit* editor = OpenEditor(alias);
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, QString::fromUtf8(text));
    QTest::keyClick(editor, Qt::Key_Return);
    // The view takes the text from its editor later, and then lets it go.
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QAction* TSceneTree::Action(const char* name) const
{
    auto* action = m_frame->findChild<QAction*>(QLatin1StringView(name));
    EXPECT_NE(action, nullptr) << name;
    return action;
}

void TSceneTree::OpenMenu(const char* alias) const
{
    QWidget* viewport = m_frame->viewport();
    const QPoint beside(10, viewport->height() - 5);
    const QPoint place = alias ? m_frame->visualItemRect(Node(alias)).center() : beside;
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
    QCoreApplication::sendEvent(viewport, &event);
}

void TSceneTree::CloseMenu() const
{
    Menu()->hide();
    QCoreApplication::processEvents();
}

QMenu* TSceneTree::Menu() const
{
    return m_frame->findChild<QMenu*>();
}

std::string TSceneTree::EnabledEntries() const
{
    QStringList captions;
    const QList<QAction*> actions = Menu()->actions();
    for (const QAction* action : actions) {
        if (!action->isSeparator() && action->isEnabled())
            captions.append(action->text());
    }
    return captions.join(QStringLiteral(", ")).toStdString();
}

TScenePropsDialog* TSceneTree::DialogOf(const TConfigTreeFrame& frame)
{
    return frame.findChild<TScenePropsDialog*>();
}

void TSceneTree::ShowProperties(const char* alias) const
{
    Select({alias});
    Run("MenuAction_AttributesExecute");
    ASSERT_TRUE(m_frame->IsDialogShown());
}

void TSceneTree::Type(const char* field, const char* text) const
{
    auto* edit = Field<QLineEdit>(field);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, QString::fromUtf8(text));
}

std::string TSceneTree::TextOf(const char* field) const
{
    return Field<QLineEdit>(field)->text().toStdString();
}

void TSceneTree::Press(const char* button) const
{
    QTest::mouseClick(Field<QAbstractButton>(button), Qt::LeftButton);
}

void TSceneTree::Choose(const char* box, int index) const
{
    auto* list = Field<QComboBox>(box);
    list->setFocus();
    const int before = list->currentIndex();
    for (int i = before; i < index; ++i)
        QTest::keyClick(list, Qt::Key_Down);
    for (int i = before; i > index; --i)
        QTest::keyClick(list, Qt::Key_Up);
}
