#pragma once

#include <QStringList>

class TPane;

enum class TModifiedAnswer : quint8
{
    Export,
    Discard,
    Cancel,
};

// Asks the user what becomes of changes that would be lost. Tests answer by themselves.
class IModifiedAsker
{
public:
    virtual ~IModifiedAsker();

    // `titles` are those of the modified panes, at least one.
    virtual TModifiedAnswer Ask(const QStringList& titles) = 0;
};

// True when nothing stands in the way of closing `panes`: none is modified, or the user gave their changes up, or all
// of them were exported and no error was reported meanwhile.
bool MayLose(const QList<TPane*>& panes, IModifiedAsker& asker);
