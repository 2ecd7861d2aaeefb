#pragma once

#include "common/Bytes.h"
#include "common/Result.h"

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

// BlockError says why a block could not be made or read.
enum class BlockError {
    Empty,            // no source bytes, or too few block bytes for a header and a stream
    TooLarge,         // a source longer than a 32-bit length can say
    BadMagic,         // the block does not start with the magic number
    LengthOutOfRange, // a plain length below 1 or above the allowed maximum
    DeflateFailed,    // the stream did not fit the capacity
    InflateFailed,    // a damaged stream, a wrong checksum or a wrong plain length
};

// CompressBlock fills the buffer output with one compressed block of source and gives its
// length. On failure output must not be used.
[[nodiscard]] Result<std::size_t, BlockError> CompressBlock(std::span<const std::uint8_t> source,
                                                            Bytes& output);

// UncompressBlock fills the buffer output with the bytes restored from block and gives their
// count. Bytes behind the zlib stream (the cipher's zero padding) are ignored. A block of 8
// bytes or less, a wrong magic, a plain length below 1 or above maxPlainBytes, or a damaged
// stream fails, and output must not be used.
[[nodiscard]] Result<std::size_t, BlockError>
UncompressBlock(std::span<const std::uint8_t> block, Bytes& output,
                std::int32_t maxPlainBytes = std::numeric_limits<std::int32_t>::max());

// BlockPlainLength reads the plain length of a block's header; it fails when the bytes are
// too short for a header or do not start with the magic number.
[[nodiscard]] Result<std::int32_t, BlockError>
BlockPlainLength(std::span<const std::uint8_t> block);

} // namespace kelvora
