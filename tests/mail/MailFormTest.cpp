#include "mail/MailForm.h"

#include "common/Version.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

// ---- Form encoding ----

struct EncodeCase {
    const char* name;
    std::string ansi;
    std::string encoded;
};

class FormEncoding : public ::testing::TestWithParam<EncodeCase> {};

TEST_P(FormEncoding, KeepsOnlyLettersAndDigits) {
    EXPECT_EQ(FormEncode(GetParam().ansi), GetParam().encoded);
}

INSTANTIATE_TEST_SUITE_P(
    Table, FormEncoding,
    ::testing::Values(EncodeCase{"Empty", "", ""},
                      EncodeCase{"LettersAndDigits", "AZaz09Kelvora", "AZaz09Kelvora"},
                      EncodeCase{"BlankIsPlus", "a b  c", "a+b++c"},
                      EncodeCase{"UmlautIsE4", "\xE4", "%E4"},
                      EncodeCase{"HyphenAndFullStop", "x-y.z", "x%2Dy%2Ez"},
                      EncodeCase{"LeadingZeroBelowSixteen", std::string("\x00\x0F\x10", 3),
                                 "%00%0F%10"},
                      EncodeCase{"PlusAndPercentAreEncoded", "+%&=", "%2B%25%26%3D"},
                      EncodeCase{"LineBreak", "a\r\nb", "a%0D%0Ab"},
                      EncodeCase{"TopCodes", "\x7F\xFF", "%7F%FF"}),
    [](const auto& info) { return info.param.name; });

TEST(FormEncoding, LongestFieldPassesOneMoreFails) {
    const std::string longest(kMaxMailFieldChars, 'a');
    EXPECT_EQ(FormEncode(longest), longest);
    EXPECT_EQ(FormEncode(longest + "a"), std::nullopt);
}

// ---- Address check ----

struct AddressCase {
    const char* name;
    const char* address;
    bool valid;
};

class AddressCheck : public ::testing::TestWithParam<AddressCase> {};

TEST_P(AddressCheck, MatchesThePattern) {
    EXPECT_EQ(IsMailAddress(GetParam().address), GetParam().valid);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, AddressCheck, ::testing::Values(
    AddressCase{"Usual", "anna.berg@example.org", true}, AddressCase{"FourLettersThenTwo", "a@bcde.fg", true},
    AddressCase{"ShortestBetween", "a@bcd.ef", true}, AddressCase{"TooFewBetween", "a@b.cd", false},
    AddressCase{"TwoBetween", "a@bc.de", false}, AddressCase{"EndsWithDigit", "a@bcde.f1", false},
    AddressCase{"SemicolonsCountAsLetters", ";@;;;.;;", true}, AddressCase{"DigitAfterAt", "a@1bcd.ef", false},
    AddressCase{"NothingBeforeAt", "@bcde.fg", false}, AddressCase{"NoAt", "abcde.fg", false},
    AddressCase{"NoDot", "a@bcdefg", false}, AddressCase{"OneLetterAfterLastDot", "a@bcde.f", false},
    AddressCase{"AnyCharacterBeforeAt", "+ %@bcd.ef", true}, AddressCase{"UmlautIsNoLetter", "a@\xE4" "bcd.ef", false},
    AddressCase{"TrailingBlank", "a@bcde.fg ", false}, AddressCase{"Empty", "", false}),
    [](const auto& info) { return info.param.name; });
// clang-format on

TEST(Wildcard, BracketListsAndStars) {
    EXPECT_TRUE(MatchesWildcard("", "*"));
    EXPECT_TRUE(MatchesWildcard("abc", "a*"));
    EXPECT_FALSE(MatchesWildcard("abc", "a?"));
    EXPECT_TRUE(MatchesWildcard("b", "[a-c]"));
    EXPECT_FALSE(MatchesWildcard("d", "[a-c]"));
    EXPECT_TRUE(MatchesWildcard("-", "[a-c;-]"));
    EXPECT_FALSE(MatchesWildcard("B", "[a-z]")); // by code: lists are case-sensitive
}

// ---- Body, agent, answer, server ----

TEST(MailBody, FieldsInTheServersOrder) {
    const MailFields fields{"Anna Berg", "anna@example.org", "bo@example.net", "", "AbC+/=\r\nxy"};
    EXPECT_EQ(MailBody(fields), "Mode=cryptmobile&mailabsn=Anna+Berg&mailabs=anna%40example%2Eorg"
                                "&mailadr=bo%40example%2Enet&MailText=&Text=AbC%2B%2F%3D%0D%0Axy");
}

TEST(MailBody, ATooLongTextFailsTheWholeBody) {
    MailFields fields;
    fields.encryptedText.assign(kMaxMailFieldChars + 1, 'Q');
    EXPECT_EQ(MailBody(fields), std::nullopt);
}

TEST(MailAgent, ProductNameAndVersion) {
    EXPECT_EQ(MailAgent(), std::string("Kelvora Mobile ") + kVersionText);
}

struct AnswerCase {
    const char* name;
    std::string answer;
    MailOutcome outcome;
    std::string serverText;
};

class AnswerJudging : public ::testing::TestWithParam<AnswerCase> {};

TEST_P(AnswerJudging, OkAloneIsSuccess) {
    const MailVerdict verdict = JudgeMailAnswer(GetParam().answer);
    EXPECT_EQ(verdict.outcome, GetParam().outcome);
    EXPECT_EQ(verdict.serverText, GetParam().serverText);
}

INSTANTIATE_TEST_SUITE_P(
    Table, AnswerJudging,
    ::testing::Values(AnswerCase{"Ok", "ok", MailOutcome::Sent, ""},
                      AnswerCase{"OkInCapitals", "OK", MailOutcome::NoConnection, ""},
                      AnswerCase{"OkWithLineBreak", "ok\r\n", MailOutcome::NoConnection, ""},
                      AnswerCase{"Empty", "", MailOutcome::NoConnection, ""},
                      AnswerCase{"FiveCharacters", "ERR: ", MailOutcome::NoConnection, ""},
                      AnswerCase{"SixCharacters", "ERR: q", MailOutcome::ServerError, "q"},
                      AnswerCase{"ServerText", "ERR: quota full", MailOutcome::ServerError,
                                 "quota full"}),
    [](const auto& info) { return info.param.name; });

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
