#pragma once

#include "files/CompressBlock.h"
#include "files/StoredName.h"

#include <cstddef>
#include <cstdint>

namespace kelvora {

// Every input file is one stream: salt, tail byte, name length, stored name, file data. The
// stream is cut into chunks of kChunkBytes; only the file data is compressed, and each
// chunk's plain bytes become one record: a 4-byte last index (payload length - 1) and the
// enciphered payload.
inline constexpr std::size_t kChunkBytes = 2097152;
inline constexpr std::size_t kSaltBytes = 32;
inline constexpr std::size_t kTailByteOffset = 32;
inline constexpr std::size_t kNameLengthOffset = 33;
inline constexpr std::size_t kStreamHeaderBytes = 34;
// The tail byte of an empty file; otherwise it is the first block's length modulo 32.
inline constexpr std::uint8_t kEmptyFileTailByte = 99;
inline constexpr std::size_t kRecordLengthBytes = 4;
inline constexpr std::size_t kCipherBlockBytes = 32;

constexpr std::size_t RoundUpToCipherBlock(std::size_t n) {
    return (n + kCipherBlockBytes - 1) / kCipherBlockBytes * kCipherBlockBytes;
}

// The largest payload a record can have: a first chunk with the longest name and a block of
// incompressible data. Anything longer is damage, never a reason to allocate.
inline constexpr std::size_t kMaxRecordPayload = RoundUpToCipherBlock(
    kStreamHeaderBytes + kLongestNameBytes + kBlockHeaderBytes + CompressCapacity(kChunkBytes));

// FirstChunkRoom is how many file bytes the first chunk holds beside a name of nameBytes.
constexpr std::size_t FirstChunkRoom(std::size_t nameBytes) {
    return kChunkBytes - kStreamHeaderBytes - nameBytes;
}

// ChunkCount is the number of records of a file: its stream length divided by the chunk
// size, rounded up. The last chunk carries all remaining data, so a stream that is an exact
// multiple of the chunk size ends with a full chunk.
constexpr std::int64_t ChunkCount(std::int64_t fileBytes, std::size_t nameBytes) {
    const auto total = fileBytes + static_cast<std::int64_t>(kStreamHeaderBytes + nameBytes);
    const auto chunk = static_cast<std::int64_t>(kChunkBytes);
    return (total + chunk - 1) / chunk;
}

} // namespace kelvora
