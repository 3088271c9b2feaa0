#include "GroupAddressXmlReader.h"

#include "EisTypes.h"
#include "GroupAddress.h"
#include "ImportCollector.h"

#include <QXmlStreamReader>

#include <algorithm>

namespace
{

// Followed by the number of the format's version.
constexpr QStringView ExportNamespace = u"http://knx.org/xml/ga-export/";
constexpr QStringView KnownVersion = u"01";
constexpr QStringView RootName = u"GroupAddress-Export";

// Exports have two levels of ranges; free addresses may have some more.
constexpr int DeepestRange = 16;

class TGroupAddressXmlReader
{
public:
    TGroupAddressXmlReader(QStringView text, TImportCollector& collector)
        : m_size(static_cast<double>(text.size())), m_xml(text.toString()), m_collector(collector)
    {
    }

    void Read()
    {
        if (!ReadRoot())
            return;
        m_collector.SetFormat(QStringLiteral("Gruppenadressen (XML)"));
        while (!m_xml.atEnd() && m_collector.Advance(static_cast<double>(m_xml.characterOffset()) / m_size))
            TakeToken(m_xml.readNext());
        if (m_xml.hasError())
            ReportError();
    }

private:
    bool ReadRoot()
    {
        while (!m_xml.atEnd() && !m_xml.isStartElement()) {
            if (m_xml.readNext() == QXmlStreamReader::DTD) {
                m_collector.Report(m_xml.lineNumber(),
                                   QStringLiteral("Das Dokument hat eine Dokumenttyp-Definition; was "
                                                  "sie nachladen will, wird nicht gelesen."));
            }
        }
        if (m_xml.hasError()) {
            ReportError();
            return false;
        }
        if (m_xml.name() == RootName && m_xml.namespaceUri().startsWith(ExportNamespace)) {
            TakeVersion();
            return true;
        }
        m_collector.Report(
            0,
            QStringLiteral("Das XML-Dokument %1 ist kein Export von Gruppenadressen.").arg(QuotedPiece(m_xml.name())));
        return false;
    }

    void TakeVersion()
    {
        m_namespace = m_xml.namespaceUri().toString();
        const QStringView version = QStringView(m_namespace).sliced(ExportNamespace.size());
        if (version == KnownVersion)
            return;
        m_collector.Report(
            m_xml.lineNumber(),
            QStringLiteral("Das Dokument hat die Fassung %1, bekannt ist %2. Was daran anders ist, fehlt "
                           "möglicherweise.")
                .arg(QuotedPiece(version), QuotedPiece(KnownVersion)));
    }

    void TakeToken(QXmlStreamReader::TokenType token)
    {
        if (token == QXmlStreamReader::EndElement && m_depth > 0)
            EndRange();
        if (token != QXmlStreamReader::StartElement)
            return;
        const bool ours = m_xml.namespaceUri() == m_namespace;
        if (ours && m_xml.name() == u"GroupRange")
            BeginRange();
        else if (ours && m_xml.name() == u"GroupAddress")
            ReadAddress();
        else
            SkipElement();
    }

    QString Attribute(QLatin1String name) const { return m_xml.attributes().value(name).toString(); }

    void BeginRange()
    {
        if (++m_depth > DeepestRange) {
            if (m_depth == DeepestRange + 1)
                m_collector.Report(
                    m_xml.lineNumber(),
                    QStringLiteral("Die Bereiche sind zu tief geschachtelt; die inneren werden nicht gezeigt."));
            return;
        }
        const QString name = m_collector.DisplayName(Attribute(QLatin1String("Name")), m_xml.lineNumber());
        m_group.append(name.isEmpty() ? RangeWithoutName() : name);
    }

    QString RangeWithoutName()
    {
        const QString range =
            Attribute(QLatin1String("RangeStart")) + QStringLiteral("–") + Attribute(QLatin1String("RangeEnd"));
        m_collector.Report(m_xml.lineNumber(),
                           QStringLiteral("Der Bereich %1 hat keinen Namen und wird mit seinen Nummern gezeigt.")
                               .arg(QuotedPiece(range)));
        return m_collector.DisplayName(range, m_xml.lineNumber());
    }

    void EndRange()
    {
        if (m_depth-- <= DeepestRange)
            m_group.removeLast();
    }

    void SkipElement()
    {
        m_collector.Report(
            m_xml.lineNumber(),
            QStringLiteral("Das Element %1 ist unbekannt und wird übergangen.").arg(QuotedPiece(m_xml.name())));
        m_xml.skipCurrentElement();
    }

    void ReadAddress()
    {
        const qsizetype line = m_xml.lineNumber();
        const QString text = Attribute(QLatin1String("Address"));
        const auto address = ParseGroupAddress(text);
        if (address && !address->IsRange() && IsOnBus(*address))
            AddDatapoint(*address, line);
        else
            m_collector.Report(line, AddressFault(text));
        m_xml.skipCurrentElement();
    }

    void AddDatapoint(const TGroupAddress& address, qsizetype line)
    {
        const QString types = Attribute(QLatin1String("DPTs"));
        m_collector.Add({.Address = AddressText(address),
                         .Name = Attribute(QLatin1String("Name")),
                         .Group = m_group,
                         .EisNumber = m_collector.KnownType(EisOfDatapointTypes(types), types, line)},
                        line);
    }

    void ReportError()
    {
        const bool ended = m_xml.error() == QXmlStreamReader::PrematureEndOfDocumentError;
        const QString reason = ended ? QStringLiteral("Das XML-Dokument bricht hier ab.")
                                     : QStringLiteral("Das XML-Dokument ist ab hier nicht lesbar (Spalte %1).")
                                           .arg(m_xml.columnNumber() + 1);
        m_collector.Report(m_xml.lineNumber(), reason);
    }

    double m_size;
    QXmlStreamReader m_xml;
    TImportCollector& m_collector;
    QString m_namespace;
    QStringList m_group;
    int m_depth = 0;
};

// Whether the closing tag of that element is the last of a text.
bool EndsElement(QStringView text, QStringView name)
{
    if (name.isEmpty() || !text.endsWith(u'>'))
        return false;
    text = text.chopped(1).trimmed();
    return text.endsWith(name) && text.chopped(name.size()).endsWith(u"</");
}

} // namespace

bool IsXml(QStringView text)
{
    text = text.trimmed();
    if (!text.startsWith(u'<'))
        return false;
    for (const QStringView beginning : {QStringView(u"<?xml"), QStringView(u"<!DOCTYPE"), QStringView(u"<!--")}) {
        if (text.startsWith(beginning, Qt::CaseInsensitive))
            return true;
    }
    const auto endsName = [](QChar c) { return c.isSpace() || c == u'/' || c == u'>'; };
    const auto* const nameEnd = std::find_if(text.begin() + 1, text.end(), endsName);
    const QStringView name = text.sliced(1, nameEnd - text.begin() - 1);
    const QStringView tag = text.first(text.indexOf(u'>') + 1);
    return name.sliced(name.indexOf(u':') + 1) == RootName || tag.contains(u"xmlns") || EndsElement(text, name);
}

void ReadGroupAddressXml(QStringView text, TImportCollector& collector)
{
    TGroupAddressXmlReader(text, collector).Read();
}
