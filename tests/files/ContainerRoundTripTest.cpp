#include "FileTestSupport.h"
#include "files/ContainerFormat.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

// The data the first chunk holds beside the name "f.bin".
constexpr std::size_t kRoom = kChunkBytes - kStreamHeaderBytes - 5;

struct SizeCase {
    const char* name;
    std::size_t bytes;
    std::int64_t records;
    bool compressible;
};

class ContainerRoundTrip : public ::testing::TestWithParam<SizeCase> {};

// The containers are compared with EXPECT_TRUE: a difference of megabytes is no help. The
// hand-built container takes its zlib streams from the compression binding after zlib's own
// uncompress has read each one back, so every block the writer makes is one zlib reads.
TEST_P(ContainerRoundTrip, IsLaidOutFieldByFieldAndRestoresEveryByte) {
    ScratchFolder scratch;
    const Bytes data = PatternBytes(GetParam().bytes, 11, GetParam().compressible);
    WriteFile(scratch / "in/f.bin", data);
    ScriptedObserver observer;
    ASSERT_TRUE(EncryptPaths({scratch / "in/f.bin"}, scratch / "c.vexo", observer).ok());
    EXPECT_EQ(ChunkCount(static_cast<std::int64_t>(data.size()), 5), GetParam().records);
    EXPECT_TRUE(ReadFile(scratch / "c.vexo") ==
                BuildContainer({{"f.bin", data}}, {}, ProductStream));

    ASSERT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    EXPECT_EQ(FilesBelow(scratch / "out"), std::vector<std::string>{"f.bin"});
    EXPECT_TRUE(ReadFile(scratch / "out/f.bin") == data);
    EXPECT_TRUE(ReadFile(scratch / "in/f.bin") == data); // input files are only read
}

INSTANTIATE_TEST_SUITE_P(
    ChunkBoundaries, ContainerRoundTrip,
    ::testing::Values(SizeCase{"Empty", 0, 1, true}, SizeCase{"OneByte", 1, 1, false},
                      SizeCase{"StreamOfExactly2MiB", kRoom, 1, true},
                      SizeCase{"FirstChunkRoomPlusOne", kRoom + 1, 2, true},
                      SizeCase{"StreamOfExactlyTwoChunks", kRoom + kChunkBytes, 2, true},
                      SizeCase{"ThreeChunksRandom", kRoom + kChunkBytes + 1, 3, false}),
    [](const auto& info) { return info.param.name; });

// Several files: a folder's file of two chunks, an incompressible one and an empty one. Salts
// come from the injected source in order, so the writer's bytes are known exactly.
TEST(ContainerFormat, WriterLaysOutStreamsRecordsAndIndexFieldByField) {
    ScratchFolder scratch;
    const Bytes big = PatternBytes(kChunkBytes + 5000, 8, true);
    const Bytes small = PatternBytes(70, 3);
    WriteFile(scratch / "Ordner/x.bin", big);
    WriteFile(scratch / "b.txt", small);
    WriteFile(scratch / "leer", {});
    ScriptedObserver observer;
    ASSERT_TRUE(EncryptPaths({scratch / "Ordner", scratch / "b.txt", scratch / "leer"},
                             scratch / "c.vexo", observer)
                    .ok());
    EXPECT_TRUE(ReadFile(scratch / "c.vexo") ==
                BuildContainer({{"Ordner\\x.bin", big}, {"b.txt", small}, {"leer", {}}}, {},
                               ProductStream));
    ASSERT_TRUE(DecryptTo(scratch / "c.vexo", scratch / "out", observer).ok());
    EXPECT_EQ(FilesBelow(scratch / "out"),
              (std::vector<std::string>{"Ordner/x.bin", "b.txt", "leer"}));
    EXPECT_TRUE(ReadFile(scratch / "out/Ordner/x.bin") == big);
}

} // namespace
} // namespace kelvora
