#pragma once

#include "IScheduleTree.h"
#include "TestSupport.h"
#include "dlgScheduleProps.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

class QAction;
class QLineEdit;
class QMenu;

// A shown frame with a small schedule loaded from an open project, and what a user does with it. Nodes are named by
// their captions, switching entries by their times:
//
//   Wochenschaltplan
//     Licht          access 3      Flur (07:05, 19:30), Küche (06:00)
//     Heizung        access 5      Bad (05:15)
//     Rollladen      access 20     Süd (08:45), West
//     Urlaub         access 0
class TScheduleTree : public testing::Test
{
protected:
    TScheduleTree();
    ~TScheduleTree() override;

    // A shown frame with the schedule of the project loaded.
    static std::unique_ptr<TScheduleTreeFrame> MakeFrame();
    static void Execute(TScheduleTreeFrame& frame, const QByteArray& command);
    // The document as it stands in the project before a test changes it.
    static QByteArray Document();
    static std::string EntryText(const char* time, const char* days = "0000000", const char* value = "0",
                                 int enabled = 0, int postProcess = 0);

    TScheduleTreeFrame& Frame() const { return *m_frame; }
    TScheduleNode* Root() const { return m_frame->Root(); }
    TScheduleNode* Node(const char* name) const { return NodeOf(*m_frame, name); }
    static TScheduleNode* NodeOf(const TScheduleTreeFrame& frame, const char* name);
    TScheduleNode* LastGroup() const { return Root()->Child(Root()->Count() - 1); }
    // The node of the only selection.
    TScheduleNode* SelectedNode() const { return static_cast<TScheduleNode*>(m_frame->SelectedNode()); }

    static std::string NameOf(const TTreeNode* node);
    static std::string TextOf(const TTreeNode* node) { return node->Caption().toStdString(); }
    // Names of the children, joined by "|".
    static std::string Below(const TScheduleNode* node);
    std::string Below(const char* name) const { return Below(Node(name)); }
    // Names of the selected nodes in their order, joined by "|".
    std::string Selected() const;
    static std::string Record(const TScheduleNode* node);
    std::string Record(const char* name) const { return Record(Node(name)); }
    // The names of all nodes, one a line, indented by their level.
    static std::string OutlineOf(const TScheduleTreeFrame& frame);
    std::string Outline() const { return OutlineOf(*m_frame); }
    std::string GroupNames() const { return m_frame->GetGroupNames().join(u'|').toStdString(); }

    void Click(const char* name, Qt::KeyboardModifiers keys = Qt::NoModifier) const;
    // By real clicks, from the second on with Ctrl. Nothing selected for an empty list.
    void Select(const std::vector<const char*>& names) const;
    // Edits a node in place, in the editor that the view opens for it.
    void Rename(const char* name, const char* text) const;
    QLineEdit* OpenEditor(const char* name) const;

    QAction* Action(const char* name) const;
    void Run(const char* name) const { Action(name)->trigger(); }
    // A key on the tree.
    void PressKey(Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier) const;
    void PressCopy() const { PressKey(Qt::Key_C, Qt::ControlModifier); }
    void PressCut() const { PressKey(Qt::Key_X, Qt::ControlModifier); }
    void PressPaste() const { PressKey(Qt::Key_V, Qt::ControlModifier); }
    void CopyNodes(const std::vector<const char*>& names) const;
    void CutNode(const char* name) const;
    // By its short cut, which pastes wherever the operation can.
    void PasteOn(const char* name) const;

    // The popup menu by the mouse over a node; over no node for null.
    void OpenMenu(const char* name) const;
    void CloseMenu() const;
    QMenu* Menu() const;
    // Captions of the entries in their order, joined by ", ".
    std::string EnabledEntries() const;
    std::string VisibleEntries() const;
    // The access levels with a check mark, joined by ", ".
    std::string CheckedAccess() const;

    // The properties dialog, as the frame that made it owns it.
    TSchedulePropsDialog* Dialog() const { return DialogOf(*m_frame); }
    static TSchedulePropsDialog* DialogOf(const TScheduleTreeFrame& frame);
    void ShowProperties(const char* name) const;
    // What the node page shows: section, name, alias, bounds, type, source, access, enabled flag.
    std::string ShownDatapoint() const;
    template <class TField> TField* Field(const char* name) const
    {
        auto* field = Dialog()->template findChild<TField*>(QLatin1StringView(name));
        EXPECT_NE(field, nullptr) << name;
        return field;
    }
    // Replaces an edit field's text by typing.
    void Type(const char* field, const char* text) const;
    std::string FieldText(const char* field) const;
    void Press(const char* button) const;
    // Clicks a check box.
    void Toggle(const char* box) const;
    // Chooses an entry of a drop-down list as the user does.
    void Choose(const char* box, int index) const;
    std::string Sections() const;

    // The document after an export.
    QByteArray Exported() const;

    TTemporaryProject m_project;
    TRecordedMessages m_messages;
    std::unique_ptr<TScheduleTreeFrame> m_frame;
};
