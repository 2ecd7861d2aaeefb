#include "files/ChunkFeed.h"

#include "files/ContainerFormat.h"

#include <algorithm>
#include <cerrno>

namespace kelvora {

bool ChunkFeed::OpenNextFile() {
    const Input& input = m_inputs[m_nextInput++];
    m_file = std::make_unique<InputFile>();
    if (!m_file->Open(input.path)) {
        m_opened.push_back(OpenedFile{0, m_file->LastError()});
        return false;
    }
    m_opened.push_back(OpenedFile{m_file->Size(), 0});
    m_remaining = m_file->Size();
    m_room = FirstChunkRoom(input.nameBytes);
    m_chunksLeft = ChunkCount(m_file->Size(), input.nameBytes);
    return true;
}

void ChunkFeed::Fill() {
    while (!m_stopped && m_compressor.InFlight() < m_compressor.Depth()) {
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
        if (!m_file->ReadExact(data)) {
            m_compressor.Submit({}, m_file->LastError());
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

ChunkFeed::OpenedFile ChunkFeed::TakeOpenedFile() {
    Fill();
    if (m_opened.empty()) {
        // Only a writer that asks past the files it was given gets here.
        return OpenedFile{0, EINVAL};
    }
    const OpenedFile opened = m_opened.front();
    m_opened.pop_front();
    return opened;
}

} // namespace kelvora
