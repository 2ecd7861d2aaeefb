#include "cli/FileProgress.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <ostream>

namespace kelvora::cli {
namespace {

// Set by the Ctrl-C handler; read by the job between chunks and at every event check.
std::atomic<bool> g_interrupted{false};

extern "C" void OnInterrupt(int) {
    g_interrupted = true;
}

constexpr auto kDrawInterval = std::chrono::milliseconds(200);
constexpr double kMega = 1e6;

std::string Megabytes(std::int64_t bytes) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f MB", static_cast<double>(bytes) / kMega);
    return text;
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

FileJobAnswers EncryptAnswers(const CliContext& context, bool force) {
    FileJobAnswers answers;
    answers.replaceContainer = force;
    answers.quiet = context.quiet;
    answers.doneVerb = context.verbose ? "added" : nullptr;
    return answers;
}

CliFileObserver::CliFileObserver(CliContext& context, FileJobAnswers answers)
    : m_context(context), m_answers(answers), m_draw(context.showProgress && !answers.quiet) {
    g_interrupted = false;
    std::signal(SIGINT, OnInterrupt);
    std::signal(SIGTERM, OnInterrupt);
}

CliFileObserver::~CliFileObserver() {
    ClearProgress();
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}

bool CliFileObserver::CancelRequested() {
    return g_interrupted;
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
        m_context.out << (path.starts_with("./") ? path.substr(2) : path) << '\n';
    } else if (m_answers.doneVerb != nullptr) {
        ClearProgress();
        m_context.err << "kelvora-cli: " << m_answers.doneVerb << ' ' << path << '\n';
    }
}

void CliFileObserver::OnFileRefused(std::size_t, const std::string& name, FileError why) {
    ClearProgress();
    m_context.err << "kelvora-cli: " << name
                  << (why == FileError::UnsafeName
                          ? ": refused, the stored name would leave the output folder\n"
                          : ": refused\n");
}

void CliFileObserver::OnBytesDone(std::int64_t bytes) {
    m_done += bytes;
    DrawProgress(false);
}

bool CliFileObserver::AskReplaceContainer(const std::string&) {
    return m_answers.replaceContainer;
}

ExistingFileAnswer CliFileObserver::AskExistingFile(const std::string& path) {
    if (m_answers.existingFile == ExistingFileAnswer::Cancel) {
        m_refusedExisting = path;
    }
    return m_answers.existingFile;
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
