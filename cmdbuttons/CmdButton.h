#pragma once

#include "Vlnavigation.h"

#include <QToolButton>

// One button of the bar: flat, the glyph above the caption. It owns its action, a navigation entry, and runs it when it
// is pressed. Belongs to the bar until it retires.
class TCmdButton final : public QToolButton
{
    Q_OBJECT

public:
    static constexpr int Height = 75;

    TCmdButton(TNavigationPtr action, QWidget* parent);
    ~TCmdButton() override;

    TNavigation* Action() const { return m_action.get(); }

    // Show what the action says now. A glyph whose file is missing stays as it was; one that is no picture does, too,
    // and is noted.
    void ShowCaption();
    void ShowGlyph();

    // Frees the action and the button, as soon as what the action is doing has returned.
    void Retire();

    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void initStyleOption(QStyleOptionToolButton* option) const override;

private:
    void Run();

    TNavigationPtr m_action;
    int m_runs = 0; // clicks that have yet to return
};
