#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace kelvora {

// CipherPath is the engine that runs the 256-bit-block cipher's bulk CBC calls. Every path
// gives the same bytes; they differ only in speed and in the instructions they need.
enum class CipherPath {
    Portable, // table look-ups, any CPU
    AesNi,    // AES instructions on 128-bit registers (needs AES-NI, SSSE3, SSE4.1)
    Vaes,     // decryption two blocks per 256-bit register (also needs AVX2 and VAES)
    Avx512,   // as Vaes, encryption a whole block per register (also needs AVX-512 VBMI and VL)
};

// Every path, slowest first.
inline constexpr std::array<CipherPath, 4> kCipherPaths{CipherPath::Portable, CipherPath::AesNi,
                                                        CipherPath::Vaes, CipherPath::Avx512};

inline constexpr std::string_view kCipherPathVariable = "KELVORA_CIPHER";

// CipherPathName is the path's name as KELVORA_CIPHER takes it: "portable", "aesni", "vaes",
// "avx512".
[[nodiscard]] std::string_view CipherPathName(CipherPath path);

// ParseCipherPath reads a path's name; anything else gives nothing.
[[nodiscard]] std::optional<CipherPath> ParseCipherPath(std::string_view name);

// CipherPathAvailable tells whether this CPU (and operating system) can run the path.
[[nodiscard]] bool CipherPathAvailable(CipherPath path);

// ChooseCipherPath gives the forced path when this CPU can run it, else the fastest path it
// can run. A missing or unknown name forces nothing.
[[nodiscard]] CipherPath ChooseCipherPath(std::optional<CipherPath> forced);

// ActiveCipherPath is the path new cipher objects use: chosen once per process from the CPU's
// features and the environment variable KELVORA_CIPHER.
[[nodiscard]] CipherPath ActiveCipherPath();

} // namespace kelvora
