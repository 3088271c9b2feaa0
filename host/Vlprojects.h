#pragma once

#include "Vlexport.h"

#include <QString>

// A project: a directory with a small project file that names it.
class VLHOST_API TProject
{
public:
    // The name of the project file in every project directory.
    static QString ProjectFileName();

    // The project in `directory`. Throws TUserError when there is none or its file is damaged.
    static TProject Load(const QString& directory);

    // Makes the directory (with the folders every editor expects) and the project file. Throws TUserError when the
    // directory already holds a project, or when it cannot be written.
    static TProject Create(const QString& directory, const QString& name);

    QString GetName() const { return m_name; }
    // Both in the platform's form, absolute.
    QString GetProjectFile() const { return m_projectFile; }
    QString GetRootDirectory() const { return m_rootDirectory; }

private:
    QString m_name;
    QString m_projectFile;
    QString m_rootDirectory;
};
