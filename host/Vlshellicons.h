#pragma once

#include "Vlshellitems.h"

#include <QFileIconProvider>
#include <QHash>
#include <QIcon>
#include <QMimeDatabase>

// The system's icons of items, by their kind and the extension of their name alone: nothing is opened for it. Belongs
// to the model.
class TShellIcons
{
public:
    TShellIcons();

    QIcon IconOf(const TShellEntry& entry);

private:
    QIcon OfExtension(const QByteArray& name);

    QFileIconProvider m_provider;
    QMimeDatabase m_types;
    QIcon m_folder;
    QIcon m_file;
    QString m_theme;                       // that the following are from
    QHash<QByteArray, QIcon> m_extensions; // what was found once
};
