#pragma once

#include "mail/MailForm.h"

#include <QNetworkProxy>
#include <QNetworkRequest>
#include <chrono>
#include <optional>

namespace kelvora {

// A server that takes the post but never answers ends it after this long.
inline constexpr std::chrono::milliseconds kMailTimeout{30000};

// ConfiguredMailServer is the server the mails go to: the environment variable
// KELVORA_MAIL_SERVER ("host" or "host:port") when it is set, else the host the program was
// built with, on port 80. nullopt when the variable holds no usable server.
[[nodiscard]] std::optional<MailServer> ConfiguredMailServer();

// MailRequest is the form post to the server's mail script: HTTP/1.1, the form's content
// type, the product's mail agent, always from the network, ended after timeout of silence.
[[nodiscard]] QNetworkRequest MailRequest(const MailServer& server,
                                          std::chrono::milliseconds timeout);

// MailProxy is the proxy the system names for the request (http_proxy and no_proxy on
// Linux), or none, as the system's own network settings would choose.
[[nodiscard]] QNetworkProxy MailProxy(const QNetworkRequest& request);

} // namespace kelvora
