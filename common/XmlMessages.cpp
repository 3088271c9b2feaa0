#include "XmlMessages.h"

#include <libxml/xmlerror.h>
#include <libxslt/xsltutils.h>

#include <array>
#include <cstdarg>
#include <cstdio>

namespace
{

// Enough to say what went wrong; a document can cause any number of complaints.
constexpr qsizetype LongestKept = 2000;

QString collected;

void Collect(void*, const char* format, ...)
{
    if (collected.size() >= LongestKept)
        return;
    std::array<char, 1024> buffer{};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    va_end(arguments);
    collected += QString::fromUtf8(buffer.data());
}

} // namespace

TXmlMessages::TXmlMessages()
{
    collected.clear();
    xmlSetGenericErrorFunc(nullptr, Collect);
    xsltSetGenericErrorFunc(nullptr, Collect);
}

TXmlMessages::~TXmlMessages()
{
    xmlSetGenericErrorFunc(nullptr, nullptr);
    xsltSetGenericErrorFunc(nullptr, nullptr);
    collected.clear();
}

QString TXmlMessages::First() const
{
    return collected.section(u'\n', 0, 0, QString::SectionSkipEmpty).simplified();
}
