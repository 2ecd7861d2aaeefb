#include "files/CompressBlock.h"

#include "FileTestSupport.h"
#include "files/LittleEndian.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using testing::PatternBytes;

// What CompressBlock writes is checked byte for byte where the container tests compare the
// writer's output with blocks laid out by hand; here are the blocks the reader must refuse.
constexpr std::int32_t kNoLimit = 1 << 30;

struct BadBlockCase {
    const char* name;
    void (*spoil)(Bytes& block);
    std::int32_t maxPlain;
};

class UncompressBadBlock : public ::testing::TestWithParam<BadBlockCase> {};

TEST_P(UncompressBadBlock, GivesZero) {
    Bytes block;
    ASSERT_GT(CompressBlock(PatternBytes(5000, 1, true), block), 0);
    GetParam().spoil(block);
    Bytes restored;
    EXPECT_EQ(UncompressBlock(block, restored, GetParam().maxPlain), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, UncompressBadBlock,
    ::testing::Values(
        BadBlockCase{"WrongMagic", [](Bytes& b) { b[0] ^= 1; }, kNoLimit},
        BadBlockCase{"HeaderOnly", [](Bytes& b) { b.resize(8); }, kNoLimit},
        BadBlockCase{"PlainLengthTooSmall", [](Bytes& b) { PutInt32Le(&b[4], 4999); }, kNoLimit},
        BadBlockCase{"PlainLengthNegative", [](Bytes& b) { PutInt32Le(&b[4], -5); }, kNoLimit},
        BadBlockCase{"PlainLengthAboveLimit", [](Bytes&) {}, 4999},
        BadBlockCase{"GarbledStream", [](Bytes& b) { b[20] ^= 0x55; }, kNoLimit},
        BadBlockCase{"WrongChecksum", [](Bytes& b) { b.back() ^= 1; }, kNoLimit}),
    [](const auto& info) { return info.param.name; });

TEST(UncompressBlock, TakesAPlainLengthUpToTheLimitAndIgnoresThePaddingBehind) {
    const Bytes source = PatternBytes(5000, 1, true);
    Bytes block;
    ASSERT_GT(CompressBlock(source, block), 0);
    block.resize(block.size() + 31, 0);
    Bytes restored;
    EXPECT_EQ(UncompressBlock(block, restored, 5000), 5000);
    EXPECT_EQ(restored, source);
}

} // namespace
} // namespace kelvora
