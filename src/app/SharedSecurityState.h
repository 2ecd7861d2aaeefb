#pragma once

#include "common/Bytes.h"
#include "crypto/KeyRules.h"
#include "i18n/TextIds.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

inline constexpr int kSharedKeySlots = 10;

// SharedSecurityState holds the ten shared-security key slots of the main window and carries
// out the handlers of the shared-security panel on them, without Qt: the panel mirrors the
// count text, the position caption and the scroll bar into its controls, and passes the
// text of the passphrase box in; a handler returns the text the box must show next, or
// nothing when the box stays as it is.
//
// The handlers keep the program's known behaviour on purpose, so that keys are entered the
// same way as in other copies: the key on show is read back from the first character of
// the position caption (so "10/10" names key 1), the arrows move the caption but not the
// scroll bar, and BuildKey stores the box into the slot of the scroll bar's value.
// Slots hold the keys as typed (UTF-8); BuildKey converts them to Windows-1252.
class SharedSecurityState {
public:
    enum class Validation {
        Accept,
        Refuse,           // not numeric or below 1: leaving the field is refused silently
        RefuseOutOfRange, // above 10: message 385, leaving the field is refused
        FallBackToSingle, // "1": one key is no shared security
    };

    static constexpr const char* kInitialCount = "3";
    static constexpr const char* kFallbackCount = "2";

    const std::string& CountText() const { return m_countText; }
    const std::string& Caption() const { return m_caption; }
    int ScrollValue() const { return m_scrollValue; }
    int ScrollMaximum() const { return m_scrollMaximum; }
    const std::string& Slot(int index) const;
    // ShownSlot is the slot whose key the passphrase box shows since the last handler, or -1.
    int ShownSlot() const { return m_shownSlot; }

    // ClearSlots empties all ten slots (a mode switch throws away every key typed).
    void ClearSlots();

    // OnCountChanged re-numbers after the count field changed to text: a text that is not
    // numeric becomes "2", the caption "1/<count>", the scroll bar 1 with the count as its
    // maximum, and then the scroll handler runs for value 1.
    std::optional<std::string> OnCountChanged(std::string_view text, std::string_view shown);

    // Validate checks the count when the field is left; it changes nothing.
    static Validation Validate(std::string_view text);

    // OnScroll stores the box into the slot the caption names, then shows the key at value.
    std::optional<std::string> OnScroll(int value, std::string_view shown);

    // OnArrow stores the box, then steps the caption forward (index 0) or back (index 1)
    // with wrap-around and shows the key the new caption names. The scroll bar stays.
    std::optional<std::string> OnArrow(int index, std::string_view shown);

    // BuildKey stores the box into the slot of the scroll value and combines keys 1 to the
    // count with the shared key rule. An empty key gives its number and no key; a count
    // outside 1 to 10 gives kCountOutOfRange.
    static constexpr int kCountOutOfRange = -1;
    [[nodiscard]] SharedKey BuildKey(std::string_view shown);

private:
    void Store(int slot, std::string_view shown);
    std::optional<std::string> Show(int slot);
    int CaptionKey() const;
    void SetCaption(int key);

    std::array<SecretString, kSharedKeySlots> m_slots;
    std::string m_countText = kInitialCount;
    std::string m_caption = std::string("1/") + kInitialCount;
    int m_scrollValue = 1;
    int m_scrollMaximum = 3;
    int m_shownSlot = 0;
};

// IsNumeric tells whether a text reads as a number: blanks around it, a sign, digits with
// at most one decimal point, and an exponent.
[[nodiscard]] bool IsNumeric(std::string_view text);
// NumericValue reads such a text (0 when it is not numeric).
[[nodiscard]] double NumericValue(std::string_view text);
// RoundedCount rounds a numeric count to the nearest integer, halves to even.
[[nodiscard]] int RoundedCount(std::string_view text);

} // namespace kelvora
