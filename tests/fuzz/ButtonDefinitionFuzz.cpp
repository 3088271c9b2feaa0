#include "ButtonDefinition.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

// An input is a definition file. Its names stand on lines of their own, are not empty and hold no "=".
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView content(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QStringList names = ReadButtonNames(content);
    const auto lines = std::count_if(content.begin(), content.end(), [](char c) { return c == '\n' || c == '\r'; }) + 1;
    if (names.size() > lines)
        std::abort();
    for (const QString& name : names) {
        if (name.isEmpty() || name != name.trimmed() || name.contains(u'=') || name.contains(u'\n'))
            std::abort();
    }
    return 0;
}
