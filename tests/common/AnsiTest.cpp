#include "common/Ansi.h"

#include "common/LineBreaks.h"
#include "common/TempDir.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace kelvora {
namespace {

struct AnsiCase {
    const char* name;
    std::string utf8;
    std::string ansi;
};

class AnsiConversion : public ::testing::TestWithParam<AnsiCase> {};

TEST_P(AnsiConversion, Utf8ToAnsiAndBack) {
    EXPECT_EQ(AnsiFromUtf8(GetParam().utf8), GetParam().ansi);
    EXPECT_EQ(Utf8FromAnsi(GetParam().ansi), GetParam().utf8);
}

INSTANTIATE_TEST_SUITE_P(
    Table, AnsiConversion,
    ::testing::Values(AnsiCase{"Ascii", "Hi there", "Hi there"},
                      AnsiCase{"Umlauts", "\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F", "\xE4\xF6\xFC\xDF"},
                      AnsiCase{"Euro", "\xE2\x82\xAC", "\x80"},
                      AnsiCase{"SmartQuotes", "\xE2\x80\x9Cx\xE2\x80\x9D", "\x93x\x94"},
                      AnsiCase{"UndefinedBytesAsC1", "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D",
                               "\x81\x8D\x8F\x90\x9D"},
                      AnsiCase{"NbspAndYDiaeresis", "\xC2\xA0\xC3\xBF", "\xA0\xFF"}),
    [](const auto& info) { return info.param.name; });

TEST(AnsiConversion, EveryByteSurvivesARoundTrip) {
    std::string all;
    for (int b = 0; b < 256; ++b) {
        all.push_back(static_cast<char>(b));
    }
    EXPECT_EQ(AnsiFromUtf8(Utf8FromAnsi(all)), all);
}

TEST(AnsiConversion, MissingCharactersAndMalformedInputBecomeQuestionMarks) {
    EXPECT_EQ(AnsiFromUtf8("\xE4\xB8\xAD"), "?");     // a CJK character
    EXPECT_EQ(AnsiFromUtf8("\xF0\x9F\x94\x91"), "?"); // an emoji
    EXPECT_EQ(AnsiFromUtf8("a\xFF"
                           "b"),
              "a?b");                          // a byte that starts nothing
    EXPECT_EQ(AnsiFromUtf8("\xC3"), "?");      // cut short
    EXPECT_EQ(AnsiFromUtf8("\xC0\x80"), "??"); // overlong NUL
}

struct CheckCase {
    const char* name;
    std::string utf8;
    NulRule nul;
    std::size_t count;
    std::size_t position; // of the first unsupported character, 0 when none
    std::size_t line;
    std::size_t column;
    std::string described;
};

class AnsiChecking : public ::testing::TestWithParam<CheckCase> {};

TEST_P(AnsiChecking, FindsTheFirstCharacterTheCodePageLacks) {
    const AnsiCheck check = CheckAnsi(GetParam().utf8, GetParam().nul);
    EXPECT_EQ(check.count, GetParam().count);
    EXPECT_EQ(check.ok(), GetParam().count == 0);
    // Exactly the characters counted are the ones the conversion turns into "?".
    if (GetParam().nul == NulRule::Allowed) {
        const std::string ansi = AnsiFromUtf8(GetParam().utf8);
        const auto questionMarks = [](std::string_view text) {
            return static_cast<std::size_t>(std::count(text.begin(), text.end(), '?'));
        };
        EXPECT_EQ(questionMarks(ansi) - questionMarks(GetParam().utf8), GetParam().count);
    }
    if (GetParam().position == 0) {
        EXPECT_FALSE(check.first.has_value());
        return;
    }
    ASSERT_TRUE(check.first.has_value());
    EXPECT_EQ(check.first->position, GetParam().position);
    EXPECT_EQ(check.first->line, GetParam().line);
    EXPECT_EQ(check.first->column, GetParam().column);
    EXPECT_EQ(DescribeCharacter(*check.first), GetParam().described);
}

INSTANTIATE_TEST_SUITE_P(
    Table, AnsiChecking,
    ::testing::Values(
        CheckCase{"EveryCodePageCharacter", "Gr\xC3\xBC\xC3\x9F\xE2\x82\xAC? \xC2\x81",
                  NulRule::Refused, 0, 0, 0, 0, ""},
        CheckCase{"Greek", "ab\xCE\xB1\xCE\xB2", NulRule::Allowed, 2, 3, 1, 3,
                  "'\xCE\xB1' (U+03B1)"},
        CheckCase{"EmojiOnSecondLine", "x\r\n\xC3\xA4\xF0\x9F\x94\x91", NulRule::Allowed, 1, 5, 2,
                  2, "'\xF0\x9F\x94\x91' (U+1F511)"},
        CheckCase{"NulInAText", std::string("a\0b", 3), NulRule::Refused, 1, 2, 1, 2, "U+0000"},
        CheckCase{"NulInAKey", std::string("a\0b", 3), NulRule::Allowed, 0, 0, 0, 0, ""},
        CheckCase{"MalformedByte", "ok\xFF", NulRule::Allowed, 1, 3, 1, 3,
                  "the byte 0xFF (not UTF-8)"},
        CheckCase{"ReplacementCharacterItself", "\xEF\xBF\xBD", NulRule::Allowed, 1, 1, 1, 1,
                  "'\xEF\xBF\xBD' (U+FFFD)"}),
    [](const auto& info) { return info.param.name; });

TEST(LineBreaks, EveryKindOfBreakBecomesCrLfAndBack) {
    EXPECT_EQ(ToCrLf("a\nb\r\nc\rd\n"), "a\r\nb\r\nc\r\nd\r\n");
    EXPECT_EQ(FromCrLf("a\r\nb\r\n"), "a\nb\n");
    EXPECT_EQ(FromCrLf("a\rb"), "a\rb");
}

TEST(TempDir, PrefersTempThenTmpThenSlashTmp) {
    EXPECT_EQ(TempDirFrom("/x/t", "/y"), "/x/t/");
    EXPECT_EQ(TempDirFrom("", "/y/"), "/y/");
    EXPECT_EQ(TempDirFrom(nullptr, nullptr), "/tmp/");
}

} // namespace
} // namespace kelvora
