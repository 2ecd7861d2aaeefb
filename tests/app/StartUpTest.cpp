// How the program starts: the system's locale chooses the language, the command line (typed,
// or made by a desktop launcher from the packaging's entries) chooses the page.
#include "app/CommandLine.h"
#include "app/LanguageId.h"
#include "i18n/Catalogue.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace kelvora {
namespace {

struct LanguageCase {
    const char* name;
    const char* locale; // nullptr: an id of the lists that no locale produces
    int langId;
    int offset;
};

const LanguageCase kLanguages[] = {
    {"GermanGermany", "de_DE", 1031, kGerman},
    {"GermanAustria", "de_AT", 3079, kGerman},
    {"GermanSwitzerlandInUtf8", "de_CH.UTF-8", 2055, kGerman},
    {"GermanLiechtenstein", "de_LI", 5127, kGerman},
    {"GermanUnknownTerritory", "de_", 1031, kGerman},
    {"GermanWithoutTerritory", "de", 1031, kGerman},
    {"SpanishSpainWithModifier", "es_ES@euro", 3082, kSpanish},
    {"SpanishMexico", "es_MX", 2058, kSpanish},
    {"SpanishHonduras", "es_HN", 18442, kSpanish},
    {"SpanishNicaraguaFallsToEnglish", "es_NI", 19466, kEnglish},
    {"SpanishPuertoRico", "es_PR", 20490, kSpanish},
    {"SpanishUnitedStates", "es_US", 21514, kEnglish},
    {"FrenchFrance", "fr_FR", 1036, kFrench},
    {"FrenchWithoutTerritory", "fr", 1036, kFrench},
    {"FrenchCanada", "fr_CA", 3084, kFrench},
    {"FrenchMonaco", "fr_MC", 6156, kFrench},
    {"EnglishUs", "en_US", 1033, kEnglish},
    {"EnglishBritain", "en_GB", 2057, kEnglish},
    {"Italian", "it_IT", 1040, kEnglish},
    {"UnknownLanguage", "xx_YY", 0, kEnglish},
    {"CLocale", "C", 0, kEnglish},
    {"NoLocale", "", 0, kEnglish},
    {"GermanNeutral", nullptr, 7, kGerman},
    {"FrenchNeutral", nullptr, 12, kFrench},
    {"SpanishTraditional", nullptr, 1034, kSpanish},
    {"OddSpanishEntry", nullptr, 1216, kSpanish},
    {"SpanishNeutralNotListed", nullptr, 10, kEnglish},
    {"FrenchLuxembourg", nullptr, 5132, kFrench},
};

class LanguageTable : public ::testing::TestWithParam<LanguageCase> {};

TEST_P(LanguageTable, MapsLocaleToIdAndIdToOffset) {
    const LanguageCase& c = GetParam();
    if (c.locale != nullptr) {
        EXPECT_EQ(WindowsLanguageIdOfLocale(c.locale), c.langId);
    }
    EXPECT_EQ(LanguageOffsetForLangId(c.langId), c.offset);
}

INSTANTIATE_TEST_SUITE_P(Table, LanguageTable, ::testing::ValuesIn(kLanguages),
                         [](const auto& info) { return info.param.name; });

// A row gives the command line, then what it asks for: the request, the encrypt arguments,
// the container with its folder, and the files to encrypt with their output.
struct CommandCase {
    const char* name;
    const char* commandLine;
    StartCommand expected;
};

using R = StartRequest;

// Command is a StartCommand with the fields a row leaves out empty.
StartCommand Command(R request, std::string encryptArguments = {}, std::string decryptFile = {},
                     std::string decryptOutPath = {}, std::vector<std::string> encryptFiles = {},
                     std::string encryptOutput = {}) {
    return {request, encryptArguments, decryptFile, decryptOutPath, encryptFiles, encryptOutput};
}

// clang-format off
const CommandCase kCommands[] = {
    {"Empty", "", Command(R::Nothing)},
    {"EncryptPage", "/filee", Command(R::OpenEncryptPage)},
    {"EncryptPageByPrefix", "/fileeXYZ", Command(R::OpenEncryptPage)},
    {"DecryptPageUpperCase", "/FILED", Command(R::OpenDecryptPage)},
    {"TextPage", "/Text", Command(R::OpenTextPage)},
    {"TooShortForFilee", "/file", Command(R::Nothing)},
    {"EncryptFiles", "/SetEncrFiles /home/A.txt \"/a b/c\" /OUTPUTFILE /home/Out.vexo", Command(R::SetEncryptFiles,
     "/home/A.txt \"/a b/c\" /OUTPUTFILE /home/Out.vexo", "", "", {"/home/A.txt", "/a b/c"}, "/home/Out.vexo")},
    {"EncryptFilesWithNothingBehind", "/setencrfiles ", Command(R::Nothing)},
    {"EncryptFilesWithoutBlank", "/setencrfiles", Command(R::Nothing)},
    {"DecryptFileKeepsCase", "/SETDECRFILE /Home/Box/B.vexo", Command(R::SetDecryptFile, "", "/Home/Box/B.vexo", "/Home/Box/")},
    {"DecryptFileWithoutFolder", "/setDecrFile b.vexo", Command(R::SetDecryptFile, "", "b.vexo")},
    {"DecryptFileQuotesKept", "/setdecrfile \"/a b/c.vexo\"", Command(R::SetDecryptFile, "", "\"/a b/c.vexo\"", "\"/a b/")},
    {"DecryptFileWithoutBlank", "/setDecrFile", Command(R::Nothing)},
    {"Usage", "/?", Command(R::ShowUsage)},
    {"UsageWithMore", "/?x", Command(R::ShowUsage)},
    {"SwitchMustStartTheLine", " /filee", Command(R::Nothing)},
    {"Unknown", "/help", Command(R::Nothing)},
};
// clang-format on

class CommandLineDispatch : public ::testing::TestWithParam<CommandCase> {};

TEST_P(CommandLineDispatch, ParsesTheWholeArgumentString) {
    EXPECT_EQ(ParseCommandLine(GetParam().commandLine), GetParam().expected);
    // The same text handed over as one argument reads the same.
    EXPECT_EQ(ParseArguments({GetParam().commandLine}), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, CommandLineDispatch, ::testing::ValuesIn(kCommands),
                         [](const auto& info) { return info.param.name; });

struct ArgumentsCase {
    const char* name;
    std::vector<std::string> words;
    StartCommand expected; // apart from the encrypt arguments as typed
};

// clang-format off
const ArgumentsCase kArgumentVectors[] = {
    {"None", {}, Command(R::Nothing)},
    {"DecryptFileWithBlanks", {"/setDecrFile", "/a b/c.vexo"}, Command(R::SetDecryptFile, "", "/a b/c.vexo", "/a b/")},
    {"DecryptFileSplitByBlanks", {"/SETDECRFILE", "/a", "b/c.vexo"}, Command(R::SetDecryptFile, "", "/a b/c.vexo", "/a b/")},
    {"EncryptFilesWithBlanks", {"/setEncrFiles", "/a b/c.txt", "d.txt", "/OutputFile", "/x y/out.vexo"}, Command(R::SetEncryptFiles, "", "", "", {"/a b/c.txt", "d.txt"}, "/x y/out.vexo")},
    {"EncryptFilesOutputSplitByBlanks", {"/SETENCRFILES", "a", "/outputfile", "/x", "y.vexo"}, Command(R::SetEncryptFiles, "", "", "", {"a"}, "/x y.vexo")},
    {"EncryptFilesWithoutOutput", {"/setencrfiles", "a b", "c"}, Command(R::SetEncryptFiles, "", "", "", {"a b", "c"})},
    {"SwitchWithSuffixIsNoSwitch", {"/setencrfilesX", "a"}, Command(R::Nothing)},
    {"PageSwitchWithMoreWords", {"/FileE", "ignored"}, Command(R::OpenEncryptPage)},
    {"PathsOnly", {"/home/a.txt", "/home/b.txt"}, Command(R::Nothing)},
};
// clang-format on

// ArgumentsOf is what the program makes of its words, apart from the encrypt arguments as typed.
StartCommand ArgumentsOf(const std::vector<std::string>& words) {
    StartCommand command = ParseArguments(words);
    command.encryptArguments.clear();
    return command;
}

class ArgumentVector : public ::testing::TestWithParam<ArgumentsCase> {};

TEST_P(ArgumentVector, KeepsEveryWordWhole) {
    EXPECT_EQ(ArgumentsOf(GetParam().words), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, ArgumentVector, ::testing::ValuesIn(kArgumentVectors),
                         [](const auto& info) { return info.param.name; });

TEST(CommandLineDispatch, ProgramNameLeavesTheFolderOut) {
    EXPECT_EQ(ProgramName("/usr/bin/kelvora"), "kelvora");
    EXPECT_EQ(ProgramName("kelvora"), "kelvora");
}

// Launch starts the Exec line of a group ("Desktop Entry", "Desktop Action text") of a desktop
// file of the packaging as a launcher does: %f is the one file, %F all of them, each file one
// word; the program's own name must come first and is not an argument.
StartCommand Launch(const std::string& file, const std::string& group,
                    const std::vector<std::string>& files) {
    std::ifstream in(std::string(KELVORA_PACKAGING_DIR) + "/" + file);
    std::string exec;
    bool inGroup = false;
    for (std::string line; exec.empty() && std::getline(in, line);) {
        if (line.starts_with('[')) {
            inGroup = line == "[" + group + "]";
        } else if (inGroup && line.starts_with("Exec=")) {
            exec = line.substr(5);
        }
    }
    std::istringstream words(exec);
    std::vector<std::string> arguments;
    for (std::string word; words >> word;) {
        if (word == "%F" || (word == "%f" && !files.empty())) {
            arguments.insert(arguments.end(), files.begin(),
                             word == "%f" ? files.begin() + 1 : files.end());
        } else if (word != "%f") {
            arguments.push_back(word);
        }
    }
    EXPECT_EQ(arguments.empty() ? "" : arguments.front(), "kelvora")
        << file << " [" << group << "]";
    return ArgumentsOf({arguments.begin() + (arguments.empty() ? 0 : 1), arguments.end()});
}

struct LaunchCase {
    const char* name;
    const char* file;
    const char* group;
    std::vector<std::string> files;
    StartCommand expected;
};

const std::vector<std::string> kChosen = {"/home/anna/notes.txt", "/home/anna/My Pictures"};
const char* const kBackup = "/home/anna/My Backups/Holiday 2026.vexo";

// clang-format off
const LaunchCase kLaunches[] = {
    {"MenuOpensTheFilesPage", "net.kelvora.Kelvora.desktop", "Desktop Entry", {}, Command(R::OpenEncryptPage)},
    {"DecryptActionOpensTheDecryptTab", "net.kelvora.Kelvora.desktop", "Desktop Action decrypt", {}, Command(R::OpenDecryptPage)},
    {"TextActionOpensTheTextPage", "net.kelvora.Kelvora.desktop", "Desktop Action text", {}, Command(R::OpenTextPage)},
    {"AContainerOpensWithItsPathWhole", "net.kelvora.Kelvora.Decrypt.desktop", "Desktop Entry", {kBackup}, Command(R::SetDecryptFile, "", kBackup, "/home/anna/My Backups/")},
    {"OtherFilesGoIntoTheEncryptList", "net.kelvora.Kelvora.Encrypt.desktop", "Desktop Entry", kChosen, Command(R::SetEncryptFiles, "", "", "", kChosen)},
};
// clang-format on

class DesktopEntry : public ::testing::TestWithParam<LaunchCase> {};

TEST_P(DesktopEntry, StartsWhereItPromises) {
    const LaunchCase& c = GetParam();
    EXPECT_EQ(Launch(c.file, c.group, c.files), c.expected);
}

INSTANTIATE_TEST_SUITE_P(Table, DesktopEntry, ::testing::ValuesIn(kLaunches),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
