#include "app/SharedSecurityState.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>

namespace kelvora {
namespace {

// Session plays steps on the state as the panel's controls would raise them, with the
// passphrase box as a plain string. A step is "count:TEXT", "type:TEXT", "scroll:N", ">",
// "<" or "clear".
struct Session {
    SharedSecurityState state;
    std::string box;

    void Play(const std::vector<std::string>& steps) {
        for (const std::string& step : steps) {
            const std::string argument = step.substr(step.find(':') + 1);
            std::optional<std::string> shown;
            if (step.starts_with("count:")) {
                shown = state.OnCountChanged(argument, box);
            } else if (step.starts_with("type:")) {
                box = argument;
            } else if (step.starts_with("scroll:")) {
                shown = state.OnScroll(std::stoi(argument), box);
            } else if (step == ">" || step == "<") {
                shown = state.OnArrow(step == ">" ? 0 : 1, box);
            } else if (step == "clear") {
                state.ClearSlots();
            } else {
                ADD_FAILURE() << "unknown step " << step;
            }
            box = shown.value_or(box);
        }
    }

    // Slots joins the first n slots with "|".
    std::string Slots(int n) const {
        std::string joined;
        for (int i = 0; i < n; ++i) {
            joined += (i > 0 ? "|" : "") + state.Slot(i);
        }
        return joined;
    }
};

struct HandlerCase {
    const char* name;
    std::vector<std::string> steps;
    std::string caption;
    int scroll;
    int maximum;
    std::string box;
    std::string slots; // the first slots, joined by "|", as many as this lists
};

class SharedSecurityHandlers : public ::testing::TestWithParam<HandlerCase> {};

TEST_P(SharedSecurityHandlers, LeaveCaptionScrollBoxAndSlots) {
    Session session;
    session.Play(GetParam().steps);
    const auto slotCount = std::count(GetParam().slots.begin(), GetParam().slots.end(), '|') + 1;
    EXPECT_EQ(session.state.Caption(), GetParam().caption);
    EXPECT_EQ(session.state.ScrollValue(), GetParam().scroll);
    EXPECT_EQ(session.state.ScrollMaximum(), GetParam().maximum);
    EXPECT_EQ(session.box, GetParam().box);
    EXPECT_EQ(session.Slots(static_cast<int>(slotCount)), GetParam().slots);
}

// A row: name, steps, then caption, scroll value and maximum, box and slots afterwards.
// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, SharedSecurityHandlers, ::testing::Values(
    HandlerCase{"ScrollBarStoresAndShows", {"count:3", "type:a", "scroll:2", "type:b", "scroll:3", "type:c", "scroll:1"}, "1/3", 1, 3, "a", "a|b|c"},
    HandlerCase{"ForwardArrowWrapsAfterTheLastKey", {"count:3", "type:a", ">", "type:b", ">", "type:c", ">"}, "1/3", 1, 3, "a", "a|b|c"},
    HandlerCase{"BackArrowWrapsBeforeTheFirstKey", {"count:3", "type:a", "<"}, "3/3", 1, 3, "", "a||"},
    HandlerCase{"ArrowsLeaveTheScrollBarWhereItWas", {"count:4", "scroll:2", ">", ">"}, "4/4", 2, 4, "", "|||"},
    HandlerCase{"KeyTenReadsAsKeyOneWhenStored", {"count:10", "type:a", "scroll:10", "type:j", "scroll:9"}, "9/10", 9, 10, "", "j|||||||||"},
    HandlerCase{"ForwardFromKeyTenReachesKeyTwo", {"count:10", "scroll:2", "type:b", "scroll:10", ">"}, "2/10", 10, 10, "b", "|b"},
    HandlerCase{"BackFromKeyOneOfTenShowsTenOfTen", {"count:10", "type:a", "<"}, "10/10", 1, 10, "a", "a"},
    // The caption is "1/4" before the scroll handler runs, so the key on show goes into slot 0.
    HandlerCase{"CountChangeStoresTheKeyOnShowAsKeyOne", {"count:3", "type:a", "scroll:2", "type:b", "count:4"}, "1/4", 1, 4, "b", "b||"},
    HandlerCase{"CountThatIsNotNumericBecomesTwo", {"count:x"}, "1/2", 1, 2, "", ""},
    HandlerCase{"EmptyCountBecomesTwo", {"count:"}, "1/2", 1, 2, "", ""},
    HandlerCase{"DecimalCountRoundsHalfToEven", {"count:2.5"}, "1/2.5", 1, 2, "", ""},
    HandlerCase{"ClearEmptiesEverySlot", {"count:3", "type:a", "scroll:2", "type:b", "scroll:3", "clear"}, "3/3", 3, 3, "", "||"}),
    [](const auto& info) { return info.param.name; });
// clang-format on

struct ValidationCase {
    const char* name;
    const char* text;
    SharedSecurityState::Validation expected;
};

class SharedSecurityValidation : public ::testing::TestWithParam<ValidationCase> {};

TEST_P(SharedSecurityValidation, DecidesWhetherTheFieldMayBeLeft) {
    EXPECT_EQ(SharedSecurityState::Validate(GetParam().text), GetParam().expected);
}

using V = SharedSecurityState::Validation;
INSTANTIATE_TEST_SUITE_P(Table, SharedSecurityValidation,
                         ::testing::Values(ValidationCase{"Empty", "", V::Refuse},
                                           ValidationCase{"Letters", "abc", V::Refuse},
                                           ValidationCase{"Zero", "0", V::Refuse},
                                           ValidationCase{"Negative", "-3", V::Refuse},
                                           ValidationCase{"BelowOne", "0.5", V::Refuse},
                                           ValidationCase{"One", "1", V::FallBackToSingle},
                                           ValidationCase{"OnePointZero", "1.0", V::Accept},
                                           ValidationCase{"Two", "2", V::Accept},
                                           ValidationCase{"Ten", "10", V::Accept},
                                           ValidationCase{"Blanks", " 5 ", V::Accept},
                                           ValidationCase{"Exponent", "1e1", V::Accept},
                                           ValidationCase{"Eleven", "11", V::RefuseOutOfRange},
                                           ValidationCase{"Twelve", "12", V::RefuseOutOfRange},
                                           ValidationCase{"Hundred", "1e2", V::RefuseOutOfRange}),
                         [](const auto& info) { return info.param.name; });

std::string Hex(const SecretBytes& key) {
    std::ostringstream hex;
    for (const std::uint8_t byte : key.bytes()) {
        hex << std::hex << (byte >> 4) << (byte & 15);
    }
    return hex.str();
}

TEST(SharedSecurityBuildKey, ThreeKeysGiveTheDigestOfOddKeysThenOfEvenKeys) {
    Session session;
    session.Play({"count:3", "type:a", "scroll:2", "type:b", "scroll:3", "type:c"});
    const SharedKey key = session.state.BuildKey(session.box);
    ASSERT_TRUE(key.ok());
    // MD5("ac") followed by MD5("b"): the box's "c" is stored before the keys are read.
    EXPECT_EQ(Hex(key.key), "e2075474294983e013ee4dd2201c7a73"
                            "92eb5ffee6ae2fec3ad71c777531578f");
}

TEST(SharedSecurityBuildKey, NamesTheFirstEmptyKeyOrARefusedCount) {
    Session session;
    session.Play({"count:3", "type:a", "scroll:3", "type:c"});
    EXPECT_EQ(session.state.BuildKey(session.box).emptyKeyNumber, 2);

    // The arrows leave the scroll bar on key 2, so the box's "c" goes into slot 2 and key 3
    // stays empty.
    Session arrows;
    arrows.Play({"count:3", "type:a", "scroll:2", "type:b", ">", "type:c"});
    EXPECT_EQ(arrows.state.BuildKey(arrows.box).emptyKeyNumber, 3);
    EXPECT_EQ(arrows.state.Slot(1), "c");

    Session tooMany;
    tooMany.Play({"count:12"});
    EXPECT_EQ(tooMany.state.BuildKey("x").emptyKeyNumber, SharedSecurityState::kCountOutOfRange);
}

} // namespace
} // namespace kelvora
