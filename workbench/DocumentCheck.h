#pragma once

#include "Vldocuments.h"

#include <QString>

#include <optional>

class TMessagePane;
class TPanes;

// What keeps a reader from reading a document.
struct TDocumentFault
{
    int Line = 0;   // from 1
    QString Reason; // the parser's own words
    QString Text;   // what stands at that place, cut to a readable length
};

// Nothing for a document that is well formed, and for one that cannot be opened. Never fetches anything else.
std::optional<TDocumentFault> FindFault(const QString& path);

// Checks every document that a component writes while this lives: texts are written raw, so a name with a quote makes a
// file that its reader refuses. Such a document is listed in the message pane, by a line that leads to the pane of its
// editor and to what stands in the faulty line. Nothing is changed.
class TDocumentCheck
{
public:
    // Both must outlive this.
    TDocumentCheck(TMessagePane& messages, const TPanes& panes);
    ~TDocumentCheck();
    TDocumentCheck(const TDocumentCheck&) = delete;
    TDocumentCheck& operator=(const TDocumentCheck&) = delete;

private:
    void Check(const QObject* source, const QString& path) const;

    TMessagePane& m_messages;
    const TPanes& m_panes;
    TDocumentListener m_previous;
};
