#include "files/ContainerFormat.h"
#include "files/ContainerSession.h"
#include "files/DecryptJob.h"
#include "files/StoredName.h"

namespace kelvora {

namespace {

// The first record's header with the longest name and a block header fits in these bytes;
// an empty file's whole first record does too.
constexpr std::size_t kFirstRecordHead =
    RoundUpToCipherBlock(kStreamHeaderBytes + kLongestNameBytes + kBlockHeaderBytes);

struct SizeScan {
    FileError error = FileError::None;
    std::int64_t chunk = 0;
    std::int64_t plainBytes = 0;
};

// PlainBytesOfFile adds up the plain lengths in the headers of a file's blocks. Each later
// record's first block is deciphered alone, chained from the previous record's last block.
SizeScan PlainBytesOfFile(ContainerSession& session, const FileRange& range, std::string& name) {
    Bytes head;
    Bytes chain;
    const std::int64_t end = range.offset + range.byteCount;
    std::int64_t next =
        session.Reader().ReadRecordEdges(range.offset, end, kFirstRecordHead, head, chain);
    if (next < 0) {
        return SizeScan{FileError::DamagedData, 1, 0};
    }
    const Bytes plainHead = session.Cipher().Cipher().DecryptDo(head, false);
    const FirstRecord first = InspectFirstRecord(plainHead);
    if (first.kind == FirstRecordKind::Inconsistent) {
        return SizeScan{FileError::DamagedData, 1, 0};
    }
    name = first.ansiName;
    SizeScan scan;
    if (first.kind == FirstRecordKind::Block) {
        scan.plainBytes = BlockPlainLength(std::span(plainHead).subspan(first.blockOffset));
    }
    for (std::int64_t chunk = 2; next < end && first.kind == FirstRecordKind::Block; ++chunk) {
        Bytes lastBlock;
        next = session.Reader().ReadRecordEdges(next, end, kCipherBlockBytes, head, lastBlock);
        if (next < 0) {
            return SizeScan{FileError::DamagedData, chunk, 0};
        }
        session.Cipher().Cipher().DecryptBlocksCbc(head.data(), head.data(), 1, chain.data());
        const std::int32_t plain = BlockPlainLength(head);
        if (plain < 1 || static_cast<std::size_t>(plain) > kChunkBytes) {
            return SizeScan{FileError::DamagedData, chunk, 0};
        }
        scan.plainBytes += plain;
        chain = lastBlock;
    }
    if (next < end) {
        return SizeScan{FileError::DamagedData, 2, 0};
    }
    return scan;
}

} // namespace

FileJobResult ListContainer(const DecryptRequest& request, std::vector<ContainerEntry>& entries,
                            FileJobObserver& observer) {
    ContainerSession session(observer);
    if (FileJobResult opened = session.Open(request); !opened.ok()) {
        return opened;
    }
    ContainerReader& reader = session.Reader();
    reader.Rewind();
    for (FileRange range; reader.NextFile(range);) {
        if (range.byteCount == 0) {
            continue;
        }
        std::string name;
        const SizeScan scan = PlainBytesOfFile(session, range, name);
        if (scan.error != FileError::None) {
            return Failure(scan.error, range.index, scan.chunk, DisplayName(name));
        }
        entries.push_back(ContainerEntry{DisplayName(name), scan.plainBytes});
    }
    return WalkResult(reader, request.containerPath);
}

FileJobResult TestContainer(const DecryptRequest& request, FileJobObserver& observer,
                            DecodeWorkers workers) {
    ContainerSession session(observer);
    if (FileJobResult opened = session.Open(request, workers); !opened.ok()) {
        return opened;
    }
    ContainerReader& reader = session.Reader();
    observer.OnJobStarted(reader.FileCount(), reader.RecordsBytes());
    reader.Rewind();
    for (FileRange range; reader.NextFile(range);) {
        if (range.byteCount == 0) {
            continue;
        }
        const std::size_t i = range.index;
        FirstRecord first;
        FileError error = session.Decryptor().ReadFirst(range, first);
        const std::string shown = DisplayName(first.ansiName);
        if (error == FileError::None && first.kind != FirstRecordKind::Inconsistent) {
            observer.OnFileStarted(i, shown);
            if (!IsSafeStoredName(first.ansiName)) {
                return Failure(FileError::UnsafeName, i, 1, shown, 0);
            }
            NullSink nowhere;
            error = session.Decryptor().Restore(range, nowhere);
        } else if (error == FileError::None) {
            error = FileError::DamagedData;
        }
        if (error != FileError::None) {
            return Failure(error, i, session.Decryptor().FailedChunk(), shown, 0);
        }
        observer.OnFileDone(i, shown);
    }
    return WalkResult(reader, request.containerPath);
}

} // namespace kelvora
