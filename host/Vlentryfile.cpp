#include "Vlentryfile.h"

#include "Vlerrors.h"
#include "Vltext.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <optional>

namespace
{

constexpr qsizetype LargestFile = 0x10000;

// What a line can say; the keys of a target are one and the same thing said in three ways.
enum class TField : quint8
{
    Caption,
    Target,
    Category,
    Icon,
    Removable,
};

struct TKey
{
    const char* Name;
    TField Field;
    TEntryKind Kind = TEntryKind::Command; // of a target only
};

// In the order of a new file.
constexpr std::array Keys{
    TKey{"Caption", TField::Caption},
    TKey{"Command", TField::Target, TEntryKind::Command},
    TKey{"File", TField::Target, TEntryKind::File},
    TKey{"Address", TField::Target, TEntryKind::Address},
    TKey{"Category", TField::Category},
    TKey{"Icon", TField::Icon},
    TKey{"Removable", TField::Removable},
};

const TKey* FindKey(QStringView name)
{
    while (name.startsWith(QChar::ByteOrderMark))
        name = name.sliced(1);
    const auto* found = std::find_if(Keys.begin(), Keys.end(), [&](const TKey& key) {
        return name.compare(QLatin1StringView(key.Name), Qt::CaseInsensitive) == 0;
    });
    return found == Keys.end() ? nullptr : found;
}

// The key of a line, null for comments, unknown keys and lines without "=".
const TKey* KeyOf(const QByteArray& line)
{
    const qsizetype equals = line.indexOf('=');
    return equals < 0 || line.trimmed().startsWith('#') ? nullptr
                                                        : FindKey(QString::fromUtf8(line.first(equals)).trimmed());
}

// Programs that join files leave more than one.
QByteArray WithoutByteOrderMark(QByteArray text)
{
    while (text.startsWith("\xEF\xBB\xBF"))
        text = text.sliced(3);
    return text;
}

QString Decode(const QByteArray& text)
{
    if (text.size() > LargestFile)
        throw TUserError(QStringLiteral("Sie ist größer als %1 KiB").arg(LargestFile / 1024));
    // Stateless: nothing follows that could complete a character at the end.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder.decode(WithoutByteOrderMark(text));
    if (decoder.hasError())
        throw TUserError(QStringLiteral("Sie ist kein Text in UTF-8"));
    const bool hasControls = std::any_of(decoded.begin(), decoded.end(), [](QChar c) {
        return c.category() == QChar::Other_Control && c != u'\n' && c != u'\r' && c != u'\t';
    });
    if (hasControls)
        throw TUserError(QStringLiteral("Sie enthält Steuerzeichen"));
    return decoded;
}

bool ParseRemovable(const QString& value)
{
    if (SameText(value, u"yes"))
        return true;
    if (SameText(value, u"no"))
        return false;
    throw TUserError(QStringLiteral("Removable ist weder yes noch no"));
}

// Collects what the lines say; the first line of a key counts.
class TEntryParser
{
public:
    void ParseLine(QStringView line, int number)
    {
        const QStringView trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith(u'#'))
            return;
        const qsizetype equals = trimmed.indexOf(u'=');
        if (equals < 0)
            throw TUserError(QStringLiteral("In Zeile %1 fehlt das Gleichheitszeichen").arg(number));
        if (const TKey* key = FindKey(trimmed.first(equals).trimmed()))
            Take(*key, trimmed.sliced(equals + 1).trimmed().toString());
    }

    TEntryRecord Finish()
    {
        if (m_record.Target.isEmpty())
            throw TUserError(QStringLiteral("Es fehlt, was der Eintrag tut: Command, File oder Address"));
        return m_record;
    }

private:
    void Take(const TKey& key, const QString& value)
    {
        const bool first = !m_seen[static_cast<std::size_t>(key.Field)];
        m_seen[static_cast<std::size_t>(key.Field)] = true;
        if (key.Field == TField::Target && !first && key.Kind != m_record.Kind)
            throw TUserError(QStringLiteral("Command, File und Address schließen einander aus"));
        if (first)
            Set(key, value);
    }

    void Set(const TKey& key, const QString& value)
    {
        switch (key.Field) {
        case TField::Caption:
            m_record.Caption = value;
            break;
        case TField::Target:
            m_record.Kind = key.Kind;
            m_record.Target = value;
            break;
        case TField::Category:
            m_record.Category = value;
            break;
        case TField::Icon:
            m_record.Icon = value;
            break;
        case TField::Removable:
            m_record.Removable = ParseRemovable(value);
            break;
        }
    }

    TEntryRecord m_record;
    std::array<bool, 5> m_seen{};
};

// A value stands on one line.
QByteArray OneLine(const QString& value)
{
    QString line = value;
    line.replace(u'\n', u' ').replace(u'\r', u' ');
    return line.trimmed().toUtf8();
}

QByteArray Value(const TEntryRecord& record, TField field)
{
    switch (field) {
    case TField::Caption:
        return OneLine(record.Caption);
    case TField::Target:
        return OneLine(record.Target);
    case TField::Category:
        return OneLine(record.Category);
    case TField::Icon:
        return OneLine(record.Icon);
    case TField::Removable:
        break;
    }
    return record.Removable ? "yes" : "no";
}

// The line that says a field without its end; nothing for an empty value, which needs no line.
std::optional<QByteArray> LineOf(const TEntryRecord& record, TField field)
{
    const QByteArray value = Value(record, field);
    const auto* key = std::find_if(Keys.begin(), Keys.end(), [&](const TKey& row) {
        return row.Field == field && (field != TField::Target || row.Kind == record.Kind);
    });
    return value.isEmpty() ? std::nullopt : std::optional(QByteArray(key->Name) + '=' + value);
}

// Cuts `text` after each line feed.
QList<QByteArray> SplitLines(const QByteArray& text)
{
    QList<QByteArray> lines;
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype feed = text.indexOf('\n', start);
        const qsizetype end = feed < 0 ? text.size() : feed + 1;
        lines.append(text.mid(start, end - start));
        start = end;
    }
    return lines;
}

// A carriage return at the end of a file would become half of the line's end that is added.
QByteArray WithoutReturns(QByteArray line)
{
    while (line.endsWith('\r'))
        line.chop(1);
    return line;
}

} // namespace

TEntryRecord ParseEntry(const QByteArray& text)
{
    TEntryParser parser;
    int number = 0;
    // A carriage return is part of a line's end, or a blank.
    const QString decoded = Decode(text).replace(u'\r', u' ');
    const QList<QStringView> lines = QStringView(decoded).split(u'\n');
    for (const QStringView line : lines)
        parser.ParseLine(line, ++number);
    return parser.Finish();
}

QByteArray FormatEntry(const TEntryRecord& record, const QByteArray& former)
{
    const QList<QByteArray> lines = SplitLines(WithoutByteOrderMark(former));
    const QByteArray end = former.contains("\r\n") ? "\r\n" : "\n";
    std::array<bool, 5> written{};
    QByteArray text;
    const auto write = [&](TField field) {
        const auto line = LineOf(record, field);
        if (line && !std::exchange(written[static_cast<std::size_t>(field)], true))
            text += *line + end;
    };
    for (const QByteArray& line : lines) {
        if (const TKey* key = KeyOf(line))
            write(key->Field);
        else
            text += line.endsWith('\n') ? line : WithoutReturns(line) + end;
    }
    for (const TKey& key : Keys)
        write(key.Field);
    return text;
}
