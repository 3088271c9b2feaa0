#pragma once

#include <QStringView>

class TImportCollector;

// Whether `text` is an XML document of any kind, rather than text that begins with a name in angle brackets.
bool IsXml(QStringView text);

// The engineering tool's XML export of group addresses, with ranges within ranges. Nothing else is ever loaded:
// external entities and document types stay what they are, names. What stands before an error in the document is read.
// Says why and recognises nothing when it is another document.
void ReadGroupAddressXml(QStringView text, TImportCollector& collector);
