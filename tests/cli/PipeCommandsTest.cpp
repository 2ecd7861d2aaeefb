#include "CliRun.h"
#include "files/ContainerFormat.h"
#include "files/FileTestSupport.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

const Env kSecret = {{"KELVORA_PASSPHRASE", kPassphrase}};

// The first chunk's room beside the stored names "f0", "f1", ...
constexpr std::size_t kRoom = FirstChunkRoom(2);

// A container read from a pipe gives what the file gives, past an exactly full chunk and an
// empty file; a container streamed to standard output is the written one but for the salts.
TEST(PipeCommands, ReadingAndWritingAPipeEqualsReadingAndWritingTheFile) {
    ScratchFolder scratch;
    const std::vector<std::size_t> sizes = {kRoom + kChunkBytes, 10, 0};
    std::vector<std::string> encrypt = {"encrypt", "-o", "-"};
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        encrypt.push_back(scratch / ("in/f" + std::to_string(i)));
        WriteFile(encrypt.back(), PatternBytes(sizes[i], static_cast<std::uint32_t>(i)));
    }
    const auto streamed = RunInProcess(encrypt, "", kSecret);
    ASSERT_EQ(streamed.status, 0) << streamed.err;
    encrypt[2] = scratch / "c.vexo";
    ASSERT_EQ(RunInProcess(encrypt, "", kSecret).status, 0);
    ASSERT_EQ(streamed.out.size(), ReadFile(scratch / "c.vexo").size());
    for (const char* command : {"list", "test"}) {
        const auto fromFile = RunInProcess({command, scratch / "c.vexo"}, "", kSecret);
        const auto fromPipe = RunInProcess({command, "-"}, streamed.out, kSecret);
        EXPECT_EQ(fromPipe.status, 0) << fromPipe.err;
        EXPECT_EQ(fromPipe.out, fromFile.out) << command;
        EXPECT_EQ(fromPipe.err, "");
    }
    const auto restored =
        RunInProcess({"decrypt", "-", "-C", scratch / "out"}, streamed.out, kSecret);
    EXPECT_EQ(restored.status, 0) << restored.err;
    EXPECT_EQ(FilesBelow(scratch / "out"), (std::vector<std::string>{"f0", "f1", "f2"}));
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const std::string name = "f" + std::to_string(i);
        EXPECT_EQ(ReadFile(scratch / ("out/" + name)), ReadFile(scratch / ("in/" + name))) << i;
    }
}

TEST(PipeCommands, IndexThatDiffersFromTheRecordsIsReported) {
    const std::string container =
        StringFromBytes(BuildContainer({{"a", {'1'}}, {"b", {'2'}}}, {68, 68, 100}));
    const auto result = RunInProcess({"test", "-"}, container, kSecret);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "kelvora-cli: the index at the end does not match the records read (2 "
                          "files read, 3 in the index)\n");
}

TEST(PipeCommands, SingleFileToStandardOutput) {
    ScratchFolder scratch;
    WriteFile(scratch / "one.vexo", BuildContainer({{"one.txt", {'h', 'i', '\n'}}}));
    WriteFile(scratch / "two.vexo", BuildContainer({{"a", {'1'}}, {"b", {'2'}}}));
    const auto one = RunInProcess({"decrypt", "-o", "-", scratch / "one.vexo"}, "", kSecret);
    EXPECT_EQ(one.status, 0) << one.err;
    EXPECT_EQ(one.out, "hi\n");
    const auto two = RunInProcess({"decrypt", "-o", "-", scratch / "two.vexo"}, "", kSecret);
    EXPECT_EQ(two.status, 1);
    EXPECT_TRUE(two.err.starts_with("kelvora-cli: the container holds more than one file"))
        << two.err;
}

TEST(PipeCommands, KeepGoingRestoresTheIntactFilesOfATruncatedContainer) {
    ScratchFolder scratch;
    const Bytes big = PatternBytes(kRoom + 1000, 5);
    Bytes container = BuildContainer({{"aa", {'a'}}, {"bg", big}, {"cc", {'c'}}});
    container.resize(container.size() - 200); // into bg's second record: cc and the index lost
    WriteFile(scratch / "c.vexo", container);
    const auto plain =
        RunInProcess({"decrypt", scratch / "c.vexo", "-C", scratch / "x"}, "", kSecret);
    EXPECT_EQ(plain.status, 1);
    EXPECT_FALSE(PathExists(scratch / "x"));

    const auto salvaged = RunInProcess(
        {"decrypt", "--keep-going", "--partial", scratch / "c.vexo", "-C", scratch / "out"}, "",
        kSecret);
    EXPECT_EQ(salvaged.status, 1);
    EXPECT_EQ(salvaged.out, scratch / "out/aa\n");
    EXPECT_NE(salvaged.err.find("bg: chunk 2 is damaged, not restored; its intact leading chunks "
                                "are in " +
                                scratch / "out/bg.partial"),
              std::string::npos)
        << salvaged.err;
    EXPECT_NE(salvaged.err.find("the index at the end is missing"), std::string::npos);
    EXPECT_EQ(FilesBelow(scratch / "out"), (std::vector<std::string>{"aa", "bg.partial"}));
    EXPECT_EQ(ReadFile(scratch / "out/bg.partial"), Bytes(big.begin(), big.begin() + kRoom));
}

struct PipeCase {
    const char* name;
    std::size_t size;
};

class EncryptFromAPipe : public ::testing::TestWithParam<PipeCase> {};

// Standard input stored as "f0" gives the container a file "f0" of the same bytes gives, but
// for the salts: same length, same index; both read back to the bytes.
TEST_P(EncryptFromAPipe, EqualsEncryptingTheFile) {
    ScratchFolder scratch;
    const Bytes data = PatternBytes(GetParam().size, 3);
    WriteFile(scratch / "f0", data);
    const auto fromFile = RunInProcess({"encrypt", "-o", "-", scratch / "f0"}, "", kSecret);
    ASSERT_EQ(fromFile.status, 0) << fromFile.err;
    const auto fromPipe =
        RunInProcess({"encrypt", "--name", "f0", "-o", "-", "-"}, StringFromBytes(data), kSecret);
    ASSERT_EQ(fromPipe.status, 0) << fromPipe.err;
    ASSERT_EQ(fromPipe.out.size(), fromFile.out.size());
    EXPECT_NE(fromPipe.out, fromFile.out);
    // The index, and its length in the last byte (one digit for a single file).
    const auto indexOf = [](const std::string& container) {
        return container.substr(container.size() - 1 -
                                static_cast<unsigned char>(container.back()));
    };
    EXPECT_EQ(indexOf(fromPipe.out), indexOf(fromFile.out));
    WriteFile(scratch / "c.vexo", BytesFromString(fromPipe.out));
    EXPECT_EQ(RunInProcess({"decrypt", "-o", "-", scratch / "c.vexo"}, "", kSecret).out,
              StringFromBytes(data));
    EXPECT_EQ(RunInProcess({"test", scratch / "c.vexo"}, "", kSecret).out, "OK\n");
}

INSTANTIATE_TEST_SUITE_P(Sizes, EncryptFromAPipe,
                         ::testing::Values(PipeCase{"Empty", 0}, PipeCase{"Room", kRoom},
                                           PipeCase{"RoomPlusOne", kRoom + 1},
                                           PipeCase{"ExactMultiple", kRoom + kChunkBytes}),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
