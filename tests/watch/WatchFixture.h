#pragma once

#include "Replayer.h"
#include "TestSupport.h"
#include "Vlfilewatch.h"

#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <vector>

// Expected lines.
QStringList Lines(std::initializer_list<const char*> lines);

// A folder that is watched, and what is told of it.
class FileWatchTest : public testing::Test
{
protected:
    FileWatchTest();

    std::string Path(const std::string& relative) const;
    void Write(const std::string& relative, const std::string& content) const;
    void MakeFolder(const std::string& relative) const;
    void Rename(const std::string& from, const std::string& to) const;
    void Remove(const std::string& relative) const;

    // Begins to watch, and copies the tree for the replayer.
    void Start();
    // Drains the watch and gives what was told since the last call, a line each, with paths relative to the root.
    QStringList Told();
    // Waits, without draining, until so many changes were told in all.
    bool IsTold(size_t count) const;
    // Replays all that was told onto the copy; empty when that equals the tree.
    std::string Differences();

    QTemporaryDir m_directory;
    std::string m_root;
    TFileWatch m_watch;
    std::vector<TShellChange> m_changes;

private:
    size_t m_told = 0;
};
