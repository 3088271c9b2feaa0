#include "Vlmessages.h"

#include <QApplication>
#include <QMessageBox>

#include <utility>

namespace
{

QMessageBox::StandardButton Ask(QMessageBox::Icon icon, const QString& text, QMessageBox::StandardButtons buttons)
{
    QMessageBox box(icon, QApplication::applicationDisplayName(), text, buttons, QApplication::activeWindow());
    // Texts carry names and paths; none of them is markup.
    box.setTextFormat(Qt::PlainText);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

class TMessageBoxes final : public IMessageHandler
{
public:
    void ShowInformation(const QString& text) override { Ask(QMessageBox::Information, text, QMessageBox::Ok); }

    void ShowError(const QString& text) override { Ask(QMessageBox::Critical, text, QMessageBox::Ok); }

    bool Confirm(const QString& text) override
    {
        return Ask(QMessageBox::Question, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
    }

    void Note(const QObject*, const QString&) override {}
};

TMessageBoxes& Boxes()
{
    static TMessageBoxes boxes;
    return boxes;
}

IMessageHandler*& CurrentHandler()
{
    static IMessageHandler* current = &Boxes();
    return current;
}

} // namespace

IMessageHandler::~IMessageHandler() = default;

IMessageHandler* SetMessageHandler(IMessageHandler* handler)
{
    IMessageHandler* previous = std::exchange(CurrentHandler(), handler ? handler : &Boxes());
    return previous == &Boxes() ? nullptr : previous;
}

void ShowInformation(const QString& text)
{
    CurrentHandler()->ShowInformation(text);
}

void ShowError(const QString& text)
{
    CurrentHandler()->ShowError(text);
}

bool Confirm(const QString& text)
{
    return CurrentHandler()->Confirm(text);
}

void Note(const QObject* source, const QString& text)
{
    CurrentHandler()->Note(source, text);
}

bool IsInteractive()
{
    return CurrentHandler()->IsInteractive();
}
