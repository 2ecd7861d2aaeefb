#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelvora {

// Language offsets: a German catalogue id plus the offset is the id of the same text in
// another language.
inline constexpr int kGerman = 0;
inline constexpr int kEnglish = 900;
inline constexpr int kSpanish = 1900;
inline constexpr int kFrench = 2900;

// FindText returns the catalogue text (UTF-8) with id germanId + languageOffset, or nullopt
// when that language has no such text.
[[nodiscard]] std::optional<std::string_view> FindText(int languageOffset, int germanId);

// GetText returns the text for a German id in a language with "%s" and "%d" filled: when s
// and d are both empty the text comes back as stored; otherwise every "%s" becomes s and
// then every "%d" becomes d. A missing id gives a visible marker ("#" and the id).
[[nodiscard]] std::string GetText(int languageOffset, int germanId, std::string_view s = {},
                                  std::string_view d = {});

// FillPlaceholders applies GetText's filling to any text: unchanged when s and d are both
// empty, else every "%s" becomes s and then every "%d" becomes d. It cannot fail.
[[nodiscard]] std::string FillPlaceholders(std::string_view text, std::string_view s,
                                           std::string_view d);

} // namespace kelvora
