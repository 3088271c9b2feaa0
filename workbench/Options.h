#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// One thing that batch mode does with a pane: sends it a command text, or runs one of its actions by name.
struct TBatchStep
{
    enum class TKind : quint8
    {
        Command,
        Action,
    };

    TKind Kind = TKind::Command;
    QString Pane;
    QString Text;

    bool operator==(const TBatchStep&) const = default;
};

// What the command line asks for.
struct TOptions
{
    bool Help = false;
    bool Version = false;
    bool QuitAfterPaint = false;
    QString ProjectDirectory;

    bool Batch = false;
    QList<TBatchStep> Steps; // in the order of the command line
    bool AnswerYes = false;
    QString PictureFile;
};

// `arguments` begin with the program's name. Throws TUserError for what is unknown, incomplete or contradictory; --help
// and --version are heard in any company.
TOptions ParseOptions(const QStringList& arguments);

// Needs an application object, which knows the program's name and translates the headings.
QString HelpText();
QString VersionText();
