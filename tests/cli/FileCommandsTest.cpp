#include "ProcessRunner.h"
#include "cli/FileProgress.h"
#include "files/FileTestSupport.h"

#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <sstream>

namespace kelvora {
namespace {

using namespace kelvora::testing;

const std::map<std::string, std::string> kSecret = {{"KELVORA_PASSPHRASE", kPassphrase}};
const std::map<std::string, std::string> kWrong = {{"KELVORA_PASSPHRASE", "wrong"}};

// A tree with the awkward cases: nested folders, an empty file, one byte, umlauts and
// accents, 200- and 255-character names and a file of three chunks.
TEST(FileCommands, EncryptListTestAndDecryptRoundTrip) {
    ScratchFolder scratch;
    const std::string x200(200, 'x');
    const std::string n255(255, 'n');
    WriteFile(scratch / "in/Tree/\xC3\x84rger/caf\xC3\xA9.txt", PatternBytes(1000, 1, true));
    WriteFile(scratch / "in/Tree/leer", {});
    WriteFile(scratch / "in/Tree/sub/one", {'1'});
    WriteFile(scratch / "in/Tree/sub/" + x200, PatternBytes(5, 2));
    WriteFile(scratch / "in/big.bin", PatternBytes(4300000, 3, true));
    WriteFile(scratch / "in/" + n255, PatternBytes(77, 4));
    const std::string container = scratch / "c.vexo";
    const auto encrypted = RunCli({"encrypt", "-o", container, scratch / "in/Tree",
                                   scratch / "in/big.bin", scratch / "in/" + n255},
                                  {}, kSecret);
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;
    EXPECT_EQ(encrypted.err, "");

    const auto listed = RunCli({"list", container}, {}, kSecret);
    EXPECT_EQ(listed.status, 0) << listed.err;
    // A folder's entries go in by name, byte for byte, so "\xC3\x84rger" comes last.
    EXPECT_EQ(listed.out, "0\tTree/leer\n1\tTree/sub/one\n5\tTree/sub/" + x200 +
                              "\n1000\tTree/\xC3\x84rger/caf\xC3\xA9.txt\n4300000\tbig.bin\n77\t" +
                              n255 + "\n");
    EXPECT_EQ(RunCli({"test", container}, {}, kSecret).out, "OK\n");

    const auto decrypted = RunCli({"decrypt", container, "-C", scratch / "out"}, {}, kSecret);
    ASSERT_EQ(decrypted.status, 0) << decrypted.err;
    EXPECT_EQ(std::count(decrypted.out.begin(), decrypted.out.end(), '\n'), 6);
    EXPECT_EQ(FilesBelow(scratch / "out"), FilesBelow(scratch / "in"));
    for (const std::string& name : FilesBelow(scratch / "in")) {
        EXPECT_EQ(ReadFile(scratch / "out/" + name), ReadFile(scratch / "in/" + name)) << name;
    }
}

// A command line against a prepared container and output folder that holds a.txt already.
struct OutcomeCase {
    const char* name;
    const char* args; // split at blanks; {c} is the container, {o} the output folder
    bool wrongPassphrase;
    int status;
    std::string err;      // how the error output starts
    std::string existing; // what out/a.txt holds afterwards
};

class FileCommandOutcome : public ::testing::TestWithParam<OutcomeCase> {};

TEST_P(FileCommandOutcome, EndsWithItsStatusAndErrorLineAndTouchesOnlyWhatItShould) {
    ScratchFolder scratch;
    WriteFile(scratch / "c.vexo",
              BuildContainer({{"a.txt", {'n', 'e', 'w'}}, {"d\\b.txt", {'b'}}}));
    WriteFile(scratch / "out/a.txt", {'o', 'l', 'd'});
    std::string line =
        std::regex_replace(GetParam().args, std::regex("\\{c\\}"), scratch / "c.vexo");
    std::istringstream words(std::regex_replace(line, std::regex("\\{o\\}"), scratch / "out"));
    const std::vector<std::string> args(std::istream_iterator<std::string>(words), {});
    const auto result = RunCli(args, {}, GetParam().wrongPassphrase ? kWrong : kSecret);
    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_EQ(result.err.substr(0, GetParam().err.size()), GetParam().err) << result.err;
    EXPECT_EQ(ReadFile(scratch / "out/a.txt"), BytesFromString(GetParam().existing));
    const bool restoredB = GetParam().status == 0 && GetParam().err.empty();
    EXPECT_EQ(FilesBelow(scratch.Path()).size(), restoredB ? 3u : 2u);
}

const std::string kFailed = "kelvora-cli: ";
const std::string kWrongPassphrase = "kelvora-cli: wrong passphrase\n";

INSTANTIATE_TEST_SUITE_P(
    Cases, FileCommandOutcome,
    ::testing::Values(
        OutcomeCase{"ExistingFile", "decrypt {c} -C {o}", false, 1, kFailed, "old"},
        OutcomeCase{"SkipExisting", "decrypt {c} -C {o} --skip-existing", false, 0, "", "old"},
        OutcomeCase{"Overwrite", "decrypt {c} -C {o} --overwrite", false, 0, "", "new"},
        OutcomeCase{"BothAnswers", "decrypt {c} -C {o} --overwrite --skip-existing", false, 2,
                    "kelvora-cli: --overwrite, --skip-existing and --rename", "old"},
        OutcomeCase{"WrongPassphraseDecrypt", "decrypt {c} -C {o} --overwrite", true, 1,
                    kWrongPassphrase, "old"},
        OutcomeCase{"WrongPassphraseTest", "test {c}", true, 1, kWrongPassphrase, "old"},
        OutcomeCase{"WrongPassphraseList", "list {c}", true, 1, kWrongPassphrase, "old"},
        OutcomeCase{"ExistingContainer", "encrypt -o {c} {o}", false, 1, kFailed, "old"},
        OutcomeCase{"NoContainer", "decrypt", false, 2, kFailed, "old"},
        OutcomeCase{"NotAContainer", "test {o}/a.txt", false, 1, kFailed, "old"}),
    [](const auto& info) { return info.param.name; });

TEST(FileCommands, DecryptNamesEveryConflictBeforeWritingAndCanRename) {
    ScratchFolder scratch;
    WriteFile(
        scratch / "c.vexo",
        BuildContainer({{"a.txt", {'1'}}, {"b.txt", {'2'}}, {"c.txt", {'3'}}, {"b.txt", {'4'}}}));
    WriteFile(scratch / "out/c.txt", {'o'});
    const std::string out = scratch / "out";
    const auto refused = RunCli({"decrypt", scratch / "c.vexo", "-C", out}, {}, kSecret);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "kelvora-cli: " + out + "/c.txt exists already\nkelvora-cli: " + out +
                               "/b.txt exists already\nkelvora-cli: 2 files exist already (use "
                               "--overwrite, --skip-existing or --rename); nothing was written\n");
    EXPECT_EQ(FilesBelow(out), std::vector<std::string>{"c.txt"});

    const auto skipped =
        RunCli({"decrypt", scratch / "c.vexo", "-C", out, "--skip-existing"}, {}, kSecret);
    EXPECT_EQ(skipped.status, 0);
    EXPECT_EQ(skipped.err, "kelvora-cli: skipped " + out +
                               "/c.txt: exists already\nkelvora-cli: skipped " + out +
                               "/b.txt: exists already\n");

    const auto renamed =
        RunCli({"decrypt", scratch / "c.vexo", "-C", out, "--rename"}, {}, kSecret);
    EXPECT_EQ(renamed.status, 0) << renamed.err;
    EXPECT_EQ(FilesBelow(out),
              (std::vector<std::string>{"a (2).txt", "a.txt", "b (2).txt", "b (3).txt", "b.txt",
                                        "c (2).txt", "c.txt"}));
    EXPECT_EQ(ReadFile(out + "/b (3).txt"), BytesFromString("4"));
    EXPECT_EQ(ReadFile(out + "/c.txt"), BytesFromString("o"));
}

TEST(FileCommands, NamesWithControlCharactersAreShownEscapedAndNeverCreated) {
    ScratchFolder scratch;
    WriteFile(scratch / "c.vexo",
              BuildContainer(
                  {{"\x1b]0;pwned\x07.txt", {'t'}}, {"two\nlines", {'n'}}, {"fine.txt", {'f'}}}));
    const auto listed = RunCli({"list", scratch / "c.vexo"}, {}, kSecret);
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.out, "1\t\\x1b]0;pwned\\x07.txt\n1\ttwo\\x0alines\n1\tfine.txt\n");
    const auto decrypted =
        RunCli({"decrypt", scratch / "c.vexo", "-C", scratch / "out"}, {}, kSecret);
    EXPECT_EQ(decrypted.status, 1);
    EXPECT_EQ(decrypted.err.find('\x1b'), std::string::npos) << decrypted.err;
    EXPECT_EQ(std::count(decrypted.err.begin(), decrypted.err.end(), '\n'), 3) << decrypted.err;
    EXPECT_EQ(FilesBelow(scratch / "out"), std::vector<std::string>{"fine.txt"});
}

TEST(FileCommands, TestNamesTheDamagedFileAndChunk) {
    ScratchFolder scratch;
    Bytes container = BuildContainer({{"ok.txt", {'k'}}, {"big.bin", PatternBytes(2100000, 9)}});
    container[container.size() - 200] ^= 1;
    WriteFile(scratch / "c.vexo", container);
    const auto result = RunCli({"test", scratch / "c.vexo"}, {}, kSecret);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "kelvora-cli: file 2 (big.bin), chunk 2 is damaged\n");
    EXPECT_EQ(result.out, "");
}

TEST(FileCommands, HostileNamesAreRefusedAndTheRestRestored) {
    ScratchFolder scratch;
    WriteFile(
        scratch / "c.vexo",
        BuildContainer({{"..\\escape.txt", {'x'}}, {"\\abs.txt", {'y'}}, {"fine.txt", {'z'}}}));
    const auto result = RunCli({"decrypt", scratch / "c.vexo", "-C", scratch / "out"}, {}, kSecret);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, scratch / "out/fine.txt\n");
    EXPECT_NE(result.err.find("../escape.txt: refused"), std::string::npos) << result.err;
    EXPECT_EQ(FilesBelow(scratch.Path()), (std::vector<std::string>{"c.vexo", "out/fine.txt"}));
}

// Every command that writes a named output refuses an existing one unless --force, and
// replaces it only with a complete file.
struct ExistingOutputCase {
    const char* name;
    std::vector<std::string> args; // "{o}" is the existing output file
    std::string input;
    bool force;
};

class ExistingOutput : public ::testing::TestWithParam<ExistingOutputCase> {};

TEST_P(ExistingOutput, IsRefusedUnlessForcedAndThenReplacedWhole) {
    ScratchFolder scratch;
    WriteFile(scratch / "existing.txt", {'o', 'l', 'd'});
    std::vector<std::string> args = GetParam().args;
    std::replace(args.begin(), args.end(), std::string("{o}"), scratch / "existing.txt");
    if (GetParam().force) {
        args.push_back("--force");
    }
    // "{armoured}" stands for a text encrypted by the program itself.
    const std::string input = GetParam().input == "{armoured}"
                                  ? RunCli({"encrypt-text"}, "hello", kSecret).out
                                  : GetParam().input;
    const auto result = RunCli(args, input, kSecret);
    const Bytes after = ReadFile(scratch / "existing.txt");
    EXPECT_EQ(FilesBelow(scratch.Path()), std::vector<std::string>{"existing.txt"});
    if (GetParam().force) {
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_NE(after, BytesFromString("old"));
    } else {
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, "kelvora-cli: " + scratch / "existing.txt" +
                                  " exists already (use --force to replace it)\n");
        EXPECT_EQ(after, BytesFromString("old"));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ExistingOutput,
    ::testing::Values(
        ExistingOutputCase{"EncryptText", {"encrypt-text", "-o", "{o}"}, "hello", false},
        ExistingOutputCase{"EncryptTextForced", {"encrypt-text", "-o", "{o}"}, "hello", true},
        ExistingOutputCase{"DecryptText", {"decrypt-text", "-o", "{o}"}, "{armoured}", false},
        ExistingOutputCase{"DecryptTextForced", {"decrypt-text", "-o", "{o}"}, "{armoured}", true}),
    [](const auto& info) { return info.param.name; });

TEST(FileCommands, EncryptNeverMakesAnInputItsContainer) {
    ScratchFolder scratch;
    WriteFile(scratch / "a.txt", {'a'});
    WriteFile(scratch / "b.txt", {'b'});
    const auto result = RunCli(
        {"encrypt", "--force", "-o", scratch / "a.txt", scratch / "a.txt", scratch / "b.txt"}, {},
        kSecret);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("one of the inputs"), std::string::npos) << result.err;
    EXPECT_EQ(ReadFile(scratch / "a.txt"), BytesFromString("a"));
}

struct ProgressCase {
    const char* name;
    std::int64_t done;
    std::int64_t total;
    double seconds;
    const char* line;
};

class ProgressText : public ::testing::TestWithParam<ProgressCase> {};

TEST_P(ProgressText, ShowsBytesSpeedAndTimeLeft) {
    EXPECT_EQ(cli::ProgressLine(GetParam().done, GetParam().total, GetParam().seconds),
              GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ProgressText,
    ::testing::Values(ProgressCase{"Halfway", 50000000, 100000000, 2.0,
                                   "50.0 MB of 100.0 MB  25.0 MB/s  0:02 left"},
                      ProgressCase{"MinutesLeft", 1000000, 200000000, 1.0,
                                   "1.0 MB of 200.0 MB  1.0 MB/s  3:19 left"},
                      ProgressCase{"NothingYet", 0, 100, 0.0, "0.0 MB of 0.0 MB  0.0 MB/s"},
                      ProgressCase{"TotalUnknown", 5000000, 0, 2.0, "5.0 MB  2.5 MB/s"}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
