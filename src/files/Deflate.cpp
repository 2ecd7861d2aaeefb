#include "files/Deflate.h"

#include <algorithm>
#include <libdeflate.h>
#include <memory>

namespace kelvora {
namespace {

// zlib's default level; libdeflate's level 6 shrinks at least as well and much faster.
constexpr int kDefaultLevel = 6;
constexpr int kProbeLevel = 1;
constexpr std::size_t kProbeSamples = 8;
constexpr std::size_t kProbeSampleBytes = 4096;
// Sources this small are simply compressed: probing would cost as much.
constexpr std::size_t kProbeFromBytes = 4 * kProbeSamples * kProbeSampleBytes;
// Samples that keep more than this share of their size count as incompressible.
constexpr double kIncompressibleShare = 0.97;

constexpr std::size_t kMaxStoredBlock = 65535;

struct CompressorFree {
    void operator()(libdeflate_compressor* c) const { libdeflate_free_compressor(c); }
};
struct DecompressorFree {
    void operator()(libdeflate_decompressor* d) const { libdeflate_free_decompressor(d); }
};
using Compressor = std::unique_ptr<libdeflate_compressor, CompressorFree>;
using Decompressor = std::unique_ptr<libdeflate_decompressor, DecompressorFree>;

libdeflate_compressor* ThreadCompressor(int level) {
    thread_local Compressor normal(libdeflate_alloc_compressor(kDefaultLevel));
    thread_local Compressor probe(libdeflate_alloc_compressor(kProbeLevel));
    return level == kProbeLevel ? probe.get() : normal.get();
}

libdeflate_decompressor* ThreadDecompressor() {
    thread_local Decompressor decompressor(libdeflate_alloc_decompressor());
    return decompressor.get();
}

void PutBigEndian32(std::uint8_t* out, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        out[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i));
    }
}

} // namespace

bool LooksIncompressible(std::span<const std::uint8_t> source) {
    libdeflate_compressor* probe = ThreadCompressor(kProbeLevel);
    if (probe == nullptr || source.size() < kProbeFromBytes) {
        return false;
    }
    std::uint8_t out[kProbeSampleBytes + kProbeSampleBytes / 8];
    const std::size_t stride = (source.size() - kProbeSampleBytes) / (kProbeSamples - 1);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < kProbeSamples; ++i) {
        const std::size_t size = libdeflate_deflate_compress(probe, source.data() + i * stride,
                                                             kProbeSampleBytes, out, sizeof out);
        kept += size == 0 ? kProbeSampleBytes : size;
    }
    return static_cast<double>(kept) >=
           kIncompressibleShare * static_cast<double>(kProbeSamples * kProbeSampleBytes);
}

std::optional<std::size_t> ZlibStored(std::span<const std::uint8_t> source,
                                      std::span<std::uint8_t> destination) {
    const std::size_t n = source.size();
    if (destination.size() < ZlibStoredBytes(n)) {
        return std::nullopt;
    }
    std::uint8_t* out = destination.data();
    *out++ = 0x78; // deflate with a 32 KiB window
    *out++ = 0x01; // no dictionary, fastest level; header checksum makes 0x7801 divisible by 31
    std::size_t done = 0;
    do {
        const std::size_t size = std::min(kMaxStoredBlock, n - done);
        const bool last = done + size == n;
        *out++ = last ? 1 : 0; // BFINAL, BTYPE 00 (stored)
        const auto length = static_cast<std::uint16_t>(size);
        const auto complement = static_cast<std::uint16_t>(~length);
        *out++ = static_cast<std::uint8_t>(length);
        *out++ = static_cast<std::uint8_t>(length >> 8);
        *out++ = static_cast<std::uint8_t>(complement);
        *out++ = static_cast<std::uint8_t>(complement >> 8);
        std::copy_n(source.data() + done, size, out);
        out += size;
        done += size;
    } while (done < n);
    PutBigEndian32(out, libdeflate_adler32(1, source.data(), n));
    out += 4;
    return static_cast<std::size_t>(out - destination.data());
}

std::optional<std::size_t> ZlibCompress(std::span<const std::uint8_t> source,
                                        std::span<std::uint8_t> destination) {
    libdeflate_compressor* compressor = ThreadCompressor(kDefaultLevel);
    if (compressor == nullptr || LooksIncompressible(source)) {
        return ZlibStored(source, destination);
    }
    const std::size_t size = libdeflate_zlib_compress(compressor, source.data(), source.size(),
                                                      destination.data(), destination.size());
    if (size == 0 || size > ZlibStoredBytes(source.size())) {
        return ZlibStored(source, destination);
    }
    return size;
}

std::optional<std::size_t> ZlibUncompress(std::span<const std::uint8_t> stream,
                                          std::span<std::uint8_t> destination) {
    libdeflate_decompressor* decompressor = ThreadDecompressor();
    if (decompressor == nullptr) {
        return std::nullopt;
    }
    std::size_t consumed = 0; // asking for it lets bytes follow the stream
    std::size_t restored = 0;
    const libdeflate_result result =
        libdeflate_zlib_decompress_ex(decompressor, stream.data(), stream.size(),
                                      destination.data(), destination.size(), &consumed, &restored);
    if (result != LIBDEFLATE_SUCCESS) {
        return std::nullopt;
    }
    return restored;
}

} // namespace kelvora
