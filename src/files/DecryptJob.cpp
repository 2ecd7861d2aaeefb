#include "files/DecryptJob.h"

#include "common/Ansi.h"
#include "common/Printable.h"
#include "files/ContainerSession.h"
#include "files/FileIo.h"
#include "files/OutputFolder.h"
#include "files/ParallelCompressor.h"
#include "files/RestorePlan.h"
#include "files/StoredName.h"

#include <algorithm>
#include <cerrno>

namespace kelvora {

std::string DisplayName(const std::string& ansiName) {
    std::string name = Utf8FromAnsi(ansiName);
    std::replace(name.begin(), name.end(), kStoredSeparator, kPathSeparator);
    return Printable(name);
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

FileJobResult ContainerSession::Open(const DecryptRequest& request, DecodeWorkers workers) {
    if (request.key == nullptr || request.key->empty()) {
        return Failure(FileError::NothingToDo);
    }
    if (const FileError error = m_reader.Open(request.containerPath); error != FileError::None) {
        return Failure(error, 0, 0, request.containerPath, m_reader.LastError());
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

namespace {

// OpenTarget prepares the unfinished output file of a planned file.
bool OpenTarget(const OutputFolder& folder, const PlannedFile& file, TempOutputFile& output,
                int* error) {
    if (!file.elsewhere.empty()) {
        const bool created = output.Create(file.elsewhere);
        *error = output.LastError();
        return created;
    }
    UniqueFd parent = folder.OpenParent(file.relative, error);
    if (!parent.Valid()) {
        return false;
    }
    const bool created = output.CreateIn(std::move(parent), LeafOf(file.relative));
    *error = output.LastError();
    return created;
}

// RestoreFile writes one planned file. A link that appeared on its way since planning
// turns the file into one left out rather than ending the run.
FileJobResult RestoreFile(ContainerSession& session, const OutputFolder& folder,
                          const std::string& root, PlannedFile& file, FileJobObserver& observer) {
    const std::size_t index = file.range.index;
    FirstRecord first;
    if (FileError error = session.Decryptor().ReadFirst(file.range, first);
        error != FileError::None) {
        return Failure(error, index, 1);
    }
    observer.OnFileStarted(index, file.shown);
    const std::string path = file.elsewhere.empty() ? root + "/" + file.relative : file.elsewhere;
    int openError = 0;
    TempOutputFile output;
    if (!OpenTarget(folder, file, output, &openError)) {
        if (openError == ELOOP || openError == ENOTDIR) {
            file.action = PlannedFile::Action::LeaveOut;
            file.why = FileError::LinkInPath;
            file.systemError = openError;
            return {};
        }
        return Failure(FileError::WriteFailed, index, 0, path, openError);
    }
    const FileError error = session.Decryptor().Restore(file.range, output);
    if (error != FileError::None) {
        return Failure(error, index, session.Decryptor().FailedChunk(), file.shown,
                       output.LastError());
    }
    if (!output.Commit(file.replace)) {
        return Failure(FileError::WriteFailed, index, 0, path, output.LastError());
    }
    observer.OnFileDone(index, path);
    return {};
}

// LeaveOut names a file the run does not restore.
void LeaveOut(const PlannedFile& file, std::vector<OmittedEntry>& omitted,
              FileJobObserver& observer) {
    omitted.push_back(OmittedEntry{file.shown, file.why, file.systemError});
    observer.OnFileRefused(file.range.index, file.shown, file.why);
}

FileJobResult WithOmitted(FileJobResult result, std::vector<OmittedEntry> omitted) {
    result.omitted = std::move(omitted);
    return result;
}

} // namespace

namespace {

// FirstFreeNumberedName is path as "name (n).ext" with the first n from 2 that is free.
std::string FirstFreeNumberedName(const std::string& path) {
    for (int n = 2;; ++n) {
        if (std::string candidate = NumberedName(path, n); !PathExists(candidate)) {
            return candidate;
        }
    }
}

} // namespace

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
        case ExistingFileAnswer::Rename:
            path = FirstFreeNumberedName(path);
            return Target::Write;
        case ExistingFileAnswer::Skip:
            return Target::Skip;
        case ExistingFileAnswer::Cancel:
            return Target::Cancel;
        }
    }
    return Target::Write;
}

FileJobResult DecryptContainer(const DecryptRequest& request, FileJobObserver& observer,
                               DecodeWorkers workers) {
    if (request.outputFolder.empty()) {
        return Failure(FileError::NothingToDo);
    }
    ContainerSession session(observer);
    // Planning reads every first record serially; the workers start once the plan stands.
    if (FileJobResult opened = session.Open(request, DecodeWorkers{0}); !opened.ok()) {
        return opened;
    }
    ContainerReader& reader = session.Reader();
    observer.OnJobStarted(reader.FileCount(), reader.RecordsBytes());
    OutputFolder folder;
    if (int error = 0; !folder.Open(request.outputFolder, &error)) {
        return Failure(FileError::WriteFailed, 0, 0, request.outputFolder, error);
    }
    RestorePlan plan = PlanRestore(session, folder, request.outputFolder, observer);
    if (!plan.failure.ok()) {
        return plan.failure;
    }
    session.DecodeAhead(request.containerPath, workers);
    std::vector<OmittedEntry> omitted;
    if (plan.cancelled) {
        for (const std::string& path : plan.conflicts) {
            omitted.push_back(OmittedEntry{path, FileError::OutputExists, 0});
        }
        return WithOmitted(Failure(FileError::OutputExists), std::move(omitted));
    }
    for (PlannedFile& file : plan.files) {
        if (file.action == PlannedFile::Action::Write) {
            FileJobResult result =
                RestoreFile(session, folder, request.outputFolder, file, observer);
            if (!result.ok()) {
                return WithOmitted(std::move(result), std::move(omitted));
            }
        }
        if (file.action == PlannedFile::Action::Skip) {
            observer.OnFileSkipped(file.range.index, request.outputFolder + "/" + file.relative);
        } else if (file.action == PlannedFile::Action::LeaveOut) {
            LeaveOut(file, omitted, observer);
        }
    }
    return omitted.empty() ? FileJobResult{}
                           : WithOmitted(Failure(FileError::EntriesLeftOut), std::move(omitted));
}

} // namespace kelvora
