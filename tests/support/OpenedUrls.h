#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QUrl>

// Takes the place of the system's programs for files, or for other schemes of addresses, while it lives.
class TOpenedUrls final : public QObject
{
    Q_OBJECT

public:
    explicit TOpenedUrls(const QStringList& schemes = {QStringLiteral("file")}) : m_schemes(schemes)
    {
        for (const QString& scheme : m_schemes)
            QDesktopServices::setUrlHandler(scheme, this, "Open");
    }
    ~TOpenedUrls() override
    {
        for (const QString& scheme : m_schemes)
            QDesktopServices::unsetUrlHandler(scheme);
    }
    TOpenedUrls(const TOpenedUrls&) = delete;
    TOpenedUrls& operator=(const TOpenedUrls&) = delete;

    const QList<QUrl>& Urls() const { return m_urls; }

public Q_SLOTS:
    void Open(const QUrl& url) { m_urls.append(url); }

private:
    QStringList m_schemes;
    QList<QUrl> m_urls;
};
