#include "DatapointFuzz.h"

// Register lists; virtual variables are so simple that they go along.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzImport(dkVirtual, data, size);
    return FuzzImport(dkModbus, data, size);
}
