#pragma once

#include "FoldersCommon.h"
#include "Vltreenode.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>

class TSceneNode;

// The record of one datapoint, scene or step; belongs to its node.
struct TVlSceneItem
{
    std::int32_t Id = -1;        // scene number; -1 for everything that is no scene
    TNodeRefTo<TSceneNode> Link; // scene: its trigger; step: its action; datapoint: none
    QString Name;                // address or identifier, as the automation services know the datapoint
    QString Alias;               // display name
    QString Value;               // what a scene waits for, what a step sends
    std::int32_t Delay = 0;      // of a step, in the automation services' unit
    TNodeSource Source = nsEIB;
    TDataTypeMap DataType = dtmEIS1;
    bool Enabled = true;

    bool operator==(const TVlSceneItem& other) const;
};

// What a node is follows from its place, never from a field.
enum TSceneRole : quint8
{
    srTop,
    srTriggerRoot,
    srActionRoot,
    srScene,
    srTrigger,
    srAction,
    srStep,
};

// A node of the configuration tree. The top node and the two roots carry no item.
class TSceneNode final : public TTreeNode
{
public:
    // A node without an item.
    TSceneNode(const QString& caption, int imageIndex) : TTreeNode(caption, imageIndex) {}
    // A node with an item; its caption is empty until RebuildCaption.
    explicit TSceneNode(TVlSceneItem item);

    TVlSceneItem* Item() { return m_item.get(); }
    const TVlSceneItem* Item() const { return m_item.get(); }

    TSceneRole Role() const;
    bool IsDatapoint() const;
    // True for what every configuration tree has: the top node and the two roots.
    bool IsFixed() const { return Role() <= srActionRoot; }

    TSceneNode* Parent() const { return static_cast<TSceneNode*>(TTreeNode::Parent()); }
    TSceneNode* Child(int index) const { return static_cast<TSceneNode*>(TTreeNode::Child(index)); }
    // The linked node's item; null without one.
    const TVlSceneItem* LinkedItem() const;

    // "alias [alias of the link]" when there is a link that has one, else the alias; without an item nothing changes.
    void RebuildCaption();

    // The image that its place asks for.
    static int ImageOf(TSceneRole role);

    // In-place editing offers the alias, so that Enter without a change changes nothing.
    QString EditText() const override;

private:
    std::unique_ptr<TVlSceneItem> m_item;
};

// The fixed places below the top node.
inline constexpr int TriggerRootIndex = 0;
inline constexpr int ActionRootIndex = 1;
inline constexpr int FirstSceneIndex = 2;

// The top node with the two roots, detached.
std::unique_ptr<TSceneNode> MakeSceneTop();

// One entry for each child of the top node: the captions of the roots, the aliases of the scenes. Empty without a top.
QStringList SceneSections(const TSceneNode* top);

// How many there are of each kind.
struct TSceneCounts
{
    int Triggers = 0;
    int Actions = 0;
    int Scenes = 0;
    int Steps = 0;
};

TSceneCounts CountScenes(const TSceneNode* top);

// Scene numbers are shared by all trees of the process and never used again, also over projects.
std::int32_t LastSceneId();
// Counts up and returns the new number. After 2147483647 it wraps.
std::int32_t NextSceneId();
// Makes sure that `id` and everything below is not given to a new scene.
void RaiseSceneId(std::int32_t id);
// The package is loaded: numbers begin anew.
void ResetSceneIds();
