#pragma once

#include "common/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

namespace kelvora {

// A compressed block: the magic number, the plain length (both little-endian signed 32-bit)
// and then a zlib stream at the default level's ratio (or of stored blocks for data that
// does not compress), which zlib's one-shot uncompress reads. Nothing marks the block's end;
// whoever stores a block carries its length.
inline constexpr std::int32_t kBlockMagic = 1234567890;
inline constexpr std::size_t kBlockHeaderBytes = 8;

// CompressCapacity is the destination room for the zlib stream of n source bytes. It always
// suffices: stored blocks, the fallback, cost far less than n / 100 + 12.
constexpr std::size_t CompressCapacity(std::size_t n) {
    return n + n / 100 + 12;
}

// CompressBlock fills output with one compressed block of source and returns its length.
// An empty source gives 0 and leaves output untouched; when compression fails it gives 0 and
// output (sized to the capacity plus the header) must not be used.
std::int32_t CompressBlock(std::span<const std::uint8_t> source, Bytes& output);

// UncompressBlock fills output with the bytes restored from block and returns their count.
// Bytes behind the zlib stream (the cipher's zero padding) are ignored. A block of 8 bytes or
// less, a wrong magic, a plain length below 1 or above maxPlainBytes, or a damaged stream
// gives 0 and output must not be used.
std::int32_t UncompressBlock(std::span<const std::uint8_t> block, Bytes& output,
                             std::int32_t maxPlainBytes = std::numeric_limits<std::int32_t>::max());

// BlockPlainLength reads the plain length of a block's header, or gives -1 when the bytes
// are too short for a header or do not start with the magic number.
std::int32_t BlockPlainLength(std::span<const std::uint8_t> block);

} // namespace kelvora
