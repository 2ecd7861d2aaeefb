#include "ProcessRunner.h"
#include "common/LineBreaks.h"
#include "common/Random.h"
#include "common/TempFolder.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"
#include "i18n/Catalogue.h"
#include "text/EncryptedText.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using testing::RunCli;

constexpr const char* kLongWarning = "kelvora-cli: warning: the passphrase is longer than 32 "
                                     "characters: only the first 32 characters are used\n";
const std::string kAlpha = "\xCE\xB1";                 // α, which Windows-1252 lacks
const std::string kKey = "\xF0\x9F\x94\x91";           // an emoji
const std::string kGreek = "\xCE\xB1\xCE\xB2\xCE\xB3"; // αβγ

// KeyFiles writes one file per key and gives the arguments that name them, in order.
struct KeyFiles {
    testing::TempFolder folder;
    std::vector<std::string> args;

    explicit KeyFiles(const std::vector<std::string>& keys) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            args.push_back("--key-file");
            args.push_back(folder.Write("key" + std::to_string(i + 1), keys[i] + "\n").string());
        }
    }
    std::vector<std::string> With(std::vector<std::string> command) const {
        command.insert(command.end(), args.begin(), args.end());
        return command;
    }
};

std::string DecryptedBy(const SecretBytes& key, const std::string& armoured) {
    CRijndael cipher;
    const TextResult result = DecryptText(cipher, key.bytes(), ToCrLf(armoured));
    return std::string(UpToFirstNul(result.text));
}

TEST(KeySource, ThreeKeyFilesEncryptUnderTheSharedKeyRule) {
    const KeyFiles keys({"a", "b", "c"});
    const auto encrypted = RunCli(keys.With({"encrypt-text", "--lang", "de"}), "geteilt");
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;
    EXPECT_EQ(encrypted.err, "");

    const std::vector<std::string> inOrder = {"a", "b", "c"};
    const std::vector<std::string> swapped = {"c", "b", "a"};
    const std::string opened = DecryptedBy(BuildKey(inOrder).key, encrypted.out);
    EXPECT_TRUE(opened.ends_with("\r\ngeteilt")) << opened;
    EXPECT_TRUE(StartsWithBanner(opened));
    // Keys 1 and 3 are joined, so swapping them gives another key; the single rule too.
    EXPECT_FALSE(StartsWithBanner(DecryptedBy(BuildKey(swapped).key, encrypted.out)));
    EXPECT_FALSE(StartsWithBanner(DecryptedBy(MakePassphraseKey("a"), encrypted.out)));

    const auto back = RunCli(keys.With({"decrypt-text", "--no-banner"}), encrypted.out);
    EXPECT_EQ(back.out, "geteilt");
}

TEST(KeySource, ThreeKeyFilesMakeAContainerTheSameKeysOpen) {
    const KeyFiles keys({"eins", "zwei", "drei"});
    const KeyFiles reordered({"zwei", "eins", "drei"});
    const auto plain = keys.folder.Write("in/note.txt", "shared contents\n");
    const std::string container = (keys.folder.path() / "c.vexo").string();
    const auto encrypted = RunCli(keys.With({"encrypt", "-q", "-o", container, plain.string()}));
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;

    EXPECT_EQ(RunCli(keys.With({"test", container})).out, "OK\n");
    EXPECT_EQ(RunCli(reordered.With({"test", container})).status, 1);
    EXPECT_EQ(RunCli({"test", container}, {}, {{"KELVORA_PASSPHRASE", "eins"}}).status, 1);

    const auto greek = RunCli({"encrypt", "-q", "-o", container + "2", plain.string()}, {},
                              {{"KELVORA_PASSPHRASE", kGreek}});
    EXPECT_EQ(greek.status, 1);
    EXPECT_TRUE(greek.err.starts_with("kelvora-cli: the passphrase holds")) << greek.err;
    EXPECT_FALSE(std::filesystem::exists(container + "2"));
}

struct RefusalCase {
    const char* name;
    std::vector<std::string> keys; // written to key files and given with --key-file
    std::vector<std::string> args;
    std::string input;
    std::string passphrase; // KELVORA_PASSPHRASE when not empty
    int status;
    std::string error; // the one error line
};

class KeySourceRefusal : public ::testing::TestWithParam<RefusalCase> {};

TEST_P(KeySourceRefusal, RefusesWithOneLineAndNoOutput) {
    const KeyFiles keys(GetParam().keys);
    std::map<std::string, std::string> env;
    if (!GetParam().passphrase.empty()) {
        env["KELVORA_PASSPHRASE"] = GetParam().passphrase;
    }
    const auto result = RunCli(keys.With(GetParam().args), GetParam().input, env);
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "kelvora-cli: " + GetParam().error + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Table, KeySourceRefusal,
    ::testing::Values(
        RefusalCase{"PassphraseFileWithKeyFiles",
                    {"a", "b"},
                    {"encrypt-text", "-p", "/dev/null"},
                    "x",
                    "",
                    2,
                    "give either -p FILE or --key-file FILE..., not both"},
        RefusalCase{"PassphraseFileWithKeyFilesWhenDecrypting",
                    {"a"},
                    {"decrypt-text", "-p", "/dev/null"},
                    "x",
                    "",
                    2,
                    "give either -p FILE or --key-file FILE..., not both"},
        RefusalCase{"OneKeyFile",
                    {"a"},
                    {"encrypt-text"},
                    "x",
                    "",
                    2,
                    "one key is no shared security: give --key-file 2 to 10 times, or -p FILE"},
        RefusalCase{"ElevenKeyFiles",
                    std::vector<std::string>(11, "k"),
                    {"encrypt-text"},
                    "x",
                    "",
                    2,
                    "at most 10 key files can be combined"},
        RefusalCase{"EmptyKey", {"a", ""}, {"encrypt-text"}, "x", "", 2, "key 2 is empty"},
        RefusalCase{"KeyTheCodePageLacks",
                    {"a", "b" + kAlpha},
                    {"encrypt-text"},
                    "x",
                    "",
                    1,
                    "key 2 holds '" + kAlpha +
                        "' (U+03B1) at character 2, which a key cannot hold (it becomes \"?\"); "
                        "choose another"},
        RefusalCase{"PassphraseTheCodePageLacks",
                    {},
                    {"encrypt-text"},
                    "x",
                    kGreek,
                    1,
                    "the passphrase holds '" + kAlpha +
                        "' (U+03B1) at character 1, which a key cannot hold (it becomes \"?\"); "
                        "choose another"},
        RefusalCase{"TextTheCodePageLacks",
                    {},
                    {"encrypt-text"},
                    "first line\nsecond " + kKey + " line\n",
                    "secret",
                    1,
                    "the text holds '" + kKey +
                        "' (U+1F511) at line 2, column 8, which an encrypted text cannot hold; "
                        "give --replace-unsupported to encrypt \"?\" in its place"},
        RefusalCase{"TextWithNul",
                    {},
                    {"encrypt-text"},
                    std::string("ab\0cd", 5),
                    "secret",
                    1,
                    "the text holds U+0000 at line 1, column 3, which an encrypted text cannot "
                    "hold; give --replace-unsupported to encrypt \"?\" in its place"}),
    [](const auto& info) { return info.param.name; });

TEST(KeySource, ReplacingUnsupportedCharactersSaysHowMany) {
    const std::map<std::string, std::string> env = {{"KELVORA_PASSPHRASE", "secret"}};
    const auto encrypted = RunCli({"encrypt-text", "--replace-unsupported"},
                                  "a" + kKey + std::string("b\0c?", 4) + kGreek, env);
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;
    EXPECT_EQ(encrypted.err, "kelvora-cli: warning: 5 characters of the text replaced by \"?\"\n");
    EXPECT_EQ(RunCli({"decrypt-text", "--no-banner"}, encrypted.out, env).out, "a?b?c????");
}

TEST(KeySource, DecryptionTakesWhatTheKeyCannotHoldWithAWarning) {
    // A text made elsewhere under "αβγ" was made with the key "???": it must keep opening.
    CRijndael cipher;
    SystemRandom random;
    const TextResult made = EncryptText(cipher, MakePassphraseKey("???").bytes(),
                                        WithBanner(kEnglish, "made elsewhere"), random);
    const auto opened =
        RunCli({"decrypt-text", "--no-banner"}, made.text, {{"KELVORA_PASSPHRASE", kGreek}});
    EXPECT_EQ(opened.status, 0);
    EXPECT_EQ(opened.out, "made elsewhere");
    EXPECT_EQ(opened.err, "kelvora-cli: warning: the passphrase holds '" + kAlpha +
                              "' (U+03B1) at character 1, which a key cannot hold (it becomes "
                              "\"?\")\n");
}

TEST(KeySource, PassphrasesLongerThanTheKeyAreUsedWithAWarning) {
    const std::string first32(32, 'x');
    const auto encrypted =
        RunCli({"encrypt-text"}, "long", {{"KELVORA_PASSPHRASE", first32 + "ignored"}});
    ASSERT_EQ(encrypted.status, 0);
    EXPECT_EQ(encrypted.err, kLongWarning);
    const auto exact =
        RunCli({"decrypt-text", "--no-banner"}, encrypted.out, {{"KELVORA_PASSPHRASE", first32}});
    EXPECT_EQ(exact.out, "long");
    EXPECT_EQ(exact.err, "");
    // 32 characters of two bytes each are not longer than the key.
    const auto umlauts = RunCli({"rate"}, {}, {{"KELVORA_PASSPHRASE", [] {
                                                    std::string text;
                                                    for (int i = 0; i < 32; ++i) {
                                                        text += "\xC3\xA4";
                                                    }
                                                    return text;
                                                }()}});
    EXPECT_EQ(umlauts.err, "");
    EXPECT_EQ(RunCli({"rate"}, {}, {{"KELVORA_PASSPHRASE", first32 + "y"}}).err, kLongWarning);
}

} // namespace
} // namespace kelvora
