#pragma once

#include "common/Bytes.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kelvora {

// The container closes with an index: every file's byte count as base-255 digits, least
// significant first, each count closed by a byte 255, and then the index's own length in
// the same digits without a closing byte. Digits run from 0 to 254, so 255 only separates.
inline constexpr std::uint8_t kIndexSeparator = 255;
// The index length's digits are searched for in the container's last bytes.
inline constexpr std::size_t kIndexTailBytes = 101;
// The smallest container that can hold anything.
inline constexpr std::int64_t kMinContainerBytes = 4;

// AppendBase255 appends value's base-255 digits, least significant first; 0 gives none.
void AppendBase255(Bytes& out, std::int64_t value);

// EncodeIndex gives the index of the byte counts followed by its length. An empty list gives
// no bytes at all. Counts must not be negative.
[[nodiscard]] Bytes EncodeIndex(std::span<const std::int64_t> byteCounts);

// Base255Accumulator adds up base-255 digits, least significant first, and notices when the
// value leaves the signed 64-bit range.
class Base255Accumulator {
public:
    // Add takes the next digit; false once the value no longer fits.
    [[nodiscard]] bool Add(std::uint8_t digit);
    std::int64_t Value() const { return m_value; }
    void Reset() { *this = Base255Accumulator(); }

private:
    std::int64_t m_value = 0;
    std::int64_t m_weight = 1;
    bool m_weightOverflowed = false;
};

// DecodeBase255 reads digits, least significant first. It gives nothing when the value does
// not fit a signed 64-bit integer.
[[nodiscard]] std::optional<std::int64_t> DecodeBase255(std::span<const std::uint8_t> digits);

// IndexTail is what the container's last bytes say about the index: how many bytes its
// length digits take at the very end and the index length those digits give.
struct IndexTail {
    std::size_t digitBytes = 0;
    std::int64_t indexLength = 0;
};

// ParseIndexTail finds the last byte 255 in tail (the container's last bytes) and decodes
// the digits behind it. It gives nothing when tail holds no 255 or the length overflows.
[[nodiscard]] std::optional<IndexTail> ParseIndexTail(std::span<const std::uint8_t> tail);

// SplitIndex splits the index bytes (which end in a separator) into the byte counts, one per
// file. It gives nothing when the bytes do not end in a separator or a count overflows.
[[nodiscard]] std::optional<std::vector<std::int64_t>>
SplitIndex(std::span<const std::uint8_t> index);

// FileRange is the part of the container that one file's records take; index counts the
// files from 0 in index order.
struct FileRange {
    std::size_t index = 0;
    std::int64_t offset = 0;
    std::int64_t byteCount = 0;
};

// IndexWalker lays the files' records end to end from offset 0 while it is fed the index
// byte by byte, so that an index of any length is read in constant memory.
class IndexWalker {
public:
    enum class Step {
        Digit,   // part of a count
        File,    // a separator closed a count: File() holds its range
        Garbled, // a count overflows or the records would pass recordsEnd
    };

    explicit IndexWalker(std::int64_t recordsEnd) : m_recordsEnd(recordsEnd) {}
    [[nodiscard]] Step Feed(std::uint8_t byte);
    const FileRange& File() const { return m_file; }

private:
    std::int64_t m_recordsEnd;
    std::int64_t m_nextOffset = 0;
    std::size_t m_nextIndex = 0;
    Base255Accumulator m_count;
    FileRange m_file;
};

} // namespace kelvora
