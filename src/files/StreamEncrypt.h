#pragma once

#include "common/Bytes.h"
#include "common/Random.h"
#include "files/ByteSource.h"
#include "files/FileError.h"
#include "files/FileIo.h"
#include "files/FileJobObserver.h"

#include <string>

namespace kelvora {

// StreamEncryptRequest is one stream of unknown length (standard input) to store as one file
// under ansiStoredName.
struct StreamEncryptRequest {
    ByteSource* source = nullptr;
    std::string ansiStoredName;
    const SecretBytes* key = nullptr;
    RandomSource* random = nullptr;
};

// EncryptStream writes a whole container holding the stream as one file to sink: its
// records, read to the stream's end a chunk at a time, then the index. A stream that ends
// exactly at a chunk's end ends its file with that full chunk. Memory stays at two chunks.
// A stored name that is too long or could not be restored safely gives NameTooLong or
// UnsafeName before anything is written.
[[nodiscard]] FileJobResult EncryptStream(const StreamEncryptRequest& request, ByteSink& sink,
                                          FileJobObserver& observer);

} // namespace kelvora
