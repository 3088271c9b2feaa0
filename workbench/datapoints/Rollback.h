#pragma once

#include <QString>

#include <functional>
#include <vector>

// Takes back the steps of an operation that did not come to its end. Each step that succeeded adds how it is undone;
// unless Dismiss was called, the destructor undoes them, the last one first.
class TRollback
{
public:
    TRollback() = default;
    ~TRollback();
    TRollback(const TRollback&) = delete;
    TRollback& operator=(const TRollback&) = delete;

    void Add(std::function<void()> undo) { m_undos.push_back(std::move(undo)); }
    void Dismiss() { m_undos.clear(); }

private:
    std::vector<std::function<void()>> m_undos;
};

// Makes a directory with everything above it; what was made goes again if it is empty by then. Throws TFileError.
void MakeDirectory(const QString& path, TRollback& rollback);

// To be called before a file is written: it then gets its present content back, or goes if there was none. Throws
// TFileError.
void KeepContent(const QString& path, TRollback& rollback);
