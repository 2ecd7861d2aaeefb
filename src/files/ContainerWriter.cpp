#include "files/ContainerWriter.h"

#include "files/ContainerFormat.h"
#include "files/LittleEndian.h"

#include <algorithm>
#include <array>

namespace kelvora {

namespace {

// StreamHeader builds the first chunk's uncompressed part; the tail byte is set later.
Bytes StreamHeader(const std::string& ansiStoredName, RandomSource& random) {
    Bytes header(kStreamHeaderBytes + ansiStoredName.size());
    random.Fill(header.data(), kSaltBytes);
    header[kTailByteOffset] = kEmptyFileTailByte;
    header[kNameLengthOffset] = static_cast<std::uint8_t>(ansiStoredName.size() % 256);
    std::copy(ansiStoredName.begin(), ansiStoredName.end(), header.begin() + kStreamHeaderBytes);
    return header;
}

bool WriteRecord(ByteSink& container, const Bytes& payload) {
    std::array<std::uint8_t, kRecordLengthBytes> lastIndex{};
    PutInt32Le(lastIndex.data(), static_cast<std::int32_t>(payload.size() - 1));
    return container.Write(lastIndex) && container.Write(payload);
}

} // namespace

AppendResult AppendFileToContainer(const std::string& inputPath, const std::string& ansiStoredName,
                                   ByteSink& container, JobCipher& cipher, RandomSource& random,
                                   FileJobObserver& observer) {
    AppendResult result;
    InputFile input;
    if (!input.Open(inputPath)) {
        return AppendResult{FileError::ReadFailed, 0, 0, input.LastError()};
    }
    const std::int64_t chunkCount = ChunkCount(input.Size(), ansiStoredName.size());
    observer.OnProgressRange(chunkCount + 1);
    observer.OnProgress(0);

    std::int64_t remaining = input.Size();
    Bytes data;
    Bytes block;
    Bytes plain = StreamHeader(ansiStoredName, random);
    for (std::int64_t chunk = 1; chunk <= chunkCount; ++chunk) {
        result.chunk = chunk;
        const std::size_t room = chunk == 1 ? FirstChunkRoom(ansiStoredName.size()) : kChunkBytes;
        data.resize(static_cast<std::size_t>(
            std::min<std::int64_t>(remaining, static_cast<std::int64_t>(room))));
        if (!input.ReadExact(data)) {
            return AppendResult{FileError::ReadFailed, 0, chunk, input.LastError()};
        }
        remaining -= static_cast<std::int64_t>(data.size());
        if (!data.empty() && CompressBlock(data, block) == 0) {
            return AppendResult{FileError::CompressFailed, 0, chunk, 0};
        }
        if (chunk == 1) {
            if (!data.empty()) {
                plain[kTailByteOffset] = static_cast<std::uint8_t>(block.size() % 32);
                plain.insert(plain.end(), block.begin(), block.end());
            }
        } else {
            plain.swap(block);
        }
        const Bytes payload = cipher.Cipher().EncryptDo(plain, chunk > 1);
        if (payload.empty() || cipher.Cancelled()) {
            return AppendResult{FileError::Cancelled, 0, chunk, 0};
        }
        if (!WriteRecord(container, payload)) {
            return AppendResult{FileError::WriteFailed, 0, chunk, container.LastError()};
        }
        result.byteCount += static_cast<std::int64_t>(payload.size() + kRecordLengthBytes);
        observer.OnBytesDone(static_cast<std::int64_t>(data.size()));
        observer.OnProgress(chunk);
    }
    return result;
}

} // namespace kelvora
