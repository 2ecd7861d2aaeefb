#include "files/CompressBlock.h"

#include "FileTestSupport.h"
#include "files/Deflate.h"
#include "files/LittleEndian.h"

#include <gtest/gtest.h>
#include <zlib.h>

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
    BlockError error;
};

class UncompressBadBlock : public ::testing::TestWithParam<BadBlockCase> {};

TEST_P(UncompressBadBlock, FailsWithItsError) {
    Bytes block;
    ASSERT_TRUE(CompressBlock(PatternBytes(5000, 1, true), block));
    GetParam().spoil(block);
    Bytes restored;
    const auto result = UncompressBlock(block, restored, GetParam().maxPlain);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, UncompressBadBlock,
    ::testing::Values(
        BadBlockCase{"WrongMagic", [](Bytes& b) { b[0] ^= 1; }, kNoLimit, BlockError::BadMagic},
        BadBlockCase{"HeaderOnly", [](Bytes& b) { b.resize(8); }, kNoLimit, BlockError::Empty},
        BadBlockCase{"PlainLengthTooSmall", [](Bytes& b) { PutInt32Le(&b[4], 4999); }, kNoLimit,
                     BlockError::InflateFailed},
        BadBlockCase{"PlainLengthNegative", [](Bytes& b) { PutInt32Le(&b[4], -5); }, kNoLimit,
                     BlockError::LengthOutOfRange},
        BadBlockCase{"PlainLengthAboveLimit", [](Bytes&) {}, 4999, BlockError::LengthOutOfRange},
        BadBlockCase{"GarbledStream", [](Bytes& b) { b[20] ^= 0x55; }, kNoLimit,
                     BlockError::InflateFailed},
        BadBlockCase{"WrongChecksum", [](Bytes& b) { b.back() ^= 1; }, kNoLimit,
                     BlockError::InflateFailed}),
    [](const auto& info) { return info.param.name; });

TEST(UncompressBlock, TakesAPlainLengthUpToTheLimitAndIgnoresThePaddingBehind) {
    const Bytes source = PatternBytes(5000, 1, true);
    Bytes block;
    ASSERT_TRUE(CompressBlock(source, block));
    block.resize(block.size() + 31, 0);
    Bytes restored;
    EXPECT_EQ(UncompressBlock(block, restored, 5000).value(), 5000u);
    EXPECT_EQ(restored, source);
}

// What a chunk holds, for the round trips through both libraries.
struct ChunkCase {
    const char* name;
    Bytes data;
    bool stored; // random data must come out as stored blocks
};

Bytes Joined(const Bytes& a, const Bytes& b) {
    Bytes joined = a;
    joined.insert(joined.end(), b.begin(), b.end());
    return joined;
}

const std::vector<ChunkCase>& ChunkCases() {
    constexpr std::size_t kChunk = 2097152;
    static const std::vector<ChunkCase> cases{
        {"OneByte", Bytes{42}, false},
        {"SmallText", PatternBytes(5000, 2, true), false},
        {"SmallRandom", PatternBytes(5000, 3), false}, // too small to probe, still stored form
        {"Zeros", Bytes(kChunk), false},
        {"TextChunk", PatternBytes(kChunk, 4, true), false},
        {"RandomChunk", PatternBytes(kChunk, 5), true},
        {"RandomThreeFullStoredBlocksAndOneByte", PatternBytes(65535 * 3 + 1, 6), true},
        {"HalfRandomHalfText",
         Joined(PatternBytes(kChunk / 2, 7), PatternBytes(kChunk / 2, 8, true)), false},
    };
    return cases;
}

// StoredStreamBytes is the length of a zlib stream of stored blocks of n bytes: the header,
// five bytes per block of at most 65535, the data and the checksum.
std::size_t StoredStreamBytes(std::size_t n) {
    return 2 + 5 * ((n + 65534) / 65535) + n + 4;
}

class CompressedChunk : public ::testing::TestWithParam<ChunkCase> {};

// Other copies of the program read blocks with zlib alone.
TEST_P(CompressedChunk, IsABlockThatZlibsOwnUncompressRestores) {
    const Bytes& data = GetParam().data;
    Bytes block;
    const auto length = CompressBlock(data, block);
    ASSERT_TRUE(length);
    ASSERT_EQ(*length, block.size());
    ASSERT_LE(block.size(), CompressCapacity(data.size()) + kBlockHeaderBytes);
    EXPECT_EQ(GetInt32Le(block.data()), kBlockMagic);
    EXPECT_EQ(GetInt32Le(block.data() + 4), static_cast<std::int32_t>(data.size()));
    Bytes restored(data.size());
    auto restoredLength = static_cast<uLongf>(restored.size());
    ASSERT_EQ(uncompress(restored.data(), &restoredLength, block.data() + 8,
                         static_cast<uLong>(block.size() - 8)),
              Z_OK);
    EXPECT_EQ(restoredLength, data.size());
    EXPECT_TRUE(restored == data);
    const std::size_t streamBytes = block.size() - kBlockHeaderBytes;
    if (GetParam().stored) {
        EXPECT_EQ(streamBytes, StoredStreamBytes(data.size()));
        EXPECT_EQ(block[kBlockHeaderBytes + 2] & 0x06, 0) << "the first block is stored";
    } else {
        EXPECT_LE(streamBytes, StoredStreamBytes(data.size()));
        if (data.size() >= 65536) {
            EXPECT_LT(streamBytes, data.size() * 9 / 10) << "compressible data is compressed";
        }
    }
    // The probe that spares random data the compressor's search agrees with the outcome.
    EXPECT_EQ(LooksIncompressible(data), GetParam().stored);
}

// Blocks of other copies come from zlib at any level; the decompressor restores them all.
TEST_P(CompressedChunk, ZlibsBlocksAtEveryLevelAreRestored) {
    const Bytes& data = GetParam().data;
    for (const int level : {0, 1, Z_DEFAULT_COMPRESSION}) {
        uLongf streamLength = compressBound(static_cast<uLong>(data.size()));
        Bytes block(8 + streamLength);
        ASSERT_EQ(compress2(block.data() + 8, &streamLength, data.data(),
                            static_cast<uLong>(data.size()), level),
                  Z_OK);
        block.resize(8 + streamLength);
        PutInt32Le(block.data(), kBlockMagic);
        PutInt32Le(block.data() + 4, static_cast<std::int32_t>(data.size()));
        Bytes restored;
        const auto restoredLength = UncompressBlock(block, restored);
        ASSERT_TRUE(restoredLength) << "level " << level;
        EXPECT_EQ(*restoredLength, data.size()) << "level " << level;
        EXPECT_TRUE(restored == data) << "level " << level;
    }
}

INSTANTIATE_TEST_SUITE_P(Chunks, CompressedChunk, ::testing::ValuesIn(ChunkCases()),
                         [](const auto& info) { return info.param.name; });

// The default level's ratio: text shrinks at least as far as with zlib's own default.
TEST(CompressBlock, ShrinksTextAsFarAsZlibsDefaultLevel) {
    const Bytes text = PatternBytes(2097152, 9, true);
    Bytes block;
    ASSERT_TRUE(CompressBlock(text, block));
    uLongf zlibLength = compressBound(static_cast<uLong>(text.size()));
    Bytes stream(zlibLength);
    ASSERT_EQ(compress(stream.data(), &zlibLength, text.data(), static_cast<uLong>(text.size())),
              Z_OK);
    EXPECT_LE(block.size() - kBlockHeaderBytes, zlibLength + zlibLength / 100);
}

} // namespace
} // namespace kelvora
