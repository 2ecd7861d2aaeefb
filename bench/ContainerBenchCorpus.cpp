#include "ContainerBenchCorpus.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string>
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

// Text-like data is prose as far as a compressor can tell: words of a large vocabulary at
// Zipf's frequencies (short words the most common), sentences with capitals, commas and full
// stops, now and then a number, lines wrapped at 72 columns and paragraphs. On real prose,
// manuals and source code the deflate levels keep the same order of size and speed as here;
// a handful of words drawn uniformly (as an earlier corpus did) makes deflate's match search
// unusually hard and is no text anyone keeps.
class Prose {
public:
    static const Prose& Instance() {
        static const Prose prose;
        return prose;
    }

    void Fill(std::vector<char>& piece, XorShift& random) const {
        std::size_t at = 0;
        std::size_t column = 0;
        std::size_t sentenceLeft = 0;
        std::size_t sentences = 0;
        const auto put = [&](char c) {
            if (at < piece.size()) {
                piece[at++] = c;
            }
            column = c == '\n' ? 0 : column + 1;
        };
        while (at < piece.size()) {
            const std::uint64_t value = random.Next();
            const bool starts = sentenceLeft == 0;
            if (starts) {
                sentenceLeft = 4 + value % 21;
            }
            const std::string& word = value % 53 == 0  ? m_numbers[(value >> 8) % m_numbers.size()]
                                      : value % 5 == 0 ? m_phrases[(value >> 8) % m_phrases.size()]
                                                       : Word(value >> 16);
            if (column + word.size() >= kLineColumns) {
                put('\n');
            } else if (at > 0 && column > 0) {
                put(' ');
            }
            for (std::size_t i = 0; i < word.size(); ++i) {
                put(starts && i == 0 ? static_cast<char>(word[i] - 'a' + 'A') : word[i]);
            }
            if (--sentenceLeft == 0) {
                put((value >> 40) % 9 == 0 ? '?' : '.');
                if (++sentences % (5 + (value >> 44) % 6) == 0) {
                    put('\n');
                    put('\n');
                }
            } else if ((value >> 48) % 12 == 0) {
                put(',');
            }
        }
    }

private:
    static constexpr std::size_t kVocabulary = 6000;
    static constexpr std::size_t kLineColumns = 72;
    static constexpr std::size_t kPhrases = 400;

    Prose() {
        static constexpr std::array<const char*, 20> kOnsets = {
            "b", "c", "d", "f", "g", "h", "k",  "l",  "m",  "n",
            "p", "r", "s", "t", "v", "w", "st", "tr", "ch", "sh"};
        static constexpr std::array<const char*, 8> kVowels = {"a", "e",  "i",  "o",
                                                               "u", "ea", "ou", "ie"};
        static constexpr std::array<const char*, 8> kCodas = {"",  "",  "n",  "r",
                                                              "s", "t", "nd", "ng"};
        XorShift random(7);
        double total = 0;
        for (std::size_t rank = 0; rank < kVocabulary; ++rank) {
            // Common words are short: one syllable at the top ranks, up to four further down.
            const std::size_t syllables =
                1 + rank / 40 % 2 + (rank >= 300 ? 1 : 0) + (rank >= 2000 ? random.Next() % 2 : 0);
            std::string word;
            for (std::size_t s = 0; s < syllables; ++s) {
                const std::uint64_t v = random.Next();
                word += kOnsets[v % kOnsets.size()];
                word += kVowels[(v >> 8) % kVowels.size()];
                word += s + 1 == syllables ? kCodas[(v >> 16) % kCodas.size()] : "";
            }
            m_words.push_back(word);
            total += 1.0 / static_cast<double>(rank + 1);
            m_cumulative.push_back(total);
        }
        for (double& share : m_cumulative) {
            share /= total;
        }
        // Prose repeats whole phrases ("of the", "in order to"): a few hundred, of common words.
        for (std::size_t n = 0; n < kPhrases; ++n) {
            const std::uint64_t v = random.Next();
            std::string phrase = m_words[v % 50];
            for (std::uint64_t w = 0; w < 1 + (v >> 8) % 3; ++w) {
                phrase += ' ' + m_words[(v >> (16 + 8 * w)) % 300];
            }
            m_phrases.push_back(phrase);
        }
        for (std::uint64_t n = 0; n < 64; ++n) {
            m_numbers.push_back(std::to_string(random.Next() % (n < 32 ? 100 : 100000)));
        }
    }

    const std::string& Word(std::uint64_t value) const {
        const double u = static_cast<double>(value & 0xFFFFFFFFFFULL) / 1099511627776.0;
        const auto it = std::lower_bound(m_cumulative.begin(), m_cumulative.end(), u);
        return m_words[std::min<std::size_t>(it - m_cumulative.begin(), m_words.size() - 1)];
    }

    std::vector<std::string> m_words;
    std::vector<double> m_cumulative;
    std::vector<std::string> m_phrases;
    std::vector<std::string> m_numbers;
};

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
    Prose::Instance().Fill(piece, random);
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
