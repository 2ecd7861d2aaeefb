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
    const Result<std::int32_t, BlockError> plainLength = BlockPlainLength(rest);
    const bool isBlock = rest.size() > kBlockHeaderBytes && plainLength && *plainLength >= 1 &&
                         static_cast<std::size_t>(*plainLength) <= FirstChunkRoom(nameBytes);
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

namespace {

constexpr FileFailure kDamaged{FileError::DamagedData, 0, 0};
constexpr FileFailure kCancelled{FileError::Cancelled, 0, 0};

} // namespace

// The checks come in the order of the serial path, so both give the same error at the same
// chunk: an unreadable record, then cancel, then a damaged block.
Result<void, FileFailure> FileDecryptor::TakeDecoded(const FileRange& range) {
    std::optional<DecodedRecord> record = m_pipeline->Take(range.index, m_chunk, [this] {
        m_observer.LetEventsRun();
        return !m_cipher.Cancelled();
    });
    if (!record) {
        return Fail(kCancelled);
    }
    m_decoded = std::make_unique<DecodedRecord>(std::move(*record));
    if (!m_decoded->end) {
        return Fail(kDamaged);
    }
    m_next = *m_decoded->end;
    return {};
}

Result<void, FileFailure> FileDecryptor::WriteRestored(const DecodedRecord& record,
                                                       ByteSink& sink) {
    if (!record.restoredBytes) {
        return Fail(kDamaged);
    }
    return Write(std::span<const std::uint8_t>(record.restored).first(*record.restoredBytes), sink);
}

Result<void, FileFailure> FileDecryptor::Write(std::span<const std::uint8_t> bytes,
                                               ByteSink& sink) {
    if (auto written = sink.Write(bytes); !written) {
        return Fail(FileFailure{FileError::WriteFailed, 0, written.error()});
    }
    return {};
}

Result<FirstRecord, FileFailure> FileDecryptor::ReadFirst(const FileRange& range) {
    m_chunk = 1;
    const FileFailure cancelled{FileError::Cancelled, 1, 0};
    if (m_pipeline != nullptr) {
        if (auto taken = TakeDecoded(range); !taken) {
            return Fail(FileFailure{taken.error().error, 1, 0});
        }
        if (m_cipher.Cancelled()) {
            return Fail(cancelled);
        }
        m_first = m_decoded->first;
        return m_first;
    }
    const std::int64_t rangeEnd = range.offset + range.byteCount;
    const std::optional<std::int64_t> next = m_reader.ReadRecord(range.offset, rangeEnd, m_payload);
    if (!next) {
        return Fail(FileFailure{FileError::DamagedData, 1, 0});
    }
    m_next = *next;
    m_plain = m_cipher.Cipher().DecryptDo(m_payload, false);
    if (m_cipher.Cancelled()) {
        return Fail(cancelled);
    }
    m_first = InspectFirstRecord(m_plain);
    return m_first;
}

Result<void, FileFailure> FileDecryptor::WriteBlock(std::span<const std::uint8_t> block,
                                                    std::int32_t maxPlain, ByteSink& sink) {
    const Result<std::size_t, BlockError> restored = UncompressBlock(block, m_restored, maxPlain);
    if (!restored) {
        return Fail(kDamaged);
    }
    return Write(std::span<const std::uint8_t>(m_restored).first(*restored), sink);
}

Result<void, FileFailure> FileDecryptor::Restore(const FileRange& range, ByteSink& sink) {
    Result<void, FileFailure> restored = RestoreChunks(range, sink);
    if (!restored) {
        FileFailure failure = restored.error();
        failure.chunk = m_chunk;
        return Fail(failure);
    }
    return restored;
}

Result<void, FileFailure> FileDecryptor::RestoreChunks(const FileRange& range, ByteSink& sink) {
    const std::int64_t rangeEnd = range.offset + range.byteCount;
    if (m_first.kind == FirstRecordKind::Inconsistent) {
        return Fail(kDamaged);
    }
    m_observer.OnBytesDone(m_next - range.offset);
    if (m_first.kind == FirstRecordKind::Block && m_pipeline != nullptr) {
        if (auto written = WriteRestored(*m_decoded, sink); !written) {
            return written;
        }
    } else if (m_first.kind == FirstRecordKind::Block) {
        const auto maxPlain = static_cast<std::int32_t>(FirstChunkRoom(m_first.ansiName.size()));
        const auto block = std::span<const std::uint8_t>(m_plain).subspan(m_first.blockOffset);
        if (auto written = WriteBlock(block, maxPlain, sink); !written) {
            return written;
        }
    }
    while (m_next < rangeEnd && m_pipeline != nullptr) {
        ++m_chunk;
        const std::int64_t offset = m_next;
        if (auto taken = TakeDecoded(range); !taken) {
            return taken;
        }
        if (m_first.kind == FirstRecordKind::EmptyFile) {
            return Fail(kDamaged);
        }
        if (m_cipher.Cancelled()) {
            return Fail(kCancelled);
        }
        if (auto written = WriteRestored(*m_decoded, sink); !written) {
            return written;
        }
        m_observer.OnBytesDone(m_next - offset);
    }
    while (m_next < rangeEnd) {
        ++m_chunk;
        const std::int64_t offset = m_next;
        const std::optional<std::int64_t> next = m_reader.ReadRecord(offset, rangeEnd, m_payload);
        if (!next || m_first.kind == FirstRecordKind::EmptyFile) {
            return Fail(kDamaged);
        }
        m_next = *next;
        m_plain = m_cipher.Cipher().DecryptDo(m_payload, true);
        if (m_cipher.Cancelled()) {
            return Fail(kCancelled);
        }
        if (auto written = WriteBlock(m_plain, static_cast<std::int32_t>(kChunkBytes), sink);
            !written) {
            return written;
        }
        m_observer.OnBytesDone(m_next - offset);
    }
    return {};
}

} // namespace kelvora
