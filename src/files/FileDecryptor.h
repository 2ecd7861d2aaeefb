#pragma once

#include "common/Bytes.h"
#include "files/ContainerReader.h"
#include "files/FileError.h"
#include "files/JobCipher.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace kelvora {

// What the first record of a file decrypts to. Only a compressed block behind the name is a
// strong sign of the right passphrase; an empty file's header is a weak one.
enum class FirstRecordKind {
    Block,        // name, then a block with its magic and a plain length that fits
    EmptyFile,    // exactly the header of an empty file (tail byte 99, zero padding)
    Inconsistent, // neither: a wrong passphrase or damage
};

struct FirstRecord {
    FirstRecordKind kind = FirstRecordKind::Inconsistent;
    std::string ansiName;
    std::size_t blockOffset = 0;
};

// InspectFirstRecord reads the header of a file's decrypted first chunk.
[[nodiscard]] FirstRecord InspectFirstRecord(std::span<const std::uint8_t> plain);

class RecordPipeline;
struct DecodedRecord;

// FileDecryptor restores one file of a container at a time: ReadFirst decrypts the first
// record and tells what it holds; Restore then writes the file's plain bytes to a sink,
// record by record, in constant memory. By itself it does all work on the caller's thread;
// with a pipeline it takes records the pipeline's workers have already decoded, and the
// results are the same.
class FileDecryptor {
public:
    FileDecryptor(ContainerReader& reader, JobCipher& cipher, FileJobObserver& observer)
        : m_reader(reader), m_cipher(cipher), m_observer(observer) {}
    ~FileDecryptor();
    FileDecryptor(const FileDecryptor&) = delete;
    FileDecryptor& operator=(const FileDecryptor&) = delete;

    // ReadFirst decrypts a file's first record and tells what it holds. It fails with
    // DamagedData when the record cannot be read, or Cancelled (chunk 1 either way).
    [[nodiscard]] Result<FirstRecord, FileFailure> ReadFirst(const FileRange& range);

    // Restore follows ReadFirst on the same range. It fails with the chunk it stopped at:
    // DamagedData, WriteFailed (with errno) or Cancelled.
    [[nodiscard]] Result<void, FileFailure> Restore(const FileRange& range, ByteSink& sink);

    // UsePipeline makes ReadFirst and Restore take their records from pipeline (null: decode
    // them here again). The files must then be read in index order.
    void UsePipeline(RecordPipeline* pipeline) { m_pipeline = pipeline; }

private:
    [[nodiscard]] Result<void, FileFailure> RestoreChunks(const FileRange& range, ByteSink& sink);
    [[nodiscard]] Result<void, FileFailure> WriteBlock(std::span<const std::uint8_t> block,
                                                       std::int32_t maxPlain, ByteSink& sink);
    [[nodiscard]] Result<void, FileFailure> WriteRestored(const DecodedRecord& record,
                                                          ByteSink& sink);
    [[nodiscard]] static Result<void, FileFailure> Write(std::span<const std::uint8_t> bytes,
                                                         ByteSink& sink);
    // TakeDecoded gets the current chunk from the pipeline: DamagedData when it cannot be
    // read, or Cancelled while waiting for it.
    [[nodiscard]] Result<void, FileFailure> TakeDecoded(const FileRange& range);

    ContainerReader& m_reader;
    JobCipher& m_cipher;
    FileJobObserver& m_observer;
    FirstRecord m_first;
    Bytes m_payload;
    Bytes m_plain;
    Bytes m_restored;
    std::int64_t m_next = 0;
    std::int64_t m_chunk = 0;
    RecordPipeline* m_pipeline = nullptr;
    std::unique_ptr<DecodedRecord> m_decoded;
};

} // namespace kelvora
