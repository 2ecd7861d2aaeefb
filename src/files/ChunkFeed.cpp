#include "files/ChunkFeed.h"

#include "files/ContainerFormat.h"

#include <algorithm>
#include <cerrno>

namespace kelvora {

bool ChunkFeed::OpenNextFile() {
    const Input& input = m_inputs[m_nextInput++];
    m_file = std::make_unique<InputFile>();
    if (auto opened = m_file->Open(input.path); !opened) {
        m_opened.push_back(Fail(opened.error().systemError));
        return false;
    }
    m_opened.push_back(m_file->Size());
    m_remaining = m_file->Size();
    m_room = FirstChunkRoom(input.nameBytes);
    m_chunksLeft = ChunkCount(m_file->Size(), input.nameBytes);
    return true;
}

void ChunkFeed::Fill() {
    while (!m_stopped && m_compressor.HasRoom()) {
        if (m_chunksLeft == 0) {
            if (m_nextInput == m_inputs.size()) {
                return;
            }
            if (!OpenNextFile()) {
                m_stopped = true;
                return;
            }
        }
        Bytes data(static_cast<std::size_t>(
            std::min<std::int64_t>(m_remaining, static_cast<std::int64_t>(m_room))));
        if (auto read = m_file->ReadExact(data); !read) {
            m_compressor.Submit(Fail(read.error()));
            m_stopped = true;
            return;
        }
        m_remaining -= static_cast<std::int64_t>(data.size());
        m_room = kChunkBytes;
        m_compressor.Submit(std::move(data));
        if (--m_chunksLeft == 0) {
            m_file.reset();
        }
    }
}

Result<std::int64_t, Errno> ChunkFeed::TakeOpenedFile() {
    Fill();
    if (m_opened.empty()) {
        // Only a writer that asks past the files it was given gets here.
        return Fail(EINVAL);
    }
    const Result<std::int64_t, Errno> opened = m_opened.front();
    m_opened.pop_front();
    return opened;
}

} // namespace kelvora
