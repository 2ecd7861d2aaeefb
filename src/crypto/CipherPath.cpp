#include "crypto/CipherPath.h"

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

#include <array>
#include <cstdlib>
#include <string>
#include <utility>

namespace kelvora {
namespace {

constexpr std::array<std::pair<CipherPath, std::string_view>, 4> kNames{{
    {CipherPath::Portable, "portable"},
    {CipherPath::AesNi, "aesni"},
    {CipherPath::Vaes, "vaes"},
    {CipherPath::Avx512, "avx512"},
}};

bool CpuHasAesNi() {
#if defined(__x86_64__) || defined(__i386__)
    return __builtin_cpu_supports("aes") && __builtin_cpu_supports("ssse3") &&
           __builtin_cpu_supports("sse4.1");
#else
    return false;
#endif
}

// The compiler's check of AVX2 includes the operating system's consent to save YMM state.
bool CpuHasVaes() {
#if defined(__x86_64__) || defined(__i386__)
    // VAES is read from CPUID leaf 7 (ECX bit 9): not every compiler's builtin knows it.
    constexpr unsigned kVaesBit = 1U << 9;
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    const bool vaes = __get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx) != 0 && (ecx & kVaesBit) != 0;
    return CpuHasAesNi() && __builtin_cpu_supports("avx2") && vaes;
#else
    return false;
#endif
}

// The compiler's checks of AVX-512 include the operating system's consent to save its state.
bool CpuHasAvx512Permute() {
#if defined(__x86_64__) || defined(__i386__)
    return CpuHasVaes() && __builtin_cpu_supports("avx512f") &&
           __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512vbmi");
#else
    return false;
#endif
}

} // namespace

std::string_view CipherPathName(CipherPath path) {
    for (const auto& [known, name] : kNames) {
        if (known == path) {
            return name;
        }
    }
    return "portable";
}

std::optional<CipherPath> ParseCipherPath(std::string_view name) {
    for (const auto& [path, known] : kNames) {
        if (known == name) {
            return path;
        }
    }
    return std::nullopt;
}

bool CipherPathAvailable(CipherPath path) {
    switch (path) {
    case CipherPath::Portable:
        return true;
    case CipherPath::AesNi:
        return CpuHasAesNi();
    case CipherPath::Vaes:
        return CpuHasVaes();
    case CipherPath::Avx512:
        return CpuHasAvx512Permute();
    }
    return false;
}

CipherPath ChooseCipherPath(std::optional<CipherPath> forced) {
    if (forced && CipherPathAvailable(*forced)) {
        return *forced;
    }
    for (auto path = kCipherPaths.rbegin(); path != kCipherPaths.rend(); ++path) {
        if (CipherPathAvailable(*path)) {
            return *path;
        }
    }
    return CipherPath::Portable;
}

CipherPath ActiveCipherPath() {
    static const CipherPath active = [] {
        const char* forced = std::getenv(std::string(kCipherPathVariable).c_str());
        return ChooseCipherPath(forced != nullptr ? ParseCipherPath(forced) : std::nullopt);
    }();
    return active;
}

} // namespace kelvora
