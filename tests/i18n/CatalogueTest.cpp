#include "i18n/Catalogue.h"

#include "i18n/CatalogueTable.h"
#include "i18n/TextIds.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <tuple>
#include <vector>

namespace kelvora {
namespace {

constexpr std::array kLanguages{kGerman, kEnglish, kSpanish, kFrench};

// ---- GetText and its filling ----

// Rows: language, id, the text put into "%s", the text shown. A text's number is its id plus
// the language's offset, however it is reached; a missing text shows as "#" and its German id.
TEST(GetText, FillsTheTextOrMarksTheGap) {
    const std::tuple<int, int, std::string, std::string> kTexts[] = {
        {kEnglish, 116, "C:\\x.vexo", "The encrypted file has been saved as \"C:\\x.vexo\"."},
        {kFrench, 116, "C:\\x.vexo", "Le fichier chiffré a été enregistré sous « C:\\x.vexo »."},
        {kEnglish, 182, "", "Return to main menu"},
        {kGerman, 1082, "", "Return to main menu"},
        {kGerman, 182, "", "#182"},
        {kGerman, 1082 + 1900, "", "#2982"},
        {-kEnglish, 103, "", "#103"},
        {std::numeric_limits<int>::max(), 103, "", "#103"},
        {kFrench, 147, "x", "#147"},
        {kGerman, -5, "", "#-5"}};
    for (const auto& [language, id, s, expected] : kTexts) {
        EXPECT_EQ(GetText(language, id, s), expected) << language << " " << id;
    }
}

// Rows: text, s, d, the filled text. With both empty the text stays as it is; otherwise every
// "%s", then every "%d", is filled (case-sensitively), and what was put in is not searched again.
TEST(GetText, FillsEveryPlaceholder) {
    const std::array<std::string, 4> kFills[] = {
        {"%s of %d", "", "", "%s of %d"},     {"[%s] %d of 10", "", "3", "[] 3 of 10"},
        {"%s-%s-%d-%d", "a", "b", "a-a-b-b"}, {"[%s]", "%d", "9", "[9]"},
        {"%s", "%s%s", "", "%s%s"},           {"%S %D %s", "x", "y", "%S %D x"}};
    for (const auto& [text, s, d, expected] : kFills) {
        EXPECT_EQ(FillPlaceholders(text, s, d), expected) << text;
    }
}

// ---- Which ids exist in which language ----

// Every text the program names exists in every language but the known gaps: "Return to main
// menu" (182) only in English and Spanish, and no French for the two tool lines of the welcome
// window, which leaves them out in French.
TEST(Catalogue, NamedTextsExistInEveryLanguageButTheKnownGaps) {
    std::vector<int> ids(kNamedTextIds.begin(), kNamedTextIds.end());
    ids.insert(ids.end(), kLanguageNameIds.begin() + 1, kLanguageNameIds.end());
    ids.push_back(182);
    for (const int id : ids) {
        for (const int language : kLanguages) {
            const bool gap = id == 182 ? language == kGerman || language == kFrench
                                       : language == kFrench &&
                                             (id == kCookieToolText || id == kShredderToolText);
            EXPECT_EQ(FindText(language, id).has_value(), !gap) << id << " in " << language;
        }
    }
}

// ---- The table as a whole ----

std::size_t CountOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos;
         at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

// The ids ascend without repeats (the lookup relies on it). Translations must keep what the
// program fills in or relies on: placeholders, the product name and the pattern part of a file
// filter.
TEST(CatalogueTable, SortedAndTranslationsKeepWhatTheProgramUses) {
    int previous = 0;
    for (const CatalogueRow& row : CatalogueRows()) {
        EXPECT_LT(previous, row.germanId);
        previous = row.germanId;
        ASSERT_NE(row.english, nullptr) << row.germanId;
        const std::string_view english = row.english;
        // A file-dialog filter: "Name (*.ext)|*.ext".
        const auto filter = english.find(")|*");
        for (const char* text : {row.german, row.english, row.spanish, row.french}) {
            if (text == nullptr) {
                continue;
            }
            const std::string_view translated = text;
            SCOPED_TRACE(std::to_string(row.germanId) + ": " + text);
            EXPECT_FALSE(translated.empty());
            EXPECT_EQ(CountOf(translated, "%s"), CountOf(english, "%s"));
            EXPECT_EQ(CountOf(translated, "%d"), CountOf(english, "%d"));
            EXPECT_EQ(CountOf(translated, "Kelvora"), CountOf(english, "Kelvora"));
            if (filter != std::string_view::npos) {
                const auto at = translated.find(")|*");
                ASSERT_NE(at, std::string_view::npos);
                EXPECT_EQ(translated.substr(at), english.substr(filter));
            }
        }
    }
}

} // namespace
} // namespace kelvora
