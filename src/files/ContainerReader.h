#pragma once

#include "common/Bytes.h"
#include "files/ContainerIndex.h"
#include "files/FileError.h"
#include "files/FileIo.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kelvora {

// ContainerReader opens a container, finds its index at the end and reads its records,
// checking every length against the file's range before it reads or allocates.
class ContainerReader {
public:
    // Open finds the container's index and walks it once to check it. A container below 4
    // bytes, one whose last 101 bytes hold no byte 255, or an index that overflows or does
    // not fit gives NoUsableContent; a file-system error gives ReadFailed (errno in
    // LastError).
    [[nodiscard]] FileError Open(const std::string& path);

    std::size_t FileCount() const { return m_fileCount; }
    // RecordsBytes is the size of all records together, the measure of a job's progress.
    std::int64_t RecordsBytes() const { return m_recordsBytes; }
    int LastError() const { return m_file.LastError(); }

    // Rewind starts a walk over the files in index order; NextFile gives the next one's
    // range, or false at the end or when the index can no longer be read (WalkFailed). The
    // index is read piece by piece, so any number of files takes constant memory.
    void Rewind();
    [[nodiscard]] bool NextFile(FileRange& range);
    bool WalkFailed() const { return m_walkFailed; }

    // ReadRecord reads the record at offset, which must end by rangeEnd, into payload and
    // gives the offset behind it, or -1 when the record is damaged or cannot be read.
    [[nodiscard]] std::int64_t ReadRecord(std::int64_t offset, std::int64_t rangeEnd,
                                          Bytes& payload);

    // ReadRecordEdges reads the first `head` and the last 32 payload bytes of the record at
    // offset (the last block chains into the next record), for listing without decrypting
    // everything. Gives the offset behind the record, or -1 as ReadRecord.
    [[nodiscard]] std::int64_t ReadRecordEdges(std::int64_t offset, std::int64_t rangeEnd,
                                               std::size_t head, Bytes& first, Bytes& lastBlock);

private:
    [[nodiscard]] std::int64_t PayloadLength(std::int64_t offset, std::int64_t rangeEnd);
    enum class WalkStep { File, End, Garbled };
    [[nodiscard]] WalkStep Walk(FileRange& range);

    InputFile m_file;
    std::int64_t m_indexStart = 0;
    std::int64_t m_indexEnd = 0;
    std::size_t m_fileCount = 0;
    std::int64_t m_recordsBytes = 0;
    IndexWalker m_walker{0};
    std::int64_t m_walkAt = 0;
    Bytes m_piece;
    std::size_t m_pieceAt = 0;
    bool m_walkFailed = false;
};

} // namespace kelvora
