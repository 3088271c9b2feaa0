#pragma once

#include "DatapointBrowser.h"
#include "MainWindow.h"
#include "OpenedUrls.h"
#include "Robot.h"
#include "TestSupport.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QDirIterator>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QTabBar>
#include <QTreeView>
#include <QTreeWidget>
#include <QWindow>
#include <gtest/gtest.h>

inline const auto Actions = QStringLiteral("Aktions-Elemente");
inline const auto Scene = QStringLiteral("Guten Morgen [Taster Schlafzimmer Bett links]");
inline constexpr QRect WindowPlace(30, 40, 1200, 860);

using TContents = QMap<QString, QByteArray>;

// All files but the log of the project's files, which tells of the others.
inline TContents ContentsOf(const QString& directory)
{
    TContents contents;
    for (QDirIterator files(directory, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        const QString path = files.next();
        if (QFileInfo(path).fileName() == QStringLiteral("actions.log"))
            continue;
        contents.insert(QDir(directory).relativeFilePath(path), ReadAll(path));
    }
    return contents;
}

inline void CopyDirectory(const QString& from, const QString& to)
{
    const TContents contents = ContentsOf(from);
    for (auto file = contents.begin(); file != contents.end(); ++file) {
        const QString path = to + u'/' + file.key();
        QDir().mkpath(QFileInfo(path).path());
        WriteAll(path, file.value());
    }
}

// An editor by the object names of its tree and of its properties dialog, and the tab of its pane.
struct TEditor
{
    const char* Tree;
    const char* Dialog;
    const char* Tab;
};

inline constexpr TEditor SceneEditor{.Tree = "TConfigTreeFrame", .Dialog = "TScenePropsDialog", .Tab = "Szenen"};
inline constexpr TEditor ScheduleEditor{
    .Tree = "TScheduleTreeFrame", .Dialog = "TSchedulePropsDialog", .Tab = "Wochenschaltplan"};
inline constexpr TEditor MenuEditor{.Tree = "TMenuTreeFrame", .Dialog = "TMenuPropsDialog", .Tab = "Menu"};

// The workbench with the sample project, and the user's view of it, which is the view of one editor at a time. What
// looks at widgets runs in their thread; what uses the mouse or the keyboard, in the user's.
class TWorkbenchUser
{
public:
    explicit TWorkbenchUser(TRobot& robot) : m_robot(robot)
    {
        m_editor = SceneEditor;
        m_robot.WaitFor(QStringLiteral("the scenes"), [] { return Tree() && Tree()->topLevelItemCount() == 1; });
        m_robot.See([] {
            Window()->setGeometry(WindowPlace);
            return true;
        });
        m_robot.WaitFor(QStringLiteral("the window in its place"),
                        [] { return Window()->size() == WindowPlace.size() && Tree()->width() > 200; });
    }

    // From now on the user works with this editor.
    void TurnTo(const TEditor& editor)
    {
        m_robot.Click(m_robot.See([=] { return PlaceOfTab(QString::fromLatin1(editor.Tab)); }));
        m_robot.See([=] {
            m_editor = editor;
            return true;
        });
        m_robot.WaitFor(QStringLiteral("the editor"),
                        [] { return Tree() && Tree()->isVisible() && Tree()->topLevelItemCount() > 0; });
    }
    // Brings another pane to the front, as by its tab.
    void ClickTab(const QString& title)
    {
        m_robot.Click(m_robot.See([=] { return PlaceOfTab(title); }));
    }

    // Widgets
    template <class TWidget> static TWidget* FindWindow()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* window = qobject_cast<TWidget*>(widget);
            if (window && window->isVisible())
                return window;
        }
        return nullptr;
    }
    static QMessageBox* Question() { return FindWindow<QMessageBox>(); }
    static TMainWindow* Window() { return FindWindow<TMainWindow>(); }
    static QTreeWidget* Tree()
    {
        return Window() ? Window()->findChild<QTreeWidget*>(QLatin1StringView(m_editor.Tree)) : nullptr;
    }
    static QDialog* Dialog()
    {
        const QList<QDialog*> dialogs = Window()->findChildren<QDialog*>(QLatin1StringView(m_editor.Dialog));
        return dialogs.isEmpty() || !dialogs.first()->isVisible() ? nullptr : dialogs.first();
    }
    template <class TField> static TField* Field(const char* name)
    {
        auto* field = Dialog() ? Dialog()->findChild<TField*>(QLatin1StringView(name)) : nullptr;
        if (!field)
            throw std::runtime_error(std::string("no field ") + name);
        return field;
    }
    static QString TextOf(const char* field) { return Field<QLineEdit>(field)->text(); }

    // Nodes are named by their captions, from the one below the top on; null for one that is not there.
    static QTreeWidgetItem* Find(const QStringList& path)
    {
        QTreeWidgetItem* item = Tree()->topLevelItem(0);
        for (const QString& caption : path)
            item = item ? Child(item, caption) : nullptr;
        return item;
    }
    static QTreeWidgetItem* Find(const QString& parent, const QString& caption) { return Find(Path(parent, caption)); }
    static bool IsSelected(const QStringList& path)
    {
        const QTreeWidgetItem* item = Find(path);
        return item && Tree()->selectedItems() == QList{const_cast<QTreeWidgetItem*>(item)};
    }
    static bool IsSelected(const QString& parent, const QString& caption) { return IsSelected(Path(parent, caption)); }
    static bool IsModified() { return Tree()->isWindowModified(); }

    // Mouse and keyboard
    QPoint PlaceOf(const QString& parent, const QString& caption) { return PlaceOf(Path(parent, caption)); }
    QPoint PlaceOf(const QStringList& path)
    {
        const QPoint middle = m_robot.See([] { return CenterOf(Tree()->viewport()); });
        for (int i = 0; i < 100; ++i) {
            const QRect row = m_robot.See([=] {
                const QRect found = Tree()->visualItemRect(Find(path));
                return QRect(Tree()->viewport()->mapToGlobal(found.topLeft()), found.size());
            });
            const QRect view = m_robot.See(
                [] { return QRect(Tree()->viewport()->mapToGlobal(QPoint(0, 0)), Tree()->viewport()->size()); });
            if (row.isValid() && view.contains(QRect(row.topLeft(), QSize(1, row.height()))))
                return {row.left() + 60, row.center().y()};
            m_robot.Wheel(middle, row.center().y() > middle.y());
        }
        throw std::runtime_error("cannot scroll to " + path.join(u'/').toStdString());
    }
    void Select(const QString& parent, const QString& caption) { Select(Path(parent, caption)); }
    void Select(const QStringList& path)
    {
        m_robot.Click(PlaceOf(path));
        m_robot.WaitFor(QStringLiteral("the selection of ") + path.last(), [=] { return IsSelected(path); });
    }
    void ChooseFromMenu(const QString& parent, const QString& caption, const QString& entry)
    {
        ChooseFromMenu(Path(parent, caption), entry);
    }
    void ChooseFromMenu(const QStringList& path, const QString& entry)
    {
        m_robot.Click(PlaceOf(path), 3);
        Choose(entry);
    }
    // From the popup menu that is opening.
    void Choose(const QString& entry)
    {
        m_robot.WaitFor(QStringLiteral("the popup menu"), [] { return PopupMenu() != nullptr; });
        m_robot.Click(m_robot.See([=] {
            for (QAction* action : PopupMenu()->actions()) {
                if (action->text() == entry && action->isEnabled())
                    return PopupMenu()->mapToGlobal(PopupMenu()->actionGeometry(action).center());
            }
            throw std::runtime_error("no entry " + entry.toStdString());
        }));
        m_robot.WaitFor(QStringLiteral("the end of the menu"), [] { return PopupMenu() == nullptr; });
    }
    void Press(const char* button)
    {
        m_robot.Click(m_robot.See([=] { return CenterOf(Field<QWidget>(button)); }));
    }
    void Fill(const char* field, const QString& text)
    {
        m_robot.Click(m_robot.See([=] { return CenterOf(Field<QWidget>(field)); }));
        m_robot.WaitFor(QStringLiteral("the focus"), [=] { return Field<QWidget>(field)->hasFocus(); });
        m_robot.Key(QStringLiteral("ctrl+a"));
        m_robot.Type(text);
        m_robot.WaitFor(text, [=] { return TextOf(field) == text; });
    }
    void ChooseNext(const char* box)
    {
        const int before = m_robot.See([=] { return Field<QComboBox>(box)->currentIndex(); });
        Press(box);
        m_robot.WaitFor(QStringLiteral("the list"), [=] { return Field<QComboBox>(box)->view()->isVisible(); });
        m_robot.Key(QStringLiteral("Down"));
        m_robot.Key(QStringLiteral("Return"));
        m_robot.WaitFor(QStringLiteral("the entry"),
                        [=] { return Field<QComboBox>(box)->currentIndex() == before + 1; });
    }
    void MoveDialogAside()
    {
        m_robot.WaitFor(QStringLiteral("the title of the dialog"), [] {
            return Dialog()->isActiveWindow() && Dialog()->windowHandle()->frameMargins().top() > 0;
        });
        const QRect frame = m_robot.See([] { return FrameOf(Dialog()); });
        const QPoint title(frame.center().x(), frame.top() + 8);
        const int right = WindowPlace.right() - frame.width() - 10;
        const int bottom = WindowPlace.bottom() - frame.height() - 10;
        m_robot.Drag(title, title + QPoint(right - frame.left(), bottom - frame.top()));
        m_robot.WaitFor(QStringLiteral("the dialog aside"), [=] { return FrameOf(Dialog()).left() > right - 20; });
    }
    void Answer(QMessageBox::StandardButton button)
    {
        m_robot.WaitFor(QStringLiteral("the question"), [] { return Question() != nullptr; });
        m_robot.Click(m_robot.See([=] { return CenterOf(Question()->button(button)); }));
        m_robot.WaitFor(QStringLiteral("the end of the question"), [] { return Question() == nullptr; });
    }
    // The browser of group addresses.
    static TDatapointBrowser* Browser() { return Window()->findChild<TDatapointBrowser*>(); }
    QPoint PlaceInBrowser(const QString& address)
    {
        return m_robot.See([=] {
            QTreeView* view = Browser()->View();
            const QModelIndexList found = view->model()->match(view->model()->index(0, 0), Qt::DisplayRole, address, 1,
                                                               Qt::MatchExactly | Qt::MatchRecursive);
            if (found.isEmpty())
                throw std::runtime_error("no address " + address.toStdString());
            return view->viewport()->mapToGlobal(view->visualRect(found.first()).center());
        });
    }
    void ChooseFromBrowser(const QString& entry)
    {
        m_robot.Click(m_robot.See([] { return CenterOf(Browser()->View()->viewport()); }), 3);
        Choose(entry);
    }
    void TakePicture(const QString& name)
    {
        m_robot.TakePicture(name, m_robot.See([] { return FrameOf(Window()); }));
    }

private:
    static QMenu* PopupMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    static QTreeWidgetItem* Child(const QTreeWidgetItem* above, const QString& caption)
    {
        for (int i = 0; i < above->childCount(); ++i) {
            if (above->child(i)->text(0) == caption)
                return above->child(i);
        }
        return nullptr;
    }
    static QStringList Path(const QString& parent, const QString& caption)
    {
        return parent.isEmpty() ? QStringList{caption} : QStringList{parent, caption};
    }
    static QPoint PlaceOfTab(const QString& title)
    {
        const QList<QTabBar*> bars = Window()->findChildren<QTabBar*>();
        for (const QTabBar* bar : bars) {
            for (int i = 0; i < bar->count(); ++i) {
                if (bar->isVisible() && bar->tabText(i) == title)
                    return bar->mapToGlobal(bar->tabRect(i).center());
            }
        }
        throw std::runtime_error("no tab " + title.toStdString());
    }
    // The widget itself remembers its frame from before the window manager made one.
    static QRect FrameOf(const QWidget* widget) { return widget->windowHandle()->frameGeometry(); }
    static QPoint CenterOf(const QWidget* widget) { return widget->mapToGlobal(widget->rect().center()); }

    static inline TEditor m_editor = SceneEditor; // belongs to the thread of the user interface

    TRobot& m_robot;
};

using TUser = TWorkbenchUser;

// A copy of the sample project, with a product home beside it.
class SceneJourney : public testing::Test
{
protected:
    SceneJourney()
    {
        // Every journey begins with the window as it is on the first day.
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_settings.path());
        const auto examples = QStringLiteral(VELMORA_EXAMPLES);
        for (const char16_t* part : {u"/musterhaus", u"/home"})
            CopyDirectory(examples + QString::fromUtf16(part), m_directory.path() + QString::fromUtf16(part));
        const QByteArray home = QFile::encodeName(m_directory.filePath(QStringLiteral("home")));
        qputenv("NORHOME", home);
        qputenv("KOLT_HOME", home);
        qputenv("VELMORA_PACKAGE", VELMORA_PACKAGE_FILE);
    }

    QString Project() const { return m_directory.filePath(QStringLiteral("musterhaus")); }
    TContents Files() const { return ContentsOf(m_directory.path()); }

    QTemporaryDir m_directory;
    QTemporaryDir m_settings;
    TOpenedUrls m_browser;
};

inline const auto ScenesFolder = QStringLiteral("musterhaus/_config/data/scenes/");

// Puts a line before the last one of a document, which closes its root.
inline void AddLine(TContents& files, const char* file, const QByteArray& line)
{
    QByteArray& document = files[ScenesFolder + QString::fromLatin1(file)];
    document.insert(document.lastIndexOf("</"), line + "\r\n");
}

inline void Replace(TContents& files, const char* file, const char* before, const char* after)
{
    QByteArray& document = files[ScenesFolder + QString::fromLatin1(file)];
    EXPECT_EQ(document.count(before), 1) << before;
    document.replace(before, after);
}

inline void Compare(const TContents& files, const TContents& expected)
{
    EXPECT_EQ(files.keys(), expected.keys());
    for (auto file = expected.begin(); file != expected.end(); ++file)
        EXPECT_EQ(files.value(file.key()), file.value()) << file.key().toStdString();
}
