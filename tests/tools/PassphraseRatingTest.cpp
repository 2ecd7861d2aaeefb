#include "tools/PassphraseRating.h"

#include "common/FixedRandom.h"
#include "tools/PassphraseGenerator.h"

#include <gtest/gtest.h>
#include <tuple>

namespace kelvora {
namespace {

TEST(PassphraseRating, ScoresByLengthAndCharacterClasses) {
    const std::pair<std::string, int> kScores[] = {
        {"", 0},
        {"abcdefghij", 20}, // 31, no upper: 31 x 0.65
        {"ABC DEF", 16},    // a blank counts as lower case; 22, no digit: 16.5 to even
        {"abcd", 8},        // 12.5 -> 12, x 0.65 = 7.8
        {"aaaaAAA1!?", 23}, // no other class: 31.25 -> 31, x 0.75
        {"Abcdefghijklmnopqrstuvwxyz1!2\xE4\x33\xF6", 100}, // every class full ("\x33" is "3")
        {"ABCDEFGHIJKLMNOPabcdefghijklmnop", 71},           // letters only: cap A
        {"ABCDEFGHIJKLMNOPabcdefghijklmn1\xE9", 81},        // two symbols: cap B
        {std::string(32, 'a'), 65},
        {std::string(32, 'a') + "A", 71}}; // beyond 32 characters only the classes count
    for (const auto& [passphrase, score] : kScores) {
        EXPECT_EQ(PwdBewert(passphrase).score, score) << passphrase;
    }
}

// Rows: score, stars, lamps, sentence, at each bound of each level.
TEST(PassphraseRating, ShowsStarsLampsAndSentenceAtEachBound) {
    using Lamps = std::array<bool, 3>;
    const std::tuple<int, int, Lamps, int> kLevels[] = {
        {0, 0, {true, false, false}, 124},  {5, 0, {true, false, false}, 124},
        {6, 1, {true, false, false}, 124},  {9, 1, {true, false, false}, 124},
        {10, 2, {true, true, false}, 125},  {24, 2, {true, true, false}, 125},
        {25, 3, {false, true, false}, 126}, {49, 3, {false, true, false}, 126},
        {50, 4, {false, true, true}, 127},  {94, 4, {false, true, true}, 127},
        {95, 5, {false, false, true}, 128}, {100, 5, {false, false, true}, 128}};
    for (const auto& [score, stars, lamps, sentenceId] : kLevels) {
        const PassphraseRating rating = RatingForScore(score);
        EXPECT_EQ(rating.stars, stars) << score;
        EXPECT_EQ(rating.lamps, lamps) << score;
        EXPECT_EQ(rating.sentenceId, sentenceId) << score;
    }
}

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
}

} // namespace
} // namespace kelvora
