#include "tools/PassphraseRating.h"

#include "i18n/TextIds.h"

#include <algorithm>
#include <cmath>

namespace kelvora {
namespace {

constexpr int kSaturationLength = 32; // characters beyond this add nothing to the score
constexpr double kMissingLetterFactor = 0.65;
constexpr double kMissingSymbolFactor = 0.75;

struct ClassCounts {
    int upper = 0;  // A-Z
    int lower = 0;  // a-z and the blank
    int digits = 0; // codes 33 to 64: digits and the punctuation among them
    int others = 0; // everything else
};

ClassCounts CountClasses(std::string_view passphrase) {
    ClassCounts counts;
    for (const char c : passphrase) {
        const int code = static_cast<unsigned char>(c);
        if (code >= 'A' && code <= 'Z') {
            ++counts.upper;
        } else if ((code >= 'a' && code <= 'z') || code == ' ') {
            ++counts.lower;
        } else if (code >= 33 && code <= 64) {
            ++counts.digits;
        } else {
            ++counts.others;
        }
    }
    return counts;
}

// RoundHalfEven rounds as the rating always has: to the nearest integer, ties to even.
int RoundHalfEven(double value) {
    return static_cast<int>(std::nearbyint(value));
}

struct Level {
    int lowestScore;
    int stars;
    std::array<bool, 3> lamps; // red, yellow, green
    int sentenceId;
};

constexpr std::array<Level, 6> kLevels = {{
    {95, 5, {false, false, true}, kMaximumSecuritySentence},
    {50, 4, {false, true, true}, kManyComputersSentence},
    {25, 3, {false, true, false}, kOneComputerSentence},
    {10, 2, {true, true, false}, kCrackableSentence},
    {6, 1, {true, false, false}, kNotSecureSentence},
    {0, 0, {true, false, false}, kNotSecureSentence},
}};

} // namespace

PassphraseRating RatingForScore(int score) {
    for (const Level& level : kLevels) {
        if (score >= level.lowestScore) {
            return PassphraseRating{score, level.stars, level.lamps, level.sentenceId};
        }
    }
    const Level& lowest = kLevels.back();
    return PassphraseRating{score, lowest.stars, lowest.lamps, lowest.sentenceId};
}

PassphraseRating PwdBewert(std::string_view ansiPassphrase) {
    const ClassCounts counts = CountClasses(ansiPassphrase);
    const auto length =
        static_cast<int>(std::min<std::size_t>(ansiPassphrase.size(), kSaturationLength));
    int score = RoundHalfEven(length * 100.0 / kSaturationLength);
    if (counts.upper == 0 || counts.lower == 0) {
        score = RoundHalfEven(score * kMissingLetterFactor);
    } else if (counts.digits == 0 || counts.others == 0) {
        score = RoundHalfEven(score * kMissingSymbolFactor);
    }
    score = std::min(score, 100);
    if (counts.digits == 0 && counts.others == 0 && score > 70) {
        score = 71;
    }
    if (counts.digits + counts.others < 3 && score > 80) {
        score = 81;
    }
    return RatingForScore(score);
}

PassphraseRating TopRating() {
    return RatingForScore(100);
}

} // namespace kelvora
