#pragma once

#include "common/Bytes.h"
#include "files/FileError.h"
#include "files/FileJobObserver.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kelvora {

class ContainerReader;
class JobCipher;

// DecryptRequest names the container, the folder to restore into and the 32-byte key
// (MakePassphraseKey of the passphrase, or BuildKey's in shared-security mode).
struct DecryptRequest {
    std::string containerPath;
    std::string outputFolder;
    const SecretBytes* key = nullptr;
};

// DecodeWorkers is how many worker threads decipher and decompress records ahead of the
// reading jobs' writing: unset means one per processor, 0 does all work on the calling
// thread. The results are the same either way.
using DecodeWorkers = std::optional<std::size_t>;

// CheckPassphrase decrypts first records, in index order, until one holds a compressed block
// (files with a byte count of 0 are passed over; empty files only count as weak evidence).
// It gives WrongPassphrase when a first record is inconsistent, before anything is written.
[[nodiscard]] FileJobResult CheckPassphrase(ContainerReader& reader, JobCipher& cipher,
                                            FileJobObserver& observer);

// Target is where a restored file goes when its path is taken already.
enum class Target { Write, Skip, Cancel };

// ChooseTarget asks the observer about an existing path until the answer settles it: path
// may change (another name), replace says whether the existing file is to be replaced.
[[nodiscard]] Target ChooseTarget(std::string& path, bool& replace, FileJobObserver& observer);

// DecryptContainer restores every file of the container below the output folder, creating
// its folders. The passphrase is checked first, so a wrong one writes nothing. A stored name
// that would leave the folder is refused (OnFileRefused) and nothing is written for it; the
// run goes on and ends with UnsafeName. Files with a byte count of 0 are skipped. An
// existing file is handled as the observer answers. Each file is written under a temporary
// name in its folder and appears under its own name only when complete. Other errors end
// the run; files restored before stay.
[[nodiscard]] FileJobResult DecryptContainer(const DecryptRequest& request,
                                             FileJobObserver& observer,
                                             DecodeWorkers workers = std::nullopt);

// ContainerEntry is one file as `list` shows it: the stored name with "/" between folders
// (UTF-8) and the plain size from its blocks' headers.
struct ContainerEntry {
    std::string name;
    std::int64_t plainBytes = 0;
};

// ListContainer reads every file's name and size, deciphering only the first blocks of
// each record. It writes nothing. Errors as CheckPassphrase, or DamagedData.
[[nodiscard]] FileJobResult ListContainer(const DecryptRequest& request,
                                          std::vector<ContainerEntry>& entries,
                                          FileJobObserver& observer);

// TestContainer decrypts and decompresses everything and writes nothing. It gives the
// first file and chunk that is damaged, or WrongPassphrase, or UnsafeName for a name that
// could not be restored.
[[nodiscard]] FileJobResult TestContainer(const DecryptRequest& request, FileJobObserver& observer,
                                          DecodeWorkers workers = std::nullopt);

} // namespace kelvora
