#include "CliRun.h"
#include "cli/CliArgs.h"
#include "cli/FileProgress.h"
#include "cli/LanguageChoice.h"
#include "i18n/Catalogue.h"

#include <array>
#include <gtest/gtest.h>
#include <regex>

namespace kelvora {
namespace {

using namespace kelvora::testing;

constexpr std::array kSpecs = {
    cli::OptionSpec{"output", 'o', "FILE", {}}, cli::OptionSpec{"force", 'f', {}, {}},
    cli::OptionSpec{"quiet", 'q', {}, {}}, cli::OptionSpec{"key-file", '\0', "FILE", {}}};

TEST(ArgParsing, SplitsOptionsAndOperandsAsGnuToolsDo) {
    // The arguments, the options as "name=value" and the operands, each split at blanks, and
    // the error.
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        {"a b", "", "a b", ""},
        {"a -o x b --force", "output=x force=", "a b", ""},
        {"--output=x=y", "output=x=y", "", ""},
        {"-ox", "output=x", "", ""},
        {"-fqo x", "force= quiet= output=x", "", ""},
        {"--key-file 1 --key-file=2", "key-file=1 key-file=2", "", ""},
        {"-- -o --force", "", "-o --force", ""},
        {"- -f", "force=", "-", ""},
        {"-o -f", "output=-f", "", ""},
        {"--colour", "", "", "unknown option '--colour'"},
        {"-x", "", "", "unknown option '-x'"},
        {"a --output", "", "", "option '--output' needs a value"},
        {"--force=yes", "", "", "option '--force' takes no value"},
    };
    for (const auto& [args, expectedOptions, operands, error] : rows) {
        const cli::ArgParseResult result = cli::ParseArgs(Words(args), kSpecs);
        std::vector<std::string> options;
        for (const auto& [name, value] : result.args.options) {
            options.push_back(name + "=" + value);
        }
        EXPECT_EQ(result.error, error) << args;
        EXPECT_EQ(options, Words(expectedOptions)) << args;
        EXPECT_EQ(result.args.operands, Words(operands)) << args;
    }
}

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
        EXPECT_FALSE(std::regex_search(viaHelp.out, std::regex("[^\n]{80}"))) << viaHelp.out;
    }
    const auto overview = RunInProcess({"--help"});
    EXPECT_EQ(overview.status, 0);
    EXPECT_EQ(RunInProcess({"help"}).out, overview.out);
    // Without a command the overview goes to standard error, a usage error.
    const auto bare = RunInProcess({});
    EXPECT_EQ(bare.status, 2);
    EXPECT_EQ(bare.err, overview.out);
}

TEST(UnixManners, LanguageFollowsTheFirstLocaleVariableSetOrTheNameGiven) {
    const std::pair<Env, int> rows[] = {
        {{}, kEnglish},
        {{{"LANG", "de_DE.UTF-8"}}, kGerman},
        {{{"LANG", "de_AT.UTF-8@euro"}}, kGerman},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}}, kFrench},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}, {"LC_ALL", "es_ES.UTF-8"}}, kSpanish},
        {{{"LC_ALL", ""}, {"LANG", "fr_CA"}}, kFrench},
        {{{"LC_ALL", "C"}, {"LANG", "de_DE"}}, kEnglish},
        {{{"LANG", "it_IT.UTF-8"}}, kEnglish},
        // The window starts Nicaraguan Spanish in English; the command line follows it.
        {{{"LANG", "es_NI"}}, kEnglish},
    };
    for (const auto& [env, offset] : rows) {
        EXPECT_EQ(cli::LanguageOffsetFromLocale(Lookup(env)), offset) << env.size();
    }
    // A name given with --lang ignores case and territory.
    const std::pair<const char*, std::optional<int>> names[] = {
        {"fr", kFrench},     {"DE", kGerman},      {"Es", kSpanish},   {"es_NI.UTF-8", kSpanish},
        {"en-GB", kEnglish}, {"it", std::nullopt}, {"", std::nullopt}, {"deu", std::nullopt},
    };
    for (const auto& [given, offset] : names) {
        EXPECT_EQ(cli::LanguageOffsetFromName(given), offset) << given;
    }
}

// An encrypted text is printed in lines of at most 76 characters, with one line break at the
// end.
TEST(UnixManners, PrintsEncryptedTextsInLinesOfAtMost76Characters) {
    const auto encrypted = RunInProcess({"encrypt-text"}, std::string(300, 'x'), Passphrase("x"));
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;
    EXPECT_TRUE(std::regex_match(encrypted.out, std::regex("([A-Za-z0-9+/=]{1,76}\n){5,}")))
        << encrypted.out;
}

TEST(UnixManners, ProgressShowsBytesSpeedAndTimeLeft) {
    const std::tuple<std::int64_t, std::int64_t, double, const char*> rows[] = {
        {50000000, 100000000, 2.0, "50.0 MB of 100.0 MB  25.0 MB/s  0:02 left"},
        {1000000, 200000000, 1.0, "1.0 MB of 200.0 MB  1.0 MB/s  3:19 left"},
        {0, 100, 0.0, "0.0 MB of 0.0 MB  0.0 MB/s"},
        {5000000, 0, 2.0, "5.0 MB  2.5 MB/s"}, // total unknown
    };
    for (const auto& [done, total, seconds, line] : rows) {
        EXPECT_EQ(cli::ProgressLine(done, total, seconds), line);
    }
}

TEST(UnixManners, GenpassGivesADifferent32CharacterLineEachTime) {
    const auto first = RunInProcess({"genpass"});
    EXPECT_TRUE(std::regex_match(first.out, std::regex("[^\n]{32}\n"))) << first.out;
    EXPECT_NE(first.out, RunInProcess({"genpass"}).out);
}

} // namespace
} // namespace kelvora
