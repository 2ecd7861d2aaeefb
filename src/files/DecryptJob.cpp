#include "files/DecryptJob.h"

#include "common/Ansi.h"
#include "files/ContainerSession.h"
#include "files/FileIo.h"
#include "files/StoredName.h"

#include <algorithm>

namespace kelvora {

std::string DisplayName(const std::string& ansiName) {
    std::string name = Utf8FromAnsi(ansiName);
    std::replace(name.begin(), name.end(), kStoredSeparator, kPathSeparator);
    return name;
}

FileJobResult WalkResult(const ContainerReader& reader, const std::string& containerPath) {
    return reader.WalkFailed()
               ? Failure(FileError::ReadFailed, 0, 0, containerPath, reader.LastError())
               : FileJobResult{};
}

FileJobResult CheckPassphrase(ContainerReader& reader, JobCipher& cipher,
                              FileJobObserver& observer) {
    FileDecryptor decryptor(reader, cipher, observer);
    reader.Rewind();
    for (FileRange range; reader.NextFile(range);) {
        if (range.byteCount == 0) {
            continue;
        }
        FirstRecord first;
        const FileError error = decryptor.ReadFirst(range, first);
        if (error == FileError::DamagedData || first.kind == FirstRecordKind::Inconsistent) {
            // A record that cannot even be read is damage; one that reads but does not make
            // sense is what a wrong passphrase gives.
            return Failure(error == FileError::None ? FileError::WrongPassphrase : error,
                           range.index, 1);
        }
        if (error != FileError::None) {
            return Failure(error, range.index, 1);
        }
        if (first.kind == FirstRecordKind::Block) {
            return {};
        }
    }
    return WalkResult(reader, {});
}

FileJobResult ContainerSession::Open(const DecryptRequest& request) {
    if (request.key == nullptr || request.key->empty()) {
        return Failure(FileError::NothingToDo);
    }
    if (const FileError error = m_reader.Open(request.containerPath); error != FileError::None) {
        return Failure(error, 0, 0, request.containerPath, m_reader.LastError());
    }
    if (!m_cipher.Cipher().EncryptPrepareKey(request.key->bytes())) {
        return Failure(FileError::NothingToDo);
    }
    return CheckPassphrase(m_reader, m_cipher, m_observer);
}

Target ChooseTarget(std::string& path, bool& replace, FileJobObserver& observer) {
    replace = false;
    while (PathExists(path)) {
        switch (observer.AskExistingFile(path)) {
        case ExistingFileAnswer::Overwrite:
            replace = true;
            return Target::Write;
        case ExistingFileAnswer::AnotherName:
            if (auto other = observer.AskAnotherName(path); other && !other->empty()) {
                path = *other;
                continue;
            }
            return Target::Skip;
        case ExistingFileAnswer::Skip:
            return Target::Skip;
        case ExistingFileAnswer::Cancel:
            return Target::Cancel;
        }
    }
    return Target::Write;
}

namespace {

FileJobResult RestoreFile(ContainerSession& session, const FileRange& range,
                          const std::string& folder, FileJobObserver& observer, bool& refused) {
    const std::size_t index = range.index;
    FirstRecord first;
    if (FileError error = session.Decryptor().ReadFirst(range, first); error != FileError::None) {
        return Failure(error, index, 1);
    }
    const std::string shown = DisplayName(first.ansiName);
    observer.OnFileStarted(index, shown);
    const auto relative = RelativePathFromStoredName(first.ansiName);
    if (!relative) {
        refused = true;
        observer.OnFileRefused(index, shown, FileError::UnsafeName);
        return {};
    }
    std::string path = folder + "/" + *relative;
    bool replace = false;
    const Target target = ChooseTarget(path, replace, observer);
    if (target != Target::Write) {
        return target == Target::Cancel ? Failure(FileError::Cancelled, index, 0, shown, 0)
                                        : FileJobResult{};
    }
    int folderError = 0;
    TempOutputFile output;
    if (!MakeFoldersFor(folder, *relative, &folderError) || !output.Create(path)) {
        return Failure(FileError::WriteFailed, index, 0, path,
                       folderError != 0 ? folderError : output.LastError());
    }
    const FileError error = session.Decryptor().Restore(range, output);
    if (error != FileError::None) {
        return Failure(error, index, session.Decryptor().FailedChunk(), shown, output.LastError());
    }
    if (!output.Commit(replace)) {
        return Failure(FileError::WriteFailed, index, 0, path, output.LastError());
    }
    observer.OnFileDone(index, path);
    return {};
}

} // namespace

FileJobResult DecryptContainer(const DecryptRequest& request, FileJobObserver& observer) {
    if (request.outputFolder.empty()) {
        return Failure(FileError::NothingToDo);
    }
    ContainerSession session(observer);
    if (FileJobResult opened = session.Open(request); !opened.ok()) {
        return opened;
    }
    ContainerReader& reader = session.Reader();
    observer.OnJobStarted(reader.FileCount(), reader.RecordsBytes());
    bool refused = false;
    reader.Rewind();
    for (FileRange range; reader.NextFile(range);) {
        if (range.byteCount == 0) {
            continue;
        }
        if (FileJobResult result =
                RestoreFile(session, range, request.outputFolder, observer, refused);
            !result.ok()) {
            return result;
        }
    }
    if (FileJobResult walked = WalkResult(reader, request.containerPath); !walked.ok()) {
        return walked;
    }
    return refused ? Failure(FileError::UnsafeName) : FileJobResult{};
}

} // namespace kelvora
