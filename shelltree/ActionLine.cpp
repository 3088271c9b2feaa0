#include "ActionLine.h"

#include "Vlcodepage.h"

#include <QFile>
#include <QString>

#include <algorithm>
#include <array>

namespace
{

constexpr QByteArrayView RenamePrefix = "REN \"";
constexpr QByteArrayView Between = "\" \"";
constexpr std::array Prefixes{RenamePrefix, QByteArrayView("PUT \""), QByteArrayView("DEL \""),
                              QByteArrayView("MKDIR \""), QByteArrayView("RMDIR \"")};

QByteArrayView PrefixOf(TShellChangeKind kind)
{
    switch (kind) {
    case scItemRenamed:
    case scFolderRenamed:
        return RenamePrefix;
    case scItemCreated:
    case scItemUpdated:
        return Prefixes[1];
    case scItemDeleted:
        return Prefixes[2];
    case scFolderCreated:
        return Prefixes[3];
    case scFolderRemoved:
        return Prefixes[4];
    }
    return {};
}

bool IsPlain(char c)
{
    return static_cast<signed char>(c) >= 0 && c != '\r' && c != '\n';
}

// One character, which may be a surrogate pair; what the code page has under another number is none of it.
QByteArray CharacterBytes(QStringView character)
{
    const QByteArray bytes = ToCodePage(character);
    const bool isExact = character != u"\r" && character != u"\n" && FromCodePage(bytes) == character;
    return isExact ? bytes : QByteArrayLiteral("?");
}

void AppendPath(TActionLine& line, const QByteArray& path)
{
    if (std::all_of(path.begin(), path.end(), IsPlain)) {
        line.Text += path;
        return;
    }
    // Bytes that are no UTF-8 become characters that the code page does not have.
    const QString text = QString::fromUtf8(path);
    for (qsizetype at = 0; at < text.size();) {
        const bool isPair = text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        const QStringView character = QStringView(text).mid(at, isPair ? 2 : 1);
        const QByteArray bytes = CharacterBytes(character);
        line.IsExact = line.IsExact && (bytes != "?" || character == u"?");
        line.Text += bytes;
        at += character.size();
    }
}

} // namespace

std::optional<TActionLine> MakeActionLine(TShellChangeKind kind, const QByteArray& firstPath,
                                          const QByteArray& secondPath)
{
    const QByteArrayView prefix = PrefixOf(kind);
    if (prefix.isEmpty())
        return std::nullopt;
    TActionLine line{.Text = prefix.toByteArray(), .IsExact = true};
    AppendPath(line, firstPath);
    if (prefix == RenamePrefix) {
        line.Text += Between;
        AppendPath(line, secondPath);
    }
    line.Text += '"';
    return line;
}

TLineRemains ClassifyLastLine(QByteArrayView line)
{
    const auto prefix = std::find_if(Prefixes.begin(), Prefixes.end(),
                                     [&](QByteArrayView candidate) { return line.startsWith(candidate); });
    if (prefix == Prefixes.end())
        return TLineRemains::Foreign;
    // A quote may belong to a name, so only the line end tells that a line was finished.
    return line.endsWith('\r') ? TLineRemains::Complete : TLineRemains::Unfinished;
}
