#pragma once

#include "IMenuTree.h"
#include "TestSupport.h"
#include "dlgLinkProps.h"
#include "dlgLogo.h"
#include "dlgMenuProps.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>
#include <string>

class QAction;
class QLineEdit;
class QMenu;

// What a fresh TMenuTree shows, by its Outline().
inline constexpr auto WholeOutline = "Menu\n  Start\n    Wetter\n    Uhr\n  Licht\n    Flur\n  Alarme\n"
                                     "Sensitive Links\n  Außen\n  Tür\n  vTag";

// A shown frame with a small menu and its sensitive links loaded from an open project, and what a user does with them.
// Nodes are named by their captions:
//
//   Menu
//     Start          Wetter, Uhr
//     Licht          Flur
//     Alarme
//   Sensitive Links
//     Außen, Tür, vTag
//
// The product's home is a directory with templates of its own, so that the HTML is known: the captions, each with a
// semicolon behind it. The project has a folder for its menu, and no stylesheet in it.
class TMenuTree : public testing::Test
{
protected:
    TMenuTree();
    ~TMenuTree() override;

    // A shown frame with the menu of the project loaded.
    static std::unique_ptr<TMenuTreeFrame> MakeFrame();
    static void Execute(TMenuTreeFrame& frame, const QByteArray& command);
    // The documents as they stand in the project before a test changes them.
    static QByteArray MenuDocument();
    static QByteArray LinksDocument();
    // Puts captions into HTML; the heading stands before them.
    static QByteArray Stylesheet(const QByteArray& heading = {});
    // Of the product's home, in the platform's form.
    QString HomePath(const char* name) const;

    TMenuNode* Menu() const { return m_frame->MenuRoot(); }
    TMenuNode* Links() const { return m_frame->LinkRoot(); }
    TMenuNode* Node(const char* name) const { return NodeOf(*m_frame, name); }
    static TMenuNode* NodeOf(const TMenuTreeFrame& frame, const char* name);
    TVlMenuItem& Item(const char* name) const { return *Node(name)->Item(); }

    static std::string NameOf(const TTreeNode* node) { return node->Caption().toStdString(); }
    // Names of the children, joined by "|".
    static std::string Below(const TMenuNode* node);
    std::string Below(const char* name) const { return Below(Node(name)); }
    // The name of the selected node; empty without one.
    std::string Selected() const;
    // All fields of a record.
    static std::string Record(const TMenuNode* node);
    std::string Record(const char* name) const { return Record(Node(name)); }
    // The names of all nodes, one a line, indented by their level.
    static std::string OutlineOf(const TMenuTreeFrame& frame);
    std::string Outline() const { return OutlineOf(*m_frame); }

    // By a real click; nothing selected for null.
    void Select(const char* name) const;
    QLineEdit* OpenEditor(const char* name) const;
    // Edits a node in place, in the editor that the view opens for it.
    void Rename(const char* name, const char* text) const;

    QAction* Action(const char* name) const;
    void Run(const char* name) const { Action(name)->trigger(); }
    // Runs an operation with this node selected.
    void RunOn(const char* node, const char* name) const;
    void CutNode(const char* name) const { RunOn(name, "MenuAction_CutExecute"); }
    void PasteOn(const char* name) const { RunOn(name, "MenuAction_PasteBeforeExecute"); }
    void Export() const { Run("MenuAction_Export"); }
    void Reload() const { Run("MenuAction_Reload"); }

    // The popup menu by the mouse over a node; over no node for null.
    void OpenMenu(const char* name) const;
    void CloseMenu() const;
    QMenu* Popup() const;
    // Captions of the entries in their order, joined by ", ".
    std::string EnabledEntries() const;
    std::string VisibleEntries() const;

    // The dialog that is on screen, and each kind by itself, shown or not; null where there is none.
    static TPropsDialog* Dialog();
    static TMenuPropsDialog* MenuDialog();
    static TLinkPropsDialog* LinkDialog();
    void ShowProperties(const char* name) const { RunOn(name, "MenuAction_AttributesExecute"); }
    // What the dialogs show: name, title, link, help and access, or object, URL, name, value, source, type and access.
    static std::string ShownItem();
    static std::string ShownLink();
    // Of the dialog on screen.
    template <class TField> static TField* Field(const char* name)
    {
        TField* field = Dialog() ? Dialog()->template findChild<TField*>(QLatin1StringView(name)) : nullptr;
        EXPECT_NE(field, nullptr) << name;
        return field;
    }
    // Replaces an edit field's text by typing.
    static void Type(const char* field, const char* text) { TypeInto(Field<QLineEdit>(field), text); }
    static void TypeInto(QLineEdit* edit, const char* text);
    static void TypeAccess(const char* level);
    static void Press(const char* button);
    // Chooses an entry of a drop-down list as the user does.
    static void Choose(const char* box, int index);

    // The documents as they stand in the project now.
    QByteArray WrittenMenu() const { return m_project.Read(QStringLiteral("_menu/menu.xml")); }
    QByteArray WrittenLinks() const { return m_project.Read(QStringLiteral("_menu/dplinks.xml")); }
    QByteArray Html() const { return m_project.Read(QStringLiteral("_menu/menu.html")); }
    void WriteMenu(const QByteArray& content) const { m_project.Write(QStringLiteral("_menu/menu.xml"), content); }
    void WriteLinks(const QByteArray& content) const { m_project.Write(QStringLiteral("_menu/dplinks.xml"), content); }
    // The names in the project's menu folder, joined by "|".
    std::string MenuFiles() const;
    // A path of the open project as the package writes it.
    std::string PackagePath(const char* relative) const;

    TTemporaryProject m_project;
    QTemporaryDir m_home;
    TRecordedMessages m_messages;
    std::unique_ptr<TMenuTreeFrame> m_frame;
};
