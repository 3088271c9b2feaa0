#include "Vlentryfile.h"

#include "Vlerrors.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>

// An input is the file of a navigation entry. It is an entry or it is refused with a reason; an entry that is written
// over it is read again as it was, and writing it once more changes nothing.
namespace
{

std::optional<TEntryRecord> Parse(const QByteArray& text)
{
    try {
        return ParseEntry(text);
    } catch (const TUserError& error) {
        if (error.Message().isEmpty())
            std::abort();
    }
    return std::nullopt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto record = Parse(text);
    if (!record)
        return 0;
    const QByteArray written = FormatEntry(*record, text);
    // What nobody has written by hand may make the file too large by the keys that were missing.
    const auto again = Parse(written);
    if (again && (*again != *record || FormatEntry(*record, written) != written))
        std::abort();
    if (!again && written.size() <= text.size())
        std::abort();
    if (Parse(FormatEntry(*record)) != record)
        std::abort();
    return 0;
}
