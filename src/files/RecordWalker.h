#pragma once

#include "common/Bytes.h"
#include "files/ByteSource.h"
#include "files/FileError.h"
#include "files/FileIo.h"
#include "files/FileJobObserver.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kelvora {

// RecordWalkHandler takes the files a walk over a container's records finds, in order.
class RecordWalkHandler {
public:
    virtual ~RecordWalkHandler() = default;
    // OnFileStarted: a file's first record deciphered to a consistent header. It gives the
    // sink for the file's bytes, or null to pass over them.
    virtual ByteSink* OnFileStarted(std::size_t index, const std::string& ansiName) = 0;
    // OnFileEnded: the file's records are read; error is None, or DamagedData with the
    // first damaged chunk (the sink then holds the intact leading chunks). A result that is
    // not ok ends the walk with it.
    virtual FileJobResult OnFileEnded(std::size_t index, FileError error, std::int64_t chunk) = 0;
};

// How the index at the end compared with the records walked.
enum class IndexCheck {
    Matches, // every file's byte count in the index equals what was walked
    Differs, // an index is there, but its counts are not what was walked
    Missing, // no index could be read behind the records (lost, cut off or damaged)
};

// WalkOutcome is how a walk ended: result holds what stopped it (not ok only then).
struct WalkOutcome {
    FileJobResult result;
    std::size_t files = 0;         // files found
    std::size_t damagedFiles = 0;  // of these, files with a damaged or missing chunk
    std::size_t indexFiles = 0;    // files the index counts, when it was read
    std::int64_t skippedBytes = 0; // bytes passed over that belong to no readable record
    IndexCheck index = IndexCheck::Missing;
};

// WalkRecords reads a container front to back without its index, as a pipe gives it: a
// file's records end at the first chunk that is shorter than a full one; after a full one,
// the next record continues the file when its first block, deciphered with the running
// chain, begins with the block magic, and starts a new file when it deciphers with a zero
// start into a header with the block magic behind the name; a full chunk followed by
// neither counts as a missing chunk, never as a whole file. What follows the last file is
// read as the index and compared with the byte counts walked. Memory stays bounded by one
// record (and the index, up to kMaxStreamIndexBytes).
//
// Without keepGoing the first damaged chunk ends the walk with DamagedData, a first record
// that does not decipher gives WrongPassphrase before any file is started, and bytes that
// are neither a record nor an index give NoUsableContent before any file is started. With
// keepGoing a damaged file is reported to the handler and the walk goes on: the damaged
// file's further chunks are passed over, and where no record can be read it searches byte
// by byte for the next file's first record.
[[nodiscard]] WalkOutcome WalkRecords(ByteSource& source, const SecretBytes& key,
                                      RecordWalkHandler& handler, FileJobObserver& observer,
                                      bool keepGoing);

// The largest index a walk reads behind the records.
inline constexpr std::size_t kMaxStreamIndexBytes = 16u << 20;

} // namespace kelvora
