#pragma once

#include <cstdint>

namespace kelvora {

// JobObserver is how a long core job talks to its front end without knowing it: it
// reports progress and, at regular points, lets the front end's pending events run (a
// window repaints and may press its cancel button there). The core never calls Qt.
// Every method has a do-nothing default, so a front end overrides only what it shows.
class JobObserver {
public:
    virtual ~JobObserver() = default;

    // The progress of the current piece of work (blocks of a text, chunks of a file) runs
    // from 0 to maximum.
    virtual void OnProgressRange(std::int64_t maximum) { (void)maximum; }
    virtual void OnProgress(std::int64_t position) { (void)position; }

    // LetEventsRun is called often enough for a responsive window (at least every 16 KiB
    // of cipher work); the front end may request cancellation from here.
    virtual void LetEventsRun() {}
};

} // namespace kelvora
