#include "files/StreamEncrypt.h"

#include "files/CompressBlock.h"
#include "files/ContainerFormat.h"
#include "files/ContainerIndex.h"
#include "files/ContainerWriter.h"
#include "files/JobCipher.h"
#include "files/StoredName.h"

namespace kelvora {

FileJobResult EncryptStream(const StreamEncryptRequest& request, ByteSink& sink,
                            FileJobObserver& observer) {
    const std::string& name = request.ansiStoredName;
    if (request.source == nullptr || request.key == nullptr || request.key->empty() ||
        request.random == nullptr) {
        return Failure(FileError::NothingToDo);
    }
    if (name.size() > kMaxStoredNameBytes) {
        return Failure(FileError::NameTooLong, 0, 0, name, 0);
    }
    if (!IsSafeStoredName(name)) {
        return Failure(FileError::UnsafeName, 0, 0, name, 0);
    }
    JobCipher cipher(observer);
    if (!cipher.Cipher().EncryptPrepareKey(request.key->bytes())) {
        return Failure(FileError::NothingToDo);
    }
    observer.OnJobStarted(1, 0);
    observer.OnFileStarted(0, name);
    Bytes data(FirstChunkRoom(name.size()));
    Bytes block;
    std::int64_t byteCount = 0;
    for (std::int64_t chunk = 1;; ++chunk) {
        const std::size_t wanted = data.size();
        const Result<std::size_t, Errno> got = request.source->Read(data);
        if (!got) {
            return Failure(FileError::ReadFailed, 0, chunk, {}, got.error());
        }
        if (*got == 0 && chunk > 1) {
            break; // the stream ended exactly with the last full chunk
        }
        data.resize(*got);
        Bytes plain = chunk == 1 ? StreamHeader(name, *request.random) : Bytes();
        if (!data.empty()) {
            if (!CompressBlock(data, block)) {
                return Failure(FileError::CompressFailed, 0, chunk, name, 0);
            }
            if (chunk == 1) {
                plain[kTailByteOffset] = static_cast<std::uint8_t>(block.size() % 32);
            }
            plain.insert(plain.end(), block.begin(), block.end());
        }
        const Bytes payload = cipher.Cipher().EncryptDo(plain, chunk > 1);
        if (payload.empty() || cipher.Cancelled()) {
            return Failure(FileError::Cancelled, 0, chunk);
        }
        if (auto written = WriteRecord(sink, payload); !written) {
            return Failure(FileError::WriteFailed, 0, chunk, {}, written.error());
        }
        byteCount += static_cast<std::int64_t>(payload.size() + kRecordLengthBytes);
        observer.OnBytesDone(static_cast<std::int64_t>(*got));
        if (data.size() < wanted) {
            break;
        }
        data.resize(kChunkBytes);
    }
    const std::int64_t counts[] = {byteCount};
    if (auto written = sink.Write(EncodeIndex(counts)); !written) {
        return Failure(FileError::WriteFailed, 0, 0, {}, written.error());
    }
    observer.OnFileDone(0, name);
    return {};
}

} // namespace kelvora
