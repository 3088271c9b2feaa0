#include "Vlagreements.h"

#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlmessages.h"

#include <QCryptographicHash>
#include <QFile>
#include <QSettings>

namespace
{

// Longer than any path, and what still fits on a screen.
constexpr qsizetype LongestCommand = 4096;

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

QString Question(const QString& caption, const QString& command)
{
    return QStringLiteral("Der Eintrag \"%1\" führt ein Programm aus:\n\n%2\n\nEs kann alles, was Sie selbst können. "
                          "Führen Sie es nur aus, wenn Sie ihm vertrauen.\n\nAusführen und in Zukunft nicht mehr "
                          "fragen?")
        .arg(VisibleText(caption), VisibleText(command));
}

} // namespace

bool IsAgreedTo(const QString& caption, const QString& command, const QString& program)
{
    if (command.size() > LongestCommand)
        throw TUserError(QStringLiteral("Der Befehl von \"%1\" ist zu lang, um geprüft zu werden.").arg(caption));
    const QString key = KeyOf(command, program);
    if (QSettings().value(key).toBool())
        return true;
    if (!IsInteractive()) {
        throw TUserError(QStringLiteral("\"%1\" würde ein Programm ausführen, dem noch niemand zugestimmt hat: %2")
                             .arg(caption, VisibleText(command)));
    }
    if (!Confirm(Question(caption, command)))
        return false;
    QSettings().setValue(key, true);
    return true;
}

QString VisibleText(const QString& text)
{
    QString visible;
    for (const QChar c : text) {
        const auto category = c.category();
        const bool hides = category == QChar::Other_Control || category == QChar::Other_Format ||
                           category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
        if (hides)
            visible += QStringLiteral("<U+%1>").arg(static_cast<int>(c.unicode()), 4, 16, QChar(u'0')).toUpper();
        else
            visible += c;
    }
    return visible;
}
