#include "tools/ScreenKeyboard.h"

#include "i18n/TextIds.h"

#include <utility>

namespace kelvora {
namespace {

constexpr int kKey = 375;   // the usual key's width and height
constexpr int kPitch = 360; // left edge to left edge in a row: neighbours overlap by 15

constexpr int kRow1 = 360;
constexpr int kRow2 = 735;
constexpr int kRow3 = 1110;
constexpr int kRow4 = 1485;
constexpr int kNumericLeft = 6240;

constexpr KeyDesign Key(int index, const char* caption, int column, int firstLeft, int top) {
    return {index, caption, 0, firstLeft + column * kPitch, top, kKey, kKey};
}

// clang-format off
constexpr KeyDesign kKeys[] = {
    // The symbols a German keyboard types with shift, then "<-" and the numeric block.
    Key(14, "^", 0, 600, kRow1), Key(55, "!", 1, 600, kRow1), Key(56, "\"", 2, 600, kRow1),
    Key(57, "§", 3, 600, kRow1), Key(15, "$", 4, 600, kRow1), Key(58, "%", 5, 600, kRow1),
    Key(59, "&&", 6, 600, kRow1), Key(60, "/", 7, 600, kRow1), Key(61, "(", 8, 600, kRow1),
    Key(62, ")", 9, 600, kRow1), Key(63, "=", 10, 600, kRow1), Key(64, "?", 11, 600, kRow1),
    Key(65, "ß", 12, 600, kRow1),
    {kBackspaceKey, "<-", 0, 5400, kRow1, 615, kKey},
    Key(7, "7", 0, kNumericLeft, kRow1), Key(8, "8", 1, kNumericLeft, kRow1),
    Key(9, "9", 2, kNumericLeft, kRow1),

    {13, "", kTabKeyText, 240, kRow2, 495, kKey},
    Key(35, "Q", 0, 720, kRow2), Key(41, "W", 1, 720, kRow2), Key(23, "E", 2, 720, kRow2),
    Key(36, "R", 3, 720, kRow2), Key(38, "T", 4, 720, kRow2), Key(44, "Z", 5, 720, kRow2),
    Key(39, "U", 6, 720, kRow2), Key(27, "I", 7, 720, kRow2), Key(33, "O", 8, 720, kRow2),
    Key(34, "P", 9, 720, kRow2), Key(48, "Ü", 10, 720, kRow2), Key(51, "+", 11, 720, kRow2),
    Key(53, "*", 12, 720, kRow2),
    Key(4, "4", 0, kNumericLeft, kRow2), Key(5, "5", 1, kNumericLeft, kRow2),
    Key(6, "6", 2, kNumericLeft, kRow2),

    Key(19, "A", 0, 840, kRow3), Key(37, "S", 1, 840, kRow3), Key(22, "D", 2, 840, kRow3),
    Key(24, "F", 3, 840, kRow3), Key(25, "G", 4, 840, kRow3), Key(26, "H", 5, 840, kRow3),
    Key(28, "J", 6, 840, kRow3), Key(29, "K", 7, 840, kRow3), Key(30, "L", 8, 840, kRow3),
    Key(47, "Ö", 9, 840, kRow3), Key(49, "Ä", 10, 840, kRow3), Key(52, "'", 11, 840, kRow3),
    Key(1, "1", 0, kNumericLeft, kRow3), Key(2, "2", 1, kNumericLeft, kRow3),
    Key(3, "3", 2, kNumericLeft, kRow3),

    {kShiftKey, "shift", 0, 240, kRow4, 735, kKey},
    Key(43, "Y", 0, 960, kRow4), Key(42, "X", 1, 960, kRow4), Key(21, "C", 2, 960, kRow4),
    Key(40, "V", 3, 960, kRow4), Key(20, "B", 4, 960, kRow4), Key(32, "N", 5, 960, kRow4),
    Key(31, "M", 6, 960, kRow4), Key(45, ".", 7, 960, kRow4), Key(46, ":", 8, 960, kRow4),
    Key(54, ";", 9, 960, kRow4), Key(50, "-", 10, 960, kRow4),
    {0, "0", 0, kNumericLeft, kRow4, 735, kKey},
    Key(10, ",", 0, 6960, kRow4),

    {11, "Enter", 0, 5520, 720, 495, 1095},
    {kSpaceKey, "", kSpaceKeyText, 1080, 1920, 3855, 255},
    Key(66, "\\", 0, kNumericLeft, 1800),
};
// clang-format on

// A relabelling row: the caption of a key in the English and Spanish layouts; nullptr keeps
// the designed caption.
struct Relabel {
    int index;
    const char* english;
    const char* spanish;
};

// clang-format off
constexpr Relabel kRelabels[] = {
    {14, "~", "°"}, {56, "@", nullptr}, {57, "#", "·"}, {59, "^", nullptr},
    {60, "&", nullptr}, {61, "*", nullptr}, {62, "(", nullptr}, {63, ")", nullptr},
    {64, "-", nullptr}, {65, "=", "¿"}, {44, "Y", "Y"}, {43, "Z", "Z"},
    {47, ":", "ñ"}, {49, ";", "´"}, {48, "[", "`"}, {51, "]", nullptr},
    {52, nullptr, "ç"}, {53, "\\", "¡"}, {45, ",", nullptr}, {46, ".", nullptr},
    {54, "?", nullptr}, {10, ".", nullptr}, {50, "/", nullptr},
};
// clang-format on

constexpr std::uint32_t kGermanGermany = 0x0407;
constexpr std::uint32_t kGermanLayoutHighWord = 0xF0C0;
constexpr std::uint32_t kSpanishTraditional = 0x040A;

// LayoutKey is the index when the layout is the one named, else 0: the value the handler's
// language-letter tests compare with.
int LayoutKey(KeyboardLayoutCode layout, KeyboardLayoutCode named, int index) {
    return layout == named ? index : 0;
}

KeyAction Append(std::string text) {
    return {KeyAction::Kind::Append, std::move(text)};
}

KeyAction Letter(bool lowerCaseMode, const char* capital, const char* small) {
    return Append(lowerCaseMode ? small : capital);
}

} // namespace

std::span<const KeyDesign> DesignedKeys() {
    return kKeys;
}

bool IsInactiveKey(int index) {
    return index == 11 || index == 13 || index == 66;
}

KeyboardLayoutCode LayoutCodeOf(std::uint32_t keyboardLayout) {
    const std::uint32_t language = keyboardLayout & 0xFFFFu;
    const std::uint32_t device = keyboardLayout >> 16;
    if (language == kGermanGermany || device == kGermanLayoutHighWord) {
        return KeyboardLayoutCode::German;
    }
    return language == kSpanishTraditional ? KeyboardLayoutCode::Spanish
                                           : KeyboardLayoutCode::English;
}

std::uint32_t KeyboardLayoutOfLanguage(int langId) {
    const auto language = static_cast<std::uint32_t>(langId) & 0xFFFFu;
    return language << 16 | language;
}

KeyCaptions CaptionsFor(KeyboardLayoutCode layout) {
    KeyCaptions captions;
    for (const KeyDesign& key : kKeys) {
        captions[static_cast<std::size_t>(key.index)] = key.caption;
    }
    if (layout == KeyboardLayoutCode::German) {
        return captions;
    }
    for (const Relabel& relabel : kRelabels) {
        const char* caption =
            layout == KeyboardLayoutCode::English ? relabel.english : relabel.spanish;
        if (caption != nullptr) {
            captions[static_cast<std::size_t>(relabel.index)] = caption;
        }
    }
    return captions;
}

KeyAction PressKey(KeyboardLayoutCode layout, bool lowerCaseMode, int index,
                   const std::string& caption) {
    using enum KeyboardLayoutCode;
    if (IsInactiveKey(index)) {
        return {};
    }
    if (index == kBackspaceKey) {
        return {KeyAction::Kind::RemoveLast, {}};
    }
    if (index >= kFirstLetterKey && index <= kLastLetterKey) {
        return Append(lowerCaseMode && !caption.empty()
                          ? std::string(1, static_cast<char>(caption[0] + 32))
                          : caption);
    }
    if (index == kShiftKey) {
        return {KeyAction::Kind::ToggleShift, {}};
    }
    if (index == LayoutKey(layout, German, 47)) {
        return Letter(lowerCaseMode, "Ö", "ö");
    }
    if (index == LayoutKey(layout, Spanish, 47)) {
        return Letter(lowerCaseMode, "Ñ", "ñ");
    }
    if (index == LayoutKey(layout, German, 48)) {
        return Letter(lowerCaseMode, "Ü", "ü");
    }
    if (index == LayoutKey(layout, German, 49)) {
        return Letter(lowerCaseMode, "Ä", "ä");
    }
    if (index == 68) {
        return Append(" ");
    }
    if (index == LayoutKey(layout, Spanish, 52)) {
        return Letter(lowerCaseMode, "Ç", "ç");
    }
    if (index == kSpaceKey) {
        return Append(" ");
    }
    return Append(caption);
}

const char* ShiftCaption(bool lowerCaseMode) {
    return lowerCaseMode ? "shift" : "SHIFT";
}

ZoomChange ZoomChangeFor(bool doubleSelected, int zoomFactor) {
    if (!doubleSelected) {
        return zoomFactor == 2 ? ZoomChange::Halve : ZoomChange::None;
    }
    return zoomFactor == 1 ? ZoomChange::Double : ZoomChange::None;
}

int ZoomedValue(int value, ZoomChange change) {
    switch (change) {
    case ZoomChange::Halve:
        return value / 2;
    case ZoomChange::Double:
        return value * 2;
    case ZoomChange::None:
        break;
    }
    return value;
}

int ZoomFactorAfter(int zoomFactor, ZoomChange change) {
    switch (change) {
    case ZoomChange::Halve:
        return 1;
    case ZoomChange::Double:
        return 2;
    case ZoomChange::None:
        break;
    }
    return zoomFactor;
}

} // namespace kelvora
