#include "files/RecordWalker.h"

#include "files/CompressBlock.h"
#include "files/ContainerFormat.h"
#include "files/ContainerIndex.h"
#include "files/FileDecryptor.h"
#include "files/JobCipher.h"
#include "files/LittleEndian.h"
#include "files/RecordPipeline.h"

#include <algorithm>
#include <array>
#include <vector>

namespace kelvora {

namespace {

// A first record's header with the longest name and a block header fits in these bytes.
constexpr std::size_t kFirstRecordHead =
    RoundUpToCipherBlock(kStreamHeaderBytes + kMaxStoredNameBytes + kBlockHeaderBytes);

using Chain = std::array<std::uint8_t, kCipherBlockBytes>;

// Lookahead buffers the stream so that a record can be looked at before it is taken.
class Lookahead {
public:
    explicit Lookahead(ByteSource& source) : m_source(source) {}

    // Ensure buffers up to n bytes and gives how many are buffered: fewer only at the end or
    // after a read failure.
    std::size_t Ensure(std::size_t n) {
        if (Available() >= n || m_ended) {
            return Available();
        }
        m_data.erase(m_data.begin(), m_data.begin() + static_cast<std::ptrdiff_t>(m_start));
        m_start = 0;
        const std::size_t had = m_data.size();
        m_data.resize(n);
        const Result<std::size_t, Errno> got = m_source.Read(std::span(m_data).subspan(had));
        if (!got) {
            m_failure = got.error();
        }
        const std::size_t kept = had + (got ? *got : 0);
        m_ended = kept < n;
        m_data.resize(kept);
        return kept;
    }
    std::span<const std::uint8_t> Bytes() const {
        return std::span<const std::uint8_t>(m_data).subspan(m_start);
    }
    std::size_t Available() const { return m_data.size() - m_start; }
    void Consume(std::size_t n) { m_start += std::min(n, Available()); }
    // ReadError is the errno of a read that failed, nothing while all reads worked.
    std::optional<Errno> ReadError() const { return m_failure; }

private:
    ByteSource& m_source;
    std::vector<std::uint8_t> m_data;
    std::size_t m_start = 0;
    bool m_ended = false;
    std::optional<Errno> m_failure;
};

class Walker {
public:
    Walker(ByteSource& source, RecordWalkHandler& handler, FileJobObserver& observer,
           bool keepGoing)
        : m_input(source), m_cipher(observer), m_handler(handler), m_observer(observer),
          m_keepGoing(keepGoing) {}

    WalkOutcome Run(const SecretBytes& key);

private:
    // PayloadHere gives the length of a well-formed record's payload that starts here and is
    // complete in the stream, or 0.
    std::size_t PayloadHere();
    bool FirstRecordHere(FirstRecord& first);
    bool ContinuationHere();
    // TakeRecord takes the record here: its payload deciphered from chain, chain moved on.
    Bytes TakeRecord(std::size_t payloadBytes, Chain& chain);
    bool IndexHere();
    bool WalkFile(const FirstRecord& first);
    bool Stop(FileJobResult result) {
        m_outcome.result = std::move(result);
        return false;
    }

    Lookahead m_input;
    JobCipher m_cipher;
    RecordWalkHandler& m_handler;
    FileJobObserver& m_observer;
    bool m_keepGoing;
    WalkOutcome m_outcome;
    std::vector<std::int64_t> m_byteCounts;
    Bytes m_restored;
    Chain m_chain{};
};

std::size_t Walker::PayloadHere() {
    if (m_input.Ensure(kRecordLengthBytes) < kRecordLengthBytes) {
        return 0;
    }
    const std::int64_t length = std::int64_t{GetInt32Le(m_input.Bytes().data())} + 1;
    if (length < 1 || length % static_cast<std::int64_t>(kCipherBlockBytes) != 0 ||
        length > static_cast<std::int64_t>(kMaxRecordPayload)) {
        return 0;
    }
    const auto payload = static_cast<std::size_t>(length);
    return m_input.Ensure(kRecordLengthBytes + payload) >= kRecordLengthBytes + payload ? payload
                                                                                        : 0;
}

bool Walker::FirstRecordHere(FirstRecord& first) {
    const std::size_t payload = PayloadHere();
    if (payload == 0) {
        return false;
    }
    // The header needs only the first blocks; an empty file's record is that short anyway.
    const std::size_t head = std::min(payload, kFirstRecordHead);
    Bytes plain(head);
    Chain zero{};
    m_cipher.Cipher().DecryptBlocksCbc(m_input.Bytes().data() + kRecordLengthBytes, plain.data(),
                                       head / kCipherBlockBytes, zero.data());
    first = InspectFirstRecord(plain);
    if (first.kind == FirstRecordKind::EmptyFile && payload != head) {
        first.kind = FirstRecordKind::Inconsistent;
    }
    return first.kind != FirstRecordKind::Inconsistent;
}

bool Walker::ContinuationHere() {
    const std::size_t payload = PayloadHere();
    if (payload == 0) {
        return false;
    }
    Chain chain = m_chain;
    Bytes block(kCipherBlockBytes);
    m_cipher.Cipher().DecryptBlocksCbc(m_input.Bytes().data() + kRecordLengthBytes, block.data(), 1,
                                       chain.data());
    const Result<std::int32_t, BlockError> plain = BlockPlainLength(block);
    return plain && *plain >= 1 && static_cast<std::size_t>(*plain) <= kChunkBytes;
}

Bytes Walker::TakeRecord(std::size_t payloadBytes, Chain& chain) {
    const auto payload = m_input.Bytes().subspan(kRecordLengthBytes, payloadBytes);
    Bytes plain(payloadBytes);
    m_cipher.Cipher().DecryptBlocksCbc(payload.data(), plain.data(),
                                       payloadBytes / kCipherBlockBytes, chain.data());
    m_input.Consume(kRecordLengthBytes + payloadBytes);
    const auto taken = static_cast<std::int64_t>(kRecordLengthBytes + payloadBytes);
    m_byteCounts.back() += taken;
    m_observer.OnBytesDone(taken);
    return plain;
}

bool Walker::IndexHere() {
    const std::size_t rest = m_input.Ensure(kMaxStreamIndexBytes + 1);
    if (rest == 0 || rest > kMaxStreamIndexBytes) {
        return false;
    }
    const auto bytes = m_input.Bytes();
    const auto tail = ParseIndexTail(bytes.last(std::min(bytes.size(), kIndexTailBytes)));
    if (!tail || tail->indexLength < 1 ||
        static_cast<std::size_t>(tail->indexLength) + tail->digitBytes != bytes.size()) {
        return false;
    }
    const auto counts = SplitIndex(bytes.first(static_cast<std::size_t>(tail->indexLength)));
    if (!counts) {
        return false;
    }
    std::vector<std::int64_t> listed;
    std::copy_if(counts->begin(), counts->end(), std::back_inserter(listed),
                 [](std::int64_t count) { return count != 0; });
    m_outcome.indexFiles = listed.size();
    m_outcome.index = listed == m_byteCounts ? IndexCheck::Matches : IndexCheck::Differs;
    m_input.Consume(bytes.size());
    return true;
}

bool Walker::WalkFile(const FirstRecord& first) {
    const std::size_t index = m_outcome.files++;
    m_byteCounts.push_back(0);
    ByteSink* sink = m_handler.OnFileStarted(index, first.ansiName);
    std::int64_t chunk = 1;
    std::int64_t damagedChunk = 0;
    FileError error = FileError::None;
    m_chain = {};
    Bytes plain = TakeRecord(PayloadHere(), m_chain);
    bool full = false;
    std::span<const std::uint8_t> block;
    std::size_t fullPlain = FirstChunkRoom(first.ansiName.size());
    if (first.kind == FirstRecordKind::Block) {
        block = std::span<const std::uint8_t>(plain).subspan(first.blockOffset);
    }
    while (true) {
        if (!block.empty() && error == FileError::None) {
            const Result<std::size_t, BlockError> restored =
                UncompressBlock(block, m_restored, static_cast<std::int32_t>(fullPlain));
            if (!restored) {
                error = FileError::DamagedData;
                damagedChunk = chunk;
            } else if (sink != nullptr) {
                if (auto written = sink->Write(std::span(m_restored).first(*restored)); !written) {
                    return Stop(Failure(FileError::WriteFailed, index, chunk, {}, written.error()));
                }
            }
            full = error == FileError::None && restored && *restored == fullPlain;
        }
        if (m_cipher.Cancelled()) {
            return Stop(Failure(FileError::Cancelled, index, chunk));
        }
        // A damaged file's further chunks are passed over as long as they chain on.
        const bool more = error == FileError::None ? full : m_keepGoing;
        if (!more || !ContinuationHere()) {
            break;
        }
        ++chunk;
        fullPlain = kChunkBytes;
        plain = TakeRecord(PayloadHere(), m_chain);
        block = plain;
    }
    if (error == FileError::None && full) {
        // A full last chunk must be followed by another file or the index; otherwise a
        // chunk may be missing (a container cut right behind it), and the file is not
        // claimed whole.
        FirstRecord next;
        if (!FirstRecordHere(next) && !IndexHere()) {
            error = FileError::DamagedData;
            damagedChunk = chunk + 1;
        }
    }
    if (error != FileError::None) {
        ++m_outcome.damagedFiles;
    }
    if (FileJobResult ended = m_handler.OnFileEnded(index, error, damagedChunk); !ended.ok()) {
        return Stop(std::move(ended));
    }
    if (error != FileError::None && !m_keepGoing) {
        return Stop(Failure(error, index, damagedChunk));
    }
    return true;
}

WalkOutcome Walker::Run(const SecretBytes& key) {
    if (key.empty() || !m_cipher.Cipher().EncryptPrepareKey(key.bytes())) {
        return WalkOutcome{Failure(FileError::NothingToDo)};
    }
    while (m_outcome.result.ok() && m_outcome.index == IndexCheck::Missing) {
        FirstRecord first;
        if (FirstRecordHere(first)) {
            if (!WalkFile(first)) {
                break;
            }
            continue;
        }
        if (m_input.ReadError()) {
            m_outcome.result = Failure(FileError::ReadFailed, 0, 0, {}, *m_input.ReadError());
            break;
        }
        if (m_input.Ensure(1) == 0 || IndexHere()) {
            break;
        }
        if (!m_keepGoing) {
            if (m_outcome.files == 0) {
                m_outcome.result = Failure(PayloadHere() > 0 ? FileError::WrongPassphrase
                                                             : FileError::NoUsableContent);
            }
            break;
        }
        // Neither a record nor the index: search on, a byte at a time.
        m_input.Consume(1);
        ++m_outcome.skippedBytes;
        if (m_outcome.skippedBytes % static_cast<std::int64_t>(kChunkBytes) == 0 &&
            m_cipher.Cancelled()) {
            m_outcome.result = Failure(FileError::Cancelled);
        }
    }
    if (m_outcome.result.ok() && m_input.ReadError()) {
        m_outcome.result = Failure(FileError::ReadFailed, 0, 0, {}, *m_input.ReadError());
    }
    return m_outcome;
}

} // namespace

WalkOutcome WalkRecords(ByteSource& source, const SecretBytes& key, RecordWalkHandler& handler,
                        FileJobObserver& observer, bool keepGoing) {
    return Walker(source, handler, observer, keepGoing).Run(key);
}

} // namespace kelvora
