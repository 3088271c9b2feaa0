#pragma once

#include "ModifiedGuard.h"

#include <QMessageBox>

// The question what becomes of the changes in some panes.
class TModifiedBox final : public QMessageBox
{
    Q_OBJECT

public:
    explicit TModifiedBox(const QStringList& titles, QWidget* parent = nullptr);

    // What the clicked button means; closing the box by other means cancels.
    TModifiedAnswer Answer() const;

private:
    QPushButton* m_export;
    QPushButton* m_discard;
};

// Asks by a box over the active window and waits for the answer.
class TModifiedBoxAsker final : public IModifiedAsker
{
public:
    TModifiedAnswer Ask(const QStringList& titles) override;
};
