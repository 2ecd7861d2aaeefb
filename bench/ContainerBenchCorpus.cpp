#include "ContainerBenchCorpus.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <vector>

namespace kelvora::bench {
namespace {

constexpr std::size_t kPieceBytes = std::size_t{1} << 20;
constexpr std::uint64_t kMiB = std::uint64_t{1} << 20;

class XorShift {
public:
    explicit XorShift(std::uint64_t seed) : m_state(seed * 0x9E3779B97F4A7C15ULL + 1) {}
    std::uint64_t Next() {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return m_state;
    }

private:
    std::uint64_t m_state;
};

constexpr std::array<const char*, 24> kWords = {
    "the",     "container", "holds",  "every", "file",       "of",    "a",       "folder",
    "kelvora", "encrypts",  "with",   "one",   "passphrase", "zlib",  "shrinks", "each",
    "chunk",   "before",    "cipher", "runs",  "Rechnung",   "Ärger", "café",    "2026"};

void FillPiece(std::vector<char>& piece, Content content, XorShift& random) {
    if (content == Content::Random) {
        for (std::size_t i = 0; i + 8 <= piece.size(); i += 8) {
            const std::uint64_t value = random.Next();
            for (std::size_t b = 0; b < 8; ++b) {
                piece[i + b] = static_cast<char>(value >> (8 * b));
            }
        }
        return;
    }
    std::size_t at = 0;
    while (at < piece.size()) {
        const std::uint64_t value = random.Next();
        const char* word = kWords[value % kWords.size()];
        for (const char* c = word; *c != '\0' && at < piece.size(); ++c) {
            piece[at++] = *c;
        }
        if (at < piece.size()) {
            piece[at++] = (value >> 32) % 11 == 0 ? '\n' : ' ';
        }
    }
}

} // namespace

void WriteCorpusFile(const std::string& path, std::uint64_t size, Content content,
                     std::uint64_t seed) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    XorShift random(seed);
    std::vector<char> piece(kPieceBytes);
    for (std::uint64_t written = 0; written < size;) {
        const auto now =
            static_cast<std::size_t>(std::min<std::uint64_t>(kPieceBytes, size - written));
        piece.resize(now);
        FillPiece(piece, content, random);
        out.write(piece.data(), static_cast<std::streamsize>(now));
        written += now;
    }
}

// The shape of a backed-up home folder: three quarters text-like in thousands of small files
// and a few large ones, one quarter random (already compressed) likewise, 256 MiB in all.
CorpusSummary MakeCorpus(const std::string& folder) {
    std::filesystem::remove_all(folder);
    CorpusSummary summary;
    const auto add = [&](const std::string& relative, std::uint64_t size, Content content) {
        WriteCorpusFile(folder + "/" + relative, size, content, summary.files + 1);
        ++summary.files;
        summary.bytes += size;
        return size;
    };
    const auto addKind = [&](const char* kind, Content content, int smallFiles,
                             std::uint64_t smallMax, std::uint64_t total,
                             std::initializer_list<double> largeShares) {
        XorShift sizes(content == Content::Text ? 42 : 43);
        std::uint64_t written = 0;
        for (int i = 0; i < smallFiles; ++i) {
            const std::string name = std::string(kind) + "/d" + std::to_string(i % 37) + "/e" +
                                     std::to_string(i % 5) + "/f" + std::to_string(i) + ".dat";
            written += add(name, 1024 + sizes.Next() % smallMax, content);
        }
        int large = 0;
        for (const double share : largeShares) {
            const auto size =
                static_cast<std::uint64_t>(static_cast<double>(total - written) * share) +
                static_cast<std::uint64_t>(large) * 4099; // odd sizes too
            add(std::string(kind) + "/large-" + std::to_string(++large) + ".dat", size, content);
        }
    };
    addKind("text", Content::Text, 5140, 36 * 1024, 192 * kMiB, {0.4, 0.25, 0.15, 0.1, 0.06, 0.04});
    addKind("random", Content::Random, 330, 64 * 1024, 64 * kMiB, {0.45, 0.25, 0.15, 0.1, 0.05});
    return summary;
}

} // namespace kelvora::bench
