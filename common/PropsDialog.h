#pragma once

#include "FoldersCommon.h"

#include <QDialog>

#include <functional>

class QCheckBox;
class QPushButton;
class QToolButton;

// What the modeless properties dialogs of all editors share: the flag that something was changed, the events by which
// the editor that shows a dialog takes part, the buttons, and the box for automatic acceptance. It knows no record: a
// family's dialog adds its fields and calls MarkChanged. Belongs to the frame that made it.
class TPropsDialog : public QDialog
{
    Q_OBJECT

public:
    using TNotifyEvent = std::function<void(QObject* sender)>;

    ~TPropsDialog() override;

    // The fields are to be taken over. "Übernehmen" is enabled exactly while there is such an event.
    void SetApplyEvent(TNotifyEvent event);
    // The dialog was closed, whatever the way.
    void SetCloseEvent(TNotifyEvent event) { m_closeEvent = std::move(event); }
    // The user asks for the previous (dirUp) or next (dirDown) node. After that the dialog counts as unchanged.
    void SetMoveEvent(TMoveNotify event) { m_moveEvent = std::move(event); }

    bool GetChanged() const { return m_changed; }
    void SetChanged(bool changed) { m_changed = changed; }

    // Whether changes are taken over by themselves before another node is shown.
    bool GetAutoAccept() const;
    void SetAutoAccept(bool autoAccept);

    // Both begin without changes. Display shows the dialog modelessly; Execute shows it modally and is true unless it
    // was closed with Cancel.
    void Display();
    bool Execute();

    void done(int result) override;

protected:
    TPropsDialog(const QString& caption, QWidget* parent);

    void MarkChanged() { m_changed = true; }

    // Whether the move buttons make the dialog count as unchanged also while there is no move event.
    virtual bool ForgetsWithoutMove() const { return true; }

    QToolButton* UpButton() const { return m_up; }
    QToolButton* DownButton() const { return m_down; }
    QCheckBox* AutoAcceptBox() const { return m_autoAccept; }
    // OK, Übernehmen, Abbrechen.
    QWidget* ButtonRow() const { return m_buttonRow; }
    // Lays the whole dialog out: the fields with the move buttons beside them, the box and the buttons below.
    void ArrangeFields(QLayout* fields);
    // Puts the buttons and the box for automatic acceptance behind `last` in the tab order.
    void EndTabOrder(QWidget* last);

private:
    QToolButton* MakeMoveButton(const char* name, Qt::ArrowType arrow, const QString& hint, TDirection direction);
    void MakeButtons();
    void Apply();

    QToolButton* m_up;
    QToolButton* m_down;
    QCheckBox* m_autoAccept;
    QWidget* m_buttonRow;
    QPushButton* m_ok;
    QPushButton* m_apply;
    QPushButton* m_cancel;
    TNotifyEvent m_applyEvent;
    TNotifyEvent m_closeEvent;
    TMoveNotify m_moveEvent;
    bool m_changed = false;
};
