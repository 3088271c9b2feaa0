#pragma once

#include <QString>

#include <string>
#include <string_view>

// An attribute as the parser gives it. Both are UTF-8 and live only during the call.
struct TXmlAttribute
{
    std::string_view Name;
    std::string_view Value;
};

// The attributes of one element, in document order. Lives only during the call.
class TXmlAttributes
{
public:
    class TIterator
    {
    public:
        TIterator(const unsigned char** at, int remaining) : m_at(at), m_remaining(remaining) {}

        TXmlAttribute operator*();
        TIterator& operator++();
        bool operator!=(const TIterator& other) const { return m_remaining != other.m_remaining; }

    private:
        const unsigned char** m_at;
        int m_remaining;
        std::string m_qualified; // the name of an attribute whose prefix is not declared
    };

    TXmlAttributes(const unsigned char** attributes, int count) : m_attributes(attributes), m_count(count) {}

    TIterator begin() const { return {m_attributes, m_count}; }
    TIterator end() const { return {nullptr, 0}; }

private:
    const unsigned char** m_attributes;
    int m_count;
};

// What becomes of an element whose begin a visitor has seen.
enum class TXmlStep : quint8
{
    Enter, // the elements inside follow, then EndElement
    Skip,  // with everything inside
    Text,  // TakeText gets it whole, as text; the elements inside are not visited
};

// Receives one document while it is read.
class IXmlVisitor
{
public:
    virtual ~IXmlVisitor() = default;

    // The root element; false refuses the document.
    virtual bool BeginRoot(std::string_view name, const TXmlAttributes& attributes) = 0;
    // An element directly inside the root or the innermost element that was entered.
    virtual TXmlStep BeginElement(std::string_view name, const TXmlAttributes& attributes) = 0;
    // The end of an element that was entered.
    virtual void EndElement() {}
    // An element in the parser's own form: attributes in their order, values in double quotes, an empty element closed
    // by "/>". In the system's code page.
    virtual void TakeText(const QString&) {}
};

// Names of elements and attributes compare without regard to case.
bool SameXmlName(std::string_view a, std::string_view b);

// An attribute's text in the system's code page.
QString XmlText(std::string_view value);

// Reads a document into `visitor` and returns true when it is well formed to its end and its root was not refused.
// Otherwise what the visitor received must be thrown away. Never loads anything else, from disk or network: a document
// that refers to entities of its own is refused, and so is one in which elements that are entered nest more than 256
// deep below the root. Nothing else is limited: neither sizes, nor how deep skipped elements and those taken as text
// nest. Never throws for bad input.
bool ReadXmlFile(const QString& path, IXmlVisitor& visitor);

// Sets libxml2 up and cleans it up again; called once for the package, because the library's state belongs to the
// process.
void InitializeXml();
void FinalizeXml();
