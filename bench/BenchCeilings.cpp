#include "BenchCeilings.h"

#include "common/Bytes.h"
#include "crypto/CRijndael.h"
#include "files/CompressBlock.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>
#include <time.h>
#include <vector>

namespace kelvora::bench {
namespace {

constexpr std::size_t kChunkBytes = 2097152;

// Chunk is one 2 MiB piece of a file; first marks where a new cipher chain starts.
struct Chunk {
    Bytes plain;
    Bytes block;
    Bytes cipher;
    bool first = false;
};

std::vector<Chunk> ReadChunks(const std::string& folder) {
    std::vector<Chunk> chunks;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) {
            continue;
        }
        std::ifstream in(entry.path(), std::ios::binary);
        bool first = true;
        do {
            Chunk chunk;
            chunk.plain.resize(kChunkBytes);
            in.read(reinterpret_cast<char*>(chunk.plain.data()),
                    static_cast<std::streamsize>(kChunkBytes));
            chunk.plain.resize(static_cast<std::size_t>(in.gcount()));
            chunk.first = first;
            first = false;
            chunks.push_back(std::move(chunk));
        } while (in && chunks.back().plain.size() == kChunkBytes);
    }
    return chunks;
}

double ProcessCpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

// Timed is the wall time of one run of a part and its CPU time.
struct Timed {
    double wall = 0;
    double cpu = 0;
};

// Median runs work runs times and keeps the run of median wall time.
Timed Median(int runs, const std::function<void()>& work) {
    std::vector<Timed> times;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        const double cpuStart = ProcessCpuSeconds();
        work();
        times.push_back(
            {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
             ProcessCpuSeconds() - cpuStart});
    }
    std::sort(times.begin(), times.end(),
              [](const Timed& x, const Timed& y) { return x.wall < y.wall; });
    return times[times.size() / 2];
}

// OnEveryCore runs work(i) for every chunk index, the chunks shared out among cores threads.
void OnEveryCore(std::size_t cores, std::size_t count,
                 const std::function<void(std::size_t)>& work) {
    std::atomic<std::size_t> next{0};
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < cores; ++t) {
        threads.emplace_back([&] {
            for (std::size_t i; (i = next++) < count;) {
                work(i);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace

Ceilings MeasureCeilings(const std::string& folder, int runs) {
    std::vector<Chunk> chunks = ReadChunks(folder);
    Ceilings ceilings;
    ceilings.cores = std::max(1U, std::thread::hardware_concurrency());
    for (const Chunk& chunk : chunks) {
        ceilings.plainBytes += chunk.plain.size();
    }
    const Timed deflate = Median(runs, [&] {
        OnEveryCore(ceilings.cores, chunks.size(), [&](std::size_t i) {
            static_cast<void>(CompressBlock(chunks[i].plain, chunks[i].block));
        });
    });
    for (const Chunk& chunk : chunks) {
        ceilings.compressedBytes += chunk.block.size();
    }
    CRijndael cipher;
    static_cast<void>(cipher.EncryptPrepareKey(Bytes(kKeyBytes, 7)));
    const Timed encipher = Median(runs, [&] {
        for (Chunk& chunk : chunks) {
            chunk.cipher = cipher.EncryptDo(chunk.block, !chunk.first);
        }
    });
    // The reading jobs decipher each record with the bulk call into a buffer they already
    // hold, chaining from the last ciphertext block before it; so does this ceiling.
    for (Chunk& chunk : chunks) {
        chunk.block.resize(chunk.cipher.size());
    }
    const Timed decipher = Median(runs, [&] {
        std::array<std::uint8_t, kBlockBytes> chain{};
        for (Chunk& chunk : chunks) {
            if (chunk.first) {
                chain.fill(0);
            }
            cipher.DecryptBlocksCbc(chunk.cipher.data(), chunk.block.data(),
                                    chunk.cipher.size() / kBlockBytes, chain.data());
        }
    });
    const Timed inflate = Median(runs, [&] {
        OnEveryCore(ceilings.cores, chunks.size(), [&](std::size_t i) {
            static_cast<void>(UncompressBlock(chunks[i].block, chunks[i].plain));
        });
    });
    ceilings.deflateSeconds = deflate.wall;
    ceilings.deflateCpu = deflate.cpu;
    ceilings.encipherSeconds = encipher.wall;
    ceilings.encipherCpu = encipher.cpu;
    ceilings.decipherSeconds = decipher.wall;
    ceilings.decipherCpu = decipher.cpu;
    ceilings.inflateSeconds = inflate.wall;
    ceilings.inflateCpu = inflate.cpu;
    return ceilings;
}

} // namespace kelvora::bench
