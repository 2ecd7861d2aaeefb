#include "common/Printable.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

TEST(PrintableText, EscapesEveryControlCharacterAndKeepsTheRest) {
    const std::pair<std::string, std::string> rows[] = {
        {"\x1b]0;pwned\x07.txt", "\\x1b]0;pwned\\x07.txt"}, // a terminal title
        {"a\r\nb", "a\\x0d\\x0ab"},
        {std::string("a\0b", 3), "a\\x00b"},
        {"x\x7f\xc2\x9b[2J", "x\\x7f\\u009b[2J"}, // delete and C1
        {"caf\xc3\xa9 \xe6\x97\xa5\xe2\x82\xac/\xc2\xa0",
         "caf\xc3\xa9 \xe6\x97\xa5\xe2\x82\xac/\xc2\xa0"},
        {"a\xc2", "a\xc2"}, // a lead byte cut short
    };
    for (const auto& [raw, shown] : rows) {
        EXPECT_EQ(Printable(raw), shown);
    }
}

TEST(HoldsControlCharacter, FindsC0DeleteAndTheUndefinedBytes) {
    for (const char byte :
         {'\0', '\x01', '\x1b', '\n', '\r', '\x7f', '\x81', '\x8d', '\x8f', '\x90', '\x9d'}) {
        EXPECT_TRUE(HoldsControlCharacter(std::string("a") + byte)) << int(byte);
    }
    EXPECT_FALSE(HoldsControlCharacter("caf\xe9 \x80\x9b\xa0.txt"));
}

} // namespace
} // namespace kelvora
