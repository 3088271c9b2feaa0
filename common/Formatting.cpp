#include "Formatting.h"

QString FormatText(const QString& format, const QString& argument)
{
    return QString::fromStdString(fmt::sprintf(format.toStdString(), argument.toStdString()));
}
