#include "tools/ScreenKeyboard.h"

#include <gtest/gtest.h>
#include <set>

namespace kelvora {
namespace {

using enum KeyboardLayoutCode;

// ---- The design ----

TEST(ScreenKeyboardDesign, SixtySixKeysWithoutSixteenAndSeventeen) {
    std::set<int> indexes;
    for (const KeyDesign& key : DesignedKeys()) {
        EXPECT_TRUE(indexes.insert(key.index).second) << "index " << key.index << " twice";
        EXPECT_EQ(key.left % kTwipsPerPixel, 0) << key.index;
        EXPECT_EQ(key.top % kTwipsPerPixel, 0) << key.index;
    }
    EXPECT_EQ(indexes.size(), 66u);
    EXPECT_FALSE(indexes.contains(16));
    EXPECT_FALSE(indexes.contains(17));
    EXPECT_EQ(*indexes.begin(), 0);
    EXPECT_EQ(*indexes.rbegin(), kShiftKey);
}

struct PlaceCase {
    int index;
    int left;
    int top;
    int width;
    int height;
};

class KeyPlace : public ::testing::TestWithParam<PlaceCase> {};

TEST_P(KeyPlace, StandsWhereTheDesignPutsIt) {
    const PlaceCase& c = GetParam();
    for (const KeyDesign& key : DesignedKeys()) {
        if (key.index == c.index) {
            EXPECT_EQ(key.left, c.left);
            EXPECT_EQ(key.top, c.top);
            EXPECT_EQ(key.width, c.width);
            EXPECT_EQ(key.height, c.height);
            return;
        }
    }
    ADD_FAILURE() << "no key " << c.index;
}

// Row starts, row ends and the odd sizes; each row's pitch shows in its last key.
INSTANTIATE_TEST_SUITE_P(
    Design, KeyPlace,
    ::testing::Values(PlaceCase{14, 600, 360, 375, 375}, PlaceCase{65, 4920, 360, 375, 375},
                      PlaceCase{12, 5400, 360, 615, 375}, PlaceCase{9, 6960, 360, 375, 375},
                      PlaceCase{13, 240, 735, 495, 375}, PlaceCase{35, 720, 735, 375, 375},
                      PlaceCase{53, 5040, 735, 375, 375}, PlaceCase{4, 6240, 735, 375, 375},
                      PlaceCase{19, 840, 1110, 375, 375}, PlaceCase{52, 4800, 1110, 375, 375},
                      PlaceCase{67, 240, 1485, 735, 375}, PlaceCase{43, 960, 1485, 375, 375},
                      PlaceCase{50, 4560, 1485, 375, 375}, PlaceCase{0, 6240, 1485, 735, 375},
                      PlaceCase{10, 6960, 1485, 375, 375}, PlaceCase{11, 5520, 720, 495, 1095},
                      PlaceCase{18, 1080, 1920, 3855, 255}, PlaceCase{66, 6240, 1800, 375, 375}),
    [](const auto& info) { return "Key" + std::to_string(info.param.index); });

TEST(ScreenKeyboardDesign, LettersRunAlphabeticallyFromNineteen) {
    const KeyCaptions captions = CaptionsFor(German);
    for (int index = kFirstLetterKey; index <= kLastLetterKey; ++index) {
        EXPECT_EQ(captions[static_cast<std::size_t>(index)],
                  std::string(1, static_cast<char>('A' + index - kFirstLetterKey)));
    }
}

// ---- Layout choice ----

struct LayoutCase {
    const char* name;
    std::uint32_t keyboardLayout;
    KeyboardLayoutCode expected;
};

class LayoutChoice : public ::testing::TestWithParam<LayoutCase> {};

TEST_P(LayoutChoice, FollowsTheLanguageId) {
    EXPECT_EQ(LayoutCodeOf(GetParam().keyboardLayout), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Table, LayoutChoice,
    ::testing::Values(LayoutCase{"GermanGermany", KeyboardLayoutOfLanguage(0x0407), German},
                      LayoutCase{"GermanDevice", 0xF0C00409, German},
                      LayoutCase{"SwissGerman", KeyboardLayoutOfLanguage(0x0807), English},
                      LayoutCase{"AustrianGerman", KeyboardLayoutOfLanguage(0x0C07), English},
                      LayoutCase{"SpanishTraditional", KeyboardLayoutOfLanguage(0x040A), Spanish},
                      LayoutCase{"SpanishModern", KeyboardLayoutOfLanguage(0x0C0A), English},
                      LayoutCase{"French", KeyboardLayoutOfLanguage(0x040C), English},
                      LayoutCase{"Neutral", 0, English}),
    [](const auto& info) { return info.param.name; });

TEST(ScreenKeyboardCaptions, RelabelledByLayout) {
    const KeyCaptions german = CaptionsFor(German);
    const KeyCaptions english = CaptionsFor(English);
    const KeyCaptions spanish = CaptionsFor(Spanish);
    EXPECT_EQ(german[59], "&&");
    EXPECT_EQ(english[59], "^");
    EXPECT_EQ(english[60], "&");
    EXPECT_EQ(german[56], "\"");
    EXPECT_EQ(spanish[56], "\"");
    EXPECT_EQ(english[56], "@");
    EXPECT_EQ(spanish[14], "°");
    EXPECT_EQ(english[44], "Y");
    EXPECT_EQ(spanish[43], "Z");
    EXPECT_EQ(english[52], "'");
    EXPECT_EQ(spanish[52], "ç");
    EXPECT_EQ(spanish[53], "¡");
    EXPECT_EQ(english[10], ".");
    EXPECT_EQ(spanish[10], ",");
    EXPECT_EQ(german[18], ""); // the space bar's caption comes from the catalogue
}

// ---- The key handler ----

struct PressCase {
    const char* name;
    KeyboardLayoutCode layout;
    bool lowerCase;
    int index;
    const char* typed; // nullptr: the key types nothing
};

class KeyHandler : public ::testing::TestWithParam<PressCase> {};

TEST_P(KeyHandler, TypesWhatTheDesignSays) {
    const PressCase& c = GetParam();
    const std::string caption =
        c.index < kKeyIndexCount ? CaptionsFor(c.layout)[static_cast<std::size_t>(c.index)] : "";
    const KeyAction action = PressKey(c.layout, c.lowerCase, c.index, caption);
    if (c.typed == nullptr) {
        EXPECT_EQ(action.kind, KeyAction::Kind::Nothing);
    } else {
        EXPECT_EQ(action.kind, KeyAction::Kind::Append);
        EXPECT_EQ(action.text, c.typed);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, KeyHandler,
    ::testing::Values(PressCase{"GermanSmallA", German, true, 19, "a"},
                      PressCase{"GermanCapitalZ", German, false, 44, "Z"},
                      PressCase{"EnglishYOnZPlace", English, true, 44, "y"},
                      PressCase{"SpanishCapitalZOnYPlace", Spanish, false, 43, "Z"},
                      PressCase{"GermanSmallOUmlaut", German, true, 47, "ö"},
                      PressCase{"GermanCapitalUUmlaut", German, false, 48, "Ü"},
                      PressCase{"GermanSmallAUmlaut", German, true, 49, "ä"},
                      PressCase{"SpanishSmallEnye", Spanish, true, 47, "ñ"},
                      PressCase{"SpanishCapitalCedilla", Spanish, false, 52, "Ç"},
                      PressCase{"EnglishColonOnOUmlautPlace", English, false, 47, ":"},
                      PressCase{"EnglishApostropheKeepsCaption", English, true, 52, "'"},
                      PressCase{"SpanishInvertedExclamation", Spanish, true, 53, "¡"},
                      PressCase{"SpanishAcute", Spanish, false, 49, "´"},
                      PressCase{"GermanZeroTypesSmallEnye", German, true, 0, "ñ"},
                      PressCase{"GermanZeroTypesCapitalEnye", German, false, 0, "Ñ"},
                      PressCase{"EnglishZeroTypesSmallOUmlaut", English, true, 0, "ö"},
                      PressCase{"SpanishZeroTypesCapitalOUmlaut", Spanish, false, 0, "Ö"},
                      PressCase{"IndexSixtyEightIsASpace", English, true, 68, " "},
                      PressCase{"SpaceBar", Spanish, false, 18, " "},
                      PressCase{"GermanAmpersandTypesTwo", German, true, 59, "&&"},
                      PressCase{"EnglishAmpersandTypesOne", English, true, 60, "&"},
                      PressCase{"DigitSeven", German, true, 7, "7"},
                      PressCase{"SymbolIgnoresShift", German, true, 65, "ß"},
                      PressCase{"EnglishFullStopOnCommaKey", English, true, 10, "."},
                      PressCase{"EnterInactive", German, true, 11, nullptr},
                      PressCase{"TabInactive", English, false, 13, nullptr},
                      PressCase{"BackslashInactive", Spanish, true, 66, nullptr}),
    [](const auto& info) { return info.param.name; });

TEST(KeyHandler, BackspaceAndShiftTypeNothing) {
    EXPECT_EQ(PressKey(German, true, kBackspaceKey, "<-").kind, KeyAction::Kind::RemoveLast);
    EXPECT_EQ(PressKey(English, false, kShiftKey, "SHIFT").kind, KeyAction::Kind::ToggleShift);
    EXPECT_STREQ(ShiftCaption(true), "shift");
    EXPECT_STREQ(ShiftCaption(false), "SHIFT");
}

// ---- The size switch ----

TEST(SizeSwitch, DoublesOnceAndHalvesOnce) {
    struct Step {
        bool doubleSelected;
        ZoomChange change;
        int zoomAfter;
    };
    // 1x at normal size, 2x twice, 1x twice.
    constexpr Step kSteps[] = {{false, ZoomChange::None, 1},
                               {true, ZoomChange::Double, 2},
                               {true, ZoomChange::None, 2},
                               {false, ZoomChange::Halve, 1},
                               {false, ZoomChange::None, 1}};
    int zoom = 1;
    for (const Step& step : kSteps) {
        const ZoomChange change = ZoomChangeFor(step.doubleSelected, zoom);
        EXPECT_EQ(change, step.change);
        zoom = ZoomFactorAfter(zoom, change);
        EXPECT_EQ(zoom, step.zoomAfter);
    }
}

TEST(SizeSwitch, HalvingDropsTheRemainder) {
    EXPECT_EQ(ZoomedValue(25, ZoomChange::Double), 50);
    EXPECT_EQ(ZoomedValue(51, ZoomChange::Halve), 25);
    EXPECT_EQ(ZoomedValue(17, ZoomChange::None), 17);
}

} // namespace
} // namespace kelvora
