#include "files/CompressBlock.h"

#include "FileTestSupport.h"
#include "files/Deflate.h"
#include "files/LittleEndian.h"

#include <gtest/gtest.h>
#include <optional>
#include <zlib.h>

namespace kelvora {
namespace {

using testing::PatternBytes;

// The container tests check the writer's blocks field by field; here are the blocks the
// reader must refuse, and what it accepts.
TEST(UncompressBlock, RefusesBadBlocksWithTheirErrorAndTakesPaddingBehind) {
    constexpr std::int32_t kNoLimit = 1 << 30;
    const Bytes source = PatternBytes(5000, 1, true);
    const struct {
        const char* name;
        void (*spoil)(Bytes& block);
        std::int32_t maxPlain;
        std::optional<BlockError> error;
    } rows[] = {
        {"WrongMagic", [](Bytes& b) { b[0] ^= 1; }, kNoLimit, BlockError::BadMagic},
        {"HeaderOnly", [](Bytes& b) { b.resize(8); }, kNoLimit, BlockError::Empty},
        {"PlainLengthTooSmall", [](Bytes& b) { PutInt32Le(&b[4], 4999); }, kNoLimit,
         BlockError::InflateFailed},
        {"PlainLengthNegative", [](Bytes& b) { PutInt32Le(&b[4], -5); }, kNoLimit,
         BlockError::LengthOutOfRange},
        {"PlainLengthAboveLimit", [](Bytes&) {}, 4999, BlockError::LengthOutOfRange},
        {"GarbledStream", [](Bytes& b) { b[20] ^= 0x55; }, kNoLimit, BlockError::InflateFailed},
        {"WrongChecksum", [](Bytes& b) { b.back() ^= 1; }, kNoLimit, BlockError::InflateFailed},
        {"PlainLengthAtTheLimitAndPadding", [](Bytes& b) { b.resize(b.size() + 31, 0); }, 5000,
         std::nullopt},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Bytes block, restored;
        ASSERT_TRUE(CompressBlock(source, block));
        row.spoil(block);
        const auto result = UncompressBlock(block, restored, row.maxPlain);
        ASSERT_EQ(result.has_value(), !row.error);
        if (row.error) {
            EXPECT_EQ(result.error(), *row.error);
        } else {
            EXPECT_EQ(*result, source.size());
            EXPECT_EQ(restored, source);
        }
    }
}

Bytes Joined(const Bytes& a, const Bytes& b) {
    Bytes joined = a;
    joined.insert(joined.end(), b.begin(), b.end());
    return joined;
}

// StoredStreamBytes is the length of a zlib stream of stored blocks of n bytes: the header,
// five bytes per block of at most 65535, the data and the checksum.
std::size_t StoredStreamBytes(std::size_t n) {
    return 2 + 5 * ((n + 65534) / 65535) + n + 4;
}

// Each chunk is a block that zlib's own uncompress restores (other copies read blocks with
// zlib alone), random data as stored blocks; and blocks of other copies, from zlib at any
// level, are restored.
TEST(CompressBlock, WritesBlocksZlibRestoresAndReadsZlibsBlocksAtEveryLevel) {
    constexpr std::size_t kChunk = 2097152;
    const struct {
        const char* name;
        Bytes data;
        bool stored; // random data must come out as stored blocks
    } rows[] = {
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
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Bytes& data = row.data;
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
        if (row.stored) {
            EXPECT_EQ(streamBytes, StoredStreamBytes(data.size()));
            EXPECT_EQ(block[kBlockHeaderBytes + 2] & 0x06, 0) << "the first block is stored";
        } else {
            EXPECT_LE(streamBytes, StoredStreamBytes(data.size()));
            if (data.size() >= 65536) {
                EXPECT_LT(streamBytes, data.size() * 9 / 10) << "compressible data is compressed";
            }
        }
        // The probe that spares random data the compressor's search agrees with the outcome.
        EXPECT_EQ(LooksIncompressible(data), row.stored);
        for (const int level : {0, 1, Z_DEFAULT_COMPRESSION}) {
            uLongf streamLength = compressBound(static_cast<uLong>(data.size()));
            Bytes zlibBlock(8 + streamLength);
            ASSERT_EQ(compress2(zlibBlock.data() + 8, &streamLength, data.data(),
                                static_cast<uLong>(data.size()), level),
                      Z_OK);
            zlibBlock.resize(8 + streamLength);
            PutInt32Le(zlibBlock.data(), kBlockMagic);
            PutInt32Le(zlibBlock.data() + 4, static_cast<std::int32_t>(data.size()));
            EXPECT_EQ(UncompressBlock(zlibBlock, restored).value(), data.size()) << level;
            EXPECT_TRUE(restored == data) << "level " << level;
            // Text shrinks as far as with zlib's default level (long runs of zeros end a
            // little longer, which costs nothing).
            if (level == Z_DEFAULT_COMPRESSION && !row.stored && data.size() >= 65536 &&
                data != Bytes(data.size())) {
                EXPECT_LE(streamBytes, streamLength + streamLength / 100);
            }
        }
    }
}

} // namespace
} // namespace kelvora
