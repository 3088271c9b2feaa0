#include "IMenuTree.h"

#include <array>

std::span<const TPopupRow<TMenuTreeFrame>> TMenuTreeFrame::PopupRows()
{
    using TFrame = TMenuTreeFrame;
    static constexpr std::array<TPopupRow<TFrame>, 22> Rows{{
        {.Name = "MenuAction_AttributesExecute",
         .Caption = _RSTR_PROPERTIES,
         .Execute = &TFrame::MenuAction_AttributesExecute,
         .Enabled = &TFrame::CanShowProperties,
         .Visible = &TFrame::IsOverSomething},
        {},
        {.Name = "MenuAction_CreateLink",
         .Caption = _RSTR_CREATE_LINK,
         .Execute = &TFrame::MenuAction_CreateLink,
         .Enabled = &TFrame::IsOverLinks,
         .Visible = &TFrame::IsOverLinks},
        {},
        {.Name = "MenuAction_CreateBeforeExecute",
         .Caption = _RSTR_MENU_BEFORE,
         .Execute = &TFrame::MenuAction_CreateBeforeExecute,
         .Enabled = &TFrame::HasSelection,
         .Visible = &TFrame::IsOverMenu},
        {.Name = "MenuAction_CreateAfterExecute",
         .Caption = _RSTR_MENU_AFTER,
         .Execute = &TFrame::MenuAction_CreateAfterExecute,
         .Enabled = &TFrame::HasSelection,
         .Visible = &TFrame::IsOverMenu},
        {.Name = "MenuAction_SubmenuExecute",
         .Caption = _RSTR_MENU_SUB,
         .Execute = &TFrame::MenuAction_SubmenuExecute,
         .Enabled = &TFrame::CanCreateSubmenu,
         .Visible = &TFrame::IsOverMenu},
        {},
        {.Name = "MenuAction_InsertSpecExecute_1",
         .Caption = _RSTR_INSERT_ALARM,
         .Execute = &TFrame::InsertSpecial<mkAlarm>,
         .Enabled = &TFrame::CanInsertSpecial<mkAlarm>,
         .Visible = &TFrame::IsOverMenu},
        {.Name = "MenuAction_InsertSpecExecute_2",
         .Caption = _RSTR_INSERT_CONFIG,
         .Execute = &TFrame::InsertSpecial<mkConfig>,
         .Enabled = &TFrame::CanInsertSpecial<mkConfig>,
         .Visible = &TFrame::IsOverMenu},
        {.Name = "MenuAction_InsertSpecExecute_3",
         .Caption = _RSTR_INSERT_EXIT,
         .Execute = &TFrame::InsertSpecial<mkLogout>,
         .Enabled = &TFrame::CanInsertSpecial<mkLogout>,
         .Visible = &TFrame::IsOverMenu},
        {},
        {.Name = "MenuAction_PasteBeforeExecute",
         .Caption = _RSTR_INSERT,
         .Execute = &TFrame::MenuAction_PasteBeforeExecute,
         .Enabled = &TFrame::CanPaste,
         .Visible = &TFrame::IsOverMenu},
        {.Name = "MenuAction_RenameExecute",
         .Caption = _RSTR_RENAME,
         .Execute = &TFrame::MenuAction_RenameExecute,
         .Enabled = &TFrame::HasSelection,
         .Visible = &TFrame::IsOverMenu},
        {.Name = "MenuAction_CutExecute",
         .Caption = _RSTR_CUT,
         .Execute = &TFrame::MenuAction_CutExecute,
         .Enabled = &TFrame::HasSelection,
         .Visible = &TFrame::IsOverMenu},
        {},
        {.Name = "MenuAction_DeleteExecute",
         .Caption = _RSTR_DELETE,
         .Execute = &TFrame::MenuAction_DeleteExecute,
         .Enabled = &TFrame::CanDelete,
         .Visible = &TFrame::IsOverSomething},
        {},
        {.Name = "MenuAction_Reload",
         .Caption = _RSTR_RELOAD,
         .Execute = &TFrame::MenuAction_Reload,
         .Enabled = &TFrame::CanReload},
        {.Name = "MenuAction_Export", .Caption = _RSTR_EXPORT, .Execute = &TFrame::MenuAction_Export},
        {},
        {.Name = "MenuAction_LogoClick", .Caption = _RSTR_LOGOPATH, .Execute = &TFrame::MenuAction_LogoClick},
    }};
    return Rows;
}

bool TMenuTreeFrame::IsFixed(const TTreeNode* node) const
{
    return node == MenuRoot() || node == LinkRoot();
}

TMenuTreeFrame::TMenuGroup TMenuTreeFrame::Group() const
{
    const TTreeNode* node = MenuNode();
    if (!node)
        return mgNothing;
    return node == LinkRoot() || IsLink(node) ? mgLinks : mgMenu;
}

bool TMenuTreeFrame::CanShowProperties() const
{
    if (IsOverLinks())
        return !IsLinkDialogShown() && MenuNode() != LinkRoot();
    return IsOverMenu() && !IsMenuDialogShown() && SelectedNode() != MenuRoot();
}

bool TMenuTreeFrame::CanCreateSubmenu() const
{
    return HasSelection() && MenuRoot() && SelectedNode()->Parent() == MenuRoot();
}

bool TMenuTreeFrame::CanPaste() const
{
    const TTreeNode* cut = Clipboard().CutNode();
    return HasSelection() && cut && cut->Level() == SelectedNode()->Level();
}

bool TMenuTreeFrame::CanDelete() const
{
    if (IsOverLinks())
        return HasSelection() && MenuNode() != LinkRoot();
    return HasSelection() && SelectedNode() != MenuRoot();
}

bool TMenuTreeFrame::CanReload() const
{
    return !m_menuPath.isEmpty();
}

const QString& TMenuTreeFrame::SpecialLink(TMenuKind kind) const
{
    if (kind == mkAlarm)
        return m_alarmLink;
    return kind == mkConfig ? m_configLink : m_logoutLink;
}
