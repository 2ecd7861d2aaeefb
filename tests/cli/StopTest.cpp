#include "CliRun.h"
#include "files/ContainerFormat.h"
#include "files/FileTestSupport.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

const Env kSecret = {{"KELVORA_PASSPHRASE", kPassphrase}};

// StoppingInput serves data and raises the stop flag once stopAt bytes have been read, as a
// Ctrl-C in the middle of a job would.
class StoppingInput : public std::streambuf {
public:
    StoppingInput(std::string data, std::size_t stopAt, std::atomic<int>& stop)
        : m_data(std::move(data)), m_stopAt(stopAt), m_stop(stop) {}

protected:
    int_type underflow() override {
        const std::size_t at = static_cast<std::size_t>(gptr() - m_data.data());
        if (eback() != nullptr && at >= m_stopAt) {
            m_stop = SIGINT;
        }
        const std::size_t from = eback() == nullptr ? 0 : at;
        if (from >= m_data.size()) {
            return traits_type::eof();
        }
        const std::size_t slice = std::min<std::size_t>(65536, m_data.size() - from);
        setg(m_data.data(), m_data.data() + from, m_data.data() + from + slice);
        return traits_type::to_int_type(m_data[from]);
    }

private:
    std::string m_data;
    std::size_t m_stopAt;
    std::atomic<int>& m_stop;
};

// A stop requested midway through reading ends the job as cancelled and leaves nothing.
TEST(Stop, EndsAJobMidwayAndLeavesNoOutput) {
    ScratchFolder scratch;
    const Bytes big = PatternBytes(3 * kChunkBytes, 7, true);
    const Bytes container = BuildContainer({{"big.bin", big}, {"small", {'s'}}});
    const std::vector<std::pair<std::vector<std::string>, std::string>> jobs = {
        {{"encrypt", "--name", "big.bin", "-o", scratch / "c.vexo", "-"}, StringFromBytes(big)},
        {{"decrypt", "-", "-C", scratch / "out"}, StringFromBytes(container)},
    };
    for (const auto& [args, data] : jobs) {
        std::atomic<int> stop{0};
        StoppingInput buffer(data, kChunkBytes + 1, stop);
        std::istream in(&buffer);
        const auto result = RunInProcess(args, in, kSecret, nullptr, &stop);
        EXPECT_EQ(stop, SIGINT) << args[0] << ": the job ended before the stop";
        EXPECT_EQ(result.status, 1) << args[0];
        EXPECT_EQ(result.err, "kelvora-cli: cancelled\n") << args[0];
        EXPECT_EQ(FilesBelow(scratch.Path()), std::vector<std::string>{}) << args[0];
    }
}

// The real program: a stop signal ends a job at once, whether it works or waits on a FIFO
// nobody writes, with 128 + the signal and nothing left behind.
class StopSignal : public ::testing::TestWithParam<std::pair<int, bool>> {};

TEST_P(StopSignal, EndsTheProgramWith128PlusTheSignal) {
    const auto [signal, waitsOnFifo] = GetParam();
    ScratchFolder scratch;
    std::vector<std::string> args;
    if (waitsOnFifo) {
        ASSERT_EQ(::mkfifo((scratch / "fifo").c_str(), 0600), 0);
        args = {"decrypt-text", "-i", scratch / "fifo", "-o", scratch / "out.txt"};
    } else {
        // A sparse file: gigabytes to work through, no disk space taken.
        WriteFile(scratch / "big.bin", {});
        std::filesystem::resize_file(scratch / "big.bin", 4LL << 30);
        args = {"encrypt", "-q", "-o", scratch / "c.vexo", scratch / "big.bin"};
    }
    const std::vector<std::string> before = FilesBelow(scratch.Path());
    const CliResult result = RunProcess(args, kSecret, signal, 300);
    EXPECT_EQ(result.status, 128 + signal)
        << "still running 5 seconds after the signal? " << result.err;
    EXPECT_EQ(FilesBelow(scratch.Path()), before);
}

INSTANTIATE_TEST_SUITE_P(Cases, StopSignal,
                         ::testing::Values(std::pair{SIGINT, true}, std::pair{SIGTERM, false},
                                           std::pair{SIGHUP, true}, std::pair{SIGQUIT, false}),
                         [](const auto& info) {
                             return "Signal" + std::to_string(info.param.first) +
                                    (info.param.second ? "WhileWaiting" : "WhileWorking");
                         });

TEST(MainProcess, WithoutATerminalNoPassphraseIsAUsageError) {
    const CliResult result = RunProcess({"decrypt-text", "-i", "/dev/null"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "kelvora-cli: no passphrase: give -p FILE, set KELVORA_PASSPHRASE, or "
                          "run on a terminal\n");
    EXPECT_EQ(RunProcess({"genpass"}).status, 0);
}

} // namespace
} // namespace kelvora
