#pragma once

#include "common/Random.h"

namespace kelvora::testing {

// FixedRandom gives the bytes 0, 1, 2, ... (wrapping at 256), so that tests that encrypt
// can expect exact output.
class FixedRandom final : public RandomSource {
public:
    void Fill(std::uint8_t* out, std::size_t count) override {
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = m_next++;
        }
    }

private:
    std::uint8_t m_next = 0;
};

} // namespace kelvora::testing
