#include "app/SharedSecurityState.h"

#include "common/Ansi.h"

#include <cmath>
#include <cstdlib>
#include <vector>

namespace kelvora {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// FirstCharacterValue is the numeric value of a text's first character: a digit's value,
// 0 for anything else, as the handlers read the key number back from the caption.
int FirstCharacterValue(std::string_view text) {
    return !text.empty() && IsDigit(text[0]) ? text[0] - '0' : 0;
}

} // namespace

bool IsNumeric(std::string_view text) {
    text = Trimmed(text);
    std::size_t i = 0;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        ++i;
    }
    std::size_t digits = 0;
    bool point = false;
    for (; i < text.size(); ++i) {
        if (IsDigit(text[i])) {
            ++digits;
        } else if (text[i] == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (digits == 0) {
        return false;
    }
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        ++i;
        if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
            ++i;
        }
        const std::size_t exponentStart = i;
        while (i < text.size() && IsDigit(text[i])) {
            ++i;
        }
        if (i == exponentStart) {
            return false;
        }
    }
    return i == text.size();
}

double NumericValue(std::string_view text) {
    if (!IsNumeric(text)) {
        return 0.0;
    }
    const std::string digits(Trimmed(text));
    return std::strtod(digits.c_str(), nullptr);
}

int RoundedCount(std::string_view text) {
    const double value = std::nearbyint(NumericValue(text)); // the default mode: halves to even
    return std::abs(value) < 1e9 ? static_cast<int>(value) : 0;
}

const std::string& SharedSecurityState::Slot(int index) const {
    static const std::string kNone;
    return index >= 0 && index < kSharedKeySlots ? m_slots[static_cast<std::size_t>(index)].str()
                                                 : kNone;
}

void SharedSecurityState::ClearSlots() {
    for (SecretString& slot : m_slots) {
        slot = SecretString();
    }
}

std::optional<std::string> SharedSecurityState::OnCountChanged(std::string_view text,
                                                               std::string_view shown) {
    m_countText = IsNumeric(text) ? std::string(text) : kFallbackCount;
    m_caption = "1/" + m_countText;
    m_scrollValue = 1;
    m_scrollMaximum = RoundedCount(m_countText);
    return OnScroll(m_scrollValue, shown);
}

SharedSecurityState::Validation SharedSecurityState::Validate(std::string_view text) {
    if (!IsNumeric(text) || NumericValue(text) < 1) {
        return Validation::Refuse;
    }
    if (NumericValue(text) > kSharedKeySlots) {
        return Validation::RefuseOutOfRange;
    }
    return text == "1" ? Validation::FallBackToSingle : Validation::Accept;
}

std::optional<std::string> SharedSecurityState::OnScroll(int value, std::string_view shown) {
    Store(CaptionKey() - 1, shown);
    m_scrollValue = value;
    SetCaption(value);
    return Show(value - 1);
}

std::optional<std::string> SharedSecurityState::OnArrow(int index, std::string_view shown) {
    const int key = CaptionKey();
    Store(key - 1, shown);
    SetCaption(index == 0 ? key + 1 : key - 1);
    // The caption's first character decides: past the count wraps to key 1, key 0 to the
    // last key. With ten keys "10/10" reads as key 1, so ">" from key 10 reaches key 2.
    const int first = CaptionKey();
    if (first > NumericValue(m_countText)) {
        m_caption = "1/" + m_countText;
    } else if (first == 0) {
        m_caption = m_countText + "/" + m_countText;
    }
    return Show(CaptionKey() - 1);
}

SharedKey SharedSecurityState::BuildKey(std::string_view shown) {
    Store(m_scrollValue - 1, shown);
    const int count = RoundedCount(m_countText);
    if (count < 1 || count > kSharedKeySlots) {
        return SharedKey{SecretBytes(), kCountOutOfRange};
    }
    std::vector<std::string> keys;
    for (int slot = 0; slot < count; ++slot) {
        keys.push_back(AnsiFromUtf8(Slot(slot)));
    }
    SharedKey key = kelvora::BuildKey(keys);
    for (std::string& ansi : keys) {
        Wipe(ansi);
    }
    return key;
}

void SharedSecurityState::Store(int slot, std::string_view shown) {
    if (slot >= 0 && slot < kSharedKeySlots) {
        m_slots[static_cast<std::size_t>(slot)] = SecretString(std::string(shown));
    }
}

std::optional<std::string> SharedSecurityState::Show(int slot) {
    if (slot < 0 || slot >= kSharedKeySlots) {
        return std::nullopt;
    }
    m_shownSlot = slot;
    return m_slots[static_cast<std::size_t>(slot)].str();
}

int SharedSecurityState::CaptionKey() const {
    return FirstCharacterValue(m_caption);
}

void SharedSecurityState::SetCaption(int key) {
    m_caption = std::to_string(key) + "/" + m_countText;
}

} // namespace kelvora
