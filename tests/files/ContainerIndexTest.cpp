#include "files/ContainerIndex.h"

#include <gtest/gtest.h>
#include <limits>

namespace kelvora {
namespace {

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
    EXPECT_EQ(DecodeBase255(Bytes{254, 254, 254, 254, 254, 254, 254, 254}), std::nullopt);
    EXPECT_EQ(DecodeBase255(Bytes(20, 0)), 0);
    EXPECT_EQ(DecodeBase255(Bytes{1, 0, 0, 0, 0, 0, 0, 0, 0, 0}), 1);
    const Bytes maxDigits = [] {
        Bytes b;
        AppendBase255(b, std::numeric_limits<std::int64_t>::max());
        return b;
    }();
    EXPECT_EQ(DecodeBase255(maxDigits), std::numeric_limits<std::int64_t>::max());
    Bytes tooBig = maxDigits;
    tooBig[0] += 1;
    EXPECT_EQ(DecodeBase255(tooBig), std::nullopt);
}

TEST(ContainerIndex, TailWithoutSeparatorOrWithOverflowIsRefused) {
    EXPECT_FALSE(ParseIndexTail(Bytes{1, 2, 3}));
    EXPECT_FALSE(ParseIndexTail(Bytes{255, 254, 254, 254, 254, 254, 254, 254, 254, 254}));
    const auto tail = ParseIndexTail(Bytes{9, 255, 255, 4});
    ASSERT_TRUE(tail);
    EXPECT_EQ(tail->digitBytes, 1u);
    EXPECT_EQ(tail->indexLength, 4);
}

TEST(ContainerIndex, IndexMustEndInASeparator) {
    EXPECT_FALSE(SplitIndex(Bytes{}));
    EXPECT_FALSE(SplitIndex(Bytes{3, 255, 4}));
}

TEST(ContainerIndex, WalkerLaysRangesEndToEndWithinTheRecords) {
    using Step = IndexWalker::Step;
    IndexWalker walker(15);
    std::vector<FileRange> ranges;
    std::vector<Step> steps;
    for (const std::uint8_t byte : Bytes{10, 255, 255, 5, 255, 1, 255}) {
        steps.push_back(walker.Feed(byte));
        if (steps.back() == Step::File) {
            ranges.push_back(walker.File());
        }
    }
    // The last count would pass the end of the records.
    EXPECT_EQ(steps, (std::vector<Step>{Step::Digit, Step::File, Step::File, Step::Digit,
                                        Step::File, Step::Digit, Step::Garbled}));
    ASSERT_EQ(ranges.size(), 3u);
    EXPECT_EQ(ranges[1].index, 1u);
    EXPECT_EQ(ranges[1].byteCount, 0);
    EXPECT_EQ(ranges[2].offset, 10);
    EXPECT_EQ(ranges[2].byteCount, 5);
    const std::vector<std::int64_t> huge{std::numeric_limits<std::int64_t>::max(), 1};
    EXPECT_FALSE(SplitIndex(EncodeIndex(huge)));
}

} // namespace
} // namespace kelvora
