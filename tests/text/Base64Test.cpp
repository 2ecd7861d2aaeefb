#include "text/Base64.h"

#include <gtest/gtest.h>
#include <numeric>
#include <tuple>
#include <vector>

namespace kelvora {
namespace {

Bytes Counting(std::size_t n) {
    Bytes data(n);
    std::iota(data.begin(), data.end(), std::uint8_t{0});
    return data;
}

TEST(Base64Encode, BreaksLinesAt76WithNoTrailingBreak) {
    // Bytes, lines, and the last line's length.
    for (const auto& [bytes, lines, lastLine] :
         std::vector<std::tuple<std::size_t, std::size_t, std::size_t>>{
             {1, 1, 4}, {57, 1, 76}, {58, 2, 4}, {114, 2, 76}, {116, 3, 4}, {1000, 18, 44}}) {
        const std::string text = Base64Encode(Counting(bytes));
        std::vector<std::string> split;
        std::size_t start = 0;
        for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos;
             start = end + 2) {
            split.push_back(text.substr(start, end - start));
        }
        split.push_back(text.substr(start));
        ASSERT_EQ(split.size(), lines) << bytes;
        for (std::size_t i = 0; i + 1 < split.size(); ++i) {
            EXPECT_EQ(split[i].size(), 76u);
        }
        EXPECT_EQ(split.back().size(), lastLine) << bytes;
        EXPECT_EQ(Base64Decode(text), Counting(bytes));
    }
}

TEST(Base64Encode, UsesTheStandardAlphabetAndPadding) {
    EXPECT_EQ(Base64Encode(BytesFromString("")), "");
    EXPECT_EQ(Base64Encode(BytesFromString("f")), "Zg==");
    EXPECT_EQ(Base64Encode(BytesFromString("fo")), "Zm8=");
    EXPECT_EQ(Base64Encode(BytesFromString("foo")), "Zm9v");
    EXPECT_EQ(Base64Encode(Bytes{0xFB, 0xFF, 0xBF}), "+/+/");
    EXPECT_EQ(Base64Encode(Counting(58)).substr(76), "\r\nOQ==");
}

// Decoding is as tolerant as the format always was.
TEST(Base64Decode, DropsBreaksAndPaddingAndReadsForeignCharactersAsZero) {
    const std::pair<std::string, std::string> rows[] = {
        {"Zm9v", "foo"},
        {"Zm\r\n9v", "foo"},
        {"Z=m9=v", "foo"},    // padding dropped anywhere
        {"Zm9vZg", "foof"},   // a two-character tail
        {"Zm9vZm8", "foofo"}, // a three-character tail
        {"Zm9vZ", "foo"},     // a lone last character is ignored
        {"*m9v", "\x02oo"},   // a foreign character counts as zero
        {"\nm9v", "\x02oo"},  // so does a lone line feed
        {"", ""},
    };
    for (const auto& [text, bytes] : rows) {
        EXPECT_EQ(Base64Decode(text), BytesFromString(bytes)) << text;
    }
}

} // namespace
} // namespace kelvora
