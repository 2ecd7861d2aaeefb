#pragma once

#include <cstddef>
#include <string>

namespace kelvora::bench {

// Ceilings are the times the file jobs chase: the corpus cut into 2 MiB chunks, compressed
// and decompressed with the program's deflate alone on every core, and the compressed blocks
// enciphered and deciphered with the cipher alone on one core (chained within a file, so
// serial like the jobs' encryption). Data comes from memory; nothing is read or written.
struct Ceilings {
    std::size_t cores = 1;
    double deflateSeconds = 0; // wall time of each part: the median of runs
    double inflateSeconds = 0;
    double encipherSeconds = 0;
    double decipherSeconds = 0;
    double deflateCpu = 0; // CPU time of each part, which a shared machine disturbs less
    double inflateCpu = 0;
    double encipherCpu = 0;
    double decipherCpu = 0;
    std::size_t plainBytes = 0;
    std::size_t compressedBytes = 0;

    // With the work spread over every core, the jobs can be no faster than these.
    double Encrypt() const { return deflateSeconds + encipherSeconds / static_cast<double>(cores); }
    double Decrypt() const { return inflateSeconds + decipherSeconds / static_cast<double>(cores); }
};

// MeasureCeilings reads every file below folder into memory and times the four parts, each
// runs times.
Ceilings MeasureCeilings(const std::string& folder, int runs);

} // namespace kelvora::bench
