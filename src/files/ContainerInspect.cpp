#include "files/ContainerInspect.h"

#include "files/CompressBlock.h"
#include "files/ContainerFormat.h"
#include "files/StoredName.h"

namespace kelvora {

namespace {

// The first record's header with the longest name and a block header fits in these bytes;
// an empty file's whole first record does too.
constexpr std::size_t kFirstRecordHead =
    RoundUpToCipherBlock(kStreamHeaderBytes + kLongestNameBytes + kBlockHeaderBytes);

// ListFile adds up the plain lengths in the headers of a file's blocks and gives the
// file as listed. Each later record's first block is deciphered alone, chained from the
// previous record's last block. A damaged record fails with its chunk, named when the name
// could be read.
Result<ContainerEntry, FileJobResult> ListFile(ContainerSession& session, const FileRange& range) {
    const std::int64_t end = range.offset + range.byteCount;
    const auto damaged = [&](std::int64_t chunk, const std::string& ansiName) {
        return Fail(Failure(FileError::DamagedData, range.index, chunk, DisplayName(ansiName)));
    };
    std::optional<RecordEdges> edges =
        session.Reader().ReadRecordEdges(range.offset, end, kFirstRecordHead);
    if (!edges) {
        return damaged(1, {});
    }
    const Bytes plainHead = session.Cipher().Cipher().DecryptDo(edges->first, false);
    const FirstRecord first = InspectFirstRecord(plainHead);
    if (first.kind == FirstRecordKind::Inconsistent) {
        return damaged(1, {});
    }
    ContainerEntry entry{DisplayName(first.ansiName), 0};
    if (first.kind == FirstRecordKind::Block) {
        entry.plainBytes =
            BlockPlainLength(std::span(plainHead).subspan(first.blockOffset)).value();
    }
    Bytes chain = edges->lastBlock;
    std::int64_t next = edges->end;
    for (std::int64_t chunk = 2; next < end && first.kind == FirstRecordKind::Block; ++chunk) {
        edges = session.Reader().ReadRecordEdges(next, end, kCipherBlockBytes);
        if (!edges) {
            return damaged(chunk, first.ansiName);
        }
        Bytes& head = edges->first;
        session.Cipher().Cipher().DecryptBlocksCbc(head.data(), head.data(), 1, chain.data());
        const Result<std::int32_t, BlockError> plain = BlockPlainLength(head);
        if (!plain || *plain < 1 || static_cast<std::size_t>(*plain) > kChunkBytes) {
            return damaged(chunk, first.ansiName);
        }
        entry.plainBytes += *plain;
        chain = edges->lastBlock;
        next = edges->end;
    }
    if (next < end) {
        return damaged(2, first.ansiName);
    }
    return entry;
}

} // namespace

Result<std::vector<ContainerEntry>, FileJobResult> ListContainer(const DecryptRequest& request,
                                                                 FileJobObserver& observer) {
    ContainerSession session(observer);
    if (FileJobResult opened = session.Open(request); !opened.ok()) {
        return Fail(std::move(opened));
    }
    std::vector<ContainerEntry> entries;
    FileJobResult walked = ForEachFile(
        session.Reader(), [&](const FileRange& range) -> Result<FileStep, FileJobResult> {
            Result<ContainerEntry, FileJobResult> entry = ListFile(session, range);
            if (!entry) {
                return Fail(entry.error());
            }
            entries.push_back(std::move(entry).value());
            return FileStep::Next;
        });
    if (!walked.ok()) {
        return Fail(std::move(walked));
    }
    return entries;
}

FileJobResult TestContainer(const DecryptRequest& request, FileJobObserver& observer,
                            DecodeWorkers workers) {
    ContainerSession session(observer);
    if (FileJobResult opened = session.Open(request, workers); !opened.ok()) {
        return opened;
    }
    ContainerReader& reader = session.Reader();
    observer.OnJobStarted(reader.FileCount(), reader.RecordsBytes());
    return ForEachFile(reader, [&](const FileRange& range) -> Result<FileStep, FileJobResult> {
        const std::size_t i = range.index;
        const Result<FirstRecord, FileFailure> first = session.Decryptor().ReadFirst(range);
        if (!first) {
            return Fail(Failure(first.error().error, i, 1, {}, 0));
        }
        const std::string shown = DisplayName(first->ansiName);
        if (first->kind == FirstRecordKind::Inconsistent) {
            return Fail(Failure(FileError::DamagedData, i, 1, shown, 0));
        }
        observer.OnFileStarted(i, shown);
        if (!IsSafeStoredName(first->ansiName)) {
            return Fail(Failure(FileError::UnsafeName, i, 1, shown, 0));
        }
        NullSink nowhere;
        if (auto restored = session.Decryptor().Restore(range, nowhere); !restored) {
            return Fail(Failure(restored.error().error, i, restored.error().chunk, shown, 0));
        }
        observer.OnFileDone(i, shown);
        return FileStep::Next;
    });
}

} // namespace kelvora
