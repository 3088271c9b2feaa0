#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// The text of a file and the encoding that it was taken for.
struct TDecodedText
{
    QString Text; // without a byte order mark
    QString Encoding;
};

// Decodes a file. An empty encoding is found out from the content: by a byte order mark, by the pattern of UTF-16, by
// the declaration of an XML document, by being valid UTF-8, and else by which code page gives German words. What is no
// character of the encoding becomes U+FFFD.
TDecodedText DecodeText(const QByteArray& content, const QString& encoding);

// The names that DecodeText takes, the usual ones first.
QStringList EncodingNames();
