#pragma once

#include "files/ContainerInspect.h"
#include "files/DecryptJob.h"
#include "files/FileIo.h"
#include "files/RecordWalker.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kelvora {

// CountingSink passes bytes on to another sink and counts them.
class CountingSink final : public ByteSink {
public:
    explicit CountingSink(ByteSink& next) : m_next(next) {}
    Result<void, Errno> Write(std::span<const std::uint8_t> bytes) override {
        m_count += static_cast<std::int64_t>(bytes.size());
        return m_next.Write(bytes);
    }
    std::int64_t Count() const { return m_count; }
    void Reset() { m_count = 0; }

private:
    ByteSink& m_next;
    std::int64_t m_count = 0;
};

// DamagedFile is a file a walk could not restore whole: its name as shown, its first
// damaged chunk, and where its intact leading chunks were kept (empty when they were not).
struct DamagedFile {
    std::string name;
    std::int64_t chunk = 0;
    std::string partialPath;
};

// The name under which the intact leading chunks of a damaged file are kept.
inline constexpr const char* kPartialSuffix = ".partial";

// WalkNames collects the stored names a walk finds and takes none of their bytes.
class WalkNames final : public RecordWalkHandler {
public:
    ByteSink* OnFileStarted(std::size_t, const std::string& ansiName) override {
        m_names.push_back(ansiName);
        return nullptr;
    }
    FileJobResult OnFileEnded(std::size_t, FileError, std::int64_t) override { return {}; }
    const std::vector<std::string>& Names() const { return m_names; }

private:
    std::vector<std::string> m_names;
};

// CancelOnly passes only the cancel request and the event runs on to the front end: a walk
// that only plans reports no progress of its own.
class CancelOnly final : public FileJobObserver {
public:
    explicit CancelOnly(FileJobObserver& front) : m_front(front) {}
    bool CancelRequested() override { return m_front.CancelRequested(); }
    void LetEventsRun() override { m_front.LetEventsRun(); }

private:
    FileJobObserver& m_front;
};

// WalkRestorer restores the files of a walk below a folder with DecryptContainer's rules:
// unsafe names refused (reported, the walk goes on, Refused() afterwards), existing files as
// the observer answers, every file under a temporary name until it is complete. A damaged
// file is not restored; with keepPartial its intact leading chunks appear as NAME.partial.
class WalkRestorer final : public RecordWalkHandler {
public:
    WalkRestorer(std::string folder, FileJobObserver& observer, bool keepPartial)
        : m_folder(std::move(folder)), m_observer(observer), m_keepPartial(keepPartial) {}

    ByteSink* OnFileStarted(std::size_t index, const std::string& ansiName) override;
    FileJobResult OnFileEnded(std::size_t index, FileError error, std::int64_t chunk) override;

    // PlanTargets settles the target of every file a walk will find (ansiNames, in walk
    // order, from a walk with WalkNames) before anything is written: a file that exists
    // already, or two files of the container with the same name, are put to the observer
    // now. An answer of Cancel ends planning with Cancelled naming that path. Files are
    // then written as planned; without a plan each conflict is settled when its file comes.
    [[nodiscard]] FileJobResult PlanTargets(const std::vector<std::string>& ansiNames);

    bool Refused() const { return m_refused; }
    const std::vector<DamagedFile>& Damaged() const { return m_damaged; }

private:
    std::vector<std::optional<TargetChoice>> m_planned;
    std::string m_folder;
    FileJobObserver& m_observer;
    bool m_keepPartial;
    std::unique_ptr<TempOutputFile> m_output;
    std::unique_ptr<CountingSink> m_counted;
    std::string m_path;
    std::string m_shown;
    bool m_replace = false;
    bool m_refused = false;
    FileJobResult m_pending;
    std::vector<DamagedFile> m_damaged;
};

// WalkLister takes every file's name and size and passes its bytes to sink (a NullSink to
// list or test, standard output to write a single file). With singleFile a second file
// ends the walk (MoreThanOneFile() afterwards). A name that could not be restored safely
// is refused, as the test command does.
class WalkLister final : public RecordWalkHandler {
public:
    WalkLister(ByteSink& sink, FileJobObserver& observer, bool singleFile)
        : m_counted(sink), m_observer(observer), m_singleFile(singleFile) {}

    ByteSink* OnFileStarted(std::size_t index, const std::string& ansiName) override;
    FileJobResult OnFileEnded(std::size_t index, FileError error, std::int64_t chunk) override;

    const std::vector<ContainerEntry>& Entries() const { return m_entries; }
    bool MoreThanOneFile() const { return m_moreThanOne; }

private:
    CountingSink m_counted;
    FileJobObserver& m_observer;
    bool m_singleFile;
    bool m_moreThanOne = false;
    std::string m_ansiName;
    std::vector<ContainerEntry> m_entries;
};

} // namespace kelvora
