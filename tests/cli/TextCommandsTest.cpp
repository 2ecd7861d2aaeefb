#include "ProcessRunner.h"
#include "common/TempFolder.h"
#include "crypto/KeyRules.h"
#include "text/EncryptedText.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using testing::RunCli;

const std::map<std::string, std::string> kSecret = {{"KELVORA_PASSPHRASE", "correct horse"}};

// A text made by the format's hand-built fixture: "Hi" in English under "secret".
constexpr const char* kHiUnderSecret =
    "HlsrjuX5+MdfLK9r2m8rDRV1R85+uTQsF/KUu7a3bQdYxA7YvWeS1fPaUB1dyehhplkyAivsbBvp\n"
    "MUWQUIOkOH5svjcgVxzm9yqPRt8bDmySz988vGwqMQzxJL1tm+OYvK6useHP8Dezt6+U82aNFiJT\n"
    "oHftgoQRQpXw43rOzBo=\n";

struct LanguageCase {
    const char* code;
    const char* bannerStart;
};

class TextRoundTrip : public ::testing::TestWithParam<LanguageCase> {};

TEST_P(TextRoundTrip, EncryptsAndDecryptsWithTheBannerOfTheLanguage) {
    const std::string text = "Gr\xC3\xBC\xC3\x9F"
                             "e aus K\xC3\xB6ln\nzweite Zeile \xE2\x82\xAC\n";
    const auto encrypted = RunCli({"encrypt-text", "--lang", GetParam().code}, text, kSecret);
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;
    EXPECT_EQ(encrypted.out.back(), '\n');
    EXPECT_NE(encrypted.out.substr(encrypted.out.size() - 2), "\n\n");
    for (std::size_t start = 0, end; (end = encrypted.out.find('\n', start)) != std::string::npos;
         start = end + 1) {
        EXPECT_LE(end - start, 76u);
    }

    const auto decrypted = RunCli({"decrypt-text"}, encrypted.out, kSecret);
    ASSERT_EQ(decrypted.status, 0) << decrypted.err;
    EXPECT_TRUE(decrypted.out.starts_with(GetParam().bannerStart)) << decrypted.out;
    EXPECT_EQ(decrypted.out.substr(decrypted.out.find('\n') + 1), text);

    const auto bare = RunCli({"decrypt-text", "--no-banner"}, encrypted.out, kSecret);
    EXPECT_EQ(bare.out, text);
}

INSTANTIATE_TEST_SUITE_P(
    Languages, TextRoundTrip,
    ::testing::Values(LanguageCase{"de", "Dieser Text wurde mit Kelvora Portable (kostenlos) "
                                         "verschl\xC3\xBCsselt - http"},
                      LanguageCase{"en", "This text has been encrypted with Kelvora"},
                      LanguageCase{"es", "Este texto ha sido encriptado con Kelvora"},
                      LanguageCase{"fr", "Ce texte a \xC3\xA9t\xC3\xA9 chiffr\xC3\xA9 avec"}),
    [](const auto& info) { return std::string(info.param.code); });

TEST(TextCommands, DecryptsTheHandBuiltText) {
    const auto result =
        RunCli({"decrypt-text"}, kHiUnderSecret, {{"KELVORA_PASSPHRASE", "secret"}});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "This text has been encrypted with Kelvora Portable (free!) - "
                          "http://www.kelvora.net\nHi");
}

TEST(TextCommands, TakesThePassphraseFromTheFirstSourceGiven) {
    testing::TempFolder folder;
    const auto file = folder.Write("pass.txt", "from file\r\nsecond line ignored\n");
    const auto encrypted =
        RunCli({"encrypt-text", "-p", file.string()}, "hello", {{"KELVORA_PASSPHRASE", "env"}});
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;

    EXPECT_EQ(RunCli({"decrypt-text", "--no-banner"}, encrypted.out,
                     {{"KELVORA_PASSPHRASE", "from file"}})
                  .out,
              "hello");
    // "-p -": the first line of standard input is the passphrase, the rest the text.
    const auto fromStdin =
        RunCli({"decrypt-text", "--no-banner", "-p", "-"}, "from file\n" + encrypted.out);
    EXPECT_EQ(fromStdin.out, "hello");
}

TEST(TextCommands, SharedKeysDecryptWhatTheirCombinedKeyEncrypted) {
    // The digests of these keys hold the bytes 0x81, 0x8D, 0x8F, 0x90 and 0x9D, which
    // Windows-1252 leaves undefined: they must reach the cipher unchanged.
    const std::vector<std::string> keys = {"alpha49", "beta1471"};
    CRijndael cipher;
    SystemRandom random;
    const TextResult made =
        EncryptText(cipher, BuildKey(keys).key.bytes(), WithBanner(900, "shared"), random);
    testing::TempFolder folder;
    const auto key1 = folder.Write("k1", "alpha49\n");
    const auto key2 = folder.Write("k2", "beta1471\n");
    const auto empty = folder.Write("k3", "\n");

    const auto right = RunCli(
        {"decrypt-text", "--no-banner", "--key-file", key1.string(), "--key-file", key2.string()},
        made.text);
    EXPECT_EQ(right.status, 0) << right.err;
    EXPECT_EQ(right.out, "shared");

    const auto swapped = RunCli(
        {"decrypt-text", "--key-file", key2.string(), "--key-file", key1.string()}, made.text);
    EXPECT_EQ(swapped.status, 1);

    const auto withEmpty = RunCli(
        {"decrypt-text", "--key-file", key1.string(), "--key-file", empty.string()}, made.text);
    EXPECT_EQ(withEmpty.status, 2);
    EXPECT_EQ(withEmpty.err, "kelvora-cli: key 2 is empty\n");

    std::vector<std::string> eleven = {"decrypt-text"};
    for (int i = 0; i < 11; ++i) {
        eleven.insert(eleven.end(), {"--key-file", key1.string()});
    }
    EXPECT_EQ(RunCli(eleven, made.text).status, 2);
}

struct FailureCase {
    const char* name;
    std::vector<std::string> args;
    std::string input;
    std::map<std::string, std::string> env;
    int status;
    std::string error;
};

class TextFailure : public ::testing::TestWithParam<FailureCase> {};

TEST_P(TextFailure, FailsWithOneErrorLineAndNoOutput) {
    const auto result = RunCli(GetParam().args, GetParam().input, GetParam().env);
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.starts_with("kelvora-cli: " + GetParam().error)) << result.err;
    EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result.err;
}

INSTANTIATE_TEST_SUITE_P(
    Table, TextFailure,
    ::testing::Values(
        FailureCase{"WrongPassphrase",
                    {"decrypt-text"},
                    kHiUnderSecret,
                    {{"KELVORA_PASSPHRASE", "Secret"}},
                    1,
                    "wrong passphrase, or not a Kelvora text"},
        FailureCase{"Truncated",
                    {"decrypt-text"},
                    std::string(kHiUnderSecret).substr(0, 100),
                    {{"KELVORA_PASSPHRASE", "secret"}},
                    1,
                    "not a Kelvora text"},
        FailureCase{"NotBase64",
                    {"decrypt-text"},
                    "Hello, this is no secret at all.",
                    {{"KELVORA_PASSPHRASE", "secret"}},
                    1,
                    "not a Kelvora text"},
        FailureCase{"EmptyInput",
                    {"decrypt-text"},
                    "\n",
                    {{"KELVORA_PASSPHRASE", "secret"}},
                    1,
                    "the input holds no encrypted text"},
        FailureCase{"EmptyText",
                    {"encrypt-text"},
                    "",
                    {{"KELVORA_PASSPHRASE", "secret"}},
                    1,
                    "the text to encrypt is empty"},
        FailureCase{"NoPassphraseSource", {"decrypt-text"}, kHiUnderSecret, {}, 2, "no passphrase"},
        FailureCase{"EmptyPassphrase",
                    {"encrypt-text"},
                    "x",
                    {{"KELVORA_PASSPHRASE", ""}},
                    2,
                    "the passphrase is empty"},
        FailureCase{"MissingPassphraseFile",
                    {"encrypt-text", "-p", "/nonexistent/pass"},
                    "x",
                    {},
                    2,
                    "cannot read /nonexistent/pass"},
        FailureCase{"UnknownLanguage",
                    {"encrypt-text", "--lang", "it"},
                    "x",
                    kSecret,
                    2,
                    "--lang takes de, en, es or fr"},
        FailureCase{"UnknownOption",
                    {"decrypt-text", "--passphrase", "x"},
                    "",
                    {},
                    2,
                    "unknown option '--passphrase'"},
        FailureCase{"StrayOperand",
                    {"encrypt-text", "file.txt"},
                    "",
                    kSecret,
                    2,
                    "unexpected argument 'file.txt'"},
        FailureCase{"UnknownCommand", {"encrypt-all"}, "", {}, 2, "unknown command"}),
    [](const auto& info) { return info.param.name; });

TEST(TextCommands, ForcePrintsWhatAWrongPassphraseGives) {
    const auto result =
        RunCli({"decrypt-text", "--force"}, kHiUnderSecret, {{"KELVORA_PASSPHRASE", "Secret"}});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
}

TEST(TextCommands, WritesAndReadsFilesGivenWithOptions) {
    testing::TempFolder folder;
    const auto plain = folder.Write("plain.txt", "line one\nline two\n");
    const auto armoured = folder.path() / "text.asc";
    const auto back = folder.path() / "back.txt";
    ASSERT_EQ(
        RunCli({"encrypt-text", "-i", plain.string(), "-o", armoured.string()}, "", kSecret).status,
        0);
    ASSERT_EQ(RunCli({"decrypt-text", "--no-banner", "-o", back.string(), "-i", armoured.string()},
                     "", kSecret)
                  .status,
              0);
    EXPECT_EQ(testing::TempFolder::Read(back), "line one\nline two\n");
}

} // namespace
} // namespace kelvora
