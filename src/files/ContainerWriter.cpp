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

// ChunkReader reads a file's data in the pieces its chunks take.
class ChunkReader {
public:
    ChunkReader(InputFile& input, std::size_t nameBytes)
        : m_input(input), m_remaining(input.Size()), m_room(FirstChunkRoom(nameBytes)) {}

    // Read gives the next chunk's data, or false with errno in the input on failure.
    bool Read(Bytes& data) {
        const auto take = std::min<std::int64_t>(m_remaining, static_cast<std::int64_t>(m_room));
        data.resize(static_cast<std::size_t>(take));
        m_remaining -= take;
        m_room = kChunkBytes;
        return m_input.ReadExact(data);
    }

private:
    InputFile& m_input;
    std::int64_t m_remaining;
    std::size_t m_room;
};

// Discarder drops the chunks still in flight when a file ends early.
struct Discarder {
    ParallelCompressor& compressor;
    ~Discarder() { compressor.DiscardInFlight(); }
};

} // namespace

AppendResult AppendFileToContainer(const std::string& inputPath, const std::string& ansiStoredName,
                                   ByteSink& container, JobCipher& cipher, RandomSource& random,
                                   ParallelCompressor& compressor, FileJobObserver& observer) {
    AppendResult result;
    InputFile input;
    if (!input.Open(inputPath)) {
        return AppendResult{FileError::ReadFailed, 0, 0, input.LastError()};
    }
    const std::int64_t chunkCount = ChunkCount(input.Size(), ansiStoredName.size());
    observer.OnProgressRange(chunkCount + 1);
    observer.OnProgress(0);

    const Discarder discarder{compressor};
    ChunkReader reader(input, ansiStoredName.size());
    std::int64_t submitted = 0;
    Bytes plain = StreamHeader(ansiStoredName, random);
    for (std::int64_t chunk = 1; chunk <= chunkCount; ++chunk) {
        result.chunk = chunk;
        // Read ahead so that the workers compress later chunks while this one is enciphered.
        while (submitted < chunkCount && compressor.InFlight() < compressor.Depth()) {
            Bytes data;
            if (!reader.Read(data)) {
                return AppendResult{FileError::ReadFailed, 0, submitted + 1, input.LastError()};
            }
            compressor.Submit(std::move(data));
            ++submitted;
        }
        ParallelCompressor::CompressedChunk compressed = compressor.Next();
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
