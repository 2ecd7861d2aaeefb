#include "CliRun.h"
#include "cli/LanguageChoice.h"
#include "common/Version.h"
#include "crypto/CipherPath.h"
#include "files/FileTestSupport.h"
#include "i18n/Catalogue.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

const Env kSecret = {{"KELVORA_PASSPHRASE", kPassphrase}};

TEST(UnixManners, HelpCommandEqualsTheCommandsOwnHelp) {
    for (const cli::Command* command : cli::AllCommands()) {
        const std::string name(command->name);
        const auto viaHelp = RunInProcess({"help", name});
        const auto viaOption = RunInProcess({name, "--help"});
        EXPECT_EQ(viaHelp.status, 0) << name;
        EXPECT_EQ(viaHelp.out, viaOption.out) << name;
        EXPECT_TRUE(viaHelp.out.starts_with("Usage: kelvora-cli " + name)) << viaHelp.out;
        // Made from the table: every option, the passphrase paragraph where one is taken,
        // and no line wider than a terminal.
        for (const cli::OptionSpec& option : cli::OptionsOf(*command)) {
            EXPECT_NE(viaHelp.out.find("--" + std::string(option.longName) + " "),
                      std::string::npos)
                << name << " --" << option.longName;
        }
        EXPECT_EQ(viaHelp.out.find("The passphrase comes from") != std::string::npos,
                  command->passphrase != cli::PassphraseUse::None)
            << name;
        std::istringstream lines(viaHelp.out);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LT(line.size(), 80u) << line;
        }
    }
    const auto overview = RunInProcess({"--help"});
    EXPECT_EQ(overview.status, 0);
    EXPECT_EQ(RunInProcess({"help"}).out, overview.out);
    // Without a command the overview goes to standard error, a usage error.
    const auto bare = RunInProcess({});
    EXPECT_EQ(bare.status, 2);
    EXPECT_EQ(bare.err, overview.out);
}

TEST(UnixManners, VersionLeadsWithTheProductVersion) {
    const auto result = RunInProcess({"--version"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "kelvora-cli " + std::string(kVersionText) + "\ncipher path: " +
                              std::string(CipherPathName(ActiveCipherPath())) + "\n");
}

struct LocaleCase {
    const char* name;
    std::map<std::string, std::string> env;
    int offset;
};

class LocaleLanguage : public ::testing::TestWithParam<LocaleCase> {};

TEST_P(LocaleLanguage, FollowsTheFirstVariableSet) {
    const auto& env = GetParam().env;
    const auto getenv = [&env](const char* name) -> std::optional<std::string> {
        const auto it = env.find(name);
        return it == env.end() ? std::nullopt : std::optional<std::string>(it->second);
    };
    EXPECT_EQ(cli::LanguageOffsetFromLocale(getenv), GetParam().offset);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, LocaleLanguage,
    ::testing::Values(
        LocaleCase{"Nothing", {}, kEnglish},
        LocaleCase{"LangGerman", {{"LANG", "de_DE.UTF-8"}}, kGerman},
        LocaleCase{"AustrianWithModifier", {{"LANG", "de_AT.UTF-8@euro"}}, kGerman},
        LocaleCase{"MessagesBeforeLang", {{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}}, kFrench},
        LocaleCase{"AllBeforeEverything",
                   {{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}, {"LC_ALL", "es_ES.UTF-8"}},
                   kSpanish},
        LocaleCase{"EmptyAllIsSkipped", {{"LC_ALL", ""}, {"LANG", "fr_CA"}}, kFrench},
        LocaleCase{"PosixIsEnglish", {{"LC_ALL", "C"}, {"LANG", "de_DE"}}, kEnglish},
        LocaleCase{"OtherLanguageIsEnglish", {{"LANG", "it_IT.UTF-8"}}, kEnglish},
        // The window starts Nicaraguan Spanish in English; the command line follows it.
        LocaleCase{"NicaraguaAsTheWindow", {{"LANG", "es_NI"}}, kEnglish}),
    [](const auto& info) { return info.param.name; });

struct NameCase {
    const char* name;
    const char* given;
    std::optional<int> offset;
};

class LanguageName : public ::testing::TestWithParam<NameCase> {};

TEST_P(LanguageName, IgnoresCaseAndTerritory) {
    EXPECT_EQ(cli::LanguageOffsetFromName(GetParam().given), GetParam().offset);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, LanguageName,
    ::testing::Values(NameCase{"Lower", "fr", kFrench}, NameCase{"Upper", "DE", kGerman},
                      NameCase{"Mixed", "Es", kSpanish},
                      NameCase{"Locale", "es_NI.UTF-8", kSpanish},
                      NameCase{"Dash", "en-GB", kEnglish}, NameCase{"Italian", "it", std::nullopt},
                      NameCase{"Empty", "", std::nullopt}, NameCase{"Longer", "deu", std::nullopt}),
    [](const auto& info) { return info.param.name; });

TEST(UnixManners, BannerFollowsTheLocaleUnlessLangIsGiven) {
    Env env = kSecret;
    env["LANG"] = "fr_FR.UTF-8";
    const auto byLocale = RunInProcess({"encrypt-text"}, "x", env);
    ASSERT_EQ(byLocale.status, 0) << byLocale.err;
    const auto byOption = RunInProcess({"encrypt-text", "--lang", "DE"}, "x", env);
    ASSERT_EQ(byOption.status, 0) << byOption.err;
    EXPECT_TRUE(RunInProcess({"decrypt-text"}, byLocale.out, kSecret).out.starts_with("Ce texte"));
    EXPECT_TRUE(
        RunInProcess({"decrypt-text"}, byOption.out, kSecret).out.starts_with("Dieser Text"));
}

TEST(UnixManners, QuietSilencesNotesAndVerboseNamesEveryStep) {
    ScratchFolder scratch;
    WriteFile(scratch / "a.txt", {'a'});
    const std::string twice = scratch / "a.txt";
    const auto plain =
        RunInProcess({"encrypt", "-o", scratch / "1.vexo", twice, twice}, "", kSecret);
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(plain.err, "kelvora-cli: files listed twice are encrypted once\n");
    const auto quiet =
        RunInProcess({"encrypt", "-q", "-o", scratch / "2.vexo", twice, twice}, "", kSecret);
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(quiet.err, "");
    const auto verbose = RunInProcess({"test", "--verbose", scratch / "1.vexo"}, "", kSecret);
    EXPECT_EQ(verbose.err, "kelvora-cli: checked a.txt\n");
    EXPECT_EQ(RunInProcess({"genpass", "-q", "-v"}).status, 2);
    EXPECT_EQ(RunInProcess({"rate", "--quiet", "-p", "-"}, "abc\n").status, 0);
}

TEST(UnixManners, JsonForListAndTest) {
    ScratchFolder scratch;
    WriteFile(scratch / "c.vexo",
              BuildContainer({{"say \"hi\".txt", {'h', 'i'}}, {"d\\e", {}}, {"caf\xe9", {'1'}}}));
    const auto listed = RunInProcess({"list", "--json", scratch / "c.vexo"}, "", kSecret);
    EXPECT_EQ(listed.status, 0) << listed.err;
    EXPECT_EQ(listed.out, "{\"files\":[{\"name\":\"say \\\"hi\\\".txt\",\"size\":2},"
                          "{\"name\":\"d/e\",\"size\":0},{\"name\":\"caf\u00e9\",\"size\":1}]}\n");
    const auto tested = RunInProcess({"test", "--json", scratch / "c.vexo"}, "", kSecret);
    EXPECT_EQ(tested.out,
              "{\"ok\":true,\"files\":[\"say \\\"hi\\\".txt\",\"d/e\",\"caf\u00e9\"]}\n");

    Bytes damaged = BuildContainer({{"ok.txt", {'k'}}, {"big.bin", PatternBytes(2100000, 9)}});
    damaged[damaged.size() - 200] ^= 1;
    WriteFile(scratch / "d.vexo", damaged);
    const auto failed = RunInProcess({"test", "--json", scratch / "d.vexo"}, "", kSecret);
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.out, "{\"ok\":false,\"error\":\"file 2 (big.bin), chunk 2 is damaged\","
                          "\"file\":2,\"name\":\"big.bin\",\"chunk\":2}\n");
    EXPECT_EQ(failed.err, "kelvora-cli: file 2 (big.bin), chunk 2 is damaged\n");
}

} // namespace
} // namespace kelvora
