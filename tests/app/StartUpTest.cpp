#include "app/CommandLine.h"
#include "app/LanguageId.h"
#include "i18n/Catalogue.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

struct LanguageCase {
    const char* name;
    const char* language; // nullptr: an id of the lists that no locale produces
    const char* territory;
    int langId;
    int offset;
};

const LanguageCase kLanguages[] = {
    {"GermanGermany", "de", "DE", 1031, kGerman},
    {"GermanAustria", "de", "AT", 3079, kGerman},
    {"GermanSwitzerland", "de", "CH", 2055, kGerman},
    {"GermanLiechtenstein", "de", "LI", 5127, kGerman},
    {"GermanUnknownTerritory", "de", "", 1031, kGerman},
    {"SpanishSpain", "es", "ES", 3082, kSpanish},
    {"SpanishMexico", "es", "MX", 2058, kSpanish},
    {"SpanishHonduras", "es", "HN", 18442, kSpanish},
    {"SpanishNicaraguaFallsToEnglish", "es", "NI", 19466, kEnglish},
    {"SpanishPuertoRico", "es", "PR", 20490, kSpanish},
    {"SpanishUnitedStates", "es", "US", 21514, kEnglish},
    {"FrenchFrance", "fr", "FR", 1036, kFrench},
    {"FrenchCanada", "fr", "CA", 3084, kFrench},
    {"FrenchMonaco", "fr", "MC", 6156, kFrench},
    {"EnglishUs", "en", "US", 1033, kEnglish},
    {"EnglishBritain", "en", "GB", 2057, kEnglish},
    {"Italian", "it", "IT", 1040, kEnglish},
    {"UnknownLanguage", "xx", "YY", 0, kEnglish},
    {"CLocale", "C", "", 0, kEnglish},
    {"GermanNeutral", nullptr, nullptr, 7, kGerman},
    {"FrenchNeutral", nullptr, nullptr, 12, kFrench},
    {"SpanishTraditional", nullptr, nullptr, 1034, kSpanish},
    {"OddSpanishEntry", nullptr, nullptr, 1216, kSpanish},
    {"SpanishNeutralNotListed", nullptr, nullptr, 10, kEnglish},
    {"FrenchLuxembourg", nullptr, nullptr, 5132, kFrench},
};

class LanguageTable : public ::testing::TestWithParam<LanguageCase> {};

TEST_P(LanguageTable, MapsLocaleToIdAndIdToOffset) {
    const LanguageCase& c = GetParam();
    if (c.language != nullptr) {
        EXPECT_EQ(WindowsLanguageId(c.language, c.territory), c.langId);
    }
    EXPECT_EQ(LanguageOffsetForLangId(c.langId), c.offset);
}

INSTANTIATE_TEST_SUITE_P(Table, LanguageTable, ::testing::ValuesIn(kLanguages),
                         [](const auto& info) { return info.param.name; });

TEST(LanguageTable, LocaleNamesSplitIntoLanguageAndTerritory) {
    EXPECT_EQ(WindowsLanguageIdOfLocale("de_DE"), 0x0407);
    EXPECT_EQ(WindowsLanguageIdOfLocale("de_CH.UTF-8"), 0x0807);
    EXPECT_EQ(WindowsLanguageIdOfLocale("es_ES@euro"), 0x0C0A);
    EXPECT_EQ(WindowsLanguageIdOfLocale("fr"), 0x040C);
    EXPECT_EQ(WindowsLanguageIdOfLocale("C"), 0);
    EXPECT_EQ(WindowsLanguageIdOfLocale(""), 0);
}

struct CommandCase {
    const char* name;
    const char* commandLine;
    StartRequest request;
    const char* encryptArguments = "";
    const char* decryptFile = "";
    const char* decryptOutPath = "";
    std::vector<std::string> encryptFiles = {};
    const char* encryptOutput = "";
};

const CommandCase kCommands[] = {
    {"Empty", "", StartRequest::Nothing},
    {"EncryptPage", "/filee", StartRequest::OpenEncryptPage},
    {"EncryptPageByPrefix", "/fileeXYZ", StartRequest::OpenEncryptPage},
    {"DecryptPageUpperCase", "/FILED", StartRequest::OpenDecryptPage},
    {"TextPage", "/Text", StartRequest::OpenTextPage},
    {"TooShortForFilee", "/file", StartRequest::Nothing},
    // clang-format off
    {"EncryptFiles", "/SetEncrFiles /home/A.txt \"/a b/c\" /OUTPUTFILE /home/Out.vexo", StartRequest::SetEncryptFiles,
     "/home/A.txt \"/a b/c\" /OUTPUTFILE /home/Out.vexo", "", "", {"/home/A.txt", "/a b/c"}, "/home/Out.vexo"},
    // clang-format on
    {"EncryptFilesWithNothingBehind", "/setencrfiles ", StartRequest::Nothing},
    {"EncryptFilesWithoutBlank", "/setencrfiles", StartRequest::Nothing},
    {"DecryptFileKeepsCase", "/SETDECRFILE /Home/Box/B.vexo", StartRequest::SetDecryptFile, "",
     "/Home/Box/B.vexo", "/Home/Box/"},
    {"DecryptFileWithoutFolder", "/setDecrFile b.vexo", StartRequest::SetDecryptFile, "", "b.vexo"},
    {"DecryptFileQuotesKept", "/setdecrfile \"/a b/c.vexo\"", StartRequest::SetDecryptFile, "",
     "\"/a b/c.vexo\"", "\"/a b/"},
    {"DecryptFileWithoutBlank", "/setDecrFile", StartRequest::Nothing},
    {"Usage", "/?", StartRequest::ShowUsage},
    {"UsageWithMore", "/?x", StartRequest::ShowUsage},
    {"SwitchMustStartTheLine", " /filee", StartRequest::Nothing},
    {"Unknown", "/help", StartRequest::Nothing},
};

class CommandLineDispatch : public ::testing::TestWithParam<CommandCase> {};

TEST_P(CommandLineDispatch, ParsesTheWholeArgumentString) {
    const CommandCase& c = GetParam();
    const StartCommand expected{c.request,        c.encryptArguments, c.decryptFile,
                                c.decryptOutPath, c.encryptFiles,     c.encryptOutput};
    EXPECT_EQ(ParseCommandLine(c.commandLine), expected);
    // The same text handed over as one argument reads the same.
    EXPECT_EQ(ParseArguments({c.commandLine}), expected);
}

INSTANTIATE_TEST_SUITE_P(Table, CommandLineDispatch, ::testing::ValuesIn(kCommands),
                         [](const auto& info) { return info.param.name; });

struct ArgumentsCase {
    const char* name;
    std::vector<std::string> words;
    StartRequest request;
    std::vector<std::string> encryptFiles = {};
    const char* encryptOutput = "";
    const char* decryptFile = "";
    const char* decryptOutPath = "";
};

// clang-format off
const ArgumentsCase kArgumentVectors[] = {
    {"None", {}, StartRequest::Nothing},
    {"DecryptFileWithBlanks", {"/setDecrFile", "/a b/c.vexo"}, StartRequest::SetDecryptFile, {}, "", "/a b/c.vexo", "/a b/"},
    {"DecryptFileSplitByBlanks", {"/SETDECRFILE", "/a", "b/c.vexo"}, StartRequest::SetDecryptFile, {}, "", "/a b/c.vexo", "/a b/"},
    {"EncryptFilesWithBlanks", {"/setEncrFiles", "/a b/c.txt", "d.txt", "/OutputFile", "/x y/out.vexo"}, StartRequest::SetEncryptFiles, {"/a b/c.txt", "d.txt"}, "/x y/out.vexo"},
    {"EncryptFilesOutputSplitByBlanks", {"/SETENCRFILES", "a", "/outputfile", "/x", "y.vexo"}, StartRequest::SetEncryptFiles, {"a"}, "/x y.vexo"},
    {"EncryptFilesWithoutOutput", {"/setencrfiles", "a b", "c"}, StartRequest::SetEncryptFiles, {"a b", "c"}},
    {"SwitchWithSuffixIsNoSwitch", {"/setencrfilesX", "a"}, StartRequest::Nothing},
    {"PageSwitchWithMoreWords", {"/FileE", "ignored"}, StartRequest::OpenEncryptPage},
    {"PathsOnly", {"/home/a.txt", "/home/b.txt"}, StartRequest::Nothing},
};
// clang-format on

class ArgumentVector : public ::testing::TestWithParam<ArgumentsCase> {};

TEST_P(ArgumentVector, KeepsEveryWordWhole) {
    const ArgumentsCase& c = GetParam();
    const StartCommand command = ParseArguments(c.words);
    EXPECT_EQ(command.request, c.request);
    EXPECT_EQ(command.encryptFiles, c.encryptFiles);
    EXPECT_EQ(command.encryptOutput, c.encryptOutput);
    EXPECT_EQ(command.decryptFile, c.decryptFile);
    EXPECT_EQ(command.decryptOutPath, c.decryptOutPath);
}

INSTANTIATE_TEST_SUITE_P(Table, ArgumentVector, ::testing::ValuesIn(kArgumentVectors),
                         [](const auto& info) { return info.param.name; });

TEST(CommandLineDispatch, JoinsWordsWithSingleBlanks) {
    const char* argv[] = {"/usr/bin/kelvora", "/setDecrFile", "/tmp/a", "b.vexo"};
    EXPECT_EQ(JoinArguments(4, argv), "/setDecrFile /tmp/a b.vexo");
    EXPECT_EQ(JoinArguments(1, argv), "");
    EXPECT_EQ(ProgramName(argv[0]), "kelvora");
    EXPECT_EQ(ProgramName("kelvora"), "kelvora");
}

} // namespace
} // namespace kelvora
