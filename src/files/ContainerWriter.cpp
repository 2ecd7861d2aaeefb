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

Result<void, Errno> WriteRecord(ByteSink& container, const Bytes& payload) {
    std::array<std::uint8_t, kRecordLengthBytes> lastIndex{};
    PutInt32Le(lastIndex.data(), static_cast<std::int32_t>(payload.size() - 1));
    if (auto written = container.Write(lastIndex); !written) {
        return written;
    }
    return container.Write(payload);
}

Result<std::int64_t, FileFailure>
AppendFileToContainer(ChunkFeed& feed, const std::string& ansiStoredName, ByteSink& container,
                      JobCipher& cipher, RandomSource& random, ParallelCompressor& compressor,
                      FileJobObserver& observer) {
    const Result<std::int64_t, Errno> opened = feed.TakeOpenedFile();
    if (!opened) {
        return Fail(FileFailure{FileError::ReadFailed, 0, opened.error()});
    }
    const std::int64_t chunkCount = ChunkCount(*opened, ansiStoredName.size());
    observer.OnProgressRange(chunkCount + 1);
    observer.OnProgress(0);

    std::int64_t byteCount = 0;
    Bytes plain = StreamHeader(ansiStoredName, random);
    for (std::int64_t chunk = 1; chunk <= chunkCount; ++chunk) {
        // Keep the workers busy with later chunks while this one is enciphered.
        feed.Fill();
        ParallelCompressor::CompressedChunk compressed = compressor.Next();
        if (compressed.failure) {
            FileFailure failure = *compressed.failure;
            failure.chunk = chunk;
            return Fail(failure);
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
            return Fail(FileFailure{FileError::Cancelled, chunk, 0});
        }
        if (auto written = WriteRecord(container, payload); !written) {
            return Fail(FileFailure{FileError::WriteFailed, chunk, written.error()});
        }
        byteCount += static_cast<std::int64_t>(payload.size() + kRecordLengthBytes);
        observer.OnBytesDone(static_cast<std::int64_t>(compressed.data.size()));
        observer.OnProgress(chunk);
    }
    return byteCount;
}

} // namespace kelvora
