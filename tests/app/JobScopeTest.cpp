#include "app/WindowHarness.h"
#include "app/WorkingPanel.h"

#include <QPushButton>
#include <stdexcept>

namespace kelvora {

using namespace Qt::StringLiterals;

namespace {

// RecordingHost notes every change of its busy state.
class RecordingHost final : public JobHost {
public:
    void SetWorking(bool on) override {
        m_working = on;
        changes += on ? u'+' : u'-';
    }
    bool IsWorking() const override { return m_working; }
    WorkingPanel& Working() override { return panel; }

    testing::RecordingMessageService messages;
    testing::FixedRandom random;
    WindowContext context{messages, random, kEnglish};
    WorkingPanel panel{context};
    QString changes;

private:
    bool m_working = false;
};

} // namespace

class JobScopeTest : public QObject {
    Q_OBJECT

private slots:
    void RestoresTheHostOnEveryWayOut() {
        RecordingHost host;
        {
            const JobScope job(host);
            QVERIFY(host.IsWorking());
        }
        try {
            const JobScope job(host);
            throw std::runtime_error("job failed");
        } catch (const std::runtime_error&) {
        }
        QCOMPARE(host.changes, u"+-+-"_s);
        QVERIFY(!host.IsWorking());
    }

    void CancelReachesTheLinkedFlagOnlyWithinTheScope() {
        RecordingHost host;
        std::atomic<bool> cipherStop{false};
        {
            JobScope job(host);
            job.LinkCancel(cipherStop);
            QCOMPARE(&job.Observer(), &host.panel);
        }
        host.panel.RequestCancel();
        QVERIFY(!cipherStop);
    }

    // In the window, a job leaves only the working panel usable, and everything comes back.
    void WindowIsLockedWhileAJobLasts() {
        testing::Harness h;
        {
            const JobScope job(h.window);
            QCOMPARE(h.State(), u"working: FrameW / "_s);
            QVERIFY(h.window.cursor().shape() == Qt::WaitCursor);
            QVERIFY(h.Find("cmdCancel")->isEnabled());
        }
        QCOMPARE(h.State(), u"idle: PictAmpel / Frame_0 FramePwd"_s);
        QVERIFY(h.window.cursor().shape() != Qt::WaitCursor);
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::JobScopeTest)
#include "JobScopeTest.moc"
