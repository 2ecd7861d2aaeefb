#pragma once

#include <string>

namespace kelvora::bench {

// PrintDeflateLevels compresses the text-like files below folder (a sample of about 48 MB
// from the smallest and the largest files, one stream per 2 MiB chunk as the container does) with
// libdeflate at the levels around the program's and with zlib's compress at its default level, and
// prints the size and the CPU time of each next to zlib's: the trade between the container's size
// and the encryption's speed.
void PrintDeflateLevels(const std::string& folder);

} // namespace kelvora::bench
