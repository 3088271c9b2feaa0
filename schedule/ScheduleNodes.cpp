#include "ScheduleNodes.h"

#include "FoldersRc.h"

std::unique_ptr<TScheduleNode> MakeScheduleRoot()
{
    return std::make_unique<TScheduleNode>(RcText(_RSTR_SCHEDULES), slRoot);
}

std::unique_ptr<TScheduleNode> MakeScheduleNode(const QString& caption, int level)
{
    const QString text = caption.isEmpty() ? RcText(_STR_NEW_ENTRY) : caption;
    if (level != slDatapoint)
        return std::make_unique<TScheduleNode>(text, level);
    TVlNodeData data;
    data.Alias = text;
    return std::make_unique<TScheduleNode>(std::move(data), level);
}

void RefreshImages(TScheduleNode* branch)
{
    const int level = branch->Level();
    if (branch->ImageIndex() == level)
        return;
    branch->SetImageIndex(level);
    for (int i = 0; i < branch->Count(); ++i)
        RefreshImages(branch->Child(i));
}

TScheduleCounts CountSchedule(const TScheduleNode* root)
{
    TScheduleCounts counts;
    for (int g = 0; root && g < root->Count(); ++g) {
        const TScheduleNode* group = root->Child(g);
        ++counts.Groups;
        counts.Datapoints += group->Count();
        for (int d = 0; d < group->Count(); ++d)
            counts.Entries += group->Child(d)->Count();
    }
    return counts;
}
