#pragma once

#include "DocumentFiles.h"
#include "SceneNodes.h"
#include "TestSupport.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTemporaryDir>

#include <memory>

// The content of a directory, by file name.
using TFileContents = QMap<QString, QByteArray>;

TFileContents ReadDirectory(const QString& directory);

// A document of the family with one line for each element: the declaration, the root and CR LF everywhere.
QByteArray SceneDocument(const QByteArray& root, const QList<QByteArray>& lines = {});

// "2 Trigger, 1 Aktionen, 1 Szenen, 3 Schritte" of a tree.
QString CountsOf(const TSceneNode* top);

// One line for each node: its caption, indented by its level.
QStringList OutlineOf(const TSceneNode* top);

// Everything that a node's record holds but its link, in one line.
QString RecordOf(const TSceneNode* node);

// A directory with scene documents that everybody may read, outside of any project.
class TSceneFiles
{
public:
    TSceneFiles();

    QString Directory() const { return m_directory.path(); }
    QString Path(const QString& name = QStringLiteral("scenes.xml")) const { return m_directory.filePath(name); }

    void Write(const QString& name, const QByteArray& content) const { WriteAll(Path(name), content); }
    QByteArray Read(const QString& name) const { return ReadAll(Path(name)); }
    TFileContents Contents() const { return ReadDirectory(Directory()); }
    // Copies all files of `directory` here.
    void CopyFrom(const QString& directory) const;
    // Writes the four kinds of document, small ones that belong together: 2 Trigger, 2 Aktionen, 2 Szenen, 3 Schritte.
    void WriteSmallHouse() const;

    std::unique_ptr<TSceneNode> Load();
    int Save(const TSceneNode* top);
    TDocumentFiles& Files() { return m_files; }

private:
    QTemporaryDir m_directory;
    TDocumentFiles m_files{nullptr};
};

// A record for nodes that tests make themselves.
TVlSceneItem SceneItem(const char* name, const char* alias, const char* value = "", std::int32_t id = -1);

// The names of the directories below tests/data/scenes/`kind`.
QStringList SceneCases(const QString& kind);
