#include "cli/CliArgs.h"

#include <array>
#include <gtest/gtest.h>

namespace kelvora::cli {
namespace {

constexpr std::array kSpecs = {OptionSpec{"output", 'o', "FILE", {}},
                               OptionSpec{"force", 'f', {}, {}}, OptionSpec{"quiet", 'q', {}, {}},
                               OptionSpec{"key-file", '\0', "FILE", {}}};

struct ArgsCase {
    const char* name;
    std::vector<std::string> args;
    std::vector<std::pair<std::string, std::string>> options;
    std::vector<std::string> operands;
    std::string error;
};

class ArgParsing : public ::testing::TestWithParam<ArgsCase> {};

TEST_P(ArgParsing, SplitsOptionsAndOperandsAsGnuToolsDo) {
    const ArgParseResult result = ParseArgs(GetParam().args, kSpecs);
    EXPECT_EQ(result.error, GetParam().error);
    EXPECT_EQ(result.args.options, GetParam().options);
    EXPECT_EQ(result.args.operands, GetParam().operands);
}

using Options = std::vector<std::pair<std::string, std::string>>;

INSTANTIATE_TEST_SUITE_P(
    Table, ArgParsing,
    ::testing::Values(
        ArgsCase{"OperandsOnly", {"a", "b"}, {}, {"a", "b"}, ""},
        ArgsCase{"AnyOrder",
                 {"a", "-o", "x", "b", "--force"},
                 Options{{"output", "x"}, {"force", ""}},
                 {"a", "b"},
                 ""},
        ArgsCase{"LongWithEquals", {"--output=x=y"}, Options{{"output", "x=y"}}, {}, ""},
        ArgsCase{"ShortAttached", {"-ox"}, Options{{"output", "x"}}, {}, ""},
        ArgsCase{"BundledFlagsThenValue",
                 {"-fqo", "x"},
                 Options{{"force", ""}, {"quiet", ""}, {"output", "x"}},
                 {},
                 ""},
        ArgsCase{"Repeated",
                 {"--key-file", "1", "--key-file=2"},
                 Options{{"key-file", "1"}, {"key-file", "2"}},
                 {},
                 ""},
        ArgsCase{"DoubleDashEndsOptions", {"--", "-o", "--force"}, {}, {"-o", "--force"}, ""},
        ArgsCase{"LoneDashIsAnOperand", {"-", "-f"}, Options{{"force", ""}}, {"-"}, ""},
        ArgsCase{"ValueMayStartWithDash", {"-o", "-f"}, Options{{"output", "-f"}}, {}, ""},
        ArgsCase{"UnknownLong", {"--colour"}, {}, {}, "unknown option '--colour'"},
        ArgsCase{"UnknownShort", {"-x"}, {}, {}, "unknown option '-x'"},
        ArgsCase{"MissingValue", {"a", "--output"}, {}, {}, "option '--output' needs a value"},
        ArgsCase{"FlagWithValue", {"--force=yes"}, {}, {}, "option '--force' takes no value"}),
    [](const auto& info) { return info.param.name; });

TEST(ParsedArgs, ValueIsTheLastGivenAndValuesKeepTheOrder) {
    const std::vector<std::string> args = {"-o", "first",  "--key-file", "k1",
                                           "-o", "second", "--key-file", "k2"};
    const ArgParseResult result = ParseArgs(args, kSpecs);
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.args.Value("output"), "second");
    EXPECT_EQ(result.args.Values("key-file"), (std::vector<std::string>{"k1", "k2"}));
    EXPECT_FALSE(result.args.Has("force"));
    EXPECT_EQ(result.args.Value("quiet"), std::nullopt);
}

} // namespace
} // namespace kelvora::cli
