#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

// The file that says which buttons a folder's bar has, in which order.
inline const auto ButtonDefinitionFile = QStringLiteral("__CmdButtons.def");

// The names in the section CMDBUTTONS of a definition file, which is Windows-1252, in its order. A name is what stands
// before the "=" of a line, or the whole line; nothing is unescaped. Lines that begin with ";" are comments.
QStringList ReadButtonNames(QByteArrayView content);
