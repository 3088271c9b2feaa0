#pragma once

#include "Vlinterfaces.h"
#include "Vlpackages.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTime>
#include <QVariant>

#include <array>
#include <functional>

// The contract between the package `folders` and its host: the command target that every component is, the names by
// which components are created, and the entry points of the package.

// {6DAD84E1-E88F-11D4-B46B-000000000000}
inline constexpr TGuid IID_ICmdTarget{0x6DAD84E1, 0xE88F, 0x11D4, {0xB4, 0x6B, 0, 0, 0, 0, 0, 0}};

// Leads to something in a component: selects it and scrolls to it. False, and nothing done, when it is no longer there.
using TDocumentPlace = std::function<bool()>;

// How the host drives a component. The components are controls that the host's form owns; the reference counting of the
// base does not govern their lifetime. Exceptions reach the host. From a control: qobject_cast<ICmdTarget*>(control).
// What else the host may do with a component: list and trigger the control's actions() (object name = name of the
// operation), call its invokables, if there are any (UpdateActions before it does that, CommitEdits before it asks
// about changes, ExportedPage for the path of a page that it renders, empty without one, DocumentPlace for what stands
// in a line of a document that it has just written), and watch its windowModified property.
class ICmdTarget : public IInterface
{
public:
    // Exchanges a variant; a component that has nothing to say gives the null variant.
    virtual void RequestData(const QVariant& in, QVariant& out) = 0;
    // Applies a command text (UTF-8 or Windows-1252, zero terminated; null is the empty text). A component may be
    // commanded again at any time and then starts over from the new text.
    virtual void ExecuteCmd(const char* command, bool& handled) = 0;
    // Asks whether a command text is meant for the component.
    virtual void QueryCmd(const char* command, bool& accepted) = 0;

protected:
    ~ICmdTarget() = default;
};

Q_DECLARE_INTERFACE(ICmdTarget, "Velmora.ICmdTarget/1")

// What most components answer alike, to be derived from beside the control.
class TCmdTarget : public ICmdTarget
{
public:
    bool QueryInterface(const TGuid& iid, void** result) override
    {
        const bool known = iid == IID_IInterface || iid == IID_ICmdTarget;
        *result = known ? static_cast<ICmdTarget*>(this) : nullptr;
        return known;
    }
    int AddRef() override { return ++m_references; }
    int Release() override { return --m_references; }

    // The null variant.
    void RequestData(const QVariant&, QVariant& out) override { out = QVariant(); }
    // Always accepted, whatever the text: a component is asked only about what its own pane is given.
    void QueryCmd(const char*, bool& accepted) override { accepted = true; }

protected:
    ~TCmdTarget() = default;

private:
    int m_references = 0;
};

// {0F6B1C52-7E3D-4A98-B4C1-92D57A30E6F4}
inline constexpr TGuid IID_IWeekSchedule{0x0F6B1C52, 0x7E3D, 0x4A98, {0xB4, 0xC1, 0x92, 0xD5, 0x7A, 0x30, 0xE6, 0xF4}};

// One switching entry of a weekly schedule, as it is shown.
struct TWeekEntry
{
    static constexpr int DayCount = 7;

    QString Datapoint;                 // the display name of the datapoint that is switched
    QString Value;                     // what is sent to it, free text
    QTime Time;                        // of the day
    std::array<bool, DayCount> Days{}; // from Monday on
    bool Active = false;               // the entry and its datapoint are enabled
    bool PostProcess = false;
};

// A schedule editor's week, for whoever shows it: the entries of the datapoint or group that is selected there. Nothing
// in it changes the schedule. From a component: QueryInterface(IID_IWeekSchedule).
class IWeekSchedule : public IInterface
{
public:
    // False while neither is selected.
    virtual bool HasWeek() const = 0;
    // The caption of that datapoint or group.
    virtual QString WeekTitle() const = 0;
    // In the order of the tree. A text that is no entry is left out.
    virtual QList<TWeekEntry> WeekEntries() const = 0;
    // The entry that is selected in the tree, as an index into WeekEntries; -1 for none.
    virtual int SelectedWeekEntry() const = 0;
    // Selects an entry in the tree; the week stays the same until something else is selected there. Nothing happens for
    // an index that leads nowhere.
    virtual void SelectWeekEntry(int index) = 0;
    // Calls `changed` from the event loop after every edit, load and selection, once for many, as long as `receiver`
    // and the component live.
    virtual void AddWeekListener(QObject* receiver, std::function<void()> changed) = 0;

protected:
    ~IWeekSchedule() = default;
};

inline constexpr auto ProgIdMenuTree = "Velmora.MenuTree.1";
inline constexpr auto ProgIdConfigTree = "Velmora.ConfigTree.1";
inline constexpr auto ProgIdScheduleTree = "Velmora.ScheduleTree.1";
inline constexpr auto ProgIdCmdButtons = "Velmora.CmdButtons.1";

extern "C"
{
    // Runs the initialization of all units in order, on the first of several loads only.
    Q_DECL_EXPORT void Initialize();
    // Runs their finalization in reverse order, on the last of several unloads only. One call too many does no harm.
    Q_DECL_EXPORT void Finalize();
    // The units and the required packages; belongs to the package.
    Q_DECL_EXPORT const TPackageInfo* GetPackageInfoTable();
}
