#pragma once

#include <string_view>

namespace kelvora {

// Windows language ids (LANGID: sub-language << 10 | primary language) are how the program
// names the system's language, so that a copy on Linux starts in the same language as a
// copy on Windows on the same kind of system.

// WindowsLanguageId maps a locale given as an ISO 639 language code ("de") and an ISO 3166
// territory code ("AT") to its Windows language id. An unknown territory gives the
// language's default sub-language; a language the program has no table for gives 0
// (language neutral).
[[nodiscard]] int WindowsLanguageId(std::string_view language, std::string_view territory);

// WindowsLanguageIdOfLocale maps a locale name such as "de_AT" (language, "_", territory;
// anything from a "." or "@" on is ignored) to its Windows language id like
// WindowsLanguageId; "C" and other names without a known language give 0.
[[nodiscard]] int WindowsLanguageIdOfLocale(std::string_view localeName);

// LanguageOffsetForLangId chooses the catalogue's language offset for a Windows language id:
// the German ids give kGerman, then the Spanish ids kSpanish, then the French ids kFrench,
// and everything else kEnglish. The Spanish list holds 1216 where the pattern would put
// 19466 (Spanish, Nicaragua), so 19466 starts in English; this is kept on purpose.
[[nodiscard]] int LanguageOffsetForLangId(int langId);

} // namespace kelvora
