#pragma once

#include "NestedLoop.h"
#include "ScheduleTree.h"
#include "Vldragobjects.h"

#include <QDrag>

#include <functional>
#include <optional>
#include <utility>

// Drags out of the small schedule. A drag begins on the last node of a list; the others are selected with it.
class TScheduleDrag : public TScheduleTree
{
protected:
    // `keys` are held from the press until the mouse has moved a little.
    bool Drag(const std::vector<const char*>& nodes, const std::function<void()>& during,
              Qt::KeyboardModifiers keys = {})
    {
        Select(nodes);
        const TMouse mouse(Frame().viewport());
        const QPoint from = PlaceOf(nodes.back());
        mouse.Press(from, keys);
        mouse.Move(from + QPoint(2, 0), keys);
        return RunInLoop([&] { mouse.Move(from + QPoint(30, 0)); }, during);
    }
    // A drag that begins on an entry while another node is the selected one.
    bool DragOther(const char* node, const std::function<void()>& during, Qt::KeyboardModifiers keys = {})
    {
        const TMouse mouse(Frame().viewport());
        const QPoint from = PlaceOf("08:45");
        mouse.Press(from, keys);
        Frame().SelectNode(Node(node));
        mouse.Move(from + QPoint(2, 0), keys);
        return RunInLoop([&] { mouse.Move(from + QPoint(30, 0)); }, during);
    }
    // Drags and drops, which must be accepted.
    void DragTo(const std::vector<const char*>& nodes, const char* target, Qt::KeyboardModifiers keys = {})
    {
        EXPECT_TRUE(Drag(
            nodes, [&] { EXPECT_TRUE(Over().EnterAndDrop(PlaceOf(target))); }, keys));
    }
    std::optional<TPropertyDragObject> PropertiesOf(const char* group, Qt::KeyboardModifiers keys = {})
    {
        std::optional<TPropertyDragObject> object;
        EXPECT_TRUE(DragOther(
            group, [&] { object = TPropertyDragObject::FromMimeData(Content()); }, keys));
        return object;
    }

    // What is being dragged.
    const QMimeData* Content() const { return Frame().findChildren<QDrag*>().last()->mimeData(); }
    TDraggedOver Over() const { return {Frame().viewport(), Content()}; }
    QPoint PlaceOf(const char* target) const
    {
        if (!target)
            return {10, Frame().viewport()->height() - 40};
        return Frame().visualItemRect(Node(target)).center();
    }
    // Only datapoints and entries take what is dragged, if `accepting`; nothing else does.
    void ExpectPlaces(bool accepting)
    {
        for (const auto& [target, takes] : {std::pair<const char*, bool>{nullptr, false},
                                            {"Wochenschaltplan", false},
                                            {"Licht", false},
                                            {"Urlaub", false},
                                            {"Flur", true},
                                            {"West", true},
                                            {"07:05", true},
                                            {"05:15", true}}) {
            const bool expected = takes && accepting;
            EXPECT_TRUE(Over().Enter(PlaceOf(target)));
            EXPECT_EQ(Over().Move(PlaceOf(target)), expected) << (target ? target : "nothing");
            const bool dropped = !expected && Over().Drop(PlaceOf(target));
            EXPECT_FALSE(dropped) << (target ? target : "nothing");
        }
    }
};
