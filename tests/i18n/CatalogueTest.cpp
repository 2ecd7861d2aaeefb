#include "i18n/Catalogue.h"

#include "i18n/CatalogueTable.h"
#include "i18n/TextIds.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace kelvora {
namespace {

// ---- GetText and its filling ----

// A row looks up id in language, or fills text when one is given.
struct FillCase {
    const char* name;
    int language;
    int id;
    const char* text;
    std::string s;
    std::string d;
    std::string expected;
};

class GetTextFilling : public ::testing::TestWithParam<FillCase> {};

TEST_P(GetTextFilling, ReturnsTheFilledText) {
    const FillCase& c = GetParam();
    EXPECT_EQ(c.text ? FillPlaceholders(c.text, c.s, c.d) : GetText(c.language, c.id, c.s, c.d),
              c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    GetText, GetTextFilling,
    ::testing::Values(FillCase{"PathIntoEnglish", kEnglish, 116, nullptr, "C:\\x.vexo", "",
                               "The encrypted file has been saved as \"C:\\x.vexo\"."},
                      FillCase{"PathIntoFrench", kFrench, 116, nullptr, "C:\\x.vexo", "",
                               "Le fichier chiffré a été enregistré sous « C:\\x.vexo »."},
                      FillCase{"NoGerman182", kGerman, 182, nullptr, "", "", "#182"},
                      FillCase{"UnknownIdMarkedWithGermanId", kFrench, 147, nullptr, "x", "",
                               "#147"},
                      FillCase{"NegativeNumber", kGerman, -5, nullptr, "", "", "#-5"},
                      FillCase{"BothEmptyKeepsAll", 0, 0, "%s of %d", "", "", "%s of %d"},
                      FillCase{"OnlyDGivenEmptiesS", 0, 0, "[%s] %d of 10", "", "3", "[] 3 of 10"},
                      FillCase{"EveryOccurrence", 0, 0, "%s-%s-%d-%d", "a", "b", "a-a-b-b"},
                      FillCase{"SFilledBeforeD", 0, 0, "[%s]", "%d", "9", "[9]"},
                      FillCase{"InsertedTextNotSearchedAgain", 0, 0, "%s", "%s%s", "", "%s%s"},
                      FillCase{"CaseSensitive", 0, 0, "%S %D %s", "x", "y", "%S %D x"}),
    [](const auto& info) { return info.param.name; });

// ---- Which ids exist in which language ----

constexpr std::array kLanguages{kGerman, kEnglish, kSpanish, kFrench};

// The texts the program names, in every language but the known gaps: no French for the two
// tool lines of the welcome window, which leaves them out in French.
std::vector<int> NamedIdsInEveryLanguage() {
    std::vector<int> ids(kNamedTextIds.begin(), kNamedTextIds.end());
    ids.insert(ids.end(), kLanguageNameIds.begin() + 1, kLanguageNameIds.end());
    std::erase_if(ids, [](int id) { return id == kCookieToolText || id == kShredderToolText; });
    return ids;
}

class IdInEveryLanguage : public ::testing::TestWithParam<int> {};

TEST_P(IdInEveryLanguage, Exists) {
    for (const int language : kLanguages) {
        EXPECT_TRUE(FindText(language, GetParam())) << "language offset " << language;
    }
}

INSTANTIATE_TEST_SUITE_P(Catalogue, IdInEveryLanguage,
                         ::testing::ValuesIn(NamedIdsInEveryLanguage()),
                         [](const auto& info) { return "Id" + std::to_string(info.param); });

TEST(CatalogueGaps, MissingTextsStayMissing) {
    // "Return to main menu" exists only in English and Spanish; French lacks 202 and 203.
    EXPECT_FALSE(FindText(kGerman, 182));
    EXPECT_EQ(FindText(kEnglish, 182), "Return to main menu");
    EXPECT_TRUE(FindText(kSpanish, 182));
    EXPECT_FALSE(FindText(kFrench, 182));
    for (const int promotion : {202, 203}) {
        EXPECT_TRUE(FindText(kGerman, promotion));
        EXPECT_TRUE(FindText(kEnglish, promotion));
        EXPECT_TRUE(FindText(kSpanish, promotion));
        EXPECT_FALSE(FindText(kFrench, promotion));
    }
}

TEST(FindText, TextNumberIsIdPlusOffset) {
    // The English "Return to main menu" is text 1082, however it is reached.
    EXPECT_EQ(FindText(kGerman, 1082), FindText(kEnglish, 182));
    EXPECT_FALSE(FindText(kGerman, 1082 + 1900));
    EXPECT_FALSE(FindText(-kEnglish, 103));
    EXPECT_FALSE(FindText(std::numeric_limits<int>::max(), 103));
}

// ---- The table as a whole ----

TEST(CatalogueTable, IdsAscendWithoutRepeats) {
    int previous = 0;
    for (const CatalogueRow& row : CatalogueRows()) {
        EXPECT_LT(previous, row.germanId);
        previous = row.germanId;
    }
}

std::size_t CountOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos;
         at = text.find(part, at + part.size())) {
        ++count;
    }
    return count;
}

// Translations must keep what the program fills in or relies on: placeholders, the product
// name and the pattern part of a file filter.
TEST(CatalogueTable, TranslationsKeepWhatTheProgramUses) {
    for (const CatalogueRow& row : CatalogueRows()) {
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
