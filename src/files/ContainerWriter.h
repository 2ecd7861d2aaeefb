#pragma once

#include "common/Random.h"
#include "files/ChunkFeed.h"
#include "files/FileError.h"
#include "files/FileIo.h"
#include "files/JobCipher.h"
#include "files/ParallelCompressor.h"

#include <cstdint>
#include <string>

namespace kelvora {

// AppendResult is one file's outcome: its records' byte count for the index, or an error
// with the chunk it happened at and errno for file-system errors.
struct AppendResult {
    FileError error = FileError::None;
    std::int64_t byteCount = 0;
    std::int64_t chunk = 0;
    int systemError = 0;
};

// StreamHeader builds a file's first chunk's uncompressed part: salt from random, the tail
// byte of an empty file (the writer sets the real one), the name length and the name.
[[nodiscard]] Bytes StreamHeader(const std::string& ansiStoredName, RandomSource& random);

// WriteRecord writes one record: the payload's last index, then the payload.
[[nodiscard]] bool WriteRecord(ByteSink& container, const Bytes& payload);

// AppendFileToContainer writes the next file of the feed as a stream (salt from random, tail
// byte, name length, ansiStoredName, data): it takes the file's chunks compressed, in order,
// enciphers each with the job's prepared key and writes the records to container. Memory
// stays constant whatever the file's size. On failure or cancel it stops at once; the caller
// ends the run and discards the container. The stored name must be at most 255 bytes.
[[nodiscard]] AppendResult AppendFileToContainer(ChunkFeed& feed, const std::string& ansiStoredName,
                                                 ByteSink& container, JobCipher& cipher,
                                                 RandomSource& random,
                                                 ParallelCompressor& compressor,
                                                 FileJobObserver& observer);

} // namespace kelvora
