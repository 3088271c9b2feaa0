#include "XmlReading.h"

#include "Vlapputils.h"
#include "Vlcodepage.h"

#include <QFile>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <exception>
#include <memory>

namespace
{

// How the parser lays out one attribute: local name, prefix, URI, begin and end of the value.
constexpr int FieldsPerAttribute = 5;

std::string_view ToView(const xmlChar* text)
{
    return reinterpret_cast<const char*>(text);
}

// A name without its prefix; with it, when the prefix is not declared and hence only a part of the name, which
// `qualified` then holds.
std::string_view NameOf(const xmlChar* local, const xmlChar* prefix, const xmlChar* uri, std::string& qualified)
{
    if (!prefix || uri)
        return ToView(local);
    qualified.append(ToView(prefix)).append(":").append(ToView(local));
    return qualified;
}

struct TParserDeleter
{
    void operator()(xmlParserCtxtPtr context) const
    {
        // The parser keeps declarations in a document of its own, even when nobody asked for one.
        xmlFreeDoc(context->myDoc);
        context->myDoc = nullptr;
        xmlFreeParserCtxt(context);
    }
};

using TParser = std::unique_ptr<xmlParserCtxt, TParserDeleter>;

// What the parser's callbacks work on. An exception of the visitor is kept and thrown on when the parser has returned.
struct TReading
{
    IXmlVisitor& Visitor;
    xmlParserCtxtPtr Context = nullptr;
    int Depth = 0;
    bool Refused = false;
    std::exception_ptr Failure = nullptr;

    void Refuse()
    {
        Refused = true;
        xmlStopParser(Context);
    }
};

void BeginElement(void* data, const xmlChar* local, const xmlChar* prefix, const xmlChar* uri, int, const xmlChar**,
                  int count, int, const xmlChar** values)
{
    auto& reading = *static_cast<TReading*>(data);
    const TXmlAttributes attributes(values, count);
    const int depth = reading.Depth++;
    try {
        std::string qualified;
        const std::string_view name = NameOf(local, prefix, uri, qualified);
        if (depth > 0)
            reading.Visitor.BeginElement(depth, name, attributes);
        else if (!reading.Visitor.BeginRoot(name, attributes))
            reading.Refuse();
    } catch (...) {
        reading.Failure = std::current_exception();
        reading.Refuse();
    }
}

void EndElement(void* data, const xmlChar*, const xmlChar*, const xmlChar*)
{
    --static_cast<TReading*>(data)->Depth;
}

// Only entities that a document declares itself are asked for here. None of our writers makes any, and what cannot be
// expanded must not be lost in silence either. The parser also asks while it reads a declaration: that alone does no
// harm.
xmlEntityPtr RefuseEntity(void* data, const xmlChar*)
{
    auto& reading = *static_cast<TReading*>(data);
    if (reading.Context->inSubset == 0)
        reading.Refuse();
    return nullptr;
}

int ReadBlock(void* file, char* buffer, int length)
{
    return static_cast<int>(static_cast<QFile*>(file)->read(buffer, length));
}

int KeepOpen(void*)
{
    return 0;
}

} // namespace

TXmlAttribute TXmlAttributes::TIterator::operator*()
{
    const auto* begin = reinterpret_cast<const char*>(m_at[3]);
    const auto* end = reinterpret_cast<const char*>(m_at[4]);
    m_qualified.clear();
    return {.Name = NameOf(m_at[0], m_at[1], m_at[2], m_qualified),
            .Value = {begin, static_cast<std::size_t>(end - begin)}};
}

TXmlAttributes::TIterator& TXmlAttributes::TIterator::operator++()
{
    m_at += FieldsPerAttribute;
    --m_remaining;
    return *this;
}

bool SameXmlName(std::string_view a, std::string_view b)
{
    return a.size() == b.size() &&
           xmlStrncasecmp(reinterpret_cast<const xmlChar*>(a.data()), reinterpret_cast<const xmlChar*>(b.data()),
                          static_cast<int>(a.size())) == 0;
}

QString XmlText(std::string_view value)
{
    return CodePageTextFromUtf8(value.data(), static_cast<qsizetype>(value.size()));
}

bool ReadXmlFile(const QString& path, IXmlVisitor& visitor)
{
    QFile file(ToPlatformPath(path));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;

    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = BeginElement;
    handler.endElementNs = EndElement;
    handler.getEntity = RefuseEntity;

    TReading reading{.Visitor = visitor};
    const TParser parser(xmlCreateIOParserCtxt(&handler, &reading, ReadBlock, KeepOpen, &file, XML_CHAR_ENCODING_NONE));
    if (!parser)
        return false;
    reading.Context = parser.get();
    xmlCtxtUseOptions(parser.get(),
                      XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_HUGE | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
    const bool parsed = xmlParseDocument(parser.get()) == 0;
    if (reading.Failure)
        std::rethrow_exception(reading.Failure);
    return parsed && parser->wellFormed && !reading.Refused && file.error() == QFileDevice::NoError;
}

void InitializeXml()
{
    xmlInitParser();
}

void FinalizeXml()
{
    xmlCleanupParser();
}
