#pragma once

#include "Folders.h"
#include "PaneClient.h"

#include <QDateTime>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

class QAction;
class QLabel;
class QMenu;
class TWeekCanvas;
struct TWeekPage;

// A pane with a picture of the week of what is selected in the weekly schedule. It reads the schedule of another pane's
// component and selects entries there; it changes nothing. Driven by command texts: `weekview://?pane=ID` names that
// pane, `pdf=FILE` and `png=FILE` save the picture. Owned by its pane.
class TWeekView final : public QWidget, public TCmdTarget, public IPaneClient
{
    Q_OBJECT
    Q_INTERFACES(ICmdTarget IPaneClient)

public:
    using TClock = std::function<QDateTime()>;

    explicit TWeekView(QWidget* parent);
    ~TWeekView() override;

    void ExecuteCmd(const char* command, bool& handled) override;
    void QueryCmd(const char* command, bool& accepted) override;

    void FollowPanes(const IPaneComponents& panes) override;

    // Replaces the clock that tells the time to mark.
    void SetClock(TClock clock);
    // Marks the present time; a timer does it, too.
    void FollowTime();

    TWeekCanvas* Canvas() const { return m_canvas; }
    QLabel* TitleLabel() const { return m_title; }
    // What is printed and saved.
    TWeekPage Page() const;

    // Brings the states of the actions up to date.
    Q_INVOKABLE void UpdateActions();

    void MenuAction_Print();
    void MenuAction_SavePdf();
    void MenuAction_SavePng();
    void MenuAction_ZoomIn();
    void MenuAction_ZoomOut();
    void MenuAction_ZoomReset();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    // One of the files that the picture is saved as.
    struct TFileKind
    {
        QString Key;    // in command texts
        QString Name;   // what the user reads
        QString Suffix; // with its dot
        void (*Save)(const TWeekPage& page, const QString& path);
    };
    static const TFileKind& Pdf();
    static const TFileKind& Png();

    void MakeActions();
    QAction* AddAction(const char* name, const QString& text, const QKeySequence& shortcut,
                       void (TWeekView::*execute)());
    void Connect();
    void Disconnect(QObject* source);
    void Refresh();
    void ShowSchedule();
    bool HasWeek() const;
    void SelectEntry(int entry);
    void Save(const TFileKind& kind, const QString& path);
    void AskAndSave(const TFileKind& kind);
    void SaveByCommand(const TFileKind& kind, const QString& location);

    QLabel* m_title;
    TWeekCanvas* m_canvas;
    QMenu* m_menu = nullptr;
    QTimer m_timer{this};
    TClock m_clock = &QDateTime::currentDateTime;
    const IPaneComponents* m_panes = nullptr;
    QString m_sourcePane;
    QPointer<QWidget> m_source;
    IWeekSchedule* m_schedule = nullptr; // of the source and only while that lives
    std::unique_ptr<QObject> m_listener; // ends listening to the source
};

// Makes the view known as "TWeekView".
void RegisterWeekView();
void UnregisterWeekView();
