#pragma once

#include "files/FileError.h"
#include "files/FileJobObserver.h"

#include <functional>

namespace kelvora {

// BackgroundJob runs one file job on a worker thread while the window's thread keeps serving
// its events, so the window repaints, its animation moves and cmdCancel acts at once, however
// large the input. What the job reports is gathered on the worker and handed to the display
// observer on the window's thread at every tick (progress, the current file, the bytes done).
// Questions and per-file events go to the page observer on the window's thread; the worker
// waits for the answer. The display's CancelRequested is read from the worker and must be
// safe to call from any thread.
class BackgroundJob {
public:
    using Job = std::function<FileJobResult(FileJobObserver&)>;

    // How often the display is brought up to date, in milliseconds.
    static constexpr int kTickMilliseconds = 100;

    BackgroundJob(FileJobObserver& display, FileJobObserver& page);

    // Run runs job to its end and gives its result. An exception the job throws is thrown
    // again here, on the window's thread.
    FileJobResult Run(const Job& job);

private:
    FileJobObserver& m_display;
    FileJobObserver& m_page;
};

} // namespace kelvora
