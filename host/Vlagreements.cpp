#include "Vlagreements.h"

#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlmessages.h"

#include <QCryptographicHash>
#include <QFile>
#include <QSettings>

#include <algorithm>
#include <array>

namespace
{

// Longer than any path, and what still fits on a screen.
constexpr qsizetype LongestCommand = 4096;
// A caption is there to recognise the entry, not to push the command out of sight.
constexpr qsizetype LongestCaption = 80;

struct TRange
{
    char32_t First;
    char32_t Last;
};

// Letters, marks and symbols that are blank.
constexpr std::array BlankRanges{
    TRange{0x034F, 0x034F},   TRange{0x115F, 0x1160},   TRange{0x17B4, 0x17B5},   TRange{0x180B, 0x180F},
    TRange{0x2800, 0x2800},   TRange{0x3164, 0x3164},   TRange{0xFE00, 0xFE0F},   TRange{0xFFA0, 0xFFA0},
    TRange{0x16FE4, 0x16FE4}, TRange{0x1D159, 0x1D159}, TRange{0xE0100, 0xE01EF},
};

QString KeyOf(const QString& command, const QString& program)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(command.toUtf8());
    hash.addData(QByteArrayView("", 1));
    if (!program.isEmpty()) {
        QFile file(ToPlatformPath(program));
        if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
            throw TFileError(FileErrorText(program, QStringLiteral("gelesen"), file.errorString()));
    }
    return QStringLiteral("agreements/") + QString::fromLatin1(hash.result().toHex());
}

bool Hides(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Separator_Space:
        return character != U' ';
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return std::any_of(BlankRanges.begin(), BlankRanges.end(), [character](const TRange& range) {
            return range.First <= character && character <= range.Last;
        });
    }
}

QString CodeOf(char32_t character)
{
    return QStringLiteral("<U+%1>").arg(QString::number(character, 16).toUpper(), 4, u'0');
}

QString ShortCaption(const QString& caption)
{
    QString text = VisibleText(caption);
    if (text.size() <= LongestCaption)
        return text;
    text.truncate(LongestCaption - 1);
    if (text.back().isHighSurrogate())
        text.chop(1);
    return text + u'…';
}

QString Question(const QString& caption, const QString& command)
{
    return QStringLiteral(
               "Dieses Programm soll ausgeführt werden:\n\n%1\n\nDer Eintrag \"%2\" nennt es. Es kann alles, was Sie "
               "selbst können. Führen Sie es nur aus, wenn Sie ihm vertrauen.\n\nAusführen und in Zukunft "
               "nicht mehr fragen?")
        .arg(VisibleText(command), ShortCaption(caption));
}

} // namespace

bool IsAgreedTo(const QString& caption, const QString& command, const QString& program)
{
    if (command.size() > LongestCommand)
        throw TUserError(
            QStringLiteral("Der Befehl von \"%1\" ist zu lang, um geprüft zu werden.").arg(ShortCaption(caption)));
    const QString key = KeyOf(command, program);
    if (QSettings().value(key).toBool())
        return true;
    if (!IsInteractive()) {
        throw TUserError(QStringLiteral("\"%1\" würde ein Programm ausführen, dem noch niemand zugestimmt hat: %2")
                             .arg(ShortCaption(caption), VisibleText(command)));
    }
    if (!Confirm(Question(caption, command)))
        return false;
    // While the question stood, others could write to the file: what was agreed to is what it was before.
    if (KeyOf(command, program) != key) {
        throw TUserError(QStringLiteral("\"%1\" wird nicht ausgeführt: Das Programm hat sich geändert, während Sie "
                                        "gefragt wurden.\n\n%2")
                             .arg(ShortCaption(caption), VisibleText(command)));
    }
    QSettings().setValue(key, true);
    return true;
}

QString VisibleText(const QString& text)
{
    QString visible;
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t character = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            character = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        visible += Hides(character) ? CodeOf(character) : QString::fromUcs4(&character, 1);
    }
    return visible;
}
