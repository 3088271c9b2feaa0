#include "RegisterTypes.h"

#include "ColumnNames.h"
#include "EisTypes.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace
{

constexpr int BitEis = 1;
constexpr int ByteEis = 14;
constexpr int WordEis = 10;
constexpr int LongEis = 11;

constexpr int LargestRegister = 465536;

// With zeros before the number.
constexpr qsizetype MostDigits = 10;

int EisOfBits(int bits)
{
    switch (bits) {
    case 1:
        return BitEis;
    case 8:
        return ByteEis;
    case 16:
        return WordEis;
    case 32:
        return LongEis;
    default:
        return UndeterminedEis;
    }
}

const QString Coil = QStringLiteral("Coil");
const QString DiscreteInput = QStringLiteral("Discrete Input");

struct TKindWord
{
    QLatin1String Part; // of the word that heads it, see ColumnWord
    QString Name;
};

// The first part that a kind contains decides: a "discrete input" is no input register.
const std::array<TKindWord, 4>& KnownKinds()
{
    static const std::array<TKindWord, 4> words{{
        {QLatin1String("coil"), Coil},
        {QLatin1String("discrete"), DiscreteInput},
        {QLatin1String("holding"), QStringLiteral("Holding-Register")},
        {QLatin1String("input"), QStringLiteral("Input-Register")},
    }};
    return words;
}

} // namespace

int EisOfRegisterType(QStringView type)
{
    static const QRegularExpression sized(
        QStringLiteral("^(?:u|s|i|int|uint|sint|unsigned|signed)?[ _-]?(1|8|16|32)[ _-]?(?:bits?|be|le|sw|sb)?$"),
        QRegularExpression::CaseInsensitiveOption);
    constexpr std::array<QStringView, 4> bits{u"bit", u"bool", u"boolean", u"coil"};
    const QStringView word = type.trimmed();
    if (std::any_of(bits.begin(), bits.end(), [=](auto bit) { return word.compare(bit, Qt::CaseInsensitive) == 0; }))
        return BitEis;
    const QRegularExpressionMatch match = sized.match(word.toString());
    return match.hasMatch() ? EisOfBits(match.capturedView(1).toInt()) : UndeterminedEis;
}

int EisOfVariableSize(QStringView size)
{
    constexpr std::array<int, 7> numbered{UndeterminedEis, ByteEis, WordEis, LongEis, ByteEis, WordEis, LongEis};
    bool ok = false;
    const uint number = size.trimmed().toUInt(&ok);
    if (ok)
        return number < numbered.size() ? numbered[number] : UndeterminedEis;
    return EisOfRegisterType(size);
}

QString RegisterKindName(QStringView kind)
{
    const QString word = ColumnWord(kind);
    const auto found = std::find_if(KnownKinds().begin(), KnownKinds().end(),
                                    [&](const TKindWord& row) { return word.contains(row.Part); });
    return found != KnownKinds().end() ? found->Name : kind.trimmed().toString();
}

bool IsBitKind(QStringView kindName)
{
    return kindName == Coil || kindName == DiscreteInput;
}

std::optional<int> ParseRegisterNumber(QStringView text)
{
    text = text.trimmed();
    const bool hexadecimal = text.startsWith(u"0x", Qt::CaseInsensitive);
    const QStringView digits = text.sliced(hexadecimal ? 2 : 0);
    const bool plain = std::all_of(digits.begin(), digits.end(), [](QChar c) { return c.isLetterOrNumber(); });
    bool ok = false;
    const int number = digits.toInt(&ok, hexadecimal ? 16 : 10);
    return ok && plain && digits.size() <= MostDigits && number >= 0 && number <= LargestRegister
               ? std::optional(number)
               : std::nullopt;
}
