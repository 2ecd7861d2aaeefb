#pragma once

#include "common/Result.h"
#include "files/ContainerSession.h"
#include "files/FileError.h"
#include "files/FileJobObserver.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kelvora {

// ContainerEntry is one file as `list` shows it: the stored name with "/" between folders
// (UTF-8) and the plain size from its blocks' headers.
struct ContainerEntry {
    std::string name;
    std::int64_t plainBytes = 0;
};

// ListContainer reads every file's name and size, deciphering only the first blocks of
// each record. It writes nothing. Errors as CheckPassphrase, or DamagedData.
[[nodiscard]] Result<std::vector<ContainerEntry>, FileJobResult>
ListContainer(const DecryptRequest& request, FileJobObserver& observer);

// TestContainer decrypts and decompresses everything and writes nothing. It gives the
// first file and chunk that is damaged, or WrongPassphrase, or UnsafeName for a name that
// could not be restored.
[[nodiscard]] FileJobResult TestContainer(const DecryptRequest& request, FileJobObserver& observer,
                                          DecodeWorkers workers = std::nullopt);

} // namespace kelvora
