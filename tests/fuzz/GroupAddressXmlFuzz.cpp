#include "DatapointFuzz.h"

// The input is read as it is and as the content of an export.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray document("<GroupAddress-Export xmlns=\"http://knx.org/xml/ga-export/01\">");
    document.append(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    document.append("</GroupAddress-Export>");
    CheckImport(ReadDatapoints(dkEib, document));
    return FuzzImport(dkEib, data, size);
}
