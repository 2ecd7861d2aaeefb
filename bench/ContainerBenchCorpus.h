#pragma once

#include <cstdint>
#include <string>

namespace kelvora::bench {

// Corpus files are written from a seed, so every run works on the same bytes. Text-like
// files compress about as well as prose; random files not at all.
enum class Content { Text, Random };

// WriteCorpusFile writes size bytes of the given content to path in 1 MiB pieces.
void WriteCorpusFile(const std::string& path, std::uint64_t size, Content content,
                     std::uint64_t seed);

// CorpusSummary is what MakeCorpus wrote.
struct CorpusSummary {
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
};

// MakeCorpus fills folder (created afresh) with 256 MiB: three quarters text-like in 5,146
// files, one quarter random in 335, each kind many small files in nested folders and a few
// large ones.
CorpusSummary MakeCorpus(const std::string& folder);

} // namespace kelvora::bench
