#include "DeflateLevels.h"

#include "common/Bytes.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <libdeflate.h>
#include <time.h>
#include <vector>
#include <zlib.h>

namespace kelvora::bench {
namespace {

constexpr std::size_t kChunkBytes = 2097152;
constexpr std::size_t kSampleBytes = 48'000'000;

double ThreadCpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

// ReadChunks appends the 2 MiB chunks of the files at paths, in order, until budget bytes.
void ReadChunks(const std::vector<std::filesystem::path>& paths, std::size_t budget,
                std::vector<Bytes>& chunks) {
    std::size_t total = 0;
    for (const auto& path : paths) {
        std::ifstream in(path, std::ios::binary);
        while (in && total < budget) {
            Bytes chunk(kChunkBytes);
            in.read(reinterpret_cast<char*>(chunk.data()),
                    static_cast<std::streamsize>(kChunkBytes));
            chunk.resize(static_cast<std::size_t>(in.gcount()));
            total += chunk.size();
            if (!chunk.empty()) {
                chunks.push_back(std::move(chunk));
            }
        }
    }
}

// TextChunks samples the text-like files (those below a folder named "text"): half of the
// sample from the smallest files, half from the largest, since small files compress worse.
std::vector<Bytes> TextChunks(const std::string& folder) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.path().string().find("/text/") != std::string::npos) {
            paths.push_back(entry.path());
        }
    }
    std::sort(paths.begin(), paths.end(), [](const auto& a, const auto& b) {
        return std::filesystem::file_size(a) < std::filesystem::file_size(b);
    });
    std::vector<Bytes> chunks;
    ReadChunks(paths, kSampleBytes / 2, chunks);
    std::reverse(paths.begin(), paths.end());
    ReadChunks(paths, kSampleBytes / 2, chunks);
    return chunks;
}

struct Measured {
    std::size_t bytes = 0;
    double cpu = 0;
};

Measured Compress(const std::vector<Bytes>& chunks,
                  const std::function<std::size_t(const Bytes&, Bytes&)>& compress) {
    Bytes out(kChunkBytes + kChunkBytes / 100 + 64);
    Measured measured;
    const double start = ThreadCpuSeconds();
    for (const Bytes& chunk : chunks) {
        measured.bytes += compress(chunk, out);
    }
    measured.cpu = ThreadCpuSeconds() - start;
    return measured;
}

} // namespace

void PrintDeflateLevels(const std::string& folder) {
    const std::vector<Bytes> chunks = TextChunks(folder);
    std::size_t plain = 0;
    for (const Bytes& chunk : chunks) {
        plain += chunk.size();
    }
    const Measured zlib = Compress(chunks, [](const Bytes& in, Bytes& out) {
        uLongf length = out.size();
        return compress(out.data(), &length, in.data(), in.size()) == Z_OK ? length : 0;
    });
    std::printf("Deflate levels on %.1f MB of the text-like files (one CPU), against zlib's "
                "compress (default level): %.1f%% of the plain size in %.2f s\n",
                static_cast<double>(plain) / 1e6,
                100.0 * static_cast<double>(zlib.bytes) / static_cast<double>(plain), zlib.cpu);
    for (const int level : {4, 5, 6, 7, 8}) {
        libdeflate_compressor* compressor = libdeflate_alloc_compressor(level);
        const Measured m = Compress(chunks, [&](const Bytes& in, Bytes& out) {
            return libdeflate_zlib_compress(compressor, in.data(), in.size(), out.data(),
                                            out.size());
        });
        libdeflate_free_compressor(compressor);
        std::printf("  libdeflate level %d: %.1f%% of the plain size, %+.2f%% against zlib; "
                    "%.2f s, %.2f times zlib's speed\n",
                    level, 100.0 * static_cast<double>(m.bytes) / static_cast<double>(plain),
                    100.0 * (static_cast<double>(m.bytes) / static_cast<double>(zlib.bytes) - 1),
                    m.cpu, zlib.cpu / m.cpu);
    }
    std::fflush(stdout);
}

} // namespace kelvora::bench
