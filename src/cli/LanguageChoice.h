#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kelvora::cli {

// LanguageOffsetFromName maps a language the user names ("de", "DE", "fr_CA", "es-MX"), any
// case, to the catalogue's language offset by its language part, or nothing when it is none
// of German, English, Spanish or French.
[[nodiscard]] std::optional<int> LanguageOffsetFromName(std::string_view name);

// LanguageOffsetFromLocale chooses the language as the window does at start-up, from the
// first of LC_ALL, LC_MESSAGES and LANG that is set and not empty ("de_AT.UTF-8@euro"),
// through the Windows language id; English when none is set or none matches.
[[nodiscard]] int
LanguageOffsetFromLocale(const std::function<std::optional<std::string>(const char*)>& getenv);

} // namespace kelvora::cli
