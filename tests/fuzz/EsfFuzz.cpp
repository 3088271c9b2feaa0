#include "DatapointFuzz.h"

// The title and the first line make sure that the input is taken for an OPC export.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray input("Haus\nHaus.Licht.1/0/1\tLicht\tEIS 1 'Schalten' (1 Bit)\tLow\t\n");
    input.append(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    return FuzzImport(dkEib, reinterpret_cast<const std::uint8_t*>(input.constData()),
                      static_cast<std::size_t>(input.size()));
}
