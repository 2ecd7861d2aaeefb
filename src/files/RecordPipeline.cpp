#include "files/RecordPipeline.h"

#include "files/CompressBlock.h"
#include "files/ContainerFormat.h"

#include <algorithm>
#include <chrono>
#include <iterator>

namespace kelvora {

namespace {

// How long Take waits for a record before it lets the caller run events again.
constexpr std::chrono::milliseconds kWaitSlice{20};
// A batch closes at this much ciphertext or this many records: a file of a few kilobytes
// costs a worker less than waking it, while a full chunk goes on its own.
constexpr std::size_t kBatchPayloadBytes = 256 * 1024;
constexpr std::size_t kBatchRecords = 64;

bool Before(const DecodedRecord& record, std::size_t fileIndex, std::int64_t chunk) {
    return record.fileIndex < fileIndex || (record.fileIndex == fileIndex && record.chunk < chunk);
}

std::optional<std::size_t> Restored(const Result<std::size_t, BlockError>& restored) {
    return restored ? std::optional<std::size_t>(*restored) : std::nullopt;
}

} // namespace

RecordPipeline::RecordPipeline(std::string containerPath, const CRijndael& cipher,
                               std::size_t workers)
    : m_path(std::move(containerPath)),
      m_workers(workers, [&cipher](std::vector<DecodedRecord>& batch) {
          for (DecodedRecord& record : batch) {
              Decode(cipher, record);
          }
      }) {}

void RecordPipeline::Decode(const CRijndael& cipher, DecodedRecord& record) {
    if (!record.end) {
        return;
    }
    Bytes& plain = record.payload; // deciphered in place
    cipher.DecryptBlocksCbc(plain.data(), plain.data(), plain.size() / kBlockBytes,
                            record.chain.data());
    if (record.chunk == 1) {
        record.first = InspectFirstRecord(plain);
        if (record.first.kind == FirstRecordKind::Block) {
            const auto maxPlain =
                static_cast<std::int32_t>(FirstChunkRoom(record.first.ansiName.size()));
            record.restoredBytes = Restored(UncompressBlock(
                std::span(plain).subspan(record.first.blockOffset), record.restored, maxPlain));
        }
    } else {
        record.restoredBytes = Restored(
            UncompressBlock(plain, record.restored, static_cast<std::int32_t>(kChunkBytes)));
    }
    Bytes().swap(plain);
}

bool RecordPipeline::NextFileWithRecords() {
    // A read failure of the index ends the records here; the job's own walk reports it.
    for (auto next = m_reader.NextFile(); next && next->has_value(); next = m_reader.NextFile()) {
        if (const FileRange& range = **next; range.byteCount != 0) {
            m_file = range;
            m_next = range.offset;
            m_chunk = 0;
            m_chain.fill(0);
            return true;
        }
    }
    return false;
}

// Fill reads records on the caller's thread (from the page cache that is quick) and keeps
// each worker a batch ahead.
void RecordPipeline::Fill() {
    if (!m_opened) {
        m_opened = true;
        m_finished = !m_reader.Open(m_path);
        if (!m_finished) {
            m_reader.Rewind();
            m_next = m_file.offset + m_file.byteCount; // no file yet
        }
    }
    const std::size_t depth = m_workers.WorkerCount() + 2;
    while (!m_finished && m_workers.InFlight() < depth) {
        std::vector<DecodedRecord> batch;
        std::size_t batchBytes = 0;
        while (batchBytes < kBatchPayloadBytes && batch.size() < kBatchRecords) {
            const std::int64_t fileEnd = m_file.offset + m_file.byteCount;
            if (m_next >= fileEnd && !NextFileWithRecords()) {
                m_finished = true;
                break;
            }
            DecodedRecord& record = batch.emplace_back();
            record.fileIndex = m_file.index;
            record.chunk = ++m_chunk;
            record.chain = m_chain;
            record.end =
                m_reader.ReadRecord(m_next, m_file.offset + m_file.byteCount, record.payload);
            if (!record.end) {
                m_next = m_file.offset + m_file.byteCount; // the rest of this file cannot be found
            } else {
                std::copy(record.payload.end() - kBlockBytes, record.payload.end(),
                          m_chain.begin());
                m_next = *record.end;
            }
            batchBytes += record.payload.size();
        }
        if (!batch.empty()) {
            m_workers.Submit(std::move(batch));
        }
    }
}

std::optional<DecodedRecord> RecordPipeline::Take(std::size_t fileIndex, std::int64_t chunk,
                                                  const std::function<bool()>& keepWaiting) {
    while (true) {
        if (m_ready.empty()) {
            Fill();
            if (m_workers.InFlight() == 0) {
                DecodedRecord missing;
                missing.fileIndex = fileIndex;
                missing.chunk = chunk;
                return missing;
            }
            std::optional<std::vector<DecodedRecord>> batch = m_workers.NextWithin(kWaitSlice);
            if (!batch) {
                if (!keepWaiting()) {
                    return std::nullopt;
                }
                continue;
            }
            std::move(batch->begin(), batch->end(), std::back_inserter(m_ready));
            Fill();
        }
        DecodedRecord record = std::move(m_ready.front());
        m_ready.pop_front();
        if (Before(record, fileIndex, chunk)) {
            continue;
        }
        if (record.fileIndex != fileIndex || record.chunk != chunk) {
            record.end.reset(); // the caller asks for a record the index does not lead to
        }
        return record;
    }
}

} // namespace kelvora
