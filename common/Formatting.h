#pragma once

#include "LineFinder.h"
#include "Vlcodepage.h"
#include "Vlerrors.h"

#include <QIODevice>
#include <QString>

#include <fmt/printf.h>

#include <string>
#include <type_traits>

// Fills the fixed format strings (%s and %d), which stand in the code exactly as documents and captions need them.

// Formats a text for the user.
template <class... TArguments> QString FormatText(const char* format, const TArguments&... arguments)
{
    const auto argument = [](const auto& value) {
        if constexpr (std::is_convertible_v<decltype(value), QString>)
            return QString(value).toStdString();
        else
            return value;
    };
    return QString::fromStdString(fmt::sprintf(format, argument(arguments)...));
}

// Formats a resource text, whose format is known at run time only.
QString FormatText(const QString& format, const QString& argument);

// Writes a document line by line in the system's code page, each line with one write of its length. The device stays
// the caller's.
class TLineWriter
{
public:
    explicit TLineWriter(QIODevice& device) : m_device(device), m_finder(qobject_cast<TLineFinder*>(&device)) {}

    // The lines from here on are this node's, for whoever asks with a TLineFinder; null for what belongs to none.
    void BeginNode(const TTreeNode* node)
    {
        if (m_finder)
            m_finder->BeginNode(node);
    }

    // `format` carries its line end. Throws TFileError when the device does not take the line. Texts are inserted raw:
    // the readers of these documents expect them so.
    template <class... TArguments> void Write(const char* format, const TArguments&... arguments)
    {
        m_line.clear();
        fmt::detail::vprintf(
            m_line, fmt::basic_string_view<char>(format),
            fmt::basic_format_args<fmt::printf_context>(fmt::make_printf_args(Argument(arguments)...)));
        if (m_device.write(m_line.data(), static_cast<qint64>(m_line.size())) != static_cast<qint64>(m_line.size()))
            throw TFileError(m_device.errorString());
    }

private:
    static int Argument(int number) { return number; }
    static const char* Argument(const char* text) { return text; }
    static std::string Argument(const QString& text)
    {
        std::string bytes;
        AppendCodePage(text, bytes);
        return bytes;
    }

    QIODevice& m_device;
    TLineFinder* m_finder; // mostly null
    fmt::memory_buffer m_line;
};
