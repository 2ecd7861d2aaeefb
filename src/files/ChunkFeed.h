#pragma once

#include "files/FileIo.h"
#include "files/ParallelCompressor.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace kelvora {

// ChunkFeed reads the input files of an encrypt run in list order, cut into their chunks, and
// hands the chunks to the compressor ahead of the writer, across file boundaries, so that
// the workers stay busy on a folder of small files as on one large file. Only one input file
// is open at a time; input files are only read.
class ChunkFeed {
public:
    struct Input {
        std::string path;
        std::size_t nameBytes = 0;
    };

    ChunkFeed(std::vector<Input> inputs, ParallelCompressor& compressor)
        : m_inputs(std::move(inputs)), m_compressor(compressor) {}

    // Fill reads and submits chunks until the compressor holds enough to keep its workers
    // busy or every file is read. A chunk that cannot be read goes in as a failed chunk, and
    // the feed stops there.
    void Fill();

    // TakeOpenedFile gives the size of the next file in list order as the writer reaches it,
    // or the errno of its opening's failure.
    [[nodiscard]] Result<std::int64_t, Errno> TakeOpenedFile();

private:
    [[nodiscard]] bool OpenNextFile();

    std::vector<Input> m_inputs;
    ParallelCompressor& m_compressor;
    std::size_t m_nextInput = 0;
    std::unique_ptr<InputFile> m_file;
    std::int64_t m_remaining = 0;
    std::size_t m_room = 0;
    std::int64_t m_chunksLeft = 0;
    std::deque<Result<std::int64_t, Errno>> m_opened;
    bool m_stopped = false;
};

} // namespace kelvora
