#pragma once

#include "Folders.h"
#include "Userman.h"

#include <QStringList>
#include <QWidget>

class QAction;
class QLineEdit;

// A component as packages make them, small enough to see through: it keeps the commands it gets and can be edited and
// exported. A command with "error" in it is reported as an error, one with "throw" throws, one with "refuse" is
// refused, "ask" asks, "inform" informs, "later" throws from the event loop, "modal" opens a dialog.
class TTestComponent final : public QWidget, public TCmdTarget
{
    Q_OBJECT
    Q_INTERFACES(ICmdTarget)

public:
    explicit TTestComponent(QWidget* parent);
    ~TTestComponent() override;

    // Makes the class known, and the editors' ProgIDs through the application's client registry.
    static void Register();
    static void Unregister();

    void ExecuteCmd(const char* command, bool& handled) override;
    void QueryCmd(const char* command, bool& accepted) override;

    // The page that "out" of the last command names, with the project's variables decoded; empty without one.
    Q_INVOKABLE QString ExportedPage() const;
    // Every line of every document has a place here: the field.
    Q_INVOKABLE TDocumentPlace DocumentPlace(const QString& path, int line);

    // What a user does.
    void Edit() { setWindowModified(true); }

    QStringList Commands;
    QLineEdit* Field;
    QAction* ExportAction;
    // What the next exports do: work, fail with a message, or change their mind.
    bool ExportFails = false;
    bool ExportKeepsModified = false;
    int Exports = 0;
    int ProjectChanges = 0;
    int UpdateCount = 0;
    // The places that were asked for and those that the user was led to, and whether they are still there.
    QStringList AskedPlaces;
    QStringList ShownPlaces;
    bool HasPlaces = true;

    static int LiveCount;

public Q_SLOTS:
    void UpdateActions() { ++UpdateCount; }

private:
    QAction* AddAction(const QString& name, const QString& caption);
    void Export();
    void HandleProjectChange(QObject* sender, TUserProperty property, const QString& value);
};
