#include "crypto/RijndaelBuffer.h"

#include <cstdint>
#include <sys/mman.h>

namespace kelvora {
namespace {

constexpr std::size_t kHugePageBytes = std::size_t{2} << 20;
constexpr std::size_t kLargeBufferBytes = 4 * kHugePageBytes; // smaller ones gain nothing

// The advice is only a hint: a kernel that refuses it leaves ordinary pages.
void AdviseHugePages(std::uint8_t* data, std::size_t size) {
#ifdef MADV_HUGEPAGE
    const auto address = reinterpret_cast<std::uintptr_t>(data);
    const std::uintptr_t first = (address + kHugePageBytes - 1) & ~(kHugePageBytes - 1);
    const std::uintptr_t last = (address + size) & ~(kHugePageBytes - 1);
    if (last > first) {
        static_cast<void>(madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE));
    }
#else
    static_cast<void>(data);
    static_cast<void>(size);
#endif
}

} // namespace

Bytes NewCipherBuffer(std::size_t size) {
    Bytes bytes;
    bytes.reserve(size); // allocated but not yet touched
    if (size >= kLargeBufferBytes) {
        AdviseHugePages(bytes.data(), size);
    }
    bytes.resize(size);
    return bytes;
}

} // namespace kelvora
