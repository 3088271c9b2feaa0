#include "Vlurlname.h"

#include "Vlcodepage.h"
#include "Vltext.h"

#include <QStringDecoder>

#include <algorithm>

QString TQueryItems::Value(QStringView name) const
{
    const auto found =
        std::find_if(begin(), end(), [name](const TQueryItem& item) { return SameText(item.Name, name); });
    return found == end() ? QString() : found->Value;
}

TURLName::TURLName(const QString& text)
{
    const QString schemeEnd = QStringLiteral("://");
    const qsizetype queryAt = text.indexOf(u'?');
    const QString address = queryAt < 0 ? text : text.left(queryAt);
    const qsizetype schemeAt = address.indexOf(schemeEnd);
    if (schemeAt >= 0)
        m_scheme = address.left(schemeAt);
    m_path = schemeAt < 0 ? address : address.mid(schemeAt + schemeEnd.size());
    m_hasQuery = queryAt >= 0;
    if (m_hasQuery)
        m_query = text.mid(queryAt + 1);
}

bool TURLName::GetQueryItems(TQueryItems& items) const
{
    items.clear();
    if (!m_hasQuery)
        return false;
    const QStringList parts = m_query.split(u'&');
    for (const QString& part : parts) {
        const qsizetype equals = part.indexOf(u'=');
        if (equals >= 0)
            items.append({.Name = part.left(equals), .Value = part.mid(equals + 1)});
    }
    return true;
}

QString CommandText(const char* command)
{
    if (!command)
        return {};
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8(command);
    return utf8.hasError() ? FromCodePage(command) : text;
}
