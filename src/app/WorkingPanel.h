#pragma once

#include "files/FileJobObserver.h"

#include <QElapsedTimer>
#include <QFrame>
#include <atomic>

class QLabel;
class QPushButton;
class QTimer;

namespace kelvora {

class CountAnimation;
class ProgressBar;
class WorkingLight;
struct WindowContext;

// WorkingPanel is the busy display FrameW: the working light PictArbeitampel, the animation
// ImgCount driven by the timer TmrCount, ProgressBar1 (the blocks or chunks of the current
// piece of work), ProgressBar2 (the files), the current file LblJobFile with the speed and the
// time left LblJobSpeed, and the cancel button cmdCancel. It observes the job in progress: it
// shows the job's progress and tells the job when cancel was pressed.
class WorkingPanel : public QFrame, public FileJobObserver {
    Q_OBJECT

public:
    explicit WorkingPanel(const WindowContext& context, QWidget* parent = nullptr);

    // Start readies the panel for a new job: bars at 0, no cancel request, the clock and the
    // animation running. Stop ends the animation.
    void Start();
    void Stop();

    // RequestCancel is cmdCancel's click: the job stops at its next check. A linked flag
    // (the cipher's own stop request) is set as well.
    void RequestCancel();
    void LinkCancel(std::atomic<bool>* flag) { m_linkedCancel = flag; }

    ProgressBar& ChunkBar() { return *m_chunkBar; }
    ProgressBar& FileBar() { return *m_fileBar; }

    // JobObserver and FileJobObserver.
    void OnProgressRange(std::int64_t maximum) override;
    void OnProgress(std::int64_t position) override;
    void LetEventsRun() override;
    bool CancelRequested() override { return m_cancel.load(); }
    void OnJobStarted(std::size_t fileCount, std::int64_t totalBytes) override;
    void OnFileStarted(std::size_t index, const std::string& name) override;
    void OnBytesDone(std::int64_t bytes) override;

private:
    void OnAnimationTick();
    void ShowSpeed();

    std::atomic<bool> m_cancel{false};
    std::atomic<bool>* m_linkedCancel = nullptr;
    const WindowContext& m_context;
    QElapsedTimer m_workClock;
    std::size_t m_fileCount = 0;
    std::int64_t m_totalBytes = 0;
    std::int64_t m_bytesDone = 0;
    bool m_chunksReported = false; // else ProgressBar1 follows the bytes of the whole job
    WorkingLight* m_workingLight = nullptr;
    QLabel* m_lblJobFile = nullptr;
    QLabel* m_lblJobSpeed = nullptr;
    CountAnimation* m_animation = nullptr;
    QTimer* m_animationTimer = nullptr;
    ProgressBar* m_chunkBar = nullptr;
    ProgressBar* m_fileBar = nullptr;
    QPushButton* m_cmdCancel = nullptr;
};

} // namespace kelvora
