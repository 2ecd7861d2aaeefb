#include "app/LanguageId.h"

#include "i18n/Catalogue.h"

#include <algorithm>
#include <array>
#include <span>

namespace kelvora {
namespace {

constexpr int kSubLanguageShift = 10;
constexpr int kDefaultSubLanguage = 1;

struct Territory {
    std::string_view code;
    int subLanguage;
};

struct LanguageTable {
    std::string_view code;
    int primary;
    std::span<const Territory> territories;
};

constexpr std::array kGermanTerritories{Territory{"DE", 1}, Territory{"CH", 2}, Territory{"AT", 3},
                                        Territory{"LU", 4}, Territory{"LI", 5}};
constexpr std::array kEnglishTerritories{
    Territory{"US", 1},  Territory{"GB", 2},  Territory{"AU", 3},  Territory{"CA", 4},
    Territory{"NZ", 5},  Territory{"IE", 6},  Territory{"ZA", 7},  Territory{"JM", 8},
    Territory{"BZ", 10}, Territory{"TT", 11}, Territory{"ZW", 12}, Territory{"PH", 13},
    Territory{"IN", 16}, Territory{"MY", 17}, Territory{"SG", 18}};
constexpr std::array kSpanishTerritories{
    Territory{"ES", 3},  Territory{"MX", 2},  Territory{"GT", 4},  Territory{"CR", 5},
    Territory{"PA", 6},  Territory{"DO", 7},  Territory{"VE", 8},  Territory{"CO", 9},
    Territory{"PE", 10}, Territory{"AR", 11}, Territory{"EC", 12}, Territory{"CL", 13},
    Territory{"UY", 14}, Territory{"PY", 15}, Territory{"BO", 16}, Territory{"SV", 17},
    Territory{"HN", 18}, Territory{"NI", 19}, Territory{"PR", 20}, Territory{"US", 21}};
constexpr std::array kFrenchTerritories{Territory{"FR", 1}, Territory{"BE", 2}, Territory{"CA", 3},
                                        Territory{"CH", 4}, Territory{"LU", 5}, Territory{"MC", 6}};
constexpr std::array<Territory, 0> kNoTerritories{};

constexpr std::array kLanguages{
    LanguageTable{"de", 0x07, kGermanTerritories},  LanguageTable{"en", 0x09, kEnglishTerritories},
    LanguageTable{"es", 0x0A, kSpanishTerritories}, LanguageTable{"fr", 0x0C, kFrenchTerritories},
    LanguageTable{"it", 0x10, kNoTerritories},      LanguageTable{"nl", 0x13, kNoTerritories},
    LanguageTable{"pt", 0x16, kNoTerritories},      LanguageTable{"pl", 0x15, kNoTerritories}};

constexpr std::array kGermanIds{1031, 7, 3079, 2055, 4103, 5127};
constexpr std::array kSpanishIds{1034,  2058,  3082,  4106,  5130,  6154,  7178,
                                 8202,  9226,  10250, 11274, 12298, 13322, 14346,
                                 15370, 16394, 17418, 18442, 1216,  20490};
constexpr std::array kFrenchIds{12, 1036, 2060, 3084, 4108, 5132, 6156};

template <typename Ids> bool Holds(const Ids& ids, int langId) {
    return std::find(ids.begin(), ids.end(), langId) != ids.end();
}

} // namespace

int WindowsLanguageId(std::string_view language, std::string_view territory) {
    for (const LanguageTable& table : kLanguages) {
        if (table.code != language) {
            continue;
        }
        int subLanguage = kDefaultSubLanguage;
        for (const Territory& known : table.territories) {
            if (known.code == territory) {
                subLanguage = known.subLanguage;
            }
        }
        return subLanguage << kSubLanguageShift | table.primary;
    }
    return 0;
}

int WindowsLanguageIdOfLocale(std::string_view localeName) {
    localeName = localeName.substr(0, localeName.find_first_of(".@"));
    const std::size_t separator = localeName.find('_');
    if (separator == std::string_view::npos) {
        return WindowsLanguageId(localeName, {});
    }
    return WindowsLanguageId(localeName.substr(0, separator), localeName.substr(separator + 1));
}

int LanguageOffsetForLangId(int langId) {
    if (Holds(kGermanIds, langId)) {
        return kGerman;
    }
    if (Holds(kSpanishIds, langId)) {
        return kSpanish;
    }
    if (Holds(kFrenchIds, langId)) {
        return kFrench;
    }
    return kEnglish;
}

} // namespace kelvora
