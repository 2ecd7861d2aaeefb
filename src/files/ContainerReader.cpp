#include "files/ContainerReader.h"

#include "files/ContainerFormat.h"
#include "files/LittleEndian.h"

#include <algorithm>
#include <array>

namespace kelvora {

namespace {

// The index is read in pieces of this size.
constexpr std::size_t kIndexPieceBytes = 65536;

} // namespace

FileError ContainerReader::Open(const std::string& path) {
    if (!m_file.Open(path)) {
        return m_file.NotRegular() ? FileError::NotRegularFile : FileError::ReadFailed;
    }
    const std::int64_t size = m_file.Size();
    if (size < kMinContainerBytes) {
        return FileError::NoUsableContent;
    }
    // The index length is searched in the last 101 bytes, or in all but the first 3 bytes of
    // a shorter container, as other copies of the program search it.
    const auto tailBytes = static_cast<std::int64_t>(kIndexTailBytes);
    const std::int64_t searched = size >= tailBytes ? tailBytes : size - 3;
    Bytes tail(static_cast<std::size_t>(searched));
    if (!m_file.ReadAt(size - static_cast<std::int64_t>(tail.size()), tail)) {
        return FileError::ReadFailed;
    }
    const auto indexTail = ParseIndexTail(tail);
    if (!indexTail) {
        return FileError::NoUsableContent;
    }
    m_indexEnd = size - static_cast<std::int64_t>(indexTail->digitBytes);
    if (indexTail->indexLength < 1 || indexTail->indexLength > m_indexEnd) {
        return FileError::NoUsableContent;
    }
    m_indexStart = m_indexEnd - indexTail->indexLength;
    Rewind();
    FileRange range;
    WalkStep step = WalkStep::End;
    while ((step = Walk(range)) == WalkStep::File) {
        ++m_fileCount;
        m_recordsBytes = range.offset + range.byteCount;
    }
    if (m_walkFailed) {
        return FileError::ReadFailed;
    }
    // An index of empty counts names no record: nothing to list, test or restore.
    return step == WalkStep::Garbled || m_recordsBytes == 0 ? FileError::NoUsableContent
                                                            : FileError::None;
}

void ContainerReader::Rewind() {
    // The records end where the index starts.
    m_walker = IndexWalker(m_indexStart);
    m_walkAt = m_indexStart;
    m_piece.clear();
    m_pieceAt = 0;
    m_walkFailed = false;
}

ContainerReader::WalkStep ContainerReader::Walk(FileRange& range) {
    while (true) {
        if (m_pieceAt == m_piece.size()) {
            if (m_walkAt == m_indexEnd) {
                return WalkStep::End; // the index ends with a separator: no count is left open
            }
            m_piece.resize(static_cast<std::size_t>(
                std::min<std::int64_t>(m_indexEnd - m_walkAt, kIndexPieceBytes)));
            if (!m_file.ReadAt(m_walkAt, m_piece)) {
                m_walkFailed = true;
                return WalkStep::Garbled;
            }
            m_walkAt += static_cast<std::int64_t>(m_piece.size());
            m_pieceAt = 0;
        }
        switch (m_walker.Feed(m_piece[m_pieceAt++])) {
        case IndexWalker::Step::Digit:
            break;
        case IndexWalker::Step::File:
            range = m_walker.File();
            return WalkStep::File;
        case IndexWalker::Step::Garbled:
            return WalkStep::Garbled;
        }
    }
}

bool ContainerReader::NextFile(FileRange& range) {
    return Walk(range) == WalkStep::File;
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
