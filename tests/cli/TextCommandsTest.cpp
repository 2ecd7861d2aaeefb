#include "CliRun.h"
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

using namespace kelvora::testing;

const Env kSecret = {{"KELVORA_PASSPHRASE", "secret"}};
const std::string kUnholdable = "' (U+03B1) at character ";
constexpr const char* kLongWarning = "kelvora-cli: warning: the passphrase is longer than 32 "
                                     "characters: only the first 32 characters are used\n";

// KeyFiles holds one file per key; Args names them in order for --key-file.
struct KeyFiles {
    TempFolder folder;
    std::string args;
    explicit KeyFiles(const std::vector<std::string>& keys) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            args += " --key-file " + folder.Write("k" + std::to_string(i), keys[i] + "\n").string();
        }
    }
};

SecretBytes SharedKey(std::vector<std::string> keys) {
    return BuildKey(keys).key;
}

std::string DecryptedBy(const SecretBytes& key, const std::string& armoured) {
    CRijndael cipher;
    return std::string(UpToFirstNul(DecryptText(cipher, key.bytes(), ToCrLf(armoured)).text));
}

class TextRoundTrip : public ::testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(TextRoundTrip, EncryptsAndDecryptsWithTheBannerOfTheLanguage) {
    const std::string text = "Gr\xC3\xBC\xC3\x9F"
                             "e aus K\xC3\xB6ln\nzweite Zeile \xE2\x82\xAC\n";
    const auto encrypted =
        RunInProcess({"encrypt-text", "--lang", GetParam().first}, text, kSecret);
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;
    EXPECT_TRUE(encrypted.out.ends_with('\n') && !encrypted.out.ends_with("\n\n"));
    for (std::size_t start = 0, end; (end = encrypted.out.find('\n', start)) != std::string::npos;
         start = end + 1) {
        EXPECT_LE(end - start, 76u);
    }
    const auto decrypted = RunInProcess({"decrypt-text"}, encrypted.out, kSecret);
    EXPECT_TRUE(decrypted.out.starts_with(GetParam().second)) << decrypted.out;
    EXPECT_EQ(decrypted.out.substr(decrypted.out.find('\n') + 1), text);
    EXPECT_EQ(RunInProcess({"decrypt-text", "--no-banner"}, encrypted.out, kSecret).out, text);
}

INSTANTIATE_TEST_SUITE_P(
    Languages, TextRoundTrip,
    ::testing::Values(
        std::pair{"de", "Dieser Text wurde mit Kelvora Portable (kostenlos) verschl\xC3\xBCsselt"},
        std::pair{"en", "This text has been encrypted with Kelvora"},
        std::pair{"es", "Este texto ha sido encriptado con Kelvora"},
        std::pair{"fr", "Ce texte a \xC3\xA9t\xC3\xA9 chiffr\xC3\xA9 avec"}),
    [](const auto& info) { return std::string(info.param.first); });

TEST(TextCommands, DecryptsTheHandBuiltTextAndForceShowsWhatAWrongOneGives) {
    EXPECT_EQ(RunInProcess({"decrypt-text"}, kHiUnderSecret, kSecret).out,
              "This text has been encrypted with Kelvora Portable (free!) - "
              "http://www.kelvora.net\nHi");
    const auto forced = RunInProcess({"decrypt-text", "--force"}, kHiUnderSecret, Passphrase("S"));
    EXPECT_EQ(forced.status, 0);
    EXPECT_EQ(forced.err, "");
}

TEST(TextCommands, TakesThePassphraseFromTheFirstSourceGivenAndFilesFromOptions) {
    TempFolder folder;
    const auto file = folder.Write("pass.txt", "from file\r\nsecond line ignored\n");
    const auto plain = folder.Write("plain.txt", "line one\nline two\n");
    const std::string armoured = (folder.path() / "text.asc").string();
    const auto encrypted = RunInProcess(
        Words("encrypt-text -p " + file.string() + " -i " + plain.string() + " -o " + armoured), "",
        Passphrase("env"));
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;
    EXPECT_EQ(
        RunInProcess(Words("decrypt-text --no-banner -i " + armoured), "", Passphrase("from file"))
            .out,
        "line one\nline two\n");
    // "-p -": the first line of standard input is the passphrase, the rest the text.
    EXPECT_EQ(RunInProcess(Words("decrypt-text --no-banner -p -"),
                           "from file\n" + TempFolder::Read(armoured))
                  .out,
              "line one\nline two\n");
}

// The terminal is asked when no other source is given: twice to encrypt, once otherwise.
struct PromptCase {
    const char* name;
    const char* command;
    const char* answers; // the lines typed, split at blanks
    std::size_t asked;
    int status;
    const char* error;
};

class TerminalPassphrase : public ::testing::TestWithParam<PromptCase> {};

TEST_P(TerminalPassphrase, IsAskedAndCheckedAsTyped) {
    ScriptedPrompt prompt(Words(GetParam().answers));
    std::istringstream in(std::string(GetParam().command) == "encrypt-text" ? "x" : kHiUnderSecret);
    const auto result = RunInProcess(Words(GetParam().command), in, {}, &prompt);
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_EQ(result.err,
              *GetParam().error ? "kelvora-cli: " + std::string(GetParam().error) + "\n" : "");
    ASSERT_EQ(prompt.asked.size(), GetParam().asked);
    EXPECT_EQ(prompt.asked[0], "Passphrase: ");
    if (GetParam().asked == 2) {
        EXPECT_EQ(prompt.asked[1], "Repeat the passphrase: ");
    }
    if (result.status == 0 && prompt.asked.size() == 2) {
        EXPECT_EQ(RunInProcess({"decrypt-text", "--no-banner"}, result.out, kSecret).out, "x");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, TerminalPassphrase,
    ::testing::Values(
        PromptCase{"Repeated", "encrypt-text", "secret secret", 2, 0, ""},
        PromptCase{"Mismatch", "encrypt-text", "secret Secret", 2, 2, "the two passphrases differ"},
        PromptCase{"EndWhenRepeating", "encrypt-text", "secret", 2, 2,
                   "the two passphrases differ"},
        PromptCase{"EndOfInput", "encrypt-text", "", 1, 2, "no passphrase was entered"},
        PromptCase{"DecryptAsksOnce", "decrypt-text", "secret", 1, 0, ""},
        PromptCase{"RateAsksOnce", "rate", "abcdefghij", 1, 0, ""}),
    [](const auto& info) { return info.param.name; });

// The digests of these keys hold the bytes 0x81, 0x8D, 0x8F, 0x90 and 0x9D, which
// Windows-1252 leaves undefined: they must reach the cipher unchanged, both ways.
TEST(KeySource, KeyFilesEncryptAndDecryptUnderTheSharedKeyRule) {
    const KeyFiles keys({"alpha49", "beta1471"});
    const auto encrypted = RunInProcess(Words("encrypt-text --lang de" + keys.args), "geteilt");
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;
    EXPECT_EQ(encrypted.err, "");
    const std::string opened = DecryptedBy(SharedKey({"alpha49", "beta1471"}), encrypted.out);
    EXPECT_TRUE(StartsWithBanner(opened) && opened.ends_with("\r\ngeteilt")) << opened;
    // The keys' order counts, and the single rule gives another key.
    EXPECT_FALSE(StartsWithBanner(DecryptedBy(SharedKey({"beta1471", "alpha49"}), encrypted.out)));
    EXPECT_FALSE(StartsWithBanner(DecryptedBy(MakePassphraseKey("alpha49"), encrypted.out)));

    CRijndael cipher;
    SystemRandom random;
    const TextResult made = EncryptText(cipher, SharedKey({"alpha49", "beta1471"}).bytes(),
                                        WithBanner(900, "shared"), random);
    EXPECT_EQ(RunInProcess(Words("decrypt-text --no-banner" + keys.args), made.text).out, "shared");
    const KeyFiles swapped({"beta1471", "alpha49"});
    EXPECT_EQ(RunInProcess(Words("decrypt-text" + swapped.args), made.text).status, 1);
}

TEST(KeySource, ThreeKeyFilesMakeAContainerOnlyTheSameKeysInOrderOpen) {
    const KeyFiles keys({"eins", "zwei", "drei"});
    const KeyFiles reordered({"zwei", "eins", "drei"});
    const auto plain = keys.folder.Write("in/note.txt", "shared contents\n");
    const std::string container = (keys.folder.path() / "c.vexo").string();
    const auto made =
        RunInProcess(Words("encrypt -o " + container + " " + plain.string() + keys.args));
    ASSERT_EQ(made.status, 0) << made.err;
    EXPECT_EQ(RunInProcess(Words("test " + container + keys.args)).out, "OK\n");
    EXPECT_EQ(RunInProcess(Words("test " + container + reordered.args)).status, 1);
    EXPECT_EQ(RunInProcess({"test", container}, "", Passphrase("eins")).status, 1);
}

TEST(KeySource, ReplacingUnsupportedCharactersSaysHowMany) {
    const auto encrypted = RunInProcess({"encrypt-text", "--replace-unsupported"},
                                        "a" + kEmoji + std::string("b\0c?", 4) + kGreek, kSecret);
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;
    EXPECT_EQ(encrypted.err, "kelvora-cli: warning: 5 characters of the text replaced by \"?\"\n");
    EXPECT_EQ(RunInProcess({"decrypt-text", "--no-banner"}, encrypted.out, kSecret).out,
              "a?b?c????");
}

TEST(KeySource, DecryptionTakesWhatTheKeyCannotHoldWithAWarning) {
    // A text made elsewhere under "αβγ" was made with the key "???": it must keep opening.
    CRijndael cipher;
    SystemRandom random;
    const TextResult made = EncryptText(cipher, MakePassphraseKey("???").bytes(),
                                        WithBanner(kEnglish, "made elsewhere"), random);
    const auto opened =
        RunInProcess({"decrypt-text", "--no-banner"}, made.text, Passphrase(kGreek));
    EXPECT_EQ(opened.out, "made elsewhere");
    EXPECT_EQ(opened.err, "kelvora-cli: warning: the passphrase holds '" + kAlpha + kUnholdable +
                              "1, which a key cannot hold (it becomes \"?\")\n");
}

TEST(KeySource, PassphrasesLongerThanTheKeyAreUsedWithAWarning) {
    const std::string first32(32, 'x');
    const auto encrypted = RunInProcess({"encrypt-text"}, "long", Passphrase(first32 + "ignored"));
    ASSERT_EQ(encrypted.status, 0);
    EXPECT_EQ(encrypted.err, kLongWarning);
    const auto exact =
        RunInProcess({"decrypt-text", "--no-banner"}, encrypted.out, Passphrase(first32));
    EXPECT_EQ(exact.out, "long");
    EXPECT_EQ(exact.err, "");
    // 32 characters of two bytes each are not longer than the key.
    std::string umlauts;
    for (int i = 0; i < 32; ++i) {
        umlauts += "\xC3\xA4";
    }
    EXPECT_EQ(RunInProcess({"rate"}, "", Passphrase(umlauts)).err, "");
    EXPECT_EQ(RunInProcess({"rate"}, "", Passphrase(first32 + "y")).err, kLongWarning);
}

TEST(ToolCommands, GenpassAndRate) {
    const auto first = RunInProcess({"genpass"});
    ASSERT_EQ(first.out.size(), 33u);
    EXPECT_EQ(first.out.back(), '\n');
    EXPECT_NE(first.out, RunInProcess({"genpass"}).out);
    EXPECT_EQ(RunInProcess({"rate", "-p", "-"}, "abcdefghij\n").out,
              "score: 20/100\nstars: **---\nThis passphrase can presumably be cracked.\n");
}

} // namespace
} // namespace kelvora
