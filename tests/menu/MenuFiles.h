#pragma once

#include "MenuDocument.h"
#include "TestSupport.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <optional>

// A document with one line for each of `lines`: the declaration, the root and CR LF everywhere.
QByteArray MenuText(const QList<QByteArray>& lines = {}, const QByteArray& logo = {});
QByteArray LinksText(const QList<QByteArray>& lines = {});

// What the writers make of a tree.
QByteArray WrittenMenu(const TMenuNode* root, const TMenuHeader& header = {});
QByteArray WrittenLinks(const TMenuNode* root);

// One line for each node: its caption, indented by its level.
QStringList OutlineOf(const TMenuNodes& nodes);

// Everything that a record holds, in one line.
QString RecordOf(const TVlMenuItem* item);
QString RecordOf(const TTreeNode* node);

// A root that got what was read, as a tree does.
std::unique_ptr<TMenuNode> WithItems(TMenuNodes items);
std::unique_ptr<TMenuNode> WithLinks(TMenuNodes links);

// A directory with one document.
class TMenuFile
{
public:
    QString Directory() const { return m_directory.path(); }
    QString Path(const QString& name = QStringLiteral("menu.xml")) const { return m_directory.filePath(name); }
    void Write(const QByteArray& content) const { WriteAll(Path(), content); }

    std::optional<TMenuContent> Menu(const QByteArray& content) const;
    std::optional<TMenuNodes> Links(const QByteArray& content) const;

private:
    QTemporaryDir m_directory;
};

// The names of the documents below tests/data/menu/`kind`, without ".xml".
QStringList MenuCases(const QString& kind);
QByteArray MenuCase(const QString& kind, const QString& name);
