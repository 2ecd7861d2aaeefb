#include "common/Result.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace kelvora {
namespace {

enum class ParseError { kEmpty, kNegative };

// Parse stands in for a reader: a positive number is doubled, anything else fails.
Result<int, ParseError> Parse(int input) {
    if (input == 0) {
        return Fail(ParseError::kEmpty);
    }
    if (input < 0) {
        return Fail(ParseError::kNegative);
    }
    return input * 2;
}

Result<void, ParseError> Check(int input) {
    if (auto parsed = Parse(input); !parsed) {
        return Fail(parsed.error());
    }
    return {};
}

struct ResultCase {
    const char* name;
    int input;
    bool ok;
    int value;
    ParseError error;
};

class ResultTable : public ::testing::TestWithParam<ResultCase> {};

TEST_P(ResultTable, CarriesTheValueOrTheError) {
    const ResultCase& row = GetParam();
    const Result<int, ParseError> parsed = Parse(row.input);
    const Result<void, ParseError> checked = Check(row.input);
    ASSERT_EQ(parsed.has_value(), row.ok);
    EXPECT_EQ(static_cast<bool>(parsed), row.ok);
    EXPECT_EQ(checked.has_value(), row.ok);
    if (row.ok) {
        EXPECT_EQ(parsed.value(), row.value);
        EXPECT_EQ(*parsed, row.value);
    } else {
        EXPECT_EQ(parsed.error(), row.error);
        EXPECT_EQ(checked.error(), row.error);
        EXPECT_THROW(static_cast<void>(parsed.value()), std::bad_variant_access);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, ResultTable,
                         ::testing::Values(ResultCase{"Value", 21, true, 42, ParseError::kEmpty},
                                           ResultCase{"Empty", 0, false, 0, ParseError::kEmpty},
                                           ResultCase{"Negative", -3, false, 0,
                                                      ParseError::kNegative}),
                         [](const auto& info) { return info.param.name; });

TEST(Result, HoldsMoveOnlyValuesAndReachesMembers) {
    Result<std::unique_ptr<std::string>, ParseError> held = std::make_unique<std::string>("abc");
    ASSERT_TRUE(held);
    EXPECT_EQ((*held)->size(), 3u);
    const std::unique_ptr<std::string> taken = std::move(held).value();
    EXPECT_EQ(*taken, "abc");
    Result<std::string, ParseError> text = std::string("xyz");
    EXPECT_EQ(text->front(), 'x');
}

} // namespace
} // namespace kelvora
