#include "DatapointFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return FuzzImport(dkVirtual, data, size);
}
