#pragma once

#include "common/Bytes.h"
#include "files/FileError.h"
#include "files/FileIo.h"
#include "files/OrderedWorkers.h"

#include <cstddef>
#include <optional>

namespace kelvora {

// ParallelCompressor compresses chunks on worker threads while the caller enciphers and
// writes earlier ones; compression dominates the time of an encryption. Blocks come back
// in the order the chunks went in. Each chunk in flight holds its data and its block, so
// memory stays bounded by the caller's limit on chunks in flight. Chunks not taken when it
// is destroyed are dropped.
class ParallelCompressor {
public:
    // CompressedChunk is one chunk's result: its data and its compressed block (empty for
    // empty data), or the failure: ReadFailed with errno for a chunk that could not be read,
    // CompressFailed when zlib could not compress it.
    struct CompressedChunk {
        Bytes data;
        Bytes block;
        std::optional<FileFailure> failure;
    };

    // workers 0 compresses on the calling thread at Next.
    explicit ParallelCompressor(std::size_t workers);
    ParallelCompressor(const ParallelCompressor&) = delete;
    ParallelCompressor& operator=(const ParallelCompressor&) = delete;

    // WorkersForThisMachine is one worker per processor: the caller's thread mostly waits.
    static std::size_t WorkersForThisMachine();

    // Submit queues a chunk's data for compression, or the errno of a chunk that could not
    // be read.
    void Submit(Result<Bytes, Errno> data);
    // Next waits for the oldest submitted chunk that has not been taken yet.
    [[nodiscard]] CompressedChunk Next();
    std::size_t InFlight() const { return m_workers.InFlight(); }
    // Depth is how many full chunks to keep in flight so that no worker waits.
    std::size_t Depth() const { return m_workers.WorkerCount() + 1; }
    // HasRoom tells whether another chunk may go in. Small chunks (small files) take less
    // time and memory each, so more of them are let in, while the data held stays within
    // what Depth full chunks hold: blocks come back in order, and a few short chunks behind
    // a long one would otherwise leave workers idle.
    [[nodiscard]] bool HasRoom() const;

private:
    static void Compress(CompressedChunk& chunk);

    OrderedWorkers<CompressedChunk> m_workers;
    std::size_t m_bytesInFlight = 0;
};

} // namespace kelvora
