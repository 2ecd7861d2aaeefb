#include "CliRun.h"
#include "cli/FileProgress.h"
#include "files/FileTestSupport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

const Env kSecret = {{"KELVORA_PASSPHRASE", kPassphrase}};

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
    const auto encrypted = RunInProcess({"encrypt", "-o", container, scratch / "in/Tree",
                                         scratch / "in/big.bin", scratch / "in/" + n255},
                                        {}, kSecret);
    ASSERT_EQ(encrypted.status, 0) << encrypted.err;
    EXPECT_EQ(encrypted.err, "");

    const auto listed = RunInProcess({"list", container}, {}, kSecret);
    EXPECT_EQ(listed.status, 0) << listed.err;
    // A folder's entries go in by name, byte for byte, so "\xC3\x84rger" comes last.
    EXPECT_EQ(listed.out, "0\tTree/leer\n1\tTree/sub/one\n5\tTree/sub/" + x200 +
                              "\n1000\tTree/\xC3\x84rger/caf\xC3\xA9.txt\n4300000\tbig.bin\n77\t" +
                              n255 + "\n");
    EXPECT_EQ(RunInProcess({"test", container}, {}, kSecret).out, "OK\n");

    const auto decrypted = RunInProcess({"decrypt", container, "-C", scratch / "out"}, {}, kSecret);
    ASSERT_EQ(decrypted.status, 0) << decrypted.err;
    EXPECT_EQ(std::count(decrypted.out.begin(), decrypted.out.end(), '\n'), 6);
    EXPECT_EQ(FilesBelow(scratch / "out"), FilesBelow(scratch / "in"));
    for (const std::string& name : FilesBelow(scratch / "in")) {
        EXPECT_EQ(ReadFile(scratch / "out/" + name), ReadFile(scratch / "in/" + name)) << name;
    }
}

TEST(FileCommands, DecryptNamesEveryConflictBeforeWritingAndCanRename) {
    ScratchFolder scratch;
    WriteFile(
        scratch / "c.vexo",
        BuildContainer({{"a.txt", {'1'}}, {"b.txt", {'2'}}, {"c.txt", {'3'}}, {"b.txt", {'4'}}}));
    WriteFile(scratch / "out/c.txt", {'o'});
    const std::string out = scratch / "out";
    const auto refused = RunInProcess({"decrypt", scratch / "c.vexo", "-C", out}, {}, kSecret);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "kelvora-cli: " + out + "/c.txt exists already\nkelvora-cli: " + out +
                               "/b.txt exists already\nkelvora-cli: 2 files exist already (use "
                               "--overwrite, --skip-existing or --rename); nothing was written\n");
    EXPECT_EQ(FilesBelow(out), std::vector<std::string>{"c.txt"});

    const auto skipped =
        RunInProcess({"decrypt", scratch / "c.vexo", "-C", out, "--skip-existing"}, {}, kSecret);
    EXPECT_EQ(skipped.status, 0);
    EXPECT_EQ(skipped.err, "kelvora-cli: skipped " + out +
                               "/c.txt: exists already\nkelvora-cli: skipped " + out +
                               "/b.txt: exists already\n");

    const auto renamed =
        RunInProcess({"decrypt", scratch / "c.vexo", "-C", out, "--rename"}, {}, kSecret);
    EXPECT_EQ(renamed.status, 0) << renamed.err;
    EXPECT_EQ(FilesBelow(out),
              (std::vector<std::string>{"a (2).txt", "a.txt", "b (2).txt", "b (3).txt", "b.txt",
                                        "c (2).txt", "c.txt"}));
    EXPECT_EQ(ReadFile(out + "/b (3).txt"), BytesFromString("4"));
    EXPECT_EQ(ReadFile(out + "/c.txt"), BytesFromString("o"));

    const auto replaced =
        RunInProcess({"decrypt", scratch / "c.vexo", "-C", out, "--overwrite"}, {}, kSecret);
    EXPECT_EQ(replaced.status, 0) << replaced.err;
    EXPECT_EQ(ReadFile(out + "/c.txt"), BytesFromString("3"));
    EXPECT_EQ(FilesBelow(out).size(), 7u);
}

TEST(FileCommands, UnsafeNamesAreShownEscapedAndNeverCreatedAndTheRestRestored) {
    ScratchFolder scratch;
    WriteFile(scratch / "c.vexo", BuildContainer({{"\x1b]0;pwned\x07.txt", {'t'}},
                                                  {"two\nlines", {'n'}},
                                                  {"..\\escape.txt", {'x'}},
                                                  {"\\abs.txt", {'y'}},
                                                  {"fine.txt", {'f'}}}));
    const auto listed = RunInProcess({"list", scratch / "c.vexo"}, {}, kSecret);
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.out, "1\t\\x1b]0;pwned\\x07.txt\n1\ttwo\\x0alines\n1\t../escape.txt\n"
                          "1\t/abs.txt\n1\tfine.txt\n");
    const auto decrypted =
        RunInProcess({"decrypt", scratch / "c.vexo", "-C", scratch / "out"}, {}, kSecret);
    EXPECT_EQ(decrypted.status, 1);
    EXPECT_EQ(decrypted.out, scratch / "out/fine.txt\n");
    EXPECT_EQ(decrypted.err.find('\x1b'), std::string::npos) << decrypted.err;
    EXPECT_NE(decrypted.err.find("kelvora-cli: ../escape.txt: refused, its stored name would leave "
                                 "the output folder or holds control characters\n"),
              std::string::npos)
        << decrypted.err;
    EXPECT_EQ(std::count(decrypted.err.begin(), decrypted.err.end(), '\n'), 5) << decrypted.err;
    EXPECT_EQ(FilesBelow(scratch.Path()), (std::vector<std::string>{"c.vexo", "out/fine.txt"}));
}

// Every command that writes a named output refuses an existing one unless --force, and
// replaces it only with a complete file.
class ExistingOutput : public ::testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(ExistingOutput, IsRefusedUnlessForcedAndThenReplacedWhole) {
    ScratchFolder scratch;
    WriteFile(scratch / "in.txt", {'i', 'n'});
    // The input is a text the program encrypted: plain text for some, armour for others.
    const std::string input = RunInProcess({"encrypt-text"}, "hello", kSecret).out;
    for (const bool force : {false, true}) {
        WriteFile(scratch / "existing", {'o', 'l', 'd'});
        auto args =
            Words(GetParam().second, {{"{o}", scratch / "existing"}, {"{in}", scratch / "in.txt"}});
        if (force) {
            args.push_back("--force");
        }
        const auto result = RunInProcess(args, input, kSecret);
        EXPECT_EQ(FilesBelow(scratch.Path()), (std::vector<std::string>{"existing", "in.txt"}));
        EXPECT_EQ(ReadFile(scratch / "existing") == BytesFromString("old"), !force);
        EXPECT_EQ(result.status, force ? 0 : 1) << result.err;
        EXPECT_EQ(result.err, force ? ""
                                    : "kelvora-cli: " + scratch / "existing" +
                                          " exists already (use --force to replace it)\n");
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, ExistingOutput,
                         ::testing::Values(std::pair{"EncryptText", "encrypt-text -o {o}"},
                                           std::pair{"DecryptText", "decrypt-text -o {o}"},
                                           std::pair{"Encrypt", "encrypt -o {o} {in}"},
                                           std::pair{"EncryptInput", "encrypt --name n -o {o} -"}),
                         [](const auto& info) { return std::string(info.param.first); });

// Special files never make a file command wait: they are named and left out, or refused.
TEST(SpecialFiles, AreLeftOutOrRefusedWithoutWaiting) {
    ScratchFolder scratch;
    ASSERT_EQ(::mkfifo((scratch / "fifo").c_str(), 0600), 0);
    WriteFile(scratch / "a.txt", {'a'});
    const auto encrypted = RunInProcess(
        {"encrypt", "-o", scratch / "c.vexo", scratch / "fifo", scratch / "a.txt"}, "", kSecret);
    EXPECT_EQ(encrypted.status, 1);
    EXPECT_EQ(encrypted.err, "kelvora-cli: " + scratch / "fifo" +
                                 ": refused, not a regular file (a FIFO, socket or device)\n"
                                 "kelvora-cli: 1 entry was left out (named above)\n");
    EXPECT_EQ(RunInProcess({"list", scratch / "c.vexo"}, "", kSecret).out, "1\ta.txt\n");
    for (const char* command : {"list", "test", "decrypt"}) {
        const auto read = RunInProcess({command, scratch / "fifo"}, "", kSecret);
        EXPECT_EQ(read.status, 1) << command;
        EXPECT_NE(read.err.find("not a regular file"), std::string::npos) << read.err;
    }
    // A file that reads as empty but holds data is not stored empty.
    const auto proc =
        RunInProcess({"encrypt", "-o", scratch / "p.vexo", "/proc/self/status"}, "", kSecret);
    EXPECT_EQ(proc.status, 1);
    EXPECT_NE(proc.err.find("/proc/self/status: refused, its size is not known"), std::string::npos)
        << proc.err;
    EXPECT_FALSE(PathExists(scratch / "p.vexo"));
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
