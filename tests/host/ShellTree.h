#pragma once

#include "TestSupport.h"
#include "Vlshellctrls.h"

#include <QDir>
#include <QFile>
#include <QMenu>
#include <QTest>
#include <gtest/gtest.h>

#include <filesystem>

#include <sys/stat.h>

// A shell tree over a temporary folder of its own, and the folder. Items are named by their paths below the root.
class TShellTreeFixture : public testing::Test
{
protected:
    TShellTreeFixture()
    {
        EXPECT_TRUE(QDir(m_directory.path()).mkdir(QStringLiteral("wurzel")));
        m_tree.resize(400, 600);
    }
    // The temporary folder knows no names that are no text.
    ~TShellTreeFixture() override { std::filesystem::remove_all(Root().toStdString()); }

    QString Root() const { return m_directory.filePath(QStringLiteral("wurzel")); }
    QByteArray At(const QByteArray& item) const
    {
        return QFile::encodeName(Root()) + (item.isEmpty() ? "" : "/") + item;
    }
    // By its bytes, which need not be text.
    void MakeFile(const QByteArray& item, const QByteArray& content = "x") const
    {
        std::FILE* file = std::fopen(At(item).constData(), "w");
        ASSERT_NE(file, nullptr) << item.toStdString();
        std::fwrite(content.constData(), 1, static_cast<std::size_t>(content.size()), file);
        std::fclose(file);
    }
    void MakeFolder(const QByteArray& item) const { ASSERT_EQ(mkdir(At(item).constData(), 0755), 0); }
    void Rename(const QByteArray& from, const QByteArray& to) const
    {
        ASSERT_EQ(std::rename(At(from).constData(), At(to).constData()), 0);
    }
    bool Exists(const QByteArray& item) const
    {
        struct stat state
        {};
        return lstat(At(item).constData(), &state) == 0;
    }

    // Shows the tree of what is there by now.
    void Open(bool autoRefresh = false)
    {
        m_tree.SetObjects(soAll);
        m_tree.SetRoot(Root());
        m_tree.SetAutoRefresh(autoRefresh);
        m_tree.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_tree));
        m_tree.activateWindow();
        m_tree.setFocus();
    }
    bool Select(const QByteArray& item) { return m_tree.SelectPath(At(item)); }
    QByteArray Selected() const
    {
        const std::optional<TShellFolder> item = m_tree.SelectedFolder();
        return item ? item->NativePath().mid(At("").size() + 1) : QByteArray("nothing");
    }
    // What is shown below an item that is open, with "*" behind open folders: "a*(b c) d".
    QString Outline() const { return OutlineOf(m_tree.model()->index(0, 0)); }
    QModelIndex Item(const QByteArray& item) const
    {
        QModelIndex index = m_tree.model()->index(0, 0);
        for (const QByteArray& name : item.split('/')) {
            if (!name.isEmpty())
                index = Child(index, QFile::decodeName(name));
        }
        return index;
    }
    QAction* Action(const char* name) const { return m_tree.findChild<QAction*>(QLatin1StringView(name)); }
    QPoint PlaceOf(const QByteArray& item) { return m_tree.visualRect(Item(item)).center(); }
    void WaitFor(const QString& outline)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return Outline() == outline; })) << Outline().toStdString();
    }

    QTemporaryDir m_directory;
    TRecordedMessages m_messages;
    TCustomShellTreeView m_tree;

private:
    QModelIndex Child(const QModelIndex& folder, const QString& name) const
    {
        for (int row = 0; row < m_tree.model()->rowCount(folder); ++row) {
            const QModelIndex child = m_tree.model()->index(row, 0, folder);
            if (child.data(Qt::EditRole).toString() == name)
                return child;
        }
        return {};
    }
    QString OutlineOf(const QModelIndex& folder) const
    {
        QStringList items;
        for (int row = 0; row < m_tree.model()->rowCount(folder); ++row) {
            const QModelIndex child = m_tree.model()->index(row, 0, folder);
            const QString open = QStringLiteral("*(") + OutlineOf(child) + u')';
            items.append(child.data().toString() + (m_tree.isExpanded(child) ? open : QString()));
        }
        return items.join(u' ');
    }
};
