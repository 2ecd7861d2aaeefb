#include "files/ContainerIndex.h"

#include <gtest/gtest.h>
#include <limits>

namespace kelvora {
namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();

// Each count in base-255 digits, least significant first, closed by 255, then the index's
// length in digits: encoded as built by hand and read back.
TEST(ContainerIndex, EncodesAsBuiltByHandAndReadsBack) {
    Bytes lengthOf255(257, 255); // 255 separators, then the length 255 as digits 0, 1
    lengthOf255[255] = 0;
    lengthOf255[256] = 1;
    const std::pair<std::vector<std::int64_t>, Bytes> rows[] = {
        {{255}, {0, 1, 255, 3}},
        {{0}, {255, 1}},
        {{36, 254, 65025}, {36, 255, 254, 255, 0, 0, 1, 255, 8}},
        {std::vector<std::int64_t>(255, 0), lengthOf255},
        {{5368709120}, {65, 196, 198, 68, 1, 255, 6}}, // five gibibytes
    };
    EXPECT_TRUE(EncodeIndex({}).empty());
    for (const auto& [counts, bytes] : rows) {
        SCOPED_TRACE(counts.front());
        const Bytes encoded = EncodeIndex(counts);
        EXPECT_EQ(encoded, bytes);
        const auto tail = ParseIndexTail(encoded);
        ASSERT_TRUE(tail);
        const auto indexBytes = std::span(encoded).first(encoded.size() - tail->digitBytes);
        EXPECT_EQ(tail->indexLength, static_cast<std::int64_t>(indexBytes.size()));
        EXPECT_EQ(SplitIndex(indexBytes), counts);
    }
}

TEST(ContainerIndex, DigitsPastSixtyFourBitsOverflow) {
    EXPECT_EQ(DecodeBase255(Bytes(20, 0)), 0);
    EXPECT_EQ(DecodeBase255(Bytes{1, 0, 0, 0, 0, 0, 0, 0, 0, 0}), 1);
    EXPECT_EQ(DecodeBase255(Bytes(8, 254)), std::nullopt);
    Bytes digits;
    AppendBase255(digits, kMax);
    EXPECT_EQ(DecodeBase255(digits), kMax);
    ++digits[0];
    EXPECT_EQ(DecodeBase255(digits), std::nullopt);
}

TEST(ContainerIndex, TailAndIndexWithoutTheirSeparatorOrOverflowingAreRefused) {
    EXPECT_FALSE(ParseIndexTail(Bytes{1, 2, 3}));
    EXPECT_FALSE(ParseIndexTail(Bytes{255, 254, 254, 254, 254, 254, 254, 254, 254, 254}));
    EXPECT_FALSE(SplitIndex(Bytes{}));
    EXPECT_FALSE(SplitIndex(Bytes{3, 255, 4}));
    // Offsets add up without overflowing: a second file behind the largest count is refused.
    EXPECT_FALSE(SplitIndex(EncodeIndex(std::vector<std::int64_t>{kMax, 1})));
}

} // namespace
} // namespace kelvora
