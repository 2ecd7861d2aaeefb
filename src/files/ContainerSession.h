#pragma once

#include "common/Bytes.h"
#include "files/ContainerReader.h"
#include "files/FileDecryptor.h"
#include "files/FileJobObserver.h"
#include "files/JobCipher.h"
#include "files/RecordPipeline.h"

#include <cstddef>
#include <optional>
#include <string>

namespace kelvora {

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

// ContainerSession is what every reading job starts with: the container opened with its
// index, the cipher keyed, and the passphrase checked before anything else happens.
class ContainerSession {
public:
    explicit ContainerSession(FileJobObserver& observer)
        : m_cipher(observer), m_decryptor(m_reader, m_cipher, observer), m_observer(observer) {}

    // Open gives NothingToDo for a missing key, the reader's errors, or CheckPassphrase's.
    // Once the passphrase holds, the records are decoded ahead on workers threads.
    [[nodiscard]] FileJobResult Open(const DecryptRequest& request, DecodeWorkers workers = 0);

    // DecodeAhead starts decoding the records on worker threads (none when workers is 0).
    // A job that reads first records on its own first (to plan) starts it after that.
    void DecodeAhead(const std::string& containerPath, DecodeWorkers workers);

    ContainerReader& Reader() { return m_reader; }
    JobCipher& Cipher() { return m_cipher; }
    FileDecryptor& Decryptor() { return m_decryptor; }

private:
    ContainerReader m_reader;
    JobCipher m_cipher;
    FileDecryptor m_decryptor;
    FileJobObserver& m_observer;
    std::optional<RecordPipeline> m_pipeline; // last: its workers use the cipher
};

// DisplayName turns a stored name into text for a person: UTF-8 with "/" between folders,
// control characters escaped (Printable).
[[nodiscard]] std::string DisplayName(const std::string& ansiName);

} // namespace kelvora
