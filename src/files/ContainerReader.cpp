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

Result<void, FileFailure> ContainerReader::Open(const std::string& path) {
    m_path = path;
    if (auto opened = m_file.Open(path); !opened) {
        return opened;
    }
    constexpr FileFailure kNoUsableContent{FileError::NoUsableContent, 0, 0};
    const std::int64_t size = m_file.Size();
    if (size < kMinContainerBytes) {
        return Fail(kNoUsableContent);
    }
    // The index length is searched in the last 101 bytes, or in all but the first 3 bytes of
    // a shorter container, as other copies of the program search it.
    const auto tailBytes = static_cast<std::int64_t>(kIndexTailBytes);
    const std::int64_t searched = size >= tailBytes ? tailBytes : size - 3;
    Bytes tail(static_cast<std::size_t>(searched));
    if (auto read = m_file.ReadAt(size - static_cast<std::int64_t>(tail.size()), tail); !read) {
        return Fail(FileFailure{FileError::ReadFailed, 0, read.error()});
    }
    const auto indexTail = ParseIndexTail(tail);
    if (!indexTail) {
        return Fail(kNoUsableContent);
    }
    m_indexEnd = size - static_cast<std::int64_t>(indexTail->digitBytes);
    if (indexTail->indexLength < 1 || indexTail->indexLength > m_indexEnd) {
        return Fail(kNoUsableContent);
    }
    m_indexStart = m_indexEnd - indexTail->indexLength;
    Rewind();
    Result<WalkStep, Errno> step = WalkStep::End;
    while ((step = Walk()) && *step == WalkStep::File) {
        ++m_fileCount;
        m_recordsBytes = m_walker.File().offset + m_walker.File().byteCount;
    }
    if (!step) {
        return Fail(FileFailure{FileError::ReadFailed, 0, step.error()});
    }
    // An index of empty counts names no record: nothing to list, test or restore.
    if (*step == WalkStep::Garbled || m_recordsBytes == 0) {
        return Fail(kNoUsableContent);
    }
    return {};
}

void ContainerReader::Rewind() {
    // The records end where the index starts.
    m_walker = IndexWalker(m_indexStart);
    m_walkAt = m_indexStart;
    m_piece.clear();
    m_pieceAt = 0;
}

Result<ContainerReader::WalkStep, Errno> ContainerReader::Walk() {
    while (true) {
        if (m_pieceAt == m_piece.size()) {
            if (m_walkAt == m_indexEnd) {
                return WalkStep::End; // the index ends with a separator: no count is left open
            }
            m_piece.resize(static_cast<std::size_t>(
                std::min<std::int64_t>(m_indexEnd - m_walkAt, kIndexPieceBytes)));
            if (auto read = m_file.ReadAt(m_walkAt, m_piece); !read) {
                return Fail(read.error());
            }
            m_walkAt += static_cast<std::int64_t>(m_piece.size());
            m_pieceAt = 0;
        }
        switch (m_walker.Feed(m_piece[m_pieceAt++])) {
        case IndexWalker::Step::Digit:
            break;
        case IndexWalker::Step::File:
            return WalkStep::File;
        case IndexWalker::Step::Garbled:
            return WalkStep::Garbled;
        }
    }
}

Result<std::optional<FileRange>, Errno> ContainerReader::NextFile() {
    const Result<WalkStep, Errno> step = Walk();
    if (!step) {
        return Fail(step.error());
    }
    if (*step != WalkStep::File) {
        return std::optional<FileRange>();
    }
    return std::optional<FileRange>(m_walker.File());
}

std::optional<std::int64_t> ContainerReader::PayloadLength(std::int64_t offset,
                                                           std::int64_t rangeEnd) {
    std::array<std::uint8_t, kRecordLengthBytes> lastIndex{};
    if (offset + static_cast<std::int64_t>(kRecordLengthBytes) > rangeEnd ||
        !m_file.ReadAt(offset, lastIndex)) {
        return std::nullopt;
    }
    const std::int64_t length = std::int64_t{GetInt32Le(lastIndex.data())} + 1;
    const std::int64_t room = rangeEnd - offset - static_cast<std::int64_t>(kRecordLengthBytes);
    if (length < 1 || length % static_cast<std::int64_t>(kCipherBlockBytes) != 0 ||
        length > static_cast<std::int64_t>(kMaxRecordPayload) || length > room) {
        return std::nullopt;
    }
    return length;
}

std::optional<std::int64_t> ContainerReader::ReadRecord(std::int64_t offset, std::int64_t rangeEnd,
                                                        Bytes& payload) {
    const std::optional<std::int64_t> length = PayloadLength(offset, rangeEnd);
    if (!length) {
        return std::nullopt;
    }
    const std::int64_t payloadOffset = offset + static_cast<std::int64_t>(kRecordLengthBytes);
    payload.resize(static_cast<std::size_t>(*length));
    if (!m_file.ReadAt(payloadOffset, payload)) {
        return std::nullopt;
    }
    return payloadOffset + *length;
}

std::optional<RecordEdges>
ContainerReader::ReadRecordEdges(std::int64_t offset, std::int64_t rangeEnd, std::size_t head) {
    const std::optional<std::int64_t> length = PayloadLength(offset, rangeEnd);
    if (!length) {
        return std::nullopt;
    }
    const std::int64_t payloadOffset = offset + static_cast<std::int64_t>(kRecordLengthBytes);
    RecordEdges edges;
    edges.end = payloadOffset + *length;
    edges.first.resize(std::min(RoundUpToCipherBlock(head), static_cast<std::size_t>(*length)));
    edges.lastBlock.resize(kCipherBlockBytes);
    if (!m_file.ReadAt(payloadOffset, edges.first) ||
        !m_file.ReadAt(edges.end - static_cast<std::int64_t>(kCipherBlockBytes), edges.lastBlock)) {
        return std::nullopt;
    }
    return edges;
}

FileJobResult ForEachFile(ContainerReader& reader, const EachFile& each) {
    reader.Rewind();
    while (true) {
        const Result<std::optional<FileRange>, Errno> next = reader.NextFile();
        if (!next) {
            return Failure(FileError::ReadFailed, 0, 0, reader.Path(), next.error());
        }
        if (!next->has_value()) {
            return {};
        }
        const FileRange& range = **next;
        if (range.byteCount == 0) {
            continue;
        }
        Result<FileStep, FileJobResult> step = each(range);
        if (!step) {
            return step.error();
        }
        if (*step == FileStep::Stop) {
            return {};
        }
    }
}

} // namespace kelvora
