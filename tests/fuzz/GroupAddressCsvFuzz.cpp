#include "DatapointFuzz.h"

// Any file of group addresses that is neither an OPC export nor a document is taken for a table.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return FuzzImport(dkEib, data, size);
}
