#include "files/WalkHandlers.h"

#include "files/ContainerSession.h"
#include "files/OutputFolder.h"
#include "files/StoredName.h"

namespace kelvora {

ByteSink* WalkRestorer::OnFileStarted(std::size_t index, const std::string& ansiName) {
    m_shown = DisplayName(ansiName);
    m_observer.OnFileStarted(index, m_shown);
    const auto relative = RelativePathFromStoredName(ansiName);
    if (!relative) {
        m_refused = true;
        m_observer.OnFileRefused(index, m_shown, FileError::UnsafeName);
        return nullptr;
    }
    m_path = m_folder + "/" + *relative;
    const Target target = ChooseTarget(m_path, m_replace, m_observer);
    if (target != Target::Write) {
        if (target == Target::Cancel) {
            m_pending = Failure(FileError::Cancelled, index, 0, m_shown, 0);
        }
        return nullptr;
    }
    // Folders are made level by level below the chosen one, never through a link.
    int folderError = 0;
    m_output = std::make_unique<TempOutputFile>();
    const std::string inFolder = m_path.substr(m_folder.size() + 1);
    OutputFolder root;
    UniqueFd parent =
        root.Open(m_folder, &folderError) ? root.OpenParent(inFolder, &folderError) : UniqueFd();
    if (!parent.Valid() || !m_output->CreateIn(std::move(parent), LeafOf(inFolder))) {
        m_pending = Failure(FileError::WriteFailed, index, 0, m_path,
                            folderError != 0 ? folderError : m_output->LastError());
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
    if (!output->Commit(m_replace)) {
        return Failure(FileError::WriteFailed, index, 0, m_path, output->LastError());
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
