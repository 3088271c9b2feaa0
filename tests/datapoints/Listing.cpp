#include "Listing.h"

namespace
{

QString DatapointLine(const TDatapoint& datapoint)
{
    const QStringList columns{datapoint.Address, datapoint.Name, datapoint.Group.join(QStringLiteral(" > ")),
                              QString::number(datapoint.EisNumber)};
    return columns.join(u'|') + u'\n';
}

} // namespace

QByteArray Listing(const TImportResult& result)
{
    const QStringList file{result.Recognised ? result.Format : QStringLiteral("nicht erkannt"), result.Encoding,
                           result.Title};
    QByteArray text = file.join(u'|').toUtf8() + '\n' + DatapointListing(result);
    for (const TImportProblem& problem : result.Problems)
        text += QStringLiteral("! %1: %2\n").arg(QString::number(problem.Line), problem.Reason).toUtf8();
    return text;
}

QByteArray DatapointListing(const TImportResult& result)
{
    QByteArray text;
    for (const TDatapoint& datapoint : result.Datapoints)
        text += DatapointLine(datapoint).toUtf8();
    return text;
}

TImportResult ReadText(TDatapointKind kind, const QString& text)
{
    return ReadDatapoints(kind, text.toUtf8());
}

QStringList Reasons(const TImportResult& result)
{
    QStringList reasons;
    for (const TImportProblem& problem : result.Problems)
        reasons.append(problem.Reason);
    return reasons;
}
