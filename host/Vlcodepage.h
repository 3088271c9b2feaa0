#pragma once

#include "Vlexport.h"

#include <QByteArray>
#include <QString>

#include <string>

// The system's single-byte code page, Windows-1252, is known here and nowhere else. The five bytes that the code page
// leaves open (81, 8D, 8F, 90, 9D) stand for the control characters of the same number, so that every byte survives.

// One byte a character; what the code page lacks becomes "?" (a surrogate pair becomes one "?").
VLHOST_API QByteArray ToCodePage(QStringView text);

// Appends the bytes of `text` to `bytes`; for writers that reuse their buffer.
VLHOST_API void AppendCodePage(QStringView text, std::string& bytes);

VLHOST_API QString FromCodePage(QByteArrayView bytes);

// What remains of UTF-8 text that came out of a document when it is taken into the code page: characters that the code
// page lacks are "?", and U+0080..U+009F, which a declaration as ISO-8859-1 made of bytes, become the characters that
// these bytes are in Windows-1252 ("€" for U+0080).
VLHOST_API QString CodePageTextFromUtf8(const char* utf8, qsizetype length);
