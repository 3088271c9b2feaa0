#include "Vlcolors.h"

#include "Vltext.h"

#include <QApplication>
#include <QWidget>

#include <array>
#include <limits>

namespace
{

constexpr TColor SystemFlag = 0x80000000;

// What the platform's system colours, by their index, are in a palette.
constexpr std::array SystemRoles{
    QPalette::Mid,             // 0 scroll bar
    QPalette::Dark,            // 1 desktop
    QPalette::Highlight,       // 2 active caption
    QPalette::Mid,             // 3 inactive caption
    QPalette::Window,          // 4 menu
    QPalette::Base,            // 5 window
    QPalette::Shadow,          // 6 window frame
    QPalette::WindowText,      // 7 menu text
    QPalette::Text,            // 8 window text
    QPalette::HighlightedText, // 9 caption text
    QPalette::Mid,             // 10 active border
    QPalette::Mid,             // 11 inactive border
    QPalette::Dark,            // 12 application workspace
    QPalette::Highlight,       // 13 highlight
    QPalette::HighlightedText, // 14 highlighted text
    QPalette::Button,          // 15 button face
    QPalette::Dark,            // 16 button shadow
    QPalette::PlaceholderText, // 17 grey text
    QPalette::ButtonText,      // 18 button text
    QPalette::Dark,            // 19 inactive caption text
    QPalette::Light,           // 20 button highlight
    QPalette::Shadow,          // 21 dark 3D shadow
    QPalette::Midlight,        // 22 3D light
    QPalette::ToolTipText,     // 23 hint text
    QPalette::ToolTipBase,     // 24 hint background
};

// What is set on `palette`, but for one role.
QPalette WithoutRole(const QPalette& palette, QPalette::ColorRole left)
{
    QPalette result;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (int i = 0; i < QPalette::NColorRoles; ++i) {
            const auto role = static_cast<QPalette::ColorRole>(i);
            if (role != left && palette.isBrushSet(group, role))
                result.setBrush(group, role, palette.brush(group, role));
        }
    }
    return result;
}

} // namespace

TColor StrToColorDef(QStringView text, TColor defaultColor)
{
    if (const auto value = StrToInt(text))
        return static_cast<TColor>(*value);
    // Decimal system colours lie above the signed range.
    while (text.startsWith(u' '))
        text = text.mid(1);
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return defaultColor;
    }
    bool ok = false;
    const qulonglong value = text.toULongLong(&ok);
    return ok && value <= std::numeric_limits<TColor>::max() ? static_cast<TColor>(value) : defaultColor;
}

std::optional<QColor> ToQColor(TColor color, const QPalette& palette)
{
    if (color & SystemFlag) {
        const TColor index = color & ~SystemFlag;
        return palette.color(index < SystemRoles.size() ? SystemRoles[index] : QPalette::Window);
    }
    if (color == DefaultColor)
        return std::nullopt;
    return QColor(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                  static_cast<int>(color >> 16 & 0xFF));
}

void ApplyColor(QWidget* widget, QPalette::ColorRole role, TColor color)
{
    // What a widget's own palette does not set comes from its parents, so a default colour is had back by leaving it
    // out.
    QPalette own = WithoutRole(widget->palette(), role);
    if (const auto shown = ToQColor(color, QApplication::palette(widget)))
        own.setColor(role, *shown);
    widget->setPalette(own);
}
