#include "tools/PassphraseRating.h"

#include "common/FixedRandom.h"
#include "tools/PassphraseGenerator.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

struct RatingCase {
    const char* name;
    std::string passphrase;
    int score;
};

class Rating : public ::testing::TestWithParam<RatingCase> {};

TEST_P(Rating, ScoresByLengthAndCharacterClasses) {
    EXPECT_EQ(PwdBewert(GetParam().passphrase).score, GetParam().score);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Rating,
    ::testing::Values(RatingCase{"Empty", "", 0},
                      RatingCase{"TenLowerCase", "abcdefghij", 20}, // 31, no upper: 31 x 0.65
                      RatingCase{"BlankCountsAsLowerCase", "ABC DEF",
                                 16},                                // 22, no digit: 16.5 to even
                      RatingCase{"FourLettersTieToEven", "abcd", 8}, // 12.5 -> 12, x 0.65 = 7.8
                      RatingCase{"NoOtherClass", "aaaaAAA1!?", 23},  // 31.25 -> 31, x 0.75
                      RatingCase{"AllClassesFull",
                                 "Abcdefghijklmnopqrstuvwxyz1!2\xE4"
                                 "3\xF6",
                                 100},
                      RatingCase{"LettersOnlyCapA", "ABCDEFGHIJKLMNOPabcdefghijklmnop", 71},
                      RatingCase{"TwoSymbolsCapB", "ABCDEFGHIJKLMNOPabcdefghijklmn1\xE9", 81},
                      RatingCase{"ThirtyTwoLowerCase", std::string(32, 'a'), 65},
                      RatingCase{"BeyondThirtyTwoOnlyClasses", std::string(32, 'a') + "A", 71}),
    [](const auto& info) { return info.param.name; });

struct LevelCase {
    int score;
    int stars;
    std::array<bool, 3> lamps;
    int sentenceId;
};

class RatingLevel : public ::testing::TestWithParam<LevelCase> {};

TEST_P(RatingLevel, ShowsStarsLampsAndSentenceAtEachBound) {
    const PassphraseRating rating = RatingForScore(GetParam().score);
    EXPECT_EQ(rating.stars, GetParam().stars);
    EXPECT_EQ(rating.lamps, GetParam().lamps);
    EXPECT_EQ(rating.sentenceId, GetParam().sentenceId);
}

INSTANTIATE_TEST_SUITE_P(
    Bounds, RatingLevel,
    ::testing::Values(
        LevelCase{0, 0, {true, false, false}, 124}, LevelCase{5, 0, {true, false, false}, 124},
        LevelCase{6, 1, {true, false, false}, 124}, LevelCase{9, 1, {true, false, false}, 124},
        LevelCase{10, 2, {true, true, false}, 125}, LevelCase{24, 2, {true, true, false}, 125},
        LevelCase{25, 3, {false, true, false}, 126}, LevelCase{49, 3, {false, true, false}, 126},
        LevelCase{50, 4, {false, true, true}, 127}, LevelCase{94, 4, {false, true, true}, 127},
        LevelCase{95, 5, {false, false, true}, 128}, LevelCase{100, 5, {false, false, true}, 128}));

TEST(PassphraseGenerator, DrawsThirtyTwoPrintableCharactersUpToBrace) {
    testing::FixedRandom counting; // 0, 1, 2, ...: bytes from 188 on must be drawn again
    const std::string first = GenerateRandomPassphrase(counting);
    ASSERT_EQ(first.size(), 32u);
    EXPECT_EQ(first.front(), ' ');
    EXPECT_EQ(first.back(), static_cast<char>(32 + 31));

    SystemRandom random;
    std::array<int, 128> seen{};
    for (int round = 0; round < 200; ++round) {
        for (const char c : GenerateRandomPassphrase(random)) {
            ++seen[static_cast<unsigned char>(c) & 127u];
            EXPECT_GE(c, 32);
            EXPECT_LE(c, 125);
        }
    }
    EXPECT_EQ(seen['~'], 0);
    EXPECT_GT(seen['}'], 0); // 6,400 draws: every code turns up
    EXPECT_GT(seen[' '], 0);
}

TEST(PassphraseGenerator, GeneratedPassphraseIsShownAtTheTopLevel) {
    EXPECT_EQ(TopRating().stars, 5);
    EXPECT_EQ(TopRating().lamps, (std::array<bool, 3>{false, false, true}));
}

} // namespace
} // namespace kelvora
