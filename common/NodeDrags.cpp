#include "NodeDrags.h"

std::unique_ptr<QMimeData> MakeNodeDrag()
{
    auto content = std::make_unique<QMimeData>();
    content->setData(QStringLiteral("application/x-velmora-node"), {});
    return content;
}

std::unique_ptr<QMimeData> MakeObjectsDrag(const QList<TTreeNode*>& nodes)
{
    auto objects = std::make_shared<TObjectsDragObject>(false);
    for (TTreeNode* node : nodes)
        objects->Add(node);
    return std::unique_ptr<QMimeData>(TObjectsDragObject::ToMimeData(std::move(objects)));
}

std::unique_ptr<QMimeData> MakeDatapointDrag(const TDatapointDrag& datapoint)
{
    TPropertyDragObject object;
    object.Add(QStringLiteral("name"), datapoint.Name);
    object.Add(QStringLiteral("alias"), datapoint.Alias);
    object.Add(QStringLiteral("fixval"), datapoint.FixedValue);
    object.Add(QStringLiteral("type"), QString::number(datapoint.EisNumber));
    object.Add(QStringLiteral("target"), datapoint.Source);
    object.SetShiftState(datapoint.ShiftState);
    return std::unique_ptr<QMimeData>(object.ToMimeData());
}
