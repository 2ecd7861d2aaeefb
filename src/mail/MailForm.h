#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

// The mail form post: the product's web server sends an encrypted text on the user's behalf
// when it receives the fields as an HTML form. Everything here works on Windows-1252 bytes.

inline constexpr const char* kMailPath = "/crypt/cryptmobile.php";
inline constexpr const char* kMailContentType = "application/x-www-form-urlencoded";
inline constexpr std::uint16_t kMailDefaultPort = 80;
// The longest field the form encoding takes: its position counter is a signed 16-bit number.
inline constexpr std::size_t kMaxMailFieldChars = 32767;

// FormEncode encodes one field value: letters and digits stay, a blank becomes "+", every
// other byte "%" and two upper-case hexadecimal digits. It fails (nullopt) for a value
// longer than kMaxMailFieldChars.
[[nodiscard]] std::optional<std::string> FormEncode(std::string_view ansi);

// MatchesWildcard tells whether the whole text matches pattern: "?" is one character, "*"
// any run (also none), "[...]" one character from a list of single characters and ranges
// "a-z", and anything else itself, compared by code.
[[nodiscard]] bool MatchesWildcard(std::string_view text, std::string_view pattern);

// IsMailAddress checks an address against "?*@[a-z;A-Z]??*.[a-z;A-Z]*[a-z;A-Z]". The ";"
// in the lists is a member, so it passes where a letter is expected.
[[nodiscard]] bool IsMailAddress(std::string_view address);

// MailFields are the form's values, Windows-1252.
struct MailFields {
    std::string senderName;
    std::string senderAddress;
    std::string recipientAddress;
    std::string note;
    std::string encryptedText;
};

// MailBody is the request body with every value form-encoded, in the server's order; nullopt
// when a value is too long to encode.
[[nodiscard]] std::optional<std::string> MailBody(const MailFields& fields);

// MailAgent is the user agent: "Kelvora Mobile " and the product's version "major.minor".
[[nodiscard]] std::string MailAgent();

// The server's answer judged: exactly "ok" is sent; more than five characters is the
// server's error text after its five-character status prefix; anything else, the empty
// answer of a missing connection included, means no connection.
enum class MailOutcome { Sent, ServerError, NoConnection };
struct MailVerdict {
    MailOutcome outcome;
    std::string serverText; // for ServerError: the answer from its sixth character on
};
[[nodiscard]] MailVerdict JudgeMailAnswer(std::string_view answer);

// MailServer is where the form goes: "host" or "host:port" (port 80 when none is given).
struct MailServer {
    std::string host;
    std::uint16_t port = kMailDefaultPort;
};

// ParseMailServer reads "host" or "host:port"; nullopt for an empty host or a port that is
// no number from 1 to 65535.
[[nodiscard]] std::optional<MailServer> ParseMailServer(std::string_view text);

} // namespace kelvora
