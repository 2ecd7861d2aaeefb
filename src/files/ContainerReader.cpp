#include "files/ContainerReader.h"

#include "files/ContainerFormat.h"
#include "files/LittleEndian.h"

#include <algorithm>
#include <array>

namespace kelvora {

FileError ContainerReader::Open(const std::string& path) {
    if (!m_file.Open(path)) {
        return FileError::ReadFailed;
    }
    const std::int64_t size = m_file.Size();
    if (size < kMinContainerBytes) {
        return FileError::NoUsableContent;
    }
    Bytes tail(static_cast<std::size_t>(std::min<std::int64_t>(size, kIndexTailBytes)));
    if (!m_file.ReadAt(size - static_cast<std::int64_t>(tail.size()), tail)) {
        return FileError::ReadFailed;
    }
    const auto indexTail = ParseIndexTail(tail);
    if (!indexTail) {
        return FileError::NoUsableContent;
    }
    const std::int64_t indexEnd = size - static_cast<std::int64_t>(indexTail->digitBytes);
    const std::int64_t indexLength = indexTail->indexLength;
    // The index cannot be longer than a few bytes per file of the records before it.
    if (indexLength < 1 || indexLength > indexEnd) {
        return FileError::NoUsableContent;
    }
    Bytes index(static_cast<std::size_t>(indexLength));
    if (!m_file.ReadAt(indexEnd - indexLength, index)) {
        return FileError::ReadFailed;
    }
    const auto counts = SplitIndex(index);
    if (!counts) {
        return FileError::NoUsableContent;
    }
    auto ranges = RangesFromCounts(*counts, indexEnd - indexLength);
    if (!ranges) {
        return FileError::NoUsableContent;
    }
    m_files = std::move(*ranges);
    return FileError::None;
}

std::int64_t ContainerReader::PayloadLength(std::int64_t offset, std::int64_t rangeEnd) {
    std::array<std::uint8_t, kRecordLengthBytes> lastIndex{};
    if (offset + static_cast<std::int64_t>(kRecordLengthBytes) > rangeEnd ||
        !m_file.ReadAt(offset, lastIndex)) {
        return -1;
    }
    const std::int64_t length = std::int64_t{GetInt32Le(lastIndex.data())} + 1;
    const std::int64_t room = rangeEnd - offset - static_cast<std::int64_t>(kRecordLengthBytes);
    if (length < 1 || length % static_cast<std::int64_t>(kCipherBlockBytes) != 0 ||
        length > static_cast<std::int64_t>(kMaxRecordPayload) || length > room) {
        return -1;
    }
    return length;
}

std::int64_t ContainerReader::ReadRecord(std::int64_t offset, std::int64_t rangeEnd,
                                         Bytes& payload) {
    const std::int64_t length = PayloadLength(offset, rangeEnd);
    if (length < 0) {
        return -1;
    }
    const std::int64_t payloadOffset = offset + static_cast<std::int64_t>(kRecordLengthBytes);
    payload.resize(static_cast<std::size_t>(length));
    if (!m_file.ReadAt(payloadOffset, payload)) {
        return -1;
    }
    return payloadOffset + length;
}

std::int64_t ContainerReader::ReadRecordEdges(std::int64_t offset, std::int64_t rangeEnd,
                                              std::size_t head, Bytes& first, Bytes& lastBlock) {
    const std::int64_t length = PayloadLength(offset, rangeEnd);
    if (length < 0) {
        return -1;
    }
    const std::int64_t payloadOffset = offset + static_cast<std::int64_t>(kRecordLengthBytes);
    const std::int64_t payloadEnd = payloadOffset + length;
    first.resize(std::min(RoundUpToCipherBlock(head), static_cast<std::size_t>(length)));
    lastBlock.resize(kCipherBlockBytes);
    if (!m_file.ReadAt(payloadOffset, first) ||
        !m_file.ReadAt(payloadEnd - static_cast<std::int64_t>(kCipherBlockBytes), lastBlock)) {
        return -1;
    }
    return payloadEnd;
}

} // namespace kelvora
