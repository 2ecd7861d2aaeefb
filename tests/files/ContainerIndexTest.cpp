#include "files/ContainerIndex.h"

#include <gtest/gtest.h>
#include <limits>

namespace kelvora {
namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();

struct IndexCase {
    const char* name;
    std::vector<std::int64_t> counts;
    Bytes bytes;
};

class IndexLayout : public ::testing::TestWithParam<IndexCase> {};

TEST_P(IndexLayout, EncodesAsBuiltByHandAndReadsBack) {
    const Bytes encoded = EncodeIndex(GetParam().counts);
    EXPECT_EQ(encoded, GetParam().bytes);
    if (GetParam().counts.empty()) {
        return;
    }
    const auto tail = ParseIndexTail(encoded);
    ASSERT_TRUE(tail);
    const auto indexBytes = std::span(encoded).first(encoded.size() - tail->digitBytes);
    EXPECT_EQ(tail->indexLength, static_cast<std::int64_t>(indexBytes.size()));
    EXPECT_EQ(SplitIndex(indexBytes), GetParam().counts);
}

INSTANTIATE_TEST_SUITE_P(
    HandBuilt, IndexLayout,
    ::testing::Values(IndexCase{"NoFiles", {}, {}}, IndexCase{"CountOf255", {255}, {0, 1, 255, 3}},
                      IndexCase{"CountOfZero", {0}, {255, 1}},
                      IndexCase{
                          "ThreeFiles", {36, 254, 65025}, {36, 255, 254, 255, 0, 0, 1, 255, 8}},
                      IndexCase{"LengthOf255", std::vector<std::int64_t>(255, 0),
                                [] {
                                    Bytes b(255, 255);
                                    b.insert(b.end(), {0, 1});
                                    return b;
                                }()},
                      IndexCase{"FiveGibibytes", {5368709120}, {65, 196, 198, 68, 1, 255, 6}}),
    [](const auto& info) { return info.param.name; });

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
