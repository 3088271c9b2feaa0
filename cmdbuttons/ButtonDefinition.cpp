#include "ButtonDefinition.h"

#include "Vlcodepage.h"
#include "Vltext.h"

namespace
{

// The name of the section that a line begins; null for every other line.
QString SectionOf(const QString& line)
{
    const qsizetype end = line.indexOf(u']');
    return line.startsWith(u'[') && end > 0 ? line.mid(1, end - 1).trimmed() : QString();
}

} // namespace

QStringList ReadButtonNames(QByteArrayView content)
{
    QString text = FromCodePage(content);
    text.replace(u'\r', u'\n');
    QStringList names;
    bool inSection = false;
    const QStringList lines = text.split(u'\n');
    for (const QString& whole : lines) {
        const QString line = whole.trimmed();
        const QString section = SectionOf(line);
        if (!section.isNull()) {
            inSection = SameText(section, u"CMDBUTTONS");
            continue;
        }
        const QString name = line.left(line.indexOf(u'=')).trimmed();
        if (inSection && !name.isEmpty() && !line.startsWith(u';'))
            names.append(name);
    }
    return names;
}
