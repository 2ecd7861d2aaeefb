#pragma once

#include "common/Bytes.h"
#include "crypto/CRijndael.h"
#include "files/ContainerReader.h"
#include "files/FileDecryptor.h"
#include "files/OrderedWorkers.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kelvora {

// DecodedRecord is one record of a container, deciphered and decompressed ahead of the
// caller. Records are independent once read: the last ciphertext block of a file's previous
// record is the chaining value of the next.
struct DecodedRecord {
    std::size_t fileIndex = 0;
    std::int64_t chunk = 0; // from 1
    // The container offset behind the record; nothing when it cannot be read.
    std::optional<std::int64_t> end;
    FirstRecord first; // what chunk 1 holds
    Bytes restored;    // the chunk's file bytes
    // How many of them; nothing when there is no block or it is damaged.
    std::optional<std::size_t> restoredBytes;
    Bytes payload; // the ciphertext, until a worker has deciphered it
    std::array<std::uint8_t, kBlockBytes> chain{};
};

// RecordPipeline reads the records of every file of a container in index order (files with
// a byte count of 0 are passed over, as the reading jobs do), deciphers and decompresses them
// on worker threads and hands them back in order. It opens its own reader on the container at
// the first Take, so a job that never takes costs nothing. A few batches of records are in
// flight at a time, about 4 MiB each (a full chunk, or small records together), whatever the
// container's size.
class RecordPipeline {
public:
    // cipher must hold the job's key and outlive the pipeline; workers only call its bulk
    // decryption, which does not change it.
    RecordPipeline(std::string containerPath, const CRijndael& cipher, std::size_t workers);

    // Take gives record `chunk` of file `fileIndex`, dropping the records before it (of files
    // the caller passed over). While it waits it calls keepWaiting now and then, and gives
    // nothing once that says no. A record that cannot be read, or one the container does not
    // have, comes back without an end.
    [[nodiscard]] std::optional<DecodedRecord> Take(std::size_t fileIndex, std::int64_t chunk,
                                                    const std::function<bool()>& keepWaiting);

private:
    static void Decode(const CRijndael& cipher, DecodedRecord& record);
    void Fill();
    [[nodiscard]] bool NextFileWithRecords();

    std::string m_path;
    ContainerReader m_reader;
    bool m_opened = false;
    bool m_finished = false;
    FileRange m_file;
    std::int64_t m_next = 0;
    std::int64_t m_chunk = 0;
    std::array<std::uint8_t, kBlockBytes> m_chain{};
    // Small records travel in batches, so that a hand-off costs less than their work.
    OrderedWorkers<std::vector<DecodedRecord>> m_workers;
    std::deque<DecodedRecord> m_ready; // the decoded batch being taken
};

} // namespace kelvora
