#pragma once

#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <future>
#include <memory>

// The user in front of the screen. It works on a thread of its own, so that it goes on while a drag or a modal dialog
// holds the program, and it moves the mouse and presses keys through the X server. Whatever does not come about within
// some seconds ends the journey with an exception.
class TRobot
{
public:
    // Runs `journey` while `program`, which runs the event loop, runs in the calling thread. A journey that fails is a
    // failed test and ends the program; the exit code of the program.
    static int Accompany(const std::function<void(TRobot&)>& journey, const std::function<int()>& program);

    // What `look` finds out in the thread of the user interface.
    template <class TLook> auto See(TLook look)
    {
        using TResult = decltype(look());
        auto task = std::make_shared<std::packaged_task<TResult()>>(std::move(look));
        std::future<TResult> seen = task->get_future();
        Post([task] { (*task)(); });
        if (seen.wait_for(Patience) != std::future_status::ready)
            qFatal("the user interface does not answer");
        return seen.get();
    }
    // Looks again and again until `look` finds it so.
    void WaitFor(const QString& what, const std::function<bool()>& look);

    // Places are those of the screen.
    void Click(const QPoint& place, int button = 1);
    void DoubleClick(const QPoint& place);
    void Drag(const QPoint& from, const QPoint& to);
    // The same with a key held from the press to the release, as xdotool names it.
    void DragWith(const QString& key, const QPoint& from, const QPoint& to);
    // One notch of the wheel, down or up.
    void Wheel(const QPoint& place, bool down);
    // As xdotool names keys: "Return", "ctrl+a".
    void Key(const QString& name);
    void Type(const QString& text);

    // Keeps what a part of the screen shows as NAME.png in the directory that the environment variable
    // VELMORA_PICTURES names; without it no picture is taken.
    void TakePicture(const QString& name, const QRect& part);

private:
    static constexpr std::chrono::seconds Patience{15};

    static void Post(const std::function<void()>& task);
    [[noreturn]] static void Fail(const QString& missing);
    static void Run(const QStringList& arguments);
};
