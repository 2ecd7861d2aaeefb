#include "files/ContainerWriter.h"

#include "files/ContainerFormat.h"
#include "files/LittleEndian.h"

#include <algorithm>
#include <array>

namespace kelvora {

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

AppendResult AppendFileToContainer(ChunkFeed& feed, const std::string& ansiStoredName,
                                   ByteSink& container, JobCipher& cipher, RandomSource& random,
                                   ParallelCompressor& compressor, FileJobObserver& observer) {
    const ChunkFeed::OpenedFile opened = feed.TakeOpenedFile();
    if (opened.openError != 0) {
        return AppendResult{FileError::ReadFailed, 0, 0, opened.openError};
    }
    const std::int64_t chunkCount = ChunkCount(opened.size, ansiStoredName.size());
    observer.OnProgressRange(chunkCount + 1);
    observer.OnProgress(0);

    AppendResult result;
    Bytes plain = StreamHeader(ansiStoredName, random);
    for (std::int64_t chunk = 1; chunk <= chunkCount; ++chunk) {
        result.chunk = chunk;
        // Keep the workers busy with later chunks while this one is enciphered.
        feed.Fill();
        ParallelCompressor::CompressedChunk compressed = compressor.Next();
        if (compressed.readError != 0) {
            return AppendResult{FileError::ReadFailed, 0, chunk, compressed.readError};
        }
        if (compressed.failed) {
            return AppendResult{FileError::CompressFailed, 0, chunk, 0};
        }
        if (chunk == 1) {
            if (!compressed.block.empty()) {
                plain[kTailByteOffset] = static_cast<std::uint8_t>(compressed.block.size() % 32);
                plain.insert(plain.end(), compressed.block.begin(), compressed.block.end());
            }
        } else {
            plain.swap(compressed.block);
        }
        const Bytes payload = cipher.Cipher().EncryptDo(plain, chunk > 1);
        if (payload.empty() || cipher.Cancelled()) {
            return AppendResult{FileError::Cancelled, 0, chunk, 0};
        }
        if (!WriteRecord(container, payload)) {
            return AppendResult{FileError::WriteFailed, 0, chunk, container.LastError()};
        }
        result.byteCount += static_cast<std::int64_t>(payload.size() + kRecordLengthBytes);
        observer.OnBytesDone(static_cast<std::int64_t>(compressed.data.size()));
        observer.OnProgress(chunk);
    }
    return result;
}

} // namespace kelvora
