#pragma once

#include "FoldersCommon.h"
#include "Vltreenode.h"

#include <QString>

#include <cstdint>
#include <memory>

// What a menu item was made as. Documents do not tell: what is read is an ordinary item or a link.
enum TMenuKind : std::int32_t
{
    mkItem,
    mkAlarm,
    mkConfig,
    mkLogout,
    mkLink,
};

// The record of one menu item or one sensitive link; belongs to its node. A link uses the fields for what stands in
// brackets.
struct TVlMenuItem
{
    QString Caption = {};    // the node's text [the display name]
    QString Title = {};      // the tool tip [the datapoint's address or identifier]
    QString Link = {};       // the target, a URL or a page [the value]
    QString Help = {};       // the page with help [the target]
    std::int32_t Access = 0; // access level, handed on
    TMenuKind Kind = mkItem;
    TDataTypeMap DataType = dtmEIS1; // links only
    TNodeSource Source = nsEIB;      // links only

    bool operator==(const TVlMenuItem& other) const = default;
};

// The images of the menu tree.
enum TMenuImage : int
{
    miMainItem,
    miSubItem, // and links
    miRoot,
};

// A node of the menu tree. The two roots, the menu and the sensitive links, carry no record.
class TMenuNode final : public TTreeNode
{
public:
    // A node without a record.
    TMenuNode(const QString& caption, int imageIndex) : TTreeNode(caption, imageIndex) {}
    // A node with a record, captioned by it.
    TMenuNode(TVlMenuItem item, int imageIndex)
        : TTreeNode(item.Caption, imageIndex), m_item(std::make_unique<TVlMenuItem>(std::move(item)))
    {
    }

    TVlMenuItem* Item() { return m_item.get(); }
    const TVlMenuItem* Item() const { return m_item.get(); }

    TMenuNode* Parent() const { return static_cast<TMenuNode*>(TTreeNode::Parent()); }
    TMenuNode* Child(int index) const { return static_cast<TMenuNode*>(TTreeNode::Child(index)); }

private:
    std::unique_ptr<TVlMenuItem> m_item;
};

// The roots, detached.
std::unique_ptr<TMenuNode> MakeMenuRoot();
std::unique_ptr<TMenuNode> MakeLinkRoot();
