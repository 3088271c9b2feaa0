#pragma once

#include "Datapoints.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

// What holds for every import of bytes: the result is complete, its names and addresses can be shown, and the same
// bytes give the same.
inline void CheckImport(const TImportResult& result)
{
    constexpr qsizetype longestName = 1000;
    for (const TDatapoint& datapoint : result.Datapoints) {
        const bool shown = datapoint.Name.size() <= longestName && !datapoint.Name.contains(u'\n');
        const bool named = !datapoint.Address.isEmpty() && datapoint.Address.size() <= longestName &&
                           !datapoint.Address.contains(u'\n') && !datapoint.Address.contains(u'\r');
        if (!shown || !named || datapoint.Line < 1 || datapoint.EisNumber < 0 || datapoint.EisNumber > 15)
            std::abort();
    }
    for (qsizetype i = 1; i < result.Problems.size(); ++i) {
        if (result.Problems[i].Reason.isEmpty() || result.Problems[i].Line < result.Problems[i - 1].Line)
            std::abort();
    }
    if (!result.Recognised && (!result.Datapoints.isEmpty() || result.Problems.isEmpty()))
        std::abort();
}

// Reads the input as bytes, with the encoding found out, and as text of the code page, where every byte is a character.
inline int FuzzImport(TDatapointKind kind, const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    CheckImport(ReadDatapoints(kind, input));
    TImportOptions options;
    options.Encoding = QStringLiteral("Windows-1252");
    CheckImport(ReadDatapoints(kind, input, options));
    return 0;
}
