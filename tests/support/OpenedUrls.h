#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QUrl>

// Takes the place of the system's browser while it lives.
class TOpenedUrls final : public QObject
{
    Q_OBJECT

public:
    TOpenedUrls() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "Open"); }
    ~TOpenedUrls() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    const QList<QUrl>& Urls() const { return m_urls; }

public Q_SLOTS:
    void Open(const QUrl& url) { m_urls.append(url); }

private:
    QList<QUrl> m_urls;
};
