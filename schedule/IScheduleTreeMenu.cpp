#include "IScheduleTree.h"

#include "Vlapputils.h"

#include <array>

namespace
{

constexpr int HighestAccess = 20;

} // namespace

std::span<const TPopupRow<TScheduleTreeFrame>> TScheduleTreeFrame::PopupRows()
{
    static constexpr std::array<TPopupRow<TScheduleTreeFrame>, 15> Rows{{
        {.Name = "MenuAction_AttributesExecute",
         .Caption = _RSTR_PROPERTIES,
         .Execute = &TScheduleTreeFrame::MenuAction_AttributesExecute,
         .Enabled = &TScheduleTreeFrame::CanShowProperties,
         .Visible = &TScheduleTreeFrame::IsOnNoGroup},
        {.Name = "SetGroupAccess",
         .Caption = _RSTR_ACCESSLEV,
         .Enabled = &TScheduleTreeFrame::IsOnGroup,
         .Visible = &TScheduleTreeFrame::IsOnGroup,
         .LastNumber = HighestAccess,
         .ChooseNumber = &TScheduleTreeFrame::SetGroupAccess,
         .ChosenNumber = &TScheduleTreeFrame::ShownAccess},
        {},
        {.Name = "MenuAction_CreateGroupExecute",
         .Caption = _RSTR_NEW_GROUP,
         .Execute = &TScheduleTreeFrame::MenuAction_CreateGroupExecute,
         .Enabled = &TScheduleTreeFrame::CanCreateGroup},
        {.Name = "MenuAction_CreateNodeExecute",
         .Caption = _RSTR_NEW_NODE,
         .Execute = &TScheduleTreeFrame::MenuAction_CreateNodeExecute,
         .Enabled = &TScheduleTreeFrame::CanCreateNode},
        {.Name = "MenuAction_CreateScheduleExecute",
         .Caption = _RSTR_NEW_ACTION,
         .Execute = &TScheduleTreeFrame::MenuAction_CreateScheduleExecute,
         .Enabled = &TScheduleTreeFrame::CanCreateSchedule},
        {},
        {.Name = "MenuAction_CutExecute",
         .Caption = _RSTR_CUT,
         .Shortcut = "Ctrl+X",
         .Execute = &TScheduleTreeFrame::MenuAction_CutExecute,
         .Enabled = &TScheduleTreeFrame::CanCut},
        {.Name = "MenuAction_CopyExecute",
         .Caption = _RSTR_COPY,
         .Shortcut = "Ctrl+C",
         .Execute = &TScheduleTreeFrame::MenuAction_CopyExecute,
         .Enabled = &TScheduleTreeFrame::CanCopy},
        {.Name = "MenuAction_PasteBeforeExecute",
         .Caption = _RSTR_INSERT,
         .Shortcut = "Ctrl+V",
         .Execute = &TScheduleTreeFrame::MenuAction_PasteBeforeExecute,
         .Enabled = &TScheduleTreeFrame::CanPaste},
        {.Name = "MenuAction_DeleteExecute",
         .Caption = _RSTR_DELETE,
         .Shortcut = "Del",
         .Execute = &TScheduleTreeFrame::MenuAction_DeleteExecute,
         .Enabled = &TScheduleTreeFrame::CanDelete},
        {.Name = "MenuAction_RenameExecute",
         .Caption = _RSTR_RENAME,
         .Execute = &TScheduleTreeFrame::MenuAction_RenameExecute,
         .Enabled = &TScheduleTreeFrame::CanRename},
        {},
        {.Name = "MenuAction_Reload",
         .Caption = _RSTR_RELOAD,
         .Execute = &TScheduleTreeFrame::MenuAction_Reload,
         .Enabled = &TScheduleTreeFrame::CanReload},
        {.Name = "MenuAction_Export",
         .Caption = _RSTR_EXPORT,
         .Execute = &TScheduleTreeFrame::MenuAction_Export,
         .Enabled = &TScheduleTreeFrame::CanExport},
    }};
    return Rows;
}

bool TScheduleTreeFrame::IsFixed(const TTreeNode* node) const
{
    return node->Level() == slRoot;
}

// A place beside all nodes counts as the root.
bool TScheduleTreeFrame::IsOnRoot() const
{
    const TScheduleNode* node = MenuScheduleNode();
    return !node || node->Level() == slRoot;
}

bool TScheduleTreeFrame::IsOnGroup() const
{
    const TScheduleNode* node = MenuScheduleNode();
    return node && node->IsGroup();
}

bool TScheduleTreeFrame::CanShowProperties() const
{
    return !IsOnRoot() && MenuNode()->Level() > slGroup && !IsDialogConnected() && selectedItems().size() == 1;
}

bool TScheduleTreeFrame::CanCreateGroup() const
{
    return IsOnRoot() || IsOnGroup();
}

bool TScheduleTreeFrame::CanCreateNode() const
{
    return IsMenuValid() && IsOnGroup();
}

bool TScheduleTreeFrame::CanCreateSchedule() const
{
    return IsMenuValid() && SelectedNode()->Level() >= slDatapoint;
}

bool TScheduleTreeFrame::CanCut() const
{
    return IsMenuValid() && MenuNode()->Level() >= slDatapoint;
}

bool TScheduleTreeFrame::CanCopy() const
{
    return IsMenuValid() && (SelectedNode()->Parent() != Root() || selectedItems().size() == 1);
}

bool TScheduleTreeFrame::CanPaste() const
{
    return IsMenuValid() && !Clipboard().IsEmpty() && SelectedNode()->Parent() != Root();
}

bool TScheduleTreeFrame::CanDelete() const
{
    return IsMenuValid() && !Root()->isSelected();
}

bool TScheduleTreeFrame::CanRename() const
{
    return IsMenuValid() && IsOnGroup();
}

bool TScheduleTreeFrame::CanReload() const
{
    return FileExists(m_documentPath);
}

bool TScheduleTreeFrame::CanExport() const
{
    return !m_documentPath.isEmpty();
}

std::optional<int> TScheduleTreeFrame::ShownAccess() const
{
    return IsOnGroup() ? std::optional<int>(MenuScheduleNode()->GroupAccess()) : std::nullopt;
}

TScheduleNode* TScheduleTreeFrame::SelectedGroup() const
{
    TScheduleNode* selected = SelectedScheduleNode();
    return selected && selected->IsGroup() ? selected : nullptr;
}

void TScheduleTreeFrame::SetGroupAccess(int access)
{
    TScheduleNode* group = SelectedGroup();
    if (!group || access < 0 || access > HighestAccess)
        return;
    ChangeRecord(group, [&] {
        const bool differs = group->GroupAccess() != access;
        group->SetGroupAccess(access);
        return differs;
    });
    ApplyMenuRules();
}
