#pragma once

#include <cstddef>
#include <cstdint>

namespace kelvora {

// RandomSource gives the random bytes that protect data: text prefixes, file salts and
// generated passphrases. Tests inject a fixed source; the program uses SystemRandom.
class RandomSource {
public:
    virtual ~RandomSource() = default;
    virtual void Fill(std::uint8_t* out, std::size_t count) = 0;
};

// SystemRandom draws from the operating system's CSPRNG (getrandom). Fill aborts the
// process when the kernel cannot deliver, because weak randomness must never be used.
class SystemRandom final : public RandomSource {
public:
    void Fill(std::uint8_t* out, std::size_t count) override;
};

} // namespace kelvora
