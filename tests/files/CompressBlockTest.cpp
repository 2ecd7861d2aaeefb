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

    Bytes restored;
    ASSERT_EQ(UncompressBlock(block, restored), static_cast<std::int32_t>(source.size()));
    EXPECT_EQ(restored, source);
}

INSTANTIATE_TEST_SUITE_P(Sizes, CompressBlockRoundTrip,
                         ::testing::Values(BlockCase{"OneByte", 1, false},
                                           BlockCase{"Small", 99, false},
                                           BlockCase{"Text", 100000, true},
                                           BlockCase{"RandomFullChunk", 2097152, false}),
                         [](const auto& info) { return info.param.name; });

TEST(CompressBlock, EmptySourceGivesNothingAndLeavesOutputAlone) {
    Bytes output{1, 2, 3};
    EXPECT_EQ(CompressBlock(Bytes{}, output), 0);
    EXPECT_EQ(output, (Bytes{1, 2, 3}));
}

TEST(CompressBlock, CapacityIsSourcePlusOnePercentPlusTwelve) {
    EXPECT_EQ(CompressCapacity(1), 13u);
    EXPECT_EQ(CompressCapacity(2097152), 2097152u + 20971u + 12u);
}

TEST(UncompressBlock, IgnoresTheCipherPaddingBehindTheStream) {
    const Bytes source = PatternBytes(1000, 3, true);
    Bytes block;
    ASSERT_GT(CompressBlock(source, block), 0);
    block.resize(block.size() + 31, 0);
    Bytes restored;
    EXPECT_EQ(UncompressBlock(block, restored), 1000);
    EXPECT_EQ(restored, source);
}

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
    ::testing::Values(BadBlockCase{"WrongMagic", [](Bytes& b) { b[0] ^= 1; }, 1 << 30},
                      BadBlockCase{"HeaderOnly", [](Bytes& b) { b.resize(8); }, 1 << 30},
                      BadBlockCase{"Empty", [](Bytes& b) { b.clear(); }, 1 << 30},
                      BadBlockCase{"PlainLengthTooSmall",
                                   [](Bytes& b) { PutInt32Le(b.data() + 4, 4999); }, 1 << 30},
                      BadBlockCase{"PlainLengthNegative",
                                   [](Bytes& b) { PutInt32Le(b.data() + 4, -5); }, 1 << 30},
                      BadBlockCase{"PlainLengthAboveLimit", [](Bytes&) {}, 4999},
                      BadBlockCase{"GarbledStream",
                                   [](Bytes& b) {
                                       b[12] ^= 0x55;
                                       b[20] ^= 0x55;
                                   },
                                   1 << 30}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
