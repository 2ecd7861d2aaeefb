#include "text/ArmourFinder.h"

#include "common/FixedRandom.h"
#include "crypto/KeyRules.h"
#include "text/EncryptedText.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

namespace kelvora {
namespace {

// Armour gives an encrypted text as the program writes it: lines of 76, CR LF between.
std::string Armour(std::string_view text) {
    CRijndael cipher;
    testing::FixedRandom random;
    return EncryptText(cipher, MakePassphraseKey("secret").bytes(), WithBanner(900, text), random)
        .text;
}

// Bare is what the finder should give for an armour: its characters without breaks and "=".
std::string Bare(const std::string& armour) {
    std::string bare;
    std::copy_if(armour.begin(), armour.end(), std::back_inserter(bare),
                 [](char c) { return c != '\r' && c != '\n' && c != '='; });
    return bare;
}

// Rewrapped breaks an armour's characters into lines of width, as a mail program may.
std::string Rewrapped(const std::string& armour, std::size_t width) {
    std::string joined = armour;
    std::erase(joined, '\r');
    std::erase(joined, '\n');
    std::string wrapped;
    for (std::size_t at = 0; at < joined.size(); at += width) {
        wrapped += (at == 0 ? "" : "\n") + joined.substr(at, width);
    }
    return wrapped;
}

// Quoted puts mark before every line, however the lines end.
std::string Quoted(std::string text, const std::string& mark) {
    std::erase(text, '\r');
    std::string quoted;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        quoted += mark + text.substr(start, end - start) + "\n";
        start = end + 1;
    }
    return quoted;
}

const std::string kFirst = Armour("first message, long enough to make a few lines of armour");
const std::string kSecond = Armour("second");

struct MailCase {
    const char* name;
    std::function<std::string()> mail;
    std::vector<std::string> expected; // the armours the finder must give, in order
    std::size_t firstLine;             // of the first block found
};

class ArmourInMail : public ::testing::TestWithParam<MailCase> {};

TEST_P(ArmourInMail, FindsEveryEncryptedTextAndNothingElse) {
    const std::vector<ArmourBlock> blocks = FindArmourBlocks(GetParam().mail());
    ASSERT_EQ(blocks.size(), GetParam().expected.size());
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        EXPECT_EQ(blocks[i].base64, Bare(GetParam().expected[i])) << i;
    }
    if (!blocks.empty()) {
        EXPECT_EQ(blocks[0].firstLine, GetParam().firstLine);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Mails, ArmourInMail,
    ::testing::Values(
        MailCase{"AloneWithCrLf", [] { return kFirst; }, {kFirst}, 1},
        MailCase{"InProseWithSignature",
                 [] {
                     return "Hello Anna,\n\nhere is the note, as promised:\n\n" +
                            Rewrapped(kFirst, 76) +
                            "\n\nTalk soon.\n-- \nBob Miller\nPhone +49 30 1234\n";
                 },
                 {kFirst},
                 5},
        MailCase{"QuotedAndWrappedAt72",
                 [] {
                     return "On Monday Bob wrote:\n" + Quoted(Rewrapped(kFirst, 72), "> ") +
                            "\nThanks!\n";
                 },
                 {kFirst},
                 2},
        MailCase{"QuotedTwiceWithoutBlanks",
                 [] { return "Anna wrote:\n" + Quoted(Rewrapped(kFirst, 64), ">>"); },
                 {kFirst},
                 2},
        MailCase{"MixedQuoteMarks",
                 [] { return Quoted(Quoted(Rewrapped(kFirst, 76), "> "), "> "); },
                 {kFirst},
                 1},
        MailCase{"WordsRightAgainstTheText",
                 [] { return "Hi\n" + Rewrapped(kFirst, 76) + "\nBob\n"; },
                 {kFirst},
                 2},
        MailCase{"BeginsOnALineOfProse",
                 [] { return "Hi Anna,\nhere it is: " + Rewrapped(kFirst, 76) + "\nBob\n"; },
                 {kFirst},
                 2},
        MailCase{"BeginsOnAQuotedLineOfProseWrappedAt72",
                 [] { return "Bob wrote:\n" + Quoted(Rewrapped("the note: " + kFirst, 72), "> "); },
                 {kFirst},
                 2},
        MailCase{"TwoTexts",
                 [] {
                     return "Old one:\n> " + Rewrapped(kSecond, 76) + "\n\nNew one:\n" +
                            Rewrapped(kFirst, 70) + "\n";
                 },
                 {kSecond, kFirst},
                 2},
        MailCase{
            "ProseOnly",
            [] { return std::string("Meeting\nTomorrow\nat\nnoon\nRoom4\nBring\nthe\nkeys\n"); },
            {},
            0},
        MailCase{"Nothing", [] { return std::string(); }, {}, 0}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
