#pragma once

#include "cli/CliOutput.h"
#include "files/FileJobObserver.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kelvora::cli {

// FileJobAnswers are the command-line options that answer a file job's questions.
struct FileJobAnswers {
    bool replaceContainer = false; // encrypt --force
    ExistingFileAnswer existingFile = ExistingFileAnswer::Cancel;
    bool quiet = false;
    bool listRestored = false; // decrypt prints one line per file restored
    // doneVerb, when set, says on err what became of every file ("added", "checked").
    const char* doneVerb = nullptr;
    // doneNames, when set, collects every file done (for a result printed at the end).
    std::vector<std::string>* doneNames = nullptr;
};

// EncryptAnswers are the answers of an encrypt run: --force replaces a container, and with
// --verbose every file added is named.
[[nodiscard]] FileJobAnswers EncryptAnswers(const CliContext& context, bool force);

// CliFileObserver answers a file job from the options, prints the restored files on
// standard output, draws progress (bytes, MB/s, time left) on standard error when that is
// a terminal, and cancels the job cleanly once a stop is requested (StopRequested), so that
// no partial output stays.
class CliFileObserver final : public FileJobObserver {
public:
    CliFileObserver(CliContext& context, FileJobAnswers answers);
    ~CliFileObserver() override;
    CliFileObserver(const CliFileObserver&) = delete;
    CliFileObserver& operator=(const CliFileObserver&) = delete;

    bool CancelRequested() override;
    void OnJobStarted(std::size_t fileCount, std::int64_t totalBytes) override;
    void OnFileDone(std::size_t index, const std::string& path) override;
    void OnFileRefused(std::size_t index, const OmittedEntry& refused) override;
    void OnFileSkipped(std::size_t index, const std::string& path) override;
    void OnNameOnlyThisProgramReads(const std::string& path) override;
    void OnBytesDone(std::int64_t bytes) override;
    bool AskReplaceContainer(const std::string& path) override;
    ExistingFileAnswer AskExistingFile(const std::string& path) override;

    // ClearProgress erases the progress line before the command prints its result.
    void ClearProgress();
    // RefusedCount is how many files the job refused (each named as it was refused).
    [[nodiscard]] std::size_t RefusedCount() const { return m_refused; }

private:
    void DrawProgress(bool force);

    CliContext& m_context;
    FileJobAnswers m_answers;
    bool m_draw = false;
    bool m_drawn = false;
    std::int64_t m_total = 0;
    std::int64_t m_done = 0;
    std::size_t m_refused = 0;
    std::chrono::steady_clock::time_point m_start;
    std::chrono::steady_clock::time_point m_lastDraw;
};

// JobFailed clears the progress line and writes the failed job's error line (with json, its
// JSON on standard output too); it returns the exit status.
int JobFailed(CliContext& context, CliFileObserver& observer, const FileJobResult& result,
              bool json = false);

// ProgressLine formats the progress text: bytes done of total, speed in MB/s and the time
// left ("1.5 GB of 2.0 GB  48.2 MB/s  0:10 left"); without a total (a pipe), the bytes
// done and the speed.
[[nodiscard]] std::string ProgressLine(std::int64_t done, std::int64_t total, double seconds);

} // namespace kelvora::cli
