#include "files/CompressBlock.h"

#include "FileTestSupport.h"
#include "files/LittleEndian.h"

#include <gtest/gtest.h>
#include <zlib.h>

namespace kelvora {
namespace {

using testing::PatternBytes;

struct BlockCase {
    const char* name;
    std::size_t size;
    bool compressible;
};

class CompressBlockRoundTrip : public ::testing::TestWithParam<BlockCase> {};

TEST_P(CompressBlockRoundTrip, HeaderThenAStreamZlibItselfReads) {
    const Bytes source = PatternBytes(GetParam().size, 7, GetParam().compressible);
    Bytes block;
    const std::int32_t length = CompressBlock(source, block);
    ASSERT_GT(length, 8);
    ASSERT_EQ(static_cast<std::size_t>(length), block.size());
    EXPECT_EQ(GetInt32Le(block.data()), 1234567890);
    EXPECT_EQ(GetInt32Le(block.data() + 4), static_cast<std::int32_t>(source.size()));

    Bytes viaZlib(source.size());
    uLongf viaZlibLength = static_cast<uLongf>(viaZlib.size());
    ASSERT_EQ(uncompress(viaZlib.data(), &viaZlibLength, block.data() + 8,
                         static_cast<uLong>(block.size() - 8)),
              Z_OK);
    EXPECT_EQ(viaZlib, source);

    // The cipher pads the block with zeros to its block size; they must not matter.
    block.resize(block.size() + 31, 0);
    Bytes restored;
    ASSERT_EQ(UncompressBlock(block, restored), static_cast<std::int32_t>(source.size()));
    EXPECT_EQ(restored, source);
}

INSTANTIATE_TEST_SUITE_P(Sizes, CompressBlockRoundTrip,
                         ::testing::Values(BlockCase{"OneByte", 1, false},
                                           BlockCase{"Text", 100000, true},
                                           BlockCase{"RandomFullChunk", 2097152, false}),
                         [](const auto& info) { return info.param.name; });

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

} // namespace
} // namespace kelvora
