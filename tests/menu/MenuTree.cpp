#include "MenuTree.h"

#include "Vlapputils.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QSpinBox>
#include <QTest>

namespace
{

constexpr auto Command = R"(Velmora.MenuTree.1://?file=%PRJPATH%\_menu\menu.xml)";
constexpr auto Templates = "config/lang/shared/templates/kolt/_menu/";

// As the writer makes them, so that an export without a change gives the same bytes.
constexpr auto MenuText = R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<?xml-stylesheet type="text/xsl" href=""?>
<menu version="0.1" levels="2" logo="/images/logo.png" helpbase="">
<menuitem id="mi0" class="main" caption="Start" title="Startseite" link="/index.html" help="/hilfe/start.html" access="0" >
<menuitem id="mi1" class="sub" caption="Wetter" title="Das Wetter" link="/wetter.html" help="" access="3" />
<menuitem id="mi2" class="sub" caption="Uhr" title="" link="/uhr.html" help="" access="0" />
</menuitem>
<menuitem id="mi3" class="main" caption="Licht" title="" link="" help="" access="5" >
<menuitem id="mi4" class="sub" caption="Flur" title="" link="/licht/flur.html" help="" access="25" />
</menuitem>
<menuitem id="mi5" class="main" caption="Alarme" title="Alle Alarme" link="/alarm.html" help="" access="10" >
</menuitem>
</menu>
)";

constexpr auto LinksText = R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<links>
<link id="lk0" class="link" name="1/1/1" alias="Außen" value="1" href="/aussen.html" target="eib" eis="14" access="2" />
<link id="lk1" class="link" name="40001" alias="Tür" value="0" href="/tuer.html" target="modbus" eis="10" access="0" />
<link id="lk2" class="link" name="vTag" alias="vTag" value="" href="" target="virtual" eis="1" access="4" />
</links>
)";

QByteArray Document(const char* text)
{
    return QString::fromUtf8(text).replace(u'\n', QStringLiteral("\r\n")).toLatin1();
}

std::string Captions(const QMenu* menu, bool (QAction::*has)() const)
{
    QStringList captions;
    const QList<QAction*> actions = menu->actions();
    for (const QAction* action : actions) {
        if (!action->isSeparator() && (action->*has)())
            captions.append(action->text());
    }
    return captions.join(QStringLiteral(", ")).toStdString();
}

template <class TDialog> TDialog* DialogOfKind()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        if (auto* dialog = qobject_cast<TDialog*>(widget))
            return dialog;
    }
    return nullptr;
}

} // namespace

TMenuTree::TMenuTree()
{
    QDir(m_home.path()).mkpath(QString::fromLatin1(Templates));
    WriteAll(HomePath("menu.xsl"), Stylesheet());
    WriteAll(HomePath("menu.js"), "// script");
    WriteAll(HomePath("menu.css"), "/* style */");
    qputenv("NORHOME", m_home.path().toLocal8Bit());
    WriteMenu(MenuDocument());
    WriteLinks(LinksDocument());
    m_frame = MakeFrame();
}

TMenuTree::~TMenuTree()
{
    qunsetenv("NORHOME");
}

QByteArray TMenuTree::MenuDocument()
{
    return Document(MenuText);
}

QByteArray TMenuTree::LinksDocument()
{
    return Document(LinksText);
}

QByteArray TMenuTree::Stylesheet(const QByteArray& heading)
{
    return "<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
           "<xsl:output method=\"text\" encoding=\"UTF-8\"/><xsl:template match=\"/\">" +
           heading +
           "<xsl:for-each select=\"//menuitem\"><xsl:value-of select=\"@caption\"/>;</xsl:for-each>"
           "</xsl:template></xsl:stylesheet>";
}

QString TMenuTree::HomePath(const char* name) const
{
    return m_home.filePath(QString::fromLatin1(Templates) + QString::fromLatin1(name));
}

void TMenuTree::Execute(TMenuTreeFrame& frame, const QByteArray& command)
{
    bool handled = false;
    frame.ExecuteCmd(command.constData(), handled);
    EXPECT_TRUE(handled);
}

std::unique_ptr<TMenuTreeFrame> TMenuTree::MakeFrame()
{
    auto frame = std::make_unique<TMenuTreeFrame>();
    Execute(*frame, Command);
    frame->expandAll();
    frame->setWindowTitle(QStringLiteral("[*]"));
    frame->resize(700, 700);
    frame->show();
    frame->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    frame->setFocus();
    return frame;
}

TMenuNode* TMenuTree::NodeOf(const TMenuTreeFrame& frame, const char* name)
{
    for (TTreeNode* node = frame.TopNode(); node; node = node->Next()) {
        if (NameOf(node) == name)
            return static_cast<TMenuNode*>(node);
    }
    ADD_FAILURE() << "no node " << name;
    return nullptr;
}

std::string TMenuTree::Below(const TMenuNode* node)
{
    std::string names;
    for (int i = 0; node && i < node->Count(); ++i)
        names += (i > 0 ? "|" : "") + NameOf(node->Child(i));
    return names;
}

std::string TMenuTree::Selected() const
{
    const TTreeNode* node = m_frame->SelectedNode();
    return node ? NameOf(node) : "";
}

std::string TMenuTree::Record(const TMenuNode* node)
{
    const TVlMenuItem* item = node ? node->Item() : nullptr;
    if (!item)
        return "none";
    return QStringLiteral("%1|%2|%3|%4 access=%5 kind=%6 type=%7 source=%8")
        .arg(item->Caption, item->Title, item->Link, item->Help)
        .arg(item->Access)
        .arg(item->Kind)
        .arg(item->DataType)
        .arg(item->Source)
        .toStdString();
}

std::string TMenuTree::OutlineOf(const TMenuTreeFrame& frame)
{
    std::string outline;
    for (const TTreeNode* node = frame.TopNode(); node; node = node->Next()) {
        const auto level = static_cast<std::size_t>(node->Level());
        outline += (outline.empty() ? "" : "\n") + std::string(2 * level, ' ') + NameOf(node);
    }
    return outline;
}

void TMenuTree::Select(const char* name) const
{
    m_frame->expandAll();
    m_frame->clearSelection();
    if (name)
        QTest::mouseClick(m_frame->viewport(), Qt::LeftButton, {}, m_frame->visualItemRect(Node(name)).center());
}

QLineEdit* TMenuTree::OpenEditor(const char* name) const
{
    RunOn(name, "MenuAction_RenameExecute");
    return m_frame->viewport()->findChild<QLineEdit*>();
}

void TMenuTree::Rename(const char* name, const char* text) const
{
    QLineEdit* editor = OpenEditor(name);
    ASSERT_NE(editor, nullptr);
    TypeInto(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    // The view takes the text from its editor later, and then lets it go.
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QAction* TMenuTree::Action(const char* name) const
{
    auto* action = m_frame->findChild<QAction*>(QLatin1StringView(name));
    EXPECT_NE(action, nullptr) << name;
    return action;
}

void TMenuTree::RunOn(const char* node, const char* name) const
{
    Select(node);
    EXPECT_TRUE(Action(name)->isEnabled()) << name;
    Run(name);
}

void TMenuTree::OpenMenu(const char* name) const
{
    QWidget* viewport = m_frame->viewport();
    const QPoint beside(10, viewport->height() - 5);
    const QPoint place = name ? m_frame->visualItemRect(Node(name)).center() : beside;
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
    QCoreApplication::sendEvent(viewport, &event);
}

void TMenuTree::CloseMenu() const
{
    Popup()->hide();
    QCoreApplication::processEvents();
}

QMenu* TMenuTree::Popup() const
{
    return qobject_cast<QMenu*>(Action("MenuAction_Export")->parent());
}

std::string TMenuTree::EnabledEntries() const
{
    return Captions(Popup(), &QAction::isEnabled);
}

std::string TMenuTree::VisibleEntries() const
{
    return Captions(Popup(), &QAction::isVisible);
}

TMenuPropsDialog* TMenuTree::MenuDialog()
{
    return DialogOfKind<TMenuPropsDialog>();
}

TLinkPropsDialog* TMenuTree::LinkDialog()
{
    return DialogOfKind<TLinkPropsDialog>();
}

TPropsDialog* TMenuTree::Dialog()
{
    if (LinkDialog() && LinkDialog()->isVisible())
        return LinkDialog();
    return MenuDialog() && MenuDialog()->isVisible() ? MenuDialog() : nullptr;
}

std::string TMenuTree::ShownItem()
{
    if (!MenuDialog())
        return "none";
    const TMenuPropsDialog& dialog = *MenuDialog();
    return QStringLiteral("%1|%2|%3|%4 access=%5")
        .arg(dialog.GetMenuName(), dialog.GetMenuTitle(), dialog.GetMenuLink(), dialog.GetMenuHelp())
        .arg(dialog.GetMenuAccess())
        .toStdString();
}

std::string TMenuTree::ShownLink()
{
    if (!LinkDialog())
        return "none";
    const TLinkPropsDialog& dialog = *LinkDialog();
    return QStringLiteral("%1|%2|%3|%4 source=%5 type=%6 access=%7")
        .arg(dialog.GetItemName(), dialog.GetLinkUrl(), dialog.GetNodeAlias(), dialog.GetNodeValue())
        .arg(dialog.GetNodeSource())
        .arg(dialog.GetDataType())
        .arg(dialog.GetAccessCode())
        .toStdString();
}

void TMenuTree::TypeInto(QLineEdit* edit, const char* text)
{
    ASSERT_NE(edit, nullptr);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, QString::fromUtf8(text));
}

void TMenuTree::TypeAccess(const char* level)
{
    const auto* field = Field<QSpinBox>("EditAccess");
    ASSERT_NE(field, nullptr);
    TypeInto(field->findChild<QLineEdit*>(), level);
}

void TMenuTree::Press(const char* button)
{
    auto* found = Field<QAbstractButton>(button);
    ASSERT_NE(found, nullptr) << button;
    QTest::mouseClick(found, Qt::LeftButton);
}

void TMenuTree::Choose(const char* box, int index)
{
    auto* list = Field<QComboBox>(box);
    ASSERT_NE(list, nullptr) << box;
    list->setFocus();
    const int before = list->currentIndex();
    for (int i = before; i < index; ++i)
        QTest::keyClick(list, Qt::Key_Down);
    for (int i = before; i > index; --i)
        QTest::keyClick(list, Qt::Key_Up);
}

std::string TMenuTree::MenuFiles() const
{
    const QDir directory(m_project.Path(QStringLiteral("_menu")));
    return directory.entryList(QDir::Files | QDir::Hidden, QDir::Name).join(u'|').toStdString();
}

std::string TMenuTree::PackagePath(const char* relative) const
{
    return ToPackagePath(m_project.Path(QString::fromUtf8(relative))).toStdString();
}
