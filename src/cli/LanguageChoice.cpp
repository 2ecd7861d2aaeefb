#include "cli/LanguageChoice.h"

#include "app/LanguageId.h"
#include "i18n/Catalogue.h"

#include <array>
#include <cctype>
#include <utility>

namespace kelvora::cli {
namespace {

struct LocaleParts {
    std::string language;
    std::string territory;
};

// SplitLocale reads "ll_TT.codeset@modifier" (or "ll-TT") into a lower-case language and an
// upper-case territory.
LocaleParts SplitLocale(std::string_view name) {
    name = name.substr(0, name.find_first_of(".@"));
    const std::size_t cut = name.find_first_of("_-");
    LocaleParts parts;
    for (const char c : name.substr(0, cut)) {
        parts.language.push_back(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
    }
    if (cut != std::string_view::npos) {
        for (const char c : name.substr(cut + 1)) {
            parts.territory.push_back(
                static_cast<char>(std::toupper(static_cast<unsigned char>(c))));
        }
    }
    return parts;
}

int OffsetOf(const LocaleParts& parts) {
    return LanguageOffsetForLangId(WindowsLanguageId(parts.language, parts.territory));
}

} // namespace

std::optional<int> LanguageOffsetFromName(std::string_view name) {
    // A language named on purpose counts by its language alone, whatever its territory.
    constexpr std::array<std::pair<std::string_view, int>, 4> kNames = {
        {{"de", kGerman}, {"en", kEnglish}, {"es", kSpanish}, {"fr", kFrench}}};
    const LocaleParts parts = SplitLocale(name);
    for (const auto& [known, offset] : kNames) {
        if (parts.language == known) {
            return offset;
        }
    }
    return std::nullopt;
}

int LanguageOffsetFromLocale(const std::function<std::optional<std::string>(const char*)>& getenv) {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const std::optional<std::string> value = getenv(variable);
        if (value && !value->empty()) {
            return OffsetOf(SplitLocale(*value));
        }
    }
    return kEnglish;
}

} // namespace kelvora::cli
