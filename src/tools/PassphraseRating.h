#pragma once

#include <array>
#include <string_view>

namespace kelvora {

// PassphraseRating is what the rating display shows: the score 0..100, how many of the five
// stars are shown, which of the lamps (red, yellow, green) are lit, and the catalogue id
// (German) of the sentence.
struct PassphraseRating {
    int score = 0;
    int stars = 0;
    std::array<bool, 3> lamps{};
    int sentenceId = 0;

    bool operator==(const PassphraseRating&) const = default;
};

// PwdBewert rates a passphrase (Windows-1252) by its length and the kinds of characters in
// it. It only informs; nothing is refused because of it.
[[nodiscard]] PassphraseRating PwdBewert(std::string_view ansiPassphrase);

// RatingForScore maps a score to its display level.
[[nodiscard]] PassphraseRating RatingForScore(int score);

// TopRating is the display a generated passphrase gets: five stars, the green lamp.
[[nodiscard]] PassphraseRating TopRating();

} // namespace kelvora
