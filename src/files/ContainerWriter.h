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

// StreamHeader builds a file's first chunk's uncompressed part: salt from random, the tail
// byte of an empty file (the writer sets the real one), the name length and the name.
[[nodiscard]] Bytes StreamHeader(const std::string& ansiStoredName, RandomSource& random);

// WriteRecord writes one record: the payload's last index, then the payload.
[[nodiscard]] Result<void, Errno> WriteRecord(ByteSink& container, const Bytes& payload);

// AppendFileToContainer writes the next file of the feed as a stream (salt from random, tail
// byte, name length, ansiStoredName, data): it takes the file's chunks compressed, in order,
// enciphers each with the job's prepared key and writes the records to container. Memory
// stays constant whatever the file's size. On failure or cancel it stops at once; the caller
// ends the run and discards the container. It gives the file's records' byte count for the
// index, or the failure with the chunk it happened at.
[[nodiscard]] Result<std::int64_t, FileFailure>
AppendFileToContainer(ChunkFeed& feed, const std::string& ansiStoredName, ByteSink& container,
                      JobCipher& cipher, RandomSource& random, ParallelCompressor& compressor,
                      FileJobObserver& observer);

} // namespace kelvora
