#include "files/WalkHandlers.h"

#include "files/ContainerSession.h"
#include "files/DecryptJob.h"
#include "files/OutputFolder.h"
#include "files/StoredName.h"

#include <set>

namespace kelvora {

namespace {

// CreateBelow prepares output at inFolder below folder, making the folders on its way.
Result<void, Errno> CreateBelow(const std::string& folder, const std::string& inFolder,
                                TempOutputFile& output) {
    OutputFolder root;
    if (auto opened = root.Open(folder); !opened) {
        return opened;
    }
    Result<UniqueFd, Errno> parent = root.OpenParent(inFolder);
    if (!parent) {
        return Fail(parent.error());
    }
    return output.CreateIn(std::move(parent).value(), LeafOf(inFolder));
}

} // namespace

FileJobResult WalkRestorer::PlanTargets(const std::vector<std::string>& ansiNames) {
    std::set<std::string> planned;
    const PathTaken taken = [&planned](const std::string& path) {
        return planned.contains(path) || PathExists(path);
    };
    m_planned.clear();
    for (std::size_t index = 0; index < ansiNames.size(); ++index) {
        const auto relative = RelativePathFromStoredName(ansiNames[index]);
        if (!relative) {
            m_planned.emplace_back(); // refused when its turn comes
            continue;
        }
        TargetChoice choice = ChooseTarget(m_folder + "/" + *relative, m_observer, taken);
        if (choice.target == Target::Cancel) {
            m_planned.clear();
            return Failure(FileError::Cancelled, index, 0, DisplayName(ansiNames[index]), 0);
        }
        if (choice.target == Target::Write) {
            planned.insert(choice.path);
        }
        m_planned.push_back(std::move(choice));
    }
    return {};
}

ByteSink* WalkRestorer::OnFileStarted(std::size_t index, const std::string& ansiName) {
    m_shown = DisplayName(ansiName);
    m_observer.OnFileStarted(index, m_shown);
    const auto relative = RelativePathFromStoredName(ansiName);
    if (!relative) {
        m_refused = true;
        m_observer.OnFileRefused(index, OmittedEntry{m_shown, FileError::UnsafeName});
        return nullptr;
    }
    TargetChoice choice = index < m_planned.size() && m_planned[index]
                              ? *m_planned[index]
                              : ChooseTarget(m_folder + "/" + *relative, m_observer);
    m_path = std::move(choice.path);
    m_replace = choice.replace;
    if (choice.target != Target::Write) {
        if (choice.target == Target::Cancel) {
            m_pending = Failure(FileError::Cancelled, index, 0, m_shown, 0);
        }
        return nullptr;
    }
    // Folders are made level by level below the chosen one, never through a link.
    m_output = std::make_unique<TempOutputFile>();
    if (auto created = CreateBelow(m_folder, m_path.substr(m_folder.size() + 1), *m_output);
        !created) {
        m_pending = Failure(FileError::WriteFailed, index, 0, m_path, created.error());
        m_output.reset();
        return nullptr;
    }
    m_counted = std::make_unique<CountingSink>(*m_output);
    return m_counted.get();
}

FileJobResult WalkRestorer::OnFileEnded(std::size_t index, FileError error, std::int64_t chunk) {
    FileJobResult result = std::exchange(m_pending, FileJobResult{});
    std::unique_ptr<TempOutputFile> output = std::move(m_output);
    if (!result.ok()) {
        return result;
    }
    if (error != FileError::None) {
        DamagedFile damaged{m_shown, chunk, {}};
        if (output && m_keepPartial && m_counted->Count() > 0) {
            output->Retarget(m_path + kPartialSuffix);
            if (output->Commit(false)) {
                damaged.partialPath = m_path + kPartialSuffix;
            }
        }
        m_damaged.push_back(std::move(damaged));
        return {};
    }
    if (!output) {
        return {};
    }
    if (auto committed = output->Commit(m_replace); !committed) {
        return Failure(FileError::WriteFailed, index, 0, m_path, committed.error());
    }
    m_observer.OnFileDone(index, m_path);
    return {};
}

ByteSink* WalkLister::OnFileStarted(std::size_t index, const std::string& ansiName) {
    if (m_singleFile && index > 0) {
        m_moreThanOne = true;
        return nullptr;
    }
    m_ansiName = ansiName;
    m_counted.Reset();
    m_observer.OnFileStarted(index, DisplayName(ansiName));
    return &m_counted;
}

FileJobResult WalkLister::OnFileEnded(std::size_t index, FileError error, std::int64_t chunk) {
    const std::string shown = DisplayName(m_ansiName);
    if (m_moreThanOne) {
        return Failure(FileError::NothingToDo, index, 0, shown, 0);
    }
    if (error != FileError::None) {
        return Failure(error, index, chunk, shown, 0);
    }
    if (!IsSafeStoredName(m_ansiName)) {
        return Failure(FileError::UnsafeName, index, 1, shown, 0);
    }
    m_entries.push_back(ContainerEntry{shown, m_counted.Count()});
    m_observer.OnFileDone(index, shown);
    return {};
}

} // namespace kelvora
