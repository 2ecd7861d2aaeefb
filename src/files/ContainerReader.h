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
    // Open reads the container's index. A container below 4 bytes, one whose last 101
    // bytes hold no byte 255, or an index that overflows or does not fit gives
    // NoUsableContent; a file-system error gives ReadFailed (errno in LastError).
    [[nodiscard]] FileError Open(const std::string& path);

    const std::vector<FileRange>& Files() const { return m_files; }
    int LastError() const { return m_file.LastError(); }

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

    InputFile m_file;
    std::vector<FileRange> m_files;
};

} // namespace kelvora
