#include "tools/PassphraseGenerator.h"

#include "common/Bytes.h"

#include <array>

namespace kelvora {
namespace {

constexpr int kFirstCode = 32; // the blank
constexpr int kCodeCount = 94; // up to "}" (125)
// Bytes at or above this bound are drawn again, so that every code is equally likely.
constexpr int kUnbiasedBound = 256 / kCodeCount * kCodeCount;

} // namespace

std::string GenerateRandomPassphrase(RandomSource& random) {
    std::string passphrase;
    passphrase.reserve(kGeneratedPassphraseLength);
    std::array<std::uint8_t, 64> pool{};
    while (passphrase.size() < kGeneratedPassphraseLength) {
        random.Fill(pool.data(), pool.size());
        for (const std::uint8_t byte : pool) {
            if (byte < kUnbiasedBound && passphrase.size() < kGeneratedPassphraseLength) {
                passphrase.push_back(static_cast<char>(kFirstCode + byte % kCodeCount));
            }
        }
    }
    WipeMemory(pool.data(), pool.size());
    return passphrase;
}

} // namespace kelvora
