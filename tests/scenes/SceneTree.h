#pragma once

#include "IScenesTree.h"
#include "TestSupport.h"
#include "dlgSceneProps.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

class QLineEdit;

// A shown frame with the small house of TSceneFiles loaded from an open project, and what a user does with it. Nodes
// are named by their aliases, roots and the top node by their captions:
//
//   Szenen
//     Trigger-Elemente      Taster Flur, Zeitschalter
//     Aktions-Elemente      Licht Flur, Heizung
//     Abendlicht            Licht an, Warm             bound to Taster Flur; Licht Flur, Heizung
//     Nachts                Licht aus                  bound to Zeitschalter; Licht Flur
class TSceneTree : public testing::Test
{
protected:
    TSceneTree();
    ~TSceneTree() override;

    // A shown frame with the house of the project loaded.
    static std::unique_ptr<TConfigTreeFrame> MakeFrame();

    TConfigTreeFrame& Frame() const { return *m_frame; }
    TSceneNode* Top() const { return m_frame->Top(); }
    TSceneNode* Node(const char* alias) const { return NodeOf(*m_frame, alias); }
    static TSceneNode* NodeOf(const TConfigTreeFrame& frame, const char* alias);
    // The last scene.
    TSceneNode* LastScene() const { return Top()->Child(Top()->Count() - 1); }

    // Captions of the children, joined by "|".
    std::string Below(const TSceneNode* node) const;
    std::string Below(const char* alias) const { return Below(Node(alias)); }
    // Aliases of the selected nodes in their order, joined by "|".
    std::string Selected() const;
    // The alias of the node's link, or "none".
    static std::string LinkOf(const TSceneNode* node);
    std::string LinkOf(const char* alias) const { return LinkOf(Node(alias)); }
    static std::string Record(const TSceneNode* node);
    std::string Record(const char* alias) const { return Record(Node(alias)); }
    std::string Outline() const;

    void Click(const char* alias, Qt::KeyboardModifiers keys = Qt::NoModifier) const;
    // By real clicks, from the second on with Ctrl. Nothing selected for an empty list.
    void Select(const std::vector<const char*>& aliases) const;
    // Edits a node in place, in the editor that the view opens for it.
    void Rename(const char* alias, const char* text) const;
    QLineEdit* OpenEditor(const char* alias) const;

    QAction* Action(const char* name) const;
    void Run(const char* name) const { Action(name)->trigger(); }

    // The popup menu by the mouse over a node; over no node for null.
    void OpenMenu(const char* alias) const;
    void CloseMenu() const;
    QMenu* Menu() const;
    // Captions of the enabled entries in their order, joined by ", ".
    std::string EnabledEntries() const;

    // The properties dialog, as the frame that made it owns it.
    TScenePropsDialog* Dialog() const { return DialogOf(*m_frame); }
    static TScenePropsDialog* DialogOf(const TConfigTreeFrame& frame);
    void ShowProperties(const char* alias) const;
    template <class TField> TField* Field(const char* name) const
    {
        auto* field = Dialog()->template findChild<TField*>(QLatin1StringView(name));
        EXPECT_NE(field, nullptr) << name;
        return field;
    }
    // Replaces an edit field's text by typing.
    void Type(const char* field, const char* text) const;
    std::string TextOf(const char* field) const;
    void Press(const char* button) const;
    // Chooses an entry of a drop-down list as the user does.
    void Choose(const char* box, int index) const;

    // The files of the project after an export.
    QByteArray Exported(const char* file) const { return ReadAll(m_project.Scenes(QString::fromLatin1(file))); }

    TTemporaryProject m_project;
    TRecordedMessages m_messages;
    std::unique_ptr<TConfigTreeFrame> m_frame;
};
