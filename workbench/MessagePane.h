#pragma once

#include <QDockWidget>

class QPlainTextEdit;

// The list of what was done and what went wrong, each with its time. The text can be selected and copied.
class TMessagePane final : public QDockWidget
{
    Q_OBJECT

public:
    explicit TMessagePane(QWidget* parent);

    void AddNote(const QString& text);
    void AddError(const QString& text);
    QString Text() const;
    // Shows the pane and moves the keyboard into it.
    void FocusText();

private:
    void AddLine(const QString& text, const QColor& color);
    void Append(const QString& line, const QColor& color);

    QPlainTextEdit* m_text;
};
