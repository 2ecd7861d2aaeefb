#include "app/CommandLine.h"
#include "app/LanguageId.h"
#include "i18n/Catalogue.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

struct LocaleCase {
    const char* name;
    const char* language;
    const char* territory;
    int langId;
    int offset;
};

class LocaleToLanguage : public ::testing::TestWithParam<LocaleCase> {};

TEST_P(LocaleToLanguage, MapsLocaleToIdAndIdToOffset) {
    const LocaleCase& c = GetParam();
    const int langId = WindowsLanguageId(c.language, c.territory);
    EXPECT_EQ(langId, c.langId);
    EXPECT_EQ(LanguageOffsetForLangId(langId), c.offset);
}

INSTANTIATE_TEST_SUITE_P(
    Table, LocaleToLanguage,
    ::testing::Values(LocaleCase{"GermanGermany", "de", "DE", 1031, kGerman},
                      LocaleCase{"GermanAustria", "de", "AT", 3079, kGerman},
                      LocaleCase{"GermanSwitzerland", "de", "CH", 2055, kGerman},
                      LocaleCase{"GermanLiechtenstein", "de", "LI", 5127, kGerman},
                      LocaleCase{"GermanUnknownTerritory", "de", "", 1031, kGerman},
                      LocaleCase{"SpanishSpain", "es", "ES", 3082, kSpanish},
                      LocaleCase{"SpanishMexico", "es", "MX", 2058, kSpanish},
                      LocaleCase{"SpanishHonduras", "es", "HN", 18442, kSpanish},
                      LocaleCase{"SpanishNicaraguaFallsToEnglish", "es", "NI", 19466, kEnglish},
                      LocaleCase{"SpanishPuertoRico", "es", "PR", 20490, kSpanish},
                      LocaleCase{"SpanishUnitedStates", "es", "US", 21514, kEnglish},
                      LocaleCase{"FrenchFrance", "fr", "FR", 1036, kFrench},
                      LocaleCase{"FrenchCanada", "fr", "CA", 3084, kFrench},
                      LocaleCase{"FrenchMonaco", "fr", "MC", 6156, kFrench},
                      LocaleCase{"EnglishUs", "en", "US", 1033, kEnglish},
                      LocaleCase{"EnglishBritain", "en", "GB", 2057, kEnglish},
                      LocaleCase{"Italian", "it", "IT", 1040, kEnglish},
                      LocaleCase{"UnknownLanguage", "xx", "YY", 0, kEnglish},
                      LocaleCase{"CLocale", "C", "", 0, kEnglish}),
    [](const auto& info) { return info.param.name; });

struct LangIdCase {
    const char* name;
    int langId;
    int offset;
};

class LangIdToOffset : public ::testing::TestWithParam<LangIdCase> {};

TEST_P(LangIdToOffset, FollowsTheLists) {
    EXPECT_EQ(LanguageOffsetForLangId(GetParam().langId), GetParam().offset);
}

// The neutral and odd ids of the lists, which no locale above produces.
INSTANTIATE_TEST_SUITE_P(Table, LangIdToOffset,
                         ::testing::Values(LangIdCase{"GermanNeutral", 7, kGerman},
                                           LangIdCase{"FrenchNeutral", 12, kFrench},
                                           LangIdCase{"SpanishTraditional", 1034, kSpanish},
                                           LangIdCase{"OddSpanishEntry", 1216, kSpanish},
                                           LangIdCase{"SpanishNeutralNotListed", 10, kEnglish},
                                           LangIdCase{"FrenchLuxembourg", 5132, kFrench},
                                           LangIdCase{"Zero", 0, kEnglish}),
                         [](const auto& info) { return info.param.name; });

struct CommandCase {
    const char* name;
    const char* commandLine;
    StartCommand expected;
};

StartCommand Only(StartRequest request) {
    StartCommand command;
    command.request = request;
    return command;
}

StartCommand EncryptFiles(const char* arguments) {
    StartCommand command = Only(StartRequest::SetEncryptFiles);
    command.encryptArguments = arguments;
    return command;
}

StartCommand DecryptFile(const char* file, const char* outPath) {
    StartCommand command = Only(StartRequest::SetDecryptFile);
    command.decryptFile = file;
    command.decryptOutPath = outPath;
    return command;
}

class CommandLineDispatch : public ::testing::TestWithParam<CommandCase> {};

TEST_P(CommandLineDispatch, ParsesTheWholeArgumentString) {
    EXPECT_EQ(ParseCommandLine(GetParam().commandLine), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, CommandLineDispatch,
    ::testing::Values(
        CommandCase{"Empty", "", {}},
        CommandCase{"EncryptPage", "/filee", Only(StartRequest::OpenEncryptPage)},
        CommandCase{"EncryptPageByPrefix", "/fileeXYZ", Only(StartRequest::OpenEncryptPage)},
        CommandCase{"DecryptPageUpperCase", "/FILED", Only(StartRequest::OpenDecryptPage)},
        CommandCase{"TooShortForFilee", "/file", {}},
        CommandCase{"EncryptFiles", "/SetEncrFiles /home/A.txt /outputfile /home/Out.vexo",
                    EncryptFiles("/home/A.txt /outputfile /home/Out.vexo")},
        CommandCase{"EncryptFilesWithNothingBehind", "/setencrfiles ", {}},
        CommandCase{"EncryptFilesWithoutBlank", "/setencrfiles", {}},
        CommandCase{"DecryptFileKeepsCase", "/SETDECRFILE /Home/Box/B.vexo",
                    DecryptFile("/Home/Box/B.vexo", "/Home/Box/")},
        CommandCase{"DecryptFileWithoutFolder", "/setDecrFile b.vexo", DecryptFile("b.vexo", "")},
        CommandCase{"DecryptFileQuotesKept", "/setdecrfile \"/a b/c.vexo\"",
                    DecryptFile("\"/a b/c.vexo\"", "\"/a b/")},
        CommandCase{"DecryptFileWithoutBlank", "/setDecrFile", {}},
        CommandCase{"Usage", "/?", Only(StartRequest::ShowUsage)},
        CommandCase{"UsageWithMore", "/?x", Only(StartRequest::ShowUsage)},
        CommandCase{"SwitchMustStartTheLine", " /filee", {}}, CommandCase{"Unknown", "/help", {}}),
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
