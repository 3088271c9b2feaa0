#include "ScheduleEntry.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>

// An input is the text of an entry. What was read from it is built, read and built again: that is always an entry, and
// the same one, unless its value holds something that the reader looks for.
namespace
{

bool IsPlain(const QString& value)
{
    return !value.contains(u'"') && !value.contains(QStringLiteral("enable")) &&
           !value.contains(QStringLiteral("postprocess"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const std::optional<TScheduleEntry> entry = ReadScheduleEntry(text);
    if (!entry)
        return 0;
    if (!entry->Time.isValid())
        std::abort();
    const QString built = ScheduleEntryText(*entry);
    const std::optional<TScheduleEntry> again = ReadScheduleEntry(built);
    if (!again)
        std::abort();
    if (IsPlain(entry->Value) && ScheduleEntryText(*again) != built)
        std::abort();
    return 0;
}
