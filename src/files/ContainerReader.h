#pragma once

#include "common/Bytes.h"
#include "common/Result.h"
#include "files/ContainerIndex.h"
#include "files/FileError.h"
#include "files/FileIo.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kelvora {

// RecordEdges is the first bytes and the last cipher block of a record's payload, and the
// container offset behind the record.
struct RecordEdges {
    Bytes first;
    Bytes lastBlock;
    std::int64_t end = 0;
};

// ContainerReader opens a container, finds its index at the end and reads its records,
// checking every length against the file's range before it reads or allocates.
class ContainerReader {
public:
    // Open finds the container's index and walks it once to check it. A container below 4
    // bytes, one whose last 101 bytes hold no byte 255, or an index that overflows or does
    // not fit fails with NoUsableContent; a file-system error with ReadFailed (or
    // NotRegularFile) and errno.
    [[nodiscard]] Result<void, FileFailure> Open(const std::string& path);

    const std::string& Path() const { return m_path; }
    std::size_t FileCount() const { return m_fileCount; }
    // RecordsBytes is the size of all records together, the measure of a job's progress.
    std::int64_t RecordsBytes() const { return m_recordsBytes; }

    // Rewind starts a walk over the files in index order; NextFile gives the next one's
    // range, nothing at the end, or errno when the index can no longer be read. The index
    // is read piece by piece, so any number of files takes constant memory.
    void Rewind();
    [[nodiscard]] Result<std::optional<FileRange>, Errno> NextFile();

    // ReadRecord reads the payload of the record at offset, which must end by rangeEnd, into
    // the buffer payload and gives the offset behind it, or nothing when the record is
    // damaged or cannot be read.
    [[nodiscard]] std::optional<std::int64_t> ReadRecord(std::int64_t offset, std::int64_t rangeEnd,
                                                         Bytes& payload);

    // ReadRecordEdges reads the first `head` and the last 32 payload bytes of the record at
    // offset (the last block chains into the next record), for listing without decrypting
    // everything; nothing as ReadRecord.
    [[nodiscard]] std::optional<RecordEdges>
    ReadRecordEdges(std::int64_t offset, std::int64_t rangeEnd, std::size_t head);

private:
    [[nodiscard]] std::optional<std::int64_t> PayloadLength(std::int64_t offset,
                                                            std::int64_t rangeEnd);
    enum class WalkStep { File, End, Garbled };
    // Walk feeds the index to the walker up to the next file (then in m_walker.File()).
    [[nodiscard]] Result<WalkStep, Errno> Walk();

    InputFile m_file;
    std::string m_path;
    std::int64_t m_indexStart = 0;
    std::int64_t m_indexEnd = 0;
    std::size_t m_fileCount = 0;
    std::int64_t m_recordsBytes = 0;
    IndexWalker m_walker{0};
    std::int64_t m_walkAt = 0;
    Bytes m_piece;
    std::size_t m_pieceAt = 0;
};

// FileStep is what a walk over the files of a container does after one file.
enum class FileStep { Next, Stop };
using EachFile = std::function<Result<FileStep, FileJobResult>(const FileRange&)>;

// ForEachFile walks the files of an open container in index order from the start, passing
// over files with a byte count of 0, and gives each to `each` until one fails or says Stop.
// It gives that failure, or ReadFailed naming the container when the index can no longer
// be read.
[[nodiscard]] FileJobResult ForEachFile(ContainerReader& reader, const EachFile& each);

} // namespace kelvora
