#include "files/DecryptJob.h"

#include "common/Ansi.h"
#include "files/ContainerSession.h"
#include "files/FileIo.h"
#include "files/OutputFolder.h"
#include "files/StoredName.h"

#include <algorithm>
#include <cerrno>

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

namespace {

enum class Target { Write, Skip, Cancel };

// ChooseTarget settles where a file goes when its path is taken already.
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

// Restore is what one restore run shares: the output folder held open and what was left out.
struct Restore {
    ContainerSession& session;
    OutputFolder& folder;
    FileJobObserver& observer;
    std::vector<OmittedEntry> omitted;

    void LeaveOut(std::size_t index, const std::string& shown, FileError why, int error) {
        omitted.push_back(OmittedEntry{shown, why, error});
        observer.OnFileRefused(index, shown, why);
    }
};

// OpenTarget prepares the unfinished output file for relative (or for another path the
// person chose instead).
bool OpenTarget(Restore& run, const std::string& relative, const std::string& path,
                bool chosenElsewhere, TempOutputFile& output, int* error) {
    if (chosenElsewhere) {
        const bool created = output.Create(path);
        *error = output.LastError();
        return created;
    }
    UniqueFd parent = run.folder.OpenParent(relative, error);
    if (!parent.Valid()) {
        return false;
    }
    const bool created = output.CreateIn(std::move(parent), LeafOf(relative));
    *error = output.LastError();
    return created;
}

FileJobResult RestoreFile(Restore& run, const FileRange& range, const std::string& root) {
    const std::size_t index = range.index;
    FirstRecord first;
    if (FileError error = run.session.Decryptor().ReadFirst(range, first);
        error != FileError::None) {
        return Failure(error, index, 1);
    }
    const std::string shown = DisplayName(first.ansiName);
    run.observer.OnFileStarted(index, shown);
    const auto relative = RelativePathFromStoredName(first.ansiName);
    if (!relative) {
        run.LeaveOut(index, shown, FileError::UnsafeName, 0);
        return {};
    }
    const Spot spot = run.folder.Look(*relative);
    if (spot.state == SpotState::Blocked) {
        run.LeaveOut(index, shown, FileError::LinkInPath, spot.error);
        return {};
    }
    std::string path = root + "/" + *relative;
    bool replace = false;
    const Target target = ChooseTarget(path, replace, run.observer);
    if (target != Target::Write) {
        return target == Target::Cancel ? Failure(FileError::Cancelled, index, 0, shown, 0)
                                        : FileJobResult{};
    }
    int openError = 0;
    TempOutputFile output;
    if (!OpenTarget(run, *relative, path, path != root + "/" + *relative, output, &openError)) {
        if (openError == ELOOP || openError == ENOTDIR) {
            run.LeaveOut(index, shown, FileError::LinkInPath, openError);
            return {};
        }
        return Failure(FileError::WriteFailed, index, 0, path, openError);
    }
    const FileError error = run.session.Decryptor().Restore(range, output);
    if (error != FileError::None) {
        return Failure(error, index, run.session.Decryptor().FailedChunk(), shown,
                       output.LastError());
    }
    if (!output.Commit(replace)) {
        return Failure(FileError::WriteFailed, index, 0, path, output.LastError());
    }
    run.observer.OnFileDone(index, path);
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
    OutputFolder folder;
    if (int error = 0; !folder.Open(request.outputFolder, &error)) {
        return Failure(FileError::WriteFailed, 0, 0, request.outputFolder, error);
    }
    Restore run{session, folder, observer, {}};
    reader.Rewind();
    for (FileRange range; reader.NextFile(range);) {
        if (range.byteCount == 0) {
            continue;
        }
        if (FileJobResult result = RestoreFile(run, range, request.outputFolder); !result.ok()) {
            result.omitted = std::move(run.omitted);
            return result;
        }
    }
    if (FileJobResult walked = WalkResult(reader, request.containerPath); !walked.ok()) {
        return walked;
    }
    if (run.omitted.empty()) {
        return {};
    }
    FileJobResult leftOut = Failure(FileError::EntriesLeftOut);
    leftOut.omitted = std::move(run.omitted);
    return leftOut;
}

} // namespace kelvora
