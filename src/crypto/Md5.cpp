#include "crypto/Md5.h"

#include "common/Hex.h"

#include <array>
#include <cstddef>
#include <limits>

namespace kelvora {
namespace {

constexpr std::array<std::uint32_t, 64> kSines = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

constexpr std::array<unsigned, 16> kShifts = {7, 12, 17, 22, 5, 9,  14, 20,
                                              4, 11, 16, 23, 6, 10, 15, 21};

std::uint32_t RotateLeft(std::uint32_t x, unsigned n) {
    return (x << n) | (x >> (32 - n));
}

// Md5State is one digest in progress. The running count is a signed 32-bit number because
// the format's finish may lower it (see Finish).
class Md5State {
public:
    void Update(const std::uint8_t* data, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            m_buffer[static_cast<std::size_t>(m_count & 63)] = data[i];
            ++m_count;
            if ((m_count & 63) == 0) {
                Transform();
            }
        }
    }

    // Finish pads as the format requires: when the last partial block holds more than 56
    // bytes and the message is longer than 120 bytes, the padding length comes out
    // negative; no byte is added, but the count drops, so the length field overwrites the
    // tail of that block.
    Md5Digest Finish() {
        const std::int32_t n = m_count;
        const std::int32_t used = n % 64;
        const std::int32_t padding = used <= 56 ? 56 - used : 120 - n;
        if (padding > 0) {
            std::array<std::uint8_t, 64> pad{};
            pad[0] = 0x80;
            Update(pad.data(), static_cast<std::size_t>(padding));
        } else {
            m_count += padding;
        }
        const auto bits = static_cast<std::uint32_t>(n) * 8u;
        const std::array<std::uint8_t, 8> length = {static_cast<std::uint8_t>(bits),
                                                    static_cast<std::uint8_t>(bits >> 8),
                                                    static_cast<std::uint8_t>(bits >> 16),
                                                    static_cast<std::uint8_t>(bits >> 24),
                                                    0,
                                                    0,
                                                    0,
                                                    0};
        Update(length.data(), length.size());
        return Digest();
    }

private:
    void Transform() {
        std::array<std::uint32_t, 16> x{};
        for (std::size_t i = 0; i < 16; ++i) {
            x[i] = static_cast<std::uint32_t>(m_buffer[4 * i]) |
                   static_cast<std::uint32_t>(m_buffer[4 * i + 1]) << 8 |
                   static_cast<std::uint32_t>(m_buffer[4 * i + 2]) << 16 |
                   static_cast<std::uint32_t>(m_buffer[4 * i + 3]) << 24;
        }
        std::uint32_t a = m_state[0], b = m_state[1], c = m_state[2], d = m_state[3];
        for (std::size_t i = 0; i < 64; ++i) {
            std::uint32_t f = 0;
            std::size_t g = 0;
            switch (i / 16) {
            case 0:
                f = (b & c) | (~b & d);
                g = i;
                break;
            case 1:
                f = (b & d) | (c & ~d);
                g = (5 * i + 1) % 16;
                break;
            case 2:
                f = b ^ c ^ d;
                g = (3 * i + 5) % 16;
                break;
            default:
                f = c ^ (b | ~d);
                g = (7 * i) % 16;
                break;
            }
            const std::uint32_t rotated =
                RotateLeft(a + f + kSines[i] + x[g], kShifts[(i / 16) * 4 + i % 4]);
            a = d;
            d = c;
            c = b;
            b = b + rotated;
        }
        m_state[0] += a;
        m_state[1] += b;
        m_state[2] += c;
        m_state[3] += d;
    }

    // Digest is the state's words, each least significant byte first.
    Md5Digest Digest() const {
        Md5Digest out{};
        std::size_t at = 0;
        for (const std::uint32_t word : m_state) {
            for (unsigned shift = 0; shift < 32; shift += 8) {
                out[at++] = static_cast<std::uint8_t>(word >> shift);
            }
        }
        return out;
    }

    std::array<std::uint32_t, 4> m_state = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476};
    std::array<std::uint8_t, 64> m_buffer{};
    std::int32_t m_count = 0;
};

} // namespace

std::optional<Md5Digest> MD5Digest(std::string_view bytes) {
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() / 8)) {
        return std::nullopt;
    }
    Md5State state;
    state.Update(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return state.Finish();
}

std::optional<std::string> MD5String(std::string_view bytes) {
    const std::optional<Md5Digest> digest = MD5Digest(bytes);
    if (!digest) {
        return std::nullopt;
    }
    return HexFromBytes(*digest);
}

} // namespace kelvora
