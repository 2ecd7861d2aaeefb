#include "text/Base64.h"

#include <gtest/gtest.h>
#include <numeric>

namespace kelvora {
namespace {

Bytes Counting(std::size_t n) {
    Bytes data(n);
    std::iota(data.begin(), data.end(), std::uint8_t{0});
    return data;
}

struct LayoutCase {
    const char* name;
    std::size_t bytes;
    std::size_t lines;
    std::size_t lastLineLength;
};

class Base64Layout : public ::testing::TestWithParam<LayoutCase> {};

TEST_P(Base64Layout, BreaksLinesAt76WithNoTrailingBreak) {
    const std::string text = Base64Encode(Counting(GetParam().bytes));
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2) {
        lines.push_back(text.substr(start, end - start));
    }
    lines.push_back(text.substr(start));
    ASSERT_EQ(lines.size(), GetParam().lines);
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        EXPECT_EQ(lines[i].size(), 76u);
    }
    EXPECT_EQ(lines.back().size(), GetParam().lastLineLength);
    EXPECT_EQ(Base64Decode(text), Counting(GetParam().bytes));
}

INSTANTIATE_TEST_SUITE_P(Table, Base64Layout,
                         ::testing::Values(LayoutCase{"OneByte", 1, 1, 4},
                                           LayoutCase{"OneFullLine", 57, 1, 76},
                                           LayoutCase{"OneMoreByte", 58, 2, 4},
                                           LayoutCase{"TwoFullLines", 114, 2, 76},
                                           LayoutCase{"TwoLinesAndTwoBytes", 116, 3, 4},
                                           LayoutCase{"LongText", 1000, 18, 44}),
                         [](const auto& info) { return info.param.name; });

TEST(Base64Encode, UsesTheStandardAlphabetAndPadding) {
    EXPECT_EQ(Base64Encode(BytesFromString("")), "");
    EXPECT_EQ(Base64Encode(BytesFromString("f")), "Zg==");
    EXPECT_EQ(Base64Encode(BytesFromString("fo")), "Zm8=");
    EXPECT_EQ(Base64Encode(BytesFromString("foo")), "Zm9v");
    EXPECT_EQ(Base64Encode(Bytes{0xFB, 0xFF, 0xBF}), "+/+/");
    EXPECT_EQ(Base64Encode(Counting(58)).substr(76), "\r\nOQ==");
}

struct DecodeCase {
    const char* name;
    std::string text;
    Bytes bytes;
};

class Base64Tolerance : public ::testing::TestWithParam<DecodeCase> {};

TEST_P(Base64Tolerance, DecodesAsTheFormatAlwaysHas) {
    EXPECT_EQ(Base64Decode(GetParam().text), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Base64Tolerance,
    ::testing::Values(DecodeCase{"Plain", "Zm9v", {'f', 'o', 'o'}},
                      DecodeCase{"CrLfDropped", "Zm\r\n9v", {'f', 'o', 'o'}},
                      DecodeCase{"PaddingDroppedAnywhere", "Z=m9=v", {'f', 'o', 'o'}},
                      DecodeCase{"TwoCharacterTail", "Zm9vZg", {'f', 'o', 'o', 'f'}},
                      DecodeCase{"ThreeCharacterTail", "Zm9vZm8", {'f', 'o', 'o', 'f', 'o'}},
                      DecodeCase{"LoneLastCharacterIgnored", "Zm9vZ", {'f', 'o', 'o'}},
                      DecodeCase{"ForeignCharacterIsZero", "*m9v", {0x02, 0x6F, 0x6F}},
                      DecodeCase{"LoneLineFeedIsZero", "\nm9v", {0x02, 0x6F, 0x6F}},
                      DecodeCase{"Empty", "", {}}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
