#include "app/SharedSecurityState.h"

#include "common/Hex.h"

#include <gtest/gtest.h>

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

    // Shown is what the panel would show: the caption, the scroll bar's value and maximum, the
    // box, and the ten slots joined by "|".
    std::string Shown() const {
        std::string shown = state.Caption() + " at " + std::to_string(state.ScrollValue()) +
                            " of " + std::to_string(state.ScrollMaximum()) + ", box " + box +
                            ", slots ";
        for (int i = 0; i < kSharedKeySlots; ++i) {
            shown += (i > 0 ? "|" : "") + state.Slot(i);
        }
        return shown;
    }
};

struct HandlerCase {
    const char* name;
    std::vector<std::string> steps;
    std::string shown;
};

class SharedSecurityHandlers : public ::testing::TestWithParam<HandlerCase> {};

TEST_P(SharedSecurityHandlers, LeaveCaptionScrollBoxAndSlots) {
    Session session;
    session.Play(GetParam().steps);
    EXPECT_EQ(session.Shown(), GetParam().shown);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Table, SharedSecurityHandlers, ::testing::Values(
    HandlerCase{"ScrollBarStoresAndShows", {"count:3", "type:a", "scroll:2", "type:b", "scroll:3", "type:c", "scroll:1"}, "1/3 at 1 of 3, box a, slots a|b|c|||||||"},
    HandlerCase{"ForwardArrowWrapsAfterTheLastKey", {"count:3", "type:a", ">", "type:b", ">", "type:c", ">"}, "1/3 at 1 of 3, box a, slots a|b|c|||||||"},
    HandlerCase{"BackArrowWrapsBeforeTheFirstKey", {"count:3", "type:a", "<"}, "3/3 at 1 of 3, box , slots a|||||||||"},
    HandlerCase{"ArrowsLeaveTheScrollBarWhereItWas", {"count:4", "scroll:2", ">", ">"}, "4/4 at 2 of 4, box , slots |||||||||"},
    HandlerCase{"KeyTenReadsAsKeyOneWhenStored", {"count:10", "type:a", "scroll:10", "type:j", "scroll:9"}, "9/10 at 9 of 10, box , slots j|||||||||"},
    HandlerCase{"ForwardFromKeyTenReachesKeyTwo", {"count:10", "scroll:2", "type:b", "scroll:10", ">"}, "2/10 at 10 of 10, box b, slots |b||||||||"},
    HandlerCase{"BackFromKeyOneOfTenShowsTenOfTen", {"count:10", "type:a", "<"}, "10/10 at 1 of 10, box a, slots a|||||||||"},
    // The caption is "1/4" before the scroll handler runs, so the key on show goes into slot 0.
    HandlerCase{"CountChangeStoresTheKeyOnShowAsKeyOne", {"count:3", "type:a", "scroll:2", "type:b", "count:4"}, "1/4 at 1 of 4, box b, slots b|||||||||"},
    HandlerCase{"CountThatIsNotNumericBecomesTwo", {"count:x"}, "1/2 at 1 of 2, box , slots |||||||||"},
    HandlerCase{"EmptyCountBecomesTwo", {"count:"}, "1/2 at 1 of 2, box , slots |||||||||"},
    HandlerCase{"DecimalCountRoundsHalfToEven", {"count:2.5"}, "1/2.5 at 1 of 2, box , slots |||||||||"},
    HandlerCase{"ClearEmptiesEverySlot", {"count:3", "type:a", "scroll:2", "type:b", "scroll:3", "clear"}, "3/3 at 3 of 3, box , slots |||||||||"}),
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
                                           ValidationCase{"Hundred", "1e2", V::RefuseOutOfRange}),
                         [](const auto& info) { return info.param.name; });

TEST(SharedSecurityBuildKey, ThreeKeysGiveTheDigestOfOddKeysThenOfEvenKeys) {
    Session session;
    session.Play({"count:3", "type:a", "scroll:2", "type:b", "scroll:3", "type:c"});
    const SharedKey key = session.state.BuildKey(session.box);
    ASSERT_TRUE(key.ok());
    // MD5("ac") followed by MD5("b"): the box's "c" is stored before the keys are read.
    EXPECT_EQ(HexFromBytes(key.key.bytes()), "e2075474294983e013ee4dd2201c7a73"
                                             "92eb5ffee6ae2fec3ad71c777531578f");
}

// The arrows leave the scroll bar on key 2, so the box's "c" goes into slot 2 and key 3 stays
// empty.
TEST(SharedSecurityBuildKey, StoresTheBoxUnderTheScrollBarsKey) {
    Session arrows;
    arrows.Play({"count:3", "type:a", "scroll:2", "type:b", ">", "type:c"});
    EXPECT_EQ(arrows.state.BuildKey(arrows.box).emptyKeyNumber, 3);
    EXPECT_EQ(arrows.state.Slot(1), "c");
}

} // namespace
} // namespace kelvora
