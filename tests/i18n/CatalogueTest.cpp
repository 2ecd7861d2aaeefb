#include "i18n/Catalogue.h"

#include "i18n/CatalogueTable.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <set>

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

// Ids the windows and messages use that every language holds.
constexpr std::array kIdsInEveryLanguage{
    103, 105, 106, 108, 109, 110, 111, 112, 114, 115, 116, 120, 121, 122, 123, 124, 125, 126, 127,
    128, 129, 130, 142, 143, 144, 145, 146, 148, 149, 150, 151, 152, 153, 154, 155, 156, 158, 159,
    160, 161, 162, 163, 164, 165, 166, 167, 169, 178, 179, 180, 181, 183, 184, 187, 190, 191, 192,
    193, 194, 195, 200, 201, 385, 386, 390, 391, 392, 393, 394, 395, 396, 397, 398, 399, 400, 401,
    402, 403, 404, 500, 501, 502, 503, 504, 505, 510, 511, 512, 513, 514, 515, 516, 517, 518, 519,
    520, 521, 522, 523, 524, 525, 526, 527, 550, 551, 552, 553, 554, 555, 556, 557, 558, 560, 561,
    562, 563, 564, 565, 566, 567, 568, 569, 570, 571, 572, 573, 580, 581, 582, 583, 584, 585, 586,
    587, 588, 589, 590, 591, 592, 610, 611, 630, 650, 651, 652, 653, 654, 655, 656, 657};

class IdInEveryLanguage : public ::testing::TestWithParam<int> {};

TEST_P(IdInEveryLanguage, Exists) {
    for (const int language : kLanguages) {
        EXPECT_TRUE(FindText(language, GetParam())) << "language offset " << language;
    }
}

INSTANTIATE_TEST_SUITE_P(Catalogue, IdInEveryLanguage, ::testing::ValuesIn(kIdsInEveryLanguage),
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

// Ids ascend without repeats, and each is one the windows use or a known gap.
TEST(CatalogueTable, IdsAscendAndAreAllListed) {
    std::set<int> listed(kIdsInEveryLanguage.begin(), kIdsInEveryLanguage.end());
    listed.insert({182, 202, 203});
    int previous = 0;
    for (const CatalogueRow& row : CatalogueRows()) {
        EXPECT_LT(previous, row.germanId);
        EXPECT_TRUE(listed.contains(row.germanId)) << row.germanId;
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
