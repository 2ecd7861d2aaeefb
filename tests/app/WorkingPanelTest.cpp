#include "app/WorkingPanel.h"

#include "app/CountAnimation.h"
#include "app/WindowHarness.h"
#include "app/WorkingLight.h"

#include <QPushButton>
#include <stdexcept>

namespace kelvora {
namespace {

using namespace Qt::StringLiterals;

// RecordingHost is a job host with a working panel of its own that notes every change of its
// busy state and starts and stops the panel as the window does.
class RecordingHost final : public JobHost {
public:
    void SetWorking(bool on) override {
        m_working = on;
        changes += on ? u'+' : u'-';
        on ? panel.Start() : panel.Stop();
    }
    bool IsWorking() const override { return m_working; }
    WorkingPanel& Working() override { return panel; }
    QString LabelText(const char* name) {
        return testing::FindControl<QLabel>(&panel, QString::fromLatin1(name))->text();
    }

    testing::RecordingMessageService messages;
    testing::FixedRandom random;
    WindowContext context{messages, random, kFrench};
    WorkingPanel panel{context};
    QString changes;

private:
    bool m_working = false;
};

} // namespace

class WorkingPanelTest : public QObject {
    Q_OBJECT

private slots:
    void JobScopeRestoresTheHostOnEveryWayOut() {
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

    // Cancel reaches the job, and the flag linked to it only within the job's scope.
    void CancelReachesTheLinkedFlagOnlyWithinTheScope() {
        RecordingHost host;
        auto* cancel = testing::FindControl<QPushButton>(&host.panel, u"cmdCancel"_s);
        std::atomic<bool> cipherStop{false};
        {
            JobScope job(host);
            job.LinkCancel(cipherStop);
            QCOMPARE(&job.Observer(), &host.panel);
            QVERIFY(!host.panel.CancelRequested());
            QTest::mouseClick(cancel, Qt::LeftButton);
            QVERIFY(host.panel.CancelRequested());
            QVERIFY(cipherStop);
        }
        cipherStop = false;
        const JobScope next(host); // a new job starts without the old request
        QVERIFY(!host.panel.CancelRequested());
        QTest::mouseClick(cancel, Qt::LeftButton);
        QVERIFY(host.panel.CancelRequested());
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

    void ProgressMovesTheChunkBarAndStartResetsBoth() {
        RecordingHost fixture;
        WorkingPanel& panel = fixture.panel;
        panel.OnProgressRange(40);
        panel.OnProgress(30);
        panel.FileBar().SetMax(4);
        panel.FileBar().SetPosition(3);
        QCOMPARE(panel.ChunkBar().Max(), 40);
        QCOMPARE(panel.ChunkBar().Position(), 30);
        panel.Start();
        QCOMPARE(panel.ChunkBar().Position(), 0);
        QCOMPARE(panel.FileBar().Position(), 0);
        panel.Stop();
    }

    void AnimationTurnsAndTheLightIsLitWhileWorking() {
        RecordingHost fixture;
        WorkingPanel& panel = fixture.panel;
        auto* animation = panel.findChild<CountAnimation*>(QStringLiteral("ImgCount"));
        auto* light = panel.findChild<WorkingLight*>(QStringLiteral("PictArbeitampel"));
        QVERIFY(!light->IsLit());
        panel.Start();
        QVERIFY(light->IsLit());
        const int first = animation->Step();
        QTRY_VERIFY(animation->Step() != first);
        panel.Stop();
        QVERIFY(!light->IsLit());
        const int stopped = animation->Step();
        QTest::qWait(300);
        QCOMPARE(animation->Step(), stopped);
    }

    // The file bar counts the files done, the light changes at each quarter of them, and the
    // current file with the speed are written in the window's language.
    void FileJobShowsFilesQuartersAndTheCurrentFile() {
        RecordingHost fixture;
        WorkingPanel& panel = fixture.panel;
        auto* light = panel.findChild<WorkingLight*>(QStringLiteral("PictArbeitampel"));
        panel.resize(500, 300);
        panel.Start();
        panel.OnJobStarted(8, 4000);
        QCOMPARE(panel.FileBar().Max(), 8);
        QString quarters;
        for (std::size_t index = 0; index < 8; ++index) {
            panel.OnFileStarted(index, "f");
            QCOMPARE(panel.FileBar().Position(), static_cast<qint64>(index));
            quarters += QString::number(light->Quarters());
        }
        QCOMPARE(quarters, u"00112233"_s);
        panel.OnFileStarted(7, "/data/report.txt");
        auto* file = panel.findChild<QLabel*>(u"LblJobFile"_s);
        QCOMPARE(file->toolTip(),
                 QString::fromStdString(GetText(kFrench, 517, "/data/report.txt")));
        QVERIFY(file->fontMetrics().horizontalAdvance(file->text()) <= file->width());
        QTest::qWait(20);
        panel.OnBytesDone(1000);
        QVERIFY(fixture.LabelText("LblJobSpeed").contains(u"par seconde"_s));
        panel.Stop();
        panel.Start(); // the next job starts clean
        QCOMPARE(light->Quarters(), 0);
        QCOMPARE(fixture.LabelText("LblJobFile"), QString());
        panel.Stop();
    }

    void QuartersAreWholeQuartersOfTheFiles_data() {
        QTest::addColumn<int>("done");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("quarters");
        QTest::newRow("nothing to do") << 0 << 0 << 0;
        QTest::newRow("just under a quarter") << 2 << 9 << 0;
        QTest::newRow("a quarter") << 1 << 4 << 1;
        QTest::newRow("a half of three") << 2 << 3 << 2;
        QTest::newRow("all") << 5 << 5 << 3;
    }

    void QuartersAreWholeQuartersOfTheFiles() {
        QFETCH(int, done);
        QFETCH(int, count);
        QFETCH(int, quarters);
        QCOMPARE(QuartersDone(static_cast<std::size_t>(done), static_cast<std::size_t>(count)),
                 quarters);
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::WorkingPanelTest)
#include "WorkingPanelTest.moc"
