#include "files/ParallelCompressor.h"

#include "files/CompressBlock.h"

#include <algorithm>

namespace kelvora {

namespace {

// More workers than this gain little (the cipher and the disk on the caller's thread become
// the limit) and each chunk in flight costs about 4 MiB.
constexpr std::size_t kMaxWorkers = 6;

} // namespace

ParallelCompressor::ParallelCompressor(std::size_t workers) {
    for (std::size_t i = 0; i < workers; ++i) {
        m_workers.emplace_back([this] { WorkerLoop(); });
    }
}

ParallelCompressor::~ParallelCompressor() {
    {
        std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_work.notify_all();
    for (std::thread& worker : m_workers) {
        worker.join();
    }
}

std::size_t ParallelCompressor::WorkersForThisMachine() {
    return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMaxWorkers);
}

void ParallelCompressor::Compress(CompressedChunk& chunk) {
    chunk.block.clear();
    chunk.failed =
        chunk.readError == 0 && !chunk.data.empty() && CompressBlock(chunk.data, chunk.block) == 0;
}

void ParallelCompressor::Submit(Bytes data, int readError) {
    {
        std::lock_guard lock(m_mutex);
        Slot slot;
        slot.sequence = m_submitted++;
        slot.chunk.data = std::move(data);
        slot.chunk.readError = readError;
        m_slots.push_back(std::move(slot));
    }
    m_work.notify_one();
}

ParallelCompressor::CompressedChunk ParallelCompressor::Next() {
    std::unique_lock lock(m_mutex);
    Slot& oldest = m_slots.front();
    if (m_workers.empty() && !oldest.started) {
        oldest.started = true;
        Compress(oldest.chunk);
        oldest.done = true;
    }
    m_finished.wait(lock, [&] { return m_slots.front().done; });
    CompressedChunk chunk = std::move(m_slots.front().chunk);
    m_slots.pop_front();
    ++m_taken;
    return chunk;
}

void ParallelCompressor::WorkerLoop() {
    std::unique_lock lock(m_mutex);
    while (true) {
        m_work.wait(lock, [&] {
            return m_stopping || std::any_of(m_slots.begin(), m_slots.end(),
                                             [](const Slot& slot) { return !slot.started; });
        });
        if (m_stopping) {
            return;
        }
        const auto slot =
            std::find_if(m_slots.begin(), m_slots.end(), [](const Slot& s) { return !s.started; });
        slot->started = true;
        CompressedChunk work = std::move(slot->chunk);
        const std::uint64_t sequence = slot->sequence;
        lock.unlock();
        Compress(work);
        lock.lock();
        // Slots only leave from the front once done, so this one is still queued.
        const auto mine = std::find_if(m_slots.begin(), m_slots.end(),
                                       [&](const Slot& s) { return s.sequence == sequence; });
        mine->chunk = std::move(work);
        mine->done = true;
        m_finished.notify_all();
    }
}

} // namespace kelvora
