#pragma once

#include "Vlentryfile.h"
#include "Vlexport.h"

#include <QAction>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>

class TNavigation;

// Frees an entry, or sees to it that it is freed when what it is just doing has returned.
struct VLHOST_API TNavigationFree
{
    void operator()(TNavigation* entry) const;
};

using TNavigationPtr = std::unique_ptr<TNavigation, TNavigationFree>;

// A navigation entry: an action of the host with a caption and an icon, kept in a file of its own. Running it (trigger)
// sends a command text to a pane, opens a file or a web address, or runs an action of the host. Whoever shows it owns
// it. It is in the folder manager's list of actions from its creation until it is detached or freed, and it may be
// freed by what it runs.
class VLHOST_API TNavigation final : public QAction
{
    Q_OBJECT

public:
    // Called with the entry after its properties have changed.
    using TChangeEvent = std::function<void(QObject* sender)>;

    // An entry that is stored in `file`; nothing is read or written yet.
    static TNavigationPtr Create(const QString& file, const QString& category);
    // The same, read from its file as Load does it.
    static TNavigationPtr CreateLoaded(const QString& file, const QString& category);
    // An entry for an action of the host, which has no file and no properties of its own.
    static TNavigationPtr CreateFor(QAction* action, const QString& category);

    // Reads the file. Throws TUserError, naming it, when it is unreadable or damaged.
    void Load();
    // Writes the file; keeps what others have added to it. Throws TFileError.
    void Save();

    const QString& GetFile() const { return m_file; }
    const TEntryRecord& GetRecord() const { return m_record; }
    void SetRecord(const TEntryRecord& record);

    // The record's caption, else the name of the file.
    QString GetCaption() const;
    // The record's category, else the one that was given.
    QString GetCategory() const;
    void SetCategory(const QString& category) { m_category = category; }
    // The absolute path of the icon's file; empty for none.
    QString GetIconFile() const;
    bool IsRemovable() const { return m_record.Removable; }

    bool IsNew() const { return m_isNew; }
    void SetNew(bool isNew) { m_isNew = isNew; }

    const TChangeEvent& GetChangeEvent() const { return m_changeEvent; }
    void SetChangeEvent(TChangeEvent event) { m_changeEvent = std::move(event); }

    // The control that shows the entry.
    QWidget* GetButton() const { return m_button; }
    void SetButton(QWidget* button) { m_button = button; }

    // Shows the properties dialog and waits for it; true when the user has confirmed and the file is written. What
    // cannot be written is said, and the dialog stays open. Throws TUserError where nobody sees a dialog.
    bool EditProperties();

    // Runs the entry. Throws TUserError.
    void Execute();
    // True while it runs or its properties are shown.
    bool IsInUse() const { return m_uses > 0; }

    // Takes the entry out of the folder manager's list.
    void Detach();

private:
    friend TNavigationFree;

    // Keeps the entry alive while it lives itself.
    class TUse
    {
    public:
        explicit TUse(TNavigation& entry) : m_entry(entry) { ++m_entry.m_uses; }
        ~TUse()
        {
            if (--m_entry.m_uses == 0 && m_entry.m_isFreed)
                delete &m_entry;
        }
        TUse(const TUse&) = delete;
        TUse& operator=(const TUse&) = delete;

    private:
        TNavigation& m_entry;
    };

    TNavigation(const QString& file, const QString& category);
    ~TNavigation() override;

    void Accept(const TEntryRecord& record);
    void ShowRecord();

    QString m_file;
    QString m_category;
    TEntryRecord m_record;
    bool m_isNew = false;
    bool m_isFreed = false;
    int m_uses = 0;
    bool m_standsForAction = false;
    QPointer<QAction> m_action;
    QPointer<QWidget> m_button;
    TChangeEvent m_changeEvent;
};
