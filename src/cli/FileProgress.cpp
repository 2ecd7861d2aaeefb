#include "cli/FileProgress.h"

#include "cli/FileErrorText.h"
#include "cli/JsonReport.h"
#include "common/Printable.h"

#include <cstdio>
#include <ostream>

namespace kelvora::cli {
namespace {

constexpr auto kDrawInterval = std::chrono::milliseconds(200);
constexpr double kMega = 1e6;

std::string Megabytes(std::int64_t bytes) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f MB", static_cast<double>(bytes) / kMega);
    return text;
}

// ShownPath is a restored file's path as a person reads it: without a leading "./".
std::string ShownPath(const std::string& path) {
    return path.starts_with("./") ? path.substr(2) : path;
}

} // namespace

std::string ProgressLine(std::int64_t done, std::int64_t total, double seconds) {
    const double rate = seconds > 0 ? static_cast<double>(done) / seconds : 0;
    // A job reading a pipe does not know its total: it shows what is done and the speed.
    std::string line = total > 0 ? Megabytes(done) + " of " + Megabytes(total) : Megabytes(done);
    char text[64];
    std::snprintf(text, sizeof text, "  %.1f MB/s", rate / kMega);
    line += text;
    if (rate > 0 && total > 0 && total >= done) {
        const auto left = static_cast<long>(static_cast<double>(total - done) / rate);
        std::snprintf(text, sizeof text, "  %ld:%02ld left", left / 60, left % 60);
        line += text;
    }
    return line;
}

int JobFailed(CliContext& context, CliFileObserver& observer, const FileJobResult& result,
              bool json) {
    observer.ClearProgress();
    if (json) {
        context.out << FailureJson(result);
    }
    return Fail(context, kExitFailure, FileErrorMessage(result));
}

FileJobAnswers EncryptAnswers(const CliContext& context, bool force) {
    FileJobAnswers answers;
    answers.replaceContainer = force;
    answers.quiet = context.quiet;
    answers.doneVerb = context.verbose ? "added" : nullptr;
    return answers;
}

CliFileObserver::CliFileObserver(CliContext& context, FileJobAnswers answers)
    : m_context(context), m_answers(answers), m_draw(context.showProgress && !answers.quiet) {}

CliFileObserver::~CliFileObserver() {
    ClearProgress();
}

bool CliFileObserver::CancelRequested() {
    return StopRequested(m_context);
}

void CliFileObserver::OnJobStarted(std::size_t, std::int64_t totalBytes) {
    m_total = totalBytes;
    m_start = std::chrono::steady_clock::now();
}

void CliFileObserver::OnFileDone(std::size_t, const std::string& path) {
    if (m_answers.doneNames != nullptr) {
        m_answers.doneNames->push_back(path);
    }
    if (m_answers.listRestored) {
        ClearProgress();
        m_context.out << Printable(ShownPath(path)) << '\n';
    } else if (m_answers.doneVerb != nullptr) {
        ClearProgress();
        Note(m_context, std::string(m_answers.doneVerb) + ' ' + path);
    }
}

void CliFileObserver::OnFileRefused(std::size_t, const OmittedEntry& refused) {
    ClearProgress();
    ++m_refused;
    Fail(m_context, kExitFailure,
         FileErrorMessage(Failure(refused.why, 0, 0, refused.name, refused.systemError)));
}

void CliFileObserver::OnNameOnlyThisProgramReads(const std::string& path) {
    ClearProgress();
    Warn(m_context, path + ": its stored name is longer than 255 bytes; other copies of "
                           "Kelvora cannot restore it");
}

void CliFileObserver::OnBytesDone(std::int64_t bytes) {
    m_done += bytes;
    DrawProgress(false);
}

bool CliFileObserver::AskReplaceContainer(const std::string&) {
    return m_answers.replaceContainer;
}

ExistingFileAnswer CliFileObserver::AskExistingFile(const std::string&) {
    return m_answers.existingFile;
}

void CliFileObserver::OnFileSkipped(std::size_t, const std::string& path) {
    ClearProgress();
    Note(m_context, "skipped " + ShownPath(path) + ": exists already");
}

void CliFileObserver::DrawProgress(bool force) {
    if (!m_draw) {
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (!force && now - m_lastDraw < kDrawInterval) {
        return;
    }
    m_lastDraw = now;
    const double seconds = std::chrono::duration<double>(now - m_start).count();
    m_context.err << '\r' << ProgressLine(m_done, m_total, seconds) << "\x1b[K" << std::flush;
    m_drawn = true;
}

void CliFileObserver::ClearProgress() {
    if (m_drawn) {
        m_context.err << "\r\x1b[K" << std::flush;
        m_drawn = false;
    }
}

} // namespace kelvora::cli
