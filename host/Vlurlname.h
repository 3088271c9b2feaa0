#pragma once

#include "Vlexport.h"

#include <QList>
#include <QString>

struct TQueryItem
{
    QString Name;
    QString Value;
};

// The query items of a command text in their order.
class VLHOST_API TQueryItems : public QList<TQueryItem>
{
public:
    // The value of the first item of that name, without regard to case; empty when there is none.
    QString Value(QStringView name) const;
};

// A parsed command text, scheme://path?name=value&name=value. Everything is taken as it stands, without percent
// decoding, because %NAME% is a variable reference and paths carry backslashes and drive letters.
class VLHOST_API TURLName
{
public:
    explicit TURLName(const QString& text);

    QString GetScheme() const { return m_scheme; }
    // What stands between the scheme and the query.
    QString GetPath() const { return m_path; }
    // False when there is no query, else true and its items. What has no "=" is no item.
    bool GetQueryItems(TQueryItems& items) const;

private:
    QString m_scheme;
    QString m_path;
    QString m_query;
    bool m_hasQuery = false;
};

// The text of a command as it arrives: zero terminated, UTF-8 or else Windows-1252. Null is the empty text.
VLHOST_API QString CommandText(const char* command);
