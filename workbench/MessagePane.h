#pragma once

#include "Folders.h"

#include <QDockWidget>

class QPlainTextEdit;
class QTextCursor;

// The list of what was done and what went wrong, each with its time. The text can be selected and copied.
class TMessagePane final : public QDockWidget
{
    Q_OBJECT

public:
    explicit TMessagePane(QWidget* parent);

    void AddNote(const QString& text);
    void AddError(const QString& text);
    // An error that is to be mended in a pane, at a place in it where one is known: a double click on the line, or
    // Enter, leads there.
    void AddFault(const QString& text, const QString& paneId, const TDocumentPlace& place);
    QString Text() const;
    // Shows the pane and moves the keyboard into it.
    void FocusText();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    // The user wants to go where the fault is.
    void FaultActivated(const QString& paneId, const TDocumentPlace& place);

private:
    void AddLine(const QString& text, const QColor& color);
    void Append(const QString& line, const QColor& color);
    bool Activate(const QTextCursor& place);

    QPlainTextEdit* m_text;
};
