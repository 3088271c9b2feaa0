#pragma once

#include "DocumentFiles.h"
#include "ScheduleNodes.h"
#include "TestSupport.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

// A document with one line for each of `lines`: the declaration, the root and CR LF everywhere.
QByteArray ScheduleDocument(const QList<QByteArray>& lines = {});

// What WriteSchedule makes of a tree.
QByteArray Written(const TScheduleNode* root);

// "1 Gruppen, 2 Datenpunkte, 3 Einträge" of a tree.
QString CountsOf(const TScheduleNode* root);

// One line for each node: its caption, indented by its level.
QStringList OutlineOf(const TScheduleNode* root);

// Everything that a node's record holds, in one line.
QString RecordOf(const TScheduleNode* node);

// A directory with a schedule document that everybody may read, outside of any project, and what loads of it leave.
class TScheduleFiles
{
public:
    TScheduleFiles();

    QString Directory() const { return m_directory.path(); }
    QString Path(const QString& name = QStringLiteral("schedule.xml")) const { return m_directory.filePath(name); }

    void Write(const QByteArray& content) const { WriteAll(Path(), content); }
    QByteArray Read(const QString& name = QStringLiteral("schedule.xml")) const { return ReadAll(Path(name)); }
    QStringList Names() const;
    // Writes a document of 2 groups, 3 datapoints and 4 entries, with the entries as a parser gives them.
    void WriteSmallHouse() const;

    std::unique_ptr<TScheduleNode> Load();
    std::unique_ptr<TScheduleNode> Load(const QByteArray& content);
    void Save(const TScheduleNode* root);
    TDocumentFiles& Files() { return m_files; }
    const QStringList& GroupNames() const { return m_groupNames; }

private:
    QTemporaryDir m_directory;
    TDocumentFiles m_files{nullptr};
    QStringList m_groupNames;
};

// The names of the documents below tests/data/schedule/`kind`, without ".xml".
QStringList ScheduleCases(const QString& kind);
QString ScheduleCasePath(const QString& kind, const QString& name);
