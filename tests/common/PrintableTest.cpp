#include "common/Printable.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

struct PrintableCase {
    const char* name;
    std::string raw;
    std::string shown;
};

class PrintableText : public ::testing::TestWithParam<PrintableCase> {};

TEST_P(PrintableText, EscapesEveryControlCharacterAndKeepsTheRest) {
    EXPECT_EQ(Printable(GetParam().raw), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PrintableText,
    ::testing::Values(PrintableCase{"TerminalTitle", "\x1b]0;pwned\x07.txt",
                                    "\\x1b]0;pwned\\x07.txt"},
                      PrintableCase{"LineBreaks", "a\r\nb", "a\\x0d\\x0ab"},
                      PrintableCase{"Nul", std::string("a\0b", 3), "a\\x00b"},
                      PrintableCase{"DeleteAndC1", "x\x7f\xc2\x9b[2J", "x\\x7f\\u009b[2J"},
                      PrintableCase{"LettersKept", "caf\xc3\xa9 \xe6\x97\xa5\xe2\x82\xac/\xc2\xa0",
                                    "caf\xc3\xa9 \xe6\x97\xa5\xe2\x82\xac/\xc2\xa0"},
                      PrintableCase{"CutLeadByte", "a\xc2", "a\xc2"}),
    [](const auto& info) { return info.param.name; });

TEST(HoldsControlCharacter, FindsC0DeleteAndTheUndefinedBytes) {
    for (const char byte :
         {'\0', '\x01', '\x1b', '\n', '\r', '\x7f', '\x81', '\x8d', '\x8f', '\x90', '\x9d'}) {
        EXPECT_TRUE(HoldsControlCharacter(std::string("a") + byte)) << int(byte);
    }
    EXPECT_FALSE(HoldsControlCharacter("caf\xe9 \x80\x9b\xa0.txt"));
}

} // namespace
} // namespace kelvora
