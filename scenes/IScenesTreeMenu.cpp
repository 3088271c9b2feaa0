#include "IScenesTree.h"

#include "Vlapputils.h"

#include <array>

std::span<const TPopupRow<TConfigTreeFrame>> TConfigTreeFrame::PopupRows()
{
    static constexpr std::array<TPopupRow<TConfigTreeFrame>, 13> Rows{{
        {.Name = "MenuAction_AttributesExecute",
         .Caption = _RSTR_PROPERTIES,
         .Execute = &TConfigTreeFrame::MenuAction_AttributesExecute,
         .Enabled = &TConfigTreeFrame::CanShowProperties},
        {},
        {.Name = "MenuAction_AutoAppend",
         .Caption = _RSTR_AUTO_CREATE,
         .Execute = &TConfigTreeFrame::MenuAction_AutoAppend,
         .Enabled = &TConfigTreeFrame::CanAutoAppend},
        {.Name = "MenuAction_CreateSceneExecute",
         .Caption = _RSTR_NEW_SCENE,
         .Execute = &TConfigTreeFrame::MenuAction_CreateSceneExecute},
        {.Name = "MenuAction_CreateBeforeExecute",
         .Caption = _RSTR_NEW_ACTION,
         .Execute = &TConfigTreeFrame::MenuAction_CreateBeforeExecute,
         .Enabled = &TConfigTreeFrame::CanCreateAction},
        {},
        {.Name = "MenuAction_CopyExecute",
         .Caption = _RSTR_COPY,
         .Shortcut = "Ctrl+C",
         .Execute = &TConfigTreeFrame::MenuAction_CopyExecute,
         .Enabled = &TConfigTreeFrame::CanCopy},
        {.Name = "MenuAction_PasteBeforeExecute",
         .Caption = _RSTR_INSERT,
         .Shortcut = "Ctrl+V",
         .Execute = &TConfigTreeFrame::MenuAction_PasteBeforeExecute,
         .Enabled = &TConfigTreeFrame::CanPaste},
        {.Name = "MenuAction_CutExecute",
         .Caption = _RSTR_CUT,
         .Execute = &TConfigTreeFrame::MenuAction_CutExecute,
         .Enabled = &TConfigTreeFrame::CanCut},
        {.Name = "MenuAction_DeleteExecute",
         .Caption = _RSTR_DELETE,
         .Shortcut = "Del",
         .Execute = &TConfigTreeFrame::MenuAction_DeleteExecute,
         .Enabled = &TConfigTreeFrame::CanDelete},
        {},
        {.Name = "MenuAction_Reload",
         .Caption = _RSTR_RELOAD,
         .Execute = &TConfigTreeFrame::MenuAction_Reload,
         .Enabled = &TConfigTreeFrame::CanReload},
        {.Name = "MenuAction_Export",
         .Caption = _RSTR_EXPORT,
         .Execute = &TConfigTreeFrame::MenuAction_Export,
         .Enabled = &TConfigTreeFrame::CanExport},
    }};
    return Rows;
}

QList<TSceneNode*> TConfigTreeFrame::SelectedSceneNodes() const
{
    const QList<TTreeNode*> selected = SelectedNodes();
    QList<TSceneNode*> nodes;
    nodes.reserve(selected.size());
    for (TTreeNode* node : selected)
        nodes.append(static_cast<TSceneNode*>(node));
    return nodes;
}

bool TConfigTreeFrame::IsFixed(const TTreeNode* node) const
{
    return static_cast<const TSceneNode*>(node)->IsFixed();
}

bool TConfigTreeFrame::CanShowProperties() const
{
    const TSceneNode* node = MenuSceneNode();
    return node && !node->IsFixed() && !IsDialogShown() && selectedItems().size() == 1;
}

bool TConfigTreeFrame::CanAutoAppend() const
{
    const TSceneNode* node = MenuSceneNode();
    return node && (node->Role() == srTriggerRoot || node->Role() == srActionRoot);
}

bool TConfigTreeFrame::CanCreateAction() const
{
    const TTreeNode* selected = SelectedNode();
    return selected && selected->Level() == 1;
}

bool TConfigTreeFrame::CanCopy() const
{
    return IsMenuValid() && !(SelectedSceneNode()->Role() == srTrigger && selectedItems().size() > 1);
}

bool TConfigTreeFrame::CanPaste() const
{
    return IsMenuValid() && !Clipboard().IsEmpty() && !SelectedSceneNode()->IsDatapoint();
}

bool TConfigTreeFrame::CanCut() const
{
    return IsMenuValid() && MenuSceneNode()->Role() == srStep && MenuSceneNode()->Level() == 2;
}

bool TConfigTreeFrame::CanDelete() const
{
    return IsMenuValid() && !(TriggerRoot()->isSelected() || ActionRoot()->isSelected());
}

bool TConfigTreeFrame::CanReload() const
{
    return FileExists(m_scenesFile);
}

bool TConfigTreeFrame::CanExport() const
{
    return !m_scenesFile.isEmpty();
}
