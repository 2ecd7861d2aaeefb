#include "files/FileDecryptor.h"

#include "files/CompressBlock.h"
#include "files/ContainerFormat.h"
#include "files/RecordPipeline.h"

#include <algorithm>

namespace kelvora {

namespace {

// InspectWithName reads the header as if the name were nameBytes long.
FirstRecord InspectWithName(std::span<const std::uint8_t> plain, std::size_t nameBytes) {
    FirstRecord first;
    const std::size_t headerBytes = kStreamHeaderBytes + nameBytes;
    if (headerBytes > plain.size()) {
        return first;
    }
    const auto rest = plain.subspan(headerBytes);
    const std::int32_t plainLength = BlockPlainLength(rest);
    const bool isBlock = rest.size() > kBlockHeaderBytes && plainLength >= 1 &&
                         static_cast<std::size_t>(plainLength) <= FirstChunkRoom(nameBytes);
    const bool isEmptyFile = plain[kTailByteOffset] == kEmptyFileTailByte &&
                             plain.size() == RoundUpToCipherBlock(headerBytes) &&
                             std::all_of(rest.begin(), rest.end(), [](auto b) { return b == 0; });
    if (!isBlock && !isEmptyFile) {
        return first;
    }
    first.kind = isBlock ? FirstRecordKind::Block : FirstRecordKind::EmptyFile;
    first.ansiName.assign(plain.begin() + kStreamHeaderBytes,
                          plain.begin() + static_cast<std::ptrdiff_t>(headerBytes));
    first.blockOffset = headerBytes;
    return first;
}

} // namespace

FirstRecord InspectFirstRecord(std::span<const std::uint8_t> plain) {
    if (plain.size() < kStreamHeaderBytes) {
        return {};
    }
    // Byte 33 holds the name's length modulo 256: a longer name is found by the block (or
    // the empty file's end) that must follow it.
    constexpr std::size_t kLengthStep = 256;
    for (std::size_t nameBytes = plain[kNameLengthOffset];
         kStreamHeaderBytes + nameBytes <= plain.size() && nameBytes <= kLongestNameBytes;
         nameBytes += kLengthStep) {
        if (FirstRecord first = InspectWithName(plain, nameBytes);
            first.kind != FirstRecordKind::Inconsistent) {
            return first;
        }
    }
    return {};
}

FileDecryptor::~FileDecryptor() = default;

// The checks come in the order of the serial path, so both give the same error at the same
// chunk: an unreadable record, then cancel, then a damaged block.
FileError FileDecryptor::TakeDecoded(const FileRange& range) {
    std::optional<DecodedRecord> record = m_pipeline->Take(range.index, m_chunk, [this] {
        m_observer.LetEventsRun();
        return !m_cipher.Cancelled();
    });
    if (!record) {
        return FileError::Cancelled;
    }
    m_decoded = std::make_unique<DecodedRecord>(std::move(*record));
    m_next = m_decoded->end;
    return m_next < 0 ? FileError::DamagedData : FileError::None;
}

FileError FileDecryptor::WriteRestored(const DecodedRecord& record, ByteSink& sink) {
    if (record.restoredBytes == 0) {
        return FileError::DamagedData;
    }
    const auto bytes = std::span<const std::uint8_t>(record.restored)
                           .first(static_cast<std::size_t>(record.restoredBytes));
    return sink.Write(bytes) ? FileError::None : FileError::WriteFailed;
}

FileError FileDecryptor::ReadFirst(const FileRange& range, FirstRecord& first) {
    m_chunk = 1;
    if (m_pipeline != nullptr) {
        FileError error = TakeDecoded(range);
        if (error == FileError::None && m_cipher.Cancelled()) {
            error = FileError::Cancelled;
        }
        if (error == FileError::None) {
            m_first = m_decoded->first;
            first = m_first;
        }
        return error;
    }
    const std::int64_t rangeEnd = range.offset + range.byteCount;
    m_next = m_reader.ReadRecord(range.offset, rangeEnd, m_payload);
    if (m_next < 0) {
        return FileError::DamagedData;
    }
    m_plain = m_cipher.Cipher().DecryptDo(m_payload, false);
    if (m_cipher.Cancelled()) {
        return FileError::Cancelled;
    }
    m_first = InspectFirstRecord(m_plain);
    first = m_first;
    return FileError::None;
}

FileError FileDecryptor::WriteBlock(std::span<const std::uint8_t> block, std::int32_t maxPlain,
                                    ByteSink& sink) {
    const std::int32_t restored = UncompressBlock(block, m_restored, maxPlain);
    if (restored == 0) {
        return FileError::DamagedData;
    }
    const auto bytes =
        std::span<const std::uint8_t>(m_restored).first(static_cast<std::size_t>(restored));
    if (!sink.Write(bytes)) {
        return FileError::WriteFailed;
    }
    return FileError::None;
}

FileError FileDecryptor::Restore(const FileRange& range, ByteSink& sink) {
    const std::int64_t rangeEnd = range.offset + range.byteCount;
    if (m_first.kind == FirstRecordKind::Inconsistent) {
        return FileError::DamagedData;
    }
    m_observer.OnBytesDone(m_next - range.offset);
    if (m_first.kind == FirstRecordKind::Block && m_pipeline != nullptr) {
        if (FileError error = WriteRestored(*m_decoded, sink); error != FileError::None) {
            return error;
        }
    } else if (m_first.kind == FirstRecordKind::Block) {
        const auto maxPlain = static_cast<std::int32_t>(FirstChunkRoom(m_first.ansiName.size()));
        const auto block = std::span<const std::uint8_t>(m_plain).subspan(m_first.blockOffset);
        if (FileError error = WriteBlock(block, maxPlain, sink); error != FileError::None) {
            return error;
        }
    }
    while (m_next < rangeEnd && m_pipeline != nullptr) {
        ++m_chunk;
        const std::int64_t offset = m_next;
        FileError error = TakeDecoded(range);
        if (error == FileError::None && m_first.kind == FirstRecordKind::EmptyFile) {
            error = FileError::DamagedData;
        }
        if (error == FileError::None && m_cipher.Cancelled()) {
            error = FileError::Cancelled;
        }
        if (error == FileError::None) {
            error = WriteRestored(*m_decoded, sink);
        }
        if (error != FileError::None) {
            return error;
        }
        m_observer.OnBytesDone(m_next - offset);
    }
    while (m_next < rangeEnd) {
        ++m_chunk;
        const std::int64_t offset = m_next;
        m_next = m_reader.ReadRecord(offset, rangeEnd, m_payload);
        if (m_next < 0 || m_first.kind == FirstRecordKind::EmptyFile) {
            return FileError::DamagedData;
        }
        m_plain = m_cipher.Cipher().DecryptDo(m_payload, true);
        if (m_cipher.Cancelled()) {
            return FileError::Cancelled;
        }
        if (FileError error = WriteBlock(m_plain, static_cast<std::int32_t>(kChunkBytes), sink);
            error != FileError::None) {
            return error;
        }
        m_observer.OnBytesDone(m_next - offset);
    }
    return FileError::None;
}

} // namespace kelvora
