#include "XmlReading.h"

#include "Vlapputils.h"
#include "Vlcodepage.h"

#include <QFile>

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>

#include <exception>
#include <memory>
#include <utility>

namespace
{

// How the parser lays out one attribute: local name, prefix, URI, begin and end of the value.
constexpr int FieldsPerAttribute = 5;

// How deep the elements below the root that are entered may nest: the parser's own default limit for documents, which
// spares visitors and trees what no editor ever made.
constexpr int MaxDepth = 256;

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

struct TBufferDeleter
{
    void operator()(xmlBufferPtr buffer) const { xmlBufferFree(buffer); }
};

// What the parser's callbacks work on. An exception of the visitor is kept and thrown on when the parser has returned.
struct TReading
{
    IXmlVisitor& Visitor;
    xmlParserCtxtPtr Context = nullptr;
    int Depth = 0;              // of the elements that were entered, with the root
    int Inside = 0;             // depth inside an element that is skipped or taken as text, from 1
    xmlNodePtr Taken = nullptr; // the element that is taken as text, while it grows
    std::unique_ptr<xmlBuffer, TBufferDeleter> Buffer = nullptr;
    bool Refused = false;
    std::exception_ptr Failure = nullptr;

    void Refuse()
    {
        Refused = true;
        xmlStopParser(Context);
    }

    // Calls the visitor.
    template <class TFunction> void Visit(TFunction&& function)
    {
        try {
            function();
        } catch (...) {
            Failure = std::current_exception();
            Refuse();
        }
    }
};

TReading& ReadingOf(void* data)
{
    return *static_cast<TReading*>(data);
}

// The parser's own document, which stays empty but for an element that is taken as text. The parser would note the
// declared encoding at the end only; a dump asks it earlier, which characters it may leave as they are.
void BeginDocument(void* data)
{
    xmlParserCtxtPtr context = ReadingOf(data).Context;
    xmlSAX2StartDocument(context);
    xmlDocPtr document = context->myDoc;
    if (document && !document->encoding && context->input->encoding)
        document->encoding = xmlStrdup(context->input->encoding);
}

void BeginElement(void* data, const xmlChar* local, const xmlChar* prefix, const xmlChar* uri, int namespaceCount,
                  const xmlChar** namespaces, int count, int defaulted, const xmlChar** values)
{
    TReading& reading = ReadingOf(data);
    TXmlStep step = TXmlStep::Enter;
    if (reading.Inside == 0) {
        reading.Visit([&] {
            const TXmlAttributes attributes(values, count);
            std::string qualified;
            const std::string_view name = NameOf(local, prefix, uri, qualified);
            if (reading.Depth > 0)
                step = reading.Visitor.BeginElement(name, attributes);
            else if (!reading.Visitor.BeginRoot(name, attributes))
                reading.Refuse();
        });
    }
    if (reading.Inside == 0 && step == TXmlStep::Enter) {
        if (reading.Depth > MaxDepth)
            reading.Refuse();
        ++reading.Depth;
        return;
    }
    ++reading.Inside;
    if (!reading.Taken && step != TXmlStep::Text)
        return;
    xmlSAX2StartElementNs(reading.Context, local, prefix, uri, namespaceCount, namespaces, count, defaulted, values);
    if (!reading.Taken)
        reading.Taken = reading.Context->node;
}

// The dump is what the parser makes of the element; nothing of it stays behind.
QString TakeNode(TReading& reading)
{
    constexpr std::size_t InitialSize = 1024;
    if (!reading.Buffer)
        reading.Buffer.reset(xmlBufferCreateSize(InitialSize));
    xmlNodePtr node = std::exchange(reading.Taken, nullptr);
    QString text;
    if (xmlNodeDump(reading.Buffer.get(), reading.Context->myDoc, node, 0, 0) > 0)
        text = XmlText(ToView(xmlBufferContent(reading.Buffer.get())));
    xmlBufferEmpty(reading.Buffer.get());
    xmlUnlinkNode(node);
    xmlFreeNode(node);
    return text;
}

void EndElement(void* data, const xmlChar* local, const xmlChar* prefix, const xmlChar* uri)
{
    TReading& reading = ReadingOf(data);
    if (reading.Inside > 0) {
        if (reading.Taken)
            xmlSAX2EndElementNs(reading.Context, local, prefix, uri);
        if (--reading.Inside == 0 && reading.Taken)
            reading.Visit([&] { reading.Visitor.TakeText(TakeNode(reading)); });
        return;
    }
    if (--reading.Depth > 0)
        reading.Visit([&] { reading.Visitor.EndElement(); });
}

// What is no element counts only inside one that is taken as text.

void TakeCharacters(void* data, const xmlChar* text, int length)
{
    if (ReadingOf(data).Taken)
        xmlSAX2Characters(ReadingOf(data).Context, text, length);
}

void TakeCData(void* data, const xmlChar* text, int length)
{
    if (ReadingOf(data).Taken)
        xmlSAX2CDataBlock(ReadingOf(data).Context, text, length);
}

void TakeComment(void* data, const xmlChar* text)
{
    if (ReadingOf(data).Taken)
        xmlSAX2Comment(ReadingOf(data).Context, text);
}

void TakeInstruction(void* data, const xmlChar* target, const xmlChar* text)
{
    if (ReadingOf(data).Taken)
        xmlSAX2ProcessingInstruction(ReadingOf(data).Context, target, text);
}

// Only entities that a document declares itself are asked for here. None of our writers makes any, and what cannot be
// expanded must not be lost in silence either. The parser also asks while it reads a declaration: that alone does no
// harm.
xmlEntityPtr RefuseEntity(void* data, const xmlChar*)
{
    TReading& reading = ReadingOf(data);
    if (reading.Context->inSubset == 0)
        reading.Refuse();
    return nullptr;
}

xmlSAXHandler MakeHandler()
{
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startDocument = BeginDocument;
    handler.startElementNs = BeginElement;
    handler.endElementNs = EndElement;
    handler.getEntity = RefuseEntity;
    handler.characters = TakeCharacters;
    handler.ignorableWhitespace = TakeCharacters;
    handler.cdataBlock = TakeCData;
    handler.comment = TakeComment;
    handler.processingInstruction = TakeInstruction;
    return handler;
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

    xmlSAXHandler handler = MakeHandler();
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
