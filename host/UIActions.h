#pragma once

#include "Vlexport.h"

#include <QString>

// Hands a file to the program that the desktop has for it, with a verb ("open", "edit"). Set the properties, then call
// Execute; nothing is started before.
class VLHOST_API TShellExecuteAction
{
public:
    QString GetFileName() const { return m_fileName; }
    void SetFileName(const QString& fileName) { m_fileName = fileName; }
    QString GetVerb() const { return m_verb; }
    void SetVerb(const QString& verb) { m_verb = verb; }

    // True when the desktop took the file. An empty name, a file that does not exist and an unknown verb are refused.
    // "edit" prefers the text editor named by VISUAL or EDITOR; URLs are opened as they are.
    bool Execute() const;

private:
    QString m_fileName;
    QString m_verb = QStringLiteral("open");
};

// The host's module of user-interface actions.
class VLHOST_API TUIActions
{
public:
    TShellExecuteAction ShellExecute;
};

VLHOST_API TUIActions& UIActions();
