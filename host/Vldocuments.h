#pragma once

#include "Vlexport.h"

#include <QObject>
#include <QString>

#include <functional>

// How the host learns which documents its components have written.

// Called with the component (may be null) and the path of a document that has just been replaced.
using TDocumentListener = std::function<void(const QObject* source, const QString& path)>;

// Puts `listener` in the place of the previous one, which is returned; none when empty.
VLHOST_API TDocumentListener SetDocumentListener(TDocumentListener listener);

// For components: a document has been written.
VLHOST_API void ReportDocument(const QObject* source, const QString& path);
