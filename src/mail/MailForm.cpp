#include "mail/MailForm.h"

#include "common/Version.h"

#include <array>
#include <charconv>

namespace kelvora {
namespace {

constexpr std::string_view kAddressPattern = "?*@[a-z;A-Z]??*.[a-z;A-Z]*[a-z;A-Z]";
constexpr std::size_t kStatusPrefixChars = 5;

// PassesUnchanged is the table of the codes the form encoding copies: digits and letters.
constexpr std::array<bool, 256> PassesUnchanged() {
    std::array<bool, 256> passes{};
    for (int code = 0; code < 256; ++code) {
        passes[static_cast<std::size_t>(code)] = (code >= '0' && code <= '9') ||
                                                 (code >= 'A' && code <= 'Z') ||
                                                 (code >= 'a' && code <= 'z');
    }
    return passes;
}

constexpr std::array<bool, 256> kPassesUnchanged = PassesUnchanged();

// MatchesList tells whether c is in a bracket list such as "a-z;A-Z" (without the brackets).
bool MatchesList(unsigned char c, std::string_view list) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        const auto first = static_cast<unsigned char>(list[i]);
        if (i + 2 < list.size() && list[i + 1] == '-') {
            const auto last = static_cast<unsigned char>(list[i + 2]);
            if (c >= first && c <= last) {
                return true;
            }
            i += 2;
        } else if (c == first) {
            return true;
        }
    }
    return false;
}

} // namespace

std::optional<std::string> FormEncode(std::string_view ansi) {
    if (ansi.size() > kMaxMailFieldChars) {
        return std::nullopt;
    }
    constexpr char kHex[] = "0123456789ABCDEF";
    std::string encoded;
    encoded.reserve(ansi.size() * 3);
    for (const char c : ansi) {
        const auto code = static_cast<unsigned char>(c);
        if (code == ' ') {
            encoded += '+';
        } else if (kPassesUnchanged[code]) {
            encoded += c;
        } else {
            encoded += '%';
            encoded += kHex[code >> 4];
            encoded += kHex[code & 0x0F];
        }
    }
    return encoded;
}

bool MatchesWildcard(std::string_view text, std::string_view pattern) {
    if (pattern.empty()) {
        return text.empty();
    }
    if (pattern[0] == '*') {
        for (std::size_t skip = 0; skip <= text.size(); ++skip) {
            if (MatchesWildcard(text.substr(skip), pattern.substr(1))) {
                return true;
            }
        }
        return false;
    }
    if (text.empty()) {
        return false;
    }
    const auto c = static_cast<unsigned char>(text[0]);
    std::size_t patternUsed = 1;
    bool matches = false;
    if (pattern[0] == '?') {
        matches = true;
    } else if (const std::size_t close = pattern.find(']');
               pattern[0] == '[' && close != std::string_view::npos) {
        matches = MatchesList(c, pattern.substr(1, close - 1));
        patternUsed = close + 1;
    } else {
        matches = c == static_cast<unsigned char>(pattern[0]);
    }
    return matches && MatchesWildcard(text.substr(1), pattern.substr(patternUsed));
}

bool IsMailAddress(std::string_view address) {
    return MatchesWildcard(address, kAddressPattern);
}

std::optional<std::string> MailBody(const MailFields& fields) {
    struct Field {
        const char* key;
        const std::string& value;
    };
    const std::array<Field, 5> order{{{"&mailabsn=", fields.senderName},
                                      {"&mailabs=", fields.senderAddress},
                                      {"&mailadr=", fields.recipientAddress},
                                      {"&MailText=", fields.note},
                                      {"&Text=", fields.encryptedText}}};
    std::string body = "Mode=cryptmobile";
    for (const Field& field : order) {
        const std::optional<std::string> encoded = FormEncode(field.value);
        if (!encoded) {
            return std::nullopt;
        }
        body.append(field.key).append(*encoded);
    }
    return body;
}

std::string MailAgent() {
    return "Kelvora Mobile " + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor);
}

MailVerdict JudgeMailAnswer(std::string_view answer) {
    if (answer == "ok") {
        return {MailOutcome::Sent, {}};
    }
    if (answer.size() > kStatusPrefixChars) {
        return {MailOutcome::ServerError, std::string(answer.substr(kStatusPrefixChars))};
    }
    return {MailOutcome::NoConnection, {}};
}

std::optional<MailServer> ParseMailServer(std::string_view text) {
    MailServer server;
    const std::size_t colon = text.rfind(':');
    server.host = std::string(text.substr(0, colon));
    if (colon != std::string_view::npos) {
        const std::string_view port = text.substr(colon + 1);
        unsigned value = 0;
        const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), value);
        if (error != std::errc() || end != port.data() + port.size() || value == 0 ||
            value > 65535) {
            return std::nullopt;
        }
        server.port = static_cast<std::uint16_t>(value);
    }
    if (server.host.empty()) {
        return std::nullopt;
    }
    return server;
}

} // namespace kelvora
