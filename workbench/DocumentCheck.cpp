#include "DocumentCheck.h"

#include "Folders.h"
#include "MessagePane.h"
#include "Pane.h"
#include "Panes.h"
#include "Vlapputils.h"
#include "Vlcodepage.h"
#include "Vlmessages.h"
#include "WindowMessages.h"

#include <QFile>
#include <QFileInfo>

#include <libxml/parser.h>

#include <algorithm>
#include <memory>

namespace
{

constexpr qsizetype LongestText = 120;

struct TDocumentDeleter
{
    void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
};

// Keeps the first complaint of the parser while it lives: after a broken tag it goes on and ends with another one.
class TFirstError
{
public:
    TFirstError() { xmlSetStructuredErrorFunc(this, &TFirstError::Take); }
    ~TFirstError() { xmlSetStructuredErrorFunc(nullptr, nullptr); }
    TFirstError(const TFirstError&) = delete;
    TFirstError& operator=(const TFirstError&) = delete;

    int Line = 0;
    int Column = 0;
    QString Reason;

private:
    static void Take(void* data, xmlErrorPtr error)
    {
        auto* first = static_cast<TFirstError*>(data);
        if (first->Line > 0 || error->level < XML_ERR_ERROR)
            return;
        first->Line = error->line;
        first->Column = error->int2;
        first->Reason = QString::fromUtf8(error->message).simplified();
    }
};

// The part of a line around a column, both from 1.
QString TextAt(const QByteArray& content, int line, int column)
{
    const QByteArray bytes = content.split('\n').value(line - 1).trimmed();
    const QString text = FromCodePage(bytes);
    const qsizetype begin = std::max<qsizetype>(0, column - LongestText / 2);
    return text.size() <= LongestText ? text : text.mid(std::min(begin, text.size() - LongestText), LongestText);
}

// What the component has in that line; empty when it does not say.
TDocumentPlace PlaceIn(QWidget* component, const QString& path, int line)
{
    TDocumentPlace place;
    if (component && component->metaObject()->indexOfMethod("DocumentPlace(QString,int)") >= 0)
        QMetaObject::invokeMethod(component, "DocumentPlace", Qt::DirectConnection, Q_RETURN_ARG(TDocumentPlace, place),
                                  Q_ARG(QString, path), Q_ARG(int, line));
    return place;
}

} // namespace

std::optional<TDocumentFault> FindFault(const QString& path)
{
    QFile file(ToPlatformPath(path));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray content = file.readAll();
    const TFirstError first;
    const std::unique_ptr<xmlDoc, TDocumentDeleter> document(
        xmlReadMemory(content.constData(), static_cast<int>(content.size()), nullptr, nullptr,
                      XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    if (document)
        return std::nullopt;
    return TDocumentFault{
        .Line = first.Line, .Reason = first.Reason, .Text = TextAt(content, first.Line, first.Column)};
}

TDocumentCheck::TDocumentCheck(TMessagePane& messages, const TPanes& panes)
    : m_messages(messages),
      m_panes(panes),
      m_previous(SetDocumentListener([this](const QObject* source, const QString& path) { Check(source, path); }))
{
}

TDocumentCheck::~TDocumentCheck()
{
    SetDocumentListener(m_previous);
}

void TDocumentCheck::Check(const QObject* source, const QString& path) const
{
    const std::optional<TDocumentFault> fault = FindFault(path);
    if (!fault)
        return;
    const QString text = QStringLiteral("\"%1\", Zeile %2: Die Datei ist so nicht lesbar (%3): %4")
                             .arg(QFileInfo(ToPlatformPath(path)).fileName())
                             .arg(fault->Line)
                             .arg(fault->Reason, fault->Text);
    // Where nobody can follow a line, it is a note like any other.
    if (!IsInteractive()) {
        Note(source, text);
        return;
    }
    const TPane* pane = m_panes.PaneOf(source);
    // Asked for now, while the tree is still the one that was written.
    const TDocumentPlace place = pane ? PlaceIn(pane->Component(), path, fault->Line) : TDocumentPlace();
    m_messages.AddFault(NoteLine(m_panes, source, text), pane ? pane->Id() : QString(), place);
}
