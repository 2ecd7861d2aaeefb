#include "mail/MailPost.h"

#include <QUrl>

namespace kelvora {

std::optional<MailServer> ConfiguredMailServer() {
    const QByteArray configured = qgetenv("KELVORA_MAIL_SERVER");
    if (configured.isEmpty()) {
        return MailServer{KELVORA_MAIL_HOST, kMailDefaultPort};
    }
    return ParseMailServer(configured.toStdString());
}

QNetworkRequest MailRequest(const MailServer& server, std::chrono::milliseconds timeout) {
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(QString::fromStdString(server.host));
    if (server.port != kMailDefaultPort) {
        url.setPort(server.port); // http's own port stays out of the address and Host line
    }
    url.setPath(QString::fromLatin1(kMailPath));
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArray(kMailContentType));
    request.setHeader(QNetworkRequest::UserAgentHeader, QByteArray::fromStdString(MailAgent()));
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setTransferTimeout(static_cast<int>(timeout.count()));
    return request;
}

QNetworkProxy MailProxy(const QNetworkRequest& request) {
    const QList<QNetworkProxy> proxies =
        QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(request.url()));
    return proxies.isEmpty() ? QNetworkProxy(QNetworkProxy::NoProxy) : proxies.first();
}

} // namespace kelvora
