#pragma once

#include "Vlexport.h"

#include <QDialog>

class QLabel;
class QSpinBox;

// Asks for a count. Made once by whoever needs it and executed as often as wanted.
class VLHOST_API TPromptNumberDialog : public QDialog
{
    Q_OBJECT

public:
    explicit TPromptNumberDialog(QWidget* parent = nullptr);
    ~TPromptNumberDialog() override;

    // Asks under `caption`, modally, beginning with 1; true when the user confirmed. Where nobody can answer (see
    // IMessageHandler::IsInteractive) it is an error message and false.
    bool Execute(const QString& caption);

    // The number of the last confirmed question, from 1 up to 1,000,000.
    int GetNumber() const { return m_number; }

private:
    QLabel* m_caption;
    QSpinBox* m_edit;
    int m_number = 0;
};
