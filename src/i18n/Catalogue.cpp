#include "i18n/Catalogue.h"

#include "i18n/CatalogueTable.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

namespace kelvora {

namespace {

constexpr std::array kLanguageOffsets{kGerman, kEnglish, kSpanish, kFrench};

// A catalogue number is a German id plus a language offset. Splitting the number rather than
// trusting the offset keeps the rule "text number = id + offset" exact for any offset: the
// language is the one with the largest offset not above the number.
struct TextAddress {
    int germanId = 0;
    std::size_t language = 0;
};

// Text numbers are 16-bit, so a sum beyond that range names no text (and cannot overflow
// here, since it is formed in a wider type).
std::optional<TextAddress> AddressOf(int languageOffset, int germanId) {
    const long long textNumber = static_cast<long long>(germanId) + languageOffset;
    if (textNumber < 0 || textNumber > std::numeric_limits<std::int16_t>::max()) {
        return std::nullopt;
    }
    std::size_t language = kLanguageOffsets.size() - 1;
    while (textNumber < kLanguageOffsets[language]) {
        --language;
    }
    return TextAddress{static_cast<int>(textNumber) - kLanguageOffsets[language], language};
}

const char* TextOfLanguage(const CatalogueRow& row, std::size_t language) {
    const std::array<const char*, 4> texts{row.german, row.english, row.spanish, row.french};
    return texts[language];
}

// ReplaceAll replaces every placeholder from the start; inserted text is not searched again.
std::string ReplaceAll(std::string_view text, std::string_view placeholder,
                       std::string_view value) {
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = text.find(placeholder); at != std::string_view::npos;
         at = text.find(placeholder, from)) {
        result.append(text.substr(from, at - from)).append(value);
        from = at + placeholder.size();
    }
    result.append(text.substr(from));
    return result;
}

} // namespace

std::optional<std::string_view> FindText(int languageOffset, int germanId) {
    const std::optional<TextAddress> address = AddressOf(languageOffset, germanId);
    if (!address) {
        return std::nullopt;
    }
    const std::span<const CatalogueRow> rows = CatalogueRows();
    const auto row = std::ranges::lower_bound(rows, address->germanId, {}, &CatalogueRow::germanId);
    if (row == rows.end() || row->germanId != address->germanId) {
        return std::nullopt;
    }
    const char* text = TextOfLanguage(*row, address->language);
    if (text == nullptr) {
        return std::nullopt;
    }
    return std::string_view(text);
}

std::string GetText(int languageOffset, int germanId, std::string_view s, std::string_view d) {
    const std::optional<std::string_view> text = FindText(languageOffset, germanId);
    if (!text) {
        return "#" + std::to_string(germanId);
    }
    return FillPlaceholders(*text, s, d);
}

std::string FillPlaceholders(std::string_view text, std::string_view s, std::string_view d) {
    if (s.empty() && d.empty()) {
        return std::string(text);
    }
    return ReplaceAll(ReplaceAll(text, "%s", s), "%d", d);
}

} // namespace kelvora
