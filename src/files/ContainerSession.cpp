#include "files/ContainerSession.h"

#include "common/Ansi.h"
#include "common/Printable.h"
#include "files/ParallelCompressor.h"
#include "files/StoredName.h"

#include <algorithm>

namespace kelvora {

std::string DisplayName(const std::string& ansiName) {
    std::string name = Utf8FromAnsi(ansiName);
    std::replace(name.begin(), name.end(), kStoredSeparator, kPathSeparator);
    return Printable(name);
}

FileJobResult CheckPassphrase(ContainerReader& reader, JobCipher& cipher,
                              FileJobObserver& observer) {
    FileDecryptor decryptor(reader, cipher, observer);
    return ForEachFile(reader, [&](const FileRange& range) -> Result<FileStep, FileJobResult> {
        const Result<FirstRecord, FileFailure> first = decryptor.ReadFirst(range);
        if (!first) {
            return Fail(Failure(first.error(), range.index));
        }
        if (first->kind == FirstRecordKind::Inconsistent) {
            // A record that cannot even be read is damage; one that reads but does not make
            // sense is what a wrong passphrase gives.
            return Fail(Failure(FileError::WrongPassphrase, range.index, 1));
        }
        return first->kind == FirstRecordKind::Block ? FileStep::Stop : FileStep::Next;
    });
}

FileJobResult ContainerSession::Open(const DecryptRequest& request, DecodeWorkers workers) {
    if (request.key == nullptr || request.key->empty()) {
        return Failure(FileError::NothingToDo);
    }
    if (auto opened = m_reader.Open(request.containerPath); !opened) {
        return Failure(opened.error(), 0, request.containerPath);
    }
    if (!m_cipher.Cipher().EncryptPrepareKey(request.key->bytes())) {
        return Failure(FileError::NothingToDo);
    }
    FileJobResult checked = CheckPassphrase(m_reader, m_cipher, m_observer);
    if (checked.ok()) {
        DecodeAhead(request.containerPath, workers);
    }
    return checked;
}

void ContainerSession::DecodeAhead(const std::string& containerPath, DecodeWorkers workers) {
    const std::size_t count = workers.value_or(ParallelCompressor::WorkersForThisMachine());
    if (count > 0) {
        m_pipeline.emplace(containerPath, m_cipher.Cipher(), count);
        m_decryptor.UsePipeline(&*m_pipeline);
    }
}

} // namespace kelvora
