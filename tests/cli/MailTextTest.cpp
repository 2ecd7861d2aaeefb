#include "CliRun.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

const Env kSecret = {{"KELVORA_PASSPHRASE", "mail secret"}};

std::string Encrypted(const std::string& text) {
    const auto result = RunInProcess({"encrypt-text", "--lang", "en"}, text, kSecret);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.out;
}

std::string Quoted(const std::string& text) {
    std::string quoted;
    for (std::size_t start = 0, end; (end = text.find('\n', start)) != std::string::npos;
         start = end + 1) {
        quoted += "> " + text.substr(start, end - start + 1);
    }
    return quoted;
}

TEST(MailText, DecryptsTheTextInsideAQuotedMail) {
    const std::string mail = "Hi Bob,\n\nyou sent me this:\n\n" + Quoted(Encrypted("the plan")) +
                             "\nCheers\n-- \nAnna\n";
    const auto result = RunInProcess({"decrypt-text", "--no-banner", "-v"}, mail, kSecret);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "the plan");
    EXPECT_EQ(result.err, "kelvora-cli: decrypting the encrypted text of lines 5-7\n");
}

TEST(MailText, SeveralTextsNeedBlockToChoose) {
    const std::string mail = "first:\n" + Encrypted("one") + "\nsecond:\n" + Encrypted("two");
    const auto refused = RunInProcess({"decrypt-text"}, mail, kSecret);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err, "kelvora-cli: the input holds 2 encrypted texts (1: lines 2-4, 2: "
                           "lines 7-9); choose one with --block N\n");
    EXPECT_EQ(RunInProcess({"decrypt-text", "--no-banner", "--block", "2"}, mail, kSecret).out,
              "two");
    EXPECT_EQ(RunInProcess({"decrypt-text", "--no-banner", "--block=1"}, mail, kSecret).out, "one");
    for (const char* wrong : {"0", "3", "x", "-1", "99999999"}) {
        const auto result = RunInProcess({"decrypt-text", "--block", wrong}, mail, kSecret);
        EXPECT_EQ(result.status, 2) << wrong;
        EXPECT_EQ(result.err, "kelvora-cli: --block takes a number from 1 to 2\n") << wrong;
    }
}

} // namespace
} // namespace kelvora
