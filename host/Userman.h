#pragma once

#include "Vlexport.h"
#include "Vlprojects.h"

#include <QObject>

#include <memory>

// What changed, as every project listener is told.
enum TUserProperty : quint8
{
    upUser,
    upProject,
};

// Knows the user's active project, expands what depends on it, and tells listeners when it changes. One instance, made
// by the first SetupUserManager and destroyed by the matching DisposeUserManager; reached through UserManager.
class VLHOST_API TUserManager : public QObject
{
    Q_OBJECT

public:
    // The open project, or null. Belongs to the manager and lives until the project changes.
    const TProject* GetActiveProject() const { return m_project.get(); }

    // Opens the project in `directory`, exports its root directory as PRJPATH and tells the listeners. Throws
    // TUserError (no project there, a damaged project file); the previous project then stays open.
    void OpenProject(const QString& directory);
    void CloseProject();

    // From now on `method` of `receiver` is called on every change, with the manager as sender. Adding it again changes
    // nothing; a destroyed receiver is dropped.
    template <class T> void AddListener(T* receiver, void (T::*method)(QObject*, TUserProperty, const QString&))
    {
        connect(this, &TUserManager::Notify, receiver, method, Qt::UniqueConnection);
    }

    // Ends what AddListener began, however often it was called. Allowed while listeners are being called.
    template <class T> void RemoveListener(T* receiver, void (T::*method)(QObject*, TUserProperty, const QString&))
    {
        disconnect(this, &TUserManager::Notify, receiver, method);
    }

    // Replaces "$(project)" and "%PRJPATH%", without regard to case, by the root directory of the active project.
    // Without one they stay as they are, so that nothing ever resolves to a root or to the working directory by
    // accident.
    QString DecodeVars(const QString& text) const;

    // The file-system path that the path part of a command text stands for: variables and environment references
    // expanded, backslashes as separators.
    QString EnvToFilePath(const QString& text) const;

    // The same for the project in the directory `root`, whichever is active; empty for none, which nothing is below.
    static QString EnvToFilePathIn(const QString& root, const QString& text);

    // True when `text` contains "$(project)" or "%PRJPATH%", without regard to case.
    static bool DependsOnProject(const QString& text);

Q_SIGNALS:
    void Notify(QObject* sender, TUserProperty property, const QString& value);

private:
    friend VLHOST_API void SetupUserManager();
    friend VLHOST_API void DisposeUserManager();

    TUserManager();
    ~TUserManager() override;

    void SetProject(std::unique_ptr<TProject> project);

    std::unique_ptr<TProject> m_project;
};

// Makes sure that the user manager exists. Each call is matched by one DisposeUserManager; one call too many of that
// does no harm.
VLHOST_API void SetupUserManager();
VLHOST_API void DisposeUserManager();

// The one instance, or null while nobody holds it.
VLHOST_API TUserManager* UserManager();
