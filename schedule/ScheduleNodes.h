#pragma once

#include "FoldersCommon.h"
#include "Vltreenode.h"

#include <QString>

#include <cstdint>
#include <memory>

// The record of one datapoint; belongs to its node.
struct TVlNodeData
{
    std::int32_t Id = -1; // reserved, never written
    TNodeSource Source = nsEIB;
    TDataTypeMap DataType = dtmEIS1;
    bool Enabled = true;
    std::int32_t Access = 5; // access level; handed on, not interpreted here
    QString Name;            // address or identifier, as the automation services know the datapoint
    QString Alias;           // display name
    QString MinVal;          // bounds of the value, free text
    QString MaxVal;

    bool operator==(const TVlNodeData& other) const = default;
};

// What a node is follows from its level alone, also where it came to stand there by accident.
enum TScheduleLevel : int
{
    slRoot,
    slGroup,
    slDatapoint,
    slEntry,
};

// A node of the schedule tree. A datapoint carries a record. A switching entry is nothing but its caption, the text of
// its element.
class TScheduleNode final : public TTreeNode
{
public:
    // A node without a record; its image is the one of `level`.
    TScheduleNode(const QString& caption, int level) : TTreeNode(caption, level) {}
    // A node with a record, captioned by its alias.
    TScheduleNode(TVlNodeData data, int level)
        : TTreeNode(data.Alias, level), m_data(std::make_unique<TVlNodeData>(std::move(data)))
    {
    }

    TVlNodeData* Data() { return m_data.get(); }
    const TVlNodeData* Data() const { return m_data.get(); }

    // The access level of a group, 0 for what was no group.
    std::int32_t GroupAccess() const { return m_groupAccess; }
    void SetGroupAccess(std::int32_t access) { m_groupAccess = access; }

    bool IsGroup() const { return Level() == slGroup; }
    bool IsDatapoint() const { return Level() == slDatapoint; }
    bool IsEntry() const { return Level() == slEntry; }

    TScheduleNode* Parent() const { return static_cast<TScheduleNode*>(TTreeNode::Parent()); }
    TScheduleNode* Child(int index) const { return static_cast<TScheduleNode*>(TTreeNode::Child(index)); }

private:
    std::unique_ptr<TVlNodeData> m_data;
    std::int32_t m_groupAccess = 0;
};

// The root, detached.
std::unique_ptr<TScheduleNode> MakeScheduleRoot();

// A node as every new one is made: without a caption it is a "Neuer Eintrag"; one that lands among the datapoints gets
// a fresh record with the caption as alias.
std::unique_ptr<TScheduleNode> MakeScheduleNode(const QString& caption, int level);

// Gives a branch that has moved the images of the levels where it stands now.
void RefreshImages(TScheduleNode* branch);

// How many there are of each kind.
struct TScheduleCounts
{
    int Groups = 0;
    int Datapoints = 0;
    int Entries = 0;
};

TScheduleCounts CountSchedule(const TScheduleNode* root);
