#include "files/DecryptJob.h"

#include "files/FileIo.h"
#include "files/OutputFolder.h"
#include "files/RestorePlan.h"

#include <cerrno>

namespace kelvora {

namespace {

// OpenTarget prepares the unfinished output file of a planned file.
Result<void, Errno> OpenTarget(const OutputFolder& folder, const PlannedFile& file,
                               TempOutputFile& output) {
    if (!file.elsewhere.empty()) {
        return output.Create(file.elsewhere);
    }
    Result<UniqueFd, Errno> parent = folder.OpenParent(file.relative);
    if (!parent) {
        return Fail(parent.error());
    }
    return output.CreateIn(std::move(parent).value(), LeafOf(file.relative));
}

// RestoreFile writes one planned file. A link that appeared on its way since planning
// turns the file into one left out rather than ending the run.
FileJobResult RestoreFile(ContainerSession& session, const OutputFolder& folder,
                          const std::string& root, PlannedFile& file, FileJobObserver& observer) {
    const std::size_t index = file.range.index;
    if (auto first = session.Decryptor().ReadFirst(file.range); !first) {
        return Failure(first.error().error, index, 1);
    }
    observer.OnFileStarted(index, file.shown);
    const std::string path = file.elsewhere.empty() ? root + "/" + file.relative : file.elsewhere;
    TempOutputFile output;
    if (auto opened = OpenTarget(folder, file, output); !opened) {
        if (opened.error() == ELOOP || opened.error() == ENOTDIR) {
            file.action = PlannedFile::Action::LeaveOut;
            file.why = FileError::LinkInPath;
            file.systemError = opened.error();
            return {};
        }
        return Failure(FileError::WriteFailed, index, 0, path, opened.error());
    }
    if (auto restored = session.Decryptor().Restore(file.range, output); !restored) {
        return Failure(restored.error(), index, file.shown);
    }
    if (auto committed = output.Commit(file.replace); !committed) {
        return Failure(FileError::WriteFailed, index, 0, path, committed.error());
    }
    observer.OnFileDone(index, path);
    return {};
}

// LeaveOut names a file the run does not restore.
void LeaveOut(const PlannedFile& file, std::vector<OmittedEntry>& omitted,
              FileJobObserver& observer) {
    omitted.push_back(OmittedEntry{file.shown, file.why, file.systemError});
    observer.OnFileRefused(file.range.index, omitted.back());
}

FileJobResult WithOmitted(FileJobResult result, std::vector<OmittedEntry> omitted) {
    result.omitted = std::move(omitted);
    return result;
}

} // namespace

namespace {

// FirstFreeNumberedName is path as "name (n).ext" with the first n from 2 that is free.
std::string FirstFreeNumberedName(const std::string& path, const PathTaken& taken) {
    for (int n = 2;; ++n) {
        if (std::string candidate = NumberedName(path, n); !taken(candidate)) {
            return candidate;
        }
    }
}

} // namespace

TargetChoice ChooseTarget(std::string path, FileJobObserver& observer, const PathTaken& given) {
    const PathTaken taken = given ? given : PathTaken(PathExists);
    while (taken(path)) {
        switch (observer.AskExistingFile(path)) {
        case ExistingFileAnswer::Overwrite:
            return TargetChoice{Target::Write, std::move(path), true};
        case ExistingFileAnswer::AnotherName:
            if (auto other = observer.AskAnotherName(path); other && !other->empty()) {
                path = *other;
                continue;
            }
            return TargetChoice{Target::Skip, std::move(path), false};
        case ExistingFileAnswer::Rename:
            return TargetChoice{Target::Write, FirstFreeNumberedName(path, taken), false};
        case ExistingFileAnswer::Skip:
            return TargetChoice{Target::Skip, std::move(path), false};
        case ExistingFileAnswer::Cancel:
            return TargetChoice{Target::Cancel, std::move(path), false};
        }
    }
    return TargetChoice{Target::Write, std::move(path), false};
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
    if (auto opened = folder.Open(request.outputFolder); !opened) {
        return Failure(FileError::WriteFailed, 0, 0, request.outputFolder, opened.error());
    }
    Result<RestorePlan, FileJobResult> planned =
        PlanRestore(session, folder, request.outputFolder, observer);
    if (!planned) {
        return planned.error();
    }
    RestorePlan& plan = *planned;
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
