#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

// The kinds of datapoints that the browsers show, each read from files of its own formats.
enum TDatapointKind : quint8
{
    dkEib,     // group addresses: the engineering tool's OPC export (ESF), CSV and XML exports
    dkModbus,  // registers: lists with a header, CSV or TSV
    dkVirtual, // virtual variables: a plain list
};

// One datapoint as a file gives it.
struct TDatapoint
{
    QString Address;     // "1/2/3", "1/234" or "1234" as the file writes it; a register's number, a variable's name
    QString Name;        // display name, one line
    QStringList Group;   // what stands above it, outermost first: ranges; for registers device and kind, if given
    int EisNumber = 0;   // 0 for an undetermined type
    QString Device = {}; // whose register it is, where the list says so
    QString RegisterKind = {}; // as RegisterKindName gives it, where the list says so
    qsizetype Line = 0;        // where it stands in its file, from 1
};

// A line that could not be read, or one that was read differently than it stands.
struct TImportProblem
{
    qsizetype Line = 0; // from 1; 0 for the file as a whole
    QString Reason;     // German, without the file's name
};

struct TImportResult
{
    QString Format;   // what the file was taken for, to show to the user
    QString Encoding; // the name of the encoding it was read in
    QString Title;    // the project's name, where the format carries one
    QList<TDatapoint> Datapoints;
    QList<TImportProblem> Problems;
    bool Cancelled = false;

    // False when the file as a whole is none of the formats; the problems then say why.
    bool Recognised = false;
};

struct TImportOptions
{
    QString Encoding; // empty: found out from the content
    // Called now and then with the share that is done, 0 to 1; false cancels.
    std::function<bool(double done)> Progress;
};

// Reads the content of a file of that kind. Text only: nothing is run, nothing else is loaded. A line that cannot be
// read becomes a problem and the rest is read; of a doubled address the first counts and both are reported. Never
// throws for bad content.
TImportResult ReadDatapoints(TDatapointKind kind, const QByteArray& content, const TImportOptions& options = {});

// The encodings that a user may choose from, by the names that TImportOptions takes.
QStringList ImportEncodings();
