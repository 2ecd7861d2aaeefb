#include "common/Ansi.h"

#include "common/LineBreaks.h"
#include "common/TempDir.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace kelvora {
namespace {

TEST(AnsiConversion, Utf8ToAnsiAndBack) {
    const std::pair<std::string, std::string> rows[] = {
        {"Hi there", "Hi there"},
        {"\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F", "\xE4\xF6\xFC\xDF"},             // umlauts
        {"\xE2\x82\xAC", "\x80"},                                             // the euro sign
        {"\xE2\x80\x9Cx\xE2\x80\x9D", "\x93x\x94"},                           // smart quotes
        {"\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D", "\x81\x8D\x8F\x90\x9D"}, // undefined as C1
        {"\xC2\xA0\xC3\xBF", "\xA0\xFF"}, // NBSP and y diaeresis
    };
    for (const auto& [utf8, ansi] : rows) {
        EXPECT_EQ(AnsiFromUtf8(utf8), ansi);
        EXPECT_EQ(Utf8FromAnsi(ansi), utf8);
    }
}

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

TEST(AnsiChecking, FindsTheFirstCharacterTheCodePageLacks) {
    const CheckCase rows[] = {
        {"EveryCodePageCharacter", "Gr\xC3\xBC\xC3\x9F\xE2\x82\xAC? \xC2\x81", NulRule::Refused, 0,
         0, 0, 0, ""},
        {"Greek", "ab\xCE\xB1\xCE\xB2", NulRule::Allowed, 2, 3, 1, 3, "'\xCE\xB1' (U+03B1)"},
        {"EmojiOnSecondLine", "x\r\n\xC3\xA4\xF0\x9F\x94\x91", NulRule::Allowed, 1, 5, 2, 2,
         "'\xF0\x9F\x94\x91' (U+1F511)"},
        {"NulInAText", std::string("a\0b", 3), NulRule::Refused, 1, 2, 1, 2, "U+0000"},
        {"NulInAKey", std::string("a\0b", 3), NulRule::Allowed, 0, 0, 0, 0, ""},
        {"MalformedByte", "ok\xFF", NulRule::Allowed, 1, 3, 1, 3, "the byte 0xFF (not UTF-8)"},
        {"ReplacementCharacterItself", "\xEF\xBF\xBD", NulRule::Allowed, 1, 1, 1, 1,
         "'\xEF\xBF\xBD' (U+FFFD)"},
    };
    const auto questionMarks = [](std::string_view text) {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '?'));
    };
    for (const CheckCase& row : rows) {
        SCOPED_TRACE(row.name);
        const AnsiCheck check = CheckAnsi(row.utf8, row.nul);
        EXPECT_EQ(check.count, row.count);
        EXPECT_EQ(check.ok(), row.count == 0);
        // Exactly the characters counted are the ones the conversion turns into "?".
        if (row.nul == NulRule::Allowed) {
            EXPECT_EQ(questionMarks(AnsiFromUtf8(row.utf8)) - questionMarks(row.utf8), row.count);
        }
        ASSERT_EQ(check.first.has_value(), row.position != 0);
        if (check.first) {
            EXPECT_EQ(check.first->position, row.position);
            EXPECT_EQ(check.first->line, row.line);
            EXPECT_EQ(check.first->column, row.column);
            EXPECT_EQ(DescribeCharacter(*check.first), row.described);
        }
    }
}

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
