#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

// The text of a file and the encoding that it was taken for.
struct TDecodedText
{
    QString Text; // without a byte order mark
    QString Encoding;
    QString Doubt;         // what speaks against the encoding that was found; empty for nothing
    qsizetype DoubtAt = 0; // the byte that the doubt is about
    bool Cancelled = false;
};

// Decodes a file. An empty encoding is found out from the content: by a byte order mark, by the pattern of UTF-16, by
// the declaration of an XML document, by being UTF-8 (but for single bytes, perhaps), and else by which code page gives
// German words. What is no character of the encoding becomes U+FFFD. `progress` gets the share that is done, 0 to 1,
// and returns false to stop.
TDecodedText DecodeText(const QByteArray& content, const QString& encoding,
                        const std::function<bool(double done)>& progress = {});

// The names that DecodeText takes, the usual ones first.
QStringList EncodingNames();
