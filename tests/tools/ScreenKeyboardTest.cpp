#include "tools/ScreenKeyboard.h"

#include <gtest/gtest.h>
#include <set>
#include <tuple>

namespace kelvora {
namespace {

using enum KeyboardLayoutCode;

// ---- The design ----

// 66 keys, 0 to 67 without 16 and 17, each on whole pixels, the letters in alphabetical order
// from 19. That the keys lie inside the keyboard and apart is the keyboard window's test.
TEST(ScreenKeyboardDesign, SixtySixKeysOnWholePixels) {
    std::set<int> indexes;
    for (const KeyDesign& key : DesignedKeys()) {
        EXPECT_TRUE(indexes.insert(key.index).second) << "index " << key.index << " twice";
        EXPECT_EQ(key.left % kTwipsPerPixel, 0) << key.index;
        EXPECT_EQ(key.top % kTwipsPerPixel, 0) << key.index;
        if (key.index >= kFirstLetterKey && key.index <= kLastLetterKey) {
            EXPECT_EQ(key.caption,
                      std::string(1, static_cast<char>('A' + key.index - kFirstLetterKey)));
        }
    }
    EXPECT_EQ(indexes.size(), 66u);
    EXPECT_FALSE(indexes.contains(16) || indexes.contains(17));
    EXPECT_EQ(*indexes.begin(), 0);
    EXPECT_EQ(*indexes.rbegin(), kShiftKey);
}

// Keyboard layout handles: German (Germany), a German device, Swiss and Austrian German,
// traditional and modern Spanish, French, none.
TEST(ScreenKeyboardLayout, FollowsTheLanguageId) {
    const std::pair<std::uint32_t, KeyboardLayoutCode> kChoices[] = {
        {KeyboardLayoutOfLanguage(0x0407), German},  {0xF0C00409, German},
        {KeyboardLayoutOfLanguage(0x0807), English}, {KeyboardLayoutOfLanguage(0x0C07), English},
        {KeyboardLayoutOfLanguage(0x040A), Spanish}, {KeyboardLayoutOfLanguage(0x0C0A), English},
        {KeyboardLayoutOfLanguage(0x040C), English}, {0, English}};
    for (const auto& [layout, expected] : kChoices) {
        EXPECT_EQ(LayoutCodeOf(layout), expected) << std::hex << layout;
    }
}

// ---- The key handler ----

// Rows: layout, lower case, key, what it types (nullptr: nothing). Letters follow shift and
// move with the layout; then the language letters, and the key "0" that types one in every
// layout; symbols type their layout's caption whatever shift says, so these rows also check
// the captions; then the space bar, index 68 (no key) and the inactive Enter, Tab and "\".
// The presses the keyboard window makes itself (English "y", a shifted Spanish "Ç" under its
// small caption, both ampersands) are its rows, not repeated here.
TEST(KeyHandler, TypesWhatTheDesignSays) {
    const std::tuple<KeyboardLayoutCode, bool, int, const char*> kPresses[] = {
        {German, true, 19, "a"},       {German, false, 44, "Z"},    {Spanish, false, 43, "Z"},
        {German, true, 47, "ö"},       {German, false, 48, "Ü"},    {German, true, 49, "ä"},
        {Spanish, true, 47, "ñ"},      {German, true, 0, "ñ"},      {German, false, 0, "Ñ"},
        {English, true, 0, "ö"},       {Spanish, false, 0, "Ö"},    {English, false, 47, ":"},
        {English, true, 49, ";"},      {English, true, 52, "'"},    {Spanish, true, 53, "¡"},
        {Spanish, false, 49, "´"},     {English, true, 59, "^"},    {English, false, 56, "@"},
        {Spanish, true, 56, "\""},     {Spanish, true, 14, "°"},    {German, true, 7, "7"},
        {German, true, 65, "ß"},       {English, true, 10, "."},    {Spanish, false, 10, ","},
        {Spanish, false, 18, " "},     {English, true, 68, " "},    {German, true, 11, nullptr},
        {English, false, 13, nullptr}, {Spanish, true, 66, nullptr}};
    for (const auto& [layout, lowerCase, index, typed] : kPresses) {
        const std::string caption =
            index < kKeyIndexCount ? CaptionsFor(layout)[static_cast<std::size_t>(index)] : "";
        const KeyAction action = PressKey(layout, lowerCase, index, caption);
        SCOPED_TRACE(std::to_string(static_cast<int>(layout)) +
                     (lowerCase ? " lower " : " upper ") + std::to_string(index));
        EXPECT_EQ(action.kind, typed ? KeyAction::Kind::Append : KeyAction::Kind::Nothing);
        EXPECT_EQ(action.text, typed ? typed : "");
    }
    EXPECT_EQ(PressKey(German, true, kBackspaceKey, "<-").kind, KeyAction::Kind::RemoveLast);
    EXPECT_EQ(PressKey(English, false, kShiftKey, "SHIFT").kind, KeyAction::Kind::ToggleShift);
}

// The steps of the size switch are the keyboard window's test; halving never leaves a half.
TEST(SizeSwitch, HalvingDropsTheRemainder) {
    EXPECT_EQ(ZoomedValue(51, ZoomChange::Halve), 25);
}

} // namespace
} // namespace kelvora
