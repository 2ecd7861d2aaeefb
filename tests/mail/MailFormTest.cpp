#include "mail/MailForm.h"

#include <gtest/gtest.h>
#include <tuple>

namespace kelvora {
namespace {

// Only letters and digits pass; a field longer than the server takes fails.
TEST(FormEncoding, KeepsOnlyLettersAndDigits) {
    const std::string longest(kMaxMailFieldChars, 'a');
    const std::pair<std::string, std::optional<std::string>> kEncodings[] = {
        {"", ""},
        {"AZaz09Kelvora", "AZaz09Kelvora"},
        {"a b  c", "a+b++c"},
        {"\xE4", "%E4"},
        {"x-y.z", "x%2Dy%2Ez"},
        {std::string("\x00\x0F\x10", 3), "%00%0F%10"}, // a leading zero below 16
        {"+/%&=", "%2B%2F%25%26%3D"},
        {"a\r\nb", "a%0D%0Ab"},
        {"\x7F\xFF", "%7F%FF"},
        {longest, longest},
        {longest + "a", std::nullopt}};
    for (const auto& [ansi, encoded] : kEncodings) {
        EXPECT_EQ(FormEncode(ansi), encoded) << ansi.substr(0, 16);
    }
}

TEST(AddressCheck, MatchesThePattern) {
    // clang-format off
    const std::pair<const char*, bool> kAddresses[] = {
        {"anna.berg@example.org", true}, {"a@bcde.fg", true}, {"a@bcd.ef", true},
        {"a@b.cd", false}, {"a@bc.de", false}, {"a@bcde.f1", false}, {"a@1bcd.ef", false},
        {";@;;;.;;", true},     // semicolons count as letters
        {"+ %@bcd.ef", true},   // any character before the "@"
        {"@bcde.fg", false}, {"abcde.fg", false}, {"a@bcdefg", false}, {"a@bcde.f", false},
        {"a@\xE4" "bcd.ef", false}, // an umlaut is no letter
        {"a@bcde.fg ", false}, {"", false}};
    // clang-format on
    for (const auto& [address, valid] : kAddresses) {
        EXPECT_EQ(IsMailAddress(address), valid) << address;
    }
}

// What the address pattern uses of the wildcards ("?", "*", ranges and ";" in lists) is the
// address table's; these are the rules no address reaches: a "-" at the end of a list is itself,
// and lists compare by code, so case counts.
TEST(Wildcard, ListsTakeAnEndingHyphenAndCountCase) {
    EXPECT_TRUE(MatchesWildcard("-", "[a-c;-]"));
    EXPECT_FALSE(MatchesWildcard("B", "[a-z]"));
}

// "ok" alone is success; "ERR: " with a text is the server's error; anything else means no
// connection.
TEST(MailAnswer, OkAloneIsSuccess) {
    const std::tuple<std::string, MailOutcome, std::string> kAnswers[] = {
        {"ok", MailOutcome::Sent, ""},
        {"OK", MailOutcome::NoConnection, ""},
        {"ok\r\n", MailOutcome::NoConnection, ""},
        {"", MailOutcome::NoConnection, ""},
        {"ERR: ", MailOutcome::NoConnection, ""},
        {"ERR: q", MailOutcome::ServerError, "q"},
        {"ERR: quota full", MailOutcome::ServerError, "quota full"}};
    for (const auto& [answer, outcome, serverText] : kAnswers) {
        const MailVerdict verdict = JudgeMailAnswer(answer);
        EXPECT_EQ(verdict.outcome, outcome) << answer;
        EXPECT_EQ(verdict.serverText, serverText) << answer;
    }
}

TEST(MailServer, HostAndOptionalPort) {
    const std::optional<MailServer> plain = ParseMailServer("mail.example.org");
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->host, "mail.example.org");
    EXPECT_EQ(plain->port, 80);
    const std::optional<MailServer> withPort = ParseMailServer("127.0.0.1:8080");
    ASSERT_TRUE(withPort);
    EXPECT_EQ(withPort->host, "127.0.0.1");
    EXPECT_EQ(withPort->port, 8080);
    for (const char* bad : {"", ":80", "host:", "host:0", "host:65536", "host:8x"}) {
        EXPECT_EQ(ParseMailServer(bad), std::nullopt) << bad;
    }
}

} // namespace
} // namespace kelvora
