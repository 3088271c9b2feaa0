#pragma once

#include <QTemporaryDir>

// Settings of the user in a directory that is gone afterwards.
class TTemporarySettings
{
public:
    TTemporarySettings();

private:
    QTemporaryDir m_directory;
};
