#pragma once

#include "ICmdShellTree.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include <unistd.h>

// A project, a second one beside it, and the file tree of the component, without a window.
class TFileTree : public testing::Test
{
protected:
    TFileTree()
    {
        TProject::Create(OtherRoot(), QStringLiteral("Anderes"));
        Rest();
    }
    // The temporary folder knows no names that are no text.
    ~TFileTree() override { std::filesystem::remove_all(m_project.Root().toStdString()); }

    QString OtherRoot() const { return m_other.filePath(QStringLiteral("Anderes")); }
    QString LogOf(const QString& root) const { return root + QStringLiteral("/actions.log"); }
    // A full path below the project's root.
    QByteArray At(const QByteArray& item) const { return QFile::encodeName(m_project.Root()) + '/' + item; }
    QByteArray AtOther(const QByteArray& item) const { return QFile::encodeName(OtherRoot()) + '/' + item; }

    bool Execute(const QByteArray& command)
    {
        bool handled = false;
        m_component->ExecuteCmd(command.constData(), handled);
        return handled;
    }
    // The pane of the workbench.
    void FollowAndLog() { ASSERT_TRUE(Execute("shelltree://%PRJPATH%?project=1&files=all&log=yes")); }

    TCustomShellTreeView& Tree() const { return *m_component->ShellTree(); }
    QString Root() const { return Tree().Root(); }
    // What was written just now could be written once more without a trace and is told again; after a rest it is not.
    static void Rest() { QTest::qWait(50); }
    // Everything that has happened is in the log.
    void Settle() const
    {
        Rest();
        Tree().DrainChanges();
    }
    // The lines of a log that are new since the last call, without the paths of the project's root.
    QStringList NewLines() { return NewLines(m_project.Root()); }
    QStringList NewLines(const QString& root)
    {
        Settle();
        if (!QFile::exists(LogOf(root)))
            return {};
        const QByteArray content = ReadAll(LogOf(root));
        EXPECT_TRUE(content.endsWith("\r\n"));
        QByteArray fresh = content.mid(m_read[root]);
        m_read[root] = content.size();
        fresh.replace(QFile::encodeName(root) + '/', "");
        fresh.chop(2);
        return fresh.isEmpty() ? QStringList() : QString::fromLatin1(fresh).split(QStringLiteral("\r\n"));
    }
    void Write(const QByteArray& path, const QByteArray& content = "x") const
    {
        std::FILE* file = std::fopen(path.constData(), "w");
        ASSERT_NE(file, nullptr) << path.toStdString();
        std::fwrite(content.constData(), 1, static_cast<std::size_t>(content.size()), file);
        std::fclose(file);
    }
    void Rename(const QByteArray& from, const QByteArray& to) const
    {
        ASSERT_EQ(std::rename(from.constData(), to.constData()), 0);
    }

    TRecordedMessages m_messages;
    TTemporaryProject m_project;
    std::unique_ptr<TICmdShellTreeView> m_component = std::make_unique<TICmdShellTreeView>();

private:
    QTemporaryDir m_other;
    QMap<QString, qsizetype> m_read;
};
