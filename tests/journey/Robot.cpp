#include "Robot.h"

#include <QApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace
{

QStringList MoveTo(const QPoint& place)
{
    return {QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y())};
}

QStringList Pause(const char* seconds)
{
    return {QStringLiteral("sleep"), QString::fromLatin1(seconds)};
}

} // namespace

int TRobot::Accompany(const std::function<void(TRobot&)>& journey, const std::function<int()>& program)
{
    std::thread user([&journey] {
        TRobot robot;
        try {
            robot.WaitFor(QStringLiteral("the program"), [] { return QApplication::activeWindow() != nullptr; });
            journey(robot);
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
            robot.TakePicture(QStringLiteral("failure"), QApplication::primaryScreen()->geometry());
            Post([] { QCoreApplication::exit(1); });
        }
    });
    const int code = program();
    user.join();
    return code;
}

void TRobot::Post(const std::function<void()>& task)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), task, Qt::QueuedConnection);
}

void TRobot::Fail(const QString& missing)
{
    throw std::runtime_error("waited in vain for " + missing.toStdString());
}

void TRobot::WaitFor(const QString& what, const std::function<bool()>& look)
{
    const auto end = std::chrono::steady_clock::now() + Patience;
    while (!See(look)) {
        if (std::chrono::steady_clock::now() > end)
            Fail(what);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

void TRobot::Run(const QStringList& arguments)
{
    if (QProcess::execute(QStringLiteral("xdotool"), arguments) != 0)
        throw std::runtime_error("xdotool failed: " + arguments.join(u' ').toStdString());
}

void TRobot::Click(const QPoint& place, int button)
{
    Run(MoveTo(place) + QStringList{QStringLiteral("click"), QString::number(button)});
}

void TRobot::DoubleClick(const QPoint& place)
{
    Run(MoveTo(place) + QStringList{QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
                                    QStringLiteral("--delay"), QStringLiteral("60"), QStringLiteral("1")});
}

void TRobot::Drag(const QPoint& from, const QPoint& to)
{
    // In steps, as a hand moves: what is dragged learns of the places on its way.
    constexpr int Steps = 12;
    QStringList way = MoveTo(from) + QStringList{QStringLiteral("mousedown"), QStringLiteral("1")} + Pause("0.1");
    for (int i = 1; i <= Steps; ++i)
        way += MoveTo(from + (to - from) * i / Steps) + Pause("0.03");
    // To and fro at the end, so that a drag of a few pixels begins as well.
    way += MoveTo(to + QPoint(25, 0)) + Pause("0.1") + MoveTo(to) + Pause("0.2");
    Run(way + QStringList{QStringLiteral("mouseup"), QStringLiteral("1")});
}

void TRobot::DragWith(const QString& key, const QPoint& from, const QPoint& to)
{
    Run({QStringLiteral("keydown"), key});
    Drag(from, to);
    Run({QStringLiteral("keyup"), key});
}

void TRobot::Wheel(const QPoint& place, bool down)
{
    Click(place, down ? 5 : 4);
}

void TRobot::Key(const QString& name)
{
    Run({QStringLiteral("key"), name});
}

void TRobot::Type(const QString& text)
{
    Run({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("20"), text});
}

void TRobot::TakePicture(const QString& name, const QRect& part)
{
    const QString directory = qEnvironmentVariable("VELMORA_PICTURES");
    if (directory.isEmpty())
        return;
    const bool saved = See([&] {
        const QPixmap picture =
            QApplication::primaryScreen()->grabWindow(0, part.x(), part.y(), part.width(), part.height());
        return picture.save(QStringLiteral("%1/%2.png").arg(directory, name));
    });
    EXPECT_TRUE(saved) << name.toStdString();
}
