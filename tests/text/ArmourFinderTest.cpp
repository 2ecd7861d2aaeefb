#include "text/ArmourFinder.h"

#include "common/FixedRandom.h"
#include "crypto/KeyRules.h"
#include "text/EncryptedText.h"

#include <algorithm>
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

TEST(ArmourInMail, FindsEveryEncryptedTextAndNothingElse) {
    const std::string first = Armour("first message, long enough to make a few lines of armour");
    const std::string second = Armour("second");
    const struct {
        const char* name;
        std::string mail;
        std::vector<std::string> expected; // the armours the finder must give, in order
        std::size_t firstLine;             // of the first block found
    } rows[] = {
        {"AloneWithCrLf", first, {first}, 1},
        {"InProseWithSignature",
         "Hello Anna,\n\nhere is the note, as promised:\n\n" + Rewrapped(first, 76) +
             "\n\nTalk soon.\n-- \nBob Miller\nPhone +49 30 1234\n",
         {first},
         5},
        {"QuotedAndWrappedAt72",
         "On Monday Bob wrote:\n" + Quoted(Rewrapped(first, 72), "> ") + "\nThanks!\n",
         {first},
         2},
        {"QuotedTwiceWithoutBlanks",
         "Anna wrote:\n" + Quoted(Rewrapped(first, 64), ">>"),
         {first},
         2},
        {"MixedQuoteMarks", Quoted(Quoted(Rewrapped(first, 76), "> "), "> "), {first}, 1},
        {"WordsRightAgainstTheText", "Hi\n" + Rewrapped(first, 76) + "\nBob\n", {first}, 2},
        {"BeginsOnALineOfProse",
         "Hi Anna,\nhere it is: " + Rewrapped(first, 76) + "\nBob\n",
         {first},
         2},
        {"BeginsOnAQuotedLineOfProseWrappedAt72",
         "Bob wrote:\n" + Quoted(Rewrapped("the note: " + first, 72), "> "),
         {first},
         2},
        {"TwoTexts",
         "Old one:\n> " + Rewrapped(second, 76) + "\n\nNew one:\n" + Rewrapped(first, 70) + "\n",
         {second, first},
         2},
        {"ProseOnly", "Meeting\nTomorrow\nat\nnoon\nRoom4\nBring\nthe\nkeys\n", {}, 0},
        {"Nothing", "", {}, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::vector<ArmourBlock> blocks = FindArmourBlocks(row.mail);
        ASSERT_EQ(blocks.size(), row.expected.size());
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            EXPECT_EQ(blocks[i].base64, Bare(row.expected[i])) << i;
        }
        if (!blocks.empty()) {
            EXPECT_EQ(blocks[0].firstLine, row.firstLine);
        }
    }
}

} // namespace
} // namespace kelvora
