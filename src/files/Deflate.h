#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace kelvora {

// The deflate engine behind the compression binding. Every stream it writes is a zlib stream
// (RFC 1950) that zlib's own uncompress reads, since other copies of the program use zlib.
// Each thread keeps its own compressor and decompressor, so worker threads never share one.

// ZlibCompress writes the zlib stream of source into destination and gives its length, or
// nothing when it does not fit. A source that does not compress (judged cheaply from samples) is
// written as stored blocks without being searched for matches; so is any source whose
// compressed form would be longer than its stored one.
[[nodiscard]] std::optional<std::size_t> ZlibCompress(std::span<const std::uint8_t> source,
                                                      std::span<std::uint8_t> destination);

// ZlibStoredBytes is the length of source as a zlib stream of stored blocks.
[[nodiscard]] constexpr std::size_t ZlibStoredBytes(std::size_t n) {
    constexpr std::size_t kMaxStoredBlock = 65535;
    const std::size_t blocks = n == 0 ? 1 : (n + kMaxStoredBlock - 1) / kMaxStoredBlock;
    return 2 + 5 * blocks + n + 4; // header, block headers, data, Adler-32
}

// ZlibStored writes source as a zlib stream of stored blocks and gives its length, or nothing
// when destination is too small.
[[nodiscard]] std::optional<std::size_t> ZlibStored(std::span<const std::uint8_t> source,
                                                    std::span<std::uint8_t> destination);

// LooksIncompressible is true when samples spread over source do not shrink at the fastest
// level: random or already-compressed data.
[[nodiscard]] bool LooksIncompressible(std::span<const std::uint8_t> source);

// ZlibUncompress restores a zlib stream into destination (the known plain length) and gives
// the restored length, or nothing for a damaged stream, a wrong checksum or a plain length
// larger than destination. Bytes behind the stream's end are ignored.
[[nodiscard]] std::optional<std::size_t> ZlibUncompress(std::span<const std::uint8_t> stream,
                                                        std::span<std::uint8_t> destination);

} // namespace kelvora
