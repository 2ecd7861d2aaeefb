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

TEST(Result, CarriesTheValueOrTheError) {
    EXPECT_TRUE(Parse(21).has_value());
    EXPECT_EQ(Parse(21).value(), 42);
    EXPECT_EQ(*Parse(21), 42);
    EXPECT_TRUE(Check(21).has_value());
    for (const auto& [input, error] :
         {std::pair{0, ParseError::kEmpty}, {-3, ParseError::kNegative}}) {
        const Result<int, ParseError> parsed = Parse(input);
        EXPECT_FALSE(parsed);
        EXPECT_FALSE(parsed.has_value());
        EXPECT_EQ(parsed.error(), error);
        EXPECT_EQ(Check(input).error(), error);
        EXPECT_THROW(static_cast<void>(parsed.value()), std::bad_variant_access);
    }
}

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
