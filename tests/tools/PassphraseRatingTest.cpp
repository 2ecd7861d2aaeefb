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

// The fixed source gives the bytes 0, 1, 2, ...; a byte takes the code 32 + byte % 94, up to
// "}" (125), and bytes from 188 on are drawn again so that no code comes up more often.
TEST(PassphraseGenerator, DrawsThirtyTwoCodesUpToBraceAndDrawsHighBytesAgain) {
    testing::FixedRandom random;
    const auto codes = [](int firstByte, int count) {
        std::string expected;
        for (int byte = firstByte; byte < firstByte + count; ++byte) {
            expected += static_cast<char>(32 + byte % 94);
        }
        return expected;
    };
    EXPECT_EQ(GenerateRandomPassphrase(random), codes(0, 32)); // " " to "?"
    std::array<std::uint8_t, 94> skipped{}; // the rest of the first pool and 30 more bytes
    random.Fill(skipped.data(), skipped.size());
    // Bytes 158 to 187, then 188 to 255 drawn again, then 0 and 1.
    EXPECT_EQ(GenerateRandomPassphrase(random), codes(158, 30) + codes(0, 2));
    // The second pool ended at byte 29: the next passphrase starts at 30, not at 190.
    EXPECT_EQ(GenerateRandomPassphrase(random), codes(30, 32));
    EXPECT_EQ(codes(0, 94).back(), '}');
}

TEST(PassphraseGenerator, GeneratedPassphraseIsShownAtTheTopLevel) {
    EXPECT_EQ(TopRating().stars, 5);
    EXPECT_EQ(TopRating().lamps, (std::array<bool, 3>{false, false, true}));
}

} // namespace
} // namespace kelvora
