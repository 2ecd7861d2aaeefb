#pragma once

#include "files/ContainerReader.h"
#include "files/DecryptJob.h"
#include "files/FileDecryptor.h"
#include "files/JobCipher.h"
#include "files/RecordPipeline.h"

#include <optional>
#include <string>

namespace kelvora {

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

// WalkResult is how a walk over the files ended: at the end, or on a read failure.
[[nodiscard]] FileJobResult WalkResult(const ContainerReader& reader,
                                       const std::string& containerPath);

// DisplayName turns a stored name into text for a person: UTF-8 with "/" between folders,
// control characters escaped (Printable).
[[nodiscard]] std::string DisplayName(const std::string& ansiName);

} // namespace kelvora
