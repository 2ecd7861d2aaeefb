#include "files/ParallelCompressor.h"

#include "files/CompressBlock.h"
#include "files/ContainerFormat.h"

#include <algorithm>

namespace kelvora {

namespace {

// More workers than this gain little (the cipher and the disk on the caller's thread become
// the limit) and each chunk in flight costs about 4 MiB.
constexpr std::size_t kMaxWorkers = 6;

// How many small chunks may stand in for one full chunk in flight.
constexpr std::size_t kSmallChunksPerFullChunk = 8;

} // namespace

ParallelCompressor::ParallelCompressor(std::size_t workers) : m_workers(workers, &Compress) {}

std::size_t ParallelCompressor::WorkersForThisMachine() {
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMaxWorkers);
}

void ParallelCompressor::Compress(CompressedChunk& chunk) {
    chunk.block.clear();
    if (!chunk.failure && !chunk.data.empty() && !CompressBlock(chunk.data, chunk.block)) {
        chunk.failure = FileFailure{FileError::CompressFailed, 0, 0};
    }
}

bool ParallelCompressor::HasRoom() const {
    // A chunk is at most kChunkBytes, so the next one cannot take the data past the bound.
    return InFlight() < Depth() * kSmallChunksPerFullChunk &&
           m_bytesInFlight + kChunkBytes <= Depth() * kChunkBytes;
}

void ParallelCompressor::Submit(Result<Bytes, Errno> data) {
    CompressedChunk chunk;
    if (data) {
        chunk.data = std::move(data).value();
        m_bytesInFlight += chunk.data.size();
    } else {
        chunk.failure = FileFailure{FileError::ReadFailed, 0, data.error()};
    }
    m_workers.Submit(std::move(chunk));
}

ParallelCompressor::CompressedChunk ParallelCompressor::Next() {
    CompressedChunk chunk = m_workers.Next();
    m_bytesInFlight -= chunk.data.size();
    return chunk;
}

} // namespace kelvora
