#include "app/BackgroundJob.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <atomic>
#include <exception>
#include <future>
#include <mutex>
#include <thread>

namespace kelvora {
namespace {

// WorkerObserver is the job's observer on the worker thread. It keeps the latest progress
// for the window's ticks and carries questions and per-file events over to the window.
class WorkerObserver final : public FileJobObserver {
public:
    WorkerObserver(FileJobObserver& display, FileJobObserver& page, QObject& window)
        : m_display(display), m_page(page), m_window(window) {}

    bool CancelRequested() override { return m_display.CancelRequested(); }
    void LetEventsRun() override {}

    void OnProgressRange(std::int64_t maximum) override { m_chunkMaximum = maximum; }
    void OnProgress(std::int64_t position) override { m_chunkPosition = position; }
    void OnJobStarted(std::size_t fileCount, std::int64_t totalBytes) override {
        m_fileCount = fileCount;
        m_totalBytes = totalBytes;
        m_started = true;
    }
    void OnFileStarted(std::size_t index, const std::string& name) override {
        const std::lock_guard lock(m_nameMutex);
        m_fileIndex = index;
        m_fileName = name;
        m_fileChanged = true;
    }
    void OnBytesDone(std::int64_t bytes) override { m_bytesDone += bytes; }

    void OnFileDone(std::size_t index, const std::string& path) override {
        Post([this, index, path] { m_page.OnFileDone(index, path); });
    }
    void OnFileRefused(std::size_t index, const OmittedEntry& refused) override {
        Post([this, index, refused] { m_page.OnFileRefused(index, refused); });
    }
    bool AskReplaceContainer(const std::string& path) override {
        return Ask<bool>([this, &path] { return m_page.AskReplaceContainer(path); });
    }
    ExistingFileAnswer AskExistingFile(const std::string& path) override {
        return Ask<ExistingFileAnswer>([this, &path] { return m_page.AskExistingFile(path); });
    }
    std::optional<std::string> AskAnotherName(const std::string& path) override {
        return Ask<std::optional<std::string>>(
            [this, &path] { return m_page.AskAnotherName(path); });
    }

    // ShowProgress hands what happened since the last tick to the display (window's thread).
    void ShowProgress() {
        if (m_started.exchange(false)) {
            m_display.OnJobStarted(m_fileCount, m_totalBytes);
        }
        {
            const std::lock_guard lock(m_nameMutex);
            if (m_fileChanged) {
                m_display.OnFileStarted(m_fileIndex, m_fileName);
                m_fileChanged = false;
            }
        }
        if (const std::int64_t maximum = m_chunkMaximum; maximum > 0) {
            m_display.OnProgressRange(maximum);
            m_display.OnProgress(m_chunkPosition);
        }
        const std::int64_t bytes = m_bytesDone.exchange(0);
        if (bytes != 0) {
            m_display.OnBytesDone(bytes);
        }
    }

private:
    template <typename Call> void Post(Call call) {
        QMetaObject::invokeMethod(&m_window, std::move(call), Qt::QueuedConnection);
    }
    // Ask runs question on the window's thread and waits for its answer.
    template <typename Answer, typename Question> Answer Ask(Question question) {
        std::promise<Answer> answer;
        Post([&answer, &question] {
            try {
                answer.set_value(question());
            } catch (...) {
                answer.set_exception(std::current_exception());
            }
        });
        return answer.get_future().get();
    }

    FileJobObserver& m_display;
    FileJobObserver& m_page;
    QObject& m_window;
    std::atomic<std::int64_t> m_chunkMaximum{0};
    std::atomic<std::int64_t> m_chunkPosition{0};
    std::atomic<std::int64_t> m_bytesDone{0};
    std::atomic<bool> m_started{false};
    std::size_t m_fileCount = 0; // written before m_started is set
    std::int64_t m_totalBytes = 0;
    std::mutex m_nameMutex;
    std::size_t m_fileIndex = 0;
    std::string m_fileName;
    bool m_fileChanged = false;
};

} // namespace

BackgroundJob::BackgroundJob(FileJobObserver& display, FileJobObserver& page)
    : m_display(display), m_page(page) {}

FileJobResult BackgroundJob::Run(const Job& job) {
    QObject window; // receives what the worker posts, on this thread
    WorkerObserver observer(m_display, m_page, window);
    bool finished = false;
    FileJobResult result;
    std::exception_ptr failure;

    std::thread worker([&] {
        try {
            result = job(observer);
        } catch (...) {
            failure = std::current_exception();
        }
        // Posted last, so everything the job posted before is handled first.
        QMetaObject::invokeMethod(
            &window, [&finished] { finished = true; }, Qt::QueuedConnection);
    });
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, &window, [&observer] { observer.ShowProgress(); });
    ticks.start(kTickMilliseconds);
    // processEvents, not a nested event loop: a quit of the application must not end the
    // wait while the worker still uses this frame.
    while (!finished) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    worker.join();
    observer.ShowProgress();
    if (failure) {
        std::rethrow_exception(failure);
    }
    return result;
}

} // namespace kelvora
