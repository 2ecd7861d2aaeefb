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
    url.setPort(server.port);
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

} // namespace kelvora
