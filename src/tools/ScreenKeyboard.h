#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace kelvora {

// The screen keyboard's design: 66 keys, indexes 0 to 67 (16 and 17 unused), laid out in
// twips like a German keyboard with a numeric block. The windows convert the twips to pixels
// once (kTwipsPerPixel) and only ever double or halve the pixels afterwards.

inline constexpr int kKeyIndexCount = 68;
inline constexpr int kTwipsPerPixel = 15;

// The key indexes the handler treats apart.
inline constexpr int kBackspaceKey = 12;
inline constexpr int kSpaceKey = 18;
inline constexpr int kFirstLetterKey = 19; // A
inline constexpr int kLastLetterKey = 44;  // Z
inline constexpr int kShiftKey = 67;

// The captions on the keys: 0 the designed German captions, 1 English, 2 Spanish.
enum class KeyboardLayoutCode : std::uint8_t { German = 0, English = 1, Spanish = 2 };

// KeyDesign is one key: its index, designed caption (UTF-8; empty for the captions the
// catalogue gives), catalogue id of the caption or 0, and its place in twips.
struct KeyDesign {
    int index;
    const char* caption;
    int captionId;
    int left;
    int top;
    int width;
    int height;
};

// DesignedKeys lists the 66 keys in rows from top left to bottom right.
[[nodiscard]] std::span<const KeyDesign> DesignedKeys();

// IsInactiveKey tells the keys that never type anything: "Enter", "Tab" and "\".
[[nodiscard]] bool IsInactiveKey(int index);

// LayoutCodeOf chooses the captions from a Windows keyboard layout handle: language id
// 0x0407 (German, Germany) in the low word or 0xF0C0 in the high word gives German, 0x040A
// (Spanish, traditional sort) Spanish, anything else (Swiss and Austrian German included)
// English.
[[nodiscard]] KeyboardLayoutCode LayoutCodeOf(std::uint32_t keyboardLayout);

// KeyboardLayoutOfLanguage makes the handle of a language's standard keyboard layout, the
// language id in both words, as the system reports it for a language's default layout.
[[nodiscard]] std::uint32_t KeyboardLayoutOfLanguage(int langId);

using KeyCaptions = std::array<std::string, kKeyIndexCount>;

// CaptionsFor gives every key's caption (UTF-8) in a layout: the designed captions with the
// layout's relabelling applied. Unused indexes and catalogue captions stay empty. The "&"
// key of the German design is stored as "&&", as the design has it.
[[nodiscard]] KeyCaptions CaptionsFor(KeyboardLayoutCode layout);

// KeyAction is what a key press does to the passphrase box.
struct KeyAction {
    enum class Kind { Append, RemoveLast, ToggleShift, Nothing };
    Kind kind = Kind::Nothing;
    std::string text; // UTF-8, for Append
};

// PressKey runs the key handler for a key whose current caption is caption. Its tests come in
// a fixed order and the first match decides; the language-letter tests compare the index
// with a value that is 0 outside the layout they belong to, so the key "0" types a letter.
[[nodiscard]] KeyAction PressKey(KeyboardLayoutCode layout, bool lowerCaseMode, int index,
                                 const std::string& caption);

// ShiftCaption is the shift key's caption for a mode: "shift" in lower case, "SHIFT" else.
[[nodiscard]] const char* ShiftCaption(bool lowerCaseMode);

// The size switch. ZoomChangeFor says what a click on an Option1 button does given which
// button is now selected and the current zoom factor (1 or 2); ZoomedValue applies it to one
// coordinate or size (halving divides by 2 dropping the remainder).
enum class ZoomChange { None, Halve, Double };
[[nodiscard]] ZoomChange ZoomChangeFor(bool doubleSelected, int zoomFactor);
[[nodiscard]] int ZoomedValue(int value, ZoomChange change);
[[nodiscard]] int ZoomFactorAfter(int zoomFactor, ZoomChange change);

} // namespace kelvora
