#include "files/RestorePlan.h"

#include "files/ContainerSession.h"
#include "files/StoredName.h"

#include <cerrno>

namespace kelvora {

namespace {

// Planner walks the container once and decides about each file in turn.
class Planner {
public:
    Planner(const OutputFolder& folder, const std::string& root, FileJobObserver& observer)
        : m_folder(folder), m_root(root), m_observer(observer) {}

    void Decide(PlannedFile& file);
    RestorePlan& Plan() { return m_plan; }

private:
    bool IsTaken(const std::string& relative) const {
        const Result<Spot, Errno> spot = m_folder.Look(relative);
        return m_planned.contains(relative) || !spot || *spot != Spot::Free;
    }
    void Resolve(PlannedFile& file);
    void Rename(PlannedFile& file);

    const OutputFolder& m_folder;
    const std::string& m_root;
    FileJobObserver& m_observer;
    RestorePlan m_plan;
    std::set<std::string> m_planned;
};

// TooLongForLinux is true when a part of the path is longer than a Linux file name can be.
bool TooLongForLinux(const std::string& relative) {
    constexpr std::size_t kMaxNameBytes = 255;
    std::size_t start = 0;
    for (std::size_t slash = relative.find('/');; slash = relative.find('/', start)) {
        const std::size_t end = slash == std::string::npos ? relative.size() : slash;
        if (end - start > kMaxNameBytes) {
            return true;
        }
        if (slash == std::string::npos) {
            return false;
        }
        start = slash + 1;
    }
}

void Planner::Decide(PlannedFile& file) {
    if (TooLongForLinux(file.relative)) {
        file.action = PlannedFile::Action::LeaveOut;
        file.why = FileError::NameTooLong;
        file.systemError = ENAMETOOLONG;
        return;
    }
    const Result<Spot, Errno> spot = m_folder.Look(file.relative);
    if (!spot) {
        file.action = PlannedFile::Action::LeaveOut;
        file.why = FileError::LinkInPath;
        file.systemError = spot.error();
        return;
    }
    if (*spot == Spot::Taken || m_planned.contains(file.relative)) {
        Resolve(file);
    }
    if (file.action == PlannedFile::Action::Write && file.elsewhere.empty()) {
        m_planned.insert(file.relative);
    }
}

void Planner::Resolve(PlannedFile& file) {
    const std::string path = m_root + "/" + file.relative;
    if (m_plan.cancelled) {
        // The person said stop already: only gather the names for the report.
        m_plan.conflicts.push_back(path);
        return;
    }
    switch (m_observer.AskExistingFile(path)) {
    case ExistingFileAnswer::Overwrite:
        file.replace = true;
        return;
    case ExistingFileAnswer::Rename:
        Rename(file);
        return;
    case ExistingFileAnswer::AnotherName:
        if (auto other = m_observer.AskAnotherName(path); other && !other->empty()) {
            file.elsewhere = *other;
            file.replace = PathExists(*other);
            return;
        }
        file.action = PlannedFile::Action::Skip;
        return;
    case ExistingFileAnswer::Skip:
        file.action = PlannedFile::Action::Skip;
        return;
    case ExistingFileAnswer::Cancel:
        m_plan.cancelled = true;
        m_plan.conflicts.push_back(path);
        return;
    }
}

void Planner::Rename(PlannedFile& file) {
    for (int n = 2;; ++n) {
        std::string candidate = NumberedName(file.relative, n);
        if (!IsTaken(candidate)) {
            file.relative = std::move(candidate);
            return;
        }
    }
}

} // namespace

std::string NumberedName(const std::string& relative, int n) {
    const std::size_t slash = relative.rfind('/');
    const std::size_t leafStart = slash == std::string::npos ? 0 : slash + 1;
    std::size_t dot = relative.rfind('.');
    // A leading dot starts a hidden name, not an extension.
    if (dot == std::string::npos || dot <= leafStart) {
        dot = relative.size();
    }
    return relative.substr(0, dot) + " (" + std::to_string(n) + ")" + relative.substr(dot);
}

Result<RestorePlan, FileJobResult> PlanRestore(ContainerSession& session,
                                               const OutputFolder& folder, const std::string& root,
                                               FileJobObserver& observer) {
    Planner planner(folder, root, observer);
    FileJobResult walked = ForEachFile(
        session.Reader(), [&](const FileRange& range) -> Result<FileStep, FileJobResult> {
            const Result<FirstRecord, FileFailure> first = session.Decryptor().ReadFirst(range);
            if (!first) {
                return Fail(Failure(first.error().error, range.index, 1));
            }
            PlannedFile file;
            file.range = range;
            file.shown = DisplayName(first->ansiName);
            if (first->kind == FirstRecordKind::Inconsistent) {
                // A later file whose first record makes no sense is damaged (the passphrase
                // was proven right on an earlier one); it is left out, the rest restored.
                file.shown = "file " + std::to_string(range.index + 1);
                file.action = PlannedFile::Action::LeaveOut;
                file.why = FileError::DamagedData;
            } else if (const auto relative = RelativePathFromStoredName(first->ansiName)) {
                file.relative = *relative;
                planner.Decide(file);
            } else {
                file.action = PlannedFile::Action::LeaveOut;
                file.why = FileError::UnsafeName;
            }
            planner.Plan().files.push_back(std::move(file));
            return FileStep::Next;
        });
    if (!walked.ok()) {
        return Fail(std::move(walked));
    }
    return std::move(planner.Plan());
}

} // namespace kelvora
