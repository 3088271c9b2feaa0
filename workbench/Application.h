#pragma once

#include <QApplication>

// The application object: speaks German, standard buttons included, knows the names under which settings are kept, and
// hands exceptions that escape from an event to the general error handler.
class TApplication final : public QApplication
{
    Q_OBJECT

public:
    TApplication(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;
};
