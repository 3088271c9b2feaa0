#pragma once

#include "Folders.h"

#include <QWidget>

// A component that shows a weekly schedule as the test says, and remembers what is selected in it.
class TTestSchedule final : public QWidget, public ICmdTarget, public IWeekSchedule
{
    Q_OBJECT
    Q_INTERFACES(ICmdTarget)

public:
    explicit TTestSchedule(QWidget* parent);

    // Makes the class known as "TTestSchedule".
    static void Register();
    static void Unregister();

    // Changes what it shows and tells the listeners at once.
    void Show(const QString& title, const QList<TWeekEntry>& entries, int selected = -1);

    bool QueryInterface(const TGuid& iid, void** result) override;
    int AddRef() override { return 1; }
    int Release() override { return 1; }
    void RequestData(const QVariant& in, QVariant& out) override;
    void ExecuteCmd(const char* command, bool& handled) override;
    void QueryCmd(const char* command, bool& accepted) override;

    bool HasWeek() const override { return !m_title.isEmpty(); }
    QString WeekTitle() const override { return m_title; }
    QList<TWeekEntry> WeekEntries() const override { return m_entries; }
    int SelectedWeekEntry() const override { return m_selected; }
    void SelectWeekEntry(int index) override;
    void AddWeekListener(QObject* receiver, std::function<void()> changed) override;

    QList<int> Selections;
    int ListenerCount() const { return receivers(SIGNAL(Changed())); }

Q_SIGNALS:
    void Changed();

private:
    QString m_title;
    QList<TWeekEntry> m_entries;
    int m_selected = -1;
};

// An active entry on the days of `days` ("1100000" is Monday and Tuesday).
TWeekEntry WeekEntry(const char* time, const char* days, const char* value = "1", const char* datapoint = "Licht");
