#include "ProcessRunner.h"
#include "files/FileTestSupport.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;
namespace fs = std::filesystem;

const std::map<std::string, std::string> kSecret = {{"KELVORA_PASSPHRASE", kPassphrase}};

// A job that runs long (a big file) or waits (a FIFO nobody writes), stopped by a signal.
struct StopCase {
    const char* name;
    int signal;
    bool waitsOnFifo;
};

class StopSignal : public ::testing::TestWithParam<StopCase> {};

TEST_P(StopSignal, EndsTheJobAtOnceWith128PlusTheSignalAndLeavesNothing) {
    ScratchFolder scratch;
    std::vector<std::string> args;
    if (GetParam().waitsOnFifo) {
        ASSERT_EQ(::mkfifo((scratch / "fifo").c_str(), 0600), 0);
        args = {"decrypt-text", "-i", scratch / "fifo", "-o", scratch / "out.txt"};
    } else {
        // A sparse file: gigabytes to work through, no disk space taken.
        fs::resize_file((WriteFile(scratch / "big.bin", {}), scratch / "big.bin"), 4LL << 30);
        args = {"encrypt", "-q", "-o", scratch / "c.vexo", scratch / "big.bin"};
    }
    const std::vector<std::string> before = FilesBelow(scratch.Path());
    const SignalledResult result = RunCliSignalled(args, kSecret, GetParam().signal, 300);
    EXPECT_GE(result.secondsToEnd, 0) << "still running 5 seconds after the signal";
    EXPECT_EQ(result.status, 128 + GetParam().signal) << result.err;
    EXPECT_EQ(FilesBelow(scratch.Path()), before);
    EXPECT_FALSE(PathExists(scratch / "out.txt"));
}

INSTANTIATE_TEST_SUITE_P(Cases, StopSignal,
                         ::testing::Values(StopCase{"IntWhileWaiting", SIGINT, true},
                                           StopCase{"TermWhileWaiting", SIGTERM, true},
                                           StopCase{"HupWhileWaiting", SIGHUP, true},
                                           StopCase{"QuitWhileWaiting", SIGQUIT, true},
                                           StopCase{"IntWhileWorking", SIGINT, false},
                                           StopCase{"TermWhileWorking", SIGTERM, false},
                                           StopCase{"HupWhileWorking", SIGHUP, false},
                                           StopCase{"QuitWhileWorking", SIGQUIT, false}),
                         [](const auto& info) { return info.param.name; });

// Special files never make a file command wait: they are named and left out, or refused.
TEST(SpecialFiles, AreLeftOutOrRefusedWithoutWaiting) {
    ScratchFolder scratch;
    ASSERT_EQ(::mkfifo((scratch / "fifo").c_str(), 0600), 0);
    WriteFile(scratch / "a.txt", {'a'});
    // SIGKILL after 5 seconds only guards against a hang; the commands end long before.
    const auto encrypted =
        RunCliSignalled({"encrypt", "-o", scratch / "c.vexo", scratch / "fifo", scratch / "a.txt"},
                        kSecret, SIGKILL, 5000);
    EXPECT_EQ(encrypted.status, 1);
    EXPECT_EQ(encrypted.err, "kelvora-cli: " + scratch / "fifo" +
                                 ": refused, not a regular file (a FIFO, socket or device)\n"
                                 "kelvora-cli: 1 entry was left out (named above)\n");
    EXPECT_EQ(RunCli({"list", scratch / "c.vexo"}, {}, kSecret).out, "1\ta.txt\n");
    for (const char* command : {"list", "test", "decrypt"}) {
        const auto read = RunCliSignalled({command, scratch / "fifo"}, kSecret, SIGKILL, 5000);
        EXPECT_EQ(read.status, 1) << command;
        EXPECT_NE(read.err.find("not a regular file"), std::string::npos) << read.err;
    }
}

TEST(SpecialFiles, AFileThatReadsAsEmptyButHoldsDataIsNotStoredEmpty) {
    if (!PathExists("/proc/self/status")) {
        GTEST_SKIP() << "no /proc";
    }
    ScratchFolder scratch;
    const auto result =
        RunCli({"encrypt", "-o", scratch / "c.vexo", "/proc/self/status"}, {}, kSecret);
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("/proc/self/status: refused, its size is not known"),
              std::string::npos)
        << result.err;
    EXPECT_FALSE(PathExists(scratch / "c.vexo"));
}

} // namespace
} // namespace kelvora
