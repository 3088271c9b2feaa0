#include <QApplication>
#include <QMainWindow>
#include <QPaintEvent>
#include <QTimer>

namespace
{

// The least that shows a window: it quits when it has been painted.
class TBareWindow final : public QMainWindow
{
protected:
    void paintEvent(QPaintEvent* event) override
    {
        QMainWindow::paintEvent(event);
        QTimer::singleShot(0, qApp, &QApplication::quit);
    }
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    TBareWindow window;
    window.resize(1280, 800);
    window.show();
    return QApplication::exec();
}
