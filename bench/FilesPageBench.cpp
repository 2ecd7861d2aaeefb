// The files page under load, measured as a person would feel it: how long adding a folder of
// 100,000 files takes and how long the window's event loop is held up meanwhile, and how soon
// cmdCancel ends the encryption of 1 GiB. Runs headless; prints the numbers.
#include "app/FCrypt.h"
#include "app/InputListBox.h"
#include "app/RecordingMessageService.h"
#include "common/Random.h"
#include "i18n/Catalogue.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>

namespace {

namespace fs = std::filesystem;
using kelvora::FCrypt;

constexpr int kFiles = 100000;
constexpr int kFilesPerFolder = 1000;
constexpr int kTickMilliseconds = 20;

// StallMeter records the longest gap between ticks of a short timer since it was made.
class StallMeter {
public:
    StallMeter() {
        QObject::connect(&m_ticks, &QTimer::timeout, [this] {
            const qint64 now = m_clock.elapsed();
            if (m_last >= 0) {
                m_longest = std::max(m_longest, now - m_last);
            }
            m_last = now;
            if (onTick) {
                onTick(now);
            }
        });
        m_clock.start();
        m_ticks.start(kTickMilliseconds);
    }
    // Longest includes the time since the last tick, which no tick has measured yet.
    qint64 Longest() const { return std::max(m_longest, m_clock.elapsed() - m_last); }
    qint64 Now() const { return m_clock.elapsed(); }
    std::function<void(qint64)> onTick; // called at every tick with the time

private:
    QTimer m_ticks;
    QElapsedTimer m_clock;
    qint64 m_last = -1;
    qint64 m_longest = 0;
};

void MakeTree(const fs::path& root) {
    if (fs::exists(root / "done")) {
        return; // made by an earlier run
    }
    for (int i = 0; i < kFiles; ++i) {
        const fs::path folder = root / "tree" / ("d" + std::to_string(i / kFilesPerFolder));
        if (i % kFilesPerFolder == 0) {
            fs::create_directories(folder);
        }
        std::ofstream(folder / ("f" + std::to_string(i) + ".txt")) << i;
    }
    std::ofstream(root / "done") << kFiles;
}

void MeasureFolderWalk(const fs::path& root) {
    kelvora::testing::RecordingMessageService messages;
    kelvora::SystemRandom random;
    FCrypt window(messages, random, kelvora::kEnglish);
    window.show();
    window.Load(std::vector<std::string>{}, QStringLiteral("kelvora"));
    StallMeter stalls;
    const qint64 start = stalls.Now();
    window.OpenPaths({QString::fromStdString((root / "tree").string())});
    const qint64 took = stalls.Now() - start;
    const int listed = window.findChild<kelvora::InputListBox*>()->count();
    std::printf("folder walk: %d files listed in %lld ms, longest event-loop stall %lld ms\n",
                listed, took, stalls.Longest());
}

void MeasureCancel(const fs::path& root) {
    const fs::path input = root / "gibibyte.bin";
    std::ofstream(input).close();
    fs::resize_file(input, std::uintmax_t{1} << 30); // sparse: generated without disk traffic
    kelvora::testing::RecordingMessageService messages;
    kelvora::SystemRandom random;
    FCrypt window(messages, random, kelvora::kEnglish);
    window.show();
    window.Load(std::vector<std::string>{}, QStringLiteral("kelvora"));
    window.OpenPaths({QString::fromStdString(input.string())});
    window.findChild<QLineEdit*>(QStringLiteral("TxtCode"))->setText(QStringLiteral("bench"));
    StallMeter stalls;
    qint64 cancelledAt = -1;
    stalls.onTick = [&](qint64 now) {
        if (cancelledAt < 0 && now > 2000 && window.IsWorking()) {
            cancelledAt = now;
            window.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click();
        }
    };
    window.findChild<QPushButton*>(QStringLiteral("Command4"))->click();
    const qint64 latency = stalls.Now() - cancelledAt;
    std::printf("1 GiB encryption: cancel after %lld ms took effect in %lld ms, longest "
                "event-loop stall %lld ms\n",
                cancelledAt, latency, stalls.Longest());
    fs::remove(input);
}

} // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const fs::path root = KELVORA_BENCH_WORK;
    fs::create_directories(root);
    MakeTree(root);
    MeasureFolderWalk(root);
    MeasureCancel(root);
    return 0;
}
