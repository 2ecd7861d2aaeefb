#pragma once

#include "common/Bytes.h"
#include "common/Random.h"
#include "files/FileError.h"
#include "files/FileIo.h"
#include "files/FileJobObserver.h"
#include "files/InputList.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kelvora {

// EncryptRequest is everything an encrypt run needs: the list entries in order, the output
// container's path, the 32-byte key (MakePassphraseKey of the passphrase) and the source of
// the salts.
struct EncryptRequest {
    std::vector<InputEntry> entries;
    std::string outputPath;
    const SecretBytes* key = nullptr;
    RandomSource* random = nullptr;
    // WrapOutput lets tests put a failing sink in front of the container file.
    std::function<std::unique_ptr<ByteSink>(ByteSink&)> wrapOutput;
    // passedOver names what the folder walk could not list (InputList::PassedOver); the
    // job reports it among the entries it left out.
    std::vector<OmittedEntry> passedOver;
};

// EncryptFiles writes every entry into one container: the records of each file in list
// order, then the index and its length. Stored names are checked before anything is
// written (too long, or one that could not be restored safely). An existing output is
// replaced only when the observer agrees, and only once the new container is complete; a
// failed or cancelled run leaves no container behind. Input files are only read.
[[nodiscard]] FileJobResult EncryptFiles(const EncryptRequest& request, FileJobObserver& observer);

// EncryptFilesTo writes the same container straight to sink (standard output), records
// then index, without seeking; the request's output path only names it in errors. What was
// written before a failure stays written.
[[nodiscard]] FileJobResult EncryptFilesTo(const EncryptRequest& request, ByteSink& sink,
                                           FileJobObserver& observer);

} // namespace kelvora
